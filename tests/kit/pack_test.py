"""zelkit pack: what is handed out plays wherever it is unpacked."""

import os
import platform
import re
import subprocess
import tarfile
import unittest

from kit import KitTest
from process import PATIENCE

ARCHIVE = f"game-1.0-linux-{platform.machine()}.tar.gz"
ENDS = 'int main()\n{\n    puts("READY");\n    createtimer(1, 500, "quit");\n}\n' \
       'int quit() { puts("TICK"); end; }\n'


class Pack(KitTest):
    def setUp(self):
        super().setUp()
        self.write(ENDS)

    def unpack(self):
        """Packs the game and unpacks it into a folder with a blank in its name."""
        status, out, err = self.kit("pack", "game")
        self.assertEqual((status, out, err), (0, ARCHIVE + "\n", ""))
        place = self.folder / "a place"
        with tarfile.open(self.folder / ARCHIVE) as archive:
            archive.extractall(place)
        return place / "game-1.0"

    def play(self, folder, **environment):
        """Starts what was unpacked, from elsewhere and through a link."""
        link = self.folder / "start"
        link.symlink_to(folder / "play")
        run = subprocess.run([str(link)], cwd="/", env={**os.environ, **environment}, check=False,
                             capture_output=True, timeout=PATIENCE)
        return run.returncode, run.stdout.decode(), run.stderr.decode()

    def test_it_plays_from_anywhere_in_a_path_with_a_blank(self):
        folder = self.unpack()
        self.game.rename(self.folder / "gone")
        status, out, _ = self.play(folder)
        self.assertEqual((status, out), (0, "READY\nTICK\n"))

    def test_ticks_run_on_the_main_thread(self):
        folder = self.unpack()
        (folder / "zel").write_text('#!/bin/sh\necho "ticks $ZEL_TICKS in $PWD"\n')
        self.assertEqual(self.play(folder)[1], f"ticks main in {folder}/game\n")

    def test_font_and_licences_are_real_files(self):
        folder = self.unpack()
        font = folder / "game" / "arial.ttf"
        self.assertFalse(font.is_symlink())
        self.assertEqual(font.read_bytes(), (self.game / "arial.ttf").read_bytes())
        self.assertIn("Permission is hereby granted", (folder / "licences/zel.txt").read_text())
        licence = (folder / "licences/font.txt").read_text()
        self.assertIn("LIBERATION", licence.upper())
        for common in re.findall(r"common-licenses/([\w-]+)", licence):
            self.assertTrue((folder / f"licences/{common}.txt").is_file(), common)

    def test_what_is_the_makers_own_is_left_out(self):
        (self.game / "plays").mkdir()
        for name in ("plays/win.play", "make.py", ".notes", ARCHIVE, "levels/level1/script.txt~"):
            (self.game / name).write_text("mine")
        game = self.unpack() / "game"
        names = sorted(str(path.relative_to(game)) for path in game.rglob("*") if path.is_file())
        level = "levels/level1/"
        self.assertEqual(names, ["SysPics/select.bmp", "arial.ttf", level + "green.bmp",
                                 level + "img/peon.bmp", level + "red.bmp", level + "script.txt"])

    def test_a_missing_library_is_told_in_one_line_with_what_to_install(self):
        folder = self.unpack()
        tools = self.folder / "tools"
        tools.mkdir()
        (tools / "ldd").write_text('#!/bin/sh\necho "libSDL2_ttf-2.0.so.0 => not found"\n')
        (tools / "ldd").chmod(0o755)
        status, out, err = self.play(folder, PATH=f"{tools}:{os.environ['PATH']}")
        self.assertEqual((status, out, err.count("\n")), (1, "", 1))
        self.assertIn("sudo apt-get install libsdl2-2.0-0", err)

    def test_version_and_file_may_be_said(self):
        self.assertEqual(self.kit("pack", "game", "--version", "2.1", "out.tgz")[0], 0)
        with tarfile.open(self.folder / "out.tgz") as archive:
            self.assertIn("game-2.1/play", archive.getnames())
        self.assertEqual(self.kit("pack", "game", "--version", "../x")[0], 2)

    def test_a_game_with_errors_is_not_packed(self):
        self.write("int main()\n{\n    x = 1;\n}\n")
        status, out, err = self.kit("pack", "game")
        self.assertEqual((status, out), (1, ""))
        self.assertIn("game was not packed", err)


if __name__ == "__main__":
    unittest.main()
