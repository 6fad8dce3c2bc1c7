// SPDX-License-Identifier: Apache-2.0
// A target needs a source; this one exists for its precompiled headers.
int main() {}
