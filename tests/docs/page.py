"""Reads a page of the documentation: its fenced blocks and what belongs to each.

Every block marked "c" is a whole level script. What follows it up to the next script or heading may
hold what the page says of the run, in blocks marked "text": standard output, or standard error
under the comment <!-- standard error -->. A script without such a block prints nothing.
Further comments, invisible to readers, tell how to run a script; they are above its blocks:

    <!-- input: key space, mousemove 10 20 -->  in a virtual display, with these keys and moves
    <!-- types: y -->                           with this line on standard input
    <!-- line ends: LF -->                      with bare line feeds in place of CR LF
    <!-- status: 1 -->                          the run ends by itself with this exit status

A block whose first line has WRONG and RIGHT in comments holds two scripts side by side. The last
line says what each one prints: an error is its message only, three dots leave the rest out. Without
a main, a script is the inside of one. "status wrong" and "status right" belong to one of the two.
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


    def columns(self):
        """The two scripts of a block that has them side by side, as lines; else nothing."""
        lines = self.text.splitlines()
        head = PAIR.fullmatch(lines[0]) if lines else None
        if not head:
            return []
        right = head.start(1)
        return [[line[:right].rstrip() for line in lines], [line[right:] for line in lines]]


PAIR = re.compile(r"// WRONG +(// RIGHT)")
PRINTS = "// prints: "
MARK = re.compile(r"<!--\s*([a-z ]+?)\s*(?::\s*(.*?))?\s*-->")


def read_blocks(text):
    """All fenced blocks of a page."""
    blocks, heading, marks, body = [], "", {}, None
    for number, line in enumerate(text.split("\n"), 1):
        if body is not None:
            if line == "```":
                blocks.append(Block(start, heading, info, "".join(body), marks))
                body, marks = None, {}
            else:
                body.append(line + "\n")
        elif line.startswith("```"):
            start, info, body = number, line[3:].strip(), []
        elif line.startswith("#"):
            heading, marks = line, {}
        elif MARK.fullmatch(line.strip()):
            name, value = MARK.fullmatch(line.strip()).groups()
            marks[name] = value or ""
    if body is not None:
        raise ValueError(f"the block of line {start} is not closed")
    return blocks


def read_pair(block):
    """The wrong and the right script of a block."""
    for word, lines in zip(("wrong", "right"), block.columns()):
        said = lines[-1].removeprefix(PRINTS)
        script = "\n".join(lines[1:-1]).rstrip() + "\n"
        if "int main()" not in script:
            script = "int main()\n{\n" + script + "}\n"
        marks = {name.removesuffix(" " + word): value for name, value in block.marks.items()
                 if not name.endswith(" right" if word == "wrong" else " wrong")}
        yield Example(block.line, block.heading, script, "" if said == "nothing" else said,
                      marks={**marks, word: ""})


def read_examples(text):
    """All scripts of a page, each with what the page says of its run."""
    examples = []
    for block in read_blocks(text):
        if block.info == "c" and block.columns():
            examples += read_pair(block)
        elif block.info == "c":
            example = Example(block.line, block.heading, block.text, marks=dict(block.marks))
            examples.append(example)
        elif block.info == "text" and examples and examples[-1].heading == block.heading:
            if "standard error" in block.marks:
                examples[-1].err = block.text
            else:
                examples[-1].out = block.text
            examples[-1].marks.update(block.marks)
    return examples
