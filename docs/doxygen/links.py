# SPDX-License-Identifier: Apache-2.0

"""links.py FOLDER: fails where a page of the site leads to a file or a place of a file that is not there.

Looked at are the pages themselves and what their menu and their search lead to. Addresses elsewhere are counted, not
asked for: the site is checked without a network."""
import html.parser
import pathlib
import re
import sys
import urllib.parse

LINKS = {("a", "href"), ("link", "href"), ("img", "src"), ("script", "src"), ("iframe", "src"), ("object", "data")}
# Targets within Doxygen's scripts: url:"group.html" in the menu, '../class.html#a1' in the search.
MENU_TARGET = re.compile(r'url:"([^"]+)"')
SEARCH_TARGET = re.compile(r"'\.\./([^']+)'")


class Page(html.parser.HTMLParser):
    """The links of a page and the places that links may lead to."""

    def __init__(self, path):
        super().__init__(convert_charrefs=True)
        self.links, self.places = [], set()
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name == "id" or (tag == "a" and name == "name"):
                self.places.add(value)
            elif (tag, name) in LINKS and value:
                self.links.append((self.getpos()[0], value))


def broken_links(folder):
    """A line for each broken link, the number of links within the site, and the addresses elsewhere."""
    pages = {path: Page(path) for path in sorted(folder.rglob("*.html"))}
    links = [(path, line, link) for path, page in pages.items() for line, link in page.links]
    for script, pattern in [(folder / "menudata.js", MENU_TARGET)] + [
            (script, SEARCH_TARGET) for script in sorted((folder / "search").glob("*.js"))]:
        if script.exists():
            links += [(folder / "index.html", f"by way of {script.name}", link)
                      for link in pattern.findall(script.read_text(encoding="utf-8"))]

    lines, elsewhere = [], set()
    for path, line, link in links:
        parts = urllib.parse.urlsplit(link)
        if parts.scheme == "javascript":
            continue
        if parts.scheme or parts.netloc:
            elsewhere.add(link)
            continue
        target = (path.parent / urllib.parse.unquote(parts.path)).resolve() if parts.path else path
        where = f"{path.relative_to(folder)}:{line}: {link}"
        if not target.is_file():
            lines.append(f"{where}: there is no such file")
        elif folder not in target.parents:
            lines.append(f"{where}: leads out of the site")
        elif parts.fragment and target in pages and urllib.parse.unquote(parts.fragment) not in pages[target].places:
            lines.append(f"{where}: there is no such place in the file")
    return lines, len(pages), len(links) - len(elsewhere), elsewhere


def main():
    folder = pathlib.Path(sys.argv[1]).resolve()
    lines, pages, links, elsewhere = broken_links(folder)
    for address in sorted(elsewhere):
        print(f"Elsewhere, not looked at: {address}")
    if lines:
        sys.exit("\n".join(dict.fromkeys(lines)) + f"\n{len(lines)} broken links")
    if pages == 0 or links == 0:
        sys.exit(f"{folder} holds no pages with links")
    print(f"{pages} pages, {links} links within the site, none broken.")


if __name__ == "__main__":
    main()
