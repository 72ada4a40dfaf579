"""A player with fast eyes and hands, for games that do not wait.

Player's own pictures and keys each start a program, which takes a tenth of a second. This one talks
to the display itself, so that a play can look and act at every frame.
"""

import ctypes
import time

import player

ALL_PLANES = ctypes.c_ulong(-1)
Z_PIXMAP = 2


class XImage(ctypes.Structure):
    """The head of Xlib's structure of this name."""

    _fields_ = [
        (name, ctypes.c_int) for name in ("width", "height", "xoffset", "format")
    ] + [("data", ctypes.c_void_p)] + [
        (name, ctypes.c_int)
        for name in ("byte_order", "unit", "bit_order", "pad", "depth", "bytes_per_line", "bits")
    ]


def library(name, results):
    """A library whose functions return what the dictionary says."""
    loaded = ctypes.CDLL(name)
    for function, kind in results.items():
        getattr(loaded, function).restype = kind
    return loaded


class Reflexes:
    """Eyes and hands on a player's window. Use it with "with"."""

    def __init__(self, game):
        self.game = game
        self.held = set()
        self.x = library(
            "libX11.so.6",
            {
                "XOpenDisplay": ctypes.c_void_p,
                "XDefaultRootWindow": ctypes.c_ulong,
                "XStringToKeysym": ctypes.c_ulong,
                "XKeysymToKeycode": ctypes.c_ubyte,
                "XGetImage": ctypes.POINTER(XImage),
            },
        )
        self.test = library("libXtst.so.6", {})

    def __enter__(self):
        name = self.game.environment["DISPLAY"].encode()
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(name))
        if not self.display:
            raise RuntimeError("the display cannot be opened")
        self.root = ctypes.c_ulong(self.x.XDefaultRootWindow(self.display))
        return self

    def __exit__(self, kind, value, trace):
        self.hold_only()
        self.x.XCloseDisplay(self.display)

    # Eyes -------------------------------------------------------------------------------------

    def look(self, x, y, width, height):
        """The rows of a rectangle of the window, top first: bytes of blue, green, red, unused."""
        place = [ctypes.c_int(self.game.left + x), ctypes.c_int(self.game.top + y)]
        area = (*place, width, height, ALL_PLANES, Z_PIXMAP)
        image = self.x.XGetImage(self.display, self.root, *area)
        head = image.contents
        step = head.bytes_per_line
        data = ctypes.string_at(head.data, step * height)
        self.x.XDestroyImage(image)
        return [data[row : row + 4 * width] for row in range(0, step * height, step)]

    # Hands ------------------------------------------------------------------------------------

    def hold_only(self, *keys):
        """Lets go of every key but these, and holds these."""
        for key in self.held - set(keys):
            self.put_key(key, 0)
        for key in set(keys) - self.held:
            self.put_key(key, 1)
        self.held = set(keys)

    def tap(self, *keys):
        """Presses and releases keys, each for as long as the engine takes to read it: what is up
        again by then fires nothing."""
        for key in keys:
            self.hold_only(key)
            self.game.settle()
            self.hold_only()
            self.game.settle()

    def tap_until(self, key, text):
        """Taps a key until the game prints this: some screens wait a moment before they listen."""
        end = time.monotonic() + player.PATIENCE
        while not self.game.has_heard(text) and time.monotonic() < end:
            self.tap(key)
            self.game.pass_by()
        self.game.expect(text)

    def put_key(self, key, down):
        """Presses or releases a key."""
        symbol = ctypes.c_ulong(self.x.XStringToKeysym(key.encode()))
        code = self.x.XKeysymToKeycode(self.display, symbol)
        self.test.XTestFakeKeyEvent(self.display, ctypes.c_uint(code), down, ctypes.c_ulong(0))
        self.x.XFlush(self.display)

    def point(self, x, y):
        """Moves the pointer."""
        place = (self.game.left + int(x), self.game.top + int(y))
        self.test.XTestFakeMotionEvent(self.display, -1, *place, ctypes.c_ulong(0))
        self.x.XFlush(self.display)


def pixel(red, green, blue):
    """A colour as look() returns it, without the unused byte."""
    return bytes((blue, green, red))


def find(rows, colour, width=1):
    """Where that many pixels of the colour stand side by side: a list of their first x, y."""
    wanted = (colour + rows[0][3:4]) * width  # the unused byte differs between displays
    found = []
    for y, row in enumerate(rows):
        at = row.find(wanted)
        while at >= 0:
            if at % 4 == 0:
                found.append((at // 4, y))
            at = row.find(wanted, at + 1)
    return found


def main(game, *plays):
    """Like player.main, but a play gets the game and the reflexes."""

    def with_reflexes(play):
        def whole(at):
            with Reflexes(at) as fast:
                play(at, fast)

        whole.__name__ = play.__name__
        return whole

    player.main(game, *[with_reflexes(play) for play in plays])
