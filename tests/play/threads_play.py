#!/usr/bin/env python3
"""Both settings of the ticks under pressure, for an engine with sanitizers in it.

    threads_play.py ENGINE                  30 seconds, as in ctest
    threads_play.py ENGINE --seconds 600    the same by hand for ten minutes

Round after round a level is started, worked on with a fast mouse and many keys, and ended in the
midst of it. Two threads in one script get in each other's way in the default setting, and their
script errors are only counted. A crash, a report of a sanitizer, a picture reported as not loaded,
a wrong exit status and a hang are failures.
"""

import argparse
import collections
import random
import re
import signal
import subprocess
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
from level_player import LevelPlayer  # noqa: E402
from process import PATIENCE, catches, has_ended, wait_until_uncaught  # noqa: E402

# No loops outside main: a thread that is led astray by the other could stay in one endlessly.
HEAD = """
int show(int i) { moveimage(i, 300, 200); showimage(i, 1); }
int load() { show(loadimage("red.bmp")); }
int unit() { createunit(0, 50, 50); }
int key() { moveunit(getcurrentkey(), getmousex(), getmousey()); }
int keyload() { show(loadimage("green.bmp")); }
int leave() { exitgame(); }
int finish() { end; }
int arm() { createtimer(1, 0, "leave"); }
int keys() {
    int i;
    for (i = 4; i < 10; i = i + 1) { addexectfunckey(0, i, "key"); }
    addexectfunckey(0, 10, "keyload");
    addexectfunckey(0, 11, "unit");
    addexectfunckey(0, 13, "leave");
    addexectfunckey(0, 14, "arm");
    addexectfunckey(0, 15, "finish");
}
"""

# Idle units for the mouse: the engine looks for the one that the pointer is at while the units'
# tick walks over them too. The unseen ones cost no drawing, and make both walks long enough to
# meet.
WALKS = HEAD + """
int main()
{
    int i;
    for (i = 0; i < 600; i = i + 1) { createunit(0, i % 100, i / 2); }
    for (i = 600; i < 20000; i = i + 1) { getunitx(i); }
    createtimer(0, 10000, "load");
    keys();
    print("ready");
}
"""

# 600 units, and timers that load pictures.
UNITS = HEAD + """
int main()
{
    int i;
    for (i = 0; i < 600; i = i + 1) { createunit(0, i % 100, i / 2); }
    createtimer(0, 200, "load");
    createtimer(0, 500, "unit");
    keys();
    print("ready");
}
"""

# More titles than the main thread can set, and loads that have to get through between them.
TITLES = HEAD + """
int four() {
    changewindowname("one"); changewindowname("two"); changewindowname("three");
    changewindowname("four");
}
int flood() { four(); four(); four(); four(); four(); four(); four(); four(); }
int main()
{
    createtimer(0, 0, "flood");
    createtimer(0, 10, "flood");
    createtimer(0, 200, "load");
    createunit(0, 100, 100);
    keys();
    print("ready");
}
"""

# Levels, settings and ends take turns: their numbers have no common factor, so all of them meet.
LEVELS = {"walks": WALKS, "units": UNITS, "titles": TITLES}
SETTINGS = ("", "main")
ENDS = ("terminate", "close", "leave", "arm", "finish")
ROUND_SECONDS = 3
LEAST_ROUNDS = len(LEVELS) * len(SETTINGS)  # even where each takes long

FAULTS = re.compile(
    r"==\d+==ERROR|\w+Sanitizer|[^\n]+ runtime error:|Unable to load image levels/level1/"
    r"(red|green|img/peon)\.bmp"
)
SHOWN = 4000  # bytes of a fault
NOT_FOUND = "() not found!"
SCRIPT_ERROR = re.compile(r"\n([^\n]+) in line \d+\n|(\w*)(\(\) not found!)")
AGAIN = 2  # seconds until a key is pressed once more
BOUND_KEYS = "abcdefgh"
MOVES = 200  # of the mouse, for one key


