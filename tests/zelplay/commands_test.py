#!/usr/bin/env python3
"""The commands of a play, each going well and going wrong."""

import unittest

from plays import Plays


class Time(Plays):
    def test_nothing_passes_before_a_run(self):
        self.assertEqual(self.passes("expect \"READY\"\n"), "READY\n")

    def test_run_passes_exactly_its_milliseconds(self):
        self.assertEqual(self.passes("run 30\n"), "READY\n\n t1\n t2")
        self.assertEqual(self.passes("run 31\n"), "READY\n\n t1\n t2\n t3")

    def test_shorter_last_pass_runs_its_ticks(self):
        # Passes of 16, 16 and 8 ms; the timer fires for the fourth time at 41 ms.
        self.assertEqual(self.passes("run 40\n"), "READY\n\n t1\n t2\n t3")
        self.assertEqual(self.passes("run 40\nrun 1\n"), "READY\n\n t1\n t2\n t3\n t4")

    def test_length_of_a_pass_changes_no_tick(self):
        said = self.passes("run 400\n")
        for option in (["--pass", "1"], ["--pass", "250"], ["--draw", "all"], ["--draw", "none"]):
            self.assertEqual(self.passes("run 400\n", *option), said)

    def test_passes_are_counted(self):
        run = self.play("run 320\nrun 8\n", "--time")
        self.assertTrue(run.stdout.startswith(b"21 passes, 0.328 s of engine time\n"), run.stdout)

    def test_table_has_a_row_for_each_part_and_not_the_output(self):
        rows = self.play("run 320\n", "--time").stdout.decode().splitlines()[1:]
        names = [row.split()[0] for row in rows]
        self.assertEqual(names, ["ms", "whole", "script", "ticks", "drawing", "events"])
        for row in rows[1:]:
            numbers = [float(number) for number in row.split()[1:]]
            self.assertEqual(numbers, sorted(numbers))
            self.assertEqual(len(numbers), 4)

    def test_few_passes_are_drawn_unless_all_are_wanted(self):
        every, some, none = (self.drawing("--draw", which) for which in ("all", "some", "none"))
        self.assertGreater(every, 5 * some)
        self.assertGreater(every, 5 * none)
        self.assertGreater(self.drawing(), 5 * some)

    def drawing(self, *options):
        """What drawing takes in the median pass."""
        table = self.play("run 800\n", "--time", *options).stdout.decode()
        return float(table.split("drawing")[1].split()[0])

    def test_bad_time(self):
        self.fails("run soon\n", "test.play:1:5: error: expected milliseconds", status=2)
        self.fails("\nrun 5 6\n", "test.play:2:7: error: expected nothing more", status=2)
        self.fails("run\n", "test.play:1:4: error", "the line's end", status=2)


class Keys(Plays):
    def test_tap_fires_once(self):
        self.assertIn("READY\n\nkey 4\n t1", self.passes("key tap a\nrun 11\n"))

    def test_held_key_fires_at_every_event(self):
        self.passes("key down A\nkey down b\nkey up B\nkey up a\nrun 1\n"
                    "expect \"\\nkey 4\\nkey 4\\nkey 5\\nkey 4\"\n")

    def test_key_that_is_down_repeats(self):
        self.passes("key down a\nkey down a\nrun 1\nexpect \"key 4\\nkey 4\"\n")

    def test_events_wait_for_the_next_pass(self):
        self.passes("key tap a\nreject \"key\"\nrun 1\nexpect \"key 4\"\n")

    def test_script_sees_symbol_and_modifiers(self):
        # What getmousex reads after a key event: the symbol; getmousey: the modifiers.
        self.passes("key down Left Shift\nkey tap o\nrun 1\nexpect \"at 111\\n,1\"\n")

    def test_key_by_its_code(self):
        self.passes("key tap code 5\nrun 1\nexpect \"key 5\"\n")

    def test_wrong_keys(self):
        self.fails("key up a\n", "test.play:1: failed: the key A is not down")
        self.fails("key tap nokey\n", "1:9: error: expected the name of a key", status=2)
        self.fails("key press a\n", "1:5: error: expected down, up or tap", status=2)


