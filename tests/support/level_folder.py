"""A working directory of the engine for a level that a test brings as text.

It has what the engine looks for, and pictures of one colour: red.bmp and green.bmp of 50 by 50
pixels, a blue unit of 20 by 30, and a magenta selection box.
"""

import glob
import struct
from pathlib import Path

WHITE, GREY = (255, 255, 255), (100, 100, 100)
RED, GREEN, BLUE, MAGENTA = (255, 0, 0), (0, 255, 0), (0, 0, 255), (255, 0, 255)


def find_font():
    """The file of Liberation Sans, wherever the system keeps it."""
    fonts = glob.glob("/usr/share/fonts/**/LiberationSans-Regular.ttf", recursive=True)
    if not fonts:
        raise SystemExit("Liberation Sans is missing: install fonts-liberation")
    return fonts[0]


def picture(width, height, colour):
    """The bytes of a BMP file of one colour."""
    row = bytes(reversed(colour)) * width
    row += bytes(-len(row) % 4)
    head = struct.pack("<2sIHHI", b"BM", 54 + len(row) * height, 0, 0, 54)
    info = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, 0, 0, 0, 0, 0)
    return head + info + row * height


def write_level(folder, script):
    """Fills the folder. Bytes become the script as they are; in a text each line end becomes the
    carriage return and line feed of level scripts."""
    if isinstance(script, str):
        script = script.replace("\n", "\r\n").encode()
    folder = Path(folder)
    level = folder / "levels" / "level1"
    (level / "img").mkdir(parents=True)
    (folder / "SysPics").mkdir()
    (folder / "arial.ttf").symlink_to(find_font())
    (folder / "SysPics" / "select.bmp").write_bytes(picture(8, 8, MAGENTA))
    (level / "img" / "peon.bmp").write_bytes(picture(20, 30, BLUE))
    (level / "red.bmp").write_bytes(picture(50, 50, RED))
    (level / "green.bmp").write_bytes(picture(50, 50, GREEN))
    (level / "script.txt").write_bytes(script)
    return folder
