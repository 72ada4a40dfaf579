"""Runs the engine: its output to the terminal, signals to it."""

import atexit
import os
import selectors
import signal
import subprocess
import time

from companions import Complaint, program
from game import say
from reports import ErrorFilter, OutputFilter, Reports

READ_BYTES = 65536
STOP_SECONDS = 1.0   # what a game gets to end by itself when it is asked to
DRAIN_SECONDS = 0.5  # how long output is waited for when the engine has ended


def require_display():
    names = ("DISPLAY", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER")
    if not any(os.environ.get(name) for name in names):
        raise Complaint("there is no display here (neither DISPLAY nor WAYLAND_DISPLAY is set); "
                        "zelkit test and zelkit shot need none")


class Loop:
    """Waits for what has a file descriptor, and for signals.

    Ctrl-C, SIGTERM and SIGHUP set `asked_to_end`. Any signal, the end of the engine too, ends the
    waiting.
    """

    def __init__(self):
        self.selector = selectors.DefaultSelector()
        self.asked_to_end = False
        wake, wake_writer = os.pipe()
        os.set_blocking(wake, False)
        os.set_blocking(wake_writer, False)
        signal.set_wakeup_fd(wake_writer, warn_on_full_buffer=False)
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            signal.signal(number, self.on_end_signal)
        signal.signal(signal.SIGCHLD, lambda *_: None)
        self.listen(wake, lambda: os.read(wake, READ_BYTES))

    def on_end_signal(self, *_):
        self.asked_to_end = True

    def listen(self, file, hear):
        self.selector.register(file, selectors.EVENT_READ, hear)

    def step(self, deadline=None):
        """Waits for something to happen, or for the deadline, and lets it be heard."""
        wait = None if deadline is None else max(0.0, deadline - time.monotonic())
        for key, _ in self.selector.select(wait):
            key.data()


class Engine:
    """One run of the engine."""

    def __init__(self, loop, game, is_raw=False):
        self.loop = loop
        self.filters = {}  # by the file they read from
        self.was_asked = False  # to end
        self.was_killed = False
        self.ended = None  # when the end of the process was noticed
        self.reports = Reports(game)
        self.output = OutputFilter(self.reports)
        self.process = self.start(game, None if is_raw else subprocess.PIPE)
        atexit.register(self.end)  # however zelkit ends, the game does not outlive it
        if not is_raw:
            self.relay(self.process.stdout, self.output)
            self.relay(self.process.stderr, ErrorFilter(self.reports))

    @staticmethod
    def start(game, pipe):
        """Starts the engine without Ctrl-C: zelkit hears that, and asks the engine to end. A
        blocked signal stays so in a new program, and is not lost to zelkit itself."""
        environment = {"ZEL_TICKS": "main", **os.environ}
        kept = signal.pthread_sigmask(signal.SIG_BLOCK, [signal.SIGINT])
        try:
            return subprocess.Popen([program("zel")], cwd=game.stage, env=environment,
                                    stdout=pipe, stderr=pipe)
        finally:
            signal.pthread_sigmask(signal.SIG_SETMASK, kept)

    def end(self):
        self.process.kill()
        self.process.wait()

    # Output -----------------------------------------------------------------------------------

    def relay(self, stream, words):
        self.filters[stream] = words
        self.loop.listen(stream, lambda: self.hear(stream, words))

    def hear(self, stream, words):
        data = os.read(stream.fileno(), READ_BYTES)
        if data:
            words.feed(data)
        else:
            self.close(stream)

    def close(self, stream):
        words = self.filters.pop(stream)
        self.loop.selector.unregister(stream)
        stream.close()
        words.close()

    # Life -------------------------------------------------------------------------------------

    def is_running(self):
        """Whether the process goes on or has left something to be read."""
        if self.process.poll() is None:
            return True
        self.ended = self.ended or time.monotonic()
        return bool(self.filters) and time.monotonic() < self.ended + DRAIN_SECONDS

    def step(self, deadline=None):
        """Lets something happen, up to a time."""
        deadlines = [words.deadline for words in self.filters.values()] + [deadline]
        deadlines.append(self.ended and self.ended + DRAIN_SECONDS)
        self.loop.step(min((time_ for time_ in deadlines if time_), default=None))
        for words in list(self.filters.values()):
            if words.deadline and time.monotonic() >= words.deadline:
                words.let_go(is_late=True)

    def stop(self):
        """Asks the game to end, and ends it if it does not. Returns whether it went well."""
        self.was_asked = True
        self.process.terminate()
        end = time.monotonic() + STOP_SECONDS
        while self.is_running() and time.monotonic() < end:
            self.step(end)
        if self.process.poll() is None:
            self.process.kill()
            self.was_killed = True
        return self.finish()

    def finish(self):
        """Hears the rest; returns whether the game went well."""
        while self.is_running():
            self.step()
        for stream in list(self.filters):
            self.close(stream)
        return self.verdict()

    def verdict(self):
        status = self.process.wait()
        if self.was_killed:
            say("the game did not end when it was asked to, and was ended")
        elif status == -signal.SIGTERM and self.was_asked:
            return True  # it had not come so far that it could end by itself
        elif status < 0:
            say(f"the game was ended by {signal.Signals(-status).name}")
        elif status > 0:
            say(f"the game ended with status {status}")
        elif self.output.failed:
            self.reports.show("")
            say("the game could not start")
        else:
            return not self.reports.counts
        return False


def play(game, is_raw):
    """Plays a game to its end; returns whether all went well."""
    loop = Loop()
    engine = Engine(loop, game, is_raw)
    while engine.is_running() and not loop.asked_to_end:
        engine.step()
    return engine.stop() if loop.asked_to_end else engine.finish()
