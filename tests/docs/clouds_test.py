#!/usr/bin/env python3
"""Watches games/clouds: its pictures move with nobody touching a key, and it reports nothing wrong.

    clouds_test.py --zel ZEL --font FONT GAME
"""

import argparse
import os
import re
import shutil
import subprocess
import sys
import tempfile

from engine_run import Display, Engine
from process import until

ENOUGH, TOO_MANY = 1000, 150000  # pixels that change


class GameCopy:
    """A copy of a game's folder, for the files that a run leaves behind."""

    def __init__(self, game, font):
        self.root = tempfile.mkdtemp(prefix="zel-docs-")
        for folder in ("levels", "SysPics"):
            shutil.copytree(os.path.join(game, folder), os.path.join(self.root, folder))
        os.symlink(font, os.path.join(self.root, "arial.ttf"))


def picture(display):
    """What the display shows, as bytes."""
    command = ["import", "-silent", "-window", "root", "-depth", "8", "rgb:-"]
    env = dict(os.environ, DISPLAY=display.name)
    return subprocess.run(command, env=env, stdout=subprocess.PIPE, check=True).stdout


def changed(before, after):
    """How many pixels differ between two pictures of equal size."""
    pixels = zip(zip(*[iter(before)] * 3), zip(*[iter(after)] * 3))
    return sum(one != other for one, other in pixels)


def part_that_moved(display):
    """How many pixels change while the clouds and the sun move and the hills and most of the sky do
    not: 0 in an hour in which the sky changes too."""
    before = picture(display)

    def moved_enough():
        moved = changed(before, picture(display))
        return moved if moved >= ENOUGH else 0

    moved = until(moved_enough, "anything to move")
    return moved if moved < TOO_MANY else 0


def watch(setup, copy):
    with Display() as display:
        engine = Engine(setup.zel, copy, display.name)
        display.wait_for_window(engine)
        engine.wait_for(lambda: "Hour 1" in engine.out())  # the sky now stays as it is for a while
        moved = until(lambda: part_that_moved(display), "the clouds to move, and nothing else")
        return engine.stop(), moved


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("game")
    parser.add_argument("--zel", required=True)
    parser.add_argument("--font", required=True)
    setup = parser.parse_args()
    copy = GameCopy(setup.game, setup.font)
    try:
        result, moved = watch(setup, copy)
    finally:
        shutil.rmtree(copy.root)
    print(f"{moved} pixels changed")
    if not re.fullmatch(r"(\nHour \d+)+", result.out) or result.err or result.status is not None:
        sys.exit(f"not the hours alone: {result}")


if __name__ == "__main__":
    main()
