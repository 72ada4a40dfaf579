"""Plays a level as a person would: its window, mouse and keys on a display of its own.

    with player.Player(engine, folder) as game:
        game.press("space")
        game.drag(20, 100, 200, 300)      # left button: a selection box
        game.click(320, 240, button=3)
        assert game.picture().at(10, 10) == (255, 255, 255)

Positions are pixels of the window, names of keys are those of X ("space", "Left", "a"). The
display, the window manager and the level live as long as the Player, and no longer. Only what needs
a real window is played like this; games are played on a clock of their own, see docs/play.md.
"""

import os
import re
import select
import subprocess
import sys
import tempfile
import threading
from pathlib import Path

from ping import Pings
from process import PATIENCE, until

SUPPORT = Path(__file__).resolve().parent
WIDTH, HEIGHT = 640, 480


class Picture:
    """What the window showed at one moment."""

    def __init__(self, data):
        self.data = data

    def at(self, x, y):
        """The colour at a pixel: (red, green, blue)."""
        start = 3 * (y * WIDTH + x)
        return tuple(self.data[start : start + 3])

    def count(self, colour, x=0, y=0, width=WIDTH, height=HEIGHT):
        """How many pixels of a rectangle have exactly this colour."""
        wanted = bytes(colour)
        rows = (self.part(x, row, width) for row in range(y, y + height))
        rows = (row for row in rows if wanted in row)  # most have none: a quick look saves much
        return sum(row[i : i + 3] == wanted for row in rows for i in range(0, len(row), 3))

    def area(self, x, y, width, height):
        """The bytes of a rectangle, for telling whether it changed."""
        return b"".join(self.part(x, row, width) for row in range(y, y + height))

    def part(self, x, y, width):
        """The bytes of a piece of one row."""
        start = 3 * (y * WIDTH + x)
        return self.data[start : start + 3 * width]


