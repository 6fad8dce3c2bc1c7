#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# build_installed_examples.sh examples prefix folder expected...: builds each example by itself against the installed
# library, and compares what the service prints with both plug-ins.
set -eu
examples=$1
prefix=$2
folder=$3
shift 3
rm -rf "$folder"
for example in service plugins/mdraid plugins/smartctl; do
    cmake -S "$examples/$example" -B "$folder/$example" -DCMAKE_PREFIX_PATH="$prefix" \
        -DCMAKE_LIBRARY_OUTPUT_DIRECTORY="$folder/plugin-folder"
    cmake --build "$folder/$example"
done
cat "$@" >"$folder/expected"
cd "$examples/trees"
"$folder/service/service" "$folder/plugin-folder" --set mdraid.root=healthy --set smartctl.folder=drives \
    >"$folder/output" 2>&1
sed -E 's/^(    (Timestamp|Datetime): ).*/\1*/' "$folder/output" | diff "$folder/expected" -
