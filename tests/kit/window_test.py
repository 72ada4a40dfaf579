"""zelkit watch in a real window: the next game's window is where the last one's was moved to."""

import signal
import subprocess
import unittest

import kit
from player import Player
from process import until

SAYS = 'int main()\n{\n    puts("%s");\n}\n'
PLACE = (123, 77)


class Window(kit.KitTest):
    def setUp(self):
        super().setUp()
        self.player = Player(kit.ZELKIT, self.game, screen="1000x800")
        self.addCleanup(self.player.close)
        self.player.open_display()
        self.player.open_desktop()
        self.write(SAYS % "ONE")
        environment = {key: value for key, value in self.player.environment.items()
                       if key != "ZEL_TICKS"}
        self.run_ = self.begin("watch", "game", env=environment)

    def windows(self):
        """The game's windows that the window manager manages, with their places."""
        listed = self.player.run("xprop", "-root", "_NET_CLIENT_LIST").decode()
        return [window.strip() for window in listed.partition("#")[2].split(",") if window.strip()]

    def place(self, window):
        """Where the window is, or nothing if it is gone."""
        try:
            self.player.window = window
            self.player.find_corner()
        except subprocess.CalledProcessError:  # it went away while it was looked at
            return None
        return self.player.left, self.player.top

    def process_of(self, window):
        """Numbers of windows are given again, those of processes are not."""
        try:
            return self.player.run("xprop", "-id", window, "_NET_WM_PID").decode()
        except subprocess.CalledProcessError:
            return None

    def new_window(self, old=None):
        """The window of another process than that."""
        def look():
            named = [(window, self.process_of(window)) for window in self.windows()]
            return [pair for pair in named if pair[1] not in (None, old)]
        return until(look, "a new window")[0]

    def test_the_window_stays_where_it_was_put(self):
        self.run_.wait_for("out", "ONE")
        first, process = self.new_window()
        before = self.place(first)
        self.player.xdotool("windowmove", first, *PLACE)
        until(lambda: self.place(first) not in (None, before), "the window to be moved")
        moved = self.place(first)
        self.write(SAYS % "TWO")
        self.run_.wait_for("out", "TWO")
        second, _ = self.new_window(process)
        until(lambda: self.place(second) == moved, f"the next window at {moved}")
        self.run_.interrupt(signal.SIGINT)


if __name__ == "__main__":
    unittest.main()
