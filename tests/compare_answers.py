#!/usr/bin/python3
"""Runs one level script through the real engine and compares what comes out.

    compare_answers.py ZEL SCRIPT.txt

The answers are beside SCRIPT.txt:
    .out     the exact bytes of standard output
    .regex   in place of .out: a pattern that the whole output matches
    .status  the exit status, 0 if there is no such file; -8 is death by signal 8
    .err     a text that standard error contains
    .in      standard input, empty if there is no such file
    .env     environment variables, one NAME=VALUE on a line
A script in a folder "hangs" has none of .out and .status: the engine must stop over it for good.
"""

import os
import re
import select
import signal
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "support"))
from level_folder import write_level  # noqa: E402
from process import PATIENCE, has_ended, wait_until_uncaught  # noqa: E402

IDLE = 0.05  # seconds of processor time that an engine which hangs may use in a second
SANITIZER_SIGNS = (b"Sanitizer", b"runtime error:")


class Expectation:
    """What the files beside a script hold."""

    def __init__(self, script):
        self.stem = os.path.splitext(script)[0]
        self.hangs = os.path.basename(os.path.dirname(os.path.abspath(script))) == "hangs"
        self.out = self.read(".out")
        self.regex = self.read(".regex")
        self.status = int(self.read(".status") or 0)
        self.err = (self.read(".err") or b"").strip()
        self.env = (self.read(".env") or b"").decode().split()

    def read(self, suffix):
        if not os.path.exists(self.stem + suffix):
            return None
        with open(self.stem + suffix, "rb") as file:
            return file.read()

    def input_path(self):
        return self.stem + ".in" if os.path.exists(self.stem + ".in") else os.devnull

    def ends_by_itself(self):
        """An engine that fails to start shuts down, and a late SIGTERM would kill it then."""
        answer = self.out if self.regex is None else self.regex
        return not answer or b"Failed to load" in answer

    def is_all_there(self, out):
        if self.ends_by_itself():
            return False
        if self.regex is not None:
            return re.fullmatch(self.regex, out) is not None
        return len(out) >= len(self.out)

    def is_met_by(self, out):
        if self.regex is not None:
            return re.fullmatch(self.regex, out) is not None
        return out == self.out


def environment(extra):
    env = dict(os.environ, SDL_VIDEODRIVER="offscreen", SDL_AUDIODRIVER="dummy")
    env.pop("ZEL_TICKS", None)
    # A fatal fault must be seen as the signal that it is; graphics drivers leak on their own.
    own = "handle_sigfpe=0:handle_abort=0:detect_leaks=0:"
    env["ASAN_OPTIONS"] = own + env.get("ASAN_OPTIONS", "")
    env.update(line.split("=", 1) for line in extra)
    return env


def start(zel, folder, expected, err_file):
    with open(expected.input_path(), "rb") as in_file:
        return subprocess.Popen([zel], cwd=folder, env=environment(expected.env), stdin=in_file,
                                stdout=subprocess.PIPE, stderr=err_file)


def read_output(process, expected):
    """Reads until the engine ends or all that is expected of it has come.

    Gives the output and whether the engine has ended by itself.
    """
    out = b""
    deadline = time.monotonic() + PATIENCE
    while not expected.is_all_there(out):
        patience = max(deadline - time.monotonic(), 0)
        ready, _, _ = select.select([process.stdout], [], [], patience)
        some = os.read(process.stdout.fileno(), 65536) if ready else b""
        if not some:
            return out, bool(ready)
        out += some
    return out, False


def finish(process, ended):
    """Asks an engine that is still in its loop to quit; gives the rest of its output.

    There is no need to wait for more output before: the signal only asks the loop to quit, so
    main() runs to its end and all that it prints still comes. Every frame drawn without a display
    costs time again when the renderer is destroyed.
    """
    if not ended:
        process.send_signal(signal.SIGTERM)
    try:
        return process.communicate(timeout=PATIENCE)[0]
    except subprocess.TimeoutExpired:
        process.kill()
        return process.communicate()[0] + b"\n[killed: it did not quit when asked to]"


