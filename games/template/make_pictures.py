#!/usr/bin/env python3
"""Draws this game's pictures anew. Change the letters, or draw with any program that saves BMP."""

import sys
from pathlib import Path

GAME = Path(__file__).resolve().parent
sys.path.insert(0, str(GAME.parent.parent / "tools"))

from pixel_art import enlarge, from_letters, soft_box, write_bmp  # noqa: E402

# One letter a pixel; the colours of the letters are in tools/pixel_art.py.
STAR = [
    ".......kk.......",
    "......kyyk......",
    "......kyyk......",
    ".....kywyyk.....",
    ".....kwyyyk.....",
    "kkkkkkwyyykkkkkk",
    "kyyyyyyyyyyyyyyk",
    ".kyyykyyyykyyok.",
    "..kyykyyyykyok..",
    "...kyyyyyyyok...",
    "...kyyykkyyok...",
    "..kyyyyyyyyyok..",
    "..kyyyyookyyok..",
    ".kyyyook.kooook.",
    ".kyook....kkook.",
    ".kkk........kkk.",
]

# Units are always 15 by 15 pixels large on the screen.
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


def main():
    pictures = GAME / "levels/level1/img"
    for folder in (GAME / "SysPics", pictures):
        folder.mkdir(parents=True, exist_ok=True)
    write_bmp(GAME / "SysPics/select.bmp", soft_box("u", 56, 150, 32))
    write_bmp(pictures / "star.bmp", enlarge(from_letters(STAR), 4))
    write_bmp(pictures / "peon.bmp", from_letters(PEON))


if __name__ == "__main__":
    main()
