"""Pixel art for the games: one palette, pictures from rows of letters, BMP and PNG files.

A picture is a list of rows, a row a list of (red, green, blue, alpha), each 0 to 255. Generators of
a game's pictures import this module, draw with the letters of PALETTE and call write_bmp:

    heart = from_letters([".r.r.",
                          "rrrrr",
                          ".rrr.",
                          "..r.."])
    write_bmp("heart.bmp", heart)

The engine loads BMP through SDL, which keeps transparency only of files with 32 bits a pixel and an
alpha mask in their header; write_bmp chooses the form by what the picture needs.
"""

import math
import struct
import zlib

# Sixteen colours for everything that the games show. One letter each; "." is transparent.
PALETTE = {
    "k": (0x1F, 0x1D, 0x2B),  # ink: outlines
    "s": (0x4B, 0x51, 0x68),  # slate
    "g": (0x96, 0x9D, 0xAE),  # grey stone
    "w": (0xF7, 0xF3, 0xE6),  # warm white
    "n": (0x2B, 0x36, 0x73),  # navy
    "u": (0x3C, 0x72, 0xC8),  # blue
    "b": (0x7C, 0xC4, 0xEA),  # sky
    "d": (0x24, 0x57, 0x4A),  # dark green: shade of leaves
    "e": (0x3F, 0x91, 0x4F),  # green
    "l": (0x93, 0xC9, 0x58),  # light green: grass in the sun
    "y": (0xF6, 0xD3, 0x5B),  # straw
    "o": (0xE2, 0x82, 0x3B),  # orange
    "r": (0xB8, 0x3A, 0x45),  # red
    "p": (0x7A, 0x44, 0x8E),  # purple
    "f": (0xF2, 0xC3, 0x9A),  # skin, sand
    "m": (0x79, 0x4B, 0x35),  # brown: wood, earth
}

CLEAR = (0, 0, 0, 0)


def colour(letter, alpha=255):
    """The pixel that a letter stands for."""
    return CLEAR if letter == "." else (*PALETTE[letter], alpha)


# Drawing ------------------------------------------------------------------------------------------


def from_letters(rows):
    """A picture of one pixel a letter. All rows must be of one length."""
    if len({len(row) for row in rows}) != 1:
        raise ValueError(f"rows of different lengths: {[len(row) for row in rows]}")
    return [[colour(letter) for letter in row] for row in rows]


def blank(width, height, letter="."):
    """A picture of one colour."""
    return [[colour(letter)] * width for _ in range(height)]


def size(picture):
    """Width and height."""
    return len(picture[0]), len(picture)


def put(picture, x, y, pixel):
    """Sets a pixel; outside the picture nothing happens."""
    width, height = size(picture)
    if 0 <= x < width and 0 <= y < height:
        picture[y][x] = pixel


def fill_rect(picture, x, y, width, height, letter):
    """Fills a rectangle, cut to the picture."""
    for row in range(y, y + height):
        for column in range(x, x + width):
            put(picture, column, row, colour(letter))


def disc(picture, middle_x, middle_y, radius, letter_at, edge=1):
    """Fills a disc; letter_at tells the colour of the pixel at x, y. A pixel may be outside the
    circle by `edge`, in squares of pixels: without that a disc has four points."""
    for y in range(middle_y - radius, middle_y + radius + 1):
        for x in range(middle_x - radius, middle_x + radius + 1):
            if (x - middle_x) ** 2 + (y - middle_y) ** 2 <= radius * radius + edge:
                put(picture, x, y, colour(letter_at(x, y)))


def paste(picture, other, x, y):
    """Puts another picture's opaque pixels on this one."""
    for row, pixels in enumerate(other):
        for column, pixel in enumerate(pixels):
            if pixel[3] == 255:
                put(picture, x + column, y + row, pixel)


def enlarge(picture, times):
    """Every pixel becomes a square of pixels, which the engine's smooth scaling cannot blur."""
    wide = [[pixel for pixel in row for _ in range(times)] for row in picture]
    return [list(row) for row in wide for _ in range(times)]


# Scenery ----------------------------------------------------------------------------------------

