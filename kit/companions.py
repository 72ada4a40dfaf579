"""Where the kit finds what it works with: the three programs, the games, the font, the licences.

In a checkout they are in its build/ and games/. An installed kit looks in the folders above its
own: bin/ and games/ for the programs, share/games/zel/ for the games, share/doc/ for licences.
ZELKIT_BIN names a folder of programs that counts more than all of these.
"""

import os
import re
import shutil
from pathlib import Path

HERE = Path(__file__).resolve().parent
CHECKOUT = HERE.parent if (HERE.parent / "CMakePresets.json").is_file() else None

FONT_NAME = "LiberationSans-Regular.ttf"
FONT_PACKAGE = "fonts-liberation"
FONT_FOLDERS = ("truetype/liberation", "truetype/liberation2", "liberation", "liberation-sans", "")


class Complaint(Exception):
    """What the user asked for cannot be done. Its text tells why; zelkit ends with status 2."""


def _above(*names):
    """These places in each folder above the kit, the nearest first."""
    return [folder / name for folder in HERE.parents for name in names]


def _first(places, exists):
    return next((place for place in places if exists(place)), None)


def program(name):
    """The path of zel, zelcheck or zelplay."""
    wanted = os.environ.get("ZELKIT_BIN")
    if wanted:
        places = [Path(wanted) / name]
    elif CHECKOUT:
        places = [CHECKOUT / "build" / name]
    else:
        places = [HERE / name, *_above(f"bin/{name}", f"games/{name}")]
        places += [Path(found) for found in [shutil.which(name)] if found]
    found = _first(places, lambda place: os.access(place, os.X_OK) and place.is_file())
    if found:
        return str(found.resolve())
    if CHECKOUT and not wanted:
        raise Complaint(f"{name} is not built; {CHECKOUT}/run.sh builds it")
    raise Complaint(f"{name} was not found; it is installed together with zelkit")


def games_folder():
    """The folder of the shipped games, or None."""
    places = [CHECKOUT / "games"] if CHECKOUT else _above("share/games/zel")
    return _first(places, Path.is_dir)


def shipped_games():
    """The names of the shipped games."""
    folder = games_folder()
    return sorted(script.parents[2].name for script in folder.glob("*/levels/level1/script.txt")) \
        if folder else []


def template_folder():
    """What a new game is copied from."""
    folder = games_folder()
    if not folder or not (folder / "template").is_dir():
        raise Complaint("the template of new games was not found")
    return folder / "template"


def font_file():
    """The font of every game that brings none."""
    places = [Path("/usr/share/fonts") / folder / FONT_NAME for folder in FONT_FOLDERS]
    found = _first(places, Path.is_file)
    if not found:
        raise Complaint(f"no {FONT_NAME} in /usr/share/fonts; it is in the package {FONT_PACKAGE}")
    return found


def licences(with_font):
    """The licence texts of the engine and of the font, by the names they get in a package. Debian's
    text of the font may name one that is common to many packages."""
    texts = {"zel.txt": [CHECKOUT / "LICENSE"] if CHECKOUT else
             _above("share/doc/zel/LICENSE", "share/doc/zel/copyright")}
    if with_font:
        font = Path("/usr/share/doc") / FONT_PACKAGE / "copyright"
        texts["font.txt"] = [font]
        text = font.read_text(errors="replace")
        for name in re.findall(r"(/usr/share/common-licenses/[\w.-]*\w)", text):
            texts[f"{Path(name).name}.txt"] = [Path(name)]
    found = {name: _first(places, Path.is_file) for name, places in texts.items()}
    for name, path in found.items():
        if not path:
            raise Complaint(f"the licence for licences/{name} is at none of: "
                            + ", ".join(map(str, texts[name])))
    return found
