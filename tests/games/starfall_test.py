#!/usr/bin/env python3
"""Starfall, won by somebody who points at the stars and lost by somebody who points at meteors."""

import time

import player
import reflexes

TOP, BOTTOM = 60, 460  # between the displays and the lower edge
STRAW = reflexes.pixel(0xF6, 0xD3, 0x5B)
RED = reflexes.pixel(0xB8, 0x3A, 0x45)
HEARTS = (536, 6, 92, 36)
SIGN = (102, 130, 436, 85)
TRYING = 600  # seconds that one may take to win, on a machine that has little time for the player
LIGHT_GREEN = (0x93, 0xC9, 0x58)


def middles(points, width):
    """One point for each heap of points that lie within width of each other."""
    heaps = []
    for x, y in points:
        if not any(abs(x - a) < width and abs(y - b) < width for a, b in heaps):
            heaps.append((x, y))
    return heaps


def sky(fast):
    """Where the stars are, and where the meteors."""
    rows = fast.look(0, TOP, player.WIDTH, BOTTOM - TOP)
    stars = middles(reflexes.find(rows, STRAW, 8), 20)  # nothing else has so much straw in a row
    meteors = middles(reflexes.find(rows, RED, 4), 40)  # only their flames are red down here
    return [(x + 4, y + TOP + 2) for x, y in stars], [(x, y + TOP + 16) for x, y in meteors]


def is_safe(star, meteors):
    """Whether no meteor is at the star or about to come there."""
    return not any(abs(x - star[0]) < 64 and -60 < star[1] - y < 130 for x, y in meteors)


def over(game):
    """Whether the game has ended."""
    return game.has_heard("WON") or game.has_heard("LOST")


def hunt(game, fast, choose, seconds):
    """Points at what choose picks of the stars and meteors, until the game ends."""
    place = (320, 360)
    fast.point(*place)
    end = time.monotonic() + seconds
    while not over(game) and time.monotonic() < end:
        targets = choose(*sky(fast))
        if targets:
            place = min(targets, key=lambda at: abs(at[0] - place[0]) + abs(at[1] - place[1]))
            fast.point(place[0], min(place[1] + 16, 470))
        time.sleep(0.02)


def win(game, fast):
    """Three nights of stars. Who is hurt too often tries again, for as long as it takes."""
    game.expect("READY")
    assert game.title() == "Zel - Starfall", game.title()
    end = time.monotonic() + TRYING
    while not game.has_heard("WON") and time.monotonic() < end:
        fast.tap_until("space", "NIGHT")
        hunt(game, fast, lambda stars, meteors: [s for s in stars if is_safe(s, meteors)], TRYING)
    game.expect("WON")
    game.see(lambda seen: seen.count(LIGHT_GREEN, *SIGN) > 1500, what="the winner's sign")


def lose(game, fast):
    """Three meteors, and a heart less each time; then a new game with three hearts."""
    game.expect("READY")
    red = (0xB8, 0x3A, 0x45)
    full = game.picture().count(red, *HEARTS)
    fast.tap_until("space", "NIGHT")
    hunt(game, fast, lambda stars, meteors: meteors, TRYING)
    game.expect("HURT")
    game.expect("LOST")
    game.see(lambda seen: seen.count(red, *HEARTS) == 0, what="no heart")
    fast.tap_until("space", "NIGHT")
    game.see(lambda seen: seen.count(red, *HEARTS) == full, what="three hearts")


if __name__ == "__main__":
    reflexes.main("starfall", lose, win)
