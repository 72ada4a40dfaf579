"""What the tests of zelkit share: a game in a folder of its own, and zelkit as a process.

Run as: FILE KIT. Where the programs are is told by ZELKIT_BIN.
"""

import os
import subprocess
import sys
import tempfile
import threading
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
from level_folder import write_level  # noqa: E402
from process import PATIENCE  # noqa: E402

KIT = Path(sys.argv.pop()).resolve()
ZELKIT = str(KIT / "zelkit")
SCRIPT = "game/levels/level1/script.txt"
GOOD = 'int main()\n{\n    puts("READY");\n}\n'


class Running:
    """A zelkit that goes on: its two outputs as they grow."""

    def __init__(self, process):
        self.process = process
        self.texts = {"out": "", "err": ""}
        self.open = {"out", "err"}  # those that may still grow
        self.news = threading.Condition()
        self.listeners = [threading.Thread(target=self.listen, args=stream, daemon=True)
                          for stream in (("out", process.stdout), ("err", process.stderr))]
        for listener in self.listeners:
            listener.start()

    def listen(self, name, stream):
        while data := os.read(stream.fileno(), 65536):
            with self.news:
                self.texts[name] += data.decode()
                self.news.notify_all()
        with self.news:
            self.open.discard(name)
            self.news.notify_all()

    def wait_for(self, name, text, count=1):
        """Waits until this has been written so many times."""
        def is_written():
            return self.texts[name].count(text) >= count
        with self.news:
            self.news.wait_for(lambda: is_written() or name not in self.open, PATIENCE)
            if not is_written():
                raise AssertionError(f"waited for {text!r} in {self.texts}")

    def end(self):
        """Waits for the end; returns the status and both texts."""
        status = self.process.wait(PATIENCE)
        for listener in self.listeners:
            listener.join(PATIENCE)
        self.process.stdout.close()
        self.process.stderr.close()
        return status, self.texts["out"], self.texts["err"]

    def interrupt(self, number):
        self.process.send_signal(number)
        return self.end()


class KitTest(unittest.TestCase):
    """A game is in game/ of the folder that zelkit is started in."""

    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = Path(scratch.name)
        self.game = write_level(self.folder / "game", GOOD)
        self.script = self.folder / SCRIPT

    def write(self, text, line_end="\r\n"):
        self.script.write_bytes(text.replace("\n", line_end).encode())

    def command(self, *words):
        return [ZELKIT, *[str(word) for word in words]]

    def kit(self, *words, environment=None, given=b""):
        """Runs zelkit to its end."""
        run = subprocess.run(self.command(*words), cwd=self.folder, input=given, timeout=PATIENCE,
                             env={**os.environ, **(environment or {})},
                             capture_output=True, check=False)
        return run.returncode, run.stdout.decode(), run.stderr.decode()

    def begin(self, *words, **options):
        """Starts zelkit."""
        options = {"stdin": subprocess.DEVNULL, **options}
        process = subprocess.Popen(self.command(*words), cwd=self.folder, stdout=subprocess.PIPE,
                                   stderr=subprocess.PIPE, **options)
        self.addCleanup(self.finish, process)
        return Running(process)

    @staticmethod
    def finish(process):
        if process.poll() is None:
            process.terminate()
            process.wait(PATIENCE)
