# SPDX-License-Identifier: Apache-2.0
"""design_test.py PROJECT: what the design page says of the folders in src/ is what their sources include."""
import pathlib
import re
import sys

project = pathlib.Path(sys.argv[1])
LIBRARIES = ("boost", "plog", "velk", "velkx")


def stated():
    """Folder -> (folders, libraries), from the table of the page."""
    rows = {}
    for line in (project / "docs/design.md").read_text().splitlines():
        row = re.fullmatch(r"\| `(\w+)` \| .* \| (.*) \| (.*) \|", line)
        if row:
            rows[row[1]] = tuple(set() if cell == "-" else set(cell.split(", ")) for cell in row.groups()[1:])
    return rows


def included():
    """The same, from the sources."""
    folders = sorted(path for path in (project / "src").iterdir() if path.is_dir())
    names = {folder.name for folder in folders}
    rows = {}
    for folder in folders:
        first = {
            directory
            for source in folder.iterdir()
            for directory in re.findall(r'^#include ["<](\w+)/', source.read_text(), re.MULTILINE)
        }
        rows[folder.name] = (first & names - {folder.name}, first & set(LIBRARIES))
    return rows


page, sources = stated(), included()
for folder in sorted(page.keys() | sources.keys()):
    if page.get(folder) != sources.get(folder):
        print(f"src/{folder}: the page says {page.get(folder)}, the sources say {sources.get(folder)}")
sys.exit(page != sources or not page)
