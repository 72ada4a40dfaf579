"""No line of code is longer than 100 characters. Pages, data and what is generated are left out."""

import pathlib
import subprocess
import sys

LONGEST = 100
ENDINGS = {".h", ".cpp", ".py", ".sh"}


def is_code(path):
    return path.suffix in ENDINGS or path.name == "CMakeLists.txt"


def long_lines(root):
    names = subprocess.check_output(["git", "ls-files"], cwd=root, text=True).splitlines()
    paths = [root / name for name in names]
    code = [path for path in paths if is_code(path) and path.exists()]
    assert len(code) > 200, "the code was not found"
    for path in code:
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            if len(line) > LONGEST:
                yield f"{path.relative_to(root)}:{number}: {len(line)} characters"


def main():
    found = list(long_lines(pathlib.Path(sys.argv[1])))
    print("\n".join(found) or "no line is too long")
    return 1 if found else 0


sys.exit(main())
