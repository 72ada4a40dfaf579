"""Types the steps of the tutorial by the instructions that its readers see.

An instruction is a line in bold. It quotes a line of the script, as the reader has it on the screen
by then, and a block of code follows it:

    **Write this:**                           the whole script
    **Add this above `LINE`:**                also with "below"
    **Change `LINE` to this:**
    **Change the function `NAME` to this:**   with the comment above it
    **Remove `LINE`.**                        no block follows; "in `NAME`" looks there only

A quoted line must be there exactly once. A block that begins a function, a comment or a variable at
the left margin is kept apart from what surrounds it by an empty line.
"""

import re

INSTRUCTION = re.compile(
    r"\*\*(?P<verb>Write|Add|Change|Remove) ?(?:this)? ?(?P<where>above|below)? ?"
    r"(?P<function>the function )?(?:`(?P<quoted>[^`]+)`)?(?: in `(?P<inside>\w+)`)?(?: to this)?"
    r"[:.]\*\*")


class CannotType(Exception):
    """An instruction that a reader could not follow."""


def function_range(lines, name):
    """The first line and the one after the last of a function, with the comment above it."""
    starts = [n for n, line in enumerate(lines) if re.match(rf"int {name}\(", line)]
    if len(starts) != 1:
        raise CannotType(f"{len(starts)} functions {name}")
    end = lines.index("}", starts[0]) + 1
    first = starts[0]
    while first > 0 and lines[first - 1].startswith("//"):
        first -= 1
    return first, end


def line_number(lines, quoted, inside):
    """Where the quoted line is."""
    first, end = function_range(lines, inside) if inside else (0, len(lines))
    found = [n for n in range(first, end) if lines[n].strip() == quoted]
    if len(found) != 1:
        raise CannotType(f"{len(found)} lines are {quoted!r}")
    return found[0]


def add(lines, at, block):
    """The lines with the block before line `at`, apart from its neighbours if it begins a part."""
    if not re.match(r"int |//", block[0]):
        return lines[:at] + block + lines[at:]
    before = [""] if at > 0 and lines[at - 1] else []
    after = [""] if at < len(lines) and lines[at] else []
    if before and lines[at - 1].startswith("//"):
        raise CannotType(f"{block[0]!r} would come between a comment and what it is about")
    return lines[:at] + before + block + after + lines[at:]


def follow(lines, instruction, block):
    """The script after one instruction."""
    if instruction["verb"] == "Write":
        return block
    if instruction["function"]:
        first, end = function_range(lines, instruction["quoted"])
        return add(lines[:first] + lines[end:], first, block) if block else lines
    at = line_number(lines, instruction["quoted"], instruction["inside"])
    if instruction["verb"] == "Add":
        return add(lines, at + (instruction["where"] == "below"), block)
    return lines[:at] + block + lines[at + 1:]


def parts(chapter):
    """The instructions of a chapter, each with the lines of the block that follows it."""
    blocks = list(re.finditer(r"(?:(<!-- whole -->)\n+)?^```c\n(.*?)^```$", chapter, re.M | re.S))
    todo = list(INSTRUCTION.finditer(chapter))
    loose = [line for line in re.findall(r"^\*\*(?:Write|Add|Change|Remove).*", chapter, re.M)
             if not INSTRUCTION.fullmatch(line)]
    if loose:
        raise CannotType(f"not understood: {loose[0]}")
    shown = [block for block in blocks if not block[1]]
    for instruction in todo:
        if instruction["verb"] == "Remove":
            yield instruction, []
        elif not shown or chapter[instruction.end():shown[0].start()].strip():
            raise CannotType(f"no code follows {instruction[0]}")
        else:
            yield instruction, shown.pop(0)[2].splitlines()
    if shown:
        raise CannotType(f"nothing says what to do with {shown[0][2]!r}")


def type_step(script, chapter):
    """The script after all instructions of a chapter."""
    lines = script.splitlines()
    for instruction, block in parts(chapter):
        lines = follow(lines, instruction, block)
    return "\n".join(lines) + "\n"
