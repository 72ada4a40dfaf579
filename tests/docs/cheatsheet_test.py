#!/usr/bin/env python3
"""The cheat sheet is up to date: the page is what its generator prints, the PDF was made with it.

    cheatsheet_test.py DOCS
"""

import hashlib
import subprocess
import sys
from pathlib import Path


def main():
    docs = Path(sys.argv[1])
    make = [sys.executable, docs / "cheatsheet/make_cheatsheet.py", "--page"]
    printed = subprocess.run(make, capture_output=True, check=True).stdout
    pdf = (docs / "cheatsheet.pdf").read_bytes()
    faults = []
    if printed != (docs / "cheatsheet.md").read_bytes():
        faults.append("cheatsheet.md is out of date: run docs/cheatsheet/make_cheatsheet.py")
    if hashlib.sha256(printed).hexdigest().encode() not in pdf:
        faults.append("cheatsheet.pdf is out of date: run docs/cheatsheet/make_cheatsheet.py")
    if pdf.count(b"/Type /Page\n") != 2:
        faults.append("cheatsheet.pdf has not two pages")
    print(f"{len(faults)} faults")
    if faults:
        sys.exit("\n".join(faults))


if __name__ == "__main__":
    main()
