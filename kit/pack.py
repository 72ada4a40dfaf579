"""zelkit pack: one archive with a game, the engine and the font, to hand out.

The archive holds one folder: `play`, the engine, the game, and the licences of what is not the
maker's. SDL and OpenGL ES come from the system that plays it.
"""

import io
import os
import platform
import tarfile
from pathlib import Path

from companions import FONT_NAME, FONT_PACKAGE, Complaint, licences, program
from game import FONT, shown

# What a maker needs and a player does not.
LEFT_OUT = ("plays", "__pycache__")
LEFT_OUT_ENDINGS = (".py", "~", ".swp", ".tmp", ".tar.gz")

# The libraries that zel is linked with are looked for before it is started; the last three packages
# are what SDL loads by itself.
PLAY = """\
#!/bin/sh
# Plays {name}. May be started from anywhere.
cd "$(dirname "$(readlink -f "$0")")/game" || exit 1
missing=$(LC_ALL=C ldd ../zel 2>&1 | grep 'not found')
if [ -n "$missing" ]; then
    echo "{name} needs libraries; on Debian or Ubuntu:" \\
        "sudo apt-get install libsdl2-2.0-0 libsdl2-image-2.0-0 libsdl2-ttf-2.0-0" \\
        "libgles2 libegl1 libgl1 libgl1-mesa-dri" >&2
    case "$missing" in *GLIBC*) echo "The system is older than the game:$missing" >&2 ;; esac
    exit 1
fi
ZEL_TICKS=main exec ../zel
"""

FONT_SOURCE = f"""\
game/{FONT} is {FONT_NAME} of the Debian and Ubuntu package {FONT_PACKAGE}, unchanged.
Its source: apt-get source {FONT_PACKAGE}
"""


def archive_name(game, version):
    return f"{game.name}-{version}-{platform.system().lower()}-{platform.machine()}.tar.gz"


def belongs(path):
    return not (path.name.startswith(".") or path.name in LEFT_OUT
                or path.name.endswith(LEFT_OUT_ENDINGS))


def game_files(folder):
    """The files of a game, each with its name in the game."""
    for parent, folders, names in os.walk(folder):
        folders[:] = sorted(name for name in folders if belongs(Path(name)))
        for name in sorted(names):
            path = Path(parent) / name
            if belongs(path):
                yield path, path.relative_to(folder)


def anonymous(entry):
    """Nothing of who packed it; what may be run may be run by all."""
    entry.uid = entry.gid = 0
    entry.uname = entry.gname = "root"
    entry.mode = 0o755 if entry.mode & 0o100 else 0o644
    return entry


def pack(game, version, file):
    """Writes the archive; returns its path."""
    target = Path(file or archive_name(game, version))
    if not target.parent.is_dir():
        raise Complaint(f"there is no folder {shown(target.parent)}")
    root = f"{game.name}-{version}"
    # Links are followed: the font is one, and leads out of the game.
    with tarfile.open(target, "w:gz", dereference=True) as archive:
        def add(path, name):
            archive.add(path, f"{root}/{name}", recursive=False, filter=anonymous)

        def write(text, name, mode):
            entry = tarfile.TarInfo(f"{root}/{name}")
            entry.size, entry.mode = len(text.encode()), mode
            entry.mtime = int(game.script.stat().st_mtime)
            archive.addfile(anonymous(entry), io.BytesIO(text.encode()))

        write(PLAY.format(name=game.name), "play", 0o755)
        add(program("zel"), "zel")
        for path, name in game_files(game.stage.resolve()):
            add(path, f"game/{name}")
        has_our_font = (game.stage / FONT).resolve().name == FONT_NAME
        for name, path in licences(has_our_font).items():
            add(path, f"licences/{name}")
        if has_our_font:
            write(FONT_SOURCE, "licences/font-source.txt", 0o644)
    return target
