#!/usr/bin/env python3
"""run.sh hands on to zelkit: plays of a game, and a new game with a first play that goes well.

Building is left out: the folder has the zelplay of this build, and a cmake that does nothing.
"""

import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

from plays import GAMES, PATIENCE, ZELPLAY

ROOT = Path(__file__).resolve().parents[2]


class Run(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = Path(scratch.name)
        for name in ("run.sh", "CMakePresets.json"):
            shutil.copy(ROOT / name, self.folder)
        for name in ("kit", "tools"):
            shutil.copytree(ROOT / name, self.folder / name)
        for name in ("bin/cmake", "build/zel", "build/zelcheck"):
            self.write(name, "#!/bin/sh\n").chmod(0o755)
        (self.folder / "build/zelplay").symlink_to(ZELPLAY)
        shutil.copytree(GAMES / "template", self.folder / "games/template")

    def write(self, name, text):
        file = self.folder / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)
        return file

    def run_sh(self, *words):
        environment = {**os.environ, "PATH": f"{self.folder}/bin:{os.environ['PATH']}",
                       "DISPLAY": ":none", "ZELKIT_BIN": ""}
        return subprocess.run(["./run.sh", *words], cwd=self.folder, env=environment,
                              timeout=PATIENCE, capture_output=True, text=True, check=False)

    def test_each_play_has_a_line(self):
        self.write("games/template/plays/again.play", "run 16\nexpect \"READY\"\n")
        run = self.run_sh("--test", "template")
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertEqual(run.stdout.splitlines()[1:],
                         ["again                ok", "first                ok"])

    def test_new_game_has_a_first_play(self):
        made = self.run_sh("--new", "mine")
        self.assertEqual(made.returncode, 0, made.stderr)
        run = self.run_sh("--test", "mine")
        self.assertEqual((run.returncode, run.stdout.split()[-2:]), (0, ["first", "ok"]))

    def test_unknown_game(self):
        self.assertEqual(self.run_sh("--test", "nogame").returncode, 2)


if __name__ == "__main__":
    unittest.main()
