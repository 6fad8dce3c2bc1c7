// SPDX-License-Identifier: Apache-2.0
/// @file
/// Drives counted by their model.
#pragma once

#include "drive_table.h"

namespace pitool {

/// A row a model: how many of its drives are in which state, and the figures that are known of them. The
/// models with the most failed drives come first, then those with the most to replace, to look at, and of
/// all.
Table ModelTable(const DriveList& drives);

}  // namespace pitool
