// SPDX-License-Identifier: Apache-2.0
// They stand for the same afterwards.
#pragma once

#include "macros_alive.h"

static_assert(BUSY == static_cast<int>(BUSY_BEFORE));
static_assert(BLOCK_SIZE == static_cast<int>(BLOCK_SIZE_BEFORE));
static_assert(STATUS == static_cast<int>(STATUS_BEFORE));
static_assert(DELETE == static_cast<int>(DELETE_BEFORE));
