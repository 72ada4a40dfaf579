#!/usr/bin/env python3
"""Draws the pictures of this game anew: SysPics/select.bmp and those of the level."""

import math
import random
import sys
from pathlib import Path

GAME = Path(__file__).resolve().parent
sys.path.insert(0, str(GAME.parent.parent / "tools"))

from pixel_art import (  # noqa: E402  (found only through the line above)
    blank, colour, enlarge, fill_rect, from_letters, paste, put, size, write_bmp,
)

WIDTH, HEIGHT = 640, 480
BAR = 56  # height of the board with the score
FIRST_BED, BED_STEP, BEDS = 122, 68, 5  # middle of the uppermost bed, from bed to bed
GREEN = 430  # where the village green begins, below the fence

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
    "..kuuuuuuuuuk..",
    "..kukuuuuukuk..",
    "..kfkubbbukfk..",
    "...kknnnnnkk...",
    "....knnknnk....",
    "....knnknnk....",
    "....kkk.kkk....",
]

TURNIP = [
    "....kk...kk...kk....",
    "...kelk.kllk.kelk...",
    "...kellkkllkkellk...",
    "....keelkllkleek....",
    ".....keelllleek.....",
    "......keelleek......",
    "..kkkkkkeeeekkkkkk..",
    ".kppppppkeekpppppnk.",
    "kppwwppppkkpppppppnk",
    "kpwwpppppppppppppnnk",
    "kpwppppppppppppppnnk",
    "kwpwpppwpppwpppwpnnk",
    "kwwwwpwwwpwwwpwwwggk",
    "kwwwwwwwwwwwwwwwwggk",
    ".kwwwwwwwwwwwwwwggk.",
    ".kwwwwwwwwwwwwwgggk.",
    "..kwwwwwwwwwwwgggk..",
    "...kkwwwwwwwggskk...",
    ".....kkwwwggskk.....",
    ".......kkwgk........",
    ".........kgk........",
    ".........kk.........",
]

FENCE = [  # one pale; repeated along the green
    "....kk......",
    "...kwwk.....",
    "..kwwwgk....",
    "..kwwwgk....",
    "kkkwwwgkkkkk",
    "wwwwwwgwwwww",
    "gggwwwgggggg",
    "kkkwwwgkkkkk",
    "..kwwwgk....",
    "kkkwwwgkkkkk",
    "wwwwwwgwwwww",
    "gggwwwgggggg",
    "kkkwwwgkkkkk",
    "..kwwwgk....",
    "..kwggsk....",
    "..kkkkkk....",
]

BASKET = [
    "........kkkkkk........",
    "......kkffffffkk......",
    ".....kffkkkkkkffk.....",
    "....kffk......kffk....",
    "...kffkkkkkkkkkkffk...",
    "..kkkkkwwkkkpppkkkkk..",
    ".kelkwwwwwkpwpppkoook.",
    "kelkwwwwwgkpppppnkoork",
    "kkkkkkkkkkkkkkkkkkkkkk",
    "kyfyfyfyfyfyfyfyfyfyfk",
    "kkkkkkkkkkkkkkkkkkkkkk",
    ".kfokfokfokfokfokfokk.",
    ".kofkofkofkofkofkofkk.",
    ".kfokfokfokfokfokfokk.",
    "..kofkofkofkofkofkok..",
    "..kfokfokfokfokfokfk..",
    "..kmmmmmmmmmmmmmmmmk..",
    "...kkkkkkkkkkkkkkkk...",
]

SIGN = [  # beware of what comes out of the wood
    "...........kk...........",
    "..........kyyk..........",
    ".........kyyyyk.........",
    ".........kyyyyk.........",
    "........kyykkyyk........",
    ".......kyykkkkyyk.......",
    ".......kyykkkkyyk.......",
    "......kyyykkkkyyyk......",
    ".....kyyyykkkkyyyyk.....",
    ".....kyyyykkkkyyyyk.....",
    "....kyyyyyykkyyyyyyk....",
    "...kyyyyyyykkyyyyyyyk...",
    "...kyyyyyyyyyyyyyyyyk...",
    "..kyyyyyyyykkyyyyyyyyk..",
    ".kyyyyyyyykkkkyyyyyyyyk.",
    ".koyyyyyyyykkyyyyyyyyok.",
    "kooooooooooooooooooooook",
    "kkkkkkkkkkkkkkkkkkkkkkkk",
]

