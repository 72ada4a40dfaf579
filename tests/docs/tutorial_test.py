#!/usr/bin/env python3
"""Types the tutorial's steps by the page's instructions, and plays them.

    tutorial_test.py [--zelplay ZELPLAY] [--zelcheck ZELCHECK] [--font FONT] [PAGE]
    tutorial_test.py --write    writes the whole scripts and the pictures anew

The instructions are the source: the block under the comment <!-- whole -->, the whole script of a
step, must be what typing gives. Each step has a picture, and in the comment above it the play that
leads to it: commands with "; " between them. What the level has printed by then is the block of
text of the step. A play in a comment "check" or in a block is played as well. The checker finds
nothing in a script that a reader is to type.
"""

import argparse
import re
import shutil
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from engine_run import GameFolder, crlf
from page import read_blocks
from page_test import comparable
from typist import CannotType, type_step

ROOT = Path(__file__).resolve().parents[2]
STEPS = 10
PIXELS = 4000  # of 307200, that may differ: letters look a little different with another FreeType
AT_ONCE = 2
PICTURE = re.compile(r"^<!-- play: (.*) -->\n!\[.+\]\((tutorial/\S+\.png)\)$", re.M)
CHECK = re.compile(r"^<!-- check: (.*) -->$", re.M)
TRY = "\n**Try it:** "


class Step:
    """A step: its chapter, and its script as typed after the step before."""

    def __init__(self, number, chapter, script):
        self.number = number
        self.chapter = chapter
        self.script = type_step(script, chapter)
        blocks = read_blocks(chapter)
        self.whole = [b.text for b in blocks if "whole" in b.marks]
        self.printed = "".join(b.text for b in blocks if b.info == "text")
        self.pictures = PICTURE.findall(chapter)
        self.checks = [found.split("; ") for found in CHECK.findall(chapter)]
        self.checks += [b.text.splitlines() for b in blocks if b.info == "play"]


def read_steps(page):
    chapters = re.split(r"^(?=## Step \d+:)", page, flags=re.M)[1:]
    steps, script = [], ""
    for number, chapter in enumerate(chapters, 1):
        try:
            steps.append(Step(number, chapter, script))
        except CannotType as error:
            sys.exit(f"step {number}: {error}")
        script = steps[-1].script
    return steps


def text_faults(step):
    faults = []
    if step.whole != [step.script]:
        faults.append("typing does not give the whole script; run this with --write")
    if TRY not in step.chapter:
        faults.append("nothing to try")
    if len(step.pictures) != 1:
        return [*faults, "not one picture with a play above it"]
    return faults


def play(commands, setup, folder):
    path = Path(folder.root) / "step.play"
    path.write_text("\n".join(commands) + "\n", encoding="utf-8")
    return subprocess.run([setup.zelplay, folder.root, path], capture_output=True, text=True,
                          check=False)


def play_to_picture(step, setup, words, folder):
    commands, picture = step.pictures[0]
    golden = setup.folder / Path(picture).name
    if golden.exists():
        shutil.copy(golden, folder.root)
    return play([*commands.split("; "), f"picture {words.format(golden.name)}"], setup, folder)


def play_faults(step, setup):
    faults = []
    with GameFolder(crlf(step.script), setup.folder, setup.font) as folder:
        script = Path(folder.root) / "levels/level1/script.txt"
        check = subprocess.run([setup.zelcheck, script], capture_output=True, text=True,
                               check=False)
        if check.returncode != 0 or "warning" in check.stdout:
            faults.append(check.stdout)
        for commands in step.checks:
            run = play(commands, setup, folder)
            faults += [f"its check fails: {run.stderr}"] if run.returncode != 0 else []
        run = play_to_picture(step, setup, f"now.png same as {{}} within {PIXELS}", folder)
    if run.returncode != 0:
        faults.append(f"its play fails: {run.stderr}")
    if comparable(run.stdout) != comparable(step.printed):
        faults.append(f"prints {run.stdout!r}, the page says {step.printed!r}")
    return faults


def write(steps, setup):
    """Puts the whole scripts into the page, and the pictures beside it."""
    page = setup.page.read_text(encoding="utf-8")
    wholes = iter(steps)
    page = re.sub(r"(<!-- whole -->\n+```c\n).*?(```\n)",
                  lambda found: found[1] + next(wholes).script + found[2], page, flags=re.S)
    setup.page.write_text(page, encoding="utf-8")
    for step in steps:
        name = Path(step.pictures[0][1]).name
        with GameFolder(crlf(step.script), setup.folder, setup.font) as folder:
            (setup.folder / name).unlink(missing_ok=True)
            print(play_to_picture(step, setup, "{}", folder).stderr, end="")
            shutil.copy(Path(folder.root) / name, setup.folder)


def read_arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("page", type=Path, nargs="?", default=ROOT / "docs/tutorial.md")
    parser.add_argument("--zelplay", default=ROOT / "build/zelplay")
    parser.add_argument("--zelcheck", default=ROOT / "build/zelcheck")
    parser.add_argument("--font", default=ROOT / "games/hello/arial.ttf")
    parser.add_argument("--write", action="store_true")
    setup = parser.parse_args()
    setup.folder = setup.page.with_suffix("")
    return setup


def main():
    setup = read_arguments()
    steps = read_steps(setup.page.read_text(encoding="utf-8"))
    if setup.write:
        write(steps, setup)
        return
    faults = [] if len(steps) == STEPS else [f"{len(steps)} steps in place of {STEPS}"]
    with ThreadPoolExecutor(AT_ONCE) as pool:
        plays = pool.map(lambda step: play_faults(step, setup) if step.pictures else [], steps)
        for step, found in zip(steps, plays):
            faults += [f"step {step.number}: {fault}" for fault in text_faults(step) + found]
    print(f"{len(steps)} steps typed and played, {len(faults)} faults")
    if faults:
        sys.exit("\n".join(faults))


if __name__ == "__main__":
    main()
