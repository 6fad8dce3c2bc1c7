#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Compares the schema of records with what the library writes and with what it refuses.

Usage: model_schema_test.py SCHEMA PROGRAM [SEED]
"""

import copy
import json
import random
import subprocess
import sys
import unittest

import jsonschema

with open(sys.argv[1], encoding="utf-8") as file:
    SCHEMA = json.load(file)
PROGRAM = sys.argv[2]
SEED = int(sys.argv[3]) if len(sys.argv) > 3 else random.randrange(2**32)
VALIDATOR = jsonschema.Draft202012Validator(SCHEMA)


def written(count):
    run = subprocess.run([PROGRAM, "write", str(SEED), str(count)], stdout=subprocess.PIPE, check=True)
    return [json.loads(line) for line in run.stdout.splitlines()]


def refusals(documents):
    """Why the library refuses each, or an empty text. The record that is expected is the one that was written."""
    lines = "".join(f"{record} {json.dumps(document)}\n" for record, document in documents)
    run = subprocess.run([PROGRAM, "read"], input=lines, text=True, stdout=subprocess.PIPE, check=True)
    return run.stdout.split("\n")[:-1]


def strict(schema):
    """The schema with no member optional and none unknown; of a property's data any kind may be left out."""
    schema = copy.deepcopy(schema)
    data = schema["$defs"]["property"]["properties"]["data"]
    pending = [*schema["$defs"].values()]
    while pending:
        part = pending.pop()
        pending += [child for child in part.values() if isinstance(child, dict)]
        pending += [child for child in part.get("anyOf", []) if isinstance(child, dict)]
        if part.get("type") == "object":
            part["additionalProperties"] = False
            if part is not data:
                part["required"] = list(part["properties"])
    # What stands outermost has two members more.
    records = schema["properties"]["record"]["enum"]
    for record in records:
        outermost = copy.deepcopy(schema["$defs"][record])
        outermost["properties"].update(record={}, version={})
        schema["$defs"][f"outermost {record}"] = outermost
    schema["allOf"] = [{"if": {"properties": {"record": {"const": record}}},
                        "then": {"$ref": f"#/$defs/outermost {record}"}} for record in records]
    return schema


def places(value, path=()):
    """The paths of all that a document holds, names for people left out: the library passes them over."""
    if isinstance(value, dict):
        for name, member in value.items():
            if not (name.endswith(("_name", "_names")) or name == "text" and "bytes" in value):
                yield path + (name,)
                yield from places(member, path + (name,))
    elif isinstance(value, list):
        for index, element in enumerate(value):
            yield path + (index,)
            yield from places(element, path + (index,))


def outer(document, path):
    for step in path[:-1]:
        document = document[step]
    return document


class ModelSchema(unittest.TestCase):
    def test_is_a_schema(self):
        jsonschema.Draft202012Validator.check_schema(SCHEMA)

    def test_everything_that_is_written_is_valid_and_nothing_is_missing(self):
        validator = jsonschema.Draft202012Validator(strict(SCHEMA))
        documents = written(40)
        self.assertEqual({document["record"] for document in documents},
                         set(SCHEMA["properties"]["record"]["enum"]))
        for document in documents:
            VALIDATOR.validate(document)
            validator.validate(document)

    def test_what_the_library_refuses_is_not_valid_and_the_other_way_round(self):
        rng = random.Random(SEED)
        odd = [None, True, "", "x", "12", "-3", "NaN", 0, -1, 1.5, 7.0, 2**31, 2**32, 2**63, 2**64, 1e39, [], [0], {},
               {"bytes": "e9"}, {"bytes": "e"}]
        changed = []
        for document in written(3):
            record = document["record"]
            if record == "drive_health":
                continue
            paths = list(places(document))
            for path in rng.sample(paths, min(40, len(paths))):
                for value in rng.sample(odd, 6):
                    other = copy.deepcopy(document)
                    outer(other, path)[path[-1]] = value
                    changed.append((record, other))
                other = copy.deepcopy(document)
                del outer(other, path)[path[-1]]
                changed.append((record, other))
        reasons = refusals(changed)
        self.assertEqual(len(reasons), len(changed))
        accepted = 0
        for (record, document), reason in zip(changed, reasons):
            # Another record is none to the reader and another choice to the schema.
            valid = document.get("record") == record and VALIDATOR.is_valid(document)
            self.assertEqual(valid, reason == "", f"{reason}\n{json.dumps(document)}")
            accepted += valid
        self.assertGreater(accepted, len(changed) // 20)
        self.assertLess(accepted, len(changed) * 19 // 20)


if __name__ == "__main__":
    print(f"seed {SEED}")
    unittest.main(argv=sys.argv[:1])
