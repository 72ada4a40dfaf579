"""What the system tells about a running engine: whether it goes on, and which signals it catches.

Waiting here is for a condition; the deadline exists only so that a hang ends.
"""

import time
from pathlib import Path

PATIENCE = 300  # seconds until what must happen counts as a hang, on however slow a machine


def until(ask, what, seconds=PATIENCE):
    """Asks again and again until the answer is true, and returns the answer."""
    end = time.monotonic() + seconds
    while True:
        answer = ask()
        if answer:
            return answer
        if time.monotonic() > end:
            raise AssertionError(f"waited {seconds} s for {what}")
        time.sleep(0.03)


def status_of(process):
    """The system's lines about a process, by name; those of a process that has ended are few."""
    lines = Path(f"/proc/{process.pid}/status").read_text().splitlines()
    return dict(line.split(":\t", 1) for line in lines if ":\t" in line)


def has_ended(process):
    return process.poll() is not None


def catches(process, signal):
    """Whether a process has a handler of its own for a signal."""
    caught = int(status_of(process).get("SigCgt", "0"), 16)
    return bool(caught >> (signal - 1) & 1)


def wait_until_uncaught(process, signal):
    """Waits until the next signal of this kind ends the process: the engine gives a signal back
    once it has come, and when it closes. Two signals sent at once would be one."""
    until(lambda: has_ended(process) or not catches(process, signal), f"{signal!r} given back")


def switches(process):
    """How often the process's main thread has been given a processor."""
    status = status_of(process)
    kinds = ("voluntary_ctxt_switches", "nonvoluntary_ctxt_switches")
    return sum(int(status.get(kind, 0)) for kind in kinds)


def check_lives_on(process):
    """Checks that the process goes on. Its main loop waits in every pass, and is given a processor
    again: a number of times shows passes, however long each takes."""
    enough = switches(process) + 30
    until(lambda: has_ended(process) or switches(process) > enough, "passes of the main loop")
    assert not has_ended(process), f"the process ended with status {process.returncode}"
