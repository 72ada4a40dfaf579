#!/usr/bin/env python3
"""Mistakes planted in the shipped games are noticed by their plays.

Run as: FILE ZELPLAY. Each mistake is a change of one place in a copy of the game's script, and
names the play that must fail because of it.
"""

import shutil
import subprocess
import sys
import tempfile
import unittest
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

GAMES = Path(__file__).resolve().parents[2] / "games"
SCRIPT = Path("levels/level1/script.txt")
ZELPLAY = sys.argv.pop()

# (what is wrong, the play that notices, what the script says, what it says then)
MISTAKES = {
    "peons": [
        ("a turnip counts two", "win", "basket + big*3 - 2", "basket + big*2"),
        ("a pumpkin counts five", "digging", "basket + big*3 - 2", "basket + big*4 - 3"),
        ("two peons move a pumpkin", "digging", "n < big*2 - 1", "n < big*2 - 2"),
        ("boars trample nothing", "digging", "y+1)) { clear(i); }", "y+1)) { }"),
        ("a peon too many", "lose", "peons = 6;\n  speed", "peons = 7;\n  speed"),
        ("boars hurt nobody", "lose", "22)) { hurt(i); }", "22)) { }"),
        ("the time is too long", "dusk", "left = 75;", "left = 76;"),
        ("nobody comes back at noon", "dusk", "{ home(i); }\n  peons = 6;", "{ }\n  peons = 6;"),
        ("no dusk", "dusk", "wave == 2", "wave == 3"),
        ("31 are needed", "win", "basket >= 30", "basket >= 34"),
        ("hard is easier", "keys", "3 + level*2", "3 + level"),
        ("P does nothing", "keys", '19, "pause"', '19, "nothing"'),
        ("Space does nothing", "keys", '44, "go"', '44, "nothing"'),
        ("R does nothing", "keys", '21, "begin"', '21, "nothing"'),
        ("T does nothing", "keys", '23, "rename"', '23, "nothing"'),
        ("Q does nothing", "keys", '20, "quit"', '20, "nothing"'),
        ("F calls what is not there", "keys", '9, "full"', '9, "fill"'),
        ("the boars go on in a pause", "keys", "if (mode == 1) {\n    for", "if (mode) {\n    for"),
    ],
    "bricks": [
        ("a brick counts less", "win", "(5 - row) * 10", "(4 - row) * 10"),
        ("kegs do not go off", "win", "{ explode(n); }", "{ }"),
        ("ten bricks are no wall", "win", "bricks < 6", "bricks < 11"),
        ("a parcel is of no use", "win", "pw = 144;", "pw = 96;"),
        ("the paddle stays wide", "win", '"narrow"', '"gap"'),
        ("a life too many", "lose", "lives = 3;", "lives = 4;"),
        ("a heart too many", "lose", "lives > 1", "lives > 0"),
        ("the points stay", "lose", "score = 0;", ""),
        ("the last screen can be skipped", "lose", '8000, "unlock"', '80, "unlock"'),
        ("A does nothing", "keys", '4, "goleft"', '4, "gap"'),
        ("D never stops", "keys", "code == rightcode", "0"),
        ("an arrow key does nothing", "keys", '79, "nudgeright"', '79, "gap"'),
        ("wild is quick", "keys", '32, "choose"', '32, "gap"'),
        ("easy is quick", "keys", '30, "choose"', '30, "gap"'),
        ("Space serves a ball that flies", "keys", "(state == 0) { serve", "(state < 2) { serve"),
    ],
    "starfall": [
        ("a night wants less", "win", "12 + night * 5", "12 + night * 4"),
        ("a star counts two", "win", "catch(1)", "catch(2)"),
        ("a meteor too many", "win", "night + 1 + years", "night + 2 + years"),
        ("the blue star heals nobody", "win", "{ lives = lives + 1; }", "{ }"),
        ("four nights", "win", "night == 3", "night == 4"),
        ("a life too many", "lose", "lives = 3;", "lives = 4;"),
        ("nobody is safe", "lose", "  safe = 1;", "  safe = 0;"),
        ("the owl stays safe", "lose", 'recover() { safe = 0; }', 'recover() { }'),
        ("the last screen can be skipped", "lose", '10000, "unlock"', '100, "unlock"'),
        ("the moon is slow", "moon", "x > 500", "x > 520"),
        ("the name of the night stays", "moon", "hidetext(2, 1);\n    hidetext(3", "hidetext(3"),
        ("the owl is slow", "keys", "(mousex * 10 - owlx) / 6", "(mousex * 10 - owlx) / 7"),
        ("a key draws the owl away", "keys", "if (y < 8) { return 0; }", ""),
        ("Space begins again", "keys", "if (state == 0) { start", "if (state < 2) { start"),
        ("Space does nothing", "keys", '44, "space"', '44, "gap"'),
    ],
    "hello": [
        ("a peon too few", "orders", "i < 5", "i < 4"),
        ("the tree is missing", "orders", "showimage(tree, 1)", "showimage(tree, 0)"),
        ("the text is black", "orders", "43, 54, 115", "0, 0, 0"),
        ("the greeting is missing", "orders", 'puts("Hello from Zel!");', ""),
        ("the tree is elsewhere", "orders", "70, 220", "170, 220"),
    ],
    "clouds": [
        ("the sun is fast", "day", "getimagex(light) + 1", "getimagex(light) + 2"),
        ("no evening", "day", "now = 2;", "now = 1;"),
        ("birds do not flap", "day", "wings = 1 - wings", "wings = wings"),
        ("birds do not come back", "day", "x = 660;", "x = 6600;"),
        ("the balloon rises endlessly", "day", "lift = 1;", "lift = -1;"),
    ],
    "template": [
        ("the star is fast", "first", "getimagex(star) + 2", "getimagex(star) + 3"),
        ("the star does not come back", "first", "x = 0 - 64;", "x = 640;"),
        ("Space does nothing", "first", '44, "stop"', '45, "stop"'),
        ("the star stays", "first", "pausetimer(beat, 1 - going)", "pausetimer(beat, 1)"),
        ("the title is another", "first", '"my game"', '"my gone"'),
    ],
}


