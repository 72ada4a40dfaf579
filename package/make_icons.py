#!/usr/bin/env python3
"""Draws the icons of the games anew, of the pictures that the games draw.

    make_icons.py [FOLDER]     writes FOLDER/GAME.png; without FOLDER, those in icons/
"""

import runpy
import sys
from pathlib import Path
from types import SimpleNamespace

HERE = Path(__file__).resolve().parent
GAMES = HERE.parent / "games"
sys.path.insert(0, str(HERE.parent / "tools"))

from pixel_art import (  # noqa: E402  (found only through the line above)
    blank, colour, enlarge, fill_rect, from_letters, paste, put, size, write_png,
)

SIDE = 64  # drawn this large, saved twice as large
CORNER = 9  # radius of the round corners


def pictures_of(game):
    """What draws the game's pictures, by name."""
    return SimpleNamespace(**runpy.run_path(str(GAMES / game / "make_pictures.py")))


def rounded(picture):
    """The picture with clear corners and a dark rim."""
    result = blank(SIDE, SIDE)
    for y in range(SIDE):
        for x in range(SIDE):
            across = max(CORNER - x - 0.5, x + 0.5 - (SIDE - CORNER), 0)
            down = max(CORNER - y - 0.5, y + 0.5 - (SIDE - CORNER), 0)
            depth = CORNER - (across**2 + down**2) ** 0.5 if across and down else CORNER
            depth = min(depth, x + 1, y + 1, SIDE - x, SIDE - y)
            if depth > 0:
                put(result, x, y, colour("k") if depth <= 1.5 else picture[y][x])
    return result


def cut(picture, x, y):
    """A square of the icon's size."""
    return [row[x : x + SIDE] for row in picture[y : y + SIDE]]


def centred(picture, other, drop=0):
    """Puts a picture into the middle, lower by some pixels."""
    width, height = size(other)
    paste(picture, other, (SIDE - width) // 2, (SIDE - height) // 2 + drop)


def peons(module):
    """A turnip in the earth."""
    picture = blank(SIDE, SIDE, "m")
    fill_rect(picture, 0, 0, SIDE, 26, "b")
    fill_rect(picture, 0, 26, SIDE, 4, "e")
    for x in range(0, SIDE, 6):
        fill_rect(picture, x + 2, 36 + x * 7 % 23, 3, 1, "k")
    turnip = from_letters(module.TURNIP)
    centred(picture, enlarge(turnip, 2), 2)
    return picture


def bricks(module):
    """The ball before the wall."""
    picture = blank(SIDE, SIDE, "n")
    for row, letters in enumerate(module.ROWS.values()):
        for column in range(-1, 3):
            if (row, column) not in ((4, 1), (3, 1), (4, 0)):
                shift = 15 * (row % 2)
                paste(picture, module.brick(*letters), 30 * column + shift, 4 + 11 * row - 2)
    paste(picture, enlarge(from_letters(module.BALL), 2), 30, 42)
    return picture


def starfall(module):
    """The owl between two stars."""
    picture = blank(SIDE, SIDE, "n")
    for x, y in ((9, 8), (50, 30), (16, 25), (40, 8), (57, 13), (8, 52), (55, 55)):
        put(picture, x, y, colour("w"))
    star = from_letters(module.STAR)
    paste(picture, star, 8, 9)
    paste(picture, star, 46, 15)
    centred(picture, enlarge(from_letters(module.OWL), 2), 9)
    return picture


def clouds(module):
    """The balloon over a cloud."""
    picture = cut(module.sky("ubbw"), 100, 60)
    paste(picture, module.balloon(), 24, 4)
    paste(picture, module.cloud(40, 20, 4, 3), -6, 12)
    paste(picture, module.cloud(60, 26, 5, 2), 10, 40)
    return picture


def hello(module):
    """The tree on the meadow."""
    meadow = module.meadow()[::2]
    picture = cut([row[::2] for row in meadow], 70, 92)
    tree = [row[::2] for row in module.tree()[::2]]
    centred(picture, tree)
    return picture


def main():
    folder = Path(sys.argv[1]) if len(sys.argv) > 1 else HERE / "icons"
    for draw in (peons, bricks, starfall, clouds, hello):
        picture = rounded(draw(pictures_of(draw.__name__)))
        write_png(folder / f"{draw.__name__}.png", enlarge(picture, 2))


if __name__ == "__main__":
    main()
