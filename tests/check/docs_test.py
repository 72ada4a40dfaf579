"""Every id of the checker has its place in docs/checker.md, with a wrong and a right script side by
side; the checker and the engine answer them as the text says.

    docs_test.py ZELCHECK SCRIPT_RUNNER DOCS/CHECKER.MD

Comments, invisible to readers, say what is special about a wrong script:

    <!-- severity: warning -->   the id is found with this severity, not with that of the heading,
                                 or with "any"
    <!-- line ends: LF -->       the script has bare line feeds in place of CR LF
"""

import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

import outcome

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "docs"))
from page import read_blocks  # noqa: E402

HEADING = re.compile(r"#### `([a-z-]+)` \((error|warning)\)")
SECTION = re.compile(rf"^{HEADING.pattern}$", re.M)
REPEATED = re.compile("«(.*?)\\*(\\d+)»", re.S)

# These need the engine's window.
WINDOW = re.compile(r"\b(loadimage|moveimage|createtimer|createtext|addexectfunckey|"
                    r"changewindowname)\b", re.I)


def expand(text, line_end):
    """The bytes of an example."""
    text = REPEATED.sub(lambda match: "".join(
        match[1].replace("#", str(i)) for i in range(int(match[2]))), text)
    text = text.replace("«\\0»", "\0")
    return text.replace("\n", line_end).encode("utf-8")


def listed_ids(zelcheck):
    lines = subprocess.run([zelcheck, "--ids"], capture_output=True, check=True).stdout
    return {line.split()[0]: line.split()[1] for line in lines.decode().splitlines()}


class Example:
    """One of the two scripts of a block. Without a main it is the inside of one."""

    def __init__(self, name, severities, lines, line_end="\r\n"):
        self.name = name
        self.severities = severities  # that the id may be found with; empty for the right script
        text = "\n".join(lines).rstrip() + "\n"
        if " main(" not in text:
            text = "int main()\n{\n" + text + "}\n"
        self.script = expand(text, line_end)

    def faults(self, findings):
        if not self.severities:
            return [f"right example: {findings}"] if findings else []
        own = {found["severity"] for found in findings if found["id"] == self.name}
        if not own & self.severities:
            return [f"wrong example: {findings}"]
        if self.severities == {"warning"} and outcome.has_error(findings):
            return [f"the wrong example of a warning has errors: {findings}"]
        return []

    def engine_faults(self, engine, findings):
        if WINDOW.search(self.script.decode("utf-8")):
            return []
        answer = engine.answer(self.script)
        if bool(answer) != outcome.has_error(findings):
            return [f"the engine answers {answer!r} where the checker found {findings}"]
        return []


def check_example(example, zelcheck, engine, folder):
    path = outcome.write_script(folder, example.script)
    findings = outcome.check(zelcheck, path)
    return example.faults(findings) + example.engine_faults(engine, findings)


def read_pair(block):
    """The wrong and the right script of a block."""
    name, severity = HEADING.fullmatch(block.heading).groups()
    severity = block.marks.get("severity", severity)
    wrong, right = (column[1:] for column in block.columns())
    return [Example(name, {"error", "warning"} if severity == "any" else {severity}, wrong,
                    "\n" if block.marks.get("line ends") == "LF" else "\r\n"),
            Example(name, set(), right)]


def read_pairs(page):
    """The ids and the two scripts of each block that has them side by side, in order."""
    blocks = [block for block in read_blocks(page) if block.columns()]
    return [(HEADING.fullmatch(block.heading)[1], read_pair(block)) for block in blocks]


def main():
    zelcheck, runner, document = sys.argv[1:]
    with open(document, encoding="utf-8") as file:
        page = file.read()
    ids = listed_ids(zelcheck)
    documented = SECTION.findall(page)
    faults = [f"documented wrongly: {entry}"
              for entry in set(documented) ^ set(ids.items())]
    if len(documented) != len(ids):
        faults.append(f"{len(ids)} ids, {len(documented)} sections")
    pairs = read_pairs(page)
    if [name for name, _ in pairs] != [name for name, _ in documented]:
        faults.append("one wrong and one right script under each id, please")
    with tempfile.TemporaryDirectory(prefix="zel-docs-") as folder:
        outcome.write_script(folder, b"")
        image = os.path.join(folder, "levels", "level1", "img")
        os.mkdir(image)
        with open(os.path.join(image, "tree.bmp"), "wb"):
            pass
        engine = outcome.Engine(runner, folder)
        faults += [f"{name}: {fault}" for name, pair in pairs for example in pair
                   for fault in check_example(example, zelcheck, engine, folder)]
    print("\n".join(faults) or f"{len(pairs)} ids in order")
    return 1 if faults else 0


sys.exit(main())
