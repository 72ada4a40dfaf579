#!/usr/bin/env python3
"""The engine as a process, without a window on a screen: start-up and its failures, and the end.

Run as: FILE ENGINE. Output is compared byte by byte; of messages that end in SDL's own words, all
that is the engine's.
"""

import os
import signal
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
from level_folder import write_level  # noqa: E402
from process import PATIENCE, check_lives_on, wait_until_uncaught  # noqa: E402

# Ends may take their time: without a screen nothing holds the frames back, and the renderer ends
# those that wait.
ENGINE = str(Path(sys.argv.pop()).resolve())
ENDS = "int main() { puts(\"up\"); end; }"
FAILED = rb"\nFailed to initialize!"
LEAVES = "{ puts(\"leaving\"); exitgame(); puts(\"left\"); }"


class EngineProcess(unittest.TestCase):
    def setUp(self):
        self.scratch = tempfile.TemporaryDirectory()
        self.folder = Path(self.scratch.name)
        self.addCleanup(self.scratch.cleanup)

    def start(self, **environment):
        return subprocess.Popen(
            [ENGINE], cwd=self.folder, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            env={**os.environ, "SDL_VIDEODRIVER": "offscreen", "ZEL_TICKS": "main", **environment},
        )

    def check(self, output, status=0, **environment):
        """Runs the engine to its end; `output` is a pattern for all that it prints."""
        process = self.start(**environment)
        out, err = process.communicate(timeout=PATIENCE)
        self.assertRegex(out, b"\\A" + output + b"\\Z")
        self.assertEqual(err, b"")
        self.assertEqual(process.returncode, status)


class StartUp(EngineProcess):
    def setUp(self):
        super().setUp()
        write_level(self.folder, ENDS)
        self.script = self.folder / "levels" / "level1" / "script.txt"
        self.font = self.folder / "arial.ttf"

    def test_whole_folder_runs_its_script(self):
        self.check(b"up\n")

    def test_missing_font(self):
        self.font.unlink()
        self.check(b"Cant load arial\\.ttf font!\nCant load font!" + FAILED)

    def test_broken_fonts(self):
        whole = self.font.read_bytes()
        for content in (b"", b"no font", whole[:2000]):
            self.font.unlink()
            self.font.write_bytes(content)
            self.check(b"Cant load arial\\.ttf font!\nCant load font!" + FAILED)

    def test_missing_font_is_found_before_a_bad_video_driver(self):
        self.font.unlink()
        self.check(
            b"Cant load arial\\.ttf font!\nCant load font!" + FAILED, SDL_VIDEODRIVER="nosuch"
        )

    def test_bad_video_driver(self):
        self.check(
            b"SDL could not initialize! SDL_Error: nosuch not available\n" + FAILED,
            SDL_VIDEODRIVER="nosuch",
        )

    def test_refused_hint(self):
        self.check(
            b"\nWarning: Linear texture filtering not enabled!" + FAILED,
            SDL_RENDER_SCALE_QUALITY="0",
        )

    def test_no_second_renderer(self):
        self.check(
            b"\nRender is not loaded! SDL_Error: [^\n]+" + FAILED, SDL_VIDEODRIVER="dummy"
        )

    def test_missing_selection_picture_does_not_stop_the_start(self):
        (self.folder / "SysPics" / "select.bmp").unlink()
        self.check(
            b"\n1Unable to load image SysPics/select\\.bmp! SDL Error: [^\n]+"
            b"\nCant load SYSimage: SysPics/select\\.bmp\\.   [^\n]+up\n"
        )

    def test_missing_script(self):
        self.script.unlink()
        self.check(
            b"Cant open file: levels/level1//script\\.txt\nFailed to load script\\.txt"
        )

    def test_missing_level_folder(self):
        (self.folder / "levels").rename(self.folder / "elsewhere")
        self.check(
            b"Cant open file: levels/level1//script\\.txt\nFailed to load script\\.txt"
        )

    def test_empty_script(self):
        self.script.write_bytes(b"")
        self.check(b"main\\(\\) not found!\n", status=1)

    def test_script_with_an_error_in_its_text(self):
        self.script.write_bytes(b"int a b;\r\nint main() { }\r\n")
        self.check(
            b"\nCant find ';' in line 0\n.*Error buffer long jump\nFailed to load script\\.txt"
        )

    def test_arguments_are_not_looked_at(self):
        process = subprocess.run(
            [ENGINE, "--help", "other.txt"], cwd=self.folder, capture_output=True, timeout=PATIENCE,
            env={**os.environ, "SDL_VIDEODRIVER": "offscreen"}, check=False,
        )
        self.assertEqual((process.returncode, process.stdout), (0, b"up\n"))


