#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# pkg_config.sh project build-folder: the same with nothing but the compiler and pkg-config.
set -eu
rm -rf "$2"
mkdir -p "$2"
export PKG_CONFIG_PATH="$TREE/moved/$LIBDIR/pkgconfig"
test "$(pkg-config --modversion pi)" = 1.1.0

project=$1
folder=$2
# pkg-config quotes what it prints for a shell, so that a path may hold blanks.
eval "set -- $(pkg-config --cflags --libs pi) -Wl,-rpath,$(pkg-config --variable=libdir pi)"
# shellcheck disable=SC2086 # the flags are meant to be split
"$CXX" $CXXFLAGS -std=c++17 "$project/main.cpp" -o "$folder/consumer" "$@"
# It asks for the interface as the release that it was linked against has it.
LC_ALL=C readelf --version-info "$folder/consumer" | grep -q 'Name: PI_1\.0 '
"$folder/consumer" >"$folder/output"
diff "$project/expected_output" "$folder/output"
