# SPDX-License-Identifier: Apache-2.0

"""finish.py FOLDER: finishes the site that Doxygen has built, and checks its links.

Doxygen orders the search results of one name differently in each build folder: they are sorted. It also makes an empty
page for each file that contains a page: these are removed."""
import pathlib
import re
import sys
import urllib.parse

# ['name_1',['NAME',['../page.html#a',1,'scope'],['../page.html#b',1,'scope']]]
PLACE = r",\['\.\./[^']*',\d+,'[^']*'\]"
PAGE_FILE = re.compile(r"^  \['[^']*',\['[^']*',\['\.\./[^']*_8(?:markdown|dox)\.html',1,''\]\]\],?\n", re.MULTILINE)

site = pathlib.Path(sys.argv[1])
for script in (site / "search").glob("*.js"):
    text = PAGE_FILE.sub("", script.read_text(encoding="utf-8"))
    script.write_text(re.sub(f"(?:{PLACE}){{2,}}", lambda places: "".join(sorted(re.findall(PLACE, places[0]))), text),
                      encoding="utf-8")
for kind in ("markdown", "dox"):
    for page in site.glob(f"*_8{kind}.html"):
        page.unlink()

pages = {path.name: path.read_text(encoding="utf-8") for path in site.glob("*.html")}
places = {name: set(re.findall(r'<[^>]+ (?:id|name)="([^"]+)"', text)) for name, text in pages.items()}
broken = set()
for name, text in pages.items():
    for link in re.findall(r'<[^>]+ (?:href|src)="(?![a-z]+:)([^"]+)"', text):
        path, _, place = urllib.parse.unquote(link).partition("#")
        target = path or name
        if not (site / target).is_file() or place and place not in places.get(target, {place}):
            broken.add(f"{name}: {link} leads nowhere")
if broken or not pages:
    sys.exit("\n".join(sorted(broken)) or f"{site} has no pages")
