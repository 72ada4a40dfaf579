#!/usr/bin/env python3
"""Holds the tutorial against the scripts of its steps, and runs them.

    tutorial_test.py --zel ZEL --font FONT --errors errors.cpp PAGE
    tutorial_test.py --write PAGE        puts the steps' whole scripts into the page anew

The scripts are the files stepNN/levels/level1/script.txt of the folder beside the page that has the
page's name. In the chapter "Step N" of the page every block of code must stand in the script of
that step, line by line; the block under the comment <!-- whole --> must be all of it. A block of
text is what the step prints first.
"""

import argparse
import os
import re
import sys
import time
from concurrent.futures import ThreadPoolExecutor

from engine_run import Display, Engine, GameFolder
from page import read_blocks
from page_test import comparable

STEPS = 10
SECONDS = 2.0  # that each step runs at least
AT_ONCE = 3


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


def run(step, setup, display=None):
    """Runs a step for its time, and on until all that it shall print is there."""
    with GameFolder(step.script, setup.folder, setup.font) as folder:
        engine = Engine(setup.zel, folder, display.name if display else None)
        if display:
            display.wait_for_window(engine)
            display.play(step.actions, engine)
        started = time.monotonic()
        engine.wait_for(lambda: len(comparable(engine.out())) >= len(comparable(step.out)))
        engine.wait_for(lambda: time.monotonic() - started > SECONDS)
        return engine.stop()


def run_faults(step, result, reports):
    faults = [f"reports {report!r}: {result.out!r}" for report in reports if report in result.out]
    if not comparable(result.out).startswith(comparable(step.out)):
        faults.append(f"prints {result.out!r}, the page says {step.out!r}")
    if result.status is not None:
        faults.append(f"ends by itself with status {result.status}")
    if result.err:
        faults.append(f"standard error: {result.err!r}")
    return faults


def run_played(steps, setup):
    """Those with input, one after the other, as they share a display."""
    with Display() as display:
        return [run(step, setup, display) for step in steps]


def run_all(steps, setup):
    played = [step for step in steps if step.actions]
    unseen = [step for step in steps if not step.actions]
    with ThreadPoolExecutor(AT_ONCE) as pool:
        unseen_results = pool.map(lambda step: run(step, setup), unseen)
        results = run_played(played, setup) + list(unseen_results)
    return dict(zip(played + unseen, results))


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
    parser.add_argument("--zel")
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
    for step in steps:
        own = text_faults(step) + run_faults(step, results[step], reports)
        faults += [f"step {step.number}: {fault}" for fault in own]
    print(f"{len(steps)} steps run, {len(faults)} faults")
    if faults:
        sys.exit("\n".join(faults))


if __name__ == "__main__":
    main()
