// SPDX-License-Identifier: Apache-2.0
/// @file
/// Drives as JSON, in the shape that docs/pitool-drive-json.md describes.
#pragma once

#include "drive_assessment.h"
#include "drive_events.h"
#include "drive_ranking.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pitool {

/// One drive as a compact JSON object; ASCII only.
/// @param events those of the drive; null when they are not wanted
std::string DriveJson(const DriveAssessment& drive, const std::vector<RenderedEvent>* events = nullptr);

/// Takes a piece of output; false when it could not be written.
using Writer = std::function<bool(std::string_view)>;

/// Writes the whole document, indented, piece by piece: the whole text never stands in memory.
///
/// @param drives as DriveJson gives them, in the order wanted
/// @param errors inputs that were refused, with the reasons
/// @return false as soon as a piece could not be written
bool WriteDriveDocument(const std::vector<const std::string*>& drives,
                        const std::vector<std::pair<std::string, std::string>>& errors,
                        const DriveCounts& summary, const Writer& write);

}  // namespace pitool
