# SPDX-License-Identifier: Apache-2.0

"""The library's lists, read from the files from which the library itself is compiled."""
import ast
import csv
import pathlib
import re
import xml.etree.ElementTree

ROOT = pathlib.Path(__file__).resolve().parents[2]

ROW = re.compile(r"^PI_\w+\((.*)\)\s*(?://.*)?$")
FIELD = re.compile(r"\s*(\"(?:[^\"\\]|\\.)*\"|[\w.]+)\s*(,|$)")


def read_list(path):
    """The rows of a list: texts without their quotes, everything else as written."""
    rows = []
    for number, line in enumerate((ROOT / path).read_text().splitlines(), 1):
        if not line or line.startswith(("//", "#define PI_CONSTANT(", "#undef PI_CONSTANT")):
            continue
        row = ROW.match(line)
        if not row:
            raise ValueError(f"{path}:{number} is no row: {line}")
        values = fields(row.group(1))
        rows.append(values + values[1:] if line.startswith("PI_CONSTANT(") else values)  # the constant is the name
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


VOCABULARIES = {"property": "property_ids", "operation": "operation_ids", "event": "event_ids"}


def read_meanings(path):
    """The rows of a table of meanings, each with the number of its constant first."""
    numbers = {(vocabulary, row[1]): row[0] for vocabulary, name in VOCABULARIES.items()
               for row in read_list(f"include/pi/vocabulary/{name}.def")}
    rows = csv.DictReader((ROOT / path).read_text(encoding="utf-8").splitlines(), delimiter="\t", quoting=csv.QUOTE_NONE)
    try:
        return [[numbers[row["vocabulary"], row["constant"]]] + list(row.values())[1:] for row in rows]
    except KeyError as key:
        raise ValueError(f"{path} has {key}, which is in no vocabulary") from key


def event_texts():
    """The English text of every event that has one, by the number as written."""
    tree = xml.etree.ElementTree.parse(ROOT / "share/pi/strings.en.xml")
    return {text.get("id"): text.text for text in tree.iter("String")}
