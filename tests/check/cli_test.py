"""zelcheck as a command: arguments, exit statuses, --fix.

    cli_test.py ZELCHECK
"""

import json
import os
import pty
import stat
import subprocess
import sys
import tempfile
import unittest

ZELCHECK = os.path.abspath(sys.argv.pop(1))

GOOD = b"int main()\r\n{\r\n}\r\n"
WARNING = b"int unused;\r\n" + GOOD
ERROR = b"int main()\r\n{\r\n    x = 1;\r\n}\r\n"


class CommandLine(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory(prefix="zel-cli-")
        self.addCleanup(self.folder.cleanup)

    def path(self, name):
        return os.path.join(self.folder.name, name)

    def write(self, name, content):
        os.makedirs(os.path.dirname(self.path(name)), exist_ok=True)
        with open(self.path(name), "wb") as file:
            file.write(content)
        return self.path(name)

    def write_level(self, game, script):
        """A script in a game that has what the engine does not start without."""
        self.write(os.path.join(game, "arial.ttf"), b"")
        self.write(os.path.join(game, "SysPics", "select.bmp"), b"")
        return self.write(os.path.join(game, "levels", "level1", "script.txt"), script)

    def read(self, name):
        with open(self.path(name), "rb") as file:
            return file.read()

    def run_check(self, *arguments):
        return subprocess.run([ZELCHECK, *arguments], cwd=self.folder.name, capture_output=True,
                              timeout=120, check=False)

    def status(self, *arguments):
        return self.run_check(*arguments).returncode

    # Exit statuses ------

    def test_the_worst_file_decides_the_status(self):
        self.write("good.txt", GOOD)
        self.write("warning.txt", WARNING)
        self.write("error.txt", ERROR)
        self.assertEqual(0, self.status("good.txt"))
        self.assertEqual(1, self.status("good.txt", "warning.txt"))
        self.assertEqual(2, self.status("error.txt", "warning.txt"))
        self.assertEqual(3, self.status("missing.txt", "error.txt"))

    def test_a_file_that_cannot_be_read_is_named(self):
        done = self.run_check("missing.txt")
        self.assertEqual(b"", done.stdout)
        self.assertEqual(b"zelcheck: missing.txt: No such file or directory\n", done.stderr)

    def test_unknown_options_are_refused(self):
        done = self.run_check("--nonsense")
        self.assertEqual(3, done.returncode)
        self.assertIn(b"--nonsense", done.stderr)

    def test_help_names_every_option_and_status(self):
        done = self.run_check("--help")
        self.assertEqual(0, done.returncode)
        for word in (b"--fix", b"--json", b"--room", b"--help", b"--ids",
                     b"levels/level1/script.txt", b"0 nothing found", b"1 warnings only",
                     b"2 errors", b"3 a file"):
            self.assertIn(word, done.stdout)

    # Which files ------

    def test_without_arguments_the_level_is_checked(self):
        self.write_level("", ERROR)
        done = self.run_check()
        self.assertTrue(done.stdout.startswith(b"levels/level1/script.txt:3:5: error: "))
        self.assertEqual(2, done.returncode)

    def test_paths_start_where_the_user_is(self):
        script = self.write_level("game", ERROR)
        for path in ("game", "./game", script):
            shown = self.run_check(path).stdout.decode().split(":")[0]
            self.assertEqual("game/levels/level1/script.txt", os.path.normpath(shown))
            self.assertFalse(os.path.isabs(shown))

    def test_other_letter_case_is_told(self):
        self.write("levels/level1/Script.txt", GOOD)
        done = self.run_check()
        self.assertEqual(3, done.returncode)
        self.assertIn(b"but it exists as levels/level1/Script.txt", done.stderr)

    def test_a_folder_is_searched_for_scripts(self):
        self.write_level("games/b", ERROR)
        self.write_level("games/a", WARNING)
        self.write("games/a/levels/level1/notes.txt", b"no script")
        lines = self.run_check("games").stdout.decode().splitlines()
        heads = [line for line in lines if line.startswith("games")]
        self.assertEqual(2, len(heads))
        self.assertTrue(heads[0].startswith("games/a/levels/level1/script.txt:1:5: warning: "))
        self.assertTrue(heads[1].startswith("games/b/levels/level1/script.txt:3:5: error: "))

    def test_a_folder_without_a_script_cannot_be_read(self):
        os.mkdir(self.path("empty"))
        self.assertEqual(3, self.status("empty"))

    def test_a_file_may_begin_with_a_hyphen(self):
        self.write("-x.txt", GOOD)
        self.assertEqual(0, self.status("--", "-x.txt"))

    # Output ------

    def test_json_is_one_object_a_finding(self):
        self.write("error.txt", ERROR + b"int a\xff\x07\"b;\r\n")
        lines = self.run_check("--json", "error.txt").stdout.decode("utf-8").splitlines()
        findings = [json.loads(line) for line in lines]
        self.assertGreater(len(findings), 1)
        for finding in findings:
            self.assertEqual({"file", "line", "column", "severity", "id", "text"}, set(finding))
        first = findings[0]
        self.assertEqual(("error.txt", 3, 5, "error", "unknown-variable"), tuple(
            first[key] for key in ("file", "line", "column", "severity", "id")))

    def run_on_terminal(self, **environment):
        self.write("error.txt", ERROR)
        master, slave = pty.openpty()
        env = dict(os.environ, TERM="xterm")
        env.pop("NO_COLOR", None)
        env.update(environment)
        subprocess.run([ZELCHECK, "error.txt"], cwd=self.folder.name, stdout=slave, env=env,
                       timeout=120, check=False)
        os.close(slave)
        out = os.read(master, 65536)
        os.close(master)
        return out

    def test_a_terminal_gets_colours(self):
        self.assertIn(b"\x1b[", self.run_on_terminal())
        self.assertNotIn(b"\x1b[", self.run_on_terminal(NO_COLOR="1"))
        self.assertNotIn(b"\x1b[", self.run_on_terminal(TERM="dumb"))

    # Files that a script names ------

    def test_fonts_are_looked_for_in_the_games_folder(self):
        script = b"int main()\r\n{\r\n    changeallfont(\"a.ttf\", 12);\r\n}\r\n"
        self.write_level("game", script)
        self.assertIn(b"[missing-file]", self.run_check("game").stdout)
        self.write("game/A.ttf", b"")
        self.assertIn(b"exists as \"A.ttf\"", self.run_check("game").stdout)
        self.write("game/a.ttf", b"")
        self.assertEqual(0, self.status("game"))

    def test_all_that_the_engine_needs_is_named_at_once(self):
        script = self.write("game/levels/level1/script.txt", GOOD)
        self.assertIn(b"error: the engine does not start without arial.ttf and "
                      b"SysPics/select.bmp in the game's folder", self.run_check(script).stdout)
        self.write("game/Arial.ttf", b"")
        self.write("game/SysPics/select.bmp", b"")
        self.assertIn(b"warning: the engine does not start without arial.ttf (it exists as "
                      b"Arial.ttf) in", self.run_check(script).stdout)

    # --room ------

    def room(self, script):
        done = self.run_check("--room", self.write("script.txt", script))
        self.assertEqual((0, b""), (done.returncode, done.stderr))
        return done.stdout.decode()

    def test_room_counts_what_the_engine_counts(self):
        self.assertEqual("room: 18 of 9999 bytes, 1 of 100 functions, 0 of 100 globals, "
                         "calls 1 deep\n", self.room(GOOD))
        calls = (b"int a, b;\nchar c;\nint f() { g(); }\nint g() { print(1); }\n"
                 b"int tick() { f(); g(); }\nint main() { g(); }\n")
        self.assertEqual(f"room: {len(calls)} of 9999 bytes, 4 of 100 functions, "
                         "3 of 100 globals, calls 3 deep\n", self.room(calls))

    def test_room_does_not_guess_how_deep_a_recursion_goes(self):
        script = b"int f() { g(); }\r\nint g() { f(); }\r\nint main() { }\r\n"
        self.assertTrue(self.room(script).endswith(", 0 of 100 globals\n"))

    def test_room_tells_what_does_not_fit(self):
        self.assertIn("room: 12018 of 9999 bytes, 1 of", self.room(GOOD + b" " * 12000))
        self.assertIn(" 150 of 100 functions,", self.room(
            b"".join(b"int f%d() {}\n" % i for i in range(150))))

    def test_room_names_the_scripts_of_a_folder(self):
        self.write("games/b/script.txt", GOOD)
        self.assertTrue(self.run_check("--room", "games").stdout.startswith(b"room: "))
        self.write("games/a/script.txt", GOOD)
        lines = self.run_check("--room", "games").stdout.splitlines()
        self.assertTrue(lines[0].startswith(b"games/a/script.txt: room: 18 of"))
        self.assertTrue(lines[1].startswith(b"games/b/script.txt: room: 18 of"))

    # --fix ------

    def test_fix_rewrites_line_ends_only(self):
        bare = b"// \xff\0\x1b\r\nint main()\n{\n}\n \t// end"
        self.write("script.txt", bare)
        self.run_check("--fix", "script.txt")
        self.assertEqual(b"// \xff\0\x1b\r\nint main()\r\n{\r\n}\r\n \t// end",
                         self.read("script.txt"))

    def test_fix_makes_a_script_load(self):
        self.write("script.txt", GOOD.replace(b"\r\n", b"\n"))
        self.assertEqual(2, self.status("script.txt"))
        self.assertEqual(0, self.status("--fix", "script.txt"))
        self.assertEqual(GOOD, self.read("script.txt"))
        self.assertEqual(0, self.status("script.txt"))

    def test_fix_keeps_permissions_and_links_and_leaves_nothing_behind(self):
        target = self.write("target.txt", b"int main()\n{\n}\n")
        os.chmod(target, 0o640)
        os.symlink("target.txt", self.path("link.txt"))
        self.run_check("--fix", "link.txt")
        self.assertTrue(os.path.islink(self.path("link.txt")))
        self.assertEqual(GOOD, self.read("target.txt"))
        self.assertEqual(0o640, stat.S_IMODE(os.stat(target).st_mode))
        self.assertEqual(["link.txt", "target.txt"], sorted(os.listdir(self.folder.name)))

    def test_fix_replaces_the_file_at_once(self):
        """Who has the old file open goes on reading the old file."""
        path = self.write("script.txt", b"int main()\n{\n}\n")
        with open(path, "rb") as old:
            self.run_check("--fix", "script.txt")
            self.assertEqual(b"int main()\n{\n}\n", old.read())

    def test_fix_leaves_a_good_file_alone(self):
        path = self.write("script.txt", GOOD)
        before = os.stat(path)
        self.run_check("--fix", "script.txt")
        self.assertEqual((before.st_ino, before.st_mtime_ns),
                         (os.stat(path).st_ino, os.stat(path).st_mtime_ns))


unittest.main()
