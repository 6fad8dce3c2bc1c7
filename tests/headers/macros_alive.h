// SPDX-License-Identifier: Apache-2.0
// The macros are those of the system headers.
#pragma once

#if !defined(BUSY) || !defined(BLOCK_SIZE) || !defined(STATUS) || !defined(DELETE)
#error "a macro of a system header is lost"
#endif
static_assert(BUSY == 0x04);
static_assert(BLOCK_SIZE == 1024);
static_assert(STATUS == ns_o_status);
static_assert(DELETE == ns_uop_delete);
