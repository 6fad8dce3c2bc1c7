# SPDX-License-Identifier: Apache-2.0

"""What Doxygen reads instead of a public header: the same lines, with what it cannot see or should not ask for.

- The constants of the vocabularies, which the compiler includes from their lists.
- A line of documentation for constructors, assignments and destructors that do what every reader expects and therefore
  have no comment in the header.
- Without explicit instances of templates, which are no names of their own.

No line is added or dropped, so that a warning names the line of the header."""
import html
import re
import sys

import lists

VOCABULARY = re.compile(r"^#define (PI_\w+)\(number, constant, name\) constant = number,\n"
                        r"#include <(pi/vocabulary/(\w+)\.def)>\n"
                        r"#undef \1$", re.MULTILINE)
EXPLICIT_INSTANCE = re.compile(r"^extern template .*;$", re.MULTILINE)

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
        if i > 0 and lines[i - 1].lstrip().startswith("///") and not lines[i - 1].rstrip().endswith("@{"):
            continue
        for pattern, documentation in EXPECTED:
            if pattern.match(line):
                lines[i] = f"{line}  ///< {documentation}"
    return "\n".join(lines)


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        text = file.read()
    text = with_expected(EXPLICIT_INSTANCE.sub("", text))
    sys.stdout.write(VOCABULARY.sub(constants, text))


main()