ASLEEP = [  # beside the bench where hurt peons rest
    ".....................nnnnn.",
    "........................n..",
    "..kkkkkkkk....nnn......n...",
    ".kyyyyyyyyk.....n.....nnnnn",
    "kyyoooooyyyk...n...........",
    "kkkfffffkkk...nnn..........",
    ".kffkkfkkfk................",
    ".kkffffffkk................",
    "kwwkkkkkkwwk...............",
    "kuuuuuuuuuukkkkkkkkkkk.....",
    "kuuwuuuuwuuuuuwuuuuuuk.....",
    "kkkkkkkkkkkkkkkkkkkkkk.....",
]

LOGO = {
    "P": ["####.", "#...#", "#...#", "####.", "#....", "#....", "#...."],
    "E": ["#####", "#....", "#....", "####.", "#....", "#....", "#####"],
    "O": [".###.", "#...#", "#...#", "#...#", "#...#", "#...#", ".###."],
    "N": ["#...#", "##..#", "#.#.#", "#.#.#", "#..##", "#...#", "#...#"],
    "S": [".####", "#....", "#....", ".###.", "....#", "....#", "####."],
}


# Shapes -------------------------------------------------------------------------------------------


def ellipse(picture, middle_x, middle_y, radius_x, radius_y, letter_at):
    """Fills an ellipse; letter_at, a letter or a function of the place, tells the colours."""
    for y in range(math.floor(middle_y - radius_y), math.ceil(middle_y + radius_y) + 1):
        for x in range(math.floor(middle_x - radius_x), math.ceil(middle_x + radius_x) + 1):
            if ((x - middle_x) / radius_x) ** 2 + ((y - middle_y) / radius_y) ** 2 <= 1:
                letter = letter_at if isinstance(letter_at, str) else letter_at(x, y)
                put(picture, x, y, colour(letter))


def outline(picture, letter="k"):
    """Draws a line around everything opaque, on the transparent pixels beside it."""
    width, height = size(picture)
    opaque = {(x, y) for y in range(height) for x in range(width) if picture[y][x][3] == 255}
    for x, y in opaque:
        for beside in ((x - 1, y), (x + 1, y), (x, y - 1), (x, y + 1)):
            if beside not in opaque:
                put(picture, *beside, colour(letter))


def ground_shadow(picture, middle_x, middle_y, radius_x, radius_y):
    """Darkens the ground below a thing: half transparent, under what is drawn already."""
    for y in range(size(picture)[1]):
        for x in range(size(picture)[0]):
            inside = ((x - middle_x) / radius_x) ** 2 + ((y - middle_y) / radius_y) ** 2 <= 1
            if inside and picture[y][x][3] == 0:
                picture[y][x] = colour("k", 90)


def woven(x, y, share):
    """Whether a pixel belongs to the given share (0 to 1) of an even weave of pixels."""
    order = (0, 8, 2, 10, 12, 4, 14, 6, 3, 11, 1, 9, 15, 7, 13, 5)
    return order[y % 4 * 4 + x % 4] < 16 * share


def scatter(picture, dice, count, area, marks):
    """Strews small pictures over an area: left, top, right, bottom."""
    left, top, right, bottom = area
    for _ in range(count):
        mark = from_letters(dice.choice(marks))
        paste(picture, mark, dice.randrange(left, right), dice.randrange(top, bottom))


# Things -------------------------------------------------------------------------------------------


def turnip():
    picture = blank(36, 32)
    paste(picture, from_letters(TURNIP), 8, 5)
    ground_shadow(picture, 19, 26, 12, 4)
    return picture


def pumpkin_skin(x, y):
    """Ribs of a pumpkin around 18, 18, lit from the upper left."""
    high = (y - 18) / 11.5
    across = (x - 17.5) / (15.5 * math.sqrt(max(0.05, 1 - high * high)))
    if min(abs(abs(across) - 0.32), abs(abs(across) - 0.74)) < 0.045:
        return "r"
    light = -0.75 * across - 0.9 * high
    if light > 0.72 or (light > 0.4 and woven(x, y, 0.5)):
        return "y"
    return "r" if light < -0.8 or (light < -0.5 and woven(x, y, 0.4)) else "o"