class Typing(Plays):
    script = """
int look() { print("x="); putch(getmousex()); }
int main() { createtimer(0, 100, "look"); }
"""

    def test_letter_is_followed_by_its_text(self):
        # getmousex looks into the last event: the pointer, a text that is as short as one letter,
        # or the symbol of a key.
        self.passes("mouse move 7 8\nrun 21\nexpect \"x=7\\n\"\n"
                    "key down a\nrun 21\nexpect \"x=0\"\nkey up a\nrun 21\nexpect \"x=97\"\n")

    def test_key_that_types_nothing_is_followed_by_no_text(self):
        self.passes("key down Left\nrun 21\nexpect \"x=1073741904\"\n")
        self.passes("key down Left Ctrl\nkey down a\nrun 21\nexpect \"x=97\"\n")


class Mouse(Plays):
    def test_click_picks_a_unit_and_sends_it(self):
        self.passes("mouse click left 307 207\nrun 16\nexpect \"Choosen=1\"\n"
                    "units \"selected=1\"\n"
                    "mouse click right 50 60\nrun 32\nunits \"x=50 y=60\"\n")

    def test_drag_selects(self):
        self.passes("mouse drag left 290 190 330 230\nrun 16\nexpect \"Selected=1\"\n")

    def test_single_movements_make_a_drag(self):
        self.passes("mouse move 290 190\nmouse down left\nmouse move 330 230\nrun 16\n"
                    "pixel 325 225 #ff00ff\nmouse up left\nrun 16\nexpect \"Selected=1\"\n"
                    "pixel 325 225 #ffffff\n")

    def test_script_sees_the_pointer(self):
        script = self.game / "levels" / "level1" / "script.txt"
        script.write_bytes(b"int see() { print(getmousex()); putch(getmousey()); }\r\n"
                           b"int main() { createtimer(1, 90, \"see\"); }\r\n")
        self.passes("mouse move 20 -30\nexpect \"20-30\" within 10\n")

    def test_move_to_where_the_pointer_is_is_an_event_too(self):
        script = self.game / "levels" / "level1" / "script.txt"
        script.write_bytes(b"int see() { putch(getmousex()); }\r\nint main() {"
                           b" createtimer(1, 200, \"see\"); }\r\n")
        self.passes("key down code 7\nmouse move 0 0\nexpect \"0\" within 50\n")

    def test_wrong_mouse(self):
        self.fails("mouse up left\n", "failed: the button is not down")
        self.fails("mouse click 3 1 1\n", "1:13: error: expected left, middle", status=2)
        self.fails("mouse jump\n", "1:7: error: expected move, down", status=2)


class Ears(Plays):
    def test_expect_goes_on_from_the_last_match(self):
        self.passes("run 31\nexpect \"t1\"\nexpect \"t2\"\n")
        self.fails("run 31\nexpect \"t2\"\nexpect \"t1\"\n",
                   "test.play:3: failed: expected \"t1\", since the last match the level printed "
                   "\"\\n t3\"")

    def test_within_runs_until_it_is_printed(self):
        self.passes("expect \"t5\" within 1000\nreject \"t7\"\n")
        self.fails("expect \"t50\" within 100\n", "1: failed: expected \"t50\"")

    def test_reject_looks_at_everything(self):
        self.passes("reject \"LOST\"\n")
        self.fails("expect \"READY\"\nreject \"EAD\"\n", "2: failed: the level has printed \"EAD\"")

    def test_escapes(self):
        self.passes("expect \"READY\\n\"\nrun 11\nexpect \"\\n t1\" // and a comment\n")
        self.fails("expect \"\\q\"\n", "1:9: error: a backslash wants", status=2)
        self.fails("expect \"open\n", "1:8: error: no closing", status=2)

    def test_failure_saves_the_frame(self):
        self.fails("expect \"no\"\n", "the frame: ")
        self.assertTrue((self.folder / "test-failed.png").read_bytes().startswith(b"\x89PNG"))


