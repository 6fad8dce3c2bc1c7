// SPDX-License-Identifier: Apache-2.0
/// @file
/// Many drives for people: a line each, or a line a model.
#pragma once

#include "drive_summary.h"
#include "print/terminal.h"

#include <cstddef>
#include <string>
#include <vector>

namespace pitool {

using DriveList = std::vector<const DriveSummary*>;

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

    void Add(PI::_DRIVE_STATE state);
    /// "5 drives: 1 failed, 4 good".
    std::string Text() const;
};

/// Headings and a line each, in the order given.
std::string DriveTable(const DriveList& drives, const Screen& screen);

/// Headings and a line a model.
std::string ModelTable(const DriveList& drives, const Screen& screen);

}  // namespace pitool
