"""A game's folder: finding it, getting it ready, checking it."""

import os
import subprocess
import sys
import tempfile
from pathlib import Path

from companions import Complaint, font_file, games_folder, program, shipped_games

SCRIPT = "levels/level1/script.txt"
FONT = "arial.ttf"


def say(text):
    """What zelkit itself has to say goes to standard error: standard output is the game's."""
    print(f"zelkit: {text}", file=sys.stderr, flush=True)


def shown(path):
    """A path as it is shortest from where the user is."""
    absolute = os.path.abspath(path)
    relative = os.path.relpath(absolute)
    return relative if len(relative) < len(absolute) else absolute


class Game:
    """One game. `folder` is where it is, `stage` where the engine runs: the same folder, unless it
    cannot be written to and lacks the font."""

    def __init__(self, folder):
        self.folder = Path(folder)
        self.stage = self.folder
        self.name = self.folder.resolve().name
        self.script = self.folder / SCRIPT
        self._view = None  # keeps the stage alive if it is a temporary folder

    def get_ready(self, tell=say):
        """Gives the engine the font where it looks for it, and tells if it had to."""
        font = self.folder / FONT
        if font.exists():
            return
        source = font_file()
        try:
            if font.is_symlink():
                font.unlink()
            font.symlink_to(source)
            tell(f"linked {shown(font)} to {source}")
        except OSError:
            self._make_view(source)

    def _make_view(self, font):
        """A private folder of links to what the game's folder holds, and to the font."""
        self._view = tempfile.TemporaryDirectory(prefix="zelkit-")
        self.stage = Path(self._view.name)
        for entry in self.folder.resolve().iterdir():
            if entry.name != FONT:
                (self.stage / entry.name).symlink_to(entry)
        (self.stage / FONT).symlink_to(font)

    def check(self, output):
        """Rewrites bare line feeds, if any, and shows what the checker finds. False for errors."""
        checker = [program("zelcheck"), "--fix", "--", shown(self.stage / SCRIPT)]
        return subprocess.run(checker, stdout=output, check=False).returncode < 2

    def room(self):
        """How much of the engine's room the script uses, in the checker's words; may be empty."""
        gauge = [program("zelcheck"), "--room", str(self.folder)]
        answer = subprocess.run(gauge, capture_output=True, text=True, check=False)
        return answer.stdout.strip().removeprefix("room: ") if answer.returncode == 0 else ""


def is_game(folder):
    return (folder / SCRIPT).is_file()


def find_game(word):
    """The game of a folder, or the shipped game of that name."""
    places = [Path(word)]
    if "/" not in word and games_folder():
        places.append(games_folder() / word)
    for place in places:
        if is_game(place):
            return Game(place)
    for place in places:
        if place.is_dir():
            raise Complaint(f"{word} is no game: {_what_is_missing(place)}")
    names = ", ".join(shipped_games())
    raise Complaint(f'there is no game "{word}": neither a folder nor one of these: {names}')


def _what_is_missing(folder):
    """Names the first part of the path to the script that does not exist; letter case counts."""
    for part in Path(SCRIPT).parts:
        if not (folder / part).exists():
            names = sorted(entry.name for entry in folder.iterdir())
            other = next((name for name in names if name.lower() == part.lower()), None)
            hint = f"; it exists as {other}, and letter case counts" if other else ""
            return f"there is no {shown(folder / part)}{hint}"
        folder = folder / part
    return f"{shown(folder)} is no file"
