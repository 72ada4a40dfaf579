"""zelkit watch: what is saved is seen, whatever way an editor saves it."""

import signal
import sys
import unittest

from kit import KIT, KitTest
from level_folder import picture

sys.path.insert(0, str(KIT))
sys.dont_write_bytecode = True
from game import Game  # noqa: E402
from watch import Watch  # noqa: E402

SAYS = 'int main()\n{\n    puts("%s");\n}\n'


class Saves(KitTest):
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

    def test_bare_line_feeds_are_rewritten_and_it_starts(self):
        run = self.begin_watch()
        run.wait_for("out", "ONE")
        self.write(SAYS % "TWO", line_end="\n")
        run.wait_for("out", "TWO")
        self.assertIn("4 line ends rewritten", run.interrupt(signal.SIGINT)[2])

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


class Seen(KitTest):
    """What counts as a change."""

    def watch_nothing(self):
        watch = Watch.__new__(Watch)  # without the watching
        watch.game = Game(self.game)
        return watch

    def test_what_an_editor_keeps_for_itself_does_not_count(self):
        watch = self.watch_nothing()
        before = watch.look()
        for name in (".script.txt.swp", "script.txt~", "script.txt.tmp"):
            self.script.with_name(name).write_text("mine")
        self.assertEqual(watch.look(), before)
        self.script.with_name("new.bmp").write_text("mine")
        self.assertNotEqual(watch.look(), before)

    def test_line_ends_that_the_check_rewrites_are_no_change(self):
        watch = self.watch_nothing()
        self.write(SAYS % "TWO", line_end="\n")
        before = watch.look()
        self.assertTrue(watch.check())
        self.assertNotEqual(watch.look(), before)
        self.assertEqual(watch.seen, watch.look())

    def test_what_is_saved_during_the_check_is_a_change(self):
        watch = self.watch_nothing()
        watch.game.check = lambda _: self.write(SAYS % "THREE")
        watch.check()
        self.assertNotEqual(watch.seen, watch.look())


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
