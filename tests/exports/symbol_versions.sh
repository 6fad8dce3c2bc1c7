#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# symbol_versions.sh map folder compiler: with the library's export map, a program runs with every release from the one
# it was linked against on; with an older one the loader says what is missing.
set -eu
map=$1
folder=$2
compiler=$3
rm -rf "$folder"
mkdir -p "$folder/1.0" "$folder/next"
cd "$folder"

cat >library.h <<'END'
#define PI_API __attribute__((visibility("default")))
namespace PI {
struct PI_API Old { Old(); virtual ~Old(); };
struct PI_API New { New(); virtual ~New(); int Get() const; };
}
END
cat >1.0.cpp <<'END'
#include "library.h"
namespace PI { Old::Old() = default; Old::~Old() = default; }
END
cat >next.cpp <<'END'
#include "1.0.cpp"
namespace PI { New::New() = default; New::~New() = default; int New::Get() const { return 0; } }
END
cat "$map" - >next.map <<'END'
PI_NEXT { global: _ZN2PI3New*; _ZNK2PI3New*; _ZT[ISV]N2PI3NewE; } PI_1.0;
END
echo '#include "library.h"
int main() { PI::Old(); }' >old.cpp
echo '#include "library.h"
int main() { PI::Old(); return PI::New().Get(); }' >new.cpp

build() { # release map linker
    "$compiler" -fuse-ld="$3" -shared -fPIC -fvisibility=hidden "$1.cpp" -o "$1/libpi.so.1" -Wl,-soname,libpi.so.1 \
        "-Wl,--version-script=$2"
}
fail() {
    echo "with $linker: $1"
    exit 1
}

for linker in bfd lld; do
    [ $linker = bfd ] || command -v ld.$linker >/dev/null || continue
    build 1.0 "$map" $linker
    build next next.map $linker
    "$compiler" -fPIE old.cpp -o old 1.0/libpi.so.1
    "$compiler" -fPIE new.cpp -o new next/libpi.so.1

    LC_ALL=C readelf --version-info old | grep -q 'Name: PI_1\.0 ' || fail "the program does not ask for PI_1.0"
    LD_LIBRARY_PATH=1.0 ./old || fail "the program of 1.0 does not run with 1.0"
    LD_LIBRARY_PATH=next ./old || fail "the program of 1.0 does not run with the next release"
    LD_LIBRARY_PATH=next ./new || fail "the program of the next release does not run with the next release"
    LD_LIBRARY_PATH=1.0 ./new 2>errors && fail "the program of the next release runs with 1.0"
    grep -q "version .PI_NEXT' not found" errors || fail "$(cat errors)"
done
