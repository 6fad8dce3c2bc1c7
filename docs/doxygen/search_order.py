# SPDX-License-Identifier: Apache-2.0

"""search_order.py FOLDER: sorts the places that the site's search offers for one name.

Doxygen has them in an order that differs with the folder that it builds in."""
import pathlib
import re
import sys

# ['name_1',['NAME',['../page.html#a',1,'scope'],['../page.html#b',1,'scope']]]
PLACES = re.compile(r"(?:,\['\.\./[^']*',\d+,'[^']*'\]){2,}")
PLACE = re.compile(r",\['\.\./[^']*',\d+,'[^']*'\]")


def main():
    for script in pathlib.Path(sys.argv[1], "search").glob("*.js"):
        text = script.read_text(encoding="utf-8")
        script.write_text(PLACES.sub(lambda match: "".join(sorted(PLACE.findall(match.group()))), text),
                          encoding="utf-8")


if __name__ == "__main__":
    main()
