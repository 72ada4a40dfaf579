#!/usr/bin/env python3
"""Plays the recipes of the cookbook, and checks them as a maker would.

    cookbook_test.py [--zelplay ZELPLAY] [--zelcheck ZELCHECK] [--font FONT] [PAGE]
    cookbook_test.py --write    takes the pictures of the recipes anew

Every chapter is a recipe: scripts, in blocks marked "c", and after each the play of it. A script
has at most 15 lines, the checker finds nothing in it, and its play goes well. A picture above a
script is the last frame of its play.
"""

import argparse
import dataclasses
import re
import shutil
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from engine_run import GameFolder, crlf
from page import read_blocks
from play_test import play_faults

ROOT = Path(__file__).resolve().parents[2]
RECIPES = 15
LINES = 15
WIDTH = 100
PIXELS = 2000  # of 307200, that may differ: letters look a little different with another FreeType
PICTURE = re.compile(r'<img src="(cookbook/[\w-]+\.png)" width="240" alt=".+">\n+```c\n')
AT_ONCE = 2


def size_faults(script):
    lines = script.text.splitlines()
    faults = [f"{len(lines)} lines"] if len(lines) > LINES else []
    return faults + [f"a line of {len(line)} characters" for line in lines if len(line) > WIDTH]


def check_faults(setup, script):
    with GameFolder(crlf(script.text), setup.pictures, setup.font) as folder:
        path = Path(folder.root) / "levels/level1/script.txt"
        run = subprocess.run([setup.zelcheck, path], capture_output=True, text=True, check=False)
    return [run.stdout + run.stderr] if run.returncode != 0 or "warning" in run.stdout else []


def script_faults(setup, script, follower, picture):
    faults = size_faults(script) + check_faults(setup, script)
    if follower is None or follower.info != "play":
        return [*faults, "no play follows"]
    play = follower
    if picture:
        golden = setup.page.parent / picture
        if setup.write:
            write_picture(setup, script, follower, golden)
        look = f'picture now.png same as "{golden}" within {PIXELS}\n'
        play = dataclasses.replace(follower, text=follower.text + look)
    return faults + play_faults(setup, script.text, play, None)


def write_picture(setup, script, follower, golden):
    golden.parent.mkdir(exist_ok=True)
    with tempfile.TemporaryDirectory() as kept:
        taken = Path(kept) / "taken.png"
        play = dataclasses.replace(follower, text=follower.text + f'picture "{taken}"\n')
        print("\n".join(play_faults(setup, script.text, play, None)), end="")
        shutil.copy(taken, golden)


def all_faults(setup, text):
    blocks = read_blocks(text)
    recipes = {block.heading for block in blocks if block.info == "c"}
    faults = [] if len(recipes) == RECIPES else [f"{len(recipes)} recipes in place of {RECIPES}"]
    pairs = [(b, f) for b, f in zip(blocks, [*blocks[1:], None]) if b.info == "c"]
    pictures = {text[:found.end()].count("\n"): found[1] for found in PICTURE.finditer(text)}
    with ThreadPoolExecutor(AT_ONCE) as pool:
        found = pool.map(lambda pair: script_faults(setup, *pair, pictures.get(pair[0].line)),
                         pairs)
        for (script, _), own in zip(pairs, found):
            faults += [f"line {script.line}, {script.heading}: {fault}" for fault in own]
    return faults


def read_arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("page", type=Path, nargs="?", default=ROOT / "docs/cookbook.md")
    parser.add_argument("--zelplay", default=ROOT / "build/zelplay")
    parser.add_argument("--zelcheck", default=ROOT / "build/zelcheck")
    parser.add_argument("--font", default=ROOT / "games/hello/arial.ttf")
    parser.add_argument("--write", action="store_true")
    setup = parser.parse_args()
    setup.page = setup.page.resolve()
    setup.pictures = setup.page.parent / "tutorial"
    return setup


def main():
    setup = read_arguments()
    faults = all_faults(setup, setup.page.read_text(encoding="utf-8"))
    print(f"{RECIPES} recipes, {len(faults)} faults")
    if faults:
        sys.exit("\n".join(faults))


if __name__ == "__main__":
    main()
