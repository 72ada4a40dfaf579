"""Runs level scripts of the documentation in the real engine and gives what they print."""

import os
import shutil
import subprocess
import sys
import tempfile
import time
from dataclasses import dataclass
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
from ping import Pings  # noqa: E402
from process import PATIENCE  # noqa: E402

SETTLE = 0.2  # seconds in which output that nobody expects would show; longer would find no more


@dataclass
class Result:
    """What a run printed, and its exit status if it ended by itself, else None."""

    out: str
    err: str
    status: object


class GameFolder:
    """A working directory of the engine with the tutorial's pictures; gone after the with."""

    def __init__(self, script, pictures, font):
        self.root = tempfile.mkdtemp(prefix="zel-docs-")
        level = os.path.join(self.root, "levels", "level1")
        shutil.copytree(os.path.join(pictures, "img"), os.path.join(level, "img"))
        shutil.copytree(os.path.join(pictures, "SysPics"), os.path.join(self.root, "SysPics"))
        os.symlink(font, os.path.join(self.root, "arial.ttf"))
        with open(os.path.join(level, "script.txt"), "wb") as file:
            file.write(script)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        shutil.rmtree(self.root)


class Engine:
    """One run of the engine. With a display (":7") in a window there, otherwise unseen."""

    def __init__(self, zel, folder, display=None, typed=""):
        env = dict(os.environ, ZEL_TICKS="main", SDL_AUDIODRIVER="dummy")
        env["SDL_VIDEODRIVER"] = "x11" if display else "offscreen"
        if display:
            env["DISPLAY"] = display
        self.out_path = os.path.join(folder.root, "stdout")
        self.err_path = os.path.join(folder.root, "stderr")
        with open(self.out_path, "wb") as out, open(self.err_path, "wb") as err:
            self.process = subprocess.Popen(
                [zel], cwd=folder.root, env=env, stdin=subprocess.PIPE, stdout=out, stderr=err
            )
        self.process.stdin.write(typed.encode())
        self.process.stdin.close()

    def out(self):
        return read_text(self.out_path)

    def err(self):
        return read_text(self.err_path)

    def ended(self):
        return self.process.poll() is not None

    def wait_for(self, is_there, patience=PATIENCE):
        """Waits until is_there() or the engine has ended, at most `patience` seconds."""
        deadline = time.monotonic() + patience
        while time.monotonic() < deadline and not self.ended() and not is_there():
            time.sleep(0.02)

    def stop(self):
        """Ends the run; gives what it printed.

        Asking it to quit would be kinder, but without a display nothing slows the frames down, and
        destroying the renderer then takes seconds. All output has been flushed by then anyway.
        """
        status = self.process.poll()
        self.process.kill()
        self.process.wait()
        return Result(self.out(), self.err(), status)


def read_text(path):
    with open(path, "rb") as file:
        return file.read().decode("utf-8", "replace")


def crlf(text):
    """A script as the engine wants it: every line ends in CR LF."""
    return text.replace("\n", "\r\n").encode()


class Display:
    """A virtual display with keys and a mouse that a test moves. Keys do not repeat on it."""

    def __init__(self):
        read_end, write_end = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-r", "-noreset", "-screen", "0", "640x480x24"],
            pass_fds=[write_end], stderr=subprocess.DEVNULL,
        )
        os.close(write_end)
        with os.fdopen(read_end) as pipe:
            self.name = ":" + pipe.readline().strip()
        self.pings = Pings(self.name)
        self.window = 0

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.pings.close()
        self.server.terminate()
        self.server.wait()

    def tool(self, *words):
        command = ["xdotool", *words]
        return subprocess.run(
            command, env=dict(os.environ, DISPLAY=self.name), capture_output=True, check=False
        )

    def wait_for_window(self, engine):
        """Waits until the engine's window is shown and reads keys and mouse."""
        self.tool("mousemove", "320", "240")
        engine.wait_for(self.is_ready)

    def is_ready(self):
        """Whether the window is there to stay: a first one is gone before it reads an event."""
        self.window = self.find_window()
        return self.window and self.pings.wait_for(self.window)

    def find_window(self):
        """The number of the engine's window, or 0."""
        found = self.tool("search", "--onlyvisible", "--name", "^Zel").stdout.split()
        return int(found[0]) if found else 0

    def settle(self):
        """Waits until the engine has read all that was done with keys and mouse, or has ended."""
        if self.window:
            self.pings.wait_for(self.window)

    def play(self, actions, engine):
        """Does actions such as "key Left", "mousemove 10 20" and "click 1", each after the engine
        has read the one before; "wait Ready" waits until it has printed this."""
        for action in actions:
            name, *rest = action.split(" ", 1)
            if name == "wait":
                engine.wait_for(lambda text=rest[0]: text in engine.out())
            elif name == "key":
                self.press(rest[0])
            else:
                self.tool(*action.split())
                self.settle()

    def press(self, key):
        """A key held until the engine has read that it is down: it fires what is held then."""
        self.tool("keydown", key)
        self.settle()
        self.tool("keyup", key)
        self.settle()
