#!/usr/bin/python3
"""Makes docs/cheatsheet.md, and from the same contents docs/cheatsheet.pdf, two pages to print.

    make_cheatsheet.py               needs weasyprint for the PDF
    make_cheatsheet.py --page        prints the page only, with nothing but the standard library

The built-ins come from script/host/builtin_list.h, their calls, words and groups and the key codes
from docs/builtins.md, the language and the level from the files beside this one. The PDF names the
page that it was made with: its keywords hold that page's SHA-256.
"""

import hashlib
import html
import re
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
# What a test plays of the level, after a second to the right and one to the left.
PLAY = 'run 1000; images "x=292 y=200"; key tap left; run 1000; images "x=92 y=200"'
CODE = re.compile(r"`([^`]+)`")


# Contents -----------------------------------------------------------------------------------------


def table_rows(text):
    """The cells of a Markdown table, without its head."""
    lines = [line for line in text.splitlines() if line.startswith("|")]
    return [[cell.strip() for cell in line.strip("|").split(" | ")] for line in lines[2:]]


def plain(words):
    """Words of a page without links and bold type."""
    return re.sub(r"\[([^\]]+)\]\([^)]*\)", r"\1", words).replace("**", "")


def entries(chapter):
    """The built-ins of a chapter: the call, and the first sentence that is said of it."""
    for name, call, words in re.findall(r"^### `(\w+)`\n\n(.+)\n\n((?:.+\n)+)", chapter, re.M):
        sentence = re.match(r"(.+?[.:])(?: |$)(?=[A-Z`]|$)", " ".join(words.split()))
        yield name, re.findall(CODE, call), plain(sentence[1] if sentence else words)


def builtin_groups():
    """The chapters of docs/builtins.md that have built-ins: title and entries. All 40 are there."""
    page = (ROOT / "docs/builtins.md").read_text(encoding="utf-8")
    table = (ROOT / "script/host/builtin_list.h").read_text(encoding="utf-8")
    chapters = re.findall(r"^## ([^\n]+)\n(.*?)(?=^## |\Z)", page, re.M | re.S)
    groups = [(title, list(entries(text))) for title, text in chapters]
    names = sorted(name for _, found in groups for name, _, _ in found)
    if names != sorted(re.findall(r"^\s*X\((\w+),", table, re.M)):
        sys.exit("docs/builtins.md does not have the built-ins of builtin_list.h")
    return [group for group in groups if group[1]]


def key_codes():
    """Keys and codes."""
    page = (ROOT / "docs/builtins.md").read_text(encoding="utf-8")
    rows = table_rows(re.search(r"^\| Key \|(?:.*\n)+?\n", page, re.M)[0])
    pairs = [(row[n], row[n + 1]) for n in (0, 2, 4) for row in rows]
    return sorted((pair for pair in pairs if pair[0]),
                  key=lambda pair: int(re.match(r"\d+", pair[1])[0]))


def habits():
    """The habits that docs/language.md begins with."""
    page = (ROOT / "docs/language.md").read_text(encoding="utf-8")
    chapter = re.search(r"^## Ten habits\n(.*?)^## ", page, re.M | re.S)[1]
    return re.findall(r"^\d+\. (.+)$", chapter, re.M)


def language():
    return table_rows((HERE / "language.md").read_text(encoding="utf-8"))


def level():
    return (HERE / "level.txt").read_text(encoding="utf-8")


# The page -----------------------------------------------------------------------------------------


def page():
    lines = ["# Cheat sheet", "",
             "Zel on two pages, also [to print](cheatsheet.pdf). More about each function is in",
             "[builtins.md](builtins.md), and the language is in [language.md](language.md).", "",
             "## The language", "", "| Write | It means |", "|---|---|"]
    lines += [f"| {code} | {words} |" for code, words in language()]
    lines += ["", "## Ten habits", ""]
    lines += [f"{number}. {habit}" for number, habit in enumerate(habits(), 1)]
    lines += ["", "## A level", "", f"<!-- play: {PLAY} -->", "```c", level().rstrip(), "```", "",
              "## Key codes", "", "| Key | Code |", "|---|---|"]
    lines += [f"| {key} | {code} |" for key, code in key_codes()]
    for title, found in builtin_groups():
        lines += ["", f"## {title}", "", "| Call | What it does |", "|---|---|"]
        for name, calls, words in found:
            links = " or ".join(f"[`{call}`](builtins.md#{name})" for call in calls)
            lines.append(f"| {links} | {words} |")
    return "\n".join(lines) + "\n"


# The PDF ------------------------------------------------------------------------------------------


def marked(words):
    return CODE.sub(r"<code>\1</code>", html.escape(words, quote=False))


def rows(pairs):
    return "".join(f"<tr><td>{marked(a)}</td><td>{marked(b)}</td></tr>" for a, b in pairs)


def box(title, inside):
    return f"<section><h2>{title}</h2>{inside}</section>"


def key_table():
    """The key codes, two keys in a row."""
    pairs = key_codes()
    half = (len(pairs) + 1) // 2
    cells = [f"<td>{key}</td><td>{code}</td>" for key, code in pairs] + ["<td></td><td></td>"]
    joined = "".join(f"<tr>{cells[n]}{cells[n + half]}</tr>" for n in range(half))
    return f'<table class="keys">{joined}</table>'


def coloured(script):
    """A script with its comments and texts in colours."""
    script = html.escape(script, quote=False)
    script = re.sub(r'("[^"]*")', r"<b>\1</b>", script)
    return re.sub(r"(//.*)", r"<i>\1</i>", script)


def document():
    """Both pages as HTML."""
    items = "".join(f"<li>{marked(habit)}</li>" for habit in habits())
    first = box("The language", f"<table>{rows(language())}</table>") \
        + box("Ten habits", f"<ol>{items}</ol>") \
        + box("A level: levels/level1/script.txt", f"<pre>{coloured(level())}</pre>") \
        + box("Key codes", key_table())
    second = "".join(
        box(title, "<table>" + rows((" or ".join(f"`{call.rstrip(';')}`" for call in calls), words)
                                    for _, calls, words in found) + "</table>")
        for title, found in builtin_groups())
    digest = hashlib.sha256(page().encode()).hexdigest()
    style = (HERE / "style.css").read_text(encoding="utf-8")
    head = f'<meta name="keywords" content="{digest}"><style>{style}</style>'
    return (f'<html lang="en"><head><title>Zel: cheat sheet</title>{head}</head><body>'
            f"<h1>Zel <span>the language on one page</span></h1><main>{first}</main>"
            f'<h1 class="next">Zel <span>the 40 built-in functions</span></h1>'
            f"<main>{second}</main></body></html>")


def main():
    if sys.argv[1:] == ["--page"]:
        print(page(), end="")
        return
    from weasyprint import HTML  # only here: the page can be made without it
    (ROOT / "docs/cheatsheet.md").write_text(page(), encoding="utf-8")
    HTML(string=document()).write_pdf(ROOT / "docs/cheatsheet.pdf")


if __name__ == "__main__":
    main()
