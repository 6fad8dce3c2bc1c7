# SPDX-License-Identifier: Apache-2.0

"""The tables of the site hold the lists as they were fixed, its links are checked, and its guides lead where they say."""
import pathlib
import re
import sys
import tempfile
import unittest

SOURCES = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(SOURCES / "docs/doxygen"))

import guides  # noqa: E402
import links  # noqa: E402
import lists  # noqa: E402
import pages  # noqa: E402

CELL = re.compile(r"<td[^>]*>(?:<a [^>]*>)?([^<]*)(?:</a>)?</td>")


# A constant where it is used, by the names that sources give to its namespace.
VOCABULARY_OF = {"ID": "property", "PropertyID": "property", "Operation": "operation", "OperationID": "operation",
                 "Event": "event", "EventID": "event"}
USE = re.compile(rf"\b({'|'.join(VOCABULARY_OF)})::([A-Z][A-Z0-9_]+)\b")
TYPES = {"STRING", "CHOICE", "BOOL", "LONG", "SIGNED_LONG", "FLOAT"}
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

    def assert_names(self, page, name):
        rows, numbers = [], set()
        for number, _, text, *_ in site_rows(page):
            if number not in numbers:  # of two rows of one number the first gives the name
                rows.append((number, text))
            numbers.add(number)
        self.assertEqual(rows, fixed_rows(name))

    def test_error_codes_are_whole_and_in_order(self):
        self.assert_names("table_error_codes", "error_codes.tsv")

    def test_property_ids_are_whole_and_in_order(self):
        self.assert_names("table_property_ids", "property_ids.tsv")

    def test_property_values_are_whole_and_in_order(self):
        self.assert_names("table_property_values", "property_values.tsv")

    def test_operation_ids_are_whole_and_in_order(self):
        self.assert_names("table_operation_ids", "operation_ids.tsv")

    def test_event_ids_are_whole_and_in_order(self):
        self.assert_names("table_event_ids", "event_ids.tsv")

    def test_help_topics_are_whole_and_in_order(self):
        self.assertEqual(site_rows("table_help_topics"), fixed_rows("help_topics.tsv"))

    def test_icons_are_whole_and_in_order(self):
        self.assertEqual(site_rows("table_icons"), fixed_rows("icons.tsv"))

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


class Guides(unittest.TestCase):
    def site_text(self, files, path):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for name, text in files.items():
                (root / name).parent.mkdir(parents=True, exist_ok=True)
                (root / name).write_text(text)
            manual, project = guides.find_guides(root)
            guide = next(guide for guide in manual + project if guide.path == path)
            return guides.site_text(guide, manual + project, root)

    def test_links_to_documents_lead_to_their_pages(self):
        text, _ = self.site_text({"README.md": "# R\n[how](docs/a-b.md), [part](docs/a-b.md#the-part)\n",
                                  "docs/a-b.md": "# A\n## The part\n"}, "README.md")
        self.assertEqual(text, "# R {#guide_readme}\n[how](guide_a_b.html), [part](guide_a_b.html#guide_a_b-the-part)\n")

    def test_links_between_documents_are_relative_to_their_folder(self):
        text, _ = self.site_text({"docs/a.md": "# A\n[b](b.md) [r](../README.md)\n", "docs/b.md": "# B\n",
                                  "README.md": "# R\n"}, "docs/a.md")
        self.assertEqual(text, "# A {#guide_a}\n[b](guide_b.html) [r](guide_readme.html)\n")

    def test_headings_of_one_text_are_numbered_as_repository_browsers_do(self):
        text, _ = self.site_text({"docs/a.md": "# A\n## `x`: Y, z!\n## `x`: Y, z!\n"}, "docs/a.md")
        self.assertEqual(text, "# A {#guide_a}\n## `x`: Y, z! {#guide_a-x-y-z}\n## `x`: Y, z! {#guide_a-x-y-z-1}\n")

    def test_what_the_site_does_not_hold_is_named_by_its_path(self):
        text, _ = self.site_text({"docs/a.md": "# A\n[the list](../src/x.def) [`src/x.def`](../src/x.def)\n",
                                  "src/x.def": ""}, "docs/a.md")
        self.assertEqual(text, "# A {#guide_a}\nthe list (`src/x.def` in the sources) `src/x.def`\n")

    def test_a_link_to_nothing_is_refused(self):
        for link in ("[x](y.md)", "![x](y.svg)", "[x](../nothing)"):
            with self.subTest(link=link), self.assertRaises(ValueError):
                self.site_text({"docs/a.md": f"# A\n{link}\n"}, "docs/a.md")

    def test_images_are_taken_along(self):
        text, images = self.site_text({"README.md": "# R\n![p](docs/images/p.svg)\n", "docs/images/p.svg": ""},
                                      "README.md")
        self.assertEqual((text, images), ("# R {#guide_readme}\n![p](p.svg)\n", {"docs/images/p.svg"}))

    def test_code_is_left_alone(self):
        code = "```sh\n# no heading\n[x](nothing)\n```\n`[x](nothing)`\n"
        text, _ = self.site_text({"docs/a.md": f"# A\n{code}"}, "docs/a.md")
        self.assertEqual(text, f"# A {{#guide_a}}\n{code}")


class Links(unittest.TestCase):
    def broken(self, files):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder).resolve()
            for name, text in files.items():
                (root / name).parent.mkdir(exist_ok=True)
                (root / name).write_text(text)
            return links.broken_links(root / "site")[0]

    def test_whole_links_are_not_reported(self):
        self.assertEqual(self.broken({
            "site/a.html": '<a href="b.html#x">1</a><a href="#y">2</a><p id="y"><a href="https://example.org/">3</a>',
            "site/b.html": '<a name="x"></a><img src="p.png"><script src="s.js"></script>', "site/p.png": "",
            "site/s.js": ""}), [])

    def test_a_missing_file_is_reported(self):
        self.assertEqual(self.broken({"site/a.html": '\n<a href="b.html">1</a>'}),
                         ["a.html:2: b.html: there is no such file"])

    def test_a_missing_place_is_reported(self):
        self.assertEqual(self.broken({"site/a.html": '<a href="b.html#x">1</a><a href="#z">2</a>', "site/b.html": ""}),
                         ["a.html:1: b.html#x: there is no such place in the file",
                          "a.html:1: #z: there is no such place in the file"])

    def test_a_way_out_of_the_site_is_reported(self):
        self.assertEqual(self.broken({"site/a.html": '<a href="../b.html">1</a>', "b.html": ""}),
                         ["a.html:1: ../b.html: leads out of the site"])

    def test_the_menu_and_the_search_are_looked_at(self):
        self.assertEqual(self.broken({
            "site/index.html": "", "site/menudata.js": '{text:"A",url:"gone.html"}',
            "site/search/all_0.js": "['a',['A',['../index.html#gone',1,'']]]"}),
            ["index.html:by way of menudata.js: gone.html: there is no such file",
             "index.html:by way of all_0.js: index.html#gone: there is no such place in the file"])


if __name__ == "__main__":
    unittest.main()
