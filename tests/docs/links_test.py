#!/usr/bin/env python3
"""Follows the links of the pages: each file is there, and each heading that a link names. No
picture is so large that a page loads slowly. The files of the project that a page names are there,
with or without their ending; not so where only the pages are installed.

    links_test.py [--installed] ROOT
"""

import re
import sys
from pathlib import Path

LARGEST = 1000000  # bytes
NAMED = re.compile(r"`(\w+(?:/[\w.*]+)+/?)`")
LINK = re.compile(r"!?\[[^\]]*\]\(([^)\s]+)\)|<img [^>]*src=\"([^\"]+)\"")


def anchor(heading):
    """The name that GitHub gives to a heading."""
    words = re.sub(r"[`*]|\[|\]\([^)]*\)", "", heading).strip().lower()
    return re.sub(r"[^\w\- ]", "", words).replace(" ", "-")


def anchors(path):
    text = re.sub(r"^```.*?^```$", "", path.read_text(encoding="utf-8"), flags=re.M | re.S)
    return {anchor(heading) for heading in re.findall(r"^#+ (.*)", text, re.M)}


def link_faults(page):
    text = re.sub(r"^```.*?^```$", "", page.read_text(encoding="utf-8"), flags=re.M | re.S)
    for link in (first or second for first, second in LINK.findall(text)):
        if "://" in link:
            continue
        name, _, heading = link.partition("#")
        target = page.parent / name if name else page
        if not target.exists():
            yield f"{page.name}: {link}: no such file"
        elif target.stat().st_size > LARGEST:
            yield f"{page.name}: {link}: too large"
        elif heading and heading not in anchors(target):
            yield f"{page.name}: {link}: no such heading"


def name_faults(page, root):
    folders = {path.name for path in root.iterdir() if path.is_dir() and path.name[:5] != "build"}
    for name in NAMED.findall(page.read_text(encoding="utf-8")):
        if name.split("/")[0] in folders and not [*root.glob(name), *root.glob(name + ".*")]:
            yield f"{page.name}: {name}: no such file"


def main():
    root = Path(sys.argv[-1])
    pages = [*root.glob("*.md"), *root.glob("docs/*.md"), *root.glob("games/*/README.md")]
    faults = [fault for page in pages for fault in link_faults(page)]
    if "--installed" not in sys.argv:
        faults += [fault for page in pages for fault in name_faults(page, root)]
    print(f"{len(pages)} pages, {len(faults)} faults")
    if len(pages) < 10 or faults:
        sys.exit("\n".join(faults))


if __name__ == "__main__":
    main()
