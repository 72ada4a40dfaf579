#!/usr/bin/env python3
"""Runs the scripts of a page of the documentation and compares what they print with the page.

    page_test.py --zel ZEL --font FONT --pictures FOLDER PAGE [--builtins builtin_list.h] [--traps]

With --builtins every function of that table must have an entry of its own on the page, with a line
that shows the call and an example that uses it. With --traps every entry of the chapter "Traps"
must show a wrong script and a right one side by side that differ in what they print.
"""

import argparse
import re
import sys
import time
from concurrent.futures import ThreadPoolExecutor

from engine_run import SETTLE, Display, Engine, GameFolder, crlf
from page import read_examples

AT_ONCE = 3  # runs side by side


def comparable(out):
    """Carriage returns, which a terminal does not show, and the last line end do not count."""
    return out.replace("\r", "").rstrip("\n")


def in_short(out):
    """What a script printed in the words of a pair of scripts: on one line, errors by message."""
    out = re.sub(r"\n(.+?) in line \d+\n.*?Error buffer long jump", r" \1 ", out, flags=re.DOTALL)
    return " ".join(out.split())


def prints_as_said(example, out):
    if "wrong" not in example.marks and "right" not in example.marks:
        return comparable(out) == comparable(example.out)
    if example.out.endswith(" ..."):
        return in_short(out).startswith(example.out[:-4])
    return in_short(out) == example.out


def wanted_status(example):
    return int(example.marks["status"]) if "status" in example.marks else None


def run(example, setup, display=None):
    """Runs until all that is expected is there, and a little longer for what is not."""
    script = crlf(example.script)
    if example.marks.get("line ends") == "LF":
        script = example.script.encode()
    with GameFolder(script, setup.pictures, setup.font) as folder:
        name = display.name if display else None
        engine = Engine(setup.zel, folder, name, example.marks.get("types", ""))
        if display:
            display.wait_for_window(engine)
            display.play(example.marks["input"].split(", "), engine)
        engine.wait_for(
            lambda: prints_as_said(example, engine.out()) and example.err.strip() in engine.err()
        )
        if wanted_status(example) is None:
            time.sleep(SETTLE)
        else:
            engine.wait_for(lambda: False)
        return engine.stop()


def faults_of(example, result):
    faults = []
    if not prints_as_said(example, result.out):
        out, said = comparable(result.out), comparable(example.out)
        faults.append(f"prints {out!r}, the page says {said!r}")
    if example.err.strip() not in result.err:
        faults.append(f"standard error {result.err!r} lacks {example.err!r}")
    if result.status != wanted_status(example):
        faults.append(f"status {result.status}, the page says {wanted_status(example)}")
    return [f"line {example.line}, {example.heading}: {fault}" for fault in faults]


def run_played(examples, setup):
    """Those with input, one after the other, as they share a display."""
    if not examples:
        return []
    with Display() as display:
        return [run(example, setup, display) for example in examples]


def run_all(examples, setup):
    played = [example for example in examples if "input" in example.marks]
    unseen = [example for example in examples if "input" not in example.marks]
    with ThreadPoolExecutor(AT_ONCE) as pool:
        unseen_results = pool.map(lambda example: run(example, setup), unseen)
        results = run_played(played, setup) + list(unseen_results)
    return [f for e, r in zip(played + unseen, results) for f in faults_of(e, r)]


def entry_faults(name, page, examples):
    """What the entry of one built-in lacks."""
    entry = re.search(rf"^### `{name}`\n\n(.+)\n\n(.+)\n", page, re.MULTILINE)
    if not entry:
        return [f"{name} has no entry"]
    faults = []
    if f"{name}(" not in entry[1] or not entry[1].startswith("`"):
        faults.append(f"the entry of {name} does not begin with a line that shows the call")
    own = [e for e in examples if e.heading == f"### `{name}`"]
    if not any(f"{name}(" in example.script for example in own):
        faults.append(f"the entry of {name} has no example that uses it")
    return faults


def table_faults(table, page, examples):
    """Compares the page's entries with the engine's table of built-ins."""
    names = re.findall(r"^\s*X\((\w+), builtin", table, re.MULTILINE)
    entries = re.findall(r"^### `(\w+)`", page, re.MULTILINE)
    faults = [] if len(names) == 40 else [f"the engine's table has {len(names)} names, not 40"]
    faults += [f"{entry} is no built-in" for entry in entries if entry not in names]
    faults += [f"{entry} has two entries" for entry in set(entries) if entries.count(entry) > 1]
    for name in names:
        faults += entry_faults(name, page, examples)
    return faults


def trap_faults(page):
    """Every trap shows a wrong script and a right one, and the two do not do the same."""
    chapter = re.search(r"^## Traps\n(.*?)(?=^## |\Z)", page, re.MULTILINE | re.DOTALL)[1]
    examples = read_examples(chapter)
    faults = []
    for heading in re.findall(r"^### .*", chapter, re.MULTILINE):
        said = {word: [e.out for e in examples if e.heading == heading and word in e.marks]
                for word in ("wrong", "right")}
        if not said["wrong"] or not said["right"]:
            faults.append(f"{heading}: lacks a wrong or a right script")
        if set(said["wrong"]) & set(said["right"]):
            faults.append(f"{heading}: wrong and right print the same")
    return faults


def read_arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("page")
    parser.add_argument("--zel", required=True)
    parser.add_argument("--font", required=True)
    parser.add_argument("--pictures", required=True)
    parser.add_argument("--builtins")
    parser.add_argument("--traps", action="store_true")
    return parser.parse_args()


def main():
    setup = read_arguments()
    with open(setup.page, encoding="utf-8") as file:
        page = file.read()
    examples = read_examples(page)
    faults = [] if examples else ["the page has no script"]
    if setup.builtins:
        with open(setup.builtins, encoding="utf-8") as file:
            faults += table_faults(file.read(), page, examples)
    if setup.traps:
        faults += trap_faults(page)
    faults += run_all(examples, setup)
    print(f"{len(examples)} scripts run, {len(faults)} faults")
    if faults:
        sys.exit("\n".join(faults))


if __name__ == "__main__":
    main()
