#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# documented.sh XMLLINT FOLDER: fails where Doxygen's XML of the headers holds a public name without documentation.
# Doxygen's own warning leaves out constants of enumerations, and what is in a header or a namespace without documentation.
set -eu
described='@kind!="page" and @kind!="dir" and (@kind!="file" or contains(compoundname, ".h"))'
undocumented='not(normalize-space(briefdescription)) and not(normalize-space(detaileddescription))'
# What every reader expects needs none: defaulted and deleted members, and destructors.
expected='contains(argsstring, "=default") or contains(argsstring, "=delete") or starts-with(name, "~")'
# Within /// @{ and /// @} the comment of the first is that of all, but not in a section with a title.
borrowed='briefdescription = preceding-sibling::memberdef/briefdescription'
found=$("$1" --xpath "//compounddef[$described][$undocumented]/compoundname
  | //memberdef[not(@prot='private' or @kind='friend' or ($expected))][$undocumented]/definition
  | //memberdef[@kind='define'][$undocumented]/name | //memberdef[not(@prot='private')]/enumvalue[$undocumented]/name
  | //sectiondef[header]/memberdef[$borrowed]/definition" "$2"/*.xml 2>/dev/null | sed 's/<[^>]*>//g' | sort -u)
[ -z "$found" ] || { echo "without documentation of its own: $found"; exit 1; }
