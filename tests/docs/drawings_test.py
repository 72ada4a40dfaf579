#!/usr/bin/env python3
"""The drawings of the pages are what their generator draws, and are well-formed.

    drawings_test.py FOLDER
"""

import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
from pathlib import Path


def main():
    kept = Path(sys.argv[1])
    faults = []
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([sys.executable, kept / "make_drawings.py", folder], check=True)
        drawn = sorted(Path(folder).glob("*.svg"))
        for path in drawn:
            ElementTree.parse(path)
            if (kept / path.name).read_text() != path.read_text():
                faults.append(f"{path.name} is not what make_drawings.py draws")
    if {path.name for path in kept.glob("*.svg")} != {path.name for path in drawn}:
        faults.append("there are other drawings than make_drawings.py draws")
    print(f"{len(drawn)} drawings, {len(faults)} faults")
    if not drawn or faults:
        sys.exit("\n".join(faults))


if __name__ == "__main__":
    main()
