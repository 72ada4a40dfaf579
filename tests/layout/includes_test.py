"""Includes run one way, down the list of rooms, and in no circle.

play/ may include all of the engine. The application shell includes the subsystems, they include the
script's wings, and each wing only those below it. The ground, app/base, includes nothing of ours.
"""

import pathlib
import re
import sys

# Each room includes itself and rooms further down. Of two in one line neither includes the other,
# but for the two pairs named below.
ROOMS = [
    ["play"],
    ["app"],
    ["images", "keys", "texts", "timers", "units"],
    ["script/run"],
    ["script/host"],
    ["script/errors"],
    ["script/source"],
    ["app/base"],
]
NEIGHBOURS = {("units", "images"), ("texts", "timers")}
LEVEL = {room: level for level, rooms in enumerate(ROOMS) for room in rooms}


def read_includes(root):
    includes = {}
    for room in LEVEL:
        for path in sorted((root / room).glob("*.*")):
            names = re.findall(r'#include "([^"]+)"', path.read_text(encoding="utf-8"))
            includes[f"{room}/{path.name}"] = names
    return includes


def room_of(file):
    return file.rsplit("/", 1)[0]


def wrong_directions(includes):
    for file, names in includes.items():
        room = room_of(file)
        for name in names:
            target = room_of(name)
            is_down = target in LEVEL and LEVEL[target] > LEVEL[room]
            if target != room and not is_down and (room, target) not in NEIGHBOURS:
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
    assert len(includes) > 70, "the engine's files were not found"
    faults = list(wrong_directions(includes))
    for file in includes:
        cycle = find_cycle(includes, file, [])
        if cycle:
            faults.append("circle: " + " -> ".join(cycle))
    print("\n".join(sorted(set(faults))) or f"{len(includes)} files in order")
    return 1 if faults else 0


sys.exit(main())
