#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""symbol_nodes_test.py NM LIBRARY FIGURES: the symbols of a type are of the version that the list of compared types names."""
import pathlib
import re
import subprocess
import sys

nm, library, figures = sys.argv[1:]

node, nodes = "PI_1.0", {}
for line in pathlib.Path(figures).read_text().splitlines():
    if since := re.fullmatch(r"// Since (PI_[\d.]+)", line):
        node = since[1]
    elif listed := re.match(r"PI_BUILD_(?:TYPE|SIZE)\(PI::(\w+)", line):
        nodes[listed[1]] = node

symbols = subprocess.run([nm, "-D", "--defined-only", "--format=posix", library], check=True, stdout=subprocess.PIPE,
                         text=True).stdout.splitlines()
compared, wrong = 0, []
for symbol, version in re.findall(r"^(\S+?)@@?(PI_[\d.]+) [^A]", "\n".join(symbols), re.MULTILINE):
    owner = re.match(r"_Z(?:T[ISV])?NK?2PI(\d+)(\w+)", symbol)
    type_name = owner and owner[2][:int(owner[1])]
    if type_name in nodes:
        compared += 1
        if version != nodes[type_name]:
            wrong.append(f"{symbol} is of {version}, its type of {nodes[type_name]}")

print(*wrong, f"{compared} symbols of {len(nodes)} types compared", sep="\n")
sys.exit(bool(wrong) or compared < 300)
