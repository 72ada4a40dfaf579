#!/usr/bin/env python3
"""Makes a tool's manual page of what it says with --help.

    page.py TOOL SUMMARY VERSION DAY TAIL TARGET

SUMMARY is the page's line in lists of pages. TAIL is a file with the sections that follow. Commands
that the help lists have a help of their own, which goes into the page, too.
"""

import re
import subprocess
import sys
from pathlib import Path


def help_of(*command):
    """The paragraphs of a help, each as its lines."""
    command = [*command, "--help"]
    text = subprocess.run(command, check=True, capture_output=True, text=True).stdout
    return [part.splitlines() for part in re.split(r"\n\n+", text.strip("\n"))]


def escaped(text):
    """Backslashes and hyphens mean themselves, and so does a dot at the start of a line."""
    return re.sub(r"^([.'])", r"\\&\1", text.replace("\\", "\\e").replace("-", "\\-"))


def joined(lines):
    return escaped(" ".join(" ".join(lines).split()))


def usages_of(tool, lines):
    """The ways to call it; a line that does not begin with its name belongs to the one above."""
    words = " ".join(lines).replace("[-h] ", "").split()[1:]
    ways = re.split(rf" (?={tool} )", " ".join(words))
    return [escaped(way) for way in ways]


def points_of(lines):
    """A list: each point is a name and what it is, which may go on further in below."""
    indent = re.match(" *", lines[0])[0]
    points = []
    for line in lines:
        name, _, text = line.removeprefix(indent).partition("  ")
        if line.startswith(indent + "   ") and points:
            points[-1][1].append(line)
        else:
            points.append((name, [text]))
    return "\n".join(
        f".TP\n.B {escaped(name)}\n{joined(text)}"
        for name, text in points if name != "-h, --help")


def body_of(parts):
    """Paragraphs and lists in their order; the exit status comes last, as a section."""
    page, status = [], ""
    for lines in parts:
        if lines[0].startswith("Exit status: "):
            text = joined(lines).removeprefix("Exit status: ")
            status = f"\n.SH EXIT STATUS\n{text[0].upper()}{text[1:]}"
        elif lines[0].endswith(":") and len(lines) > 1:  # a list with a heading
            page.append(points_of(lines[1:]))
        elif lines[0].startswith("  "):
            page.append(points_of(lines))
        else:
            page.append(f".PP\n{joined(lines)}")
    return "\n".join(page).removeprefix(".PP\n"), status


def commands_of(tool, parts):
    """A section with a part for each command, without what the overview says already."""
    (listed,) = [lines[2:] for lines in parts if lines[-1].startswith("    ") and
                 lines[1].strip() == "COMMAND"]
    page = [".SH COMMANDS"]
    for name in [line.split()[0] for line in listed if line[4] != " "]:
        usage, *rest = [part for part in help_of(tool, name) if part not in parts]
        (way,) = usages_of(Path(tool).name, usage)
        page += [f'.SS "{way}"', body_of(rest)[0]]
    return "\n".join(page)


def page_of(tool, summary, version, day, tail):
    name = Path(tool).name
    usage, *parts = help_of(tool)
    described = [lines for lines in parts if lines[1:2] != ["  COMMAND"]]
    description, status = body_of(described)
    commands = commands_of(tool, parts) if described != parts else ""
    return "\n".join(filter(None, [
        f'.TH {name.upper()} 1 {day} "Zel {version}" Zel',
        f".SH NAME\n{name} \\- {summary}",
        ".SH SYNOPSIS", "\n.br\n".join(f".B {way}" for way in usages_of(name, usage)),
        ".SH DESCRIPTION", description, commands, status.strip(), tail,
    ]))


def main():
    *words, tail, target = sys.argv[1:]
    page = page_of(*words, Path(tail).read_text(encoding="utf-8"))
    Path(target).write_text(page, encoding="utf-8")


if __name__ == "__main__":
    main()
