#!/usr/bin/env python3
"""Writes the versions of CHANGELOG.md in the form that Debian's tools read.

    changelog.py CHANGELOG.md MAIL FILE
"""

import re
import sys
import textwrap
from datetime import datetime, timezone
from email.utils import format_datetime
from pathlib import Path


def entry_of(version, day, text, mail):
    """One version: each paragraph and each point of the text is a point here."""
    points = re.split(r"\n\n|\n(?=- )", text.strip())
    lines = [f"zel ({version}) unstable; urgency=medium", ""]
    for point in points:
        words = " ".join(point.removeprefix("- ").replace("`", "").split())
        lines += textwrap.wrap(words, 76, initial_indent="  * ", subsequent_indent="    ")
    when = format_datetime(datetime.fromisoformat(day).replace(tzinfo=timezone.utc))
    return "\n".join([*lines, "", f" -- The Zel developers <{mail}>  {when}", ""])


def main():
    source, mail, target = sys.argv[1:]
    heading = r"^## ([0-9.]+) \((.*)\)$"
    _, *parts = re.split(heading, Path(source).read_text(encoding="utf-8"), flags=re.MULTILINE)
    versions = zip(parts[::3], parts[1::3], parts[2::3])
    entries = [entry_of(*version, mail) for version in versions]
    Path(target).write_text("\n".join(entries), encoding="utf-8")


if __name__ == "__main__":
    main()
