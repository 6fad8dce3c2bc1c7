# SPDX-License-Identifier: Apache-2.0

"""The Markdown documents of the project as pages of the site.

In a repository browser a document leads to others by their files, and into them by their headings. On the site the
same links lead to pages and places named here; what the site does not hold is named by its path in the sources."""
import pathlib
import posixpath
import re

# What a newcomer reads first stands first; documents not named here follow by their names.
ORDER = ("getting-started", "writing-a-plugin", "drive-knowledge", "estimates", "events", "exchange", "tracing",
         "configuration-documents", "abi", "design")
PROJECT = ("README.md", "CONTRIBUTING.md", "SECURITY.md", "CHANGELOG.md", "bench/RESULTS.md")

FENCE = re.compile(r"(^ *(```+)[^\n]*\n.*?^ *\2 *$)", re.MULTILINE | re.DOTALL)
HEADING = re.compile(r"^(#+) +(.+?) *$", re.MULTILINE)
# A code span, or a link, or an image with an exclamation mark before it.
CODE_OR_LINK = re.compile(r"(?P<code>`[^`]+`)|(?P<image>!?)\[(?P<text>(?:`[^`]*`|[^\]`])+)\]\((?P<target>[^)\s]+)\)")


class Guide:
    """A document: its path in the sources, the name of its page, and its title."""

    def __init__(self, root, path):
        self.path = path
        self.page = "guide_" + re.sub(r"\W", "_", pathlib.PurePosixPath(path).stem).lower()
        self.source = (root / path).read_text(encoding="utf-8")
        heading = HEADING.match(self.source)
        if not heading or heading.group(1) != "#":
            raise ValueError(f"{path} does not begin with a title")
        self.title = heading.group(2)

    def plain_title(self):
        return self.title.replace("`", "")


def find_guides(root):
    """The documents on how to use the library, and those on the project, each in the order they are read in."""
    def rank(path):
        return (ORDER.index(path.stem) if path.stem in ORDER else len(ORDER), path.stem)

    manual = [path.relative_to(root).as_posix() for path in sorted((root / "docs").glob("*.md"), key=rank)]
    project = [path for path in PROJECT if (root / path).exists()]
    return [Guide(root, path) for path in manual], [Guide(root, path) for path in project]


def place_of(heading):
    """The place that a repository browser gives a heading."""
    return re.sub(r"[^\w\- ]", "", heading.replace("`", "").lower()).strip().replace(" ", "-")


def site_text(guide, guides, root):
    """The document as Doxygen reads it, and the images in it by their paths in the sources."""
    pages = {other.path: other.page for other in guides}
    places, images = {}, set()

    def heading(match):
        marks, text = match.groups()
        if marks == "#":
            return f"{marks} {text} {{#{guide.page}}}"
        place = place_of(text)
        count = places[place] = places.get(place, -1) + 1
        return f"{marks} {text} {{#{guide.page}-{place}{f'-{count}' if count else ''}}}"

    def link(match):
        if match.group("code"):
            return match.group()
        text, target = match.group("text", "target")
        if re.match(r"[a-z]+:", target):
            return match.group()
        path, _, place = target.partition("#")
        path = posixpath.normpath(posixpath.join(posixpath.dirname(guide.path), path)) if path else guide.path
        if not (root / path).exists():
            raise ValueError(f"{guide.path} leads to {target}, which is not there")
        if match.group("image"):
            images.add(path)
            return f"![{text}]({posixpath.basename(path)})"
        if path in pages:
            return f"[{text}]({pages[path]}.html{f'#{pages[path]}-{place}' if place else ''})"
        return text if text.strip("`") == path else f"{text} (`{path}` in the sources)"

    parts = FENCE.split(guide.source)
    # Of every three parts one is text, one a fenced block, one the mark of its fence.
    text = []
    for i, part in enumerate(parts):
        if i % 3 == 0:
            text.append(CODE_OR_LINK.sub(link, HEADING.sub(heading, part)))
        elif i % 3 == 1:
            text.append(part)
    if len(places) > 3:
        text.append("\n@tableofcontents\n")
    return "".join(text), images
