#!/usr/bin/env python3
"""A level on a Wayland desktop: keys, mouse, title, full screen, a hidden window, the close.

The desktop is sway, which shows itself as one window on an X display, so that xdotool has hands
there, and which answers questions about its windows.
"""

import json
import os
import subprocess
import sys
import tempfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import level_player  # noqa: E402
from level_folder import BLUE, WHITE  # noqa: E402
from level_player import LevelPlayer  # noqa: E402
from process import PATIENCE, until  # noqa: E402

SCRIPT = """
int name() { changewindowname("named"); print("name"); }
int grow() { fullscreen(4097); print("grow"); }
int shrink() { fullscreen(0); print("shrink"); }
int count() { createtimer(0, 100, "tick"); print("count"); }
int stop() { deletetimer(0); print("stop"); }
int tick() { print("."); }
int main()
{
    createunit(0, 100, 100);
    addexectfunckey(0, 4, "name");
    addexectfunckey(0, 5, "grow");
    addexectfunckey(0, 6, "shrink");
    addexectfunckey(0, 7, "count");
    addexectfunckey(0, 8, "stop");
    print("ready");
}
"""

# Without a frame and always at one place, where a picture of the screen shows all of it.
CONFIG = """
output * mode 800x600
default_border none
default_floating_border none
focus_follows_mouse no
for_window [app_id=".*"] floating enable, move absolute position 80 60
"""


class Desktop(LevelPlayer):
    """A player whose desktop speaks Wayland."""

    def open_desktop(self):
        """Starts sway and waits until it answers. It refuses to run as root."""
        self.runtime = tempfile.TemporaryDirectory()
        config = Path(self.runtime.name) / "config"
        config.write_text(CONFIG, encoding="utf-8")
        config.chmod(0o644)
        self.environment.update({"XDG_RUNTIME_DIR": self.runtime.name, "HOME": self.runtime.name})
        somebody = []
        if os.geteuid() == 0:
            os.chown(self.runtime.name, 65534, 65534)
            somebody = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"]
        drawn = {"WLR_BACKENDS": "x11", "WLR_RENDERER": "pixman", "WLR_X11_OUTPUTS": "1"}
        self.start([*somebody, "sway", "--config", str(config)],
                   env={**self.environment, **drawn}, stdout=subprocess.DEVNULL)
        socket = until(lambda: self.find("sway-ipc.*.sock"), "the desktop")
        display = until(lambda: self.find("wayland-?"), "the desktop's display")
        self.environment.update({"SWAYSOCK": str(socket), "WAYLAND_DISPLAY": display.name})
        self.environment["SDL_VIDEODRIVER"] = "wayland"
        until(self.takes_keys, "the desktop to have the keys")

    def find(self, pattern):
        return next(Path(self.runtime.name).glob(pattern), None)

    def takes_keys(self):
        """Gives the keys to the desktop's window on the X display."""
        tree = self.run("xwininfo", "-root", "-tree").decode()
        windows = [line.split()[0] for line in tree.splitlines() if "800x600" in line]
        if not windows:
            return False
        asked = subprocess.run(["xdotool", "windowfocus", "--sync", windows[-1]], check=False,
                               env=self.environment, timeout=PATIENCE)
        return asked.returncode == 0

    def close(self):
        super().close()
        if hasattr(self, "runtime"):
            self.runtime.cleanup()

    # The window -------------------------------------------------------------------------------

    def ask(self, *command):
        """What the desktop does or says."""
        return json.loads(self.run("swaymsg", "--raw", *command))

    def window_of(self, node):
        """The game's window at or below a node of the desktop's tree."""
        if node.get("app_id") and node.get("pid") == self.game.pid:
            return node
        below = node.get("nodes", []) + node.get("floating_nodes", [])
        return next(filter(None, map(self.window_of, below)), None)

    def seen_window(self):
        return self.window_of(self.ask("--type", "get_tree"))

    def is_ready(self):
        if self.game.poll() is not None:
            raise AssertionError(f"the game ended with status {self.game.returncode}:\n{self.text}")
        window = self.seen_window()
        if not window or not window["focused"]:
            return False
        self.left, self.top = window["rect"]["x"], window["rect"]["y"]
        return True

    def title(self):
        return self.seen_window()["name"]

    def press_until(self, key, text):
        """Presses a key until the very next output is this text."""
        self.hold(key)
        self.says(text)
        self.release(key)


def played_and_closed(game):
    game.says("\nready")
    game.colour_becomes(107, 107, BLUE)
    game.press_until("a", "\nname")
    until(lambda: game.title() == "Zel - named", "the title")
    game.hold_frame(80, 80, 140, 140)
    game.xdotool("mouseup", 1)
    game.says("\nSelected=1")
    game.click(400, 300, button=3)
    game.colour_becomes(407, 307, BLUE)
    game.colour_becomes(107, 107, WHITE)
    game.ask("kill")  # the desktop asks the window to close
    game.ends_with(0)


def grown_and_shrunk(game):
    game.says("\nready")
    game.colour_becomes(107, 107, BLUE)
    game.press_until("b", "\ngrow")
    until(lambda: game.seen_window()["rect"]["width"] == 800, "the window to fill the screen")
    game.press_until("c", "\nshrink")
    until(lambda: game.seen_window()["rect"]["width"] == 640, "the window to be small again")
    game.colour_becomes(107, 107, BLUE)


def ticks_go_on_while_hidden(game):
    game.says("\nready")
    game.colour_becomes(107, 107, BLUE)
    game.press_until("d", "\ncount")
    game.ask("workspace", "2")
    until(lambda: not game.seen_window()["visible"], "the window to be hidden")
    with game.news:
        before = len(game.text)
    until(lambda: len(game.text) > before + 1000, "ticks of a hidden window")
    game.ask("workspace", "1")
    game.colour_becomes(107, 107, BLUE)
    game.ask("kill")
    assert game.game.wait(PATIENCE) == 0


def main(*plays, ticks):
    level_player.LevelPlayer = Desktop
    level_player.main(SCRIPT, *plays, ticks=ticks)


if __name__ == "__main__":
    main(played_and_closed, grown_and_shrunk, ticks_go_on_while_hidden, ticks="main")
    main(played_and_closed, ticks_go_on_while_hidden, ticks="")
