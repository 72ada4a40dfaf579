#!/usr/bin/env python3
"""Makes the play that wins bricks: the paddle stays under the ball, and catches a parcel.

    python3 tests/games/bricks_bot.py build/zelplay      # writes games/bricks/plays/win.play
"""

import itertools

import bot

PADDLE, GIFT, BALL = 51, 52, 53  # numbers of pictures
PLACES = {110: 62, 86: 72, 62: 82, 38: 92}  # x of each digit of the score, and its first picture


def middle(image):
    return image["x"] + image["w"] // 2


def hold(level, key):
    """Changes the held key."""
    held = level.held
    if key == held:
        return
    if held:
        level.do(f"key up {held}")
        level.run(16)
    if key:
        level.do(f"key down {key}")
    level.held = key


def check_score(level):
    """Writes down which digits are shown."""
    images = level.images()
    for x, first in PLACES.items():
        digit = next(n for n in range(10) if images[first + n]["visible"])
        level.do(f'images "id={first + digit} x={x} y=11 w=21 h=27 visible=1"')


def landing(ball, before):
    """The x at which the ball comes down, off the walls; while it rises, where it is."""
    x, y = middle(ball), ball["y"]
    way = y - before["y"]
    if way > 0:
        x += (x - middle(before)) * (424 - y) // way
    x = (x - 24) % 1184
    return 24 + min(x, 1184 - x)


def steer(level, ball, before, off):
    """Holds the key that brings the paddle under the ball, or the parcel while there is time."""
    paddle, gift = level.image(PADDLE), level.image(GIFT)
    target = landing(ball, before) - off
    if 300 < gift["y"] < 455 and (ball["y"] < before["y"] or ball["y"] < 240):
        target = middle(gift)
    way = target - middle(paddle)
    if abs(way) > (12 if level.held else 24):
        hold(level, "d" if way > 0 else "a")
    else:
        hold(level, None)


def listen(level):
    """Writes down a parcel that is caught; returns whether the game goes on."""
    heard = level.printed()
    if "MISSED" in heard:
        raise bot.Missed("missed a ball")
    if "GIFT" in heard:
        level.do('expect "GIFT"')
        level.do(f'images "id={PADDLE} x={level.image(PADDLE)["x"]} y=440 w=144 h=16"')
    return "WON" not in heard


def rally(level, luck):
    """Keeps the ball in the air until the wall is down."""
    off, before = 20, level.image(BALL)
    for step in itertools.count(1):
        level.run(16)
        ball = level.image(BALL)
        if ball["y"] < before["y"] and ball["y"] > 400:
            off = luck.randint(-44, 44)  # where on the paddle it shall land
        steer(level, ball, before, off)
        before = ball
        if step % 300 == 0:
            check_score(level)
        if not listen(level):
            return


def win(level, luck):
    """The wall comes down with one ball."""
    level.held = None
    level.run(96)
    level.do('expect "READY"')
    level.do('title "Zel - Bricks"')
    level.do("key tap 3")
    level.run(16)
    level.do("key tap space")
    level.run(16)
    level.printed()
    rally(level, luck)
    hold(level, None)
    level.run(100)
    level.remark("The score, the sign, and three hearts left.")
    level.do('expect "WON"')
    level.do('reject "MISSED"')
    if not any("GIFT" in line for line in level.lines):
        raise bot.Missed("caught no parcel")
    check_score(level)
    level.do('images "id=106 x=177 y=226 w=285 h=85 visible=1"')
    level.do('images "id=104 x=594 y=13 w=22 h=22 visible=1"')
    level.do('count 155 226 330 85 #93c958 over 1000')


if __name__ == "__main__":
    bot.main("bricks", "win", win)