def spoil(script, old, new):
    """Puts a mistake in the script; its place must be the only one of its kind."""
    text = script.read_bytes().decode().replace("\r\n", "\n")
    if text.count(old) != 1:
        raise ValueError(f"{old!r} is {text.count(old)} times in the script")
    script.write_bytes(text.replace(old, new).replace("\n", "\r\n").encode())


def is_noticed(game, play, old, new):
    """Whether the play of a spoiled copy of the game fails; a level that hangs is not meant."""
    with tempfile.TemporaryDirectory() as scratch:
        copy = Path(scratch) / game
        shutil.copytree(GAMES / game, copy, symlinks=True)
        spoil(copy / SCRIPT, old, new)
        # Frames that the play does not look at cannot change what it notices.
        command = [ZELPLAY, "--draw", "none", copy, copy / "plays" / f"{play}.play"]
        run = subprocess.run(command, capture_output=True, check=False)
    return run.returncode == 1 and b"failed: " in run.stderr


class Mistakes(unittest.TestCase):
    def test_every_mistake_is_noticed(self):
        planted = [(game, *mistake) for game in MISTAKES for mistake in MISTAKES[game]]
        with ThreadPoolExecutor(2) as pool:
            noticed = pool.map(lambda planted: is_noticed(planted[0], *planted[2:]), planted)
            for (game, what, play, *_), seen in zip(planted, noticed):
                with self.subTest(f"{game}: {what}"):
                    self.assertTrue(seen, f"{play}.play does not notice it")

    def test_every_play_notices_something(self):
        noticing = {(game, mistake[1]) for game in MISTAKES for mistake in MISTAKES[game]}
        plays = {(play.parents[1].name, play.stem) for play in GAMES.glob("*/plays/*.play")}
        self.assertEqual(noticing, plays)


if __name__ == "__main__":
    unittest.main()
