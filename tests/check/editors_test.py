"""The files for the editors are those that the engine's tables give now, and read the findings.

    editors_test.py GENERATE_EDITOR_FILES EDITORS ZELCHECK
"""

import json
import os
import re
import subprocess
import sys
import tempfile

GENERATED = ["vim/syntax/zel.vim", "vscode/syntaxes/zel.tmLanguage.json"]


def read(*parts):
    with open(os.path.join(*parts), encoding="utf-8") as file:
        return file.read()


def stale_files(generate, editors, folder):
    for name in GENERATED:
        os.makedirs(os.path.dirname(os.path.join(folder, name)))
    subprocess.run([generate, folder], check=True)
    return [f"{name} is stale: run build/generate_editor_files editors" for name in GENERATED
            if read(folder, name) != read(editors, name)]


def unreadable_findings(editors, zelcheck, folder):
    """The problem matcher must take every line that begins a finding, and no other."""
    package = json.loads(read(editors, "vscode", "package.json"))
    pattern = package["contributes"]["problemMatchers"][0]["pattern"]
    matcher = re.compile(pattern["regexp"])
    path = os.path.join(folder, "script.txt")
    with open(path, "wb") as file:
        file.write(b"int a;\r\nint main()\r\n{\r\n    x = 1;\r\n}\r\n")
    out = subprocess.run([zelcheck, path], capture_output=True, check=False).stdout.decode()
    matches = [found for found in map(matcher.match, out.splitlines()) if found]
    seen = [(found[pattern["file"]] == path, found[pattern["line"]], found[pattern["column"]],
             found[pattern["severity"]], found[pattern["code"]]) for found in matches]
    wanted = [(True, "1", "5", "warning", "unused-variable"),
              (True, "4", "5", "error", "unknown-variable")]
    return [] if seen == wanted else [f"the problem matcher reads {seen}"]


def main():
    generate, editors, zelcheck = map(os.path.abspath, sys.argv[1:])
    with tempfile.TemporaryDirectory(prefix="zel-editors-") as folder:
        faults = stale_files(generate, editors, folder)
        faults += unreadable_findings(editors, zelcheck, folder)
    json.loads(read(editors, "vscode", "syntaxes", "zel.tmLanguage.json"))
    json.loads(read(editors, "vscode", "language-configuration.json"))
    print("\n".join(faults) or "up to date")
    return 1 if faults else 0


sys.exit(main())
