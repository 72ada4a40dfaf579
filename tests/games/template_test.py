#!/usr/bin/env python3
"""The template that every new game is copied from: it runs, its star moves, its key stops it."""

import time

import player

CANVAS = (0, 100, player.WIDTH, 110)  # the band that the star crosses


def star_moves(game):
    """Whether the band changes within a fifth of a second."""
    before = game.picture().area(*CANVAS)
    time.sleep(0.2)
    return game.picture().area(*CANVAS) != before


def play(game):
    game.expect("READY")
    assert game.title() == "Zel - my game", game.title()
    assert game.picture().at(5, 5) == (255, 255, 255)
    assert game.picture().count((100, 100, 100), 220, 300, 200, 26) > 50, "the text is missing"
    player.until(lambda: star_moves(game), player.PATIENCE, "the star to move")
    game.press("space")
    player.until(lambda: not star_moves(game), player.PATIENCE, "the star to stop")
    game.press("a")
    assert not star_moves(game), "a key without a binding started the star"


if __name__ == "__main__":
    player.main("template", play)
