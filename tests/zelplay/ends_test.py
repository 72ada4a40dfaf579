#!/usr/bin/env python3
"""How a level ends under a play: by itself, by its close button, by a hang; what never starts."""

import os
import subprocess
import unittest

from plays import GAMES, LEVEL, ZELPLAY, Plays


class Ends(Plays):
    def test_each_end_can_be_expected(self):
        for key, word in (("q", "0"), ("l", "1"), ("e", "exitgame"), ("f", "division")):
            self.passes(f"key tap {key}\nrun 100\nended {word}\n")
        self.passes("close\nended closed\n")

    def test_close_is_an_end_that_the_play_knows(self):
        self.passes("run 20\nclose\n")

    def test_close_runs_one_last_pass(self):
        self.assertEqual(self.passes("key tap a\nclose\n"), "READY\n\nkey 4\n t1")

    def test_unexpected_end_is_a_failure(self):
        self.fails("key tap q\nrun 100\n", "test.play:2: failed: the level has ended: the script's")
        self.fails("key tap l\nrun 100\nrun 1\n", "3: failed: the level has ended: status")

    def test_other_end_is_a_failure(self):
        self.fails("key tap q\nrun 100\nended 1\n",
                   "3: failed: expected the end 1, but the level has ended: the script's end")
        self.fails("ended 0\n", "1: failed: the level has not ended")
        self.fails("ended badly\n", "1:7: error: expected closed, exitgame", status=2)

    def test_no_time_passes_after_the_end(self):
        self.assertEqual(self.passes("key tap q\nrun 1000\nended 0\n"), "READY\n")

    def test_looking_and_listening_work_after_the_end(self):
        self.passes("key tap q\nrun 100\nended 0\nexpect \"READY\"\nreject \"t1\"\n"
                    "pixel 110 110 #ff0000\nimages \"x=100\"\npicture last.png\n")

    def test_acting_fails_after_the_end(self):
        for command in ("run 1", "key tap a", "mouse down left", "close"):
            self.fails(f"key tap q\nrun 1\nended 0\n{command}\n", "4: failed: the level has ended")

    def test_there_is_no_frame_behind_exitgame(self):
        for command in ("pixel 1 1 #ffffff", "count 0 0 1 1 #ffffff", "picture x.png"):
            self.fails(f"key tap e\nrun 20\nended exitgame\n{command}\n",
                       "4: failed: there is no frame: the engine is shut down")
        self.fails("key tap e\nrun 20\nended exitgame\ntitle \"x\"\n", "there is no window")

    def test_end_in_main(self):
        self.write("int main() { puts(\"up\"); end; }\r\n")
        self.assertEqual(self.passes("ended 0\n"), "up\n")

    def test_no_main(self):
        self.write("int other() { }\r\n")
        self.assertEqual(self.passes("ended 1\n"), "main() not found!\n")

    def test_name_that_is_too_long(self):
        self.write("int main() { int " + 40 * "a" + "; }\r\n")
        self.passes("ended abort\n")

    def test_text_that_is_never_read_to_its_end(self):
        self.write("int main() {\r\n puts(\"x\"); &\r\n}\r\n")
        self.passes("ended stuck\n")
        self.fails("run 1\n", "the level has ended: reading the script never ends, "
                              "levels/level1//script.txt:")

    def test_standard_input_of_the_level_is_empty(self):
        self.write("int main() { putch(getche()); }\r\n")
        self.assertEqual(self.answers("output\n"), ["ok \"-1\""])

    def write(self, script):
        (self.game / "levels" / "level1" / "script.txt").write_bytes(script.encode())


class Hang(Plays):
    def test_hang_is_reported_with_its_place(self):
        """One test for all there is to see: every hang takes ten seconds of processor time."""
        line = LEVEL.split("\n").index("int spin() { while (1) { } }") + 1
        run = self.zelplay(self.game, "-", given=b"run 11\nkey tap s\noutput\nrun 10\nrun 10\n")
        self.assertEqual((run.returncode, run.stdout), (3, b'ok\nok\nok "READY\\n\\n t1"\n'))
        told = run.stderr.decode()
        place = f"levels/level1//script.txt:{line}:"
        self.assertTrue(told.startswith(place), told)
        self.assertIn("spin() has used 2 s of processor time", told)
        self.assertIn("\n-:4: the level hangs: 10 s of processor time", told)
        self.assertIn(f"the script is at {place}", told)


class Start(Plays):
    def refused(self, status, message, *words):
        run = self.zelplay(*words, given=b"run 1\n")
        self.assertEqual(run.returncode, status)
        self.assertIn(message, run.stderr.decode())

    def test_bad_command_lines(self):
        self.refused(2, "a game and a play are wanted")
        self.refused(2, "a game and a play are wanted", self.game)
        self.refused(2, "a game and a play are wanted", self.game, "-", "x")
        self.refused(2, "a game and a play are wanted", "--record", "x", self.game, "-")
        self.refused(2, "unrecognized option '--fast'", "--fast", self.game, "-")
        self.refused(2, "wanted a number from 1 to 250, got 0", "--pass", "0", self.game, "-")
        self.refused(2, "wanted a number from 1 to 250, got x", "--pass", "x", self.game, "-")
        self.refused(2, "no such drawing: much", "--draw", "much", self.game, "-")
        self.refused(2, "'--output' requires an argument", self.game, "-", "--output")
        self.refused(2, "the passes of a recording", "--record", "x", "--pass", "1", self.game)

    def test_help(self):
        run = self.zelplay("--help")
        self.assertEqual((run.returncode, run.stderr), (0, b""))
        self.assertTrue(run.stdout.startswith(b"Usage: zelplay [OPTIONS] GAME PLAY\n"))

    def test_what_is_missing(self):
        self.refused(2, "nogame: No such file", "nogame", "-")
        self.refused(2, "no.play: No such file", self.game, "no.play")
        self.refused(2, "Is a directory", self.game, self.folder)
        (self.game / "arial.ttf").unlink()
        self.refused(1, "the level does not start: \"Cant load arial.ttf font!", self.game, "-")

    def test_game_without_a_script(self):
        (self.game / "levels" / "level1" / "script.txt").unlink()
        self.refused(1, "does not start: \"Cant open file: levels/level1//script.txt\\n"
                        "Failed to load script.txt\"", self.game, "-")


class Memory(Plays):
    def test_frames_do_not_pile_up(self):
        used = [self.kilobytes(f"run {ms}\n") for ms in (1000, 6000)]
        self.assertLess(used[1] - used[0], 60000, used)

    def kilobytes(self, text):
        """The most memory that a play of these lines uses."""
        file = self.folder / "long.play"
        file.write_text(text)
        # A sanitizer would keep what has been freed.
        options = os.environ.get("ASAN_OPTIONS", "") + ":quarantine_size_mb=1"
        command = [ZELPLAY, "--draw", "all", GAMES / "peons", file]
        process = subprocess.Popen(command, stdout=subprocess.DEVNULL,
                                   env={**os.environ, "ASAN_OPTIONS": options})
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = status
        self.assertEqual(status, 0)
        return usage.ru_maxrss


if __name__ == "__main__":
    unittest.main()
