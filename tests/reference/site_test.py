# SPDX-License-Identifier: Apache-2.0

"""The tables of the site hold the lists as they were fixed."""
import pathlib
import re
import sys
import tempfile
import unittest

SOURCES = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(SOURCES / "docs/doxygen"))

import lists  # noqa: E402
import pages  # noqa: E402

CELL = re.compile(r"<td[^>]*>(?:<a [^>]*>)?([^<]*)(?:</a>)?</td>")

# A constant where it is used, by the names that sources give to its namespace; not where a guide shows a list of names.
VOCABULARY_OF = {"ID": "property", "PropertyID": "property", "Operation": "operation", "OperationID": "operation",
                 "Event": "event", "EventID": "event"}
USE = re.compile(rf"(?<!\w  )\b({'|'.join(VOCABULARY_OF)})::([A-Z][A-Z0-9_]+)\b")
TYPES = {"STRING", "CHOICE", "BOOL", "LONG", "SIGNED_LONG", "FLOAT", "XML"}
SEVERITIES = {"INFORMATION", "WARNING", "ERROR"}


def site_rows(page):
    """The rows of a table as a page shows them."""
    table = next(table for table in pages.TABLES if table[0] == page)
    text = pages.table_page(*table)
    return [tuple(CELL.findall(line)) for line in text.splitlines() if line.startswith("<tr") and "<td" in line]


def fixed_rows(name):
    """The rows of a list as they are written down for the tests of the library."""
    lines = (SOURCES / "tests/vocabulary" / name).read_text(encoding="utf-8").splitlines()
    return [tuple(line.split("\t")) for line in lines]


class Tables(unittest.TestCase):
    maxDiff = None

    def test_vocabularies_are_whole_and_in_order(self):
        for name in ("error_codes", "property_ids", "property_values", "operation_ids", "event_ids"):
            rows = {}  # of two rows of one number the first gives the name
            for number, _, text, *_ in site_rows(f"table_{name}"):
                rows.setdefault(number, text)
            with self.subTest(name=name):
                self.assertEqual(list(rows.items()), fixed_rows(f"{name}.tsv"))

    def test_help_topics_and_icons_are_whole_and_in_order(self):
        for name in ("help_topics", "icons"):
            self.assertEqual(site_rows(f"table_{name}"), fixed_rows(f"{name}.tsv"))

    def test_events_have_their_english_text_and_others_none(self):
        rows = {row[0]: row[3] for row in site_rows("table_event_ids")}
        self.assertEqual(rows["10057"], "Rebuild on %1 failed: %2")
        self.assertEqual(rows["5"], "")
        self.assertEqual(sum(text != "" for text in rows.values()), len(lists.event_texts()))

    def test_meanings_tell_of_each_constant_once_and_leave_nothing_out(self):
        rows = site_rows("table_meanings")
        self.assertEqual(len(rows), len({row[0] for row in rows}))
        for number, _, kinds, _, setters, meaning in rows:
            with self.subTest(number=number):
                self.assertTrue(setters and meaning)
                for kind in kinds.split("; "):
                    self.assertIn(kind.split()[-1] if kind else "operation", TYPES | SEVERITIES | {"operation"})

    def test_what_examples_guides_and_the_tool_use_has_a_meaning(self):
        files = [path for pattern in ("examples/**/*.cpp", "tools/**/*.cpp", "docs/*.md", "README.md")
                 for path in SOURCES.glob(pattern)]
        used = {(VOCABULARY_OF[namespace], constant) for path in files
                for namespace, constant in USE.findall(path.read_text(encoding="utf-8"))}
        text = (SOURCES / "docs/vocabulary-meanings.tsv").read_text(encoding="utf-8")
        known = {tuple(line.split("\t")[:2]) for line in text.splitlines()}
        self.assertGreater(len(used), 60)
        self.assertEqual(sorted(used - known), [])

    def test_each_list_of_the_library_has_a_table(self):
        with_table = {table[1] for table in pages.TABLES}
        folders = ("include/pi/vocabulary", "src/drives", "src/trace", "src/vocabulary")
        found = {path.relative_to(SOURCES).as_posix() for folder in folders for path in (SOURCES / folder).glob("*.def")}
        # Icons by the state of a drive: their numbers are in the table of icons.
        self.assertEqual(found - with_table, {"src/vocabulary/physical_drive_icons.def"})

    def test_numbers_are_places_once(self):
        text = pages.table_page(*next(table for table in pages.TABLES if table[0] == "table_property_ids"))
        places = re.findall(r'<tr id="([^"]+)">', text)
        self.assertEqual(len(places), len(set(places)))
        self.assertIn("30000", places)


class Lists(unittest.TestCase):
    def test_a_line_that_is_no_row_is_refused(self):
        for line in ("PI_X(1, \"a\"", "PI_X(1, \"a)", "something", "PI_X(1, a b)"):
            with self.subTest(line=line), tempfile.TemporaryDirectory() as folder:
                path = pathlib.Path(folder) / "x.def"
                path.write_text(line + "\n")
                with self.assertRaises(ValueError):
                    lists.read_list(path)

    def test_commas_and_quotes_in_texts_are_text(self):
        self.assertEqual(lists.fields(r'0x04, "a, \"b\"", NAME'), ["0x04", 'a, "b"', "NAME"])


if __name__ == "__main__":
    unittest.main()
