#!/usr/bin/env python3
"""Makes the play that wins peons: all six peons go where it is worth most and safe.

    python3 tests/games/peons_bot.py build/zelplay       # writes games/peons/plays/win.play
"""

import bot

RUN, TURNIP, PUMPKIN = 8, 21, 29  # the numbers of the first pictures of each kind
HOME = (0, 320, 458)
HALL = (200, 435, 520, 478)  # a frame around the peons at home
AHEAD = 400  # pixels from which a boar is minded


def is_threatened(images, y):
    """Whether a boar runs along a crop's bed, or soon will."""
    boars = images[RUN : RUN + 3]
    return any(boar["y"] == y - 1 and -48 - AHEAD < boar["x"] < 700 for boar in boars)


def crops(images):
    """The crops that stand safely: (worth, x, y), the best first."""
    found = []
    for first, worth in ((TURNIP, 1), (PUMPKIN, 4)):
        for image in images[first : first + 8]:
            if image["visible"] and not is_threatened(images, image["y"]):
                found.append((worth, image["x"] + 18, image["y"] + 16))
    return sorted(found, reverse=True)


def check_basket(level, worth):
    level.do(f'texts "x=48 y=15 w=12 h=24 visible=1 text=\\"{worth // 10}\\""')
    level.do(f'texts "x=60 y=15 w=12 h=24 visible=1 text=\\"{worth % 10}\\""')


def basket(level):
    """What the board shows, as a number."""
    lines = [line for line in level.records('texts "visible=1"') if " y=15 " in line]
    digits = {x: line.split('"')[1] for line in lines for x in (48, 60) if f" x={x} " in line}
    return int(digits[48] + digits[60])


def harvest(level):
    """Goes from crop to crop, and checks the board when something new is in the basket."""
    goal, full = HOME, 0
    while "WON" not in level.printed():
        safe = crops(level.images())
        if goal not in safe:
            before, goal = goal, safe[0] if safe else HOME
            if goal != before:
                level.do(f"mouse click right {goal[1]} {goal[2]}")
        level.run(48)
        now = basket(level)
        if now != full:
            check_basket(level, now)
        full = now


def win(level, _luck):
    """A full basket before dusk."""
    level.run(496)
    level.do('expect "READY"')
    level.do("key tap 1")
    level.run(16)
    level.do('expect "START"')
    level.do("mouse drag left {} {} {} {}".format(*HALL))
    level.run(16)
    level.do('expect "Selected=6"')
    level.printed()
    harvest(level)
    level.remark("The note, and the peons in a row on it.")
    level.do('expect "WON"')
    level.do('reject "LOST"')
    level.do('texts "visible=1 text=\\"The harvest is in. You won!\\""')
    level.do('images "id=59 x=140 y=190 w=360 h=120 visible=1"')
    for unit in range(6):
        level.do(f'units "id={unit} x={222 + unit * 36} y=284"')


if __name__ == "__main__":
    bot.main("peons", "win", win)
