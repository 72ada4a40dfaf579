"""A global is written by the file that defines it; by others only where its comment names them.

The comment of a global is what its header says above it or beside it. What counts as writing: an
assignment to it or to a part of it, counting it up or down, and calls that change a container.
"""

import pathlib
import re
import sys

FOLDERS = ["app", "images", "keys", "play", "script", "texts", "timers", "units"]
DECLARATION = re.compile(r"^extern [^(]*?(?:\(\*)?\b(g[A-Z]\w*)[^;]*;(.*)")
PART = r"(?:\[[^\]]*\]|(?:\.|->)\w+)*"  # an element or a field, and so on
CHANGES = r"\s*(?:[-+*/%|&^]?=(?!=)|\+\+|--)"
CALLS = r"\.(?:push_back|pop_back|clear|erase|insert|emplace\w*|extract|resize|reserve)\("


def comment_above(lines, number):
    above = []
    while number > 0 and lines[number - 1].startswith(("//", "extern ")):
        number -= 1
        above.append(lines[number])
    return " ".join(above)


def read_globals(headers):
    """By name: the global's header, and what is said of it."""
    found = {}
    for header in headers:
        lines = header.read_text(encoding="utf-8").splitlines()
        for number, line in enumerate(lines):
            match = DECLARATION.match(line)
            if match:
                found[match[1]] = (header, comment_above(lines, number) + match[2])
    return found


def writes(text, name):
    assigned = rf"(?<![\w.]){name}\b{PART}{CHANGES}"
    return re.search(rf"{assigned}|(?<![\w.]){name}\b{CALLS}|(?:\+\+|--){name}\b", text)


def strangers(root):
    headers = [path for folder in FOLDERS for path in (root / folder).rglob("*.h")]
    sources = [path for folder in FOLDERS for path in (root / folder).rglob("*.cpp")]
    texts = {path: path.read_text(encoding="utf-8") for path in headers + sources}
    known = read_globals(headers)
    assert len(known) > 40, "the globals were not found"
    for name, (header, comment) in known.items():
        for path, text in texts.items():
            is_named = str(path.relative_to(root).with_suffix("")) in comment
            if path.stem != header.stem and not is_named and writes(text, name):
                yield f"{path.relative_to(root)} writes {name} of {header.relative_to(root)}"


def main():
    found = sorted(strangers(pathlib.Path(sys.argv[1])))
    print("\n".join(found) or "every global is written where its comment says")
    return 1 if found else 0


sys.exit(main())
