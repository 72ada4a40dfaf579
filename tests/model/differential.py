#!/usr/bin/env python3
"""Differential test: random scripts through the model and through the engine.

    differential.py --runner build/tests/script_runner [--seed N] [--count N] [--seconds N]
    differential.py --zel build/zel ...         the engine itself, slower, ended by SIGTERM
    differential.py --runner ... --script FILE  one script of one's own, both answers shown

Compared are every byte of standard output and the exit status; where the model expects a hang,
that the process still runs. The first mismatches are written into a folder, minimised, and both
answers are printed. The exit status is 1 if anything differs.
"""

import argparse
import collections
import concurrent.futures
import os
import re
import resource
import signal
import subprocess
import sys
import tempfile
import threading
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path[:0] = [HERE, os.path.join(HERE, os.pardir, "support")]

import generate  # noqa: E402
import model  # noqa: E402
from level_folder import write_level  # noqa: E402

BUDGET = 20000  # tokens; keeps one program within some milliseconds on either side
HANG_SECONDS = 0.5
SETTLE_SECONDS = (0.7, 3, 10)  # until the engine has surely reached its loop
LOOSE_REPORT = rb"\d+\n[\s\S]{0,30}"
STUCK_LOAD = re.compile(rb"[^\n]*script\.txt:\d+:\d+[^\n]*\n")

# status is None while the process still runs.
Result = collections.namedtuple("Result", "stdout status stderr")


# Running the engine ------

class Runner:
    """script_runner: ends by itself after main(). Each thread works in a folder of its own."""

    limit_seconds = 120  # who takes longer hangs, on however slow a machine

    def __init__(self, path):
        self.path = os.path.abspath(path)
        self.environment = dict(os.environ)
        self.own = threading.local()

    def run(self, script, stdin, expected):
        """The engine's Result for a script; `expected` says how long to wait, and for what."""
        folder = self.folder()
        write(folder, "levels/level1/script.txt", script)
        write(folder, "in", stdin)
        with open(os.path.join(folder, "out"), "wb") as out, \
                open(os.path.join(folder, "err"), "wb") as err, \
                open(os.path.join(folder, "in"), "rb") as source:
            process = subprocess.Popen([self.path], cwd=folder, env=self.environment,
                                       stdin=source, stdout=out, stderr=err)
            try:
                status = self.wait(process, expected, folder)
            finally:
                process.kill()
                process.wait()
        return Result(read(folder, "out"), status, read(folder, "err"))

    def folder(self):
        if not hasattr(self.own, "keeper"):
            self.own.keeper = tempfile.TemporaryDirectory(prefix="zel-model-")
            write_level(self.own.keeper.name, b"")
        return self.own.keeper.name

    def wait(self, process, expected, folder):
        if expected.kind in ("hang", "load-hang"):
            return self.wait_for_hang(process, expected, folder)
        return wait_for_end(process, self.limit_seconds)

    def wait_for_hang(self, process, expected, folder):
        """None if the process still runs after a while. A load tells when it begins to wait."""
        loading = expected.kind == "load-hang"
        deadline = time.monotonic() + (self.limit_seconds if loading else HANG_SECONDS)
        while process.poll() is None and time.monotonic() < deadline:
            time.sleep(0.01)
            if loading and STUCK_LOAD.fullmatch(read(folder, "err")):
                time.sleep(0.02)
                break
        return process.poll()


class Zel(Runner):
    """The engine itself: it stays in its loop after main() until it is asked to quit."""

    def __init__(self, path):
        super().__init__(path)
        self.environment.setdefault("SDL_VIDEODRIVER", "offscreen")
        self.environment.setdefault("SDL_AUDIODRIVER", "dummy")

    def run(self, script, stdin, expected):
        for self.own.settle in SETTLE_SECONDS:
            result = super().run(script, stdin, expected)
            if result.status != -signal.SIGTERM:  # else it was asked to quit too early
                break
        return result

    def wait(self, process, expected, folder):
        if expected.kind not in ("done", "error"):
            return super().wait(process, expected, folder)
        wanted = expected.loose[0] if expected.loose else len(expected.stdout)
        deadline = time.monotonic() + self.limit_seconds
        soonest = time.monotonic() + (0.05 if wanted else self.own.settle)
        while process.poll() is None and time.monotonic() < deadline:
            printed = os.path.getsize(os.path.join(folder, "out"))
            if printed >= wanted and time.monotonic() > soonest:
                process.send_signal(signal.SIGTERM)
                return wait_for_end(process, self.limit_seconds)
            time.sleep(0.02)
        return process.poll()


def wait_for_end(process, seconds):
    try:
        return process.wait(seconds)
    except subprocess.TimeoutExpired:
        return None


def write(folder, name, content):
    with open(os.path.join(folder, name), "wb") as file:
        file.write(content)


def read(folder, name):
    with open(os.path.join(folder, name), "rb") as file:
        return file.read()


# Judging ------

def difference(expected, result):
    """What differs, in words, or None."""
    if expected.kind == "load-hang":
        if result.status is not None or result.stdout:
            return "the load should never end, and print nothing"
        if not STUCK_LOAD.fullmatch(result.stderr):
            return "standard error should hold one line that says where the load waits"
        return None
    if expected.kind == "hang":
        # What main() printed may still be in the process's buffer.
        good = result.status is None and expected.stdout.startswith(result.stdout)
        return None if good else "main() should never end"
    if result.status is None:
        return "the process should have ended"
    if result.status != expected.status:
        return "the exit status differs"
    return None if same_output(expected, result.stdout) else "standard output differs"


