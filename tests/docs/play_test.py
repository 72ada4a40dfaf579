#!/usr/bin/env python3
"""Runs the plays of the page about plays: each does what the page says of it.

    play_test.py --zelplay ZELPLAY --font FONT --pictures FOLDER PAGE

The page has one level, in a block marked "c". A block marked "play" is a whole play of it. It must
go well, unless a block marked "text" follows: then that is what zelplay says on standard error. The
text under the comment <!-- answers --> is a conversation: commands after "> ", then their answers.
Every heading in backquotes, a command, must have a play or be part of the conversation.
"""

import argparse
import subprocess
import sys
from pathlib import Path

from engine_run import PATIENCE, GameFolder, crlf
from page import read_blocks


def zelplay(setup, folder, *words, given=""):
    command = [setup.zelplay, *[str(word) for word in words]]
    return subprocess.run(command, cwd=folder, input=given, capture_output=True, text=True,
                          timeout=PATIENCE, check=False)


def play_faults(setup, level, block, said):
    """What is wrong with one play; `said` is what the page says it complains, if it does."""
    with GameFolder(crlf(level), setup.pictures, setup.font) as folder:
        (Path(folder.root) / "my.play").write_text(block.text, encoding="utf-8")
        run = zelplay(setup, folder.root, ".", "my.play")
        complaint = run.stderr.replace(folder.root + "/", "")
    if said is None and run.returncode != 0:
        return [f"line {block.line}: fails: {complaint}"]
    if said is not None and (run.returncode == 0 or complaint != said):
        return [f"line {block.line}: says {complaint!r}, the page {said!r}"]
    return []


def conversation_faults(setup, level, block):
    commands = [line[2:] for line in block.text.splitlines() if line.startswith("> ")]
    wanted = [line for line in block.text.splitlines() if not line.startswith("> ")]
    with GameFolder(crlf(level), setup.pictures, setup.font) as folder:
        run = zelplay(setup, folder.root, ".", "-", given="\n".join(commands) + "\n")
    if run.stdout.splitlines() != wanted:
        return [f"line {block.line}: answers {run.stdout!r}"]
    return []


def heading_faults(text, blocks):
    """Commands whose chapter has no play, unless the conversation shows them."""
    shown = {block.heading for block in blocks if block.info == "play"}
    talk = "".join(block.text for block in blocks if "answers" in block.marks)
    headings = [line for line in text.splitlines() if line.startswith("### `")]
    faults = [] if len(headings) > 10 else ["the commands were not found"]
    for heading in headings:
        if heading not in shown and f"> {heading.split('`')[1]}\n" not in talk:
            faults.append(f"{heading}: no example")
    return faults


def read_arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("page")
    parser.add_argument("--zelplay", required=True)
    parser.add_argument("--font", required=True)
    parser.add_argument("--pictures", required=True)
    return parser.parse_args()


def main():
    setup = read_arguments()
    text = Path(setup.page).read_text(encoding="utf-8")
    blocks = read_blocks(text)
    level = next(block.text for block in blocks if block.info == "c")
    faults = heading_faults(text, blocks)
    for block, follower in zip(blocks, [*blocks[1:], None]):
        if block.info == "play":
            complains = follower is not None and follower.info == "text" \
                and "answers" not in follower.marks
            faults += play_faults(setup, level, block, follower.text if complains else None)
        if "answers" in block.marks:
            faults += conversation_faults(setup, level, block)
    print(f"{len(blocks)} blocks, {len(faults)} faults")
    if faults:
        sys.exit("\n".join(faults))


if __name__ == "__main__":
    main()
