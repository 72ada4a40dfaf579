#!/usr/bin/env python3
"""Plays the first level of a page in a new game, as its readers do.

    level_test.py --zelplay ZELPLAY --zelcheck ZELCHECK --font FONT --template GAME PAGE...

A page's first block marked "c" is the script. The comment above it holds the play, with "; "
between the commands: <!-- play: run 500; images "x=40" -->. The checker finds nothing in it.
"""

import argparse
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

from engine_run import crlf
from page import read_blocks


def level_faults(setup, page):
    block = next(b for b in read_blocks(page.read_text(encoding="utf-8")) if b.info == "c")
    if "play" not in block.marks:
        return [f"{page.name}: no play above line {block.line}"]
    with tempfile.TemporaryDirectory() as root:
        game = Path(root) / "mine"
        shutil.copytree(setup.template, game, ignore=shutil.ignore_patterns("arial.ttf"))
        os.symlink(setup.font, game / "arial.ttf")
        script = game / "levels/level1/script.txt"
        script.write_bytes(crlf(block.text))
        play = Path(root) / "level.play"
        play.write_text("\n".join(block.marks["play"].split("; ")) + "\n", encoding="utf-8")
        runs = [subprocess.run(command, capture_output=True, text=True, check=False)
                for command in ([setup.zelcheck, script], [setup.zelplay, game, play])]
    return [f"{page.name}: {run.stdout}{run.stderr}" for run in runs
            if run.returncode != 0 or "warning" in run.stdout]


def read_arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("pages", type=Path, nargs="+")
    parser.add_argument("--zelplay", required=True)
    parser.add_argument("--zelcheck", required=True)
    parser.add_argument("--font", required=True)
    parser.add_argument("--template", required=True)
    return parser.parse_args()


def main():
    setup = read_arguments()
    faults = [fault for page in setup.pages for fault in level_faults(setup, page)]
    print(f"{len(setup.pages)} levels, {len(faults)} faults")
    if faults:
        sys.exit("\n".join(faults))


if __name__ == "__main__":
    main()
