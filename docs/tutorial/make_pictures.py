#!/usr/bin/env python3
"""Draws the pictures of the tutorial and the cookbook: SysPics/select.bmp and those under img/."""

import random
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent.parent / "tools"))

from pixel_art import (  # noqa: E402  (found only through the line above)
    blank, colour, enlarge, fill_rect, from_letters, paste, put, soft_box, write_bmp,
)
from pixel_font import lettering  # noqa: E402

BEE = [
    "................",
    "....bbb..bbb....",
    "...bwwwbbwwwb...",
    "...bwwwwbwwwb...",
    "....bwwwwbwwb...",
    "....kkkkkkkkk...",
    "..kkyykkyykyyyk.",
    ".kkkyykkyykyykyk",
    "kkkkyykkyykyykyk",
    ".kkkyykkyykyyyyk",
    "..kkyykkyykyyyk.",
    "....kkkkkkkkkk..",
    ".....k..k..k....",
    "................",
    "................",
    "................",
]

WASP = [
    "................",
    "......gg..gg....",
    ".....gwwggwwg...",
    "....gwwwgwwwg...",
    "....gwwgwwwg....",
    "...kkkkkkkkkk...",
    "..koookkookkkk..",
    ".krrookkookkookk",
    ".krkookkookkookk",
    ".koookkkookkookk",
    "..kookkkookkkk..",
    "...kkkkkkkkk....",
    "....k..k..k.....",
    "................",
    "................",
    "................",
]

FLOWER = [
    "................",
    "......kkkk......",
    ".....kwwwwk.....",
    "..kkkkwppwkkkk..",
    ".kwwwkwppwkwwwk.",
    ".kwpwwkyykwwpwk.",
    ".kwppwyyyywppwk.",
    "..kkkkyooykkkk..",
    ".kwppwyyyywppwk.",
    ".kwpwwkyykwwpwk.",
    ".kwwwkwppwkwwwk.",
    "..kkkkwppwkkkk..",
    ".....kwwwwk.....",
    "......kkkk......",
    "................",
    "................",
]

JAR = [
    "...kkkkkkkkkk...",
    "..kmmmmmmmmmmk..",
    "..kmffffffffmk..",
    "...kkkkkkkkkk...",
    "..kbwyyyyyyybk..",
    ".kbwyyyyyyyyybk.",
    ".kbwyyyyyyyyoyk.",
    ".kbyykkyykkyoyk.",
    ".kbykwwkkwwkoyk.",
    ".kbyyykyykyyoyk.",
    ".kbyyyyyyyyyoyk.",
    ".kbyyyyyyyyooyk.",
    ".kbyyyyyyyoooyk.",
    "..kbooooooooyk..",
    "...kkkkkkkkkk...",
    "................",
]

EMPTY_JAR = [row.translate(str.maketrans("yokbwmf", "mmsmmmm")) for row in JAR]

# The bee with its wings down, for an animation of two pictures.
BEE_DOWN = BEE[:1] + [
    "................",
    "................",
    "..bbbbb..bbbb...",
    "..bwwwwwbwwwwb..",
] + BEE[5:]

HEART = [
    "................",
    "................",
    "...kkkk..kkkk...",
    "..krrrrkkrrrrk..",
    ".krwrrrrrrrrrrk.",
    ".krwrrrrrrrrrrk.",
    ".krrrrrrrrrrrrk.",
    ".krrrrrrrrrrrrk.",
    "..krrrrrrrrrrk..",
    "...krrrrrrrrk...",
    "....krrrrrrk....",
    ".....krrrrk.....",
    "......krrk......",
    ".......kk.......",
    "................",
    "................",
]

ARROW = [
    "kk........",
    "kwk.......",
    "kwwk......",
    "kwwwk.....",
    "kwwwwk....",
    "kwwwwwk...",
    "kwwwwwwk..",
    "kwwwkkkkk.",
    "kwkkwk....",
    "kk.kwwk...",
    "....kwk...",
    "....kkk...",
]

BALL = [
    "..kkkk..",
    ".kyyyok.",
    "kywyyyok",
    "kywyyyok",
    "kyyyyyok",
    "kyyyyook",
    ".kooook.",
    "..kkkk..",
]

