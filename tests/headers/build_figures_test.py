#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""build_figures_test.py INCLUDE-FOLDER: the build check compares every type that the public headers let cross."""
import pathlib
import re
import sys

folder = pathlib.Path(sys.argv[1])
# The one has no objects, of the other the modules compare the contents.
DO_NOT_CROSS = {"CPluginHelper", "_BUILD_FIGURE"}

declared = set()
for header in folder.glob("*.h"):
    # Exported classes, and plain structures, whose names begin with an underscore; not forward declarations.
    declared |= set(re.findall(r"^ *(?:class|struct) (?:PI_API (\w+)|(?=_)(\w+))(?: final)?(?: : [^{;]*)? \{", header.read_text(),
                               re.MULTILINE))
declared = {exported or plain for exported, plain in declared} - DO_NOT_CROSS
compared = set(re.findall(r"^PI_BUILD_(?:TYPE|SIZE)\((?:\w+::)*(\w+)[,)]", (folder / "build_figures.def").read_text(),
                          re.MULTILINE))

missing = sorted(declared - compared)
print(f"{len(declared)} types cross" + (f", not compared are {', '.join(missing)}" if missing else ""))
sys.exit(bool(missing) or len(declared) < 30)
