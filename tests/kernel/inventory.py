# SPDX-License-Identifier: Apache-2.0
"""Reads the inventory that the example service prints as JSON."""

import json

UNITS = {21025: 1, 21003: 2**10, 21002: 2**20, 21022: 2**30, 21026: 2**40, 21027: 2**50}  # bytes to petabytes
KINDS = {19901: "array", 19902: "drive"}


def read_inventory(path):
    """Plug-in, kind, properties and parts of each object. Numbers are texts, sizes numbers of bytes."""
    objects = {}
    for line in path.read_text().splitlines():
        line = json.loads(line)
        if record := line.get("object"):
            values = {each["id_name"]: read_value(each) for each in record["properties"]}
            kind = KINDS.get(record["object_type"], "adapter")
            each = {"plugin": line["plugin"], "kind": kind, "values": values, "parts": []}
            objects[line["plugin"], record["object_id"]] = each
            for parent in record["related_ids1"]:
                objects[line["plugin"], parent]["parts"].append(each)
    return list(objects.values())


def read_value(record):
    ((kind, data),) = record["data"].items()
    if kind == "float" and record["attribute2"] in UNITS:
        return data["value"] * UNITS[record["attribute2"]]
    return data["value_name"] if kind == "choice" else str(data["value"])
