#!/usr/bin/env python3
"""Plays peons by looking at the field: to a full basket, to the loss of all peons, and its keys."""

import time

import player

COLUMNS = [82 + 68 * number for number in range(8)]  # middles of the places where crops grow
BEDS = [122 + 68 * number for number in range(5)]
PURPLE, ORANGE, YELLOW = (0x7A, 0x44, 0x8E), (0xE2, 0x82, 0x3B), (0xF6, 0xD3, 0x5B)
GREEN = (200, 435, 520, 478)  # where all peons stand at first: a frame around them
CLOCK = (200, 12, 40, 30)
TRYING = 600  # seconds that one may take to win, on a machine that has little time for the player
DANGER = 6.5  # seconds from a bed's last warning until its boar is through


def crops(picture):
    """Where crops stand: (worth, x, y), the best first."""
    found = []
    for x in COLUMNS:
        for y in BEDS:
            place = (x - 18, y - 16, 36, 32)
            if picture.count(ORANGE, *place) > 100:
                found.append((4, x, y))
            elif picture.count(PURPLE, *place) > 40:
                found.append((1, x, y))
    return sorted(found, reverse=True)


def warned_beds(picture):
    """The beds that show the sign of a boar at one end or the other."""
    return [
        y for y in BEDS
        if max(picture.count(YELLOW, x, y - 9, 24, 18) for x in (53, 563)) > 80
    ]


def begin(game, key):
    """Starts a game and takes all six peons."""
    game.expect("READY")
    game.press(key)
    game.expect("START")
    game.drag(*GREEN)
    game.expect("Selected=6")


def harvest(game):
    """Sends the peons to what is ripe and safe until the game ends, be it won or lost."""
    warned = dict.fromkeys(BEDS, -DANGER)
    goal = None
    while not (game.has_heard("WON") or game.has_heard("LOST")):
        picture, now = game.picture(), time.monotonic()
        warned.update((y, now) for y in warned_beds(picture))
        safe = [crop for crop in crops(picture) if now - warned[crop[2]] > DANGER]
        if goal not in safe:
            goal = safe[0] if safe else None
            x, y = goal[1:] if goal else (320, 458)
            game.click(x, y, button=3)


def win(game):
    """Who is too slow for it, on a busy machine, tries again."""
    begin(game, "1")
    harvest(game)
    end = time.monotonic() + TRYING
    while not game.has_heard("WON") and time.monotonic() < end:
        game.expect("LOST")
        game.press("r")
        game.expect("START")
        game.drag(*GREEN)
        game.expect("Selected=6")
        harvest(game)
    game.expect("WON")
    game.see(lambda picture: picture.at(170, 212) == (0xF7, 0xF3, 0xE6), what="the note")


def lose(game):
    begin(game, "3")
    bed = game.see(warned_beds, what="a boar's warning")[0]
    game.click(320, bed, button=3)
    game.expect("LOST")
    bench = (500, 18, 120, 15)
    game.see(lambda picture: picture.count(YELLOW, *bench) > 6 * 10, what="six peons on the bench")
    game.press("r")
    game.expect("START")
    game.see(lambda picture: picture.count(YELLOW, *bench) == 0, what="the bench to be empty")
    game.see(crops, what="a crop of the new game")


def keys(game):
    begin(game, "2")
    assert game.title() == "Zel - Peons", game.title()
    game.press("t")
    assert game.title() == "Zel - Boar Valley", game.title()
    game.press("p")
    game.pass_by()
    stopped = game.picture().area(*CLOCK)
    time.sleep(1.5)
    assert game.picture().area(*CLOCK) == stopped, "the clock runs in a pause"
    game.press("space")
    game.see(lambda picture: picture.area(*CLOCK) != stopped, what="the clock to run again")
    game.press("f")
    player.until(lambda: is_full_screen(game), player.PATIENCE, "full screen")
    game.press("Escape")
    player.until(lambda: not is_full_screen(game), player.PATIENCE, "the window again")
    game.press("q")
    assert game.game.wait(player.PATIENCE) == 0


def is_full_screen(game):
    """Whether the window manager holds the window for one that fills the screen."""
    return b"FULLSCREEN" in game.run("xprop", "-id", game.window, "_NET_WM_STATE")


if __name__ == "__main__":
    player.main("peons", win, lose, keys)
