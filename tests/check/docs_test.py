"""Every id of the checker has its place in docs/checker.md, with a bad and a good example; the
checker and the engine answer them as the text says.

    docs_test.py ZELCHECK SCRIPT_RUNNER DOCS/CHECKER.MD
"""

import os
import re
import subprocess
import sys
import tempfile

import outcome

SECTION = re.compile(r"^#### `([a-z-]+)` \((error|warning)\)$(.*?)(?=^###|\Z)", re.M | re.S)
EXAMPLE = re.compile(r"^```c (bad|good)([a-z ]*)\n(.*?)^```$", re.M | re.S)
REPEATED = re.compile("«(.*?)\\*(\\d+)»", re.S)

# These need the engine's window.
WINDOW = re.compile(r"\b(loadimage|moveimage|createtimer|createtext|addexectfunckey|"
                    r"changewindowname)\b", re.I)


def expand(text, flags):
    """The bytes of an example."""
    text = REPEATED.sub(lambda match: "".join(
        match[1].replace("#", str(i)) for i in range(int(match[2]))), text)
    text = text.replace("«\\0»", "\0")
    return text.replace("\n", "\n" if "lf" in flags else "\r\n").encode("utf-8")


def listed_ids(zelcheck):
    lines = subprocess.run([zelcheck, "--ids"], capture_output=True, check=True).stdout
    return {line.split()[0]: line.split()[1] for line in lines.decode().splitlines()}


class Example:
    def __init__(self, name, severity, match):
        self.name = name
        self.severity = severity
        self.is_bad = match[1] == "bad"
        self.flags = match[2].split()
        self.script = expand(match[3], self.flags)

    def wanted_severities(self):
        if "any" in self.flags:
            return {"error", "warning"}
        named = [flag for flag in self.flags if flag in ("error", "warning")]
        return {named[0] if named else self.severity}

    def faults(self, findings):
        own = {found["severity"] for found in findings if found["id"] == self.name}
        if not self.is_bad:
            return [f"good example: {findings}"] if findings else []
        if not own & self.wanted_severities():
            return [f"bad example: {findings}"]
        if self.wanted_severities() == {"warning"} and outcome.has_error(findings):
            return [f"the bad example of a warning has errors: {findings}"]
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


def check_section(match, zelcheck, engine, folder):
    name, severity, text = match[1], match[2], match[3]
    examples = [Example(name, severity, found) for found in EXAMPLE.finditer(text)]
    if [example.is_bad for example in examples] != [True, False]:
        return [f"{name}: one bad and one good example, please"]
    return [f"{name}: {fault}" for example in examples
            for fault in check_example(example, zelcheck, engine, folder)]


def main():
    zelcheck, runner, document = sys.argv[1:]
    with open(document, encoding="utf-8") as file:
        sections = list(SECTION.finditer(file.read()))
    ids = listed_ids(zelcheck)
    documented = [(match[1], match[2]) for match in sections]
    faults = [f"documented wrongly: {entry}"
              for entry in set(documented) ^ set(ids.items())]
    if len(documented) != len(ids):
        faults.append(f"{len(ids)} ids, {len(documented)} sections")
    with tempfile.TemporaryDirectory(prefix="zel-docs-") as folder:
        outcome.write_script(folder, b"")
        image = os.path.join(folder, "levels", "level1", "img")
        os.mkdir(image)
        with open(os.path.join(image, "tree.bmp"), "wb"):
            pass
        engine = outcome.Engine(runner, folder)
        for match in sections:
            faults += check_section(match, zelcheck, engine, folder)
    print("\n".join(faults) or f"{len(sections)} ids in order")
    return 1 if faults else 0


sys.exit(main())
