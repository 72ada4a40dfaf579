#!/usr/bin/env python3
"""Draws the SVG pictures of docs/builtins.md.

    make_drawings.py [FOLDER]        FOLDER is where they go; if not given, this one
"""

import sys
from pathlib import Path

INK = "#1f1d2b"
GREY = "#969dae"
PALE = "#e8eaf0"
BLUE = "#3c72c8"
SKY = "#cfe6f7"
GREEN = "#93c958"
ORANGE = "#e2823b"
RED = "#b83a45"
STRAW = "#f6d35b"


# Shapes -------------------------------------------------------------------------------------------


def text(x, y, words, colour=INK, size=14, anchor="start", weight="normal"):
    return (f'<text x="{x}" y="{y}" fill="{colour}" font-size="{size}" text-anchor="{anchor}" '
            f'font-weight="{weight}">{words}</text>')


def code(x, y, words, colour=INK, anchor="start"):
    return (f'<text x="{x}" y="{y}" fill="{colour}" font-size="13" text-anchor="{anchor}" '
            f'font-family="DejaVu Sans Mono, Consolas, monospace">{words}</text>')


def rect(x, y, w, h, fill, stroke=INK, radius=0):
    return (f'<rect x="{x}" y="{y}" width="{w}" height="{h}" rx="{radius}" fill="{fill}" '
            f'stroke="{stroke}"/>')


def line(x1, y1, x2, y2, colour=INK, width=1, dashes=""):
    dash = f' stroke-dasharray="{dashes}"' if dashes else ""
    return (f'<line x1="{x1}" y1="{y1}" x2="{x2}" y2="{y2}" stroke="{colour}" '
            f'stroke-width="{width}"{dash}/>')


def polygon(points, fill, stroke=INK):
    places = " ".join(f"{x},{y}" for x, y in points)
    return f'<polygon points="{places}" fill="{fill}" stroke="{stroke}"/>'


def unit(x, y):
    """A little figure of 15 by 15 pixels, drawn twice as large."""
    return (rect(x + 7, y, 16, 12, "#f2c39a", radius=5)
            + rect(x + 3, y + 12, 24, 12, BLUE, radius=3)
            + rect(x + 7, y + 24, 6, 6, INK) + rect(x + 17, y + 24, 6, 6, INK))


def pointer(x, y):
    corners = [(0, 0), (0, 22), (6, 17), (10, 26), (14, 24), (10, 15), (17, 15)]
    return polygon([(x + a, y + b) for a, b in corners], "white")


def call(x, y, colour=ORANGE):
    return f'<circle cx="{x}" cy="{y}" r="6" fill="{colour}" stroke="{INK}"/>'


def drawing(height, title, *shapes):
    body = "\n".join(shapes)
    return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 640 {height}" width="640" '
            f'height="{height}" font-family="DejaVu Sans, Arial, sans-serif">\n'
            f"<title>{title}</title>\n"
            f'<rect width="640" height="{height}" fill="white"/>\n{body}\n</svg>\n')


# Drawings -----------------------------------------------------------------------------------------


def sheet(y, fill):
    """A layer, seen from the side."""
    return polygon([(110, y + 70), (40, y + 130), (300, y + 130), (370, y + 70)], fill)


def layers():
    glass = "rgba(255,255,255,0.75)"
    names = [
        (320, "white", "1. White", "all is drawn anew each time"),
        (255, GREEN, "2. The first picture", 'loadimage("img/meadow.bmp")'),
        (190, glass, "3. The next picture", 'loadimage("img/bee.bmp")'),
        (125, glass, "4. All texts", 'createtext("Score", ...)'),
        (60, glass, "5. All units", "createunit(0, 100, 200)"),
        (-5, glass, "6. The selection frame", "while the player drags"),
    ]
    shapes = []
    for y, fill, title, source in names:
        shapes += [sheet(y, fill), text(385, y + 96, title, weight="bold"),
                   code(385, y + 116, source, BLUE)]
    shapes += [
        f'<ellipse cx="190" cy="290" rx="26" ry="12" fill="{STRAW}" stroke="{INK}"/>',
        text(140, 230, "Score", size=22),
        unit(230, 138), unit(262, 150),
        polygon([(236, 77), (190, 117), (300, 117), (346, 77)], SKY, BLUE),
        line(20, 450, 20, 75, GREY, 2), polygon([(20, 66), (15, 76), (25, 76)], GREY, GREY),
        text(10, 56, "drawn later", GREY, 12),
    ]
    return drawing(466, "The layers of a frame", *shapes)


def selection():
    shapes = []
    for x, title in ((10, "1. Select"), (222, "2. Send"), (434, "3. Move apart")):
        shapes.append(rect(x, 34, 196, 180, GREEN))
        shapes.append(text(x, 24, title, weight="bold"))
    shapes += [
        rect(34, 64, 112, 94, "rgba(124,196,234,0.6)", BLUE), unit(50, 80), unit(96, 110),
        unit(132, 142), pointer(146, 158),
        text(10, 236, "Drag with the left button.", size=13),
        text(10, 254, "A unit must be wholly inside:", size=13),
        text(10, 272, "two are selected, one is not.", size=13),
        unit(344, 142), unit(320, 80), pointer(320, 80),
        text(222, 236, "Click with the right button.", size=13),
        text(222, 254, "Both jump to one point and", size=13),
        text(222, 272, "lie on top of each other.", size=13),
        unit(532, 80), unit(572, 80), unit(556, 142),
        text(434, 236, "Your timer moves the one", size=13),
        text(434, 254, "with the higher id to the side:", size=13),
        code(434, 272, "moveunit(1, x + 20, y);", BLUE),
    ]
    return drawing(286, "Selecting units, sending them, moving them apart", *shapes)


