#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""What the guides list is compared with what it is a list of. Usage: guides_test.py PROJECT-FOLDER"""

import csv
import pathlib
import re
import sys
import unittest

PROJECT = pathlib.Path(sys.argv[1])
FOLDERS = {path.name for path in PROJECT.iterdir() if path.is_dir()} - {"build"} | {"pi", "velk", "velkx"}


def read(path):
    return (PROJECT / path).read_text(encoding="utf-8")


def table_rows(guide, heading):
    """The cells of the first table behind a heading, without marks of code, without its own heading."""
    section = read(f"docs/{guide}.md").split(f"\n{heading}\n", 1)[1]
    table = re.search(r"(?m)(?:^\|.*\n)+", section)[0]
    return [[cell.strip().replace("`", "") for cell in line.strip("|").split("|")]
            for line in table.splitlines()[2:]]


def endurance_sources():
    return list(csv.DictReader(read("docs/ssd-endurance-sources.tsv").splitlines(), delimiter="\t",
                               quoting=csv.QUOTE_NONE))


class Tables(unittest.TestCase):
    def test_categories_of_traces_are_those_of_the_library(self):
        expected = re.findall(r'(?m)^PI_TRACE_CATEGORY\((\d+), "(.*)", (\d+)\)$', read("src/trace/categories.def"))
        self.assertEqual(len(expected), 50)
        expected.append(("any other", "[defaultLog]", "453"))

        rows = table_rows("tracing", "## The categories")

        self.assertEqual([tuple(row[:3]) for row in rows], expected)
        self.assertEqual([row for row in rows if len(row) != 4 or not row[3]], [])

    def test_every_header_has_its_line(self):
        headers = {f"pi/{path.name}" for path in (PROJECT / "include/pi").glob("*.h")} - {"pi/pi.h"}

        rows = table_rows("getting-started", "## The headers")

        self.assertEqual(sorted(row[0] for row in rows), sorted(headers))
        section = read("docs/getting-started.md").split("## The headers")[1].split("\n## ")[0]
        for path in PROJECT.glob("base/*/include/*/*.h"):
            self.assertIn(f"`{path.parent.name}/{path.name}`", section)

    def test_thresholds_are_those_of_the_library(self):
        expected = re.findall(r'(?m)^PI_THRESHOLD\((\w+), (\w+), (\d+), (\w+), "(.*)"\)$',
                              read("src/drives/health_thresholds.def"))
        self.assertGreater(len(expected), 10)
        self.assertEqual([tuple(row) for row in table_rows("drive-knowledge", "### The state")], expected)

    def test_every_rated_drive_has_its_source(self):
        listed = []
        for name in ("sata", "sas", "nvme", "additional"):
            for line in re.findall(r"(?m)^PI_\w+_SSD\((.*)\)$", read(f"src/drives/ssd_endurance_{name}.def")):
                fields = line.replace('"', "").split(", ")
                endurance = fields[3 if name in ("sata", "nvme") else 2]
                listed.append((name, fields[1], endurance, fields[-2], fields[-1]))
        self.assertGreaterEqual(len(listed), 373)

        sources = endurance_sources()

        bases = {"sibling": "COMPUTED"}
        self.assertEqual([(row["list"], row["model"], row["endurance"],
                           bases.get(row["basis"], row["basis"].upper()), row["contrary"] or "0")
                          for row in sources], listed)
        for row in sources:
            with self.subTest(model=row["model"]):
                self.assertTrue(row["drive"] and row["source"])
                self.assertTrue(row["doubt"] or not row["contrary"])

    def test_endurance_figures_are_what_their_reckoning_gives(self):
        sources = endurance_sources()
        endurance = {row["model"]: int(row["endurance"]) for row in sources}
        for row in sources:
            factors = row["reckoning"].split(" x ")
            with self.subTest(model=row["model"], reckoning=row["reckoning"]):
                if row["basis"] == "computed" or row["basis"] == "assumed" and len(factors) == 3:
                    writes, capacity, days = map(float, factors)
                    self.assertIn(days, (3 * 365, 5 * 365))
                    self.assertLess(abs(writes * capacity * days - int(row["endurance"])), 1)
                elif row["basis"] == "sibling" or row["basis"] == "assumed" and len(factors) == 2:
                    self.assertEqual(endurance[factors[0]] * int(factors[1]), int(row["endurance"]))
                else:
                    self.assertEqual(row["reckoning"], "")
                    self.assertIn(row["basis"], ("given", "sourced", "assumed"))


class Names(unittest.TestCase):
    def test_what_documents_name_exists(self):
        sources = (path for pattern in ("include", "base", "exchange", "examples", "src", "share", "tests", "cmake")
                   for path in (PROJECT / pattern).rglob("*.*") if path.suffix in (".h", ".def", ".cpp", ".cmake", ".in"))
        words = {word for path in sources for word in re.findall(r"\w+", path.read_text(encoding="utf-8"))}
        headers = ("", "include", "base/velk/include", "base/velkx/include", "exchange/include")
        for page in [*PROJECT.glob("docs/*.md"), *PROJECT.glob("[CRS]*.md")]:
            text = re.sub(r"(?ms)^```.*?^```", "", page.read_text(encoding="utf-8"))
            for code in re.findall(r"`([^`\n]+)`", text):
                for name in re.findall(r"(?:\w+::)+\w+|\bm_\w+|\b[A-Z]\w*(?=\()", code):
                    self.assertEqual(set(name.split("::")) - words, set(), f"{page.name}: `{code}`")
                for path in re.findall(r"(?<![\w./$-])[\w.]+/[\w./*-]*\w", code):
                    if path.split("/")[0] in FOLDERS:
                        self.assertTrue(any(any(PROJECT.glob(f"{root}/{path}".lstrip("/"))) for root in headers),
                                        f"{page.name}: `{code}`")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
