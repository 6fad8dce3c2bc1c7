#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# sonames.sh: what a program that is linked to the libraries asks for at run time, and finds.
set -eu
for name in pi velk velkx piexchange; do
    library=$TREE/moved/$LIBDIR/lib$name.so
    soname=$(LC_ALL=C readelf -d "$library" | sed -n 's/.*Library soname: \[\(.*\)\]/\1/p')
    if [ "$soname" != "lib$name.so.1" ]; then
        echo "lib$name.so: SONAME is $soname"
        exit 1
    fi
    if [ ! "$TREE/moved/$LIBDIR/$soname" -ef "$library" ]; then
        echo "lib$name.so: $soname is another file"
        exit 1
    fi
    path=$(LC_ALL=C readelf -d "$library" | sed -n 's/.*R[UN]*PATH.*\[\(.*\)\]/\1/p')
    if [ "$path" != '$ORIGIN' ]; then
        echo "lib$name.so: looks for other libraries in '$path'"
        exit 1
    fi
done
