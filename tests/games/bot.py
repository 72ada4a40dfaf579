"""Plays a game by looking and acting, and writes down what it did as a play.

    def win(level, luck):
        level.do("run 100")                 # a command of the play
        level.do('expect "READY"')
        star = level.image(3)               # a look, which the play does not need

    if __name__ == "__main__":
        bot.main("starfall", "win", win)    # run as: FILE ZELPLAY

The clock of a play stops while the bot thinks, so the same bot on the same game always does
the same. Its play is the test; the bot is wanted again only when the game has changed.
"""

import random
import re
import subprocess
import sys
import tempfile
from pathlib import Path

GAMES = Path(__file__).resolve().parents[2] / "games"
REGISTRIES = ("timers", "images", "texts", "units")
NUMBERS = re.compile(r"(\w+)=(-?\d+)\b")


class Level:
    """A game that waits for commands, and the commands so far."""

    def __init__(self, zelplay, game):
        command = [zelplay, "--output", tempfile.gettempdir(), str(GAMES / game), "-"]
        self.process = subprocess.Popen(command, text=True, stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE)
        self.lines = []
        self.rows = []  # the records of the last answer

    # Hands ------------------------------------------------------------------------------------

    def do(self, line):
        """Sends a command that belongs to the play, and returns the value of its answer."""
        value = self.send(line)
        self.lines.append(line)
        return value

    def run(self, ms):
        """Lets time pass; a run after a run is one."""
        self.send(f"run {ms}")
        before = self.lines[-1].split() if self.lines else []
        if before[:1] == ["run"]:
            ms += int(before[1])
            self.lines.pop()
        self.lines.append(f"run {ms}")

    def remark(self, text):
        self.lines.append(f"\n// {text}")

    # Eyes and ears ----------------------------------------------------------------------------

    def images(self):
        """What the level knows of its pictures, by number: {"x": 10, "visible": 1, ...}."""
        return [dict(map(number, NUMBERS.findall(line))) for line in self.records("images")]

    def image(self, which):
        """The same for one picture."""
        return dict(map(number, NUMBERS.findall(self.records(f'images " id={which} "')[0])))

    def records(self, command):
        self.send(command)
        return self.rows

    def printed(self):
        """What the level printed since this was asked last."""
        return self.send("output")

    def send(self, line):
        """Sends a command and returns the value of its answer; one that fails ends the bot."""
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()
        verdict, _, value = self.process.stdout.readline().strip().partition(" ")
        if verdict != "ok":
            sys.exit(f"{line}: {verdict} {value}")
        count = int(value) if line.startswith(REGISTRIES) else 0
        self.rows = [self.process.stdout.readline() for _ in range(count)]
        return value


def number(pair):
    return pair[0], int(pair[1])


class Missed(Exception):
    """What a bot raises that has not done what its play is to show."""


def main(game, name, play):
    """Plays the game with luck of seed after seed, until it goes well, and writes the play into the
    game's folder. The bot's description heads it."""
    for seed in range(100):
        level = Level(sys.argv[1], game)
        try:
            play(level, random.Random(seed))
            break
        except Missed as missed:
            print(f"{name}, seed {seed}: {missed}")
    head = f"// {play.__doc__}\n// Made by tests/games/{game}_bot.py.\n\n"
    file = GAMES / game / "plays" / f"{name}.play"
    file.write_text(head + "\n".join(level.lines) + "\n")
