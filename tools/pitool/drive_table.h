// SPDX-License-Identifier: Apache-2.0
/// @file
/// Drives for people: a row each, or a row a model.
#pragma once

#include "drive_summary.h"
#include "print/table.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace pitool {

/// Names that SortDrives knows.
std::vector<std::string> SortKeys();

/// Puts drives in order: by "state" the worst first; by a text as its characters; by a number the largest
/// first, by life left the shortest. What is unknown comes last; what is equal, the worst first.
/// @param key one of SortKeys
void SortDrives(const std::string& key, DriveList& drives);

/// How many drives there are in each state.
struct StateCounts {
    std::size_t m_Drives = 0;
    std::size_t m_InState[PI::DriveState::FAILED + 1] = {};

    explicit StateCounts(const DriveList& drives);
    /// "5 drives: 1 failed, 4 good; 1 input refused".
    std::string Text(std::size_t refused = 0) const;
};

/// A row each, in the order given, and no more than asked for.
Table DriveTable(const DriveList& drives, std::size_t most = SIZE_MAX);

/// A row a model: how many of its drives are in which state, and the figures that are known of them. The
/// models with the most failed drives come first, then those with the most to replace, to look at, and of
/// all; there are no more than asked for.
Table ModelTable(const DriveList& drives, std::size_t most = SIZE_MAX);

}  // namespace pitool
