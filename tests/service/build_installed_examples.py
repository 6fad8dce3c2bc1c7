#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Builds each example by itself against the installed library and compares what the host prints with both plug-ins."""

import argparse
import pathlib
import re
import shutil
import subprocess
import sys

EXAMPLES = ["service", "plugins/mdraid", "plugins/smartctl"]


def run(*command, **options):
    result = subprocess.run(command, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False,
                            **options)
    if result.returncode != 0:
        sys.exit(" ".join(map(str, command)) + f": exit status {result.returncode}\n{result.stdout}")
    return result.stdout


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("examples", type=pathlib.Path)
    parser.add_argument("prefix", type=pathlib.Path, help="where the library is installed")
    parser.add_argument("folder", type=pathlib.Path, help="to build in; emptied first")
    parser.add_argument("expected", type=pathlib.Path, nargs="+", help="the parts of the expected output")
    arguments = parser.parse_args()

    shutil.rmtree(arguments.folder, ignore_errors=True)
    plugins = arguments.folder / "plugin-folder"
    for example in EXAMPLES:
        build = arguments.folder / example
        run("cmake", "-S", arguments.examples / example, "-B", build, f"-DCMAKE_PREFIX_PATH={arguments.prefix}",
            f"-DCMAKE_LIBRARY_OUTPUT_DIRECTORY={plugins}")
        run("cmake", "--build", build)

    output = run(arguments.folder / "service" / "service", plugins, "--set", "mdraid.root=healthy",
                 "--set", "smartctl.folder=drives", cwd=arguments.examples / "trees")
    output = re.sub(r"(?m)^(    (?:Timestamp|Datetime): ).*$", r"\1*", output)
    expected = "".join(path.read_text(encoding="utf-8") for path in arguments.expected)
    if output != expected:
        sys.exit(f"expected\n{expected}\nbut the host printed\n{output}")


if __name__ == "__main__":
    main()
