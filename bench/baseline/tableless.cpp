// SPDX-License-Identifier: Apache-2.0
// A library that links what the library links, and holds nothing.

extern "C" __attribute__((visibility("default"))) int Tableless() {
    return 0;
}