# Every unit is shown 15 by 15 pixels large, so that is the size to draw it in.
BEETLE = [
    "....k.....k....",
    ".....k...k.....",
    "....kkkkkkk....",
    "...kkwkkkwkk...",
    "..kkkkkkkkkkk..",
    "k.krrrrkrrrrk.k",
    ".kkrkrrkrrkrkk.",
    "..krrrrkrrrrk..",
    "kkkrrrrkrrrrkkk",
    "..krrkrkrkrrk..",
    "..krrrrkrrrrk..",
    ".kkrrrrkrrrrkk.",
    "k..krrrkrrrk..k",
    "....kkrkrkk....",
    "......kkk......",
]


def meadow():
    """Grass seen from above, below a shelf with eight empty jars."""
    dice = random.Random(3)  # the same picture every time
    picture = blank(320, 240, "l")
    for _ in range(420):
        put(picture, dice.randrange(320), dice.randrange(28, 240), colour("y"))
    for _ in range(260):
        tuft = from_letters(["e.e", ".e."] if dice.random() < 0.7 else ["..e.", "e.e.", ".ee."])
        paste(picture, tuft, dice.randrange(320), dice.randrange(28, 238))
    for _ in range(26):
        daisy = from_letters([".w.", "wyw", ".w."])
        paste(picture, daisy, dice.randrange(320), dice.randrange(34, 232))
    fill_rect(picture, 0, 0, 320, 22, "m")
    for x in range(0, 320, 64):
        fill_rect(picture, x, 0, 1, 20, "k")
    fill_rect(picture, 0, 10, 320, 1, "k")
    fill_rect(picture, 0, 20, 320, 2, "f")
    fill_rect(picture, 0, 22, 320, 1, "k")
    fill_rect(picture, 0, 23, 320, 2, "e")
    fill_rect(picture, 2, 2, 146, 18, "k")
    for number in range(8):
        paste(picture, from_letters(EMPTY_JAR), 4 + 18 * number, 4)
    return enlarge(picture, 2)


def bar():
    """A plank of light. The script shrinks it to show how much time is left."""
    picture = blank(8, 8, "o")
    fill_rect(picture, 0, 0, 8, 3, "y")
    return picture


def brick():
    """A brick of 60 by 24 pixels."""
    picture = blank(30, 12, "o")
    fill_rect(picture, 0, 0, 30, 1, "f")
    fill_rect(picture, 0, 11, 30, 1, "m")
    fill_rect(picture, 29, 0, 1, 12, "m")
    return enlarge(picture, 2)


def mark():
    """The corners of a square of 23 by 23 pixels: it goes below a unit and looks out around it."""
    picture = blank(23, 23)
    for corner in (0, 16):
        for edge in (0, 21):
            fill_rect(picture, corner, edge, 7, 2, "r")
            fill_rect(picture, edge, corner, 2, 7, "r")
    return picture


def digit(number):
    """A digit of 28 by 36 pixels, so that all stand in one grid."""
    return enlarge(lettering(str(number), "y", "o"), 4)


def main():
    for folder in (HERE / "SysPics", HERE / "img"):
        folder.mkdir(exist_ok=True)
    write_bmp(HERE / "SysPics/select.bmp", soft_box("u", 56, 150, 32))
    write_bmp(HERE / "img/meadow.bmp", meadow())
    write_bmp(HERE / "img/bar.bmp", bar())
    for name, rows in (("bee", BEE), ("wasp", WASP), ("flower", FLOWER), ("jar", JAR)):
        write_bmp(HERE / f"img/{name}.bmp", enlarge(from_letters(rows), 2))
    for name, rows in (("bee2", BEE_DOWN), ("heart", HEART), ("arrow", ARROW), ("ball", BALL)):
        write_bmp(HERE / f"img/{name}.bmp", enlarge(from_letters(rows), 2))
    write_bmp(HERE / "img/brick.bmp", brick())
    write_bmp(HERE / "img/mark.bmp", mark())
    for number in range(10):
        write_bmp(HERE / f"img/{number}.bmp", digit(number))
    write_bmp(HERE / "img/peon.bmp", from_letters(BEETLE))


if __name__ == "__main__":
    main()
