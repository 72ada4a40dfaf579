#!/usr/bin/env python3
"""Bricks, won by somebody who follows the ball and lost by somebody who does not."""

import itertools
import random
import time

import player
import reflexes

LEFT, TOP, WIDTH, HEIGHT = 16, 196, 608, 246  # the air between the wall and the paddle's top
LANDING = 432  # where the ball's middle is when it meets the paddle
STRAW = reflexes.pixel(0xF6, 0xD3, 0x5B)
CAP = reflexes.pixel(0xE2, 0x82, 0x3B)  # the paddle's ends
HEARTS = (540, 6, 80, 36)
SIGN = (155, 226, 330, 85)
LIGHT_GREEN = (0x93, 0xC9, 0x58)
TRYING = 600  # seconds that one may take to win, on a machine that has little time for the player
RED = (0xB8, 0x3A, 0x45)


def ball(fast):
    """Where the ball is, or None while it is among the bricks."""
    found = reflexes.find(fast.look(LEFT, TOP, WIDTH, HEIGHT), STRAW, 7)  # nothing else is so wide
    if not found:
        return None
    return LEFT + found[0][0], TOP + found[0][1]


def paddle(fast):
    """The middle of the paddle."""
    ends = reflexes.find(fast.look(0, 446, player.WIDTH, 1), CAP)
    return (ends[0][0] + ends[-1][0]) / 2


class Flight:
    """The ball's straight way since its last turn."""

    def __init__(self):
        self.start = self.end = self.way = None

    def see(self, place):
        """Notes where the ball is now."""
        way = None
        if self.end and place:
            way = (place[0] > self.end[0], place[1] > self.end[1])
        if way != self.way or not place:
            self.start = place
        self.end, self.way = place, way

    def falls(self):
        """Whether the ball is on its way down, and long enough for a forecast."""
        return self.start and self.end and self.end[1] > self.start[1] + 6

    def landing(self):
        """The x at which it will come down, off the walls as often as needed."""
        slope = (self.end[0] - self.start[0]) / (self.end[1] - self.start[1])
        x = (self.end[0] + slope * (LANDING - self.end[1]) - 24) % (2 * 592)
        return 24 + min(x, 2 * 592 - x)


def steer(fast, target):
    """Holds the key that brings the paddle's middle to the target."""
    way = target - paddle(fast)
    fast.hold_only(*(["d"] if way > 12 else ["a"] if way < -12 else []))


def rally(game, fast, seconds):
    """Keeps the ball in the air until the game ends."""
    dice = random.Random(4)
    flight, target, off = Flight(), 320, 0
    moved = time.monotonic()
    end = moved + seconds
    while not (game.has_heard("WON") or game.has_heard("LOST")) and time.monotonic() < end:
        before, now = flight.end, ball(fast)
        if now != before or now is None:
            flight.see(now)
            moved = time.monotonic()
        elif time.monotonic() > moved + 0.4:
            fast.tap("space")  # it lies on the paddle
        if flight.falls():
            target = flight.landing() + off
        elif now:
            target = now[0]  # nobody knows which brick it will turn at
            off = dice.randint(-28, 28)  # so that it does not come back the same way
        steer(fast, target)
        time.sleep(0.005)


def win(game, fast):
    """Wild speed, and the ball kept in the air until the wall is down. Who loses (on a machine that
    has no time for the player) tries again, more slowly, for as long as it takes."""
    game.expect("READY")
    end = time.monotonic() + TRYING
    for speed in itertools.chain("32", itertools.repeat("1")):
        fast.tap(speed, "space")
        rally(game, fast, TRYING)
        if game.has_heard("WON") or time.monotonic() > end:
            break
        fast.tap_until("space", "READY")
    game.expect("WON")
    game.see(lambda seen: seen.count(LIGHT_GREEN, *SIGN) > 1000, what="the winner's sign")


def miss(game, fast):
    """Lets a ball go and holds the paddle away from it: it flies to the right and comes back. A key
    that comes too early for the new ball is pressed again."""
    while not game.has_heard("MISSED"):
        fast.tap("space")
        fast.hold_only("d")
        again = time.monotonic() + 5
        while time.monotonic() < again and not game.has_heard("MISSED"):
            time.sleep(0.02)
    game.expect("MISSED")


def lose(game, fast):
    """The paddle held in a corner: three balls fall beside it, and the next game is whole again."""
    game.expect("READY")
    assert game.title() == "Zel - Bricks", game.title()
    full = game.picture().count(RED, *HEARTS)
    before = paddle(fast)
    fast.hold_only("a")
    player.until(lambda: paddle(fast) < 70, player.PATIENCE, "the paddle to reach the left wall")
    fast.hold_only()
    assert before == 319.5, before
    for ball_left in (2, 1, 0):
        miss(game, fast)
        hearts = full * ball_left // 3
        game.see(lambda seen: seen.count(RED, *HEARTS) == hearts, what=f"{ball_left} hearts")
    game.expect("LOST")
    fast.hold_only()
    fast.tap_until("space", "READY")
    game.see(lambda seen: seen.count(RED, *HEARTS) == full, what="three hearts")


if __name__ == "__main__":
    reflexes.main("bricks", lose, win)
