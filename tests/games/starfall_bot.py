#!/usr/bin/env python3
"""Makes the play that wins starfall: the owl flies to the stars that no meteor is near.

    python3 tests/games/starfall_bot.py build/zelplay    # writes games/starfall/plays/win.play
"""

import bot

STARS, METEORS, BLUE, OWL, HEARTS = 2, 12, 18, 19, 43  # numbers of pictures
DIGITS = {50: 33, 74: 23}  # x of each digit of the stars still needed, and its first picture
LOOK = 64  # milliseconds from one look to the next


def places(images, first, count):
    """The middles of the pictures that are in the sky."""
    middles = [(image["x"] + 11, image["y"] + 11) for image in images[first : first + count]]
    return [place for place in middles if 40 < place[1] < 470]


def is_safe(star, meteors):
    """Whether no meteor is at the star or about to come there."""
    return not any(abs(x - star[0]) < 64 and -60 < star[1] - y < 140 for x, y in meteors)


def check_board(level, images):
    """Writes down how many stars the night still asks for, and the hearts."""
    for x, first in DIGITS.items():
        digit = next(n for n in range(10) if images[first + n]["visible"])
        level.do(f'images "id={first + digit} x={x} y=11 w=21 h=27 visible=1"')
    for heart in range(3):
        x, shown = 544 + 27 * heart, images[HEARTS + heart]["visible"]
        level.do(f'images "id={HEARTS + heart} x={x} y=14 w=22 h=22 visible={shown}"')


def aim(images):
    """Where to point: a little below the nearest safe star, as it falls."""
    owl = (images[OWL]["x"] + 21, images[OWL]["y"] + 18)
    meteors = places(images, METEORS, 6)
    stars = places(images, STARS, 10) + places(images, BLUE, 1)
    safe = [star for star in stars if is_safe(star, meteors)]
    if not safe:
        return None
    x, y = min(safe, key=lambda star: abs(star[0] - owl[0]) + abs(star[1] - owl[1]))
    return x, min(y + 16, 470)


def hunt(level):
    """Three nights of stars."""
    before = None
    while True:
        images = level.images()
        place = aim(images)
        if place and place != before:
            level.do("mouse move {} {}".format(*place))
        before = place
        level.run(LOOK)
        heard = level.printed()
        for word in heard.strip('"').split("\\n")[:-1]:
            level.do(f'expect "{word}"')
            check_board(level, level.images())
        if "LOST" in heard:
            raise bot.Missed("lost")
        if "WON" in heard:
            return


def win(level, luck):
    """Three nights of stars, and the next year's first night."""
    level.run(96)
    level.do('expect "READY"')
    level.do('title "Zel - Starfall"')
    level.printed()
    level.run(luck.randrange(1, 200) * 16)
    level.do("key tap space")
    level.run(16)
    hunt(level)
    level.run(100)
    level.remark("The sign. A second year begins at once when it listens, with one meteor more.")
    level.do('images "id=47 x=102 y=130 w=435 h=85 visible=1"')
    level.do("count 102 130 436 85 #93c958 over 1500")
    level.do('texts "visible=0 text=\\"Press SPACE to fly\\""')
    level.run(1000)
    level.do('texts "visible=1 text=\\"Press SPACE to fly\\""')
    level.do("key tap space")
    level.run(16)
    level.do('expect "NIGHT"')
    check_board(level, level.images())
    level.do('images "id=47 x=102 y=130 w=435 h=85 visible=0"')
    level.run(1000)


if __name__ == "__main__":
    bot.main("starfall", "win", win)
