#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# macros.sh headers system-headers compiler...: the public headers define the export macro and those of the
# version, and leave all other macros as they find them.
# headers, system-headers: separated by semicolons, as they are included
set -eu
headers=$(echo "$1" | tr ';' ' ')
system=$(echo "$2" | tr ';' ' ')
shift 2

include() {
    for header in "$@"; do
        echo "#include <$header>"
    done
}

# What the headers of the standard library and of pugixml define is theirs. The compiler writes a blank in a path as "\ ".
public=$(include $headers | "$@" -M -x c++ - | sed 's/\\ /\x01/g' | tr -d '\\' | tr ' ' '\n' | tr '\001' ' ' |
    grep -E '/(pi|pi/exchange|velk|velkx)/[a-z_]+\.h$')
foreign=$(echo "$public" | xargs -d '\n' sed -n 's/^#include <\(.*\)>.*/\1/p' | grep -vE '^(pi|velk|velkx)/' | sort -u)

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
{
    include $system $foreign
} >"$folder/before.cpp"
{
    cat "$folder/before.cpp"
    include $headers
} >"$folder/after.cpp"
for file in before after; do
    "$@" -dM -E -x c++ "$folder/$file.cpp" | sort >"$folder/$file"
done

difference=$(diff "$folder/before" "$folder/after" | grep '^[<>]' |
    grep -vE '^> #define PI_VERSION_(MAJOR|MINOR|PATCH|STRING) ' || true)
expected='> #define PI_API __attribute__((visibility("default")))'
if [ "$difference" != "$expected" ]; then
    echo "macros that come (>) or go (<):"
    echo "$difference"
    exit 1
fi
