# SPDX-License-Identifier: Apache-2.0

"""The Markdown documents of the project as Doxygen reads them.

Headings get the anchors that repository browsers give them, and links lead to the pages and anchors of the site; Doxygen
then refuses broken ones. A link to a file that is not in the site becomes its text."""
import pathlib
import re

FENCE = re.compile(r"(^ *```.*?^ *```$)", re.MULTILINE | re.DOTALL)
HEADING = re.compile(r"^(#+) +(.+?) *$", re.MULTILINE)
LINK = re.compile(r"(?P<code>`[^`]+`)|(?P<image>!?)\[(?P<text>(?:`[^`]*`|[^\]`])+)\]"
                  r"\((?![a-z]+:)(?P<path>[^)\s#]*)#?(?P<place>[^)\s]*)\)")


def page_of(path):
    name = re.sub(r"\W", "_", pathlib.PurePath(path).stem).lower()
    return "mainpage" if name == "readme" else "guide_" + name


def document(path, text):
    places = []

    def heading(match):
        marks, title = match.groups()
        place = re.sub(r"[^\w\- ]", "", title.lower()).replace(" ", "-")
        places.append(place)
        count = f"-{places.count(place) - 1}" if places.count(place) > 1 else ""
        if marks == "#":
            return f"# {title.replace('`', '')} {{#{page_of(path)}}}"
        return f"{marks} {title} {{#{page_of(path)}-{place}{count}}}"

    def link(match):
        if match["code"]:
            return match[0]
        target = pathlib.Path(path).parent / match["path"] if match["path"] else pathlib.Path(path)
        if not target.exists():
            raise ValueError(f"{path} leads to {match['path']}, which does not exist")
        if match["image"]:
            return f"![{match['text']}]({target.name})"
        if target.suffix != ".md":
            return match["text"]
        return f"[{match['text']}](@ref {page_of(target)}{'-' + match['place'] if match['place'] else ''})"

    parts = FENCE.split(text)
    parts[::2] = [LINK.sub(link, HEADING.sub(heading, part)) for part in parts[::2]]
    return "".join(parts)
