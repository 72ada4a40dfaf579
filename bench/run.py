#!/usr/bin/python3
"""Measures the engine and prints one table.

    run.py BUILD_FOLDER [--runs N] [--rounds N] [--before ZEL]

A figure of one run is the least of several: of N rounds of a script and of a part, of 60 frames, of
3 N starts. What is compared runs in turns. Several runs show how far the figures swing: the table
has their least, median and most. With --before the script kernels are compared with another
executable of the engine as well, in three rounds at most, for that one may be slow.
"""

import argparse
import os
import pathlib
import sys

import kernels
import measure
import parts
import plays
import startup
from rows import COST, FASTER, MORE, SHARE, Row, mebibytes, print_table, readable

PARTS = (
    ("tokenReadAgain", "a token read again", None),
    ("tokenFirstRead", "a token read for the first time", None),
    ("expression", "an expression of 17 tokens", None),
    ("call", "a call with two arguments", None),
    ("lookUpVariableAgain", "a look-up of a variable, again in the same call", None),
    ("searchGlobal/0", "the first look-up of a global in a call, no locals", None),
    ("searchGlobal/10", "the first look-up of a global in a call, 10 locals", None),
    ("searchLocal/1", "a local after a call that used its name, the newest", None),
    ("searchLocal/10", "a local after a call that used its name, the 10th newest", None),
    ("builtinCall", "a call of a built-in without arguments", None),
    ("lookUpFunction", "a look-up of a function by its text, for a timer", None),
    ("tickIdleTimers/0", "a tick, no timers", None),
    ("tickIdleTimers/10", "a tick, 10 timers, none fires", None),
    ("tickIdleTimers/1000", "a tick, 1,000 timers, none fires", None),
    ("tickIdleTimers/10000", "a tick, 10,000 timers, none fires", 10e-6),
    ("tickTimersInTurn/10000", "a tick, 10,000 timers, 10 fire, others at each tick", None),
    ("tickFiringTimers/10", "a tick, 10 timers, all fire", None),
    ("tickFiringTimers/1000", "a tick, 1,000 timers, all fire", None),
    ("tickFiringTimers/10000", "a tick, 10,000 timers, all fire", None),
    ("tickIdleUnits/10000", "the unit tick, 10,000 units without orders", 200e-6),
    ("tickOrderedUnits/10000", "10,000 orders and the unit tick that carries them out", None),
    ("checkFullScript/process_time", "the check of a script of 9,900 bytes", 10e-3),
)
DRAWN = {  # what is drawn, in words, and what it may cost beside bare SDL calls
    "images": ("images of their own", "1.10"),
    "copies": ("copies of one picture", "0.45"),
    "units": ("units", "0.45"),
    "texts": ("texts", "1.10"),
}


def kernel_rows(engine, folder, rounds):
    for title, ours, python in kernels.against_python(engine, folder, rounds):
        yield Row(f"script: {title}", ours, "python3", python, FASTER, "1.0, stretch 2.0")


def before_rows(engine, other, folder, rounds):
    for title, ours, before in kernels.against_other_engine(engine, other, folder, rounds):
        yield Row(f"script: {title}", ours, "before", before, FASTER)


def part_rows(program, folder, rounds):
    seconds, records = parts.run(program, folder, rounds)
    for name, title, goal in PARTS:
        taken = seconds[name] / records[name].get("tokens", 1)
        yield Row(title, taken, goal=f"under {readable(goal)}" if goal else "")


def load_rows(program, folder, rounds):
    loads = [measure.run([program], folder).output for _ in range(3 * rounds)]
    seconds = min(float(output) for output in loads)
    yield Row("loading a script of 9999 bytes", seconds, goal="under 0.7 ms")


def drawing_rows(program, folder):
    seconds, records = parts.run(program, folder, 1)
    for name, record in records.items():
        kind, _, count = name.partition("/")
        if kind not in DRAWN:
            continue
        words, goal = DRAWN[kind]
        what = f"a frame of {int(count):,} {words} ({record['allocations']:g} C++ allocations)"
        yield Row(what, record["engine"], "bare SDL", record["bare"], COST, goal)
    yield Row("loading a picture again", seconds["loadAgain"], goal="under 20 µs")


def play_rows(zelplay, rounds):
    games = pathlib.Path(__file__).resolve().parents[1] / "games"
    for game, play in plays.wins(games).items():
        for seconds, what in zip(plays.passes(zelplay, play, rounds), ("median", "99th of 100")):
            frame = plays.FRAME_SECONDS
            yield Row(f"a pass of {game}, {what}", seconds, "a frame of", frame, SHARE)


def startup_rows(build, folder, rounds, driver):
    first_frame, bare = f"{build}/bench/first_frame", f"{build}/bench/bare_sdl"
    costs = startup.compare(first_frame, bare, folder, rounds, driver)
    for key, title, goals in (
        ("bare", "bare SDL", ("1.15", "1.15", "+8 MiB")),
        ("picture", "with a picture", ("", "", "")),
    ):
        for field, what, goal in zip(("wall", "cpu"), ("time", "processor time"), goals):
            ours, other = (measure.least(costs[who], field) for who in ("engine", key))
            what = f"start to the first frame, {what} ({driver})"
            yield Row(what, ours, title, other, COST, goal)
        ours, other = (measure.least(costs[who], "peak_kib") / 1024 for who in ("engine", key))
        what = f"peak resident size at the first frame ({driver})"
        yield Row(what, ours, title, other, MORE, goals[2], mebibytes)


def memory_rows(first_frame, folder, rounds):
    few, many = (
        startup.memory_of_units(first_frame, folder, rounds, count) for count in (10, 10_000)
    )
    what = "peak resident size at the first frame, 10,000 units"
    yield Row(what, many, "10 units", few, COST, "1.5", mebibytes)


def run_once(build, folder, options):
    rounds = options.rounds
    yield from kernel_rows(f"{build}/zel", folder, rounds)
    if options.before:
        other = os.path.abspath(options.before)
        yield from before_rows(f"{build}/zel", other, folder, min(rounds, 3))
    yield from part_rows(f"{build}/bench/parts_bench", folder, rounds)
    yield from load_rows(f"{build}/bench/first_load", folder, rounds)
    yield from drawing_rows(f"{build}/bench/draw_bench", folder)
    yield from play_rows(f"{build}/zelplay", min(rounds, 3))
    yield from memory_rows(f"{build}/bench/first_frame", folder, min(rounds, 3))
    drivers = ["offscreen"] + (["x11"] if os.environ.get("DISPLAY") else [])
    for driver in drivers:
        yield from startup_rows(build, folder, 3 * rounds, driver)


def main():
    arguments = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    arguments.add_argument("build")
    arguments.add_argument("--runs", type=int, default=1)
    arguments.add_argument("--rounds", type=int, default=7)
    arguments.add_argument("--before", metavar="ZEL")
    options = arguments.parse_args()
    build = os.path.abspath(options.build)
    folder = f"{build}/bench/level"
    os.environ.setdefault("SDL_AUDIODRIVER", "dummy")

    runs = []
    for number in range(1, options.runs + 1):
        print(f"run {number} of {options.runs}", file=sys.stderr, flush=True)
        runs.append(list(run_once(build, folder, options)))
    print_table(runs)


if __name__ == "__main__":
    main()
