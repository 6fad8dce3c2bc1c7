# SPDX-License-Identifier: Apache-2.0

"""header_filter.py FILE: prints a header for Doxygen: the same lines, with what it cannot see. No line is added or removed,
so that warnings have the line numbers of the header."""
import html
import pathlib
import re
import sys

import lists

# The constants of a vocabulary, which the compiler includes from their list.
VOCABULARY = re.compile(r"^#define (PI_\w+)\(number, constant, name\) constant = number,\n"
                        r"#include <(pi/vocabulary/(\w+)\.def)>\n"
                        r"#undef \1$", re.MULTILINE)
# Makes it a name of the outer namespace for Doxygen, too, so that texts and signatures link to it.
USING_ENUMERATION = re.compile(r"^using (\w+)::(_\w+);$", re.MULTILINE)


def constants(match):
    """The constants of a list on one line, in place of the lines that include it."""
    texts = lists.event_texts() if match[3] == "event_ids" else {}
    line, seen = [], set()
    for number, constant, name in lists.read_list("include/" + match[2]):
        row = f'<a href="table_{match[3]}.html#{number}">{number}</a>'
        text = f"Another name of {row}" if number in seen else escaped(texts.get(number) or name) + f": row {row}"
        seen.add(number)
        line.append(f"{constant} = {number}, /**< {text}. */")
    return "\n" + " ".join(line) + "\n"


def escaped(text):
    return re.sub(r"([%@#\\])", r"\\\1", html.escape(text, quote=False))


if __name__ == "__main__":
    source = pathlib.Path(sys.argv[1]).read_text(encoding="utf-8")
    source = USING_ENUMERATION.sub(r"using \2 = \1::\2;  ///< \1::\2 under the shorter name.", source)
    sys.stdout.write(VOCABULARY.sub(constants, source))