def escaped_lines(out):
    text = out.decode("utf-8", "backslashreplace")
    return [repr(line) for line in text.splitlines(keepends=True)]


def output_fault(expected, out):
    if expected.is_met_by(out):
        return []
    if expected.regex is not None:
        return ["output does not match " + repr(expected.regex), "actual: " + repr(out)]
    import difflib  # here, as it takes its time and is seldom wanted
    diff = difflib.context_diff(escaped_lines(expected.out), escaped_lines(out),
                                "expected", "actual", lineterm="")
    return ["expected: " + repr(expected.out), "actual:   " + repr(out)] + list(diff)


def error_faults(expected, err):
    faults = []
    if expected.err not in err:
        faults.append("standard error lacks " + repr(expected.err) + ": " + repr(err))
    if any(sign in err for sign in SANITIZER_SIGNS):
        faults.append("a sanitizer complains:\n" + err.decode("utf-8", "replace"))
    return faults


def run(zel, folder, expected, err_file):
    process = start(zel, folder, expected, err_file)
    out, ended = read_output(process, expected)
    out += finish(process, ended)
    faults = output_fault(expected, out)
    if process.returncode != expected.status:
        faults.append(f"exit status {process.returncode}, expected {expected.status}")
    return faults


def processor_seconds(process):
    with open(f"/proc/{process.pid}/stat", encoding="ascii") as file:
        fields = file.read().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def wait_for_text(process, path, text):
    deadline = time.monotonic() + PATIENCE
    while time.monotonic() < deadline and process.poll() is None:
        with open(path, "rb") as file:
            if text in file.read():
                return
        time.sleep(0.02)


def interrupt(process):
    """The first interrupt may end a hanging engine, the second one must."""
    process.send_signal(signal.SIGINT)
    wait_until_uncaught(process, signal.SIGINT)
    if not has_ended(process):
        process.send_signal(signal.SIGINT)
    try:
        process.wait(PATIENCE)
        return []
    except subprocess.TimeoutExpired:
        process.kill()
        return ["two interrupts do not end it"]


def watch_idling(process):
    if process.poll() is not None:
        return [f"it does not hang, it ended with status {process.returncode}"]
    before = processor_seconds(process)
    time.sleep(1)
    if process.poll() is not None:
        return [f"it does not hang, it ended with status {process.returncode}"]
    used = processor_seconds(process) - before
    return [f"it used {used:.2f} s of processor time in a second"] if used >= IDLE else []


def run_hang(zel, folder, expected, err_file):
    process = start(zel, folder, expected, err_file)
    wait_for_text(process, err_file.name, expected.err)
    faults = watch_idling(process)
    if process.poll() is None:
        faults += interrupt(process)
    out = process.communicate()[0]
    return faults + (["standard output is not empty: " + repr(out)] if out else [])


def main():
    zel, script = map(os.path.abspath, sys.argv[1:])
    # A shell starts its background jobs with interrupts ignored, and the engine would inherit that.
    signal.signal(signal.SIGINT, signal.default_int_handler)
    expected = Expectation(script)
    if not expected.hangs and expected.out is None and expected.regex is None:
        sys.exit("no .out and no .regex beside " + script)
    with tempfile.TemporaryDirectory(prefix="zel-script-") as folder:
        with open(script, "rb") as file:
            write_level(folder, file.read())
        with open(os.path.join(folder, "stderr"), "w+b") as err_file:
            faults = (run_hang if expected.hangs else run)(zel, folder, expected, err_file)
            err_file.seek(0)
            faults += error_faults(expected, err_file.read())
    if faults:
        sys.exit("\n".join([script] + faults))


if __name__ == "__main__":
    main()
