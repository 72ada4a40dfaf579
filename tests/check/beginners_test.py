"""The checker over the mistakes of beginners.md: its first line names the cause of each.

    beginners_test.py ZELCHECK BEGINNERS.MD [--count]

With --count it only says how many are as the page wants them.
"""

import os
import re
import subprocess
import sys
import tempfile

SECTION = re.compile(r"^## ([^\n]*)\n\nLine (\d+), (\S+?)(, alone)?: ([^\n]*)\n\n"
                     r"```c ?([^\n]*)\n(.*?)^```$", re.M | re.S)
FINDING = re.compile(r"^(.+):(\d+):(\d+): (error|warning): (.*) \[([a-z-]+)\]$", re.M)
SCRIPT = "levels/level1/script.txt"
FILES = ["arial.ttf", "SysPics/select.bmp", "levels/level1/img/peon.bmp",
         "levels/level1/img/tree.bmp"]


def write(path, content=b""):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(content)


class Mistake:
    def __init__(self, match):
        self.name, self.line, self.severity, self.alone, self.words = match.groups()[:5]
        self.flag, _, self.path = match[6].partition(" ")
        self.text = match[7]

    def content(self):
        text = self.text if self.flag == "lf" else self.text.replace("\n", "\r\n")
        return (b"\xef\xbb\xbf" if self.flag == "bom" else b"") + text.encode()

    def check(self, zelcheck):
        """What zelcheck prints, started beside the game."""
        with tempfile.TemporaryDirectory(prefix="zel-beginners-") as folder:
            for path in FILES:
                if (self.flag, self.path) != ("without", path):
                    write(os.path.join(folder, "game", path))
            script = self.path if self.flag == "as" else SCRIPT
            write(os.path.join(folder, "game", script), self.content())
            done = subprocess.run([zelcheck, "game"], cwd=folder, capture_output=True, check=False)
            return (done.stdout + done.stderr).decode()

    def names_cause(self, findings):
        first = findings[0] if findings else None
        return (first is not None and first[2] == self.line
                and re.fullmatch(self.severity, first[4]) is not None
                and re.search(self.words, first[5]) is not None)


def main():
    zelcheck = os.path.abspath(sys.argv[1])
    with open(sys.argv[2], encoding="utf-8") as file:
        mistakes = [Mistake(match) for match in SECTION.finditer(file.read())]
    named = alone = 0
    for mistake in mistakes:
        output = mistake.check(zelcheck)
        findings = list(FINDING.finditer(output))
        is_named = mistake.names_cause(findings)
        is_alone = not mistake.alone or len(findings) == 1
        named += is_named
        alone += is_named and is_alone
        if not is_named or not is_alone:
            print(f"{mistake.name}: wanted line {mistake.line}, {mistake.severity}"
                  f"{mistake.alone or ''}: {mistake.words}\n{output}")
    print(f"of {len(mistakes)} mistakes the first line names {named}, {alone} as wanted in all")
    return 0 if "--count" in sys.argv or (alone == len(mistakes) and alone > 40) else 1


sys.exit(main())
