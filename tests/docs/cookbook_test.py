#!/usr/bin/env python3
"""Plays the recipes of the cookbook, and checks them as a maker would.

    cookbook_test.py --zelplay ZELPLAY --zelcheck ZELCHECK --font FONT --pictures FOLDER PAGE

Every chapter is a recipe: scripts, in blocks marked "c", and after each the play of it. A script
has at most 15 lines, the checker finds nothing in it, and its play goes well.
"""

import argparse
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from engine_run import GameFolder, crlf
from page import read_blocks
from play_test import play_faults

RECIPES = 15
LINES = 15
WIDTH = 100
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


def script_faults(setup, script, follower):
    faults = size_faults(script) + check_faults(setup, script)
    if follower is None or follower.info != "play":
        return [*faults, "no play follows"]
    return faults + play_faults(setup, script.text, follower, None)


def all_faults(setup, blocks):
    recipes = {block.heading for block in blocks if block.info == "c"}
    faults = [] if len(recipes) == RECIPES else [f"{len(recipes)} recipes in place of {RECIPES}"]
    pairs = [(b, f) for b, f in zip(blocks, [*blocks[1:], None]) if b.info == "c"]
    with ThreadPoolExecutor(AT_ONCE) as pool:
        found = pool.map(lambda pair: script_faults(setup, *pair), pairs)
        for (script, _), own in zip(pairs, found):
            faults += [f"line {script.line}, {script.heading}: {fault}" for fault in own]
    return faults


def read_arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("page")
    parser.add_argument("--zelplay", required=True)
    parser.add_argument("--zelcheck", required=True)
    parser.add_argument("--font", required=True)
    parser.add_argument("--pictures", required=True)
    return parser.parse_args()


def main():
    setup = read_arguments()
    blocks = read_blocks(Path(setup.page).read_text(encoding="utf-8"))
    faults = all_faults(setup, blocks)
    print(f"{len(blocks)} blocks, {len(faults)} faults")
    if faults:
        sys.exit("\n".join(faults))


if __name__ == "__main__":
    main()
