#!/usr/bin/env python3
"""Installs into an empty folder and looks at what is there: programs, games, pages, menu entries.

    installed_test.py CMAKE BUILD SOURCE VERSION
"""

import gzip
import json
import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CMAKE, BUILD, SOURCE, VERSION = sys.argv[1:]
TOOLS = ("zelcheck", "zelkit", "zelplay")
GAMES = ("bricks", "clouds", "hello", "peons", "starfall")


def run(*command, **options):
    """What a program says; the test fails if the program does."""
    done = subprocess.run(
        [str(word) for word in command], text=True, stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT, check=False, **options)
    if done.returncode != 0:
        raise AssertionError(f"{command[0]}: status {done.returncode}:\n{done.stdout}")
    return done.stdout


class Installed(unittest.TestCase):
    """An installation in which nothing can be written, used from an empty folder."""

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.root = Path(cls.folder.name) / "root"
        cls.home = Path(cls.folder.name) / "home"
        cls.home.mkdir()
        run(CMAKE, "--install", BUILD, "--prefix", cls.root)
        cls.share = cls.root / "share"
        cls.entries = sorted((cls.share / "applications").iterdir())
        cls.before = cls.everything()
        cls.environment = {**os.environ, "PATH": f"{cls.root}/bin:/usr/bin:/bin"}
        cls.environment.pop("ZELKIT_BIN", None)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    @classmethod
    def everything(cls):
        return sorted(path for path in cls.root.rglob("*"))

    def tool(self, *command):
        return run(*command, cwd=self.home, env=self.environment)

    # Programs and games -----------------------------------------------------------------------

    def test_every_tool_says_the_version(self):
        for tool in TOOLS:
            self.assertEqual(self.tool(tool, "--version"), f"{tool} (Zel) {VERSION}\n")

    def test_version_is_the_same_everywhere(self):
        changes = (Path(SOURCE) / "CHANGELOG.md").read_text(encoding="utf-8")
        self.assertEqual(re.search(r"^## ([0-9.]+) ", changes, re.MULTILINE)[1], VERSION)
        extension = self.share / "zel/editors/vscode/package.json"
        self.assertEqual(json.loads(extension.read_text())["version"], VERSION)

    def test_every_game_has_its_font_and_passes_its_plays(self):
        for game in (*GAMES, "template"):
            folder = self.share / "games/zel" / game
            self.assertTrue((folder / "arial.ttf").is_file(), game)
            self.assertTrue((folder / "SysPics/select.bmp").is_file(), game)
        self.assertIn("ok", self.tool("zelkit", "test", "hello"))

    def test_new_game_is_made_and_tested_elsewhere(self):
        self.tool("zelkit", "new", "mine")
        self.assertIn("ok", self.tool("zelkit", "test", "mine"))

    def test_nothing_is_left_beside_the_installed_files(self):
        self.tool("zelkit", "check", "peons")
        self.assertEqual(self.everything(), self.before)

    def test_only_what_a_game_needs_is_installed(self):
        generators = [path for path in self.before if path.name == "make_pictures.py"]
        self.assertEqual(generators, [])

    # Menu entries -----------------------------------------------------------------------------

    def test_menu_entries_are_valid(self):
        run("desktop-file-validate", *self.entries)

    def test_every_game_has_a_menu_entry_with_its_icon(self):
        names = [entry.name for entry in self.entries]
        self.assertEqual(names, [f"zel-{game}.desktop" for game in GAMES])
        for game, entry in zip(GAMES, self.entries):
            text = entry.read_text(encoding="utf-8")
            self.assertIn(f"\nExec=zelkit play {game}\n", text)
            self.assertIn(f"\nIcon=zel-{game}\n", text)
            icon = self.share / f"icons/hicolor/128x128/apps/zel-{game}.png"
            header = icon.read_bytes()[:24]
            self.assertEqual(header[16:], b"\0\0\0\x80\0\0\0\x80")  # 128 by 128

    def test_icons_are_what_the_generator_draws(self):
        with tempfile.TemporaryDirectory() as folder:
            run(sys.executable, "-B", Path(SOURCE) / "package/make_icons.py", folder)
            for game in GAMES:
                drawn = (Path(folder) / f"{game}.png").read_bytes()
                icon = self.share / f"icons/hicolor/128x128/apps/zel-{game}.png"
                self.assertEqual(drawn, icon.read_bytes(), game)

    def test_appstream_metadata_is_valid(self):
        (metadata,) = (self.share / "metainfo").iterdir()
        run("appstreamcli", "validate", "--no-net", metadata)
        text = metadata.read_text(encoding="utf-8")
        self.assertIn(f'<release version="{VERSION}"', text)
        launched = re.findall(r'desktop-id">(.*)<', text)
        self.assertEqual(sorted(launched), [entry.name for entry in self.entries])

    # Pages and completion ---------------------------------------------------------------------

    def page(self, name):
        packed = self.share / f"man/man1/{name}.1.gz"
        return gzip.decompress(packed.read_bytes()).decode()

    def test_manual_pages_are_sound(self):
        for name in ("zel", *TOOLS):
            run("mandoc", "-T", "lint", "-W", "warning", input=self.page(name))

    def test_manual_page_of_a_tool_has_what_its_help_says(self):
        for tool in TOOLS:
            shown = run("mandoc", "-T", "ascii", "-O", "width=200", input=self.page(tool))
            shown = re.sub(r".\x08", "", shown)  # bold and underlined by overstriking
            options = set(re.findall(r"--[a-z]+", self.tool(tool, "--help"))) - {"--help"}
            self.assertLessEqual(options, set(re.findall(r"--[a-z]+", shown)), tool)
            self.assertIn("EXIT STATUS", shown)
        commands = re.findall(r"^    ([a-z]+) ", self.tool("zelkit", "--help"), re.MULTILINE)
        page = re.sub(r".\x08", "", run("mandoc", "-T", "ascii", input=self.page("zelkit")))
        for command in commands:
            self.assertRegex(page, rf"(?m)^   zelkit {command}\b")

    def test_links_of_the_pages_lead_to_something(self):
        links = Path(SOURCE) / "tests/docs/links_test.py"
        run(sys.executable, "-B", links, "--installed", self.share / "doc/zel")

    def completions(self, *words):
        """What bash offers for the last word."""
        script = self.share / f"bash-completion/completions/{words[0]}"
        lines = [
            "source /usr/share/bash-completion/bash_completion",
            f"source {script}",
            f"COMP_WORDS=({' '.join(repr(word) for word in words)})",
            f"COMP_CWORD={len(words) - 1}",
            f"COMP_LINE={' '.join(words)!r}",
            "COMP_POINT=${#COMP_LINE}",
            f"_{words[0]} {words[0]} {words[-1]!r} {words[-2]!r}",
            'printf "%s\\n" "${COMPREPLY[@]}"',
        ]
        return self.tool("bash", "-c", "\n".join(lines)).split()

    def test_bash_completes_commands_options_and_games(self):
        self.assertIn("play", self.completions("zelkit", "pl"))
        self.assertIn("--force", self.completions("zelkit", "play", "--f"))
        self.assertIn("peons", self.completions("zelkit", "play", "pe"))
        self.assertIn("--json", self.completions("zelcheck", "--j"))
        self.assertIn("some", self.completions("zelplay", "--draw", "s"))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