def timer_row(y, name, start, end, fires):
    """A timer's bar with the calls of its function."""
    shapes = [code(10, y + 5, name), rect(start, y - 9, end - start, 18, SKY, BLUE, 4)]
    return shapes + [call(x, y) for x in fires]


def timer():
    shapes = [
        rect(150, 20, 60, 18, PALE, GREY, 4), code(156, 34, "main"),
        text(218, 34, "timers begin to count when main is over", GREY, 12),
        line(210, 20, 210, 258, GREY, 1, "4 4"),
    ]
    shapes += timer_row(80, "createtimer(0, ...)", 210, 600, [255, 300, 345, 500, 545, 590])
    shapes += [
        rect(365, 71, 90, 18, "white", GREY, 4),
        text(410, 84, "paused", GREY, 12, "middle"),
        code(348, 112, "pausetimer(id, 1)", RED), line(365, 98, 365, 90, RED, 2),
        code(440, 62, "pausetimer(id, 0)", RED), line(455, 66, 455, 71, RED, 2),
        text(460, 128, "it goes on where it was", GREY, 12),
    ]
    shapes += timer_row(160, "createtimer(0, ...)", 210, 410, [255, 300, 345, 390])
    shapes += [code(418, 164, "deletetimer(id)", RED), text(418, 182, "it is gone", GREY, 12)]
    shapes += timer_row(220, "createtimer(1, ...)", 210, 345, [345])
    shapes += [text(360, 224, "called once, then it is gone", GREY, 12)]
    shapes += [
        line(150, 258, 620, 258, GREY, 2),
        polygon([(624, 258), (614, 253), (614, 263)], GREY, GREY),
        text(600, 250, "time", GREY, 12, "end"),
        call(20, 274), text(32, 279, "the timer calls its function", size=12),
    ]
    return drawing(290, "The life of a timer", *shapes)


def keys():
    shapes = [
        text(10, 44, "Left is held"), rect(150, 30, 420, 18, SKY, BLUE, 4),
        text(10, 84, "A is tapped"), rect(430, 70, 50, 18, SKY, BLUE, 4),
        text(10, 134, "Left's function"), line(150, 130, 620, 130, GREY),
        text(10, 174, "A's function"), line(150, 170, 620, 170, GREY),
    ]
    for x in (150, 330, 360, 390, 430, 480):
        shapes += [line(x, 48, x, 124, GREY, 1, "3 3"), call(x, 130)]
    shapes += [
        call(430, 170), line(570, 48, 570, 200, RED, 1, "3 3"),
        text(570, 214, "Left is let go: no call", RED, 12, "middle"),
        text(150, 214, "down", size=12, anchor="middle"),
        text(360, 214, "the keyboard repeats", size=12, anchor="middle"),
        text(455, 200, "A down, A up", size=12, anchor="middle"),
        line(155, 20, 325, 20, GREY), text(240, 15, "about half a second", GREY, 12, "middle"),
        call(20, 240), text(32, 245, "the function is called", size=12),
    ]
    return drawing(256, "When a key's function is called", *shapes)


def texts():
    shapes = [
        text(10, 24, "With a timer after each text", weight="bold"),
        text(340, 24, "Without", weight="bold", colour=RED),
    ]
    rows = [('createtext("Ready?", ...);', "text with the key 0", STRAW),
            ("createtimer(0, ...);", "timer with the id 0", SKY),
            ('createtext("Go!", ...);', "text with the key 1", STRAW),
            ("createtimer(0, ...);", "timer with the id 1", SKY)]
    for number, (words, result, fill) in enumerate(rows):
        y = 50 + 46 * number
        shapes += [code(10, y + 4, words), rect(24, y + 12, 190, 20, fill, INK, 4),
                   text(34, y + 27, result, size=13)]
    shapes += [
        code(340, 54, 'createtext("Ready?", ...);'), rect(354, 62, 190, 20, PALE, GREY, 4),
        text(364, 77, "text with the key 0", GREY, 13), line(354, 72, 544, 72, RED, 2),
        code(340, 100, 'createtext("Go!", ...);'), rect(354, 108, 190, 20, STRAW, INK, 4),
        text(364, 123, "text with the key 0", size=13),
        text(340, 160, "The next timer would still get the id 0,", size=13),
        text(340, 178, "so the second text has the same key", size=13),
        text(340, 196, "and replaces the first one.", size=13),
    ]
    return drawing(232, "The keys of texts", *shapes)


def main():
    folder = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).resolve().parent
    for make in (layers, selection, timer, keys, texts):
        (folder / f"{make.__name__}.svg").write_text(make(), encoding="utf-8")


if __name__ == "__main__":
    main()
