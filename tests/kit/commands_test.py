"""The commands of zelkit but play and watch, and what it says when something is not there."""

import os
import shutil
import unittest

from kit import GOOD, KIT, KitTest

COMMANDS = ["play", "watch", "new", "check", "test", "shot", "pack"]


class Help(KitTest):
    def test_every_command_has_help(self):
        for words in [[], *[[command] for command in COMMANDS]]:
            status, out, _ = self.kit(*words, "--help")
            self.assertEqual(status, 0)
            self.assertIn("usage: zelkit " + " ".join(words), out)
            self.assertIn("Exit status: 0", out)

    def test_wrong_use_is_status_2(self):
        for words in ("", "jump", "play", "play game --fast", "play game other",
                      "shot game --at soon"):
            self.assertEqual(self.kit(*words.split())[0], 2)


class Finding(KitTest):
    def test_a_name_that_is_no_game_lists_the_shipped_ones(self):
        status, _, err = self.kit("check", "nothere")
        self.assertEqual(status, 2)
        self.assertIn('there is no game "nothere"', err)
        self.assertIn("hello", err)

    def test_a_shipped_game_is_found_by_its_name(self):
        status, out, _ = self.kit("check", "hello")
        self.assertEqual(status, 0)
        self.assertIn("hello/levels/level1/script.txt: no errors", out)

    def test_a_folder_that_is_no_game_says_what_it_lacks(self):
        (self.folder / "empty").mkdir()
        status, _, err = self.kit("play", "empty")
        self.assertEqual((status, err),
                         (2, "zelkit: empty is no game: there is no empty/levels\n"))

    def test_the_script_in_another_case_is_named(self):
        self.script.rename(self.script.with_name("Script.txt"))
        status, _, err = self.kit("check", "game")
        self.assertEqual(status, 2)
        self.assertIn("no game/levels/level1/script.txt; it exists as Script.txt", err)

    def test_an_engine_that_is_not_there_is_missed(self):
        for words in [["check", "game"], ["test", "game"], ["play", "game"], ["shot", "game"]]:
            status, _, err = self.kit(*words, environment={"ZELKIT_BIN": str(self.folder)})
            self.assertEqual(status, 2)
            self.assertRegex(err, r"^zelkit: zel\w* was not found")

    def test_a_checkout_that_is_not_built_says_how_to_build(self):
        shutil.copytree(KIT, self.folder / "checkout" / "kit")
        (self.folder / "checkout" / "CMakePresets.json").touch()
        os.environ.pop("ZELKIT_BIN")
        status, _, err = self.kit_of("checkout/kit/zelkit", "check", "game")
        self.assertEqual(status, 2)
        self.assertRegex(err, r"zelcheck is not built; .*/checkout/run.sh builds it")

    def test_an_installed_kit_finds_programs_and_games(self):
        prefix = self.folder / "usr"
        shutil.copytree(KIT, prefix / "share" / "zel" / "kit")
        (prefix / "bin").mkdir()
        (prefix / "bin" / "zelkit").symlink_to("../share/zel/kit/zelkit")
        for name in ("zel", "zelcheck", "zelplay"):
            shutil.copy(f"{os.environ['ZELKIT_BIN']}/{name}", prefix / "bin")
        shutil.copytree(self.game, prefix / "share" / "games" / "zel" / "shipped")
        os.environ.pop("ZELKIT_BIN")
        status, out, err = self.kit_of("usr/bin/zelkit", "check", "shipped")
        self.assertEqual((status, err), (0, ""))
        self.assertIn("usr/share/games/zel/shipped/levels/level1/script.txt: no errors", out)

    def kit_of(self, path, *words):
        self.command = lambda *words: [str(self.folder / path), *words]
        return self.kit(*words)

    def setUp(self):
        super().setUp()
        kept = os.environ.get("ZELKIT_BIN", "")
        self.addCleanup(os.environ.__setitem__, "ZELKIT_BIN", kept)


class New(KitTest):
    def test_a_new_game_is_ready(self):
        status, out, err = self.kit("new", "fresh")
        made = "Made fresh: its script is fresh/levels/level1/script.txt\n"
        self.assertEqual((status, out, err), (0, made, ""))
        self.assertEqual(self.kit("check", "fresh")[0], 0)
        status, out, _ = self.kit("test", "fresh")
        self.assertEqual((status, out.split()), (0, ["first", "ok"]))

    def test_a_path_may_lead_anywhere(self):
        (self.folder / "with blank").mkdir()
        self.assertEqual(self.kit("new", "with blank/fresh")[0], 0)
        self.assertEqual(self.kit("check", "with blank/fresh")[0], 0)

    def test_what_is_there_stays(self):
        status, _, err = self.kit("new", "game")
        self.assertEqual((status, err), (2, "zelkit: game is there already\n"))

    def test_a_name_with_a_blank_is_refused(self):
        status, _, err = self.kit("new", "my game")
        self.assertEqual(status, 2)
        self.assertIn('letters, digits, "-" and "_" only', err)


