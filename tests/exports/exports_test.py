#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""exports_test.py --library FILE ...: a library exports what its public headers declare for export, and nothing else."""
import argparse
import pathlib
import re
import shutil
import subprocess
import sys

from declared_symbols import declared_symbols

SKIPPED = 77


def exported_symbols(nm, library):
    lines = subprocess.run([nm, "-D", "--defined-only", "--format=posix", library], check=True,
                           stdout=subprocess.PIPE, text=True).stdout.splitlines()
    # Absolute symbols are the names of the versions.
    return {line.split("@")[0].split()[0] for line in lines if line.split()[1] != "A"}


def logger_symbols(categories):
    """The instances of the loggers, one of each number, which the library shares with the process."""
    numbers = re.findall(r"^PI_TRACE_CATEGORY\((\d+),", pathlib.Path(categories).read_text(), re.MULTILINE)
    assert numbers, f"no categories in {categories}"
    return {f"_ZN4plog4util9SingletonINS_6LoggerILi{number}EEEE10m_instanceE" for number in numbers}


def attributes_written(include_folders, headers):
    """How often the headers write the export attribute, themselves or through the macro."""
    count = 0
    for header in headers:
        text = next(path for folder in include_folders if (path := pathlib.Path(folder) / header).exists()).read_text()
        text = re.sub(r"//.*|^#define.*$", "", text, flags=re.MULTILINE)
        text = re.sub(r"\bextern template\b.*", "", text)
        count += len(re.findall(r"\bPI_API\b|__attribute__\(\(visibility", text))
    return count


def readable(symbols):
    names = subprocess.run(["c++filt"], input="\n".join(sorted(symbols)), check=True, stdout=subprocess.PIPE,
                           text=True).stdout
    return "".join(f"  {name}\n" for name in names.splitlines())


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--library", required=True)
    parser.add_argument("--clang", default="")
    parser.add_argument("--nm", required=True)
    parser.add_argument("--include", action="append", required=True)
    parser.add_argument("--headers", required=True, help="separated by commas")
    parser.add_argument("--names", required=True, help="parts of qualified names to look for, separated by commas")
    parser.add_argument("--categories", help="the list of trace categories, each of which has a logger")
    parser.add_argument("--elsewhere", action="append", default=[], help="a symbol that another library defines")
    parser.add_argument("--own", action="append", default=[], help="a symbol of another library's header")
    arguments = parser.parse_args()
    if not shutil.which(arguments.clang):
        print("Skipped: without clang++ the headers cannot be read.")
        return SKIPPED

    headers = arguments.headers.split(",")
    declared, marked = declared_symbols(arguments.clang, headers, arguments.include, arguments.names.split(","))
    written = attributes_written(arguments.include, headers)
    if marked != written:
        print(f"The headers write the export attribute {written} times, {marked} declarations with it were found.")
        return 1
    declared = (declared - set(arguments.elsewhere)) | set(arguments.own)
    if arguments.categories:
        declared |= logger_symbols(arguments.categories)
    exported = exported_symbols(arguments.nm, arguments.library)

    missing, surplus = declared - exported, exported - declared
    if missing:
        print(f"Declared for export, but not exported:\n{readable(missing)}")
    if surplus:
        print(f"Exported, but not declared for it:\n{readable(surplus)}")
    if not missing and not surplus:
        print(f"{len(exported)} symbols are exported, all of them declared for it.")
    return 1 if missing or surplus else 0


if __name__ == "__main__":
    sys.exit(main())
