#!/usr/bin/env python3
"""Holds the tutorial against the scripts of its steps, and runs them.

    tutorial_test.py --zelplay ZELPLAY --font FONT --errors errors.cpp PAGE
    tutorial_test.py --write PAGE        puts the steps' whole scripts into the page anew

The scripts are the files stepNN/levels/level1/script.txt of the folder beside the page that has the
page's name. In the chapter "Step N" of the page every block of code must stand in the script of
that step, line by line; the block under the comment <!-- whole --> must be all of it. A block of
text is what the step prints first, after the keys of the comment above it.
"""

import argparse
import os
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor

from engine_run import GameFolder
from page import read_blocks
from page_test import comparable

STEPS = 10
MILLISECONDS = 5000  # that each step runs after its keys; the wasp of step 9 takes 3.4 s
PATIENCE = 60000  # milliseconds of the step's time in which what it waits for must come
AT_ONCE = 2


class Step:
    """A step of the tutorial: its script and what the page shows of it."""

    def __init__(self, folder, number, blocks):
        self.number = number
        self.path = os.path.join(folder, f"step{number:02}", "levels", "level1", "script.txt")
        with open(self.path, "rb") as file:
            self.script = file.read()
        self.blocks = [b for b in blocks if b.heading.startswith(f"## Step {number}:")]
        self.out = "".join(b.text for b in self.blocks if b.info == "text")
        inputs = [b.marks["input"] for b in self.blocks if "input" in b.marks]
        self.actions = ", ".join(inputs).split(", ") if inputs else []

    def text(self):
        return self.script.decode().replace("\r\n", "\n")

    def code(self):
        return [b for b in self.blocks if b.info == "c"]


def text_faults(step):
    """Where the page and the script of a step differ."""
    faults = []
    if b"\n" in step.script.replace(b"\r\n", b"") or not step.script.endswith(b"\r\n"):
        faults.append("not every line of the script ends in CR LF")
    if len(step.script) > 9999:
        faults.append("the script is longer than 9999 bytes")
    whole = [b for b in step.code() if "whole" in b.marks]
    if len(whole) != 1 or whole[0].text != step.text():
        faults.append("the page does not show exactly the whole script; run this with --write")
    for block in step.code():
        if "\n" + block.text not in "\n" + step.text():
            faults.append(f"line {block.line}: these lines do not stand in the script")
    return faults


def known_reports(errors_path):
    """All that the engine says when a script, a file or a name is wrong."""
    with open(errors_path, encoding="utf-8") as file:
        table = re.search(r"kErrorTexts\[\] = \{(.*?)\};", file.read(), re.DOTALL)[1]
    reports = [text.replace('\\"', '"') for text in re.findall(r'^\s*"(.+)",', table, re.MULTILINE)]
    if len(reports) < 18:
        sys.exit(f"only {len(reports)} error texts found in {errors_path}")
    others = ["Error buffer long jump", "nable to load", "Cant load", "not found!", "ailed to"]
    return reports + others


def play_of(step):
    """The step's keys, and what it waits for, as a play."""
    lines = ["run 96"]
    for action in step.actions:
        name, what = action.split(" ", 1)
        if name == "wait":
            lines.append(f'expect "{what}" within {PATIENCE}')
        else:
            lines += [f"key tap {what}", "run 96"]
    return "\n".join([*lines, f"run {MILLISECONDS}"]) + "\n"


def run(step, setup):
    """Plays a step."""
    with GameFolder(step.script, setup.folder, setup.font) as folder:
        play = os.path.join(folder.root, "step.play")
        with open(play, "w", encoding="utf-8") as file:
            file.write(play_of(step))
        command = [setup.zelplay, folder.root, play]
        return subprocess.run(command, capture_output=True, text=True, check=False)


def run_faults(step, result, reports):
    out = result.stdout
    faults = [f"reports {report!r}: {out!r}" for report in reports if report in out]
    if not comparable(out).startswith(comparable(step.out)):
        faults.append(f"prints {out!r}, the page says {step.out!r}")
    if result.returncode != 0 or result.stderr:
        faults.append(f"status {result.returncode}: {result.stderr}")
    return faults


def run_all(steps, setup):
    with ThreadPoolExecutor(AT_ONCE) as pool:
        return list(pool.map(lambda step: run(step, setup), steps))


def write_scripts(page_path, folder):
    """Puts the whole scripts into the blocks under <!-- whole -->."""
    with open(page_path, encoding="utf-8") as file:
        page = file.read()
    numbers = iter(range(1, STEPS + 1))

    def whole(match):
        return match[1] + Step(folder, next(numbers), []).text() + match[2]

    page = re.sub(r"(<!-- whole -->\n+```c\n).*?(```\n)", whole, page, flags=re.DOTALL)
    with open(page_path, "w", encoding="utf-8") as file:
        file.write(page)


def read_arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("page")
    parser.add_argument("--zelplay")
    parser.add_argument("--font")
    parser.add_argument("--errors")
    parser.add_argument("--write", action="store_true")
    setup = parser.parse_args()
    setup.folder = os.path.splitext(setup.page)[0]
    return setup


def main():
    setup = read_arguments()
    if setup.write:
        write_scripts(setup.page, setup.folder)
        return
    with open(setup.page, encoding="utf-8") as file:
        blocks = read_blocks(file.read())
    steps = [Step(setup.folder, number, blocks) for number in range(1, STEPS + 1)]
    reports = known_reports(setup.errors)
    results = run_all(steps, setup)
    faults = []
    for step, result in zip(steps, results):
        own = text_faults(step) + run_faults(step, result, reports)
        faults += [f"step {step.number}: {fault}" for fault in own]
    print(f"{len(steps)} steps run, {len(faults)} faults")
    if faults:
        sys.exit("\n".join(faults))


if __name__ == "__main__":
    main()