class Check(KitTest):
    def test_errors_are_status_1_with_the_path_from_here(self):
        self.write("int main()\n{\n    x = 1;\n}\n")
        status, out, _ = self.kit("check", "game")
        self.assertEqual(status, 1)
        self.assertTrue(out.startswith("game/levels/level1/script.txt:3:5: error: "), out)

    def test_the_room_that_is_used_is_told(self):
        size = self.script.stat().st_size
        told = f"{size} of 9999 bytes, 1 of 100 functions, 0 of 100 globals"
        self.assertIn(f"no errors; {told}", self.kit("check", "game")[1])

    def test_warnings_are_status_0(self):
        self.write("int unused;\n" + GOOD)
        status, out, _ = self.kit("check", "game")
        self.assertEqual(status, 0)
        self.assertIn(": warning: ", out)

    def test_bare_line_feeds_are_rewritten_in_one_line(self):
        self.write(GOOD, line_end="\n")
        status, out, err = self.kit("check", "game")
        self.assertEqual(status, 0)
        self.assertEqual(len(err.splitlines()), 1)
        self.assertIn("4 line ends rewritten", err)
        self.assertNotIn("line-end", out)
        self.assertEqual(self.script.read_bytes(), GOOD.replace("\n", "\r\n").encode())
        self.assertEqual(self.kit("check", "game")[2], "")

    def test_a_missing_font_is_linked_and_told(self):
        (self.game / "arial.ttf").unlink()
        status, _, err = self.kit("check", "game")
        self.assertEqual(status, 0)
        self.assertRegex(err, r"^zelkit: linked game/arial.ttf to /\S+\.ttf\n$")
        self.assertTrue((self.game / "arial.ttf").is_file())

    def test_paths_start_where_the_user_is(self):
        self.write("int main()\n{\n    x = 1;\n}\n")
        self.folder = self.game / "levels"
        self.assertTrue(self.kit("check", "..")[1].startswith("level1/script.txt:3:5: error: "))


class Tests(KitTest):
    def setUp(self):
        super().setUp()
        (self.game / "plays").mkdir()
        (self.game / "plays" / "good.play").write_text('expect "READY"\n')

    def test_all_plays_go_well(self):
        status, out, err = self.kit("test", "game")
        self.assertEqual((status, out.split(), err), (0, ["good", "ok"], ""))

    def test_a_failing_play_is_status_1_and_says_why(self):
        (self.game / "plays" / "bad.play").write_text('expect "NEVER"\n')
        status, out, err = self.kit("test", "game")
        self.assertEqual((status, out.split()), (1, ["bad", "failed", "good", "ok"]))
        self.assertIn('game/plays/bad.play:1: failed: expected "NEVER"', err)
        self.assertEqual(self.kit("test", "game", "good")[0], 0)

    def test_a_script_with_bare_line_feeds_is_fixed_first(self):
        self.write(GOOD, line_end="\n")
        self.assertEqual(self.kit("test", "game")[0], 0)

    def test_a_game_without_plays_says_so(self):
        shutil.rmtree(self.game / "plays")
        status, _, err = self.kit("test", "game")
        self.assertEqual(status, 2)
        self.assertIn("game has no plays in game/plays", err)


class Shot(KitTest):
    def test_a_picture_is_saved(self):
        status, out, err = self.kit("shot", "game", "--at", "50")
        self.assertEqual((status, out, err), (0, "game.png\n", ""))
        self.assertTrue((self.folder / "game.png").read_bytes().startswith(b"\x89PNG"))

    def test_the_file_may_have_a_blank(self):
        self.assertEqual(self.kit("shot", "game", "--at", "0", "a b.png")[0], 0)
        self.assertTrue((self.folder / "a b.png").is_file())

    def test_other_kinds_of_pictures_are_refused(self):
        status, _, err = self.kit("shot", "game", "a.jpg")
        self.assertEqual(status, 2)
        self.assertIn("must end in .png", err)

    def test_a_game_that_ends_at_once_gives_no_picture_and_says_why(self):
        self.write("int main()\n{\n    end;\n}\n")
        status, _, err = self.kit("shot", "game")
        self.assertEqual(status, 1)
        self.assertIn("the level has ended", err)


if __name__ == "__main__":
    unittest.main()
