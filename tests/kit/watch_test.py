"""zelkit watch: what is saved is seen, whatever way an editor saves it."""

import signal
import unittest

from kit import KitTest
from level_folder import picture

SAYS = 'int main()\n{\n    puts("%s");\n}\n'


class Watch(KitTest):
    def begin_watch(self, script=SAYS % "ONE"):
        self.write(script)
        return self.begin("watch", "game")

    def test_a_save_starts_the_game_anew(self):
        run = self.begin_watch()
        run.wait_for("out", "ONE")
        self.write(SAYS % "TWO")
        run.wait_for("out", "TWO")
        status, out, err = run.interrupt(signal.SIGINT)
        self.assertEqual((status, out), (0, "ONE\nTWO\n"))
        self.assertEqual(err.count("zelkit: started"), 2)

    def test_a_save_by_rename_counts(self):
        run = self.begin_watch()
        run.wait_for("out", "ONE")
        other = self.script.with_name("script.txt.tmp")
        other.write_bytes((SAYS % "TWO").replace("\n", "\r\n").encode())
        other.rename(self.script)
        run.wait_for("out", "TWO")

    def test_bare_line_feeds_start_it_once(self):
        run = self.begin_watch()
        run.wait_for("out", "ONE")
        self.write(SAYS % "TWO", line_end="\n")
        run.wait_for("out", "TWO")
        self.write(SAYS % "THREE")
        run.wait_for("out", "THREE")
        _, out, err = run.interrupt(signal.SIGINT)
        self.assertEqual(out, "ONE\nTWO\nTHREE\n")
        self.assertEqual(err.count("line ends rewritten"), 1)

    def test_with_an_error_the_old_game_goes_on(self):
        run = self.begin_watch('int main()\n{\n    puts("ONE");\n    createtimer(0, 500, "t");\n}\n'
                               'int t() { print("."); }\n')
        run.wait_for("out", ".")
        self.write("int main()\n{\n    x = 1;\n}\n")
        run.wait_for("err", "the old game goes on")
        self.assertIn("game/levels/level1/script.txt:3:5: error: ", run.texts["err"])
        run.wait_for("out", ".", count=run.texts["out"].count(".") + 3)
        self.write(SAYS % "TWO")
        run.wait_for("out", "TWO")

    def test_a_game_with_an_error_starts_when_it_is_fixed(self):
        run = self.begin_watch("int main()\n{\n    x = 1;\n}\n")
        run.wait_for("err", "the game starts when this is fixed")
        self.write(SAYS % "TWO")
        run.wait_for("out", "TWO")

    def test_a_picture_counts(self):
        run = self.begin_watch()
        run.wait_for("out", "ONE")
        (self.game / "levels/level1/red.bmp").write_bytes(picture(9, 9, (1, 2, 3)))
        run.wait_for("out", "ONE", count=2)

    def test_what_an_editor_keeps_for_itself_does_not_count(self):
        run = self.begin_watch()
        run.wait_for("out", "ONE")
        for name in (".script.txt.swp", "script.txt~"):
            self.script.with_name(name).write_text("mine")
        self.write(SAYS % "TWO")
        run.wait_for("out", "TWO")
        self.assertEqual(run.interrupt(signal.SIGINT)[1], "ONE\nTWO\n")

    def test_a_game_that_ended_starts_again(self):
        run = self.begin_watch('int main()\n{\n    puts("ONE");\n    end;\n}\n')
        run.wait_for("err", "the game has ended")
        self.write(SAYS % "TWO")
        run.wait_for("out", "TWO")

    def test_an_endless_loop_does_not_keep_the_next_game_away(self):
        run = self.begin_watch('int x;\nint main()\n{\n    puts("ONE");\n'
                               '    while (x < 5) { x = getmousex(); }\n}\n')
        run.wait_for("out", "ONE")
        self.write(SAYS % "TWO")
        run.wait_for("out", "TWO")

    def test_ctrl_c_ends_it_while_nothing_runs(self):
        run = self.begin_watch("int main()\n{\n    x = 1;\n}\n")
        run.wait_for("err", "the game starts when this is fixed")
        self.assertEqual(run.interrupt(signal.SIGINT)[0], 0)


class Missing(KitTest):
    def test_a_missing_watchdog_is_named_with_its_package(self):
        (self.folder / "watchdog.py").write_text("raise ImportError\n")
        status, _, err = self.kit("watch", "game", environment={"PYTHONPATH": str(self.folder)})
        self.assertEqual(status, 2)
        self.assertIn("apt-get install python3-watchdog", err)

    def test_without_a_display_it_says_so(self):
        nothing = {"SDL_VIDEODRIVER": "", "DISPLAY": "", "WAYLAND_DISPLAY": ""}
        status, _, err = self.kit("watch", "game", environment=nothing)
        self.assertEqual(status, 2)
        self.assertIn("there is no display here", err)


if __name__ == "__main__":
    unittest.main()
