#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""The comparison of exports with headers, on small libraries that are right, lack a symbol, or have one too many."""
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

HERE = pathlib.Path(__file__).parent
CLANG, CXX, NM = os.environ.get("CLANG", ""), os.environ["CXX"], os.environ["NM"]

HEADER = """
#define PI_API __attribute__((visibility("default")))
namespace Small {
PI_API int Twice(int number);
class PI_API Shape {
public:
    Shape();
    Shape(const Shape&) = default;
    virtual ~Shape();
    int Sides() const;
    int Corners() const { return Sides(); }
    static int s_Count;
};
int NotForExport();
}
"""
SOURCE = """
#include "small.h"
namespace Small {
int Twice(int number) { return 2 * number; }
Shape::Shape() = default;
Shape::~Shape() = default;
int Shape::Sides() const { return 4; }
int Shape::s_Count = 0;
int NotForExport() { return 0; }
}
"""


@unittest.skipUnless(CLANG and os.path.exists(CLANG), "without clang++ the headers cannot be read")
class Comparison(unittest.TestCase):
    def compare(self, source, header=HEADER):
        with tempfile.TemporaryDirectory() as folder:
            folder = pathlib.Path(folder)
            (folder / "small.h").write_text(header)
            (folder / "small.cpp").write_text(source)
            subprocess.run([CXX, "-std=c++17", "-fvisibility=hidden", "-fvisibility-inlines-hidden", "-fPIC", "-shared",
                            folder / "small.cpp", "-o", folder / "libsmall.so"], check=True)
            return subprocess.run(
                [sys.executable, HERE / "exports_test.py", "--library", folder / "libsmall.so", "--clang", CLANG,
                 "--nm", NM, "--include", folder, "--headers", "small.h", "--names", "Small::"],
                stdout=subprocess.PIPE, text=True)

    def test_accepts_a_library_that_agrees_with_its_header(self):
        result = self.compare(SOURCE)
        # Twice, Sides, s_Count, two constructors, three destructors, vtable, type information and its name
        self.assertEqual(result.stdout, "11 symbols are exported, all of them declared for it.\n")
        self.assertEqual(result.returncode, 0)

    def test_names_what_the_library_lacks(self):
        result = self.compare(SOURCE.replace("int Twice(int number) { return 2 * number; }", ""))
        self.assertEqual(result.stdout, "Declared for export, but not exported:\n  Small::Twice(int)\n\n")
        self.assertEqual(result.returncode, 1)

    def test_names_what_the_library_has_too_many(self):
        result = self.compare(SOURCE + "PI_API int Stray() { return 1; }")
        self.assertEqual(result.stdout, "Exported, but not declared for it:\n  Stray()\n\n")
        self.assertEqual(result.returncode, 1)

    def test_refuses_headers_that_it_does_not_see_through(self):
        result = self.compare(SOURCE, HEADER + "PI_API int Elsewhere();")
        self.assertEqual(result.stdout,
                         "The headers write the export attribute 3 times, 2 declarations with it were found.\n")
        self.assertEqual(result.returncode, 1)


if __name__ == "__main__":
    unittest.main()
