"""The checker over all small scripts of the tests, whose answers are known, and over all games.

    corpus_test.py ZELCHECK TESTS/SCRIPTS GAMES
"""

import glob
import os
import sys

import matching
import outcome


def read(path):
    if not os.path.exists(path):
        return b""
    with open(path, "rb") as file:
        return file.read()


def known_answer(script):
    """What the files beside a script say of it, in the words of outcome.Engine."""
    stem = os.path.splitext(script)[0]
    if os.path.basename(os.path.dirname(script)) == "hangs":
        return "hang at load"
    status = int(read(stem + ".status") or 0)
    out = read(stem + ".out") + read(stem + ".regex").replace(b"\\n", b"\n").replace(b"\\", b"")
    return outcome.Engine.judge(False, status, out)


def main():
    zelcheck, scripts, games = sys.argv[1:]
    tally = matching.Tally()
    for script in sorted(glob.glob(os.path.join(scripts, "*", "*.txt"))):
        findings = outcome.check(zelcheck, script)
        tally.take(os.path.relpath(script, scripts), known_answer(script), findings)
    status = tally.report(least_clean=200, least_refused=100)
    for game in sorted(glob.glob(os.path.join(games, "*", "levels", "level1", "script.txt"))):
        findings = outcome.check(zelcheck, game)
        if outcome.has_error(findings):
            print(f"{game}: {findings}")
            status = 1
    return status


if __name__ == "__main__":
    sys.exit(main())
