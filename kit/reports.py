"""What the engine prints, taken apart: the script's own output, and reports of errors.

The engine writes both to standard output. A report has the engine's message, a line number counted
from 0 and the text before the place; it is shown as file:line:column counted from 1, with the line
and a caret. The script's own bytes pass unchanged and at once, partial lines too. Only what may be
the beginning of a report is held back for a moment: a line end, or the head of a report.
"""

import os
import re
import time
from collections import Counter
from functools import cache

from game import shown

LEVEL = b"levels/level1/"  # of which the script sees nothing

# Message, line, then the 21 bytes at most that end at the place, then END.
ERROR = re.compile(rb"\n?([^\n]{1,80}) in line (\d+)\n")
END = b"Error buffer long jump"
CONTEXT = 20  # bytes before the place

NOT_FOUND = re.compile(rb"(\w+)\(\) not found!\n")

# Two lines, the second one not for the picture of units. Neither has a line end.
PICTURE_START = re.compile(rb"\n?1Unable to load image ")
PICTURE = re.compile(
    rb"\n?1(Unable to load image ([^\n]*?)! SDL Error: "
    rb"(?:Couldn't open \2|Unsupported image format|[^\n]*))"
    rb"(\nCant load (?:SYS)?image: \2\.   (?:Parameter 'texture' is invalid)?)?")

NOT_STARTED = (b"Failed to initialize!", b"Failed to load script.txt")

# Places on standard error are counted from 1 already, but start in the game's folder.
PLACE = re.compile(rb"levels/level1//script\.txt:(\d+):(\d+): ")

# How long something is held back. A report's first line end and its parts are written one by one;
# its rest comes with the next flush, which the end of a pass of the main loop makes.
PART_SECONDS = 0.03
REST_SECONDS = 1.0


def write_all(file, data):
    while data:
        data = data[os.write(file, data):]


def readable(data):
    text = data.decode(errors="replace").replace("\t", "    ")
    return "".join(c if c.isprintable() else "?" for c in text)


class Source:
    """The script as it was when the game started."""

    def __init__(self, game):
        self.path = shown(game.script)
        self.bytes = game.script.read_bytes() if game.script.is_file() else b""

    @cache
    def find_error(self, line, context):
        """The position that the engine reports with this number of carriage returns up to it and
        with these bytes before it; None if there is none. White space after a token counts as
        the token's last character."""
        text = self.bytes + b"\0"
        returns = 0
        for position in range(len(text)):
            returns += position > 0 and text[position] == ord("\r")
            start = max(text.rfind(b"\n", 0, position + 1), position - CONTEXT, 0)
            if returns == line and text[start:position + 1] == context:
                return max(len(text[:position + 1].rstrip(b" \t\r\n\0")) - 1, 0)
        return None

    def find_text(self, text):
        """Where the script has this text in quotes, or None."""
        found = self.bytes.lower().find(b'"' + text.lower() + b'"')
        return found if found >= 0 else None

    def place(self, position):
        """Line and column, counted from 1."""
        before = self.bytes[:position]
        return before.count(b"\n") + 1, position - before.rfind(b"\n")

    def excerpt(self, line, column):
        """The line and a caret below the column, as the checker shows them."""
        text = self.bytes.split(b"\n")[line - 1].rstrip(b"\r")
        before, after = text[:column - 1], text[column - 1:][:40]
        before = readable(before if len(before) <= 70 else b"..." + before[-70:])
        return f"    {before}{readable(after)}\n    {' ' * len(before)}^\n"


class Reports:
    """The reports of one run, each shown once and counted. They go to standard error."""

    def __init__(self, game):
        self.source = Source(game)
        self.counts = Counter()
        self.line_start = True  # whether the script's output ends with a line end
        self.shares = os.fstat(1).st_ino == os.fstat(2).st_ino  # one line end serves both

    def add(self, message, position):
        head, excerpt = self.source.path, ""
        if position is not None:
            place = self.source.place(position)
            head, excerpt = f"{head}:{place[0]}:{place[1]}", self.source.excerpt(*place)
        head += f": error: {message.decode(errors='replace')}"
        self.counts[head] += 1
        if self.counts[head] == 1:
            self.show(f"{head}\n{excerpt}")
        elif re.fullmatch("10+", str(self.counts[head])):
            self.show(f"{head} ({self.counts[head]} times so far)\n")

    def show(self, text):
        if self.shares and not self.line_start:
            text = "\n" + text
            self.line_start = True
        write_all(2, text.encode(errors="replace"))

    def close(self):
        for head, count in self.counts.items():
            if count > 1:
                self.show(f"{head} ({count} times)\n")


