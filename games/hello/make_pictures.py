#!/usr/bin/env python3
"""Draws the pictures of this game anew: SysPics/select.bmp and those under levels/level1/img/."""

import math
import random
import sys
from pathlib import Path

GAME = Path(__file__).resolve().parent
sys.path.insert(0, str(GAME.parent.parent / "tools"))

from pixel_art import (  # noqa: E402  (found only through the line above)
    blank, colour, disc, enlarge, fill_rect, from_letters, hill, paste, put, size, soft_box,
    write_bmp,
)

EDGE = 2  # of discs

# The engine shows every unit 15 by 15 pixels large, so that is the size to draw it in.
PEON = [
    ".....kkkkk.....",
    "....kyyyyyk....",
    "..kkyoooooykk..",
    ".kyyyyyyyyyyyk.",
    "..kkkfffffkkk..",
    "....kfkfkfk....",
    "....kfffffk....",
    "...kkkfffkkk...",
    "..krrrrrrrrrk..",
    "..krkrrrrrkrk..",
    "..kfkrrrrrkfk..",
    "...kkmmmmmkk...",
    "....knnknnk....",
    "....knnknnk....",
    "....kkk.kkk....",
]

COTTAGE = [
    "...................kkkk.....",
    "...................kggk.....",
    ".......kkkkkkkkkkkkkssk.....",
    "......krrrrrrrrrrrrrkkkk....",
    ".....krrorrrrorrrrorrrrrk...",
    "....krrrrrrrrrrrrrrrrrrrrk..",
    "...krorrrrorrrrorrrrorrrrrk.",
    "..krrrrrrrrrrrrrrrrrrrrrrrrk",
    "..kkkkkkkkkkkkkkkkkkkkkkkkkk",
    "....kwwwwwwwwwwwwwwwwwwwfk..",
    "....kwwkkkkkwwwwwwwkkkkkfk..",
    "....kwwkbkbkwwwwwwwkmmmkfk..",
    "....kwwkkkkkwwwwwwwkmmmkfk..",
    "....kwwkbkbkwwwwwwwkmymkfk..",
    "....kwwkkkkkwwwwwwwkmmmkfk..",
    "....kwwwwwwwwwwwwwwkmmmkfk..",
    "....kffffffffffffffkmmmkfk..",
    "....kkkkkkkkkkkkkkkkkkkkkk..",
]

CLOUD = [
    "........wwww..............",
    "......wwwwwwww...wwww.....",
    "....wwwwwwwwwwwwwwwwwww...",
    "..wwwwwwwwwwwwwwwwwwwwwww.",
    "wwwwwwwwwwwwwwwwwwwwwwwwww",
    ".gwwwgggwwwwwggggwwwwwgg..",
]


def leaf(x, y):
    """The shade of the crown's pixel: light above, dark below, woven together in between."""
    light = 46 - x - y + 3 * ((x + y) % 2) + 2 * math.sin(x) + 2 * math.cos(1.7 * y)
    if light > 12:
        return "l"
    return "e" if light > -8 else "d"


def tree():
    """A round crown, lit from the upper left, on a trunk."""
    picture = blank(46, 52)
    for x, width, y in ((20, 6, 36), (19, 8, 45), (17, 12, 48)):
        fill_rect(picture, x - 1, y - 1, width + 2, 52 - y, "k")
    for x, width, y in ((20, 6, 36), (19, 8, 45), (17, 12, 48)):
        fill_rect(picture, x, y, width, 50 - y, "m")
    for middle_x, middle_y, radius in ((15, 24, 13), (30, 24, 13), (23, 15, 14), (23, 28, 11)):
        disc(picture, middle_x, middle_y, radius + 1, lambda x, y: "k", EDGE)
    for middle_x, middle_y, radius in ((15, 24, 13), (30, 24, 13), (23, 15, 14), (23, 28, 11)):
        disc(picture, middle_x, middle_y, radius, leaf, EDGE)
    for x, y in ((12, 26), (24, 12), (33, 22), (21, 31), (28, 29), (16, 16)):
        fill_rect(picture, x, y, 2, 2, "r")
    return enlarge(picture, 2)


def checkered(picture, y, upper, lower):
    """Softens the border between two colours above and below row y."""
    for x in range(0, size(picture)[0]):
        put(picture, x, y - 1, colour(lower if x % 4 == 1 else upper))
        put(picture, x, y, colour(lower if x % 2 == 0 else upper))
        put(picture, x, y + 1, colour(upper if x % 4 == 3 else lower))


def scatter(picture, dice, count, top, marks):
    """Strews small marks over the ground below top, fewer in the distance."""
    width, height = size(picture)
    for _ in range(count):
        y = round(top + (height - top) * math.sqrt(dice.random()))
        paste(picture, from_letters(dice.choice(marks)), dice.randrange(width), y)


def meadow():
    """The background, half the window's size; enlarged it fills the window in blocks of 2 by 2."""
    dice = random.Random(7)  # the same picture every time
    picture = blank(320, 240, "b")
    fill_rect(picture, 0, 78, 320, 60, "w")
    checkered(picture, 78, "b", "w")
    disc(picture, 268, 34, 15, lambda x, y: "y", EDGE)
    paste(picture, from_letters(CLOUD), 196, 22)
    paste(picture, from_letters(CLOUD), 24, 56)
    hill(picture, 104, 10, 31, 40, "d")
    hill(picture, 120, 7, 43, 0, "e")
    hill(picture, 138, 4, 61, 20, "l")
    paste(picture, from_letters(COTTAGE), 212, 122)
    tuft, flower, bloom = ["e.e", ".e."], [".w.", "wyw", ".w.", ".e."], [".r", "e."]
    scatter(picture, dice, 190, 150, [tuft, tuft, tuft, flower, bloom])
    return enlarge(picture, 2)


def main():
    pictures = GAME / "levels/level1/img"
    for folder in (GAME / "SysPics", pictures):
        folder.mkdir(parents=True, exist_ok=True)
    write_bmp(GAME / "SysPics/select.bmp", soft_box("u", 56, 150, 32))
    write_bmp(pictures / "peon.bmp", from_letters(PEON))
    write_bmp(pictures / "tree.bmp", tree())
    write_bmp(pictures / "meadow.bmp", meadow())


if __name__ == "__main__":
    main()
