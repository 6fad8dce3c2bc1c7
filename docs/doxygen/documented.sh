#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# documented.sh XMLLINT FOLDER: fails if Doxygen's XML of the headers has a public name without documentation.
# Doxygen's own warnings omit constants of enumerations, and members of undocumented headers and namespaces.
set -eu
described='@kind!="page" and @kind!="dir" and (@kind!="file" or contains(compoundname, ".h"))'
undocumented='not(normalize-space(briefdescription)) and not(normalize-space(detaileddescription))'
# Defaulted and deleted members and destructors need none.
expected='contains(argsstring, "=default") or contains(argsstring, "=delete") or starts-with(name, "~")'
# Between /// @{ and /// @} all members have the comment of the first, but not in a section with a title.
borrowed='briefdescription = preceding-sibling::memberdef/briefdescription'
found=$("$1" --xpath "//compounddef[$described][$undocumented]/compoundname
  | //memberdef[not(@prot='private' or @kind='friend' or ($expected))][$undocumented]/definition
  | //memberdef[@kind='define'][$undocumented]/name | //memberdef[not(@prot='private')]/enumvalue[$undocumented]/name
  | //sectiondef[header]/memberdef[$borrowed]/definition" "$2"/*.xml 2>/dev/null | sed 's/<[^>]*>//g' | sort -u)
[ -z "$found" ] || { echo "without documentation of its own: $found"; exit 1; }
