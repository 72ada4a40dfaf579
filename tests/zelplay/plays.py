"""What the tests of zelplay share: a level, plays of it, and what comes of them.

Run as: FILE ZELPLAY GAMES. The level has what every test level has, red.bmp and green.bmp of 50 by
50 pixels, a blue unit and a magenta selection box.
"""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
from level_folder import write_level  # noqa: E402
from process import PATIENCE  # noqa: E402

GAMES = Path(sys.argv.pop()).resolve()
ZELPLAY = str(Path(sys.argv.pop()).resolve())

# A timer that fires at 11 ms and then every 10, keys that talk, a picture, a text and a unit.
LEVEL = """
int ticks, star;
int tick() { ticks = ticks + 1; print(" t"); print(ticks); }
int say() { print("key "); print(getcurrentkey()); }
int place() { print("at "); print(getmousex()); print(","); print(getmousey()); }
int quit() { end; }
int lost() { createtimer(1, 0, "nowhere"); }
int leave() { exitgame(); }
int fault() { print(1 % 0); }
int spin() { while (1) { } }
int main()
{
    changewindowname("Test");
    star = loadimage("red.bmp");
    moveimage(star, 100, 100);
    showimage(star, 1);
    createunit(0, 300, 200);
    createtimer(0, 100, "tick");
    createtext("hello", 10, 10, 50, 20);
    addexectfunckey(0, 4, "say");
    addexectfunckey(0, 5, "say");
    addexectfunckey(0, 20, "quit");
    addexectfunckey(0, 15, "lost");
    addexectfunckey(0, 8, "leave");
    addexectfunckey(0, 9, "fault");
    addexectfunckey(0, 22, "spin");
    addexectfunckey(0, 18, "place");
    puts("READY");
}
"""


class Plays(unittest.TestCase):
    """A folder with a level; plays are beside it."""

    script = LEVEL

    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = Path(scratch.name)
        self.game = write_level(self.folder / "game", self.script)

    def zelplay(self, *words, given=b""):
        """Runs zelplay to its end."""
        command = [ZELPLAY, *[str(word) for word in words]]
        return subprocess.run(command, input=given, capture_output=True, timeout=PATIENCE,
                              check=False, cwd=self.folder)

    def play(self, text, *options, name="test.play"):
        """Runs a play of these lines."""
        file = self.folder / name
        file.write_text(text)
        return self.zelplay(*options, self.game, file)

    def passes(self, text, *options):
        """Runs a play that must go well; returns what the level printed."""
        run = self.play(text, *options)
        self.assertEqual((run.returncode, b"failed" in run.stderr), (0, False), run.stderr)
        return run.stdout.decode()

    def fails(self, text, *messages, status=1):
        """Runs a play that must fail with these messages on standard error."""
        run = self.play(text)
        for message in messages:
            self.assertIn(message, run.stderr.decode())
        self.assertEqual(run.returncode, status, run.stderr)
        return run

    def answers(self, text, *options):
        """The answer lines to these commands, from standard input."""
        run = self.zelplay(*options, self.game, "-", given=text.encode())
        return run.stdout.decode().splitlines()