# The order in which a 4 by 4 square fills up when one colour fades into another.
FADE = ((0, 8, 2, 10), (12, 4, 14, 6), (3, 11, 1, 9), (15, 7, 13, 5))


def fade(picture, y, height, upper, lower):
    """Rows that go over from one colour to another in a woven pattern."""
    for row in range(height):
        for x in range(size(picture)[0]):
            under = FADE[row % 4][x % 4] < 16 * row / height
            put(picture, x, y + row, colour(lower if under else upper))


def hill(picture, top, wave, length, shift, letter):
    """Fills everything below a wavy line."""
    width, height = size(picture)
    for x in range(width):
        y = round(top + wave * math.sin((x + shift) / length))
        fill_rect(picture, x, y, 1, height - y, letter)


def soft_box(letter, least, most, step):
    """A selection box. The engine stretches it to whatever the player drags, so it is soft: a
    bright rim that fades into a clear middle looks right at any size, a sharp line would not. The
    opacity inside falls from `most` by `step` a pixel, down to `least`."""
    side = 48
    picture = blank(side, side)
    for y in range(side):
        for x in range(side):
            depth = min(x, y, side - 1 - x, side - 1 - y)
            picture[y][x] = colour(letter, 230 if depth == 0 else max(least, most - step * depth))
    return picture


def faint_box():
    """The selection box of a game that selects nothing: the engine wants one all the same."""
    return [[colour("w", 40)] * 8 for _ in range(8)]


# Files --------------------------------------------------------------------------------------------


def write_bmp(path, picture):
    """Writes 4 bits a pixel if the picture is opaque and of palette colours, else 32 with alpha."""
    opaque = {(*rgb, 255) for rgb in PALETTE.values()}
    if all(pixel in opaque for row in picture for pixel in row):
        data = _indexed_bmp(picture)
    else:
        data = _alpha_bmp(picture)
    with open(path, "wb") as file:
        file.write(data)


def write_png(path, picture):
    """Writes a PNG with alpha, for looking at."""
    width, height = size(picture)
    rows = b"".join(b"\0" + b"".join(bytes(pixel) for pixel in row) for row in picture)
    head = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)
    with open(path, "wb") as file:
        file.write(b"\x89PNG\r\n\x1a\n")
        for kind, data in ((b"IHDR", head), (b"IDAT", zlib.compress(rows, 9)), (b"IEND", b"")):
            checksum = zlib.crc32(kind + data)
            file.write(struct.pack(">I", len(data)) + kind + data + struct.pack(">I", checksum))


def _bmp_file(info, pixels):
    """A BMP file of an information header (with palette) and pixel data."""
    offset = 14 + len(info)
    return struct.pack("<2sIHHI", b"BM", offset + len(pixels), 0, 0, offset) + info + pixels


def _indexed_bmp(picture):
    """16 colours, 4 bits a pixel, rows from the bottom up and padded to 4 bytes."""
    width, height = size(picture)
    index = {(*rgb, 255): number for number, rgb in enumerate(PALETTE.values())}
    pixels = bytearray()
    for row in reversed(picture):
        numbers = [index[pixel] for pixel in row] + [0] * (-width % 8)
        pixels += bytes(high << 4 | low for high, low in zip(numbers[::2], numbers[1::2]))
    info = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 4, 0, len(pixels), 2835, 2835, 16, 16)
    for red, green, blue in PALETTE.values():
        info += bytes((blue, green, red, 0))
    return _bmp_file(info, bytes(pixels))


def _alpha_bmp(picture):
    """32 bits a pixel with the fourth header version, the first with a mask for alpha."""
    width, height = size(picture)
    pixels = b"".join(
        bytes((blue, green, red, alpha))
        for row in reversed(picture)
        for red, green, blue, alpha in row
    )
    info = struct.pack("<IiiHHIIiiII", 108, width, height, 1, 32, 3, len(pixels), 2835, 2835, 0, 0)
    info += struct.pack("<IIII", 0x00FF0000, 0x0000FF00, 0x000000FF, 0xFF000000)
    info += b"BGRs" + bytes(48)  # colour space sRGB; its end points and gamma do not apply
    return _bmp_file(info, pixels)
