#!/usr/bin/python3
"""Measures the engine and prints one table.

    run.py BUILD_FOLDER [--rounds N] [--before ZEL]

Every figure is the least of several: of N runs of a script and of a part, of 60 frames, of 3 N
starts. What is compared runs in turns. With --before the script kernels are compared with another
executable of the engine as well, three times at most, for that one may be slow.
"""

import argparse
import os
import pathlib

import kernels
import measure
import parts
import plays
import startup

PARTS = (
    ("tokenReadAgain", "a token read again", None),
    ("tokenFirstRead", "a token read for the first time", None),
    ("expression", "an expression of 17 tokens", None),
    ("call", "a call with two arguments", None),
    ("lookUpVariableAgain", "a look-up of a variable, again in the same call", None),
    ("searchGlobal/0", "the first look-up of a global in a call, no locals", None),
    ("searchGlobal/10", "the first look-up of a global in a call, 10 locals", None),
    ("searchLocal/1", "a local behind a call that used its name, the newest", None),
    ("searchLocal/10", "a local behind a call that used its name, the 10th newest", None),
    ("builtinCall", "a call of a built-in without arguments", None),
    ("lookUpFunction", "a look-up of a function by its text, for a timer", None),
    ("tickIdleTimers/0", "a tick, no timers", None),
    ("tickIdleTimers/10", "a tick, 10 timers, none fires", None),
    ("tickIdleTimers/1000", "a tick, 1,000 timers, none fires", 10e-6),
    ("tickIdleTimers/10000", "a tick, 10,000 timers, none fires", None),
    ("tickFiringTimers/10", "a tick, 10 timers, all fire", None),
    ("tickFiringTimers/1000", "a tick, 1,000 timers, all fire", None),
    ("tickFiringTimers/10000", "a tick, 10,000 timers, all fire", None),
    ("tickIdleUnits/10000", "the unit tick, 10,000 units without orders", 200e-6),
    ("tickOrderedUnits/10000", "10,000 orders and the unit tick that carries them out", None),
    ("checkFullScript/process_time", "the check of a script of 9,900 bytes", 10e-3),
)


def readable(seconds):
    for unit, scale in (("s", 1.0), ("ms", 1e3), ("µs", 1e6)):
        if seconds * scale >= 1.0:
            return f"{seconds * scale:.3g} {unit}"
    return f"{seconds * 1e9:.3g} ns"


def print_row(*cells):
    print("| " + " | ".join(cells) + " |", flush=True)


def print_kernels(engine, folder, rounds):
    for title, ours, python in kernels.against_python(engine, folder, rounds):
        print_row(
            f"script: {title}",
            readable(ours),
            f"python3 {readable(python)}",
            f"{python / ours:.2f} times as fast",
            "0.5, stretch 1.0",
        )


def print_before(engine, other, folder, rounds):
    for title, ours, before in kernels.against_other_engine(engine, other, folder, rounds):
        print_row(
            f"script: {title}",
            readable(ours),
            f"before {readable(before)}",
            f"{before / ours:.1f} times as fast",
            "10",
        )


def print_parts(program, folder, rounds):
    seconds, records = parts.run(program, folder, rounds)
    for name, title, goal in PARTS:
        taken = seconds[name] / records[name].get("tokens", 1)
        print_row(title, readable(taken), "", "", f"under {readable(goal)}" if goal else "")


def print_load(program, folder, rounds):
    loads = [measure.run([program], folder).output for _ in range(3 * rounds)]
    seconds = min(float(output) for output in loads)
    print_row("loading a script of 9999 bytes", readable(seconds), "", "", "under 2 ms")


def print_drawing(program, folder):
    _, records = parts.run(program, folder, 1)
    for name in sorted(records, key=lambda name: (name.split("/")[0], int(name.split("/")[1]))):
        record = records[name]
        what, count = name.split("/")
        ours, bare = record["engine"], record["bare"]
        print_row(
            f"a frame of {int(count):,} {what} ({record['allocations']:g} C++ allocations)",
            readable(ours),
            f"bare SDL {readable(bare)}",
            f"{ours / bare:.2f} times its cost",
            "1.10",
        )


def print_plays(zelplay, rounds):
    games = pathlib.Path(__file__).resolve().parents[1] / "games"
    for game, play in plays.wins(games).items():
        for seconds, what in zip(plays.passes(zelplay, play, rounds), ("median", "99th of 100")):
            print_row(
                f"a pass of {game}, {what}",
                readable(seconds),
                f"a frame of {readable(plays.FRAME_SECONDS)}",
                f"{100 * seconds / plays.FRAME_SECONDS:.1f} % of it",
                "",
            )


def print_startup(build, folder, rounds, driver):
    first_frame, bare = f"{build}/bench/first_frame", f"{build}/bench/bare_sdl"
    costs = startup.compare(first_frame, bare, folder, rounds, driver)
    for key, title, goals in (
        ("bare", "bare SDL", ("1.15", "1.15", "+8 MiB")),
        ("picture", "with a picture", ("", "", "")),
    ):
        for field, what, goal in zip(("wall", "cpu"), ("time", "processor time"), goals):
            ours, reference = (measure.least(costs[who], field) for who in ("engine", key))
            print_row(
                f"start to the first frame, {what} ({driver})",
                readable(ours),
                f"{title} {readable(reference)}",
                f"{ours / reference:.2f} times its cost",
                goal,
            )
        ours, reference = (measure.least(costs[who], "peak_kib") / 1024 for who in ("engine", key))
        print_row(
            f"peak resident size at the first frame ({driver})",
            f"{ours:.1f} MiB",
            f"{title} {reference:.1f} MiB",
            f"{ours - reference:+.1f} MiB",
            goals[2],
        )


def main():
    arguments = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    arguments.add_argument("build")
    arguments.add_argument("--rounds", type=int, default=7)
    arguments.add_argument("--before", metavar="ZEL")
    options = arguments.parse_args()
    build = os.path.abspath(options.build)
    folder = f"{build}/bench/level"
    os.environ.setdefault("SDL_AUDIODRIVER", "dummy")

    print_row("What", "Zel", "Reference", "Ratio", "Goal")
    print_row(*["---"] * 5)
    print_kernels(f"{build}/zel", folder, options.rounds)
    if options.before:
        other = os.path.abspath(options.before)
        print_before(f"{build}/zel", other, folder, min(options.rounds, 3))
    print_parts(f"{build}/bench/parts_bench", folder, options.rounds)
    print_load(f"{build}/bench/first_load", folder, options.rounds)
    print_drawing(f"{build}/bench/draw_bench", folder)
    print_plays(f"{build}/zelplay", min(options.rounds, 3))
    drivers = ["offscreen"] + (["x11"] if os.environ.get("DISPLAY") else [])
    for driver in drivers:
        print_startup(build, folder, 3 * options.rounds, driver)


if __name__ == "__main__":
    main()
