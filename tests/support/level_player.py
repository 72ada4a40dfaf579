"""Plays a level that a test brings as text, in a window of its own.

    def held_key_fires_again(game):
        game.hold("a")
        game.says("\nkey 4")

    if __name__ == "__main__":
        level_player.main(SCRIPT, held_key_fires_again)     # run as: FILE ENGINE

What the hands, eyes and ears of a player can do is in player.py. Here a held key does not
repeat by itself: every event is one that the test made. What the level has besides its script
is in level_folder.py.
"""

import fcntl
import sys
import tempfile
import termios
import time

import player
from level_folder import write_level
from process import PATIENCE, until


class LevelPlayer(player.Player):
    """A player of one script, in a folder that lives as long as the player."""

    def __init__(self, engine, script, ticks="main", screen="800x600"):
        self.scratch = tempfile.TemporaryDirectory()
        super().__init__(engine, write_level(self.scratch.name, script), screen)
        self.ticks = ticks
        self.heard = 0  # how much of the text the test has compared

    def start(self, command, **options):
        """The display is told not to repeat held keys."""
        quiet = ["-r"] if command[0] == "Xvfb" else []
        return super().start([*command, *quiet], **options)

    def open_display(self):
        """With the ticks as the test wants them."""
        super().open_display()
        self.environment["ZEL_TICKS"] = self.ticks

    def close(self):
        super().close()
        self.scratch.cleanup()

    def colour_becomes(self, x, y, colour):
        """Waits until the window shows this colour at a pixel."""
        self.see(lambda seen: seen.at(x, y) == colour, what=f"{colour} at {x}, {y}")

    def says(self, text):
        """Waits for this as the very next output; anything else before it is a failure."""
        with self.news:
            self.news.wait_for(lambda: len(self.text) >= self.heard + len(text), PATIENCE)
            heard = self.text[self.heard : self.heard + len(text)]
        assert heard == text, f"heard {heard!r} in place of {text!r}"
        self.heard += len(text)

    def tap(self, key, text):
        """Presses a key until the very next output is this text. Two events that are read at once
        both fire what is held then, so the next key waits until this one's have been read."""
        self.hold(key)
        self.says(text)
        self.settle()
        self.release(key)
        self.settle()

    def is_silent(self):
        """Checks that nothing more was printed up to the end of the pass that has read it all."""
        self.pass_by()
        until(self.check_silence, "the output")

    def check_silence(self):
        """True once everything printed has been read; a failure if something was not expected."""
        with self.news:
            unread = bytearray(4)
            fcntl.ioctl(self.game.stdout, termios.FIONREAD, unread)
            rest = self.text[self.heard :]
        assert rest == "", f"unexpected: {rest!r}"
        return not any(unread)

    def ends_with(self, status):
        """Waits for the end of the process, and checks that it printed nothing more."""
        assert self.game.wait(PATIENCE) == status, f"status {self.game.returncode}"
        self.listener.join(PATIENCE)
        rest = self.text[self.heard :]
        assert rest == "", f"unexpected: {rest!r}"


def main(script, *plays, **options):
    """Plays the level afresh for each of the functions."""
    for play in plays:
        begin = time.monotonic()
        with LevelPlayer(sys.argv[1], script, **options) as game:
            try:
                play(game)
            except BaseException:
                player.keep_evidence(game, play)
                raise
        print(f"{play.__name__}: {time.monotonic() - begin:.1f} s", flush=True)
