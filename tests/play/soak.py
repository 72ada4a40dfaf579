#!/usr/bin/env python3
"""A busy level for a long time: no crash, no error report, level memory; the frame rate is told.

    soak.py ENGINE                  60 seconds with the ticks on the main thread, as in ctest
    soak.py ENGINE --seconds 3600   the same by hand for an hour
    soak.py ENGINE --ticks ""       the ticks on a thread of their own: what happens is told, and
                                    a crash is no failure of this program
    soak.py ENGINE --level texts    100 texts and nothing else
"""

import argparse
import random
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
from level_player import LevelPlayer, player  # noqa: E402

# 50 images, 50 texts, 200 units, 20 timers and 10 keys. A text gets a key of its own by moving the
# timer counter on before it. "churn" makes timers and texts and deletes some of both.
BUSY = """
int seed;
int roll(int n) {
    seed = seed * 1103515245 + 12345;
    if (seed < 0) { seed = seed + 2147483647 + 1; }
    return (seed / 65536) % n;
}
int show() { showimage(roll(50), roll(3)); }
int images() { moveimage(roll(50), roll(640), roll(480)); }
int sizes() { changesizeimage(roll(50), roll(90) - 10, roll(90) - 10); show(); }
int units() { moveunit(roll(200), roll(640), roll(480)); }
int texts() { int t; t = roll(50); movegametext(t, roll(640), roll(480)); hidetext(t, roll(2)); }
int colour() { changeallcolorfont(roll(256), roll(256), roll(256)); }
int font() { changeallfont("arial.ttf", 8 + roll(30)); }
int spark() { moveimage(roll(50), roll(640), roll(480)); }
int churn() {
    createtimer(1, roll(2000), "spark");
    createtext("spark", roll(640), roll(480), 60, 20);
    if (roll(2)) { deletetimer(getlasttimer()); }
    changewindowname("soak");
    deletetext(getlastgametext());
    deletetext(getlasttimer() + 1);
}
int pulse() { putch(1); }
int key() { moveunit(getcurrentkey(), roll(640), roll(480)); images(); }
int swap() { changefunckey(13, "key", "images"); changefunckey(13, "images", "key"); }
int more() { deletefunckey(12, "key"); addexectfunckey(0, 12, "key"); }
int main()
{
    int i;
    seed = 42;
    for (i = 0; i < 50; i = i + 1) {
        if (i % 2) { loadimage("red.bmp"); } else { loadimage("green.bmp"); }
        moveimage(i, roll(640), roll(480));
        showimage(i, 1);
    }
    for (i = 0; i < 200; i = i + 1) { createunit(0, roll(640), roll(480)); }
    for (i = 0; i < 50; i = i + 1) {
        createtext("Busy level", roll(640), roll(480), 100, 20);
        deletetimer(100000);
    }
    for (i = 0; i < 4; i = i + 1) {
        createtimer(0, 100 + i * 37, "images");
        createtimer(0, 300 + i * 41, "sizes");
        createtimer(0, 100 + i * 43, "units");
        createtimer(0, 500 + i * 47, "texts");
    }
    createtimer(0, 3000, "colour");
    createtimer(0, 5000, "font");
    createtimer(0, 200, "churn");
    createtimer(0, 50, "pulse");
    for (i = 4; i < 12; i = i + 1) { addexectfunckey(0, i, "key"); }
    addexectfunckey(0, 12, "more");
    addexectfunckey(0, 13, "swap");
    addexectfunckey(0, 13, "key");
    print("ready");
}
"""

TEXTS = """
int pulse() { putch(1); }
int main()
{
    int i;
    for (i = 0; i < 100; i = i + 1) {
        createtext("One of a hundred texts", 10 + i % 4 * 155, 10 + i / 4 * 18, 150, 16);
        deletetimer(100000);
    }
    createtimer(0, 50, "pulse");
    print("ready");
}
"""

LEVELS = {"busy": BUSY, "texts": TEXTS}
REPORTS = (
    "Error buffer", "not found", "Cant load", "Unable to load",
    "ThreadSanitizer", "AddressSanitizer", "runtime error:",
)
WARM_UP = 0.25  # of the time: by then every kind of record has been made
ALLOWED_GROWTH_KB = 4096  # for an hour or a minute: what leaks each frame is far above


class Soak(LevelPlayer):
    """Random hands, and an eye on the process."""

    passes = 0  # of the main loop: each flushes once what the timer "pulse" has printed

    def listen(self):
        while data := player.os.read(self.game.stdout.fileno(), 65536):
            self.passes += 1
            with self.news:
                self.text += data.decode(errors="replace")
                self.news.notify_all()

    def act(self):
        """A handful of keys and mouse moves at random."""
        words = []
        for _ in range(4):
            words += random.choice((self.some_key, self.some_click, self.some_drag))()
        self.xdotool(*words)

    def some_key(self):
        key = random.choice("abcdefghijz")
        return ["keydown", key, "sleep", "0.03", "keyup", key]

    def some_click(self):
        return [*self.somewhere(), "click", random.choice((1, 2, 3))]

    def some_drag(self):
        drag = [*self.somewhere(), *self.somewhere()]
        return [*self.somewhere(), "mousedown", 1, *drag, "mouseup", 1]

    def somewhere(self):
        return self.to(random.randrange(640), random.randrange(480))

    def memory(self):
        """The process's memory in KB."""
        for line in Path(f"/proc/{self.game.pid}/status").read_text().splitlines():
            if line.startswith("VmRSS"):
                return int(line.split()[1])
        return 0

    def processor_seconds(self):
        fields = Path(f"/proc/{self.game.pid}/stat").read_text().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / 100


def soak(game, seconds, allowed_growth):
    """Plays for so long. Returns what went wrong, or nothing."""
    game.says("\nready")
    start = time.monotonic()
    before = game.passes
    warm = 0
    while time.monotonic() < start + seconds:
        game.act()
        if game.game.poll() is not None:
            after = time.monotonic() - start
            return f"ended with status {game.game.returncode} after {after:.0f} s"
        if warm == 0 and time.monotonic() > start + seconds * WARM_UP:
            warm = game.memory()
    grown = game.memory() - warm
    print(f"memory after {seconds * WARM_UP:.0f} s: {warm} KB, after {seconds} s: {grown:+} KB")
    print(f"frames a second: {(game.passes - before) / (time.monotonic() - start):.1f}")
    print(f"processor: {game.processor_seconds() / seconds:.2f} of one")
    for report in REPORTS:
        if report in game.text:
            where = game.text.index(report)
            around = game.text[max(where - 200, 0) : where + 30]
            return f"{game.text.count(report)} reports: {around!r}"
    return f"memory grows by {grown} KB" if grown > allowed_growth else None


def main():
    options = argparse.ArgumentParser()
    options.add_argument("engine")
    options.add_argument("--seconds", type=int, default=60)
    options.add_argument("--ticks", default="main")
    options.add_argument("--level", choices=LEVELS, default="busy")
    options.add_argument("--sanitized", action="store_true",
                         help="the engine has sanitizers in it, which keep memory of their own")
    chosen = options.parse_args()
    random.seed(1)
    with Soak(chosen.engine, LEVELS[chosen.level], chosen.ticks) as game:
        growth = sys.maxsize if chosen.sanitized else ALLOWED_GROWTH_KB
        wrong = soak(game, chosen.seconds, growth)
    print(f"ticks={chosen.ticks!r} level={chosen.level}: {wrong or 'nothing went wrong'}")
    sys.exit(wrong if chosen.ticks == "main" else 0)


if __name__ == "__main__":
    main()
