#!/usr/bin/env python3
"""Draws the pictures of this game anew: SysPics/select.bmp and those under levels/level1/img/."""

import math
import random
import sys
from pathlib import Path

GAME = Path(__file__).resolve().parent
sys.path.insert(0, str(GAME.parent.parent / "tools"))

from pixel_art import (  # noqa: E402  (found only through the line above)
    blank, colour, enlarge, fade, faint_box, fill_rect, from_letters, hill, paste, put,
    write_bmp,
)
from pixel_font import lettering, sign  # noqa: E402

# Everything is drawn at half the window's resolution and enlarged: one grid for all pictures.

BALL = [
    "..kkkk..",
    ".kwwwyk.",
    "kwwwyyyk",
    "kwwyyyyk",
    "kwyyyyok",
    "kyyyyook",
    ".kyyook.",
    "..kkkk..",
]

HEART = [
    "..kk...kk..",
    ".krrk.krrk.",
    "krwrrkrrrrk",
    "kwrrrrrrrrk",
    "krrrrrrrrrk",
    "krrrrrrrrrk",
    ".krrrrrrrk.",
    "..krrrrrk..",
    "...krrrk...",
    "....krk....",
    ".....k.....",
]

# A parcel with a bow: whoever catches it gets a wider paddle.
GIFT = [
    "...kk...kk...",
    "..kyyk.kyyk..",
    "..kykyykkyk..",
    "...kkyyykk...",
    ".kkkkkykkkkk.",
    "kbbbbkykbbbbk",
    "kbbbbkykbbbbk",
    "kkkkkkykkkkkk",
    ".kuubkykuuuk.",
    ".kuuukykuuuk.",
    ".kuuukykuuuk.",
    ".kuuukykuuuk.",
    ".kkkkkkkkkkk.",
]

PEON = ["." * 15] * 15

BOMB = [
    ".......yo",
    "..kkkkk.r",
    ".kssskk..",
    "kswskkkk.",
    "kssskkkk.",
    "kskkkkkk.",
    ".kkkkkk..",
]

# Light, face and shade of the wall's rows, from the top down.
ROWS = {"red": "orm", "orange": "yom", "yellow": "wyo", "green": "led", "blue": "bun"}


def brick(light, face, shade):
    """A glazed brick of 29 by 10 in a cell of 30 by 11."""
    picture = blank(30, 11)
    fill_rect(picture, 0, 0, 29, 10, "k")
    fill_rect(picture, 1, 1, 27, 8, face)
    fill_rect(picture, 1, 1, 27, 1, light)
    fill_rect(picture, 1, 1, 1, 8, light)
    fill_rect(picture, 2, 8, 26, 1, shade)
    fill_rect(picture, 27, 2, 1, 7, shade)
    fill_rect(picture, 4, 3, 5, 1, light)
    fill_rect(picture, 4, 4, 1, 1, light)
    for x, y in ((0, 0), (28, 0), (0, 9), (28, 9)):
        put(picture, x, y, colour("."))
    return picture


def powder_keg():
    """The brick that takes its neighbours with it."""
    picture = brick("g", "p", "n")
    paste(picture, from_letters(BOMB), 10, 2)
    return picture


def paddle():
    """A plank with copper caps, 48 by 8."""
    picture = blank(48, 8)
    fill_rect(picture, 1, 0, 46, 8, "k")
    fill_rect(picture, 0, 1, 48, 6, "k")
    fill_rect(picture, 1, 1, 46, 6, "b")
    fill_rect(picture, 1, 1, 46, 1, "w")
    fill_rect(picture, 1, 5, 46, 2, "u")
    for x in (1, 40):
        fill_rect(picture, x, 1, 7, 6, "o")
        fill_rect(picture, x, 1, 7, 1, "y")
        fill_rect(picture, x, 5, 7, 2, "r")
    for x in (8, 39):
        fill_rect(picture, x, 1, 1, 6, "k")
    for x in (19, 23, 27):
        fill_rect(picture, x, 3, 2, 2, "n")
    return picture


def boom():
    """A jagged burst, 44 by 36, for the moment when a keg goes off."""
    picture = blank(44, 36)
    for y in range(36):
        for x in range(44):
            across, down = (x - 21.5) / 21, (y - 17.5) / 17
            angle = math.atan2(down, across)
            depth = math.hypot(across, down) / (0.82 + 0.18 * math.cos(9 * angle))
            for limit, letter in ((0.34, "w"), (0.58, "y"), (0.8, "o"), (0.94, "r"), (1, "k")):
                if depth <= limit:
                    put(picture, x, y, colour(letter))
                    break
    return picture