class Player:
    """A display with a window manager and one game on it. Use it with "with"."""

    # Without -noreset the display would start afresh whenever its only client leaves, and throw out
    # a client that is just coming in.
    DISPLAY_OPTIONS = ["-nolisten", "tcp", "-noreset"]

    def __init__(self, engine, folder, screen="800x600"):
        self.command = [str(Path(engine).resolve())]
        self.folder = Path(folder)
        self.screen = screen
        self.processes = []  # in the order of their starts
        self.text = ""  # everything that the level has printed
        self.news = threading.Condition()
        self.pings = None

    def __enter__(self):
        try:
            self.open_display()
            self.open_desktop()
            self.start_game()
        except BaseException:
            self.close()
            raise
        return self

    def __exit__(self, *_):
        self.close()

    # Start and end ----------------------------------------------------------------------------

    def start(self, command, **options):
        """Starts a process that ends with the player."""
        options = {"stdin": subprocess.DEVNULL, "stderr": subprocess.DEVNULL, **options}
        started = subprocess.Popen(command, **options)
        self.processes.append(started)
        return started

    def open_display(self):
        """Starts a display; it picks a free number and tells it once it can be connected to."""
        command = ["Xvfb", "-displayfd", "1", "-screen", "0", f"{self.screen}x24"]
        display = self.start([*command, *self.DISPLAY_OPTIONS], stdout=subprocess.PIPE)
        number = display.stdout.readline().decode().strip()
        if not number:
            raise RuntimeError("the virtual display did not start")
        self.environment = {**os.environ, "DISPLAY": f":{number}", "SDL_VIDEODRIVER": "x11"}
        self.environment.update({"SDL_AUDIODRIVER": "dummy", "ZEL_TICKS": "main"})

    def open_desktop(self):
        """Starts the window manager and waits until it manages: a window that opens while it is
        still setting itself up can be overlooked for good. Its own start-up command tells."""
        tell = "xprop -root -format READY_TO_PLAY 8s -set READY_TO_PLAY yes"
        config = str(SUPPORT / "openbox.xml")
        command = ["openbox", "--sm-disable", "--config-file", config, "--startup", tell]
        self.start(command, env=self.environment, stdout=subprocess.DEVNULL)
        check = ["xprop", "-root", "READY_TO_PLAY"]
        until(lambda: b"yes" in self.run(*check), "the window manager")
        self.pings = Pings(self.environment["DISPLAY"])

    def start_game(self):
        """Starts the game, keeps its output and waits for its window to be where it stays."""
        self.game = self.start(
            self.command, cwd=self.folder, env=self.environment,
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
        )
        self.listener = threading.Thread(target=self.listen, daemon=True)
        self.listener.start()
        self.left, self.top = -1, -1
        until(self.is_ready, "the window to have the keys and not to move")

    def is_ready(self):
        """Whether the window is there to stay. SDL makes it, and once more for the renderer: the
        first one can be found, but is gone before it reads an event."""
        self.window = self.find_window()
        if not self.window:
            return False
        try:
            return self.has_focus() and self.is_settled() and self.settle()
        except subprocess.CalledProcessError:  # it went away while it was looked at
            return False

    def find_window(self):
        """The game's window, or nothing while there is none. Searching can trip over a window that
        is just going away, which is no reason to give up."""
        find = ["xdotool", "search", "--all", "--onlyvisible", "--pid", str(self.game.pid)]
        if self.game.poll() is not None:
            raise AssertionError(f"the game ended with status {self.game.returncode}:\n{self.text}")
        found = subprocess.run(
            [*find, "--name", "^Zel"], env=self.environment, timeout=PATIENCE,
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
        ).stdout.split()
        return found[0].decode() if found else None

    def has_focus(self):
        """Whether keys go to the window; asks for it if not."""
        focus = subprocess.run(
            ["xdotool", "getwindowfocus"], env=self.environment, timeout=PATIENCE,
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
        ).stdout.decode().strip()
        if focus != self.window:
            # A window that the window manager is just putting into its frame refuses: asked again.
            subprocess.run(
                ["xdotool", "windowfocus", self.window], env=self.environment, timeout=PATIENCE,
                stderr=subprocess.DEVNULL,
            )
        return focus == self.window

    def is_settled(self):
        """Whether the window is in its frame, and where it was when asked last."""
        before = (self.left, self.top)
        self.find_corner()
        state = self.run("xprop", "-id", self.window, "WM_STATE")  # set once the frame is in place
        return b"Normal" in state and before == (self.left, self.top)

    def settle(self):
        """Waits until the engine has read all that was done so far with mouse and keys. False if
        its window is gone."""
        return self.pings.wait_for(int(self.window))

    def find_corner(self):
        """Notes where on the screen the window's pixel 0, 0 is; returns its width and height."""
        answer = self.run("xwininfo", "-id", self.window).decode()
        values = dict(re.findall(r"^ *([\w -]+): +(-?\d+)$", answer, re.MULTILINE))
        self.left = int(values["Absolute upper-left X"])
        self.top = int(values["Absolute upper-left Y"])
        return int(values["Width"]), int(values["Height"])

    def pass_by(self):
        """Waits until the engine has done all that follows from what was done with mouse and keys,
        and a whole pass of the main loop, up to the picture, has begun and ended afterwards."""
        for _ in range(4):  # a pass may read its events twice
            self.settle()

    def close(self):
        """Ends what was started, the last first."""
        if self.pings:
            self.pings.close()
            self.pings = None
        for started in reversed(self.processes):
            if started.poll() is None:
                started.terminate()
            try:
                started.wait(3)
            except subprocess.TimeoutExpired:
                started.kill()
                started.wait()
        self.processes.clear()

    # Ears -------------------------------------------------------------------------------------

    def listen(self):
        """Reads what the level prints, as it comes. Whoever holds the lock finds what was printed
        either in the pipe or in the text."""
        out = self.game.stdout.fileno()
        going_on = True
        while going_on:
            select.select([out], [], [])
            with self.news:
                data = os.read(out, 65536)
                self.text += data.decode(errors="replace")
                self.news.notify_all()
            going_on = bool(data)

    # Hands ------------------------------------------------------------------------------------

    def run(self, *command, **options):
        """Runs a program on the display to its end."""
        return subprocess.run(
            command, env=self.environment, check=True, timeout=PATIENCE, stdout=subprocess.PIPE,
            **options,
        ).stdout

    def xdotool(self, *words):
        """Runs xdotool; several of its commands may follow each other."""
        return self.run("xdotool", *[str(word) for word in words]).decode()

    def to(self, x, y):
        """The xdotool command that moves the pointer."""
        return ("mousemove", self.left + x, self.top + y)

    def move(self, x, y):
        """Moves the pointer."""
        self.xdotool(*self.to(x, y))

    def click(self, x, y, button=1):
        """Presses and releases a button: 1 left, 3 right."""
        self.xdotool(*self.to(x, y), "click", button)

    def drag(self, x, y, to_x, to_y, button=1):
        """Moves with a button held: a selection box."""
        self.hold_frame(x, y, to_x, to_y, button)
        self.xdotool("mouseup", button)

    def hold_frame(self, x, y, to_x, to_y, button=1):
        """A drag whose button stays down."""
        middle = self.to((x + to_x) // 2, (y + to_y) // 2)
        self.xdotool(*self.to(x, y), "mousedown", button, *middle, *self.to(to_x, to_y))

    def press(self, *keys):
        """Presses and releases keys, one after the other. The engine fires what is held when it
        reads an event, so each waits until the one before has been read."""
        for key in keys:
            self.hold(key)
            self.settle()
            self.release(key)
            self.settle()

    def hold(self, key):
        """Presses a key and keeps it down."""
        self.xdotool("keydown", key)

    def release(self, key):
        """Lets a held key go."""
        self.xdotool("keyup", key)

    # Eyes -------------------------------------------------------------------------------------

    def title(self):
        """The text of the window's title bar."""
        return self.xdotool("getwindowname", self.window).strip()

    def picture(self):
        """What the window shows now."""
        command = ["import", "-silent", "-window", "root", "-crop", self.crop(), "-depth", "8"]
        data = self.run(*command, "rgb:-")
        if len(data) != 3 * WIDTH * HEIGHT:
            raise AssertionError(f"the window is not wholly on the screen: {len(data)} bytes")
        return Picture(data)

    def save(self, path):
        """Saves what the window shows now, for instance as PNG."""
        self.run("import", "-silent", "-window", "root", "-crop", self.crop(), "+repage", str(path))

    def crop(self):
        """The window's place on the screen as ImageMagick writes it."""
        return f"{WIDTH}x{HEIGHT}+{self.left}+{self.top}"

    def see(self, is_so, seconds=PATIENCE, what="the picture"):
        """Waits until a picture answers is_so(picture) with something true; returns the answer."""
        return until(lambda: is_so(self.picture()), what, seconds)


def keep_evidence(player, play):
    """Shows what a failing play heard, and saves what it saw."""
    print(f"In {play.__name__} the level printed:\n{player.text}", file=sys.stderr)
    path = Path(tempfile.gettempdir()) / f"{player.folder.name}-{play.__name__}.png"
    try:
        player.save(path)
        print(f"The window at that moment: {path}", file=sys.stderr)
    except (OSError, subprocess.SubprocessError) as error:
        print(f"No picture of the window: {error}", file=sys.stderr)
