# SPDX-License-Identifier: Apache-2.0

"""What Doxygen reads instead of a public header: the same lines, with what it cannot see or should not ask for.

- The constants of the vocabularies, which the compiler includes from their lists.
- The comment of the first of several declarations, between `/// @{` and `/// @}`, for each of them. Doxygen would do so
  as well, but then also where such a pair holds a section with a title, and would never miss a comment there.
- A line of documentation for constructors, assignments and destructors that do what every reader expects and therefore
  have no comment in the header.
- A using-declaration of an enumeration as the alias that it amounts to.
- Without friends and explicit instances of templates, which are no names of their own.

No line is added or dropped, so that a warning names the line of the header."""
import html
import re
import sys

import lists

VOCABULARY = re.compile(r"^#define (PI_\w+)\(number, constant, name\) constant = number,\n"
                        r"#include <(pi/vocabulary/(\w+)\.def)>\n"
                        r"#undef \1$", re.MULTILINE)
# Seen by Doxygen as a name of the outer namespace too, so that texts and signatures link to it.
USING_ENUMERATION = re.compile(r"^using (\w+)::(_\w+);$", re.MULTILINE)
NO_NAMES = re.compile(r"^(?:extern template| *friend) .*;$", re.MULTILINE)

EXPECTED = [
    (re.compile(r"^\s*(?:constexpr )?(\w+)\(\) = default;$"), "Sets every member to the value given with it, or empty."),
    (re.compile(r"^\s*(\w+)\(const \1&\) = default;$"), "Copies every member."),
    (re.compile(r"^\s*(\w+)\(\1&&\) noexcept = default;$"), "Moves every member."),
    (re.compile(r"^\s*(\w+)& operator=\(const \1&\) = default;$"), "Copies every member."),
    (re.compile(r"^\s*(\w+)& operator=\(\1&&\) noexcept = default;$"), "Moves every member."),
    (re.compile(r"^\s*(virtual )?~\w+\(\)( override)?;$"), "Destroys every member."),
]


def constants(match):
    """The constants of a list on one line, between the lines that stand for it."""
    texts = lists.event_texts() if match.group(3) == "event_ids" else {}
    line, seen = [], set()
    for number, constant, name in lists.read_list("include/" + match.group(2)):
        row = f'<a href="table_{match.group(3)}.html#{number}">{number}</a>'
        if number in seen:
            text = f"Another name of {row}"
        else:
            text = texts.get(number) or (f'"{name}"' if name else "Without a name")
            text = f"{escaped(text)}: row {row}"
        seen.add(number)
        line.append(f"{constant} = {number}, /**< {text}. */")
    return "\n" + " ".join(line) + "\n"


def escaped(text):
    return re.sub(r"([%@#\\])", r"\\\1", html.escape(text, quote=False))


def with_expected(text):
    lines = text.split("\n")
    for i, line in enumerate(lines):
        if i > 0 and re.match(r"\s*///(?! @[{}])", lines[i - 1]):
            continue
        for pattern, documentation in EXPECTED:
            if pattern.match(line):
                lines[i] = f"{line}  ///< {documentation}"
    return "\n".join(lines)


class Shared:
    """The declarations between /// @{ and /// @}, which all have the comment of the first."""

    def __init__(self):
        self.comment, self.declaration = [], ""

    def line(self, line):
        if re.match(r"\s*///(?!<)", line):
            self.comment.append(line.strip()[3:].strip() or "<p>")
            return ""
        begins = self.declaration == "" and line.strip() != ""
        self.declaration += re.sub(r"//.*", "", line).strip()
        if self.declaration.endswith((";", ",")) and self.declaration.count("(") == self.declaration.count(")"):
            self.declaration = ""
        return f"/** {' '.join(self.comment)} */ {line.lstrip()}" if begins else line


def with_shared(text):
    lines, opened = text.split("\n"), []
    for i, line in enumerate(lines):
        if re.match(r"\s*/// @\{$", line):
            is_section = re.match(r"\s*/// @(addtogroup|name) ", lines[i - 1])
            opened.append(None if is_section else Shared())
            lines[i] = line if is_section else ""
        elif re.match(r"\s*/// @\}$", line):
            lines[i] = line if opened.pop() is None else ""
        elif opened and opened[-1] is not None:
            lines[i] = opened[-1].line(line)
    return "\n".join(lines)


def with_percent_signs(text):
    """In comments a percent sign is one; to Doxygen it hides a name."""
    lines, in_code = text.split("\n"), False
    for i, line in enumerate(lines):
        if "///" not in line:
            continue
        if "@code" in line or "@endcode" in line:
            in_code = "@code" in line
        elif not in_code:
            code, mark, comment = line.partition("///")
            lines[i] = code + mark + comment.replace("%", r"\%")
    return "\n".join(lines)


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        text = file.read()
    text = with_percent_signs(NO_NAMES.sub("", text))
    text = with_shared(with_expected(text))
    text = USING_ENUMERATION.sub(r"using \2 = \1::\2;  ///< \1::\2 under the shorter name.", text)
    sys.stdout.write(VOCABULARY.sub(constants, text))


if __name__ == "__main__":
    main()
