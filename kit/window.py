"""Keeps the game's window where it is when the game is started anew.

Window managers place a new window as they like. Under X the kit notes where the old one was and
moves the new one there as soon as it is shown. Wayland lets no program do that.
"""

import ctypes
import time

FIND_SECONDS = 3.0  # how long the window of a new game is looked for
LOOK_SECONDS = 0.02
ANY_TYPE = 0
MOST_WORDS = 1024


@ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)
def ignore_error(_display, _event):
    """A window may go away while it is asked; without a handler Xlib would end the process."""
    return 0


class Window:
    """The window of the one game that runs. Does nothing where there is no X display, or no window
    manager that lists its windows."""

    def __init__(self):
        self.place = None  # x, y of the frame's corner, as the last game left it
        self.sought = None  # process and time until when its window is looked for
        try:
            self.x = ctypes.CDLL("libX11.so.6")
        except OSError:
            self.display = None
            return
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        self.x.XDefaultRootWindow.restype = self.x.XInternAtom.restype = ctypes.c_ulong
        self.x.XSetErrorHandler(ignore_error)
        display = self.x.XOpenDisplay(None)
        self.display = ctypes.c_void_p(display) if display else None
        if self.display:
            self.root = self.x.XDefaultRootWindow(self.display)

    def leave(self, process):
        """Notes where the window of this process is."""
        window = self.find(process)
        if window:
            self.place = self.frame_corner(window)

    def enter(self, process):
        """The window of this process is to be put where the last one was."""
        if self.display and self.place:
            self.sought = (process, time.monotonic() + FIND_SECONDS)

    def deadline(self):
        """When to look again for the new window, or None."""
        return time.monotonic() + LOOK_SECONDS if self.sought else None

    def settle(self):
        """Moves the new window if it is there."""
        if not self.sought:
            return
        process, end = self.sought
        window = self.find(process)
        if window and self.property(window, b"WM_STATE"):
            self.x.XMoveWindow(self.display, ctypes.c_ulong(window), *self.place)
            self.x.XFlush(self.display)
        elif time.monotonic() < end:
            return
        self.sought = None

    def find(self, process):
        """The window of a process among those that the window manager manages, or None."""
        if not self.display:
            return None
        windows = self.property(self.root, b"_NET_CLIENT_LIST")
        return next((window for window in windows
                     if self.property(window, b"_NET_WM_PID") == [process]), None)

    def frame_corner(self, window):
        """Where the frame around a window begins."""
        x, y, child = ctypes.c_int(), ctypes.c_int(), ctypes.c_ulong()
        self.x.XTranslateCoordinates(
            self.display, ctypes.c_ulong(window), ctypes.c_ulong(self.root), 0, 0,
            ctypes.byref(x), ctypes.byref(y), ctypes.byref(child))
        left, _, top, _ = self.property(window, b"_NET_FRAME_EXTENTS") or (0, 0, 0, 0)
        return x.value - left, y.value - top

    def property(self, window, name):
        """The numbers of a window's property; empty if it has none."""
        kind, size, count, left = (ctypes.c_ulong(), ctypes.c_int(), ctypes.c_ulong(),
                                   ctypes.c_ulong())
        data = ctypes.POINTER(ctypes.c_ulong)()
        self.x.XGetWindowProperty(
            self.display, ctypes.c_ulong(window), ctypes.c_ulong(self.atom(name)),
            ctypes.c_long(0), ctypes.c_long(MOST_WORDS), 0, ctypes.c_ulong(ANY_TYPE),
            ctypes.byref(kind), ctypes.byref(size), ctypes.byref(count), ctypes.byref(left),
            ctypes.byref(data))
        values = data[:count.value] if data and size.value == 32 else []
        if data:
            self.x.XFree(data)
        return values

    def atom(self, name):
        return self.x.XInternAtom(self.display, name, 0)
