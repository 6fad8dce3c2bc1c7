# SPDX-License-Identifier: Apache-2.0

"""The library's lists, read from the files that the library itself is compiled from."""
import ast
import pathlib
import re
import xml.etree.ElementTree

ROOT = pathlib.Path(__file__).resolve().parents[2]

ROW = re.compile(r"^PI_\w+\((.*)\)\s*(?://.*)?$")
FIELD = re.compile(r"\s*(\"(?:[^\"\\]|\\.)*\"|[\w.]+)\s*(,|$)")


def read_list(path):
    """The rows of a list: texts without their quotes, everything else as it is written."""
    rows = []
    for number, line in enumerate((ROOT / path).read_text().splitlines(), 1):
        if not line or line.startswith(("//", "#define PI_CONSTANT(", "#undef PI_CONSTANT")):
            continue
        row = ROW.match(line)
        if not row:
            raise ValueError(f"{path}:{number} is no row: {line}")
        values = fields(row.group(1))
        rows.append(values + values[1:] if line.startswith("PI_CONSTANT(") else values)  # constant and name in one
    return rows


def fields(text):
    values, place = [], 0
    while place < len(text):
        field = FIELD.match(text, place)
        if not field:
            raise ValueError(f"not a list of texts, numbers and names: {text}")
        value = field.group(1)
        values.append(ast.literal_eval(value) if value.startswith('"') else value)
        place = field.end()
    return values


def event_texts():
    """The English text of every event that has one, by the number as it is written."""
    tree = xml.etree.ElementTree.parse(ROOT / "share/pi/strings.en.xml")
    return {text.get("id"): text.text for text in tree.iter("String")}
