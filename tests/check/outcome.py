"""What the checker and the engine say about a script: shared by the tests of this folder."""

import json
import os
import resource
import subprocess
import tempfile
import time

SECONDS = 300  # who takes longer hangs, on however slow a machine
PROCESSOR_SECONDS = 1  # of one script; who uses more never ends


def check(zelcheck, path, *options):
    """The findings about a file."""
    done = subprocess.run([zelcheck, "--json", *options, path], capture_output=True,
                          timeout=SECONDS, check=False)
    if done.returncode not in (0, 1, 2) or done.stderr:
        raise AssertionError(f"{path}: status {done.returncode}, {done.stderr!r}")
    return [json.loads(line) for line in done.stdout.decode("utf-8").splitlines()]


def has_error(findings):
    return any(finding["severity"] == "error" for finding in findings)


def limit_processor():
    resource.setrlimit(resource.RLIMIT_CPU, (PROCESSOR_SECONDS, PROCESSOR_SECONDS + 1))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def write_script(folder, script):
    """Writes the script of a game that has the files without which the engine does not start."""
    os.makedirs(os.path.join(folder, "SysPics"), exist_ok=True)
    for name in ("arial.ttf", os.path.join("SysPics", "select.bmp")):
        with open(os.path.join(folder, name), "ab"):
            pass
    level = os.path.join(folder, "levels", "level1")
    os.makedirs(level, exist_ok=True)
    path = os.path.join(level, "script.txt")
    with open(path, "wb") as file:
        file.write(script)
    return path


class Engine:
    """script_runner in a folder of its own: loads a script and runs its main."""

    def __init__(self, runner, folder):
        self.runner = os.path.abspath(runner)
        self.folder = folder

    def answer(self, script):
        """"" if the engine runs through, else what it does: a message of its report, "status 1",
        "abort", "fault", "hang at load" or "hang"."""
        write_script(self.folder, script)
        with tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as err:
            process = subprocess.Popen([self.runner], cwd=self.folder, stdin=subprocess.DEVNULL,
                                       stdout=out, stderr=err, preexec_fn=limit_processor)
            waits = self.wait(process, err)
            process.kill()
            process.wait()
            out.seek(0)
            return self.judge(waits, process.returncode, out.read())

    @staticmethod
    def wait(process, err):
        """True if the engine says that it waits endlessly."""
        deadline = time.monotonic() + SECONDS
        try:
            process.wait(0.02)  # nearly always enough
        except subprocess.TimeoutExpired:
            pass
        while process.poll() is None and time.monotonic() < deadline:
            err.seek(0)
            if b"waits endlessly" in err.read():
                return True
            time.sleep(0.01)
        return False

    @staticmethod
    def judge(waits, status, out):
        if waits:
            return "hang" if out else "hang at load"
        special = {1: "status 1", -6: "abort", -8: "fault", -24: "hang", -9: "hang"}
        if status != 0:
            return special.get(status, f"status {status}")
        if b"Error buffer long jump" not in out:
            return ""
        report = out[:out.rindex(b" in line ")]
        return report[report.rfind(b"\n") + 1:].decode("utf-8", "replace")
