// SPDX-License-Identifier: Apache-2.0
/// @file
/// Pictures of many drives as SVG within an HTML page, whose style decides on their colours.
#pragma once

#include "drive_summary.h"

#include <string>
#include <vector>

namespace pitool {

/// Wear against age, and wear against temperature: a point for each drive of which both are known.
std::string WearPlots(const std::vector<const DriveSummary*>& drives);

}  // namespace pitool
