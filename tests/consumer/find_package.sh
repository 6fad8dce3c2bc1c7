#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# find_package.sh project build-folder: builds a CMake project against the moved tree, runs it, compares what it prints.
set -eu
rm -rf "$2"
"$CMAKE" -S "$1" -B "$2" -G "$GENERATOR" -DCMAKE_PREFIX_PATH="$TREE/moved" -DCMAKE_CXX_COMPILER="$CXX" \
    -DCMAKE_CXX_FLAGS="$CXXFLAGS" -DCMAKE_BUILD_TYPE="$BUILD_TYPE"
"$CMAKE" --build "$2"
"$2/consumer" >"$2/output"
diff "$1/expected_output" "$2/output"
