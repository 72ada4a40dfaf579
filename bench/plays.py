"""Plays of the shipped games, measured by zelplay: what their passes take of a frame's time."""

import measure

FRAME_SECONDS = 0.016


def wins(games):
    """The plays that win a game, by the game's name."""
    return {play.parts[-3]: play for play in sorted(games.glob("*/plays/win.play"))}


def passes(zelplay, play, rounds):
    """Seconds that a pass takes, drawn: the median and the 99th of 100, the least of the rounds."""
    rows = [whole_row(zelplay, play) for _ in range(rounds)]
    return [min(row[column] for row in rows) for column in ("median", "99th")]


def whole_row(zelplay, play):
    game = str(play.parents[1])
    cost = measure.run([zelplay, "--draw", "all", "--time", game, str(play)], game, quiet=True)
    _, head, whole, *_ = cost.output.decode().splitlines()
    columns = head.removeprefix("ms a pass").split()
    return dict(zip(columns, (float(cell) / 1000 for cell in whole.split()[1:])))