def pumpkin():
    """A large pumpkin. The tag tells how many peons it takes."""
    picture = blank(36, 32)
    ellipse(picture, 17.5, 18, 15.5, 11.5, pumpkin_skin)
    fill_rect(picture, 16, 3, 4, 6, "e")
    fill_rect(picture, 16, 3, 1, 5, "l")
    fill_rect(picture, 19, 2, 3, 3, "e")
    ellipse(picture, 9, 7, 5, 2.2, "e")
    ellipse(picture, 8, 6.4, 3, 1, "l")
    outline(picture)
    fill_rect(picture, 25, 0, 11, 13, "k")
    fill_rect(picture, 26, 1, 9, 11, "w")
    paste(picture, from_letters(["kkkk.", "...kk", ".kkk.", "...kk", "...kk", "kkkk."]), 28, 3)
    ground_shadow(picture, 18, 28, 17, 4)
    return picture


def hide(x, y):
    """A boar's hide: bristles on the back, light above, dark below."""
    if y < 9 and (x + y) % 3 == 0:
        return "k"
    if y > 23 or (y > 20 and woven(x, y, 0.5)):
        return "n"
    return "g" if y < 13 and woven(x, y, 0.62 - 0.1 * abs(y - 9)) else "s"


def boar():
    """A boar at full speed, to the right."""
    picture = blank(48, 34)
    for x, y in ((7, 24), (13, 26), (25, 26), (31, 24)):
        fill_rect(picture, x, y, 4, 5, "n")
        fill_rect(picture, x + 1, y + 4, 4, 2, "k")
    ellipse(picture, 18, 16, 15, 10, hide)
    ellipse(picture, 28, 15, 11, 10.5, hide)
    for x in range(8, 32, 4):
        for row, width in enumerate((1, 2, 3)):
            fill_rect(picture, x + 2 - row, 3 + row + abs(x - 22) // 7, width, 1, "k")
    ellipse(picture, 36, 18, 8, 7.5, lambda x, y: "s" if y < 22 else "n")
    fill_rect(picture, 41, 17, 5, 7, "f")
    fill_rect(picture, 45, 18, 1, 5, "o")
    fill_rect(picture, 44, 19, 1, 2, "k")
    fill_rect(picture, 33, 6, 4, 6, "s")
    fill_rect(picture, 34, 7, 2, 4, "f")
    fill_rect(picture, 38, 14, 3, 3, "w")
    fill_rect(picture, 39, 15, 2, 2, "r")
    fill_rect(picture, 37, 12, 4, 1, "k")
    fill_rect(picture, 1, 11, 3, 2, "s")
    fill_rect(picture, 0, 8, 2, 3, "s")
    outline(picture)
    for x, y in ((40, 24), (41, 23), (42, 22), (42, 21), (41, 24), (42, 23)):
        put(picture, x, y, colour("w"))
    ground_shadow(picture, 22, 31, 20, 3)
    return picture


def mound():
    """The heap of earth that a peon comes out of; it lies around the peon's feet."""
    picture = blank(27, 14)
    ellipse(picture, 13, 8, 11.5, 4.5, lambda x, y: "o" if y > 7 or woven(x, y, 0.5) else "f")
    ellipse(picture, 13, 6, 7, 2, "k")
    for x, y in ((4, 7), (20, 9), (9, 11), (16, 11), (22, 6)):
        put(picture, x, y, colour("f"))
    outline(picture)
    return picture


def cloud(letters, seed):
    """Dust, or sparks: blobs around the middle."""
    dice = random.Random(seed)
    picture = blank(32, 26)
    for _ in range(9):
        x, y = 16 + dice.uniform(-9, 9), 13 + dice.uniform(-6, 6)
        radius = dice.uniform(2, 4.5)
        ellipse(picture, x, y, radius, radius, letters[0])
    outline(picture, letters[2])
    for _ in range(14):
        x, y = 16 + dice.randrange(-9, 9), 12 + dice.randrange(-7, 5)
        if picture[y][x] == colour(letters[0]):
            fill_rect(picture, x, y, 2, 1, letters[1])
    return picture


def star(points, radius, letter):
    """A star of points, for a blow or a find."""
    side = 34
    picture = blank(side, side)
    for y in range(side):
        for x in range(side):
            angle = math.atan2(y - side / 2, x - side / 2)
            reach = radius * (0.62 + 0.38 * math.cos(points * angle))
            distance = math.hypot(x - side / 2, y - side / 2)
            if distance <= reach:
                put(picture, x, y, colour("w" if distance < 0.55 * reach else letter))
    outline(picture)
    return picture


def wash(letter, alpha):
    """One colour that the script stretches over a part of the window."""
    return [[colour(letter, alpha)] * 8 for _ in range(8)]


def warning(from_right):
    """What lights up along a bed before a boar comes down it: arrows the way it will run, and a
    sign where it will come out of the wood."""
    picture = blank(590, 50)
    for y in range(50):
        for x in range(11, 579):
            arrow = (x - abs(y - 25)) // 12 % 4 == 0
            picture[y][x] = colour("y" if arrow else "r", 190 if arrow else 110)
    picture = picture if from_right else [row[::-1] for row in picture]
    paste(picture, from_letters(SIGN), 538 if from_right else 28, 16)
    return picture


def frame():
    """The selection box. It is stretched to whatever the player drags, so it is drawn soft: a
    bright rim that fades into a clear middle looks right at any size, a sharp line would not."""
    side = 48
    picture = blank(side, side)
    for y in range(side):
        for x in range(side):
            depth = min(x, y, side - 1 - x, side - 1 - y)
            alpha = 255 if depth == 0 else max(26, 170 - 60 * depth)
            picture[y][x] = colour("w" if depth < 2 else "b", alpha)
    return picture


# The field ----------------------------------------------------------------------------------------


def bed(picture, dice, middle):
    """A bed of dark earth in furrows, in a rim of grass."""
    left, right, top, bottom = 34, 606, middle - 25, middle + 25
    for y in range(top - 2, bottom + 4):
        inset = max(0, 5 - min(y - top + 2, bottom + 3 - y))
        fill_rect(picture, left - 2 + inset, y, right - left + 4 - 2 * inset, 1, "e")
    for y in range(top, bottom):
        inset = max(0, 4 - min(y - top, bottom - 1 - y))
        for x in range(left + inset, right - inset):
            furrow = (y - top) % 10
            dark = {0: 0.25, 1: 0.75, 2: 0.25}.get(furrow, 0)
            put(picture, x, y, colour("k" if woven(x, y, dark) else "m"))
            if furrow == 4 and dice.random() < 0.07:
                fill_rect(picture, x, y, dice.randrange(1, 4), 1, "o")
    scatter(picture, dice, 14, (left + 8, top + 4, right - 8, bottom - 4),
            [["s"], ["gs"], [".o", "o."], ["kk"], ["f"]])


def crown_leaf(middle_x, middle_y, radius):
    """The shades of a tree's crown: light above left, dark below right."""
    def letter(x, y):
        light = (middle_x - x + 1.4 * (middle_y - y)) / radius + 0.35 * math.sin(2.1 * x + 1.3 * y)
        if light > 0.75 or (light > 0.35 and woven(x, y, 0.5)):
            return "l"
        return "e" if light > -0.45 or (light > -0.9 and woven(x, y, 0.5)) else "d"
    return letter


def wood(seed, mirrored):
    """The edge of the wood on one side of the field, in front of the boars that come out of it."""
    dice = random.Random(seed)
    height = GREEN - BAR + 18
    picture = blank(48, height)
    for y in range(6, height - 14, 19):
        for x in (4, 17) if (y // 19) % 2 else (1, 21):
            radius = dice.uniform(11, 15)
            crown = blank(48, height)
            x_now = x + dice.uniform(-3, 3)
            ellipse(crown, x_now, y, radius, radius, crown_leaf(x_now, y, radius))
            outline(crown, "k" if x > 10 else "d")
            paste(picture, crown, 0, 0)
    return [row[::-1] for row in picture] if mirrored else picture


def bush_row(picture, dice, y):
    """The hedge below the board."""
    for x in range(-6, WIDTH + 10, 13):
        radius = dice.uniform(10, 13)
        bush = blank(WIDTH, 100)
        height = y + dice.uniform(-2, 2)
        ellipse(bush, x, height, radius, radius, crown_leaf(x, height, radius))
        outline(bush, "d")
        paste(picture, bush, 0, 0)


def barn():
    """The peons' house on the green."""
    picture = blank(76, 46)
    fill_rect(picture, 8, 20, 60, 24, "r")
    for x in range(8, 68, 6):
        fill_rect(picture, x, 20, 1, 24, "m")
    for row in range(20):
        inset = max(0, 14 - row)
        fill_rect(picture, 2 + inset, 2 + row, 72 - 2 * inset, 1, "m" if row % 5 == 4 else "o")
    fill_rect(picture, 2, 20, 72, 2, "m")
    for x, width in ((12, 13), (51, 13)):
        fill_rect(picture, x, 26, width, 11, "w")
        fill_rect(picture, x + 1, 27, width - 2, 9, "n")
        fill_rect(picture, x + 2, 28, 4, 3, "b")
        fill_rect(picture, x + 6, 27, 1, 9, "w")
    fill_rect(picture, 30, 25, 17, 19, "w")
    fill_rect(picture, 32, 27, 13, 17, "m")
    for step in range(13):
        put(picture, 32 + step, 28 + step, colour("w"))
        put(picture, 44 - step, 28 + step, colour("w"))
    fill_rect(picture, 54, 0, 7, 10, "s")
    outline(picture)
    ground_shadow(picture, 40, 43, 36, 4)
    return picture


def green(picture, dice):
    """The village green at the bottom: fence, path, house."""
    for x in range(150, 560):
        y = 452 + round(2 * math.sin(x / 23))
        inset = max(0, 12 - min(x - 150, 559 - x)) // 2
        for row in range(y + inset, y + 22 - inset):
            edge = row in (y + inset, y + 21 - inset)
            put(picture, x, row, colour("o" if edge or woven(x * 3, row, 0.08) else "f"))
    for x in range(0, WIDTH, 12):
        paste(picture, from_letters(FENCE), x, GREEN - 3)
    paste(picture, barn(), 44, 431)
    scatter(picture, dice, 14, (575, 452, 632, 474), [[".r.", "ryr", ".r.", ".e."]])
    for x in (590, 604, 618):
        paste(picture, from_letters(TURNIP), x - 8, 448 + x % 3 * 3)


def plank(picture, x, y, width, height):
    """A board of wood with its grain."""
    fill_rect(picture, x, y, width, height, "m")
    for row in range(y, y + height):
        for column in range(x, x + width):
            grain = math.sin(row * 1.9 + 2.2 * math.sin(column / 60 + row)) + math.sin(row * 0.7)
            if grain > 1.25 and woven(column // 3, row, 0.6):
                put(picture, column, row, colour("o"))
    for row in range(y + 13, y + height - 4, 14):
        fill_rect(picture, x, row, width, 1, "k")


def sheet(picture, x, y, width, height):
    """Parchment to write on."""
    fill_rect(picture, x - 1, y - 1, width + 2, height + 2, "k")
    fill_rect(picture, x, y, width, height, "w")
    fill_rect(picture, x, y + height - 2, width, 2, "f")
    fill_rect(picture, x + width - 2, y, 2, height, "f")


def sun(picture, x, y):
    """The clock's sun."""
    for turn in range(12):
        angle = turn * math.pi / 6
        for reach in range(8, 12):
            put(picture, round(x + reach * math.cos(angle)), round(y + reach * math.sin(angle)),
                colour("o"))
    ellipse(picture, x, y, 8, 8, "k")
    ellipse(picture, x, y, 7, 7, "o")
    ellipse(picture, x - 1, y - 1, 5.5, 5.5, "y")
    fill_rect(picture, x - 3, y - 3, 2, 2, "w")


def board(picture):
    """The bar above the field: basket, clock, time of day, and the bench for hurt peons."""
    plank(picture, 0, 0, WIDTH, BAR)
    fill_rect(picture, 0, 0, WIDTH, 1, "o")
    fill_rect(picture, 0, BAR - 2, WIDTH, 2, "k")
    for x, width in ((12, 142), (166, 92), (270, 120), (402, 226)):
        sheet(picture, x, 10, width, 34)
    paste(picture, from_letters(BASKET), 18, 18)
    sun(picture, 184, 27)
    fill_rect(picture, 494, 33, 126, 3, "m")
    fill_rect(picture, 494, 36, 126, 1, "k")
    for x in (498, 556, 612):
        fill_rect(picture, x, 37, 4, 6, "m")
    paste(picture, enlarge(from_letters(ASLEEP), 2), 412, 13)


def field():
    """The background."""
    dice = random.Random(11)  # the same picture every time
    picture = blank(WIDTH, HEIGHT, "l")
    tuft, flower, bloom = ["e.e", ".e."], [".w.", "wyw", ".w."], ["r"]
    scatter(picture, dice, 620, (0, BAR, WIDTH - 4, HEIGHT - 3), [tuft, tuft, tuft, flower, bloom])
    for number in range(BEDS):
        bed(picture, dice, FIRST_BED + BED_STEP * number)
    bush_row(picture, dice, BAR + 12)
    green(picture, dice)
    board(picture)
    return picture


# Panels -------------------------------------------------------------------------------------------


def panel(width, height):
    """Parchment in a wooden frame."""
    picture = blank(width, height, "k")
    plank(picture, 2, 2, width - 4, height - 4)
    sheet(picture, 12, 12, width - 24, height - 24)
    for x in (7, width - 8):
        for y in (7, height - 8):
            ellipse(picture, x, y, 3, 3, "k")
            ellipse(picture, x, y, 2, 2, "y")
    return picture


def logo():
    """The name of the game in large straw letters."""
    cell, word = 8, "PEONS"
    picture = blank(len(word) * 6 * cell + 8, 7 * cell + 10)
    for number, character in enumerate(word):
        for row, line in enumerate(LOGO[character]):
            for column, mark in enumerate(line):
                if mark == "#":
                    x, y = 4 + (number * 6 + column) * cell, 2 + row * cell
                    fill_rect(picture, x, y, cell, cell, "y" if row < 4 else "o")
                    if row == 3:
                        for extra in range(cell):
                            for deep in range(cell):
                                if woven(x + extra, y + deep, deep / cell):
                                    put(picture, x + extra, y + deep, colour("o"))
    shadow = [[colour("k") if pixel[3] else pixel for pixel in row] for row in picture]
    outline(shadow)
    outline(shadow)
    result = blank(*size(picture))
    paste(result, shadow, 0, 3)
    paste(result, shadow, 0, 0)
    paste(result, picture, 0, 0)
    return result


def title():
    """The page before the game: its name, and what things are."""
    picture = panel(432, 340)
    paste(picture, logo(), 92, 26)
    for x in (46, 366):
        paste(picture, enlarge(from_letters(PEON), 2), x, 44)
    paste(picture, turnip(), 36, 112)
    paste(picture, pumpkin(), 36, 152)
    paste(picture, boar(), 30, 192)
    fill_rect(picture, 36, 240, 360, 1, "f")
    return picture


def main():
    level = GAME / "levels/level1"
    for folder in (GAME / "SysPics", level / "img"):
        folder.mkdir(parents=True, exist_ok=True)
    write_bmp(GAME / "SysPics/select.bmp", frame())
    running = boar()
    for name, picture in {
        "field": field(),
        "title": title(),
        "note": panel(360, 120),
        "img/peon": from_letters(PEON),
        "turnip": turnip(),
        "pumpkin": pumpkin(),
        "bar": blank(8, 4, "y"),
        "boar1": running,
        "boar2": [row[::-1] for row in running],
        "warn1": warning(False),
        "warn2": warning(True),
        "mound": mound(),
        "puff": cloud("fom", 5),
        "spark": star(8, 16, "y"),
        "wood1": wood(3, False),
        "wood2": wood(4, True),
        "dusk": wash("o", 44),
    }.items():
        write_bmp(level / f"{name}.bmp", picture)


if __name__ == "__main__":
    main()
