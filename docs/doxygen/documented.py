# SPDX-License-Identifier: Apache-2.0

"""documented.py FOLDER: fails where a public name of the headers has no documentation, by Doxygen's XML of them.

Doxygen's own warning leaves out constants of enumerations, and what stands in a header or a namespace that has no
documentation itself."""
import pathlib
import sys
import xml.etree.ElementTree

KINDS = ("class", "struct", "union", "namespace", "file", "group")


def is_documented(element):
    return any("".join(part.itertext()).strip() for name in ("briefdescription", "detaileddescription")
               for part in element.findall(name))


def place(element):
    location = element.find("location")
    return "" if location is None else f"{location.get('file')}:{location.get('line', '1')}: "


def undocumented(folder):
    """A line for each name without documentation, and how many names there are."""
    lines, seen = [], set()
    for entry in xml.etree.ElementTree.parse(folder / "index.xml").getroot():
        if entry.get("kind") not in KINDS:
            continue
        compound = xml.etree.ElementTree.parse(folder / f"{entry.get('refid')}.xml").getroot().find("compounddef")
        if compound.get("kind") == "file" and not compound.findtext("compoundname").endswith(".h"):
            continue
        name = compound.findtext("compoundname")
        if compound.get("id") not in seen and not is_documented(compound):
            lines.append(f"{place(compound)}{compound.get('kind')} {name} is not documented")
        seen.add(compound.get("id"))
        for member in compound.iter("memberdef"):
            # A member stands in the file of its group or its namespace, and in that of its header.
            if member.get("id") in seen or member.get("kind") == "friend" or member.get("prot") == "private":
                continue
            seen.add(member.get("id"))
            member_name = member.findtext("qualifiedname") or member.findtext("name")
            if not is_documented(member):
                lines.append(f"{place(member)}{member.get('kind')} {member_name}{member.findtext('argsstring', '')}"
                             " is not documented")
            for value in member.findall("enumvalue"):
                seen.add(value.get("id"))
                if not is_documented(value):
                    lines.append(f"{place(member)}constant {member_name} {value.findtext('name')} is not documented")
    return lines, len(seen)


def main():
    lines, count = undocumented(pathlib.Path(sys.argv[1]))
    if lines:
        sys.exit("\n".join(sorted(lines)))
    if count == 0:
        sys.exit(f"{sys.argv[1]} names nothing at all")
    print(f"{count} public names, all documented.")


if __name__ == "__main__":
    main()