class OutputFilter:
    """Standard output of the engine."""

    def __init__(self, reports):
        self.reports = reports
        self.pending = b""      # read, not yet shown
        self.deadline = None    # when what is held back is let go
        self.line_start = True  # whether what was shown ends with a line end
        self.failed = False     # the engine said that it could not start

    def feed(self, data):
        self.pending += data
        self.let_go()

    def close(self):
        while self.pending:
            self.let_go(is_late=True)
        self.reports.close()

    def let_go(self, is_late=False):
        """Shows what is pending, up to what must wait; is_late: its time is over."""
        self.deadline = None
        while self.pending:
            wait = 0
            if self.line_start or self.pending[:1] == b"\n":
                wait = self.take_report(is_late)
            if wait and not is_late:
                self.deadline = time.monotonic() + wait
                return
            if wait is not None:
                is_late = False
                self.show_part()

    def show_part(self):
        """Shows a line end, or what comes before the next one."""
        end = self.pending.find(b"\n")
        part = self.take(len(self.pending) if end < 0 else max(end, 1))
        self.failed |= part.endswith(NOT_STARTED)
        self.line_start = self.reports.line_start = part == b"\n"
        write_all(1, part)

    def take(self, length):
        part, self.pending = self.pending[:length], self.pending[length:]
        return part

    def take_report(self, is_late):
        """Takes a report from the start of what is pending: returns None if there was one, 0 if
        there is none, else how long to wait for the rest of what may be one."""
        if found := ERROR.match(self.pending):
            return self.take_error(found)
        if found := NOT_FOUND.match(self.pending):
            self.take(found.end())
            self.reports.add(found[0].strip(), self.reports.source.find_text(found[1]))
            return None
        if PICTURE_START.match(self.pending):
            return self.take_picture(PICTURE.match(self.pending), is_late)
        return PART_SECONDS if self.pending == b"\n" else 0

    def take_error(self, found):
        rest = self.pending[found.end():]
        length = rest.find(END)
        if 0 <= length <= CONTEXT + 1:
            self.take(found.end() + length + len(END))
            position = self.reports.source.find_error(int(found[2]), rest[:length])
            self.reports.add(found[1], position)
            return None
        starts = range(min(len(rest), CONTEXT + 1) + 1)
        return REST_SECONDS if any(END.startswith(rest[start:]) for start in starts) else 0

    def take_picture(self, found, is_late):
        if not found:
            return PART_SECONDS
        rest = self.pending[found.end():]
        seconds = [b"\nCant load %simage: %s.   " % (kind, found[2]) for kind in (b"", b"SYS")]
        if not found[3] and not is_late and any(second.startswith(rest) for second in seconds):
            return PART_SECONDS
        self.take(found.end())
        path = found[2].removeprefix(LEVEL)
        self.reports.add(found[1], self.reports.source.find_text(path))
        return None


class ErrorFilter:
    """Standard error of the engine and of the libraries it uses."""

    deadline = None

    def __init__(self, reports):
        self.reports = reports

    def feed(self, data):
        source = self.reports.source
        for line in data.replace(b"Ctrl-C twice", b"Ctrl-C").splitlines(keepends=True):
            place = PLACE.match(line)
            excerpt = source.excerpt(int(place[1]), int(place[2])) if place else ""
            head = source.path.encode()
            line = PLACE.sub(lambda place: b"%s:%s:%s: " % (head, place[1], place[2]), line)
            self.reports.show(line.decode(errors="replace") + excerpt)

    def close(self):
        pass
