#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Follows a page step by step: writes its files, runs its commands and compares what they print.

A file is a code block behind a line with its name: `name`:
A command is a block marked sh; a block marked text right behind one is what it prints, "..." standing for anything
within a line. Every block must be one of these, so that nothing on the page goes unchecked.
"""

import argparse
import pathlib
import re
import shutil
import subprocess
import sys


class Block:
    def __init__(self, line, kind, file_name, text):
        self.line = line
        self.kind = kind
        self.file_name = file_name
        self.text = text


def read_blocks(page):
    blocks = []
    file_name = None
    inside = None
    for number, line in enumerate(page.read_text(encoding="utf-8").splitlines(), start=1):
        fence = re.fullmatch(r"```(\w*)", line)
        if inside is not None:
            if fence:
                blocks.append(inside)
                inside = None
                file_name = None
            else:
                inside.text += line + "\n"
        elif fence:
            inside = Block(number, fence[1], file_name, "")
        elif line.strip():
            name = re.fullmatch(r"`([^`]+)`:", line)
            file_name = name[1] if name else None
    if inside is not None:
        sys.exit(f"{page}:{inside.line}: the block does not end")
    return blocks


def matches(expected, actual):
    pattern = "".join(".*" if part == "..." else re.escape(part) for part in re.split(r"(\.\.\.)", expected))
    return re.fullmatch(pattern, actual) is not None


def follow(page, folder):
    blocks = read_blocks(page)
    counts = {"files": 0, "commands": 0, "outputs": 0}
    output = None
    for block in blocks:
        place = f"{page}:{block.line}"
        if block.file_name is not None:
            path = folder / block.file_name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(block.text, encoding="utf-8")
            counts["files"] += 1
            output = None
        elif block.kind == "sh":
            run = subprocess.run(["bash", "-euo", "pipefail", "-c", block.text], cwd=folder, text=True,
                                 stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
            if run.returncode != 0:
                sys.exit(f"{place}: exit status {run.returncode}\n{run.stdout}")
            counts["commands"] += 1
            output = run.stdout
        elif block.kind == "text" and output is not None:
            if not matches(block.text, output):
                sys.exit(f"{place}: the page says\n{block.text}\nbut the command printed\n{output}")
            counts["outputs"] += 1
            output = None
        else:
            sys.exit(f"{place}: neither a file nor a command nor its output")
    print(f"{page.name}: " + ", ".join(f"{count} {what}" for what, count in counts.items()))
    if 0 in counts.values():
        sys.exit("the page has nothing to follow")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("page", type=pathlib.Path)
    parser.add_argument("folder", type=pathlib.Path, help="in which the page is followed; emptied first")
    arguments = parser.parse_args()
    shutil.rmtree(arguments.folder, ignore_errors=True)
    arguments.folder.mkdir(parents=True)
    follow(arguments.page, arguments.folder)


if __name__ == "__main__":
    main()
