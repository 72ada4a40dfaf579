#!/usr/bin/env python3
"""Every shipped play, played twice, gives the same byte for byte: what is printed, the registries,
the last picture.

Run as: FILE ZELPLAY
"""

import subprocess
import sys
import tempfile
import unittest
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

GAMES = Path(__file__).resolve().parents[2] / "games"
ZELPLAY = sys.argv.pop()


def leavings(play):
    """The files that one run of a play writes, by their names."""
    with tempfile.TemporaryDirectory() as folder:
        options = ["--keep", "--draw", "none", "--output", folder]
        command = [ZELPLAY, *options, play.parents[1], play]
        subprocess.run(command, check=True, capture_output=True)
        return {file.name: file.read_bytes() for file in Path(folder).glob(f"{play.stem}.*")}


class Repeat(unittest.TestCase):
    def test_every_play_gives_the_same_twice(self):
        plays = sorted(GAMES.glob("*/plays/*.play"))
        self.assertGreater(len(plays), 10)
        with ThreadPoolExecutor(2) as pool:
            first, second = list(pool.map(leavings, plays)), list(pool.map(leavings, plays))
        for play, one, other in zip(plays, first, second):
            with self.subTest(play):
                self.assertEqual(one, other)
                self.assertGreaterEqual(len(one), 2)


if __name__ == "__main__":
    unittest.main()
