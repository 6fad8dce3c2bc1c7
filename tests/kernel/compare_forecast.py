#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Compares the time remaining that the example service told during rebuilds with what came.

usage: compare_forecast.py FOLDER

FOLDER holds what tests/kernel/forecast.sh leaves. From 10 percent on, what is told of a steady rebuild has to be within
20 percent of what came, or 2 seconds, since it is told in whole ones and once a second. One whose pace falls is shown
beside them: nobody knows at its beginning how slow its end is. Prints a table, and ends with 1 when something differs.
"""

import json
import pathlib
import sys

from inventory import read_value

TOLERANCE, SECONDS = 0.2, 2


def read_told(path):
    """By array: moment, percent, seconds told."""
    told = {}
    for line in path.read_text().splitlines():
        moment, record = line.split(" ", 1)
        values = {each["id_name"]: read_value(each) for each in json.loads(record).get("object", {}).get("properties", [])}
        if "REBUILD_PROGRESS" in values and "REMAINING_TIME" in values:
            hours, minutes, seconds = map(int, values["REMAINING_TIME"].split(":"))
            sample = float(moment), float(values["REBUILD_PROGRESS"]), 3600 * hours + 60 * minutes + seconds
            told.setdefault(values["OS_DEVICE"].removeprefix("/dev/"), []).append(sample)
    return told


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: compare_forecast.py FOLDER")
    folder = pathlib.Path(sys.argv[1])
    told = read_told(folder / "watch.json")
    compared = differing = 0
    for line in sorted((folder / "rebuilds.tsv").read_text().splitlines()):
        array, end, pace, text = line.split("\t")
        samples = [(percent, seconds, float(end) - moment) for moment, percent, seconds in told[array] if percent >= 10]
        wrong = sum(abs(seconds - came) > max(TOLERANCE * came, SECONDS) for _, seconds, came in samples)
        print(f"{array}, {text}: {len(samples)} times told, {wrong} differ{'' if pace == 'steady' else ', not counted'}")
        for tenth in range(10, 100, 10):
            percent, seconds, came = next(each for each in samples if each[0] >= tenth)
            print(f"  at {percent:4.1f} %: {seconds:3} s told, {came:5.1f} s came, {100 * (seconds / came - 1):+5.1f} %")
        if pace == "steady":
            compared, differing = compared + len(samples), differing + wrong
    print(f"{len(told)} rebuilds, {compared} times remaining compared, {differing} differ")
    sys.exit(differing != 0 or compared == 0)


if __name__ == "__main__":
    main()
