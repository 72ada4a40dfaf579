"""zelkit play: what reaches the terminal, and how a game ends."""

import os
import pty
import select
import shutil
import signal
import subprocess
import sys
import time
import unittest

from kit import KIT, ZELKIT, KitTest
from process import PATIENCE

NO_DISPLAY = {"SDL_VIDEODRIVER": "", "DISPLAY": "", "WAYLAND_DISPLAY": ""}
PLACE = "game/levels/level1/script.txt"

# zelkit, with more than a second for a game that ends by itself: a busy machine may need it.
PATIENT_KIT = f"""import os, runpy, sys
del sys.argv[0]
sys.path.insert(0, os.path.dirname(sys.argv[0]))
sys.dont_write_bytecode = True
import engine
engine.STOP_SECONDS = {PATIENCE}
runpy.run_path(sys.argv[0], run_name="__main__")
"""

# A timer whose function fails each time, until another ends the game.
FAULTY = """int x, n;
int main()
{
    x = 0;
    createtimer(0, 100, "faulty");
    createtimer(0, 100, "count");
}
int faulty() { n = n + 1; print(" at "); if (n > 0) { x = 1 / x; } }
int count() { if (n == 13) { end; } }
"""


class Output(KitTest):
    def play(self, script, *options, **more):
        self.write(script)
        return self.kit("play", "game", "--force", *options, **more)

    def test_the_scripts_own_output_stays_as_it_is(self):
        script = 'int main()\n{\n    puts("one");\n    print("two");\n    print(3);\n' \
                 '    puts("");\n    print("x in line 4");\n    end;\n}\n'
        status, out, err = self.play(script)
        self.assertEqual((status, out), (0, "one\n\ntwo3\n\nx in line 4"))
        self.assertNotIn("error", err)

    def test_output_that_looks_like_the_head_of_a_report_comes_through(self):
        script = 'int main()\n{\n    puts("wait in line 3");\n    puts("next");\n    end;\n}\n'
        self.assertEqual(self.play(script)[1], "wait in line 3\nnext\n")

    def test_an_error_has_file_line_column_and_caret(self):
        _, out, err = self.play(
            'int x;\nint main()\n{\n    createtimer(1, 100, "t");\n    puts("A");\n'
            '    if (x == 0) { puts(x); }\n    puts("B");\n}\nint t() { end; }\n')
        self.assertEqual(out, "A\n")
        report = err[err.index("zelkit: playing"):].splitlines()[1:]
        self.assertEqual(report[0], PLACE + ":6:25: error: Waiting closing '\"'")
        self.assertEqual(report[1], "        if (x == 0) { puts(x); }")
        self.assertEqual(report[2].index("^") - 4, 25 - 1)

    def test_a_game_with_errors_is_status_1(self):
        self.assertEqual(self.play(FAULTY)[0], 1)

    def test_repeated_reports_are_counted(self):
        _, out, err = self.play(FAULTY)
        self.assertEqual(out, "\n at " * 13)
        err = err[err.index("zelkit: playing"):]
        self.assertEqual(err.count("\n    int faulty()"), 1)
        column = FAULTY.splitlines()[7].index("1 / x;") + len("1 / x;")
        head = f"{PLACE}:8:{column}: error: X/0 Delenie na NULL"
        self.assertIn(f"\n{head}\n", err)
        self.assertIn(f"\n{head} (10 times so far)\n", err)
        self.assertTrue(err.endswith(f"\n{head} (13 times)\n"), err)

    def test_a_missing_picture_is_one_report_at_its_name(self):
        script = 'int main()\n{\n    loadimage("none.bmp");\n    puts("A");\n    end;\n}\n'
        status, out, err = self.play(script)
        self.assertEqual((status, out), (1, "A\n"))
        self.assertIn(PLACE + ":3:15: error: Unable to load image levels/level1/none.bmp!", err)
        self.assertNotIn("Cant load image", err)

    def test_a_missing_selection_frame_is_one_report(self):
        (self.game / "SysPics" / "select.bmp").unlink()
        _, out, err = self.play('int main()\n{\n    puts("A");\n    end;\n}\n')
        self.assertEqual(out, "A\n")
        self.assertIn(": error: Unable to load image SysPics/select.bmp!", err)

    def test_a_call_back_that_is_not_there_is_shown_where_it_is_named(self):
        script = 'int main()\n{\n    puts("A");\n    createtimer(0, 100, "tock");\n}\n'
        status, out, err = self.play(script)
        self.assertEqual((status, out), (1, "A\n"))
        self.assertIn(PLACE + ":4:25: error: tock() not found!", err)
        self.assertIn("the game ended with status 1", err)

    def test_raw_shows_the_engines_bytes(self):
        script = 'int x;\nint main()\n{\n    createtimer(1, 100, "t");\n    puts(x);\n}\n' \
                 'int t() { end; }\n'
        _, out, _ = self.play(script, "--raw")
        report = "\nWaiting closing '\"' in line 4\n\n    puts(x)Error buffer long jump"
        self.assertEqual(out, report)

    def test_a_prompt_appears_before_the_key_that_it_asks_for(self):
        self.write('int c;\nint main()\n{\n    print("key? ");\n    c = getche();\n    print(c);\n'
                   '    end;\n}\n')
        run = self.begin("play", "game", stdin=subprocess.PIPE)
        run.wait_for("out", "key? ")
        run.process.stdin.write(b"A")
        run.process.stdin.flush()
        self.assertEqual(run.end()[:2], (0, "\nkey? 65"))
        run.process.stdin.close()


