#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Follows a guide step by step: writes its files, runs its commands and compares what they print.

A file is a code block behind a line with its name: `name`:
A command is a block marked sh; a block marked text right behind one is what it prints, "..." standing for anything
within a line. All commands run as in one terminal: folder and exported variables stay.
A block marked console is for the reader alone. The paragraph in front of it has to say that it is not tested.
Every block must be one of these, so that nothing in the guide goes unchecked.

The environment says where the library is installed (PI_PREFIX), where the examples folder is (PI_SOURCE), and with
which compiler and flags to build (CXX, CXXFLAGS), which a plain g++ in the guide means too.
"""

import argparse
import contextlib
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

NOT_TESTED = "not tested"


class Block:
    def __init__(self, line, kind, file_name, paragraph):
        self.line = line
        self.kind = kind
        self.file_name = file_name
        self.paragraph = paragraph
        self.text = ""


def read_blocks(page, section):
    blocks = []
    within = section is None
    file_name = None
    paragraph = ""
    ended = True
    inside = None
    for number, line in enumerate(page.read_text(encoding="utf-8").splitlines(), start=1):
        fence = re.fullmatch(r"```(\w*)", line)
        if inside is not None:
            if fence:
                if within:
                    blocks.append(inside)
                inside = None
                file_name = None
                paragraph = ""
            else:
                inside.text += line + "\n"
        elif section is not None and line.startswith("## "):
            within = line == f"## {section}"
        elif fence:
            inside = Block(number, fence[1], file_name, paragraph)
        elif line.strip():
            name = re.fullmatch(r"`([^`]+)`:", line)
            file_name = name[1] if name else None
            paragraph = line if ended else f"{paragraph} {line}"
        ended = not line.strip()
    if inside is not None:
        sys.exit(f"{page}:{inside.line}: the block does not end")
    return blocks


def matches(expected, actual):
    pattern = "".join(".*" if part == "..." else re.escape(part) for part in re.split(r"(\.\.\.)", expected))
    return re.fullmatch(pattern, actual) is not None


class Terminal:
    """Runs commands one after the other, each in a shell that goes on where the last one ended."""

    def __init__(self, folder, scratch, environment):
        self.state = pathlib.Path(scratch) / "state"
        self.state.write_text(f"cd {shlex.quote(str(folder))}\n", encoding="utf-8")
        compilers = pathlib.Path(scratch) / "compilers"
        compilers.mkdir()
        compiler = shutil.which(os.environ.get("CXX", "g++"))
        (compilers / "g++").write_text(
            f'#!/bin/sh\nexec {shlex.quote(compiler)} {os.environ.get("CXXFLAGS", "")} "$@"\n', encoding="utf-8")
        (compilers / "g++").chmod(0o755)
        self.environment = {**environment, "PATH": f"{compilers}:{environment['PATH']}", "LC_ALL": "C.UTF-8"}

    def run(self, commands):
        script = (f'guide_state={shlex.quote(str(self.state))}\n. "$guide_state"\n'
                  f'trap \'{{ export -p; printf "cd %q\\n" "$PWD"; }} > "$guide_state"\' EXIT\n{commands}')
        return subprocess.run(["bash", "-euo", "pipefail", "-c", script], env=self.environment, text=True,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)


def follow(page, section, folder, terminal):
    counts = {"files": 0, "commands": 0, "outputs": 0}
    untested = 0
    output = None
    for block in read_blocks(page, section):
        place = f"{page}:{block.line}"
        if block.file_name is not None:
            path = folder / block.file_name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(block.text, encoding="utf-8")
            counts["files"] += 1
            output = None
        elif block.kind == "sh":
            run = terminal.run(block.text)
            if run.returncode != 0:
                sys.exit(f"{place}: exit status {run.returncode}\n{run.stdout}")
            counts["commands"] += 1
            output = run.stdout
        elif block.kind == "text" and output is not None:
            if not matches(block.text, output):
                sys.exit(f"{place}: the guide says\n{block.text}\nbut the command printed\n{output}")
            counts["outputs"] += 1
            output = None
        elif block.kind == "console":
            if NOT_TESTED not in block.paragraph:
                sys.exit(f"{place}: the paragraph in front does not say that this is {NOT_TESTED}")
            untested += 1
            output = None
        else:
            sys.exit(f"{place}: neither a file nor a command nor its output")
    print(f"{page.name}: " + ", ".join(f"{count} {what}" for what, count in counts.items()) +
          f", {untested} blocks not tested")
    if counts["commands"] == 0 or counts["outputs"] == 0:
        sys.exit("the guide has nothing to follow")


@contextlib.contextmanager
def installed_tree():
    """The environment with a PI_PREFIX without blanks, at which a shell would split $(pkg-config ...), and with
    pkg-config set up for a library folder of any name, as it would be for a library where the system looks for it."""
    with contextlib.ExitStack() as stack:
        prefix = pathlib.Path(os.environ["PI_PREFIX"])
        if re.search(r"\s", str(prefix)):
            link = pathlib.Path(stack.enter_context(tempfile.TemporaryDirectory(dir="/tmp"))) / "prefix"
            link.symlink_to(prefix)
            prefix = link
        (description,) = prefix.glob("lib*/**/pkgconfig/pi.pc")
        yield {**os.environ, "PI_PREFIX": str(prefix), "PKG_CONFIG_PATH": str(description.parent)}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("page", type=pathlib.Path)
    parser.add_argument("folder", type=pathlib.Path, help="in which the guide is followed; emptied first")
    parser.add_argument("--section", help="follow only what stands under this heading of the second level")
    arguments = parser.parse_args()
    folder = arguments.folder.absolute()
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    with installed_tree() as environment, tempfile.TemporaryDirectory() as scratch:
        follow(arguments.page, arguments.section, folder, Terminal(folder, scratch, environment))


if __name__ == "__main__":
    main()
