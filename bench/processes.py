#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Times what takes a process of its own: loading from cold, compiling, reading files, one look-up by smartctl.

usage: processes.py BUILD_FOLDER RESULT_FILE

Every way of a row runs once per round, so that a change of the machine's mood meets all of them; the medians of the
rounds are written as JSON, times in seconds and peak memory in bytes.
"""

import json
import os
import pathlib
import statistics
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent

PI_INCLUDE = "#include <pi/pi.h>\n"
PEER_INCLUDES = "#include <pugixml.hpp>\n#include <map>\n#include <string>\n#include <vector>\n"


def run(command, expected=(0,)):
    """Runs a command to its end and returns the time it took."""
    start = time.perf_counter()
    status = subprocess.run(command, stdout=subprocess.DEVNULL).returncode
    taken = time.perf_counter() - start
    if status not in expected:
        sys.exit(f"{command[0]} ended with {status}")
    return {"time": taken}


def peak_memory(command):
    """Of a command. By GNU time, because a child of this process would be charged with this one's memory."""
    report = subprocess.run(["/usr/bin/time", "-q", "-f", "%M", *command], check=True, stdout=subprocess.DEVNULL,
                            stderr=subprocess.PIPE, text=True).stderr
    return int(report) * 1024


def measure(rounds, ways):
    """Medians of the figures that each way (a function that returns figures by name) yields."""
    samples = {name: [] for name in ways}
    for _ in range(rounds):
        for name, way in ways.items():
            samples[name].append(way())
    return {name: {figure: statistics.median(sample[figure] for sample in taken) for figure in taken[0]}
            for name, taken in samples.items()}


def cold_load(build):
    def load(library):
        program = build / "bench/load_once"
        text = subprocess.run([program, library], check=True, capture_output=True, text=True).stdout
        return {"time": int(text) / 1e9}

    def read(library):
        with open(library, "rb", buffering=0) as file:
            os.fdatasync(file.fileno())
            os.posix_fadvise(file.fileno(), 0, 0, os.POSIX_FADV_DONTNEED)
            start = time.perf_counter()
            file.readall()
            return {"time": time.perf_counter() - start}

    library = build / "src/libpi.so"
    return measure(21, {"load_cold/library": lambda: load(library),
                        "load_cold/tableless": lambda: load(build / "bench/libtableless.so"),
                        "load_cold/reading": lambda: read(library)})


def include_cost(build, work):
    compiler = next(line.partition("=")[2] for line in (build / "CMakeCache.txt").read_text().splitlines()
                    if line.startswith("CMAKE_CXX_COMPILER:"))
    flags = ["-std=c++17", "-DPLOG_GLOBAL", f"-I{ROOT}/include", f"-I{ROOT}/base/velk/include",
             f"-I{ROOT}/base/velkx/include"]

    def source(name, text):
        path = work / name
        path.write_text(text)
        return path

    def output(*arguments):
        return subprocess.run([compiler, *flags, *map(str, arguments)], check=True, capture_output=True,
                              text=True).stdout

    def lines(path):
        return sum(1 for line in output("-E", path).splitlines() if line.strip() and not line.startswith("#"))

    sources = {"include/library": source("with_pi.cpp", PI_INCLUDE),
               "include/peer": source("with_peer.cpp", PEER_INCLUDES)}
    foreign = [header for header in output("-M", sources["include/library"]).split()
               if "/boost/" in header or "/plog/" in header]
    if foreign:
        sys.exit(f"pi/pi.h reaches {foreign[0]}")
    ways = {name: lambda path=path: run([compiler, *flags, "-O2", "-c", path, "-o", work / "object.o"])
            for name, path in sources.items()}
    figures = measure(15, ways)
    for name, path in sources.items():
        figures[name]["lines"] = lines(path)
    return figures


def write_reports(folder, count):
    """Reports on drives as smartctl prints them: those of examples/drives in turn, with figures of their own."""
    folder.mkdir(exist_ok=True)
    examples = [json.loads(path.read_text()) for path in sorted((ROOT / "examples/drives").glob("*.json"))]
    files = []
    for number in range(count):
        report = examples[number % len(examples)]
        report["serial_number"] = f"GEN{number:09}"
        report["power_on_time"] = {"hours": number % 40000}
        files.append(folder / f"{number:05}.json")
        files[-1].write_text(json.dumps(report, indent=2))
    return files


def reading_files(build, work):
    pitool = build / "tools/pitool/pitool"
    parse = build / "bench/json_parse"
    files = write_reports(work / "drives", 10000)
    write_reports(work / "fewer_drives", 1000)
    commands = {"files/pitool": [pitool, "drive", work / "drives"],
                "files/pitool_json": [pitool, "drive", "--json", work / "drives"],
                "files/pitool_1000": [pitool, "drive", work / "fewer_drives"],
                "files/json": [parse, work / "drives"],
                "files/jq": ["jq", ".model_name", *files]}
    figures = measure(5, {name: lambda command=command: run(command) for name, command in commands.items()})
    for name, command in commands.items():
        figures[name]["memory"] = peak_memory(command)
    return figures


def smartctl_look_up():
    # The option "show" needs a drive to ask for its model; "showall" takes one, and ends with the number of matches.
    command = ["smartctl", "-P", "showall", "INTEL SSDSC2BB480G7"]
    return measure(21, {"endurance_process/smartctl": lambda: run(command, expected=range(1, 10)),
                        "endurance_process/nothing": lambda: run(["true"])})


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    work = build / "bench/work"
    work.mkdir(exist_ok=True)
    figures = {**cold_load(build), **include_cost(build, work), **smartctl_look_up(), **reading_files(build, work)}
    pathlib.Path(sys.argv[2]).write_text(json.dumps(figures, indent=2))


if __name__ == "__main__":
    main()