class Start(KitTest):
    def test_the_first_line_tells_how_much_room_is_used(self):
        self.write("int main()\n{\n    end;\n}\n")
        size = self.script.stat().st_size
        self.assertRegex(self.kit("play", "game")[2],
                         rf"^zelkit: playing game: {size} of 9999 bytes, 1 of 100 functions, ")

    def test_errors_keep_a_game_from_starting(self):
        self.write("int main()\n{\n    x = 1;\n}\n")
        status, out, err = self.kit("play", "game")
        self.assertEqual((status, out), (1, ""))
        self.assertIn(PLACE + ":3:5: error: ", err)
        self.assertIn("game was not started", err)

    def test_bare_line_feeds_are_rewritten_and_the_game_plays(self):
        self.write('int main()\n{\n    puts("READY");\n    end;\n}\n', line_end="\n")
        status, out, err = self.kit("play", "game")
        self.assertEqual((status, out), (0, "READY\n"))
        self.assertIn("5 line ends rewritten", err)

    def test_without_a_display_it_says_so(self):
        status, _, err = self.kit("play", "game", environment=NO_DISPLAY)
        self.assertEqual(status, 2)
        self.assertIn("there is no display here", err)

    def test_a_game_that_cannot_start_is_status_1(self):
        status, _, err = self.kit("play", "game", environment={"SDL_VIDEODRIVER": "nothing"})
        self.assertEqual(status, 1)
        self.assertIn("the game could not start", err)

    def test_ticks_run_on_the_main_thread_unless_the_user_says_otherwise(self):
        self.write('int main()\n{\n    createtimer(1, 1000, "t");\n}\nint t() { end; }\n')
        self.assertNotIn("ZEL_TICKS", self.kit("play", "game")[2])
        told = self.kit("play", "game", environment={"ZEL_TICKS": "other"})[2]
        self.assertIn("ZEL_TICKS=other", told)

    def test_a_game_that_nobody_may_write_plays_for_two_at_once_without_a_font(self):
        (self.game / "arial.ttf").unlink()
        for name in ("zel", "zelcheck"):
            shutil.copy(f"{os.environ['ZELKIT_BIN']}/{name}", self.folder)
        shutil.copytree(KIT, self.folder / "kit")
        self.command = lambda *words: [str(self.folder / "kit" / "zelkit"), *words]
        options = {"env": {**os.environ, "ZELKIT_BIN": str(self.folder)}}
        os.chmod(self.folder, 0o755)
        os.chmod(self.game, 0o555)
        if os.geteuid() == 0:  # root may write everywhere
            options.update(user=65534, group=65534, extra_groups=[])
        runs = [self.begin("play", "game", **options) for _ in range(2)]
        for run in runs:
            run.wait_for("out", "READY")
        for run in runs:
            run.interrupt(signal.SIGINT)
        os.chmod(self.game, 0o755)
        self.assertFalse((self.game / "arial.ttf").exists())


