#!/usr/bin/env python3
"""Draws the pictures of this game anew: SysPics/select.bmp and those under levels/level1/img/."""

import math
import random
import sys
from pathlib import Path

GAME = Path(__file__).resolve().parent
sys.path.insert(0, str(GAME.parent.parent / "tools"))

from pixel_art import (  # noqa: E402  (found only through the line above)
    blank, colour, enlarge, fade, faint_box, fill_rect, from_letters, put, write_bmp,
)
from pixel_font import lettering, sign  # noqa: E402

# Everything is drawn at half the window's resolution and enlarged: one grid for all pictures.

OWL = [
    "......k.......k......",
    ".....kmk.....kmk.....",
    ".....kmmkkkkkmmk.....",
    ".....kmmmmmmmmmk.....",
    "....kmwwwmmmwwwmk....",
    "kk..kwwwwwmwwwwwk..kk",
    "kmk.kwwkkwmwkkwwk.kmk",
    "kmmkkwwkkwowkkwwkkmmk",
    "kfmmkmwwwooowwwmkmmfk",
    ".kfmmkmmmmommmmkmmfk.",
    ".kfmmmkfffffffkmmmfk.",
    "..kfmmkfmfffmfkmmfk..",
    "...kfmkffmfmffkmfk...",
    "....kkkfffffffkkk....",
    ".....kmkfffffkmk.....",
    "......kkkfffkkk......",
    "........kokok........",
    ".........k.k.........",
]

STAR = [
    ".....k.....",
    "....kyk....",
    "....kyk....",
    "kkkkwyykkkk",
    "kyywwyyyyok",
    ".kywyyyyok.",
    "..kyyyyok..",
    "..kyyyyok..",
    ".kyyykyyok.",
    ".kyokkkyok.",
    ".kkk...kkk.",
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

METEOR = [
    "......r......",
    "...r....r....",
    "...r..r.r....",
    "..rr.rr.rr...",
    "..ror.oorr...",
    "..rooroor.r..",
    ".rooroyoorr..",
    ".royooyooor..",
    ".royykkkyor..",
    "royykgggkyor.",
    "roykgsssgkyor",
    "rokgsskssskor",
    "rokgssssskkor",
    "rokssksskskor",
    ".okkssssskko.",
    ".rokksskkkor.",
    "..rookkkoor..",
    "....rrrrr....",
]

PEON = ["." * 15] * 15


def recoloured(rows, old, new):
    """The rows with some letters replaced by others."""
    return [row.translate(str.maketrans(old, new)) for row in rows]


def moon():
    """The clock of the night."""
    picture = blank(22, 22)
    for y in range(22):
        for x in range(22):
            depth = math.hypot(x - 10.5, y - 10.5)
            if depth < 10.6:
                put(picture, x, y, colour("w" if math.hypot(x - 8.5, y - 8.5) < 10 else "f"))
    for x, y, width in ((6, 5, 3), (13, 9, 4), (7, 13, 2), (12, 16, 2), (4, 9, 1), (13, 4, 2)):
        fill_rect(picture, x, y, width, max(1, width - 1), "f")
    return picture


# Background ---------------------------------------------------------------------------------------

def mountain(picture, middle, top, slope, letter, snow):
    """A peak, lit from the left, with snow on it."""
    for y in range(top, 240):
        half = round((y - top) * slope)
        ragged = (y * 7 + middle) % 3
        for x in range(middle - half, middle + half + 1):
            lit = x < middle - half // 5 + ragged
            white = y - top < snow + 3 * math.sin(x / 2.3) + 2 * math.cos(x / 1.1)
            put(picture, x, y, colour(("w" if lit else "g") if white else ("s" if lit else letter)))


def pine(picture, x, foot, height, letter):
    """A pine: three skirts on top of each other."""
    for row in range(height):
        half = 1 + (row % (height // 3 + 1)) * (2 + 3 * row // height) // 5 + row // 5
        fill_rect(picture, x - half, foot - height + row, 2 * half + 1, 1, letter)
    fill_rect(picture, x - 1, foot, 2, 3, "k")


def hut(picture, x, y):
    """Where the stars are waited for."""
    fill_rect(picture, x, y, 26, 14, "k")
    fill_rect(picture, x + 1, y, 24, 13, "m")
    for row in range(9):
        fill_rect(picture, x + 8 - row, y - 9 + row, 10 + 2 * row, 1, "k")
        fill_rect(picture, x + 9 - row, y - 9 + row, 8 + 2 * row, 1, "s" if row % 3 else "g")
    fill_rect(picture, x + 4, y + 4, 6, 5, "y")
    fill_rect(picture, x + 7, y + 4, 1, 5, "k")
    fill_rect(picture, x + 15, y + 3, 6, 10, "k")
    fill_rect(picture, x + 20, y - 12, 4, 8, "k")


def night():
    """The background."""
    dice = random.Random(5)  # the same picture every time
    picture = blank(320, 240, "k")
    fade(picture, 0, 90, "k", "n")
    fill_rect(picture, 0, 90, 320, 40, "n")
    fade(picture, 130, 70, "n", "u")
    for _ in range(90):
        put(picture, dice.randrange(320), dice.randrange(150), colour(dice.choice("sgbs")))
    for middle, top, slope, snow in ((60, 150, 1.3, 14), (250, 138, 1.2, 18), (150, 164, 1.6, 9)):
        mountain(picture, middle, top, slope, "n", snow)
    for _ in range(60):
        x = dice.randrange(320)
        pine(picture, x, 214 + dice.randrange(8), 20 + dice.randrange(10), "d")
    fill_rect(picture, 0, 216, 320, 24, "d")
    hut(picture, 206, 208)
    for x in list(range(0, 190, 9)) + list(range(246, 320, 9)):
        pine(picture, x + dice.randrange(5), 232 + dice.randrange(5), 20 + dice.randrange(9), "k")
    fill_rect(picture, 0, 230, 320, 10, "k")
    return enlarge(picture, 2)


def panel(width):
    """The dark board under a display."""
    picture = blank(width, 18, "k")
    fill_rect(picture, 1, 1, width - 2, 16, "n")
    return picture


def main():
    pictures = GAME / "levels/level1/img"
    for folder in (GAME / "SysPics", pictures):
        folder.mkdir(parents=True, exist_ok=True)
    write_bmp(GAME / "SysPics/select.bmp", faint_box())
    write_bmp(pictures / "peon.bmp", from_letters(PEON))
    write_bmp(pictures / "night.bmp", night())
    drawings = {"moon": moon(), "panel": panel(46)}
    letters = {"owl": OWL, "star": STAR, "heart": HEART, "meteor": METEOR}
    letters["bluestar"] = recoloured(STAR, "yo", "bu")
    drawings.update({name: from_letters(rows) for name, rows in letters.items()})
    for name, picture in drawings.items():
        write_bmp(pictures / f"{name}.bmp", enlarge(picture, 2))
    for digit in "0123456789":
        write_bmp(pictures / f"{digit}.bmp", enlarge(lettering(digit, "w", "y"), 3))
    for name, text, upper, lower in (
        ("title", "STARFALL", "y", "o"),
        ("won", "DAWN! YOU WON", "l", "e"),
        ("lost", "GAME OVER", "o", "r"),
    ):
        write_bmp(pictures / f"{name}.bmp", sign(text, upper, lower, "m"))


if __name__ == "__main__":
    main()
