#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""The Debian packages bear the project's version, and promise the symbols that the libraries export."""
import os
import pathlib
import re
import subprocess
import unittest

SOURCE = pathlib.Path(os.environ["SOURCE"])


def first_match(path, pattern):
    return re.search(pattern, (SOURCE / path).read_text(encoding="utf-8"), re.MULTILINE)[1]


class Version(unittest.TestCase):
    def test_the_newest_entry_of_the_debian_changelog_is_of_the_projects_version(self):
        self.assertEqual(first_match("debian/changelog", r"\Alibpi \((.*?)\)"), os.environ["VERSION"])

    def test_the_newest_release_in_the_list_of_changes_is_of_the_projects_version(self):
        self.assertEqual(first_match("CHANGELOG.md", r"^## \[?([0-9]+\.[0-9]+\.[0-9]+)\b"), os.environ["VERSION"])


class Symbols(unittest.TestCase):
    def assert_promised(self, package, library):
        # A symbol that has gone fails the build of a package only where it is older than the package, which the ~ makes
        # it from the first day.
        promised = re.findall(r"^ (\S+) \d+\.\d+\.\d+~$", (SOURCE / f"debian/{package}.symbols").read_text(),
                              re.MULTILINE)
        exported = subprocess.run([os.environ["NM"], "-D", "--defined-only", "--format=posix", library], check=True,
                                  stdout=subprocess.PIPE, text=True).stdout
        self.assertEqual(sorted(promised), sorted(self.with_version(*line.split()[:2]) for line in exported.splitlines()))

    @staticmethod
    def with_version(name, kind):
        """As dpkg writes it; the absolute symbols are the names of the versions."""
        if kind == "A":
            version = name.partition("@")[0]  # LLVM's nm writes it twice
            return f"{version}@{version}"
        return name.replace("@@", "@") if "@" in name else f"{name}@Base"

    def test_of_libpi(self):
        self.assert_promised("libpi1", os.environ["LIBPI"])

    def test_of_libvelk(self):
        self.assert_promised("libvelk1", os.environ["LIBVELK"])

    def test_of_libvelkx(self):
        self.assert_promised("libvelkx1", os.environ["LIBVELKX"])

    def test_of_libpiexchange(self):
        self.assert_promised("libpiexchange1", os.environ["LIBPIEXCHANGE"])


if __name__ == "__main__":
    unittest.main()