class End(KitTest):
    """Ctrl-C once is enough. The game has a second to end by itself, then it is ended."""

    def test_a_game_ends_by_itself_when_it_is_asked_to(self):
        self.command = lambda *words: [sys.executable, "-c", PATIENT_KIT, ZELKIT, *words]
        run = self.begin("play", "game")
        run.wait_for("out", "READY")
        run.process.send_signal(signal.SIGINT)  # a second one changes nothing
        status, _, err = run.interrupt(signal.SIGINT)
        self.assertEqual((status, err.count("\n")), (0, 1), err)

    def check_endless(self, script, place):
        self.write(script)
        run = self.begin("play", "game", "--force")
        run.wait_for("out", "SPIN")
        run.wait_for("err", "stops the game\n")
        status, _, err = run.interrupt(signal.SIGINT)
        self.assertEqual(status, 1)
        told = r"an endless loop\? Ctrl-C stops the game\n    .*\n *\^\n"
        self.assertRegex(err, rf"\n{PLACE}:{place}: .*{told}")
        self.assertIn("did not end when it was asked to", err)

    def test_an_endless_loop_in_main_is_ended(self):
        self.check_endless('int main()\n{\n    puts("SPIN");\n    while (1) { }\n}\n', r"4:\d+")

    def test_an_endless_loop_in_a_timer_function_is_ended(self):
        self.check_endless('int main()\n{\n    createtimer(1, 100, "t");\n}\n'
                           'int t() { puts("SPIN"); while (1) { } }\n', r"5:\d+")

    def test_a_game_that_waits_for_a_key_is_ended(self):
        self.write('int main()\n{\n    puts("SPIN");\n    getche();\n}\n')
        run = self.begin("play", "game", stdin=subprocess.PIPE)
        run.wait_for("out", "SPIN")
        run.interrupt(signal.SIGINT)
        run.process.stdin.close()

    def test_the_game_ends_when_nobody_reads_its_output(self):
        self.write('int main()\n{\n    createtimer(0, 100, "t");\n}\nint t() { puts("x"); }\n')
        command = self.command("play", "game")
        with subprocess.Popen(command, cwd=self.folder, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, start_new_session=True) as process:
            process.stdout.readline()
            process.stdout.close()
            self.assertEqual(process.wait(PATIENCE), 2)
            with self.assertRaises(ProcessLookupError):  # nobody of its group is left
                os.killpg(process.pid, signal.SIGKILL)

    def test_a_crash_is_named(self):
        self.write("int x;\nint main()\n{\n    if (x == 0) { x = 1 % x; }\n}\n")
        status, _, err = self.kit("play", "game", "--force")
        self.assertEqual(status, 1)
        self.assertIn("the game was ended by SIGFPE", err)


class Terminal(KitTest):
    """On a terminal of its own, which sends Ctrl-C to zelkit and the engine alike."""

    def begin_on_terminal(self, script):
        self.write(script)
        process, self.terminal = pty.fork()
        if process == 0:
            os.chdir(self.folder)
            os.execv(ZELKIT, self.command("play", "game", "--force"))
        self.addCleanup(os.close, self.terminal)
        self.addCleanup(self.end_group, process)
        self.text = b""
        return process

    @staticmethod
    def end_group(process):
        try:
            os.killpg(process, signal.SIGKILL)
            os.waitpid(process, 0)
        except (ProcessLookupError, ChildProcessError):
            pass  # it has ended already

    def read_until(self, text):
        end = time.monotonic() + PATIENCE
        while text not in self.text:
            if not select.select([self.terminal], [], [], max(0, end - time.monotonic()))[0]:
                self.fail(f"waited for {text!r} in {self.text!r}")
            self.text += os.read(self.terminal, 65536)

    def test_keys_reach_the_script_and_ctrl_c_ends_its_endless_loop(self):
        process = self.begin_on_terminal(
            'int c;\nint main()\n{\n    print("key? ");\n    c = getche();\n'
            '    if (c == 65) { puts("an A"); }\n    while (c > 0) { c = c; }\n}\n')
        self.read_until(b"key? ")
        os.write(self.terminal, b"A\n")
        self.read_until(b"an A")
        os.write(self.terminal, b"\x03")
        self.read_until(b"did not end when it was asked to")
        self.assertEqual(os.waitstatus_to_exitcode(os.waitpid(process, 0)[1]), 1)

    def test_a_report_begins_a_line(self):
        self.begin_on_terminal(
            'int x;\nint main()\n{\n    print("score ");\n    print(7);\n    puts(x);\n}\n')
        self.read_until(b"^\r\n")
        shown = self.text[self.text.index(b"playing"):]
        self.assertIn(b"\r\nscore 7\r\ngame/levels/level1/script.txt:6:", shown)


if __name__ == "__main__":
    unittest.main()
