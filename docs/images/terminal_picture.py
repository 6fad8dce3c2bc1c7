#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Draws pitool-drive.svg, beside this file, from what pitool prints on the sample drives.

Usage: terminal_picture.py PITOOL [--check]

With --check nothing is drawn: it fails where the picture is not of what PITOOL prints.
"""

import os
import pathlib
import re
import subprocess
import sys
from xml.sax.saxutils import escape

COMMAND = ["drive", "--events", "examples/drives"]
COLUMNS = 110

FOLDER = pathlib.Path(__file__).resolve().parent
PICTURE = FOLDER / "pitool-drive.svg"
PROJECT = FOLDER.parent.parent

# In pixels; a character is as wide as in most monospace fonts of this size, and is stretched where it is not.
FONT_SIZE = 13
CHARACTER_WIDTH = 7.8
LINE_HEIGHT = 17
MARGIN = 16

BACKGROUND, FOREGROUND = "#1b1f27", "#d7dae0"
# What pitool's escape sequences mean on a dark background.
STYLES = {
    "": "",
    "0": "",
    "1": ' font-weight="bold" fill="#ffffff"',
    "1;31": ' font-weight="bold" fill="#ff7b72"',
    "2": ' fill="#8b929e"',
    "33": ' fill="#e3b341"',
}
PROMPT_STYLE = ' fill="#7ee787"'


def printed(pitool):
    """The lines that pitool prints, with colours and in the width of the picture."""
    environment = {**os.environ, "COLUMNS": str(COLUMNS)}
    run = subprocess.run([os.path.abspath(pitool), *COMMAND, "--color", "always"], cwd=PROJECT, env=environment,
                         stdout=subprocess.PIPE, check=True, text=True, encoding="utf-8")
    return run.stdout.splitlines()


def words(line):
    """The pieces of a line between two blanks or more, each with its column and style."""
    column, style = 0, ""
    for sequence, text in re.findall(r"\x1b\[([0-9;]*)m|([^\x1b]+)", line):
        if not text:
            style = STYLES[sequence]
            continue
        for piece in re.finditer(r"\S+(?: \S+)*", text):
            yield column + piece.start(), piece.group(), style
        column += len(text)


def text_element(column, row, text, style):
    x = MARGIN + column * CHARACTER_WIDTH
    y = MARGIN + row * LINE_HEIGHT + FONT_SIZE
    return (f'<text x="{x:.1f}" y="{y}" textLength="{len(text) * CHARACTER_WIDTH:.1f}"'
            f' lengthAdjust="spacingAndGlyphs"{style}>{escape(text)}</text>')


def picture(lines):
    width = 2 * MARGIN + round(COLUMNS * CHARACTER_WIDTH)
    height = 2 * MARGIN + (len(lines) + 1) * LINE_HEIGHT
    command = " ".join(["pitool", *COMMAND])
    elements = [text_element(0, 0, "$", PROMPT_STYLE), text_element(2, 0, command, "")]
    for row, line in enumerate(lines, 1):
        elements += [text_element(column, row, text, style) for column, text, style in words(line)]
    return "\n".join([
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" viewBox="0 0 {width} {height}"'
        f' role="img" font-family="ui-monospace, \'DejaVu Sans Mono\', Menlo, Consolas, monospace"'
        f' font-size="{FONT_SIZE}" fill="{FOREGROUND}">',
        f"<title>{escape(command)}</title>",
        f'<rect width="{width}" height="{height}" rx="8" fill="{BACKGROUND}"/>',
        *elements,
        "</svg>", ""])


def main():
    if len(sys.argv) not in (2, 3) or sys.argv[2:] not in ([], ["--check"]):
        sys.exit(__doc__)
    drawn = picture(printed(sys.argv[1]))
    if len(sys.argv) == 2:
        PICTURE.write_text(drawn, encoding="utf-8")
    elif not PICTURE.exists() or PICTURE.read_text(encoding="utf-8") != drawn:
        sys.exit(f"{PICTURE.name} is not what pitool prints; draw it again with: {sys.argv[0]} PITOOL")


if __name__ == "__main__":
    main()
