"""Includes run one way, and in no circle.

The application shell includes the subsystems, they include script/, script/ includes none of them
but in the one file that holds the table of built-ins. The ground floor (app/globals.h,
app/input.h, app/main_thread.h) may be included from everywhere and includes nothing of ours.
play/ stands on all of the engine, and nothing includes it.
"""

import pathlib
import re
import sys

ENGINE = ["app", "script", "images", "timers", "keys", "texts", "units"]
FOLDERS = [*ENGINE, "play"]
GROUND_FLOOR = {"app/globals.h", "app/input.h", "app/main_thread.h"}
TABLE = "script/builtins.cpp"

# What a folder may include besides itself and the ground floor.
ALLOWED = {
    "app": set(ENGINE),
    "play": set(ENGINE),
    "script": set(),
    "images": {"script"},
    "timers": {"script"},
    "keys": {"script"},
    "texts": {"script", "timers"},
    "units": {"script", "images"},
}


def read_includes(root):
    includes = {}
    for folder in FOLDERS:
        for path in sorted((root / folder).glob("*.*")):
            names = re.findall(r'#include "([^"]+)"', path.read_text(encoding="utf-8"))
            includes[f"{folder}/{path.name}"] = names
    return includes


def wrong_directions(includes):
    for file, names in includes.items():
        folder = file.split("/")[0]
        for name in names:
            target = name.split("/")[0]
            allowed = target == folder or name in GROUND_FLOOR or target in ALLOWED[folder]
            if file in GROUND_FLOOR:
                yield f"{file} is ground floor and includes {name}"
            elif not allowed and file != TABLE:
                yield f"{file} includes {name}"


def find_cycle(includes, file, road):
    if file in road:
        return road[road.index(file):] + [file]
    for name in includes.get(file, []):
        cycle = find_cycle(includes, name, road + [file])
        if cycle:
            return cycle
    return None


def main():
    includes = read_includes(pathlib.Path(sys.argv[1]))
    assert len(includes) > 40, "the engine's files were not found"
    faults = list(wrong_directions(includes))
    for file in includes:
        cycle = find_cycle(includes, file, [])
        if cycle:
            faults.append("circle: " + " -> ".join(cycle))
    print("\n".join(sorted(set(faults))) or f"{len(includes)} files in order")
    return 1 if faults else 0


sys.exit(main())