class End(EngineProcess):
    def output_until(self, process, wanted):
        """Reads until the output is `wanted`."""
        seen = b""
        while len(seen) < len(wanted):
            part = os.read(process.stdout.fileno(), len(wanted) - len(seen))
            self.assertTrue(part, f"the process ended: {seen}")
            seen += part
        self.assertEqual(seen, wanted)

    def check_stopped(self, script, wanted, stop, status, **environment):
        write_level(self.folder, script)
        process = self.start(**environment)
        self.addCleanup(process.stdout.close)
        self.addCleanup(process.stderr.close)
        self.addCleanup(process.kill)
        self.output_until(process, wanted)
        if status < 0:
            # It closes on another thread than the script's: before it has, the signal would only
            # ask an event loop that is gone to quit.
            wait_until_uncaught(process, stop)
        check_lives_on(process)
        process.send_signal(stop)
        self.assertEqual(process.wait(PATIENCE), status)
        self.assertEqual((process.stdout.read(), process.stderr.read()), (b"", b""))

    def test_interrupt_ends_the_loop(self):
        for ticks in ("", "main"):
            with self.subTest(ticks):
                self.setUp()
                self.check_stopped(
                    "int main() { puts(\"up\"); }", b"up\n", signal.SIGINT, 0, ZEL_TICKS=ticks
                )

    def test_process_lives_on_after_exitgame_in_main(self):
        for ticks in ("", "main"):
            with self.subTest(ticks):
                self.setUp()
                self.check_stopped(
                    "int main() " + LEAVES, b"leaving\nleft\n", signal.SIGTERM, -signal.SIGTERM,
                    ZEL_TICKS=ticks,
                )

    def test_process_lives_on_after_exitgame_in_a_timer(self):
        script = "int leave() " + LEAVES + """
            int draw() { createtext("a", 0, 0, 50, 50); moveunit(0, 5, 5); }
            int main() { createunit(0, 1, 1); createtimer(0, 0, "draw");
                createtimer(1, 300, "leave"); createtimer(0, 0, "draw"); }"""
        for ticks in ("", "main"):
            with self.subTest(ticks):
                self.setUp()
                self.check_stopped(
                    script, b"leaving\nleft\n", signal.SIGINT, -signal.SIGINT, ZEL_TICKS=ticks
                )

    def test_any_second_signal_ends_a_hanging_script(self):
        write_level(self.folder, "int main() { puts(\"up\"); while (1) { } }")
        for first in (signal.SIGINT, signal.SIGTERM):
            for second in (signal.SIGINT, signal.SIGTERM):
                with self.subTest(f"{first.name}, {second.name}"):
                    process = self.start()
                    self.addCleanup(process.stdout.close)
                    self.addCleanup(process.stderr.close)
                    self.addCleanup(process.kill)
                    self.output_until(process, b"up\n")
                    process.send_signal(first)
                    wait_until_uncaught(process, second)
                    process.send_signal(second)
                    self.assertEqual(process.wait(60), -second)

    def test_lines_printed_before_an_endless_loop_can_be_read(self):
        write_level(
            self.folder, "int main() { print(\"one\"); puts(\" two\"); print(3); while (1) { } }"
        )
        process = self.start()
        self.addCleanup(process.stdout.close)
        self.addCleanup(process.stderr.close)
        self.addCleanup(process.kill)
        self.output_until(process, b"\none two\n")

    def test_error_in_main_leaves_the_engine_running(self):
        write_level(self.folder, "int main() { nothing = 1; }")
        process = self.start()
        self.addCleanup(process.kill)
        seen = b""
        while not seen.endswith(b"Error buffer long jump"):
            part = os.read(process.stdout.fileno(), 65536)
            self.assertTrue(part, f"the process ended: {seen}")
            seen += part
        check_lives_on(process)
        process.send_signal(signal.SIGINT)
        out, err = process.communicate(timeout=PATIENCE)
        self.assertRegex(seen + out, rb"\A\nNone variable in line 0\n.*Error buffer long jump\Z")
        self.assertEqual((process.returncode, err), (0, b""))

    def test_unknown_timer_function_ends_the_process_with_status_1(self):
        write_level(self.folder, "int main() { createtimer(1, 0, \"Nobody\"); }")
        for ticks in ("", "main"):
            with self.subTest(ticks):
                self.check(b"Nobody\\(\\) not found!\n", status=1, ZEL_TICKS=ticks)

    def test_end_in_a_timer_keeps_what_was_printed(self):
        write_level(
            self.folder,
            "int stop() { print(5); end; } int main() { print(4); createtimer(1, 0, \"stop\"); }",
        )
        for ticks in ("", "main"):
            with self.subTest(ticks):
                self.check(b"45", ZEL_TICKS=ticks)


if __name__ == "__main__":
    unittest.main()
