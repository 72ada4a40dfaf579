"""The script-level suite: small programs through the real executable and through python3.

Each program is in scripts/ twice, for the engine and for Python, with @N@ for the amount of
work. Start-up, measured with no work at all, is subtracted on both sides.
"""

import os

import measure

HERE = os.path.dirname(os.path.abspath(__file__))
PYTHON = "/usr/bin/python3"
KERNELS = {  # the amount of work: 0.07 to 0.4 seconds of Python
    "count": ("a counting loop", 6_000_000),
    "arithmetic": ("nested arithmetic", 1_200_000),
    "fib": ("recursive Fibonacci", 29),
    "primes": ("trial-division primes", 4),
    "call": ("a call with two arguments in a loop", 4_000_000),
    "branches": ("nested ifs in a loop", 2_000_000),
    "globals": ("locals and globals mixed", 1_000_000),
    "loops": ("for and while nested", 60_000),
    "chain": ("deep chains of calls", 120_000),
    "collatz": ("Collatz steps and greatest common divisors", 25_000),
}


def fill_in(kernel, suffix, work, target):
    with open(f"{HERE}/scripts/{kernel}{suffix}", "rb") as template:
        text = template.read().replace(b"@N@", str(work).encode())
    with open(target, "wb") as file:
        file.write(text)


def run_engine(engine, kernel, work, folder):
    fill_in(kernel, ".txt", work, f"{folder}/levels/level1/script.txt")
    return measure.run([engine], folder, {"SDL_VIDEODRIVER": "offscreen"})


def run_python(kernel, work, folder):
    fill_in(kernel, ".py", work, f"{folder}/kernel.py")
    return measure.run([PYTHON, "-I", "-S", "kernel.py"], folder)


def compare(kernel, work, folder, programs, rounds):
    """Returns the seconds of processor time that the work alone takes in each program."""
    runs = {}
    for name, start in programs.items():
        for amount in (work, 0):
            runs[name, amount] = lambda start=start, amount=amount: start(kernel, amount, folder)
    costs = measure.run_in_turns(runs, rounds)
    outputs = {cost.output for name in programs for cost in costs[name, work]}
    if len(outputs) != 1:
        raise SystemExit(f"{kernel}: the programs do not agree: {outputs}")
    return {
        name: measure.least(costs[name, work], "cpu") - measure.least(costs[name, 0], "cpu")
        for name in programs
    }


def engine_program(engine):
    return lambda kernel, work, folder: run_engine(engine, kernel, work, folder)


def against_python(engine, folder, rounds):
    programs = {"engine": engine_program(engine), "python": run_python}
    rows = []
    for kernel, (title, work) in KERNELS.items():
        seconds = compare(kernel, work, folder, programs, rounds)
        rows.append((title, seconds["engine"], seconds["python"]))
    return rows


def against_other_engine(engine, other, folder, rounds):
    """How many times as fast as another executable of the engine."""
    programs = {"engine": engine_program(engine), "other": engine_program(other)}
    rows = []
    for kernel, (title, work) in KERNELS.items():
        seconds = compare(kernel, work, folder, programs, rounds)
        rows.append((title, seconds["engine"], seconds["other"]))
    return rows
