# SPDX-License-Identifier: Apache-2.0

"""search.py FOLDER: what the site's search offers.

Doxygen has the places of one name in an order that differs with the folder that it builds in: they are sorted. It also
makes a page without content of each file that holds a page: these are removed."""
import pathlib
import re
import sys

# ['name_1',['NAME',['../page.html#a',1,'scope'],['../page.html#b',1,'scope']]]
PLACES = re.compile(r"(?:,\['\.\./[^']*',\d+,'[^']*'\]){2,}")
PLACE = re.compile(r",\['\.\./[^']*',\d+,'[^']*'\]")
PAGE_FILE = re.compile(r"^  \['[^']*',\['[^']*',\['\.\./[^']*_8(?:md|dox)\.html',1,''\]\]\],?\n", re.MULTILINE)


def main():
    site = pathlib.Path(sys.argv[1])
    for script in (site / "search").glob("*.js"):
        text = PAGE_FILE.sub("", script.read_text(encoding="utf-8"))
        script.write_text(PLACES.sub(lambda match: "".join(sorted(PLACE.findall(match.group()))), text),
                          encoding="utf-8")
    for kind in ("md", "dox"):
        for page in site.glob(f"*_8{kind}.html"):
            page.unlink()


if __name__ == "__main__":
    main()