class Pressed(LevelPlayer):
    """A player who does not wait for the engine."""

    def act(self):
        """A key, and the mouse all over the window while it is held; then a click or a frame."""
        key, button = random.choice(BOUND_KEYS), random.choice((1, 1, 2, 3))
        words = ["keydown", key]
        for _ in range(MOVES):
            words += self.somewhere()
        words += ["keyup", key, "mousedown", button, *self.somewhere(), *self.somewhere()]
        self.xdotool(*words, "mouseup", button)

    def somewhere(self):
        return self.to(random.randrange(640), random.randrange(480))

    def finish(self, way):
        """Ends the engine in one of the ways of ENDS. Returns the status that it should have."""
        if way == "terminate":
            self.game.send_signal(signal.SIGTERM)
        elif way == "close":
            # Not by its keys: the real window manager is busy drawing thousands of titles.
            self.pings.ask_to_close(int(self.window))
        else:
            self.press_until_heeded({"leave": "j", "arm": "k", "finish": "l"}[way])
        if way not in ("leave", "arm"):
            return 0
        wait_until_uncaught(self.game, signal.SIGTERM)  # it lives on without its window
        if not has_ended(self.game):
            self.game.send_signal(signal.SIGTERM)
        return -signal.SIGTERM

    def press_until_heeded(self, key):
        """Two threads can spoil what a key calls in the default setting: pressed again then."""
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end and not self.is_closed():
            self.hold(key)
            again = time.monotonic() + AGAIN
            while time.monotonic() < again and not self.is_closed():
                time.sleep(0.03)
            self.release(key)

    def is_closed(self):
        """Whether the engine has closed, be it that its process lives on."""
        return has_ended(self.game) or not catches(self.game, signal.SIGTERM)


def fault_in(text):
    """The first fault that the output tells of, and what follows it."""
    places = [found.start() for found in FAULTS.finditer(text)]
    return text[places[0] : places[0] + SHOWN] if places else None


def play_round(engine, level, ticks, way, errors):
    """Starts, presses and ends the engine once. Returns what went wrong, or nothing."""
    with Pressed(engine, LEVELS[level], ticks) as game:
        game.says("\nready")
        end = time.monotonic() + ROUND_SECONDS
        while time.monotonic() < end and not has_ended(game.game):
            game.act()
        wanted = (game.finish(way),) if not has_ended(game.game) else ()
        try:
            status = game.game.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            return f"it did not end within {PATIENCE} s"
        game.listener.join(PATIENCE)
    kinds = [error[0] or error[2] for error in SCRIPT_ERROR.findall(game.text)]
    errors.update(kinds)
    if ticks == "main" and kinds:
        return f"script errors on one thread: {set(kinds)}"
    if status not in wanted and not (status == 1 and NOT_FOUND in kinds):
        return f"status {status}\n" + (fault_in(game.text) or game.text[-SHOWN:])
    return fault_in(game.text)


def play(engine, seconds):
    """Plays rounds for so long. Returns what went wrong, or nothing."""
    start = time.monotonic()
    errors = collections.Counter()
    number = 0
    wrong = None
    while not wrong and (number < LEAST_ROUNDS or time.monotonic() < start + seconds):
        level = tuple(LEVELS)[number % len(LEVELS)]
        ticks, way = SETTINGS[number % len(SETTINGS)], ENDS[number % len(ENDS)]
        wrong = play_round(engine, level, ticks, way, errors)
        number += 1
        after = f"{time.monotonic() - start:.0f} s"
        print(f"{after}: {level}, ticks={ticks!r}, {way}: {wrong or 'in order'}", flush=True)
    print(f"{number} rounds; script errors of two threads: {dict(errors) or 'none'}")
    return wrong


def main():
    options = argparse.ArgumentParser()
    options.add_argument("engine")
    options.add_argument("--seconds", type=int, default=30)
    chosen = options.parse_args()
    random.seed(1)
    sys.exit("it went wrong" if play(chosen.engine, chosen.seconds) else 0)


if __name__ == "__main__":
    main()
