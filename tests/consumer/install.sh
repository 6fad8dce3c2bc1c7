#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# install.sh build-folder: installs the build into a tree and moves the tree; nothing in it tells where it was.
set -eu
rm -rf "$TREE"
"$CMAKE" --install "$1" --prefix "$TREE/installed" >/dev/null
mv "$TREE/installed" "$TREE/moved"

for file in include/pi/pi.h include/velk/clock.h include/velkx/language_support.h "$LIBDIR/libpi.so" \
    "$LIBDIR/cmake/pi/piConfig.cmake" "$LIBDIR/pkgconfig/pi.pc" include/pi/exchange/smartctl.h; do
    test -e "$TREE/moved/$file" || { echo "$file is not installed"; exit 1; }
done
if grep -rlF "$TREE/installed" "$TREE/moved"; then
    echo "names the folder that the tree was installed into"
    exit 1
fi
