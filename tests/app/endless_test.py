#!/usr/bin/env python3
"""Calls into the script that use two seconds of processor time: one line says where the script is.

Run as: FILE ENGINE. Key functions are tested by tests/zelplay/ends_test.py.
"""

import os
import signal
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
from level_player import write_level  # noqa: E402
from process import PATIENCE, check_lives_on, until  # noqa: E402

ENGINE = str(Path(sys.argv.pop()).resolve())

# Reads until it gets a "q": how long the call lasts is the test's to say.
READS = """int main()
{
    puts("up");
    while (getche() - 113) { }
    puts("out");
}
"""
# The engine is closed before: without a screen the drawing would take a processor of its own.
SPINS = """int x;
int spin()
{
    puts("spins");
    while (x < 10) { x = x * 2; }
}
int start() { exitgame(); spin(); }
int main() { createtimer(1, 0, "start"); }
"""
SHORT = """int i;
int work() { for (i = 0; i < 2000; i = i + 1) { } }
int fail() { work(); nothing = 1; }
int main() { createtimer(0, 0, "work"); createtimer(0, 0, "fail"); }
"""


def processor_seconds(process):
    """Of the main thread."""
    stat = Path(f"/proc/{process.pid}/task/{process.pid}/stat").read_text()
    fields = stat.rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


class Endless(unittest.TestCase):
    def start(self, script, ticks="main"):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        write_level(Path(scratch.name), script)
        process = subprocess.Popen(
            [ENGINE], cwd=scratch.name, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
            stderr=subprocess.PIPE, bufsize=0,
            env={**os.environ, "SDL_VIDEODRIVER": "offscreen", "ZEL_TICKS": ticks})
        for stream in (process.stdin, process.stdout, process.stderr):
            self.addCleanup(stream.close)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        os.set_blocking(process.stderr.fileno(), False)
        return process

    def reads_until(self, process, text):
        seen = b""
        while not seen.endswith(text):
            part = os.read(process.stdout.fileno(), 65536)
            self.assertTrue(part, f"the process ended: {seen}")
            seen += part

    @staticmethod
    def told(process):
        """What standard error has got and nobody has read."""
        return process.stderr.read() or b""

    def feed(self, process, is_enough):
        """Gives the script bytes to read until `is_enough` answers something."""
        answer = None
        while not answer:
            process.stdin.write(b"a" * 65536)
            answer = is_enough()
        return answer

    def leave(self, process):
        """The script comes to its end, and the game goes on until it is asked to quit."""
        process.stdin.write(b"q")
        self.reads_until(process, b"out\n")
        check_lives_on(process)
        process.send_signal(signal.SIGINT)
        self.assertEqual(process.wait(PATIENCE), 0)
        self.assertEqual((process.stdout.read(), self.told(process)), (b"", b""))

    def test_call_that_waits_long_and_works_for_a_second_is_none(self):
        process = self.start(READS)
        self.reads_until(process, b"up\n")
        enough = processor_seconds(process) + 1
        self.feed(process, lambda: processor_seconds(process) >= enough)
        time.sleep(2.2)  # more than the two seconds that must not be counted
        self.leave(process)

    def test_call_that_ends_after_all_leaves_everything_as_it_was(self):
        process = self.start(READS)
        self.reads_until(process, b"up\n")
        began = processor_seconds(process)
        line = self.feed(process, lambda: self.told(process))
        self.assertGreater(processor_seconds(process) - began, 1.9)
        self.assertRegex(line, rb"\Alevels/level1//script.txt:4:\d+: main\(\) has used 2 s of "
                               rb"processor time: an endless loop\? "
                               rb"Ctrl-C twice stops the game\n\Z")
        self.leave(process)

    def test_loop_in_a_timer_function(self):
        """The place is in the loop, the function is the one that the engine called."""
        for ticks in ("", "main"):
            with self.subTest(ticks):
                process = self.start(SPINS, ticks)
                self.reads_until(process, b"spins\n")
                line = until(lambda: self.told(process), "the report")
                self.assertRegex(line, rb"\Alevels/level1//script.txt:5:\d+: "
                                       rb"start\(\) has used 2 s of processor time")
                self.assertIsNone(process.poll())

    def test_many_short_calls_are_none(self):
        process = self.start(SHORT)
        os.set_blocking(process.stdout.fileno(), False)
        until(lambda: (process.stdout.read() or True) and processor_seconds(process) > 2.7,
              "processor time")
        self.assertEqual(self.told(process), b"")


unittest.main()
