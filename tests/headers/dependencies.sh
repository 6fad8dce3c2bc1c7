#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# dependencies.sh headers compiler...: no public header reaches a header of Boost, plog or a JSON parser.
# headers: separated by semicolons, as they are included
set -eu
headers=$1
shift

for header in $(echo "$headers" | tr ';' ' '); do
    reached=$(echo "#include <$header>" | "$@" -M -x c++ - | tr -d '\\' | tr ' ' '\n' | grep -E '\.(h|hpp|def)$|/[^./]+$')
    case $reached in
        *"/$header"*) ;;
        *) echo "the compiler does not tell what $header reaches"; exit 1 ;;
    esac
    if echo "$reached" | grep -E '/(boost|plog|rapidjson|nlohmann)/'; then
        echo "reached by $header"
        exit 1
    fi
done
