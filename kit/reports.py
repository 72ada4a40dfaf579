"""What the engine prints, taken apart: the script's own output, and reports of errors.

The engine writes both to standard output. A report has the engine's message, a line number counted
from 0 and the text before the place; it is shown as file:line:column counted from 1, with the line
and a caret. The script's own bytes pass unchanged and at once, partial lines too. Only what may be
the beginning of a report is held back for a moment: a line end, or the head of a report.
"""

import os
import re
import sys
import time
from collections import Counter

from game import shown

# message in line N, up to 21 bytes before the place, the words after every jump
HEAD = re.compile(rb"\n?([^\n]{1,80}) in line (\d+)\n")
END = b"Error buffer long jump"
MOST_CONTEXT = 21

NOT_FOUND = re.compile(rb"(\w+)\(\) not found!\n")
PICTURE_HEAD = (b"\n1Unable to load image ", b"1Unable to load image ")
PICTURE = re.compile(
    rb"\n?1(Unable to load image ([^\n]*?)! SDL Error: "
    rb"(?:Couldn't open \2|Unsupported image format|[^\n]*))"
    rb"(?:\nCant load image: \2\.   (?:Parameter 'texture' is invalid)?)?")
NOT_STARTED = (b"Failed to initialize!", b"Failed to load script.txt")

# Places on standard error are counted from 1 already, but start in the game's folder.
PLACE = re.compile(rb"levels/level1//script\.txt:(\d+):(\d+): ")

LEVEL = b"levels/level1/"

# How long something is held back. The line end of a report is written apart from its message; the
# rest of a report comes with the next flush, which the end of a pass of the main loop makes.
LINE_END_SECONDS = 0.03
REPORT_SECONDS = 1.0


def write_all(file, data):
    while data:
        data = data[os.write(file, data):]


class Source:
    """The script as it was when the game started."""

    def __init__(self, game):
        self.path = shown(game.script)
        self.bytes = game.script.read_bytes()

    def find_error(self, line, context):
        """Where the engine was when it reported this: the position whose number of carriage returns
        before it and whose preceding text are the reported ones. None if there is none."""
        text = self.bytes + b"\0"
        returns = 0
        for position in range(len(text)):
            returns += position > 0 and text[position] == 13
            if returns != line:
                continue
            start = max(text.rfind(b"\n", 0, position + 1), position - 20, 0)
            if text[start:position + 1] == context:
                return self.skip_back(text, position)
        return None

    @staticmethod
    def skip_back(text, position):
        """White space after a token is shown as the token's last character."""
        while position > 0 and text[position] in b" \t\r\n\0":
            position -= 1
        return position

    def find_text(self, text):
        """Where the script has this text in quotes, or None."""
        found = self.bytes.lower().find(b'"' + text.lower() + b'"')
        return found if found >= 0 else None

    def place(self, position):
        """Line and column, counted from 1."""
        start = self.bytes.rfind(b"\n", 0, position) + 1
        return self.bytes.count(b"\n", 0, position) + 1, position - start + 1

    def excerpt(self, line, column):
        """The line and a caret below the column, as the checker shows them."""
        lines = self.bytes.split(b"\n")
        text = lines[line - 1].rstrip(b"\r") if line <= len(lines) else b""
        before, after = text[:column - 1], text[column - 1:]
        if len(before) > 70:
            before = b"..." + before[-70:]
        before, after = (readable(part) for part in (before, after[:40]))
        return f"    {before}{after}\n    {' ' * len(before)}^\n"


def readable(data):
    text = data.decode(errors="replace").replace("\t", "    ")
    return "".join(c if c.isprintable() else "?" for c in text)


class Reports:
    """The reports of one run, each shown once and counted. They go to standard error."""

    def __init__(self, game):
        self.source = Source(game)
        self.counts = Counter()
        self.starts_line = lambda: True  # whether standard output is at the start of a line
        streams = [os.fstat(file) for file in (1, 2)]
        self.shares = streams[0].st_ino == streams[1].st_ino  # a line break for one serves both

    def add(self, message, position=None, line=None):
        head, excerpt = f"{self.source.path}: error: {message}", ""
        if position is not None:
            line, column = self.source.place(position)
            head = f"{self.source.path}:{line}:{column}: error: {message}"
            excerpt = self.source.excerpt(line, column)
        elif line is not None:
            head = f"{self.source.path}:{line}: error: {message}"
        self.counts[head] += 1
        count = self.counts[head]
        if count == 1:
            self.show(f"{head}\n{excerpt}")
        elif count in (10, 100, 1000, 10000, 100000, 1000000):
            self.show(f"{head} ({count} times so far)\n")

    def show(self, text):
        if self.shares and not self.starts_line():
            text = "\n" + text
        write_all(2, text.encode(errors="replace"))

    def close(self):
        for head, count in self.counts.items():
            if count > 1:
                self.show(f"{head} ({count} times)\n")