# Background ---------------------------------------------------------------------------------------

def tower(picture, x, y, width, roof):
    """A tower of the castle: battlements, or a pointed roof, and one lit window."""
    fill_rect(picture, x, y, width, 240 - y, "k")
    for step in range(0, width, 4):
        fill_rect(picture, x + step, y - 2, 2, 2, "k")
    for row in range(roof):
        half = (width // 2 + 2) * row // max(1, roof - 1)
        fill_rect(picture, x + width // 2 - half, y - 2 - roof + row, 2 * half + 1, 1, "k")
    fill_rect(picture, x + width // 2 - 1, y + 6, 2, 3, "y")


def castle(picture):
    """Its outline against the evening sky."""
    tower(picture, 212, 150, 14, 0)
    tower(picture, 228, 138, 12, 12)
    tower(picture, 242, 128, 16, 16)
    tower(picture, 260, 144, 12, 10)
    fill_rect(picture, 206, 166, 76, 74, "k")
    tower(picture, 274, 154, 12, 0)


def frame(picture):
    """The stone frame that the ball bounces off: a lintel of 24 and two posts of 8."""
    for x, y, width, height in ((0, 0, 320, 24), (0, 0, 8, 240), (312, 0, 8, 240)):
        fill_rect(picture, x, y, width, height, "s")
    for side in (0, 312):
        for y in range(24, 240, 12):
            fill_rect(picture, side, y, 8, 1, "k")
            fill_rect(picture, side, y + 1, 8, 1, "g")
    for y, shift in ((0, 0), (12, 14)):
        for x in range(shift, 320, 28):
            fill_rect(picture, x, y, 1, 12, "k")
            fill_rect(picture, x + 1, y, 1, 12, "g")
        fill_rect(picture, 0, y, 320, 1, "g")
        fill_rect(picture, 0, y + 11, 320, 1, "k")
    fill_rect(picture, 7, 24, 1, 216, "k")
    fill_rect(picture, 312, 24, 1, 216, "k")
    for x, width in ((12, 62), (270, 40)):
        fill_rect(picture, x, 3, width, 18, "k")
        fill_rect(picture, x + 1, 4, width - 2, 16, "n")


def evening():
    """The background."""
    dice = random.Random(11)  # the same picture every time
    picture = blank(320, 240, "k")
    fade(picture, 24, 60, "k", "n")
    fill_rect(picture, 0, 84, 320, 30, "n")
    fade(picture, 114, 64, "n", "p")
    fade(picture, 178, 22, "p", "r")
    for _ in range(70):
        put(picture, dice.randrange(320), dice.randrange(26, 150), colour(dice.choice("gbw")))
    hill(picture, 186, 9, 37, 20, "n")
    castle(picture)
    hill(picture, 200, 6, 29, 90, "d")
    hill(picture, 214, 4, 53, 0, "k")
    frame(picture)
    return enlarge(picture, 2)


def main():
    pictures = GAME / "levels/level1/img"
    for folder in (GAME / "SysPics", pictures):
        folder.mkdir(parents=True, exist_ok=True)
    write_bmp(GAME / "SysPics/select.bmp", faint_box())
    write_bmp(pictures / "peon.bmp", from_letters(PEON))
    write_bmp(pictures / "evening.bmp", evening())
    drawings = {name: brick(*letters) for name, letters in ROWS.items()}
    drawings.update(keg=powder_keg(), paddle=paddle(), boom=boom())
    drawings.update(ball=from_letters(BALL), heart=from_letters(HEART), gift=from_letters(GIFT))
    for name, picture in drawings.items():
        write_bmp(pictures / f"{name}.bmp", enlarge(picture, 2))
    for digit in "0123456789":
        write_bmp(pictures / f"{digit}.bmp", enlarge(lettering(digit, "w", "y"), 3))
    for name, text, upper, lower in (
        ("title", "BRICKS", "y", "o"),
        ("won", "YOU WIN!", "l", "e"),
        ("lost", "GAME OVER", "o", "r"),
    ):
        write_bmp(pictures / f"{name}.bmp", sign(text, upper, lower, "s"))


if __name__ == "__main__":
    main()
