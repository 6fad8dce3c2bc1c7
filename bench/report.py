#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes the table of ratios from what the benchmark programs measured.

usage: report.py BUILD_FOLDER RESULT_FOLDER REPORT_FILE

The result folder holds one JSON file of each benchmark program, and processes.json. Ends with a message and no report
when a benchmark failed or a figure is missing.
"""

import datetime
import json
import pathlib
import re
import statistics
import subprocess
import sys
from dataclasses import dataclass


class Figures:
    """Medians by benchmark: time in seconds, allocations and other counters per operation."""

    def __init__(self, folder):
        self.figures = json.loads((folder / "processes.json").read_text())
        for path in sorted(folder.glob("*_bench.json")):
            runs = {}
            for run in json.loads(path.read_text())["benchmarks"]:
                if run.get("error_occurred") or run.get("skipped"):
                    sys.exit(f"{run['name']}: {run.get('error_message') or run.get('skip_message')}")
                if run["run_type"] == "iteration":
                    runs.setdefault(run["run_name"], []).append(run)
            for name, samples in runs.items():
                self.figures[name] = {
                    figure: statistics.median(sample[figure] for sample in samples)
                    for figure in ("allocations", "throws", "bytes_per_drive", "bytes_per_property")
                    if figure in samples[0]}
                self.figures[name]["time"] = 1e-9 * statistics.median(nanoseconds(sample) for sample in samples)

    def get(self, name, figure="time"):
        try:
            return self.figures[name][figure]
        except KeyError:
            sys.exit(f"no {figure} was measured for {name}")

    def ratio(self, one, other, figure="time"):
        return self.get(one, figure) / self.get(other, figure)


def nanoseconds(run):
    # Where several processes work on it, the clock counts.
    time = run["real_time" if run["run_name"].endswith("/real_time") else "cpu_time"]
    return time * {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[run["time_unit"]]


@dataclass
class Row:
    """A piece of work. The ways are named as the benchmarks are, behind the slash."""

    work: str        # as the benchmarks call it
    title: str
    naive: str       # the way of the rules' words, or ""
    peers: dict      # way: what it is called in the table
    floor: tuple     # (way, what it is called), or ()
    target: str
    limits: dict     # way: the most that the library's time may be of it
    reason: str = ""  # why the target is missed, where it is


# The naive way writes the document, empty here, to a stream of strings; its peer to a string directly.
COPY_PEERS = {"variant": "ids and std::variant", "gvariant": "GVariant", "writer": "naive by a string writer",
              "plain": "plain structs, inline"}

ROWS = [
    Row("copy_text", "Copy a text property (naive: its empty document by a stream)", "naive", COPY_PEERS,
        ("memberwise", "memberwise copy without document, in a library"), "floor ≤ 1.5, naive ≤ 0.125",
        {"memberwise": 1.5, "naive": 0.125}),
    Row("copy_number", "Copy a number property", "naive", COPY_PEERS,
        ("memberwise", "memberwise copy without document, in a library"), "floor ≤ 1.5, naive ≤ 0.125",
        {"memberwise": 1.5, "naive": 0.125}),
    Row("copy_object", "Copy an object of 60 properties", "naive",
        {"map": "map of ids and std::variant", "described_map": "the same with the descriptive fields",
         **COPY_PEERS},
        ("memberwise", "memberwise copy without document, in a library"),
        "floor ≤ 1.5, naive ≤ 0.125, map of the same fields < 1",
        {"memberwise": 1.5, "naive": 0.125, "described_map": 1.0}),
    Row("grow", "Grow a vector to 10,000 properties", "", {"memberwise": "memberwise, out of line"},
        ("plain", "plain structs"), "floor ≤ 2", {"plain": 2.0}),
    Row("sort", "Sort 10,000 drive extents", "", {}, ("plain", "plain structs"), "floor ≤ 2", {"plain": 2.0}),
    Row("compare_object", "Compare two equal objects of 60 properties", "", {}, ("plain", "plain structs"),
        "floor ≤ 1.5", {"plain": 1.5}),
    Row("silent_etr", "Six samples of `CETR::Compute`, traces off", "", {}, ("untraced", "no trace statements"),
        "floor ≤ 1.1", {"untraced": 1.1}),
    Row("silent_combination", "`ValidatePhysicalDriveCombination`, traces off", "", {},
        ("untraced", "no trace statements"), "floor ≤ 1.1", {"untraced": 1.1},
        "less than a nanosecond in a call of five, spent on looking at the flag; one look instead of two gains "
        "3 percent"),
    Row("silent_get_number", "Getter of a number, traces off", "", {}, ("untraced", "no trace statements"),
        "floor ≤ 1.1", {"untraced": 1.1}, "less than a nanosecond, for the way to a trace that a wrong type takes"),
    Row("silent_get_text", "Getter of a text, traces off", "", {}, ("untraced", "no trace statements"),
        "floor ≤ 1.1", {"untraced": 1.1}, "less than a nanosecond, for the way to a trace that a wrong type takes"),
    Row("trace_2", "Trace of 2 arguments, written to nowhere", "boost", {"fmt": "fmt"},
        ("record", "plog record of a ready text"), "naive ≤ 1.2, no throw", {"boost": 1.2}),
    Row("trace_4", "Trace of 4 arguments, written to nowhere", "boost", {"fmt": "fmt"},
        ("record", "plog record of a ready text"), "naive ≤ 1.2, no throw", {"boost": 1.2}),
    Row("render_event", "Render an event with six placeholders", "naive", {"fmt": "fmt"},
        ("snprintf", "snprintf"), "floor ≤ 2.5", {"snprintf": 2.5}),
    Row("number_to_name", "Number to name, over five tables", "map",
        {"unordered_map": "std::unordered_map", "binary_search": "binary search", "switch": "switch"},
        ("array", "one array per table"),
        "std::unordered_map ≤ 1", {"unordered_map": 1.0}),
    Row("name_to_number", "Name to number", "map", {}, (), "naive ≤ 0.1", {"map": 0.1}),
    Row("sense", "Additional sense text, 1 in 8 unknown", "naive",
        {"sgutils": "libsgutils2", "binary_search": "binary search"}, ("array", "one array of all pairs"),
        "libsgutils2 ≤ 0.1", {"sgutils": 0.1}),
    Row("endurance", "Endurance row of 1,000 model names, half of them misses", "naive", {"regex": "POSIX patterns"},
        (), "naive ≤ 1", {"naive": 1.0}),
    Row("hex_dump", "Hex dump of 1 MiB", "naive", {}, ("table", "table-driven loop"), "floor ≤ 1.3", {"table": 1.3}),
    Row("url_encode", "URL-encoding of 1 MiB", "naive", {}, ("table", "table-driven loop"), "floor ≤ 1.3",
        {"table": 1.3}),
    *(Row(f"document_{drives}", f"Array document of {drives:,} drives", "naive", {},
          ("traversal", "pugixml and as_ullong"), "floor ≤ 1.5", {"traversal": 1.5})
      for drives in (1000, 10000, 100000)),
    Row("model_to_json", "Object of 60 properties to JSON", "", {"nlohmann": "nlohmann-json building and dumping"}, (),
        "≤ 1", {"nlohmann": 1.0}),
    Row("model_from_json", "Object of 60 properties from JSON", "", {"nlohmann": "nlohmann-json parsing alone"}, (),
        "≤ 1", {"nlohmann": 1.0}),
    *(Row(f"discovery_{drives}", f"Discovery of {drives:,} drives", "", {"json": "parsing their JSON"}, (), "-", {})
      for drives in (100, 10000)),
    Row("reports_10000", "Read 10,000 reports of smartctl", "", {"json": "nlohmann-json parsing alone"}, (),
        "nlohmann-json ≤ 0.5", {"json": 0.5}),
]

@dataclass
class Statement:
    """A row that is not a comparison of ways: what was measured, in words, and whether that is enough."""

    title: str
    measured: str
    target: str
    reached: bool
    reason: str = ""


def statements(get, ratio):
    """What else was asked."""
    hit, miss = get("endurance_hits/library"), get("endurance_misses/library")
    yield Statement("Endurance row, a miss against a hit", f"{miss / hit:.2f} of a hit's time", "≤ 1", miss <= hit)

    process = get("endurance_process/smartctl") - get("endurance_process/nothing")
    yield Statement("Endurance row against `smartctl -P showall MODEL`, a whole process less an empty one",
                    f"{duration(get('endurance/library'))} against {duration(process)}", "-", True)

    for throws in ("trace_2", "trace_4"):
        thrown = get(f"{throws}/library", "throws")
        yield Statement(f"Exceptions thrown by a trace of {throws[-1]} arguments", f"{thrown:g}", "0", thrown == 0)

    growth = ratio("document_100000/library", "document_1000/library") / 100
    yield Statement("Array documents: time per drive, 100,000 against 1,000 drives", f"{growth:.2f}", "linear: ≤ 1.5",
                    growth <= 1.5)

    growth = ratio("etr_activities/10000", "etr_activities/100") / 100
    yield Statement("Time remaining: time per activity, 10,000 against 100 activities", f"{growth:.2f}",
                    "linear: ≤ 2", growth <= 2)
    growth = ratio("etr_samples/10000", "etr_samples/100")
    yield Statement("Time remaining: a sample after 10,000 others against one after 100", f"{growth:.2f}",
                    "flat: ≤ 1.2", growth <= 1.2)

    library, bare = get("load_warm/library"), get("load_warm/tableless")
    yield Statement("Load and unload the library, warm, against one without tables",
                    f"{duration(library)} against {duration(bare)}", "≤ 2.5 times", library <= 2.5 * bare)
    library, bare = get("load_cold/library"), get("load_cold/tableless")
    yield Statement("Load and unload the library, its pages dropped before, against one without tables",
                    f"{duration(library)} against {duration(bare)}", "at most 1 ms more", library - bare <= 1e-3,
                    f"reading the library's file alone takes {duration(get('load_cold/reading'))}")

    per_second = 1000000 / get("discovery_1000000/library")
    yield Statement("Discovery of 1,000,000 drives on one core", f"{per_second:,.0f} drives a second",
                    "≥ 200,000", per_second >= 200000)
    growth = ratio("discovery_1000000/library", "discovery_100/library") / 10000
    yield Statement("Discovery: time per drive, 1,000,000 against 100 drives", f"{growth:.2f}", "linear: ≤ 1.5",
                    growth <= 1.5)
    per_drive = get("health/library") / 100
    yield Statement("Health of a drive: two pages in, seven figures and the state out",
                    f"{duration(per_drive)}, {get('health/library', 'allocations') / 100:g} allocations",
                    "≤ 2 µs, 1 allocation",
                    per_drive <= 2e-6 and get("health/library", "allocations") <= 100)
    yield Statement("Discovery: memory of a drive that is kept",
                    f"{get('discovery_kept/library', 'bytes_per_drive'):,.0f} bytes, a property being "
                    f"{get('discovery_kept/library', 'bytes_per_property'):,.0f}", "stated", True)

    isolated, within = (get(f"inventory_100/{way}/real_time") for way in ("isolated", "in_process"))
    yield Statement("A plug-in in a process of its own: what a drive of 20 properties costs more, in an inventory of 100",
                    f"{duration((isolated - within) / 100)}, {duration(within / 100)} in the host's process",
                    "≤ 50 µs", isolated - within <= 100 * 50e-6)

    compiling = ratio("include/library", "include/peer")
    yield Statement("Compile `#include <pi/pi.h>` against pugixml, string, vector, map", f"{compiling:.2f}", "≤ 1.5",
                    compiling <= 1.5)
    lines = [get(f"include/{way}", "lines") for way in ("library", "peer")]
    yield Statement("Preprocessed lines of the same", f"{lines[0]:,} against {lines[1]:,}, none of Boost or plog",
                    "≤ 1.5 times", lines[0] <= 1.5 * lines[1])

    files = ratio("files/pitool", "files/json")
    yield Statement("`pitool drive` on 10,000 files against nlohmann-json parsing alone", f"{files:.2f}", "≤ 0.6",
                    files <= 0.6)
    yield Statement("`pitool drive` on 10,000 files against `jq` reading one field of each",
                    f"{ratio('files/pitool', 'files/jq'):.2f}", "-", True)
    json_files = ratio("files/pitool_json", "files/json")
    yield Statement("`pitool drive --json` on 10,000 files against nlohmann-json parsing alone", f"{json_files:.2f}",
                    "≤ 1", json_files <= 1)
    few, many = get("files/pitool_1000", "memory"), get("files/pitool", "memory")
    yield Statement("Peak memory of `pitool drive` on 1,000 and on 10,000 files",
                    f"{megabytes(few)} and {megabytes(many)} (parsing alone {megabytes(get('files/json', 'memory'))}, "
                    f"`jq` {megabytes(get('files/jq', 'memory'))})", "flat: ≤ 1.2 times", many <= 1.2 * few,
                    f"the table stands in order of urgency, so {(many - few) / 9000:,.0f} bytes of each drive are kept")


def duration(seconds):
    for factor, unit in ((1, "s"), (1e3, "ms"), (1e6, "µs")):
        if seconds * factor >= 1:
            return f"{seconds * factor:.3g} {unit}"
    return f"{seconds * 1e9:.3g} ns"


def megabytes(count):
    return f"{count / 1e6:.1f} MB"


def yes_or_no(reached, reason):
    return "yes" if reached else "no" + (": " + reason if reason else "")


def comparison_table(figures):
    yield "| Work | Library | to naive | to peers | to floor | Allocations: library / naive / floor | Target | Reached |"
    yield "|---|---|---|---|---|---|---|---|"
    for row in ROWS:
        library = f"{row.work}/library"

        def ratio(way):
            return figures.ratio(library, f"{row.work}/{way}")

        cells = [row.title, duration(figures.get(library)), f"{ratio(row.naive):.3g}" if row.naive else "-",
                 ", ".join(f"{ratio(way):.3g} ({name})" for way, name in row.peers.items()) or "-",
                 f"{ratio(row.floor[0]):.3g} ({row.floor[1]})" if row.floor else "-",
                 " / ".join(allocations(figures, f"{row.work}/{way}") if way else "-"
                            for way in ("library", row.naive, row.floor[0] if row.floor else "")),
                 row.target,
                 yes_or_no(all(ratio(way) <= limit for way, limit in row.limits.items()), row.reason)
                 if row.limits else "-"]
        yield "| " + " | ".join(cells) + " |"


def allocations(figures, name):
    count = figures.figures[name].get("allocations")
    return "-" if count is None else f"{round(count):,}"


def statement_table(figures):
    yield "| Work | Measured | Target | Reached |"
    yield "|---|---|---|---|"
    for each in statements(figures.get, figures.ratio):
        reached = "-" if each.target == "-" else yes_or_no(each.reached, each.reason)
        yield f"| {each.title} | {each.measured} | {each.target} | {reached} |"


def accuracy_table(measured):
    """How near estimates of the time remaining come."""
    ways = ("mean", "md", "udisks", "CETR", "CTimeRemaining")
    yield "| Rebuilds | Curves | mean speed | marks of md | mean of speeds, as udisks | `CETR` | `CTimeRemaining` " \
          "| True value in its range | Change of its end |"
    yield "|---|---|---|---|---|---|---|---|---|"
    for row in measured["rows"]:
        errors = " | ".join(f"{row[way]['median']:.1f} % ({row[way]['ninetieth']:.0f} %)" for way in ways)
        yield f"| {row['kind']} | {row['curves']} | {errors} | {row['inside']:.0f} % | {row['CTimeRemaining']['jump']:.2f} % |"
    yield ""
    yield f"Over all samples of all curves the range contains the true value for {measured['inside']:.1f} percent."


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def machine(build):
    cpu = re.search(r"model name\s*: (.*)", pathlib.Path("/proc/cpuinfo").read_text())
    memory = re.search(r"MemTotal:\s*(\d+)", pathlib.Path("/proc/meminfo").read_text())
    system = re.search(r'PRETTY_NAME="(.*)"', pathlib.Path("/etc/os-release").read_text())
    cache = dict(re.findall(r"^([A-Za-z_]+):\w+=(.*)$", (build / "CMakeCache.txt").read_text(), re.M))
    compiler = output_of(cache["CMAKE_CXX_COMPILER"], "--version").splitlines()[0]
    packages = ["libboost-dev", "libpugixml-dev", "libplog-dev", "nlohmann-json3-dev", "libbenchmark-dev", "libfmt-dev",
                "libglib2.0-dev", "libsgutils2-dev", "smartmontools", "jq"]
    versions = output_of("dpkg-query", "-W", "-f", "${Package} ${Version}\n", *packages).splitlines()
    yield f"- Machine: {output_of('nproc').strip()} processors, {cpu[1] if cpu else 'unknown'}, " \
          f"{int(memory[1]) / 1024 ** 2:.0f} GiB of memory, {output_of('uname', '-sr').strip()}, {system[1]}"
    yield f"- Compiler: {compiler}, `{cache['CMAKE_BUILD_TYPE']}`" + \
          (", hardened (`PI_HARDENING`)" if cache.get("PI_HARDENING") == "ON" else "")
    yield "- Packages: " + ", ".join(versions)


def main():
    build, results, report = map(pathlib.Path, sys.argv[1:])
    figures = Figures(results)
    loads = json.loads((results / "property_bench.json").read_text())["context"]["load_avg"]
    lines = [
        "# Results",
        "",
        "Written by `scripts/bench`; another run replaces it. Times are of this machine and not promised, ratios are the",
        "library's time divided by that of the other way in the same run: below 1 the library is faster. *Naive* is what",
        "the rules say, word for word; *peers* are what a user would pick instead; the *floor* is the least that must be",
        "done. All are medians of repetitions in random order. Allocations are counted per operation.",
        "",
        f"- Run of {datetime.date.today()}, load of the machine half-way {f'{loads[0]:.2f}' if loads else 'unknown'}",
        *machine(build),
        "",
        "## Ways compared",
        "",
        *comparison_table(figures),
        "",
        "## Growth, processes, memory",
        "",
        *statement_table(figures),
        "",
        "## Accuracy of estimates of the time remaining",
        "",
        "Median of the error after each sample from the second on, in percent of the time that remained, and in brackets",
        "what nine in ten stay below; the curves are explained in [estimates](../docs/estimates.md).",
        "",
        *accuracy_table(json.loads((results / "progress_accuracy.json").read_text())),
    ]
    report.write_text("\n".join(lines) + "\n")


if __name__ == "__main__":
    main()
