#!/usr/bin/env python3
"""What someone does in the real window becomes a play, and the play gives the same again.

Wants Xvfb and xdotool.
"""

import os
import subprocess
import sys
import time
import unittest
from pathlib import Path

from plays import ZELPLAY, Plays

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "docs"))
from engine_run import Display  # noqa: E402
from process import PATIENCE, has_ended, until  # noqa: E402


class Window(Plays):
    """A display for zelplay's window."""

    def setUp(self):
        super().setUp()
        self.display = Display().__enter__()
        self.addCleanup(lambda: self.display.__exit__(None, None, None))

    def start(self, *words):
        """Starts zelplay there and waits for its window."""
        environment = {**os.environ, "DISPLAY": self.display.name, "SDL_VIDEODRIVER": "x11",
                       "SDL_AUDIODRIVER": "dummy"}
        process = subprocess.Popen([ZELPLAY, *[str(word) for word in words]], cwd=self.folder,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=environment)
        self.addCleanup(lambda: (process.kill(), process.communicate()))
        until(lambda: has_ended(process) or self.display.is_ready(), "the window")
        self.display.tool("windowfocus", str(self.display.window))
        self.display.settle()
        return process


class Record(Window):
    def test_recording_plays_back_byte_for_byte(self):
        live = self.record(["mousemove 307 207", "click 1", "mousemove 60 70", "click 3",
                            "mousemove 20 20", "mousedown 1", "mousemove 200 200", "mouseup 1"],
                           ["a", "shift", "b", "Left"])
        for number in (1, 2):
            out = self.folder / f"back{number}"
            run = self.zelplay("--keep", "--output", out, self.game, "live.play")
            self.assertEqual((run.returncode, run.stderr), (0, b""))
            self.assertEqual({file.name: file.read_bytes() for file in out.iterdir()}, live)
        self.assertIn(b"key 4", live["live.out"])
        self.assertIn(b"Choosen=1", live["live.out"])

    def test_recording_is_made_of_whole_passes(self):
        self.record([], ["a"])
        lines = (self.folder / "live.play").read_text().splitlines()
        self.assertEqual(lines[-1], "close")
        self.assertIn("key down A", lines)
        self.assertIn("key up A", lines)
        runs = [int(line.split()[1]) for line in lines if line.startswith("run ")]
        self.assertTrue(runs)
        self.assertEqual([ms % 16 for ms in runs], [0] * len(runs))

    def test_level_that_ends_by_itself_ends_the_recording(self):
        process = self.start("--record", "live.play", self.game)
        self.display.press("q")
        self.assertEqual(process.wait(PATIENCE), 0)
        self.assertTrue((self.folder / "live.play").read_text().endswith("ended 0\n"))
        self.assertEqual(self.zelplay(self.game, "live.play").returncode, 0)

    def record(self, moves, keys):
        """Plays in the window and closes it; returns what the level left."""
        out = self.folder / "live"
        process = self.start("--record", "live.play", "--keep", "--output", out, self.game)
        self.display.play(moves, process)
        for key in keys:
            self.display.press(key)
        process.terminate()  # SDL makes a quit event of it, as of the close button
        self.assertEqual(process.wait(PATIENCE), 0, process.stderr.read())
        return {file.name: file.read_bytes() for file in out.iterdir()}


class Shown(Window):
    def test_play_in_a_window_takes_its_time(self):
        (self.folder / "a.play").write_text("key tap a\nrun 3000\nexpect \"key 4\"\n")
        begin = time.monotonic()
        process = self.start("--window", self.game, "a.play")
        self.assertTrue(self.display.find_window())
        out, err = process.communicate(timeout=PATIENCE)
        self.assertEqual((process.returncode, err), (0, b""))
        self.assertGreater(time.monotonic() - begin, 2.9)
        self.assertEqual(out.decode(), self.passes("key tap a\nrun 3000\n"))

    def test_real_keys_stay_outside(self):
        (self.folder / "a.play").write_text("run 4000\nreject \"key\"\n")
        process = self.start("--window", self.game, "a.play")
        self.display.press("a")
        self.assertEqual(process.wait(PATIENCE), 0)

    def test_closing_the_window_stops_the_play(self):
        (self.folder / "a.play").write_text("run 60000\n")
        process = self.start("--window", self.game, "a.play")
        process.terminate()
        _, err = process.communicate(timeout=PATIENCE)
        self.assertEqual(process.returncode, 1)
        self.assertIn(b"a.play:1: failed: the play was stopped from outside", err)


if __name__ == "__main__":
    unittest.main()
