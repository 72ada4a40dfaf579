"""Asks the engine's window whether it has read its events, as a window manager does.

    pings = Pings(":7")
    pings.wait_for(window)      # returns once the events sent before have been read, or it is gone

The library that reads the window's events answers in the order in which they come, so neither the
script nor the length of a frame matters. A key that is still down when the answer has come was down
when its event was read.
"""

import ctypes
import select
import time

from process import PATIENCE

CLIENT_MESSAGE = 33
SUBSTRUCTURE_NOTIFY = 1 << 19  # the answers come as events of the root window
FIRST_NUMBER = 1000000  # the window manager counts its own from 1
AGAIN = 1  # seconds until a ping is repeated: the window may have gone before it read the first


class ClientMessage(ctypes.Structure):
    """Xlib's XClientMessageEvent, as long as any event."""

    _fields_ = [
        ("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("sent", ctypes.c_int),
        ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("kind", ctypes.c_ulong),
        ("format", ctypes.c_int), ("words", ctypes.c_long * 5), ("rest", ctypes.c_long * 12),
    ]


# What Xlib complains of, which would otherwise end the process: a window that is gone.
gErrors = []


@ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)
def note_error(_display, _event):
    gErrors.append("no such window")
    return 0


class Pings:
    """A connection to a display of its own."""

    def __init__(self, display):
        self.x = ctypes.CDLL("libX11.so.6")
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        self.x.XSetErrorHandler(note_error)
        self.x.XDefaultRootWindow.restype = self.x.XInternAtom.restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(display.encode()))
        if not self.display:
            raise RuntimeError("the display cannot be opened")
        self.root = ctypes.c_ulong(self.x.XDefaultRootWindow(self.display))
        self.protocols = self.x.XInternAtom(self.display, b"WM_PROTOCOLS", 0)
        self.ping = self.x.XInternAtom(self.display, b"_NET_WM_PING", 0)
        self.x.XSelectInput(self.display, self.root, ctypes.c_long(SUBSTRUCTURE_NOTIFY))
        self.x.XSync(self.display, 0)
        self.number = FIRST_NUMBER

    def close(self):
        self.x.XCloseDisplay(self.display)

    def wait_for(self, window):
        """Waits until the window has read all events that were sent before. False if it is gone."""
        self.number += 1
        gErrors.clear()
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            self.send(window, self.ping)
            again = time.monotonic() + AGAIN
            while time.monotonic() < again:
                if self.has_answer():
                    return True
                if gErrors:
                    return False
                select.select([self.x.XConnectionNumber(self.display)], [], [], AGAIN)
        raise AssertionError(f"the window did not read its events within {PATIENCE} s")

    def ask_to_close(self, window):
        """What a window manager does when its user closes the window."""
        self.send(window, self.x.XInternAtom(self.display, b"WM_DELETE_WINDOW", 0))

    def send(self, window, protocol):
        """Sends the window a message of the window manager's."""
        words = (ctypes.c_long * 5)(protocol, self.number, window)
        event = ClientMessage(CLIENT_MESSAGE, 0, 0, None, window, self.protocols, 32, words)
        self.x.XSendEvent(self.display, ctypes.c_ulong(window), 0, ctypes.c_long(0),
                          ctypes.byref(event))
        self.x.XFlush(self.display)

    def has_answer(self):
        """Takes the events that are there; true if the answer was one of them."""
        event = ClientMessage()
        found = False
        while self.x.XPending(self.display):
            self.x.XNextEvent(self.display, ctypes.byref(event))
            found |= event.type == CLIENT_MESSAGE and event.words[1] == self.number
        return found
