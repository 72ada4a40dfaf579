"""Runs programs and tells what they took, robustly on a machine that others use too."""

import os
import time


class Cost:
    """What one run of a program took."""

    def __init__(self, wall, cpu, peak_kib, output):
        self.wall = wall  # seconds from exec to the end
        self.cpu = cpu  # seconds of processor time, all threads
        self.peak_kib = peak_kib  # largest resident size
        self.output = output


def run(command, folder, environment=None, quiet=False):
    """Runs the command to its end. A status other than 0 ends the measurement. What is written to
    standard error is shown, unless `quiet`."""
    errors = [(os.POSIX_SPAWN_OPEN, 2, os.devnull, os.O_WRONLY, 0)] if quiet else []
    read_end, write_end = os.pipe()
    before = time.monotonic()
    here = os.getcwd()
    os.chdir(folder)
    try:
        child = os.posix_spawn(
            command[0],
            command,
            {**os.environ, **(environment or {})},
            file_actions=[(os.POSIX_SPAWN_DUP2, write_end, 1), *errors],
        )
    finally:
        os.chdir(here)
    os.close(write_end)
    with os.fdopen(read_end, "rb") as pipe:
        output = pipe.read()
    _, status, usage = os.wait4(child, 0)
    wall = time.monotonic() - before
    if status != 0:
        raise SystemExit(f"{' '.join(command)} ended with status {status}: {output!r}")
    return Cost(wall, usage.ru_utime + usage.ru_stime, usage.ru_maxrss, output)


def run_in_turns(runs, rounds):
    """Calls each function of the dictionary `rounds` times, in turns, so that all of them meet the
    same weather; each round starts with another one. Returns lists of costs under the same keys."""
    costs = {key: [] for key in runs}
    keys = list(runs)
    for _ in range(rounds):
        for key in keys:
            costs[key].append(runs[key]())
        keys.append(keys.pop(0))
    return costs


def least(costs, field):
    """The smallest value: what disturbs a run can only add to it."""
    return min(getattr(cost, field) for cost in costs)