class OutputFilter:
    """Standard output of the engine."""

    def __init__(self, reports):
        self.reports = reports
        self.pending = b""       # read, not yet shown
        self.line_start = True   # whether all that was shown ends with a line end
        self.deadline = None     # when what is held back is let go
        self.failed = False      # the engine said that it could not start
        reports.starts_line = lambda: self.line_start

    def feed(self, data):
        self.pending += data
        self.scan()

    def give_up_waiting(self):
        """The deadline has come: what was held back is no report."""
        self.deadline = None
        self.scan(is_late=True)

    def close(self):
        while self.pending:
            self.scan(is_late=True)
        self.reports.close()

    def scan(self, is_late=False):
        self.deadline = None
        while self.pending:
            if not self.line_start and self.pending[:1] != b"\n":
                self.emit_line()
                continue
            wait = self.take_report(is_late)
            if wait and not is_late:
                self.deadline = time.monotonic() + wait
                return
            if wait is None:
                continue
            is_late = False
            if self.pending[:1] == b"\n":
                self.emit(1)
            else:
                self.emit_line()

    def emit_line(self):
        """Lets go what comes before the next line end."""
        end = self.pending.find(b"\n")
        self.emit(end if end >= 0 else len(self.pending))

    def emit(self, count):
        data, self.pending = self.pending[:count], self.pending[count:]
        if data:
            self.failed |= data.endswith(NOT_STARTED)
            self.line_start = data.endswith(b"\n")
            write_all(1, data)

    def take_report(self, is_late):
        """Takes a report from the start of what is pending: returns None if there was one, 0 if
        there is none, else how long to wait for the rest of what may be one."""
        wait = self.take_error()
        if wait == 0:
            wait = self.take_not_found()
        if wait == 0:
            wait = self.take_picture(is_late)
        return LINE_END_SECONDS if wait == 0 and self.pending == b"\n" else wait

    def take(self, length):
        self.pending = self.pending[length:]

    def take_error(self):
        head = HEAD.match(self.pending)
        if not head:
            return 0
        rest = self.pending[head.end():]
        length = rest.find(END)
        if 0 <= length <= MOST_CONTEXT:
            message, line = head[1].decode(errors="replace"), int(head[2])
            position = self.reports.source.find_error(line, rest[:length])
            self.take(head.end() + length + len(END))
            self.reports.add(message, position, line + 1)
            return None
        starts = range(min(len(rest), MOST_CONTEXT) + 1)
        if not any(END.startswith(rest[start:]) for start in starts):
            return 0
        return REPORT_SECONDS

    def take_not_found(self):
        found = NOT_FOUND.match(self.pending)
        if not found:
            return 0
        self.take(found.end())
        self.reports.add(found[0].strip().decode(errors="replace"),
                         self.reports.source.find_text(found[1]))
        return None

    def take_picture(self, is_late):
        if not self.pending.startswith(PICTURE_HEAD):
            return 0
        found = PICTURE.match(self.pending)
        if not is_late and (not found or self.picture_goes_on(found)):
            return LINE_END_SECONDS
        if not found:
            return 0
        self.take(found.end())
        path = found[2].removeprefix(LEVEL)
        self.reports.add(found[1].decode(errors="replace"), self.reports.source.find_text(path))
        return None

    def picture_goes_on(self, found):
        """Whether the second line about a picture may still come."""
        second = b"\nCant load image: " + found[2] + b".   "
        return second not in found[0] and second.startswith(self.pending[found.end():])


class ErrorFilter:
    """Standard error of the engine, and of the libraries it uses."""

    deadline = None

    def __init__(self, reports):
        self.reports = reports

    def feed(self, data):
        # Here one Ctrl-C is enough.
        data = data.replace(b"Ctrl-C twice", b"Ctrl-C")
        source = self.reports.source
        for line in data.splitlines(keepends=True):
            text = PLACE.sub(lambda place: b"%s:%s:%s: " % (
                source.path.encode(), place[1], place[2]), line)
            place = PLACE.match(line)
            excerpt = source.excerpt(int(place[1]), int(place[2])) if place else ""
            self.reports.show(text.decode(errors="replace") + excerpt)

    def give_up_waiting(self):
        pass

    def close(self):
        sys.stderr.flush()
