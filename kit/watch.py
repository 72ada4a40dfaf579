"""zelkit watch: starts a game anew whenever its script or a picture has been saved."""

import os
import sys
import time

import engine
from companions import Complaint
from game import say
from window import Window

# Editors save in several steps, some by a rename, and writing a picture takes time: a change
# counts when nothing has changed for so long.
QUIET_SECONDS = 0.1

PARTS = ("levels", "SysPics")        # what of a game's folder is watched
PASSING = ("~", ".swp", ".swx", ".tmp")  # endings of the files that editors keep for themselves


def watch_folder(folder, loop, on_change):
    """Calls on_change from the loop whenever something in the folder changes."""
    try:
        from watchdog.events import FileSystemEventHandler
        from watchdog.observers import Observer
    except ImportError as error:
        raise Complaint("zelkit watch needs the Python module watchdog: "
                        "sudo apt-get install python3-watchdog") from error
    reader, writer = os.pipe()
    os.set_blocking(writer, False)

    class Waker(FileSystemEventHandler):
        """Hands events on to the loop. Reading a file is no change."""

        def on_any_event(self, event):
            if event.event_type in ("created", "modified", "moved", "deleted", "closed"):
                try:
                    os.write(writer, b"!")
                except BlockingIOError:
                    pass  # the loop has enough to read already

    def hear():
        os.read(reader, 65536)
        on_change()

    loop.listen(reader, hear)
    observer = Observer()
    observer.daemon = True
    observer.schedule(Waker(), str(folder), recursive=True)
    observer.start()


class Watch:
    """A game that is started anew: what runs of it, and what of its files has been seen."""

    def __init__(self, game):
        self.game = game
        self.loop = engine.Loop()
        self.engine = None
        self.window = Window()
        self.quiet_at = None  # when the last change counts; None while there is none
        watch_folder(game.folder.resolve(), self.loop, self.on_change)
        self.seen = self.look()

    def on_change(self):
        self.quiet_at = time.monotonic() + QUIET_SECONDS

    def look(self):
        """What tells one saved state of the game's files from another."""
        state = {}
        for part in PARTS:
            for path in (self.game.folder / part).rglob("*"):
                if path.name.startswith(".") or path.name.endswith(PASSING) or path.is_dir():
                    continue
                try:
                    about = path.stat()
                    state[path] = (about.st_mtime_ns, about.st_size, about.st_ino)
                except OSError:
                    pass  # gone in the meantime
        return state

    def text(self):
        try:
            return self.game.script.read_bytes().replace(b"\r", b"")
        except OSError:
            return None  # between two steps of a save

    def check(self):
        """Checks the script as saved. What the check itself writes, the line ends, is no change;
        what is saved meanwhile is one."""
        self.seen, text = self.look(), self.text()
        is_good = self.game.check(sys.stderr)
        if self.text() == text:
            self.seen = self.look()
        return is_good

    def start(self):
        """Checks the game and starts it, in place of the one that runs."""
        if not self.check():
            say("the old game goes on" if self.engine else "the game starts when this is fixed")
            return
        if self.engine:
            self.window.leave(self.engine.process.pid)
            self.engine.stop()
        self.engine = engine.Engine(self.loop, self.game)
        self.window.enter(self.engine.process.pid)
        room = self.game.room()
        say("started" + (f": {room}" if room else ""))

    def step(self):
        deadlines = (self.quiet_at, self.window.settle())
        deadline = min((time_ for time_ in deadlines if time_), default=None)
        if self.engine:
            self.engine.step(deadline)
        else:
            self.loop.step(deadline)
        if self.engine and not self.engine.is_running():
            self.engine.finish()
            self.engine = None
            say("the game has ended; it starts again when you save")
        if self.quiet_at and time.monotonic() >= self.quiet_at:
            self.quiet_at = None
            if self.text() is not None and self.look() != self.seen:
                self.start()

    def run(self):
        """Goes on until Ctrl-C."""
        self.start()
        while not self.loop.asked_to_end:
            self.step()
        if self.engine:
            self.engine.stop()
        return True