class Eyes(Plays):
    def test_pixel(self):
        self.passes("pixel 110 110 #ff0000\npixel 310 210 #0000FF\n")
        self.fails("pixel 110 110 #ff0001\n", "1: failed: expected #ff0001, the pixel is #ff0000")
        self.fails("pixel 640 0 #ffffff\n", "1:7: error: expected x, 0 to 639", status=2)
        self.fails("pixel 0 0 white\n", "1:11: error: expected a colour as #rrggbb", status=2)

    def test_count(self):
        self.passes("count 0 0 640 480 #ff0000 is 2500\ncount 0 0 640 480 #0000ff over 224\n"
                    "count 0 0 640 480 #0000ff under 226\ncount 0 0 9 9 #123456\n")
        self.fails("count 0 0 640 480 #ff0000 over 2500\n", "failed: there are 2500 pixels")
        self.fails("count 600 0 0 9 #ff0000\n", "1:13: error: expected a width", status=2)

    def test_count_ends_at_the_edge_of_the_frame(self):
        self.passes("count 636 478 99 99 #ffffff is 8\n")

    def test_title(self):
        self.passes("title \"Zel - Test\"\n")
        self.fails("title \"Zel\"\n", "expected \"Zel\", the title is \"Zel - Test\"")

    def test_picture(self):
        self.passes("picture golden.png\npicture now.png same as golden.png\n")
        self.fails("picture golden.png\nmouse click left 307 207\nrun 16\n"
                   "mouse click right 50 60\nrun 32\npicture now.png same as golden.png\n",
                   "6: failed: 450 pixels differ from")
        self.passes("mouse click left 307 207\nrun 16\nmouse click right 50 60\nrun 32\n"
                    "picture now.png same as golden.png within 450\n")
        self.fails("picture now.png same as none.png\n", "none.png is no picture of 640 by 480")
        self.fails("picture no/now.png\n", "cannot write")
        self.fails("picture now.png like x\n", "1:17: error: expected nothing more", status=2)

    def test_pictures_go_to_the_output_folder(self):
        self.passes("picture now.png\n", "--output", "out")
        self.assertTrue((self.folder / "out" / "now.png").exists())

    def test_records(self):
        self.passes("timers \"function=\\\"tick\\\" interval=100\"\nimages \"x=100 y=100 w=50\"\n"
                    "texts \"text=\\\"hello\\\"\"\nunits \"id=0 x=300 y=200\"\n")
        for name in ("timers", "images", "texts", "units"):
            self.fails(f"{name} \"id=77\"\n", "failed: no record has id=77\n")
            self.fails(f"{name} 77\n", "error: expected nothing more or a text", status=2)


    def test_missed_record_shows_those_with_its_first_word(self):
        self.fails("images \"id=0 x=9\"\n", "failed: no record has id=0 x=9; image id=0 x=100 ")


class Language(Plays):
    def test_empty_lines_and_comments_are_skipped(self):
        self.passes("\n  \n// a comment\n  // another\nrun 10 // a third\r\n")

    def test_unknown_command(self):
        self.fails("run 1\nwalk 5\n", "test.play:2:1: error: expected a command, found walk",
                   status=2)


class Answers(Plays):
    def test_each_command_has_one_answer(self):
        self.assertEqual(
            self.answers("run 11\n\n// nothing\nexpect \"t1\"\nexpect \"t9\"\nwalk\n"
                         "count 0 0 640 480 #ff0000\noutput\noutput\nunits\n"),
            ["ok", "ok",
             "failed expected \"t9\", since the last match the level printed \"\"",
             "error column 1: expected a command, found walk",
             "ok 2500", "ok \"READY\\n\\n t1\"", "ok \"\"", "ok 1",
             "unit id=0 x=300 y=200 type=0 moving=0 targetx=0 targety=0 selected=0"])

    def test_worst_answer_is_the_status(self):
        for text, status in (("run 1\n", 0), ("expect \"x\"\nrun 1\n", 1), ("x\nrun 1\n", 2)):
            run = self.zelplay(self.game, "-", given=text.encode())
            self.assertEqual(run.returncode, status)


if __name__ == "__main__":
    unittest.main()
