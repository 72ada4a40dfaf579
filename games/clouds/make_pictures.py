#!/usr/bin/env python3
"""Draws the pictures of this game anew: SysPics/select.bmp and those under levels/level1/img/."""

import math
import random
import sys
from pathlib import Path

GAME = Path(__file__).resolve().parent
sys.path.insert(0, str(GAME.parent.parent / "tools"))

from pixel_art import (  # noqa: E402  (found only through the line above)
    FADE, blank, colour, disc, enlarge, fill_rect, from_letters, paste, put, soft_box, write_bmp,
    write_png,
)

BIRD_UP = [
    "kk..........kk",
    ".kkk......kkk.",
    "..kskk..kksk..",
    "...ksskkssk...",
    "....ksssskoo..",
    ".....kkkk.....",
    "..............",
]

BIRD_DOWN = [
    "..............",
    "..............",
    "..............",
    "....kkkkkkoo..",
    "..kksssssskk..",
    ".kskk....kksk.",
    "kk..........kk",
]

BASKET = [
    "s..........s",
    "s..........s",
    ".s........s.",
    ".s........s.",
    "..kkkkkkkk..",
    "..kfmfmfmk..",
    "..kmfmfmfk..",
    "..kfmfmfmk..",
    "...kkkkkk...",
]


def sky(bands):
    """A sky of coloured bands, each woven into the next."""
    picture = blank(320, 240)
    for y in range(240):
        place = y / 180 * (len(bands) - 1)
        band = min(int(place), len(bands) - 2)
        for x in range(320):
            mixed = place - band > (FADE[y % 4][x % 4] + 0.5) / 16
            put(picture, x, y, colour(bands[band + 1 if mixed else band]))
    return picture


def night():
    """The darkest sky, with stars."""
    dice = random.Random(5)  # the same stars every time
    picture = sky("kkn")
    for _ in range(110):
        x, y = dice.randrange(320), dice.randrange(150)
        put(picture, x, y, colour(dice.choice("wwgby")))
        if dice.random() < 0.12:
            paste(picture, from_letters([".g.", "gwg", ".g."]), x - 1, y - 1)
    return picture


def sun():
    """A ball of fire with an inner light."""
    picture = blank(44, 44)
    disc(picture, 21, 21, 20, lambda x, y: "o" if (x + y) % 2 else ".")
    disc(picture, 21, 21, 18, lambda x, y: "o")
    disc(picture, 21, 21, 16, lambda x, y: "y")
    disc(picture, 17, 17, 7, lambda x, y: "w" if (x + y) % 2 else "y")
    return picture


def moon():
    """A full moon with three seas."""
    picture = blank(36, 36)
    disc(picture, 17, 17, 16, lambda x, y: "g")
    disc(picture, 16, 16, 15, lambda x, y: "w")
    for x, y, radius in ((11, 12, 4), (22, 19, 5), (13, 24, 2)):
        disc(picture, x, y, radius, lambda x, y: "g" if (x + y) % 2 else "w")
    return picture


def cloud(width, height, balls, seed):
    """Balls of white on a flat foot, shaded from below."""
    dice = random.Random(seed)
    picture = blank(width, height)
    foot = height - 3
    places = []
    for number in range(balls):
        x = round(width * (0.16 + 0.68 * number / (balls - 1)))
        middle = 1 - abs(2 * number / (balls - 1) - 1)
        radius = max(4, round(height * (0.2 + 0.2 * middle + 0.05 * dice.random())))
        places.append((x, foot - round(radius * (0.75 + 0.5 * middle)), radius))

    def shade(x, y):
        below = y - height * 0.62 + 2 * math.sin(x / 3)
        if below > 5 or (below > 2 and (x + y) % 2):
            return "g" if below > 9 else "b"
        return "w"

    for x, y, radius in places:
        disc(picture, x, y, radius, shade)
    fill_rect(picture, round(width * 0.1), foot - 4, round(width * 0.8), 5, "b")
    for y in range(foot + 1, height):
        for x in range(width):
            put(picture, x, y, colour("."))
    return picture


def hills():
    """Three ridges, with firs on the nearest, a lake and a house."""
    dice = random.Random(11)
    picture = blank(320, 120)
    for letter, top, wave, length, shift in (
        ("u", 36, 14, 37, 10), ("d", 58, 10, 29, 70), ("e", 82, 7, 47, 20),
    ):
        for x in range(320):
            y = round(top + wave * math.sin((x + shift) / length) + 3 * math.sin(x / 11))
            fill_rect(picture, x, y, 1, 120 - y, letter)
            if letter == "e":
                put(picture, x, y, colour("l"))
    for _ in range(46):
        x = dice.randrange(320)
        y = round(88 + 7 * math.sin((x + 20) / 47)) + dice.randrange(24)
        for row in range(9):
            fill_rect(picture, x - row // 2, y - 9 + row, 1 + 2 * (row // 2), 1, "d")
        fill_rect(picture, x, y, 1, 2, "m")
    for y in range(9):
        half = round(26 * math.sqrt(1 - ((y - 4) / 5) ** 2))
        fill_rect(picture, 92 - half, 100 + y, 2 * half, 1, "u" if y % 3 else "b")
    house = from_letters([
        "......rr......", "....rrrrrr....", "..rrrrrrrrrr..", "rrrrrrrrrrrrrr",
        "..wwwwwwwwwf..", "..wyywwwmmwf..", "..wyywwwmmwf..", "..wwwwwwmmwf..",
    ])
    paste(picture, house, 214, 92)
    return picture


def balloon():
    """A hot-air balloon in stripes."""
    picture = blank(34, 54)
    disc(picture, 16, 16, 16, lambda x, y: "k")
    stripes = "rwrwryrwrwr"
    disc(picture, 16, 16, 15, lambda x, y: stripes[min(10, max(0, round((x - 1) / 3)))])
    for row in range(10):
        fill_rect(picture, 3 + row, 26 + row, 27 - 2 * row, 1, "r" if row % 2 else "w")
    paste(picture, from_letters(BASKET), 11, 36)
    return picture


def main():
    pictures = GAME / "levels/level1/img"
    for folder in (GAME / "SysPics", pictures):
        folder.mkdir(parents=True, exist_ok=True)
    write_bmp(GAME / "SysPics/select.bmp", soft_box("w", 40, 120, 30))
    for name, picture in (
        ("morning", sky("upfy")), ("day", sky("uubw")),
        ("evening", sky("npro")), ("night", night()),
    ):
        write_bmp(pictures / f"{name}.bmp", enlarge(picture, 2))
    for name, picture in (
        ("sun", sun()), ("moon", moon()), ("hills", hills()), ("balloon", balloon()),
        ("small", cloud(40, 20, 4, 1)), ("middle", cloud(72, 32, 5, 2)),
        ("large", cloud(116, 46, 6, 3)),
        ("birdup", from_letters(BIRD_UP)), ("birddown", from_letters(BIRD_DOWN)),
    ):
        write_png(pictures / f"{name}.png", enlarge(picture, 2))


if __name__ == "__main__":
    main()
