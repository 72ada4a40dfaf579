"""Rows of the table: a figure of the engine's and what it is compared with, over several runs."""

import statistics
from typing import Callable, NamedTuple


def readable(seconds):
    for unit, scale in (("s", 1.0), ("ms", 1e3), ("µs", 1e6)):
        if seconds * scale >= 1.0:
            return f"{seconds * scale:.3g} {unit}"
    return f"{seconds * 1e9:.3g} ns"


def mebibytes(size):
    return f"{size:.1f} MiB"


class Relation(NamedTuple):
    """How the engine's figure is seen beside the reference's."""

    value: Callable[[float, float], float]
    shown: Callable[[float], str]
    words: str


FASTER = Relation(lambda ours, other: other / ours, "{:.2f}".format, "times as fast")
COST = Relation(lambda ours, other: ours / other, "{:.2f}".format, "times its cost")
MORE = Relation(lambda ours, other: ours - other, "{:+.1f}".format, "MiB")
SHARE = Relation(lambda ours, other: 100 * ours / other, "{:.1f}".format, "% of it")


class Row(NamedTuple):
    """One line of the table, from one run."""

    what: str
    ours: float  # seconds, unless `figure` shows something else
    reference: str = ""
    other: float = 0.0
    relation: Relation = COST
    goal: str = ""
    figure: Callable[[float], str] = readable


def spread(values, shown):
    return [shown(choose(values)) for choose in (min, statistics.median, max)]


def cells(rows):
    """The cells of one row that was measured in several runs. What counts is the relation to the
    reference, which ran in the same minutes; a row without one shows its own spread."""
    row = rows[0]
    ours = [each.ours for each in rows]
    shown = [row.what, row.figure(statistics.median(ours))]
    if not row.reference:
        return shown + ["", *spread(ours, row.figure), row.goal]
    others = [each.other for each in rows]
    ratios = [row.relation.value(*pair) for pair in zip(ours, others)]
    least, median, most = spread(ratios, row.relation.shown)
    reference = f"{row.reference} {row.figure(statistics.median(others))}"
    return shown + [reference, least, f"{median} {row.relation.words}", most, row.goal]


def print_table(runs):
    """`runs` are lists of the same rows, one list for each run."""
    print("| What | Zel | Reference | Least | Median | Most | Goal |")
    print("|" + " --- |" * 7)
    for rows in zip(*runs):
        assert len({row.what for row in rows}) == 1, "the runs have different rows"
        print("| " + " | ".join(cells(rows)) + " |")