def same_output(expected, stdout):
    if expected.loose is None:
        return stdout == expected.stdout
    start, end = expected.loose
    pattern = re.escape(expected.stdout[:start]) + LOOSE_REPORT + re.escape(expected.stdout[end:])
    return re.fullmatch(pattern, stdout) is not None


class Comparison:
    """One program on both sides."""

    def __init__(self, engine, script, stdin):
        self.script = script
        self.stdin = stdin
        self.expected = model.run(script, stdin, BUDGET)
        self.result = self.why = None
        if self.expected.kind != "budget":
            self.result = engine.run(script, stdin, self.expected)
            self.why = difference(self.expected, self.result)

    def describe(self):
        lines = ["stdin:  %r" % self.stdin,
                 "model:  %s, status %s" % (self.expected.kind, self.expected.status),
                 "        %r" % self.expected.stdout]
        if self.result:
            lines += ["engine: status %s" % self.result.status, "        %r" % self.result.stdout]
            if self.result.stderr:
                lines.append("stderr: %r" % self.result.stderr[-1500:])
        return "\n".join(lines)


# Minimising ------

def minimise(engine, script, stdin, seconds, tries=500):
    """A script as short as can be found on which model and engine still differ."""
    deadline = time.monotonic() + seconds
    for cut in (generate.split, lambda text: [bytes([byte]) for byte in text]):
        size = None
        while size != len(script) and tries > 0 and time.monotonic() < deadline:
            size = len(script)
            script, tries = shrink(engine, cut(script), stdin, tries, deadline)
    return script


def shrink(engine, pieces, stdin, tries, deadline):
    """One round over the pieces with ever smaller chunks left out."""
    chunk = max(1, len(pieces) // 2)
    while chunk:
        start = 0
        while start < len(pieces) and tries > 0 and time.monotonic() < deadline:
            rest = pieces[:start] + pieces[start + chunk:]
            tries -= 1
            if Comparison(engine, b"".join(rest), stdin).why:
                pieces = rest
            else:
                start += chunk
        chunk //= 2
    return b"".join(pieces), tries


# The whole test ------

class Campaign:
    """Runs programs until the count, the time or the mismatches are used up."""

    def __init__(self, engine, options):
        self.engine = engine
        self.options = options
        self.kinds = collections.Counter()
        self.mismatches = []
        self.deadline = time.monotonic() + options.seconds if options.seconds else None

    def check(self, seed):
        if self.is_over():
            return None
        family, script, stdin = generate.program(seed)
        if self.options.family not in (None, family):
            return None
        return seed, Comparison(self.engine, script, stdin)

    def is_over(self):
        late = self.deadline and time.monotonic() > self.deadline
        return late or len(self.mismatches) >= self.options.mismatches

    def run(self):
        seeds = range(self.options.seed, self.options.seed + self.options.count)
        with concurrent.futures.ThreadPoolExecutor(self.options.jobs) as pool:
            for checked in pool.map(self.check, seeds):
                if checked:
                    self.take(*checked)
        for seed, comparison in self.mismatches[:self.options.mismatches]:
            self.show(seed, comparison)
        return self.summary()

    def take(self, seed, comparison):
        self.kinds[comparison.expected.kind] += 1
        if comparison.why:
            self.mismatches.append((seed, comparison))
            print("seed %d: %s" % (seed, comparison.why), flush=True)

    def show(self, seed, comparison):
        small = minimise(self.engine, comparison.script, comparison.stdin,
                         self.options.shrink)
        os.makedirs(self.options.keep, exist_ok=True)
        for name, script in (("full", comparison.script), ("small", small)):
            path = os.path.join(self.options.keep, "%d-%s.txt" % (seed, name))
            with open(path, "wb") as file:
                file.write(script)
        again = Comparison(self.engine, small, comparison.stdin)
        print("\nseed %d, minimised: %s\nscript: %r" % (seed, again.why, small))
        print(again.describe(), flush=True)

    def summary(self):
        compared = sum(self.kinds.values()) - self.kinds["budget"]
        parts = ", ".join("%s %d" % pair for pair in sorted(self.kinds.items()))
        print("%d compared, %d differ (%s)" % (compared, len(self.mismatches), parts))
        if self.mismatches:
            print("scripts kept in " + self.options.keep)
        return 0 if compared and not self.mismatches else 1


def show_one(engine, path):
    with open(path, "rb") as file:
        comparison = Comparison(engine, file.read(), b"")
    print(comparison.describe())
    print(comparison.why or "same")
    return 1 if comparison.why else 0


def parse_options():
    parser = argparse.ArgumentParser(description="compare the engine with the model")
    parser.add_argument("--runner", help="path of script_runner")
    parser.add_argument("--zel", help="path of the engine")
    parser.add_argument("--seed", type=int, default=1, help="seed of the first program")
    parser.add_argument("--count", type=int, default=1500)
    parser.add_argument("--seconds", type=float, help="stop after this time")
    parser.add_argument("--family", choices=list(generate.FAMILIES))
    parser.add_argument("--mismatches", type=int, default=5, help="stop after so many")
    parser.add_argument("--shrink", type=float, default=60, help="seconds to minimise each")
    parser.add_argument("--jobs", type=int, default=4)
    parser.add_argument("--keep", help="folder for the scripts that differ",
                        default=os.path.join(tempfile.gettempdir(), "zel-mismatches"))
    parser.add_argument("--script", help="compare this one script only")
    options = parser.parse_args()
    if bool(options.runner) == bool(options.zel):
        parser.error("give one of --runner and --zel")
    return options


def main():
    options = parse_options()
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    engine = Runner(options.runner) if options.runner else Zel(options.zel)
    if options.script:
        return show_one(engine, options.script)
    return Campaign(engine, options).run()


if __name__ == "__main__":
    sys.exit(main())
