#!/bin/sh
# pkg_config.sh project build-folder: the same with nothing but the compiler and pkg-config.
set -eu
rm -rf "$2"
mkdir -p "$2"
export PKG_CONFIG_PATH="$TREE/moved/$LIBDIR/pkgconfig"
test "$(pkg-config --modversion pi)" = 1.0.0

# shellcheck disable=SC2046,SC2086 # flags are meant to be split
"$CXX" $CXXFLAGS -std=c++17 "$1/main.cpp" -o "$2/consumer" $(pkg-config --cflags --libs pi) \
    -Wl,-rpath,"$(pkg-config --variable=libdir pi)"
"$2/consumer" >"$2/output"
diff "$1/expected_output" "$2/output"
