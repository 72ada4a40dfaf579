#!/usr/bin/env python3
"""The same play gives the same, byte for byte: what is printed, the registries, the last frame.

A level of everything is played, and the shipped games are, by hands that know no game.
"""

import random
import shutil
import unittest

from plays import GAMES, Plays

KEYS = ["a", "b", "o", "Left", "Right", "Up", "Down", "Space", "Return", "1", "2", "Left Shift"]


def wild_play(seed, commands=60):
    """Keys and mouse from a seed."""
    luck = random.Random(seed)
    lines = []
    for _ in range(commands):
        x, y = luck.randrange(640), luck.randrange(480)
        button = luck.choice(["left", "right", "middle"])
        lines.append(luck.choice([
            f"key tap {luck.choice(KEYS)}", f"key down {luck.choice(KEYS)}", f"mouse move {x} {y}",
            f"mouse click {button} {x} {y}", f"mouse drag left {x} {y} {y} {x}",
            f"run {luck.randrange(400)}",
        ]))
    return "\n".join(lines) + "\nrun 100\n"


class Same(Plays):
    def left(self, game, play, folder, *options):
        """What one run writes."""
        out = self.folder / folder
        run = self.zelplay(*options, "--keep", "--output", out, game, play)
        left = {file.name: file.read_bytes() for file in sorted(out.iterdir())}
        self.assertEqual(len(left), 3, run.stderr)
        self.assertEqual(left[f"{play.stem}.out"], run.stdout)
        shutil.rmtree(out)
        return run.returncode, run.stderr, left

    def check(self, game, seed):
        play = self.folder / f"wild{seed}.play"
        play.write_text(wild_play(seed))
        first = self.left(game, play, "out")
        for which in ("some", "none", "all"):
            self.assertEqual(first, self.left(game, play, "out", "--draw", which))

    def test_level_of_everything(self):
        for seed in range(3):
            self.check(self.game, seed)

    def test_shipped_games(self):
        for name in ("bricks", "clouds", "peons", "starfall"):
            with self.subTest(name):
                self.check(GAMES / name, 7)


if __name__ == "__main__":
    unittest.main()
