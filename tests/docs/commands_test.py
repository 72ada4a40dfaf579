#!/usr/bin/env python3
"""Types the commands of the pages, as a reader does, in an empty folder beside docs and kit.

    commands_test.py ROOT PAGE...

The commands are the blocks marked "sh", and the first cells of tables that are zelkit commands.
A page begins in a new folder. If it lists the files of a game, they must be there at its end. What
goes on, zelkit play and watch, is ended when the game runs. Only the project's own scripts are not
started: they build, and the tests run in such a build. ZELKIT_BIN is where the programs are.
"""

import os
import re
import signal
import subprocess
import sys
import tempfile
import threading
from pathlib import Path

from page import read_blocks

PATIENCE = 60
TO_PATH = 'export PATH="$PWD/kit:$PWD/build:$PATH"'
GOES_ON = re.compile(r"zelkit (play|watch) \w+")
RUNNING = "READY\n"  # what a new game prints at its start


def commands_of(text):
    lines = [line for block in read_blocks(text) if block.info == "sh"
             for line in block.text.splitlines()]
    lines += re.findall(r"^\| `(zelkit [^`]+)` \|", text, re.M)
    return list(dict.fromkeys(re.sub(r"\s+#.*", "", line) for line in lines))


def files_of(text):
    """The files of a game, where a page lists them below the folder."""
    listed = re.search(r"^    (\w+/)\n((?:        .+\n)+)", text, re.M)
    return [listed[1] + line.split()[0] for line in listed[2].splitlines()] if listed else []


def goes_on(command, folder, env):
    """Starts it, and ends it when the game runs."""
    process = subprocess.Popen(command.split(), cwd=folder, env=env, stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT, text=True)
    alarm = threading.Timer(PATIENCE, process.kill)
    alarm.start()
    said = ""
    for line in process.stdout:
        said += line
        if line == RUNNING:
            process.send_signal(signal.SIGINT)
    alarm.cancel()
    status = process.wait()
    return [] if status == 0 and RUNNING in said else [f"{command}: {status}: {said}"]


def type_command(command, root, folder, env):
    words = command.rstrip(" &").split()
    if words[0] in ("./run.sh", "./test.sh"):
        games = [root / "games" / word for word in words[1:]]
        there = os.access(root / words[0], os.X_OK) and all(game.is_dir() for game in games)
        return [] if there else [f"{command}: is not there"]
    if words[0] == "xdg-open":
        return [] if (folder / words[1]).is_file() else [f"{command}: no such file"]
    if words[0] == "export":
        return [] if command == TO_PATH else [f"{command}: unknown"]
    if GOES_ON.fullmatch(command):
        return goes_on(command, folder, env)
    run = subprocess.run(["bash", "-c", command], cwd=folder, env=env, capture_output=True,
                         text=True, check=False)
    return [] if run.returncode == 0 else [f"{command}: {run.stdout}{run.stderr}"]


def page_faults(page, root):
    text = page.read_text(encoding="utf-8")
    commands = commands_of(text)
    with tempfile.TemporaryDirectory() as folder:
        for name in ("docs", "kit"):
            (Path(folder) / name).symlink_to(root / name)
        path = f"{folder}/kit:{os.environ['ZELKIT_BIN']}:{os.environ['PATH']}"
        env = dict(os.environ, PATH=path)
        faults = [f"{page.name}: {fault}" for command in commands
                  for fault in type_command(command, root, Path(folder), env)]
        faults += [f"{page.name}: a new game has no {name}" for name in files_of(text)
                   if not (Path(folder) / name).exists()]
    return faults if commands else [*faults, f"{page.name}: no commands"]


def main():
    root = Path(sys.argv[1]).resolve()
    pages = [Path(name) for name in sys.argv[2:]]
    faults = [fault for page in pages for fault in page_faults(page, root)]
    print(f"{len(pages)} pages, {len(faults)} faults")
    if faults:
        sys.exit("\n".join(faults))


if __name__ == "__main__":
    main()
