// SPDX-License-Identifier: Apache-2.0
// What the macros of the system headers stand for, before the library's headers.
#pragma once

namespace {
enum MacrosBefore {
    BUSY_BEFORE = BUSY,
    BLOCK_SIZE_BEFORE = BLOCK_SIZE,
    STATUS_BEFORE = STATUS,
    DELETE_BEFORE = DELETE,
};
}
