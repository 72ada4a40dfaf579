"""Reads a page of the documentation: its fenced blocks and what belongs to each.

Every block marked "c" is a whole level script. What follows it up to the next script or heading may
hold what the page says of the run, in blocks marked "text": standard output, or standard error
under the comment <!-- standard error -->. A script without such a block prints nothing.
Further comments, invisible to readers, tell how to run a script; they stand above its blocks:

    <!-- input: key space, mousemove 10 20 -->  in a virtual display, with these keys and moves
    <!-- types: y -->                           with this line on standard input
    <!-- line ends: LF -->                      with bare line feeds in place of CR LF
    <!-- status: 1 -->                          the run ends by itself with this exit status
"""

import re
from dataclasses import dataclass, field


@dataclass
class Example:
    """A script and what the page says of its run."""

    line: int
    heading: str
    script: str = ""
    out: str = ""
    err: str = ""
    marks: dict = field(default_factory=dict)


@dataclass
class Block:
    """A fenced block, the heading above it and the comments since the block before it."""

    line: int
    heading: str
    info: str
    text: str
    marks: dict
    lead: str  # the first line of the paragraph above the block


MARK = re.compile(r"<!--\s*([a-z ]+?)\s*(?::\s*(.*?))?\s*-->")


def read_blocks(text):
    """All fenced blocks of a page."""
    blocks, heading, marks, lead, body = [], "", {}, "", None
    above = ""
    for number, line in enumerate(text.split("\n"), 1):
        if body is not None:
            if line == "```":
                blocks.append(Block(start, heading, info, "".join(body), marks, lead))
                body, marks, lead = None, {}, ""
            else:
                body.append(line + "\n")
        elif line.startswith("```"):
            start, info, body = number, line[3:].strip(), []
        elif line.startswith("#"):
            heading, marks, lead = line, {}, ""
        elif MARK.fullmatch(line.strip()):
            name, value = MARK.fullmatch(line.strip()).groups()
            marks[name] = value or ""
        elif line.strip() and not above.strip():
            lead = line
        above = line
    if body is not None:
        raise ValueError(f"the block of line {start} is not closed")
    return blocks


def read_examples(text):
    """All scripts of a page, each with what the page says of its run."""
    examples = []
    for block in read_blocks(text):
        if block.info == "c":
            example = Example(block.line, block.heading, block.text, marks=dict(block.marks))
            examples.append(example)
        elif block.info == "text" and examples and examples[-1].heading == block.heading:
            if "standard error" in block.marks:
                examples[-1].err = block.text
            else:
                examples[-1].out = block.text
            examples[-1].marks.update(block.marks)
    return examples
