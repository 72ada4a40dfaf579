"""Keeps the game's window where it is when the game is started anew.

Window managers place a new window as they like. Under X the kit notes where the old one was and
moves the new one there as soon as it is shown. Wayland lets no program do that.
"""

import ctypes
import time

FIND_SECONDS = 60.0   # how long the window of a new game is looked for
AGAIN_SECONDS = 10.0  # and, as SDL may make it anew for the renderer, a second one
LOOK_SECONDS = 0.03
MOST_NUMBERS = 1024  # of a property


@ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)
def ignore_error(_display, _event):
    """A window may go away while it is asked; without a handler Xlib would end the process."""
    return 0


def connect():
    """Xlib and a display; the display is null where there is none."""
    try:
        x = ctypes.CDLL("libX11.so.6")
    except OSError:
        return None, None
    x.XOpenDisplay.restype = ctypes.c_void_p
    x.XDefaultRootWindow.restype = x.XInternAtom.restype = ctypes.c_ulong
    x.XSetErrorHandler(ignore_error)
    return x, ctypes.c_void_p(x.XOpenDisplay(None))


class Window:
    """The window of the one game that runs. Does nothing where there is no X display, or no window
    manager that lists its windows."""

    def __init__(self):
        self.x, self.display = connect()
        self.place = None    # x, y of the decoration's corner, as the last game left it
        self.process = None  # whose window is looked for
        self.end = 0         # until when
        self.moved = None    # the last window that was moved: each is moved once only

    def leave(self, process):
        """Notes where the window of this process is."""
        window = self.find(process)
        if window:
            self.place = self.outer_corner(window)

    def enter(self, process):
        """The window of this process is to be put where the last one was."""
        if self.place:
            self.process, self.end = process, time.monotonic() + FIND_SECONDS
            self.moved = None

    def settle(self):
        """Moves the new window if it is there. Returns when to look again, or None."""
        now = time.monotonic()
        if not self.process or now > self.end:
            self.process = None
            return None
        window = self.find(self.process)
        if window and window != self.moved and self.numbers(window, b"WM_STATE"):
            self.x.XMoveWindow(self.display, ctypes.c_ulong(window), *self.place)
            self.x.XFlush(self.display)
            self.moved, self.end = window, now + AGAIN_SECONDS
        return now + LOOK_SECONDS

    def find(self, process):
        """The window of a process among those that the window manager manages, or None."""
        if not self.display:
            return None
        windows = self.numbers(self.x.XDefaultRootWindow(self.display), b"_NET_CLIENT_LIST")
        return next((window for window in windows
                     if self.numbers(window, b"_NET_WM_PID") == [process]), None)

    def outer_corner(self, window):
        """Where the decoration around a window begins."""
        x, y, child = ctypes.c_int(), ctypes.c_int(), ctypes.c_ulong()
        root = ctypes.c_ulong(self.x.XDefaultRootWindow(self.display))
        self.x.XTranslateCoordinates(self.display, ctypes.c_ulong(window), root, 0, 0,
                                     ctypes.byref(x), ctypes.byref(y), ctypes.byref(child))
        left, _, top, _ = self.numbers(window, b"_NET_FRAME_EXTENTS") or (0, 0, 0, 0)
        return x.value - left, y.value - top

    def numbers(self, window, name):
        """The numbers of a window's property; empty if it has none."""
        atom = ctypes.c_ulong(self.x.XInternAtom(self.display, name, 0))
        kind, count, left = ctypes.c_ulong(), ctypes.c_ulong(), ctypes.c_ulong()
        size, data = ctypes.c_int(), ctypes.POINTER(ctypes.c_ulong)()
        self.x.XGetWindowProperty(
            self.display, ctypes.c_ulong(window), atom, ctypes.c_long(0),
            ctypes.c_long(MOST_NUMBERS), 0, ctypes.c_ulong(0), ctypes.byref(kind),
            ctypes.byref(size), ctypes.byref(count), ctypes.byref(left), ctypes.byref(data))
        values = data[:count.value] if data and size.value == 32 else []
        if data:
            self.x.XFree(data)
        return values
