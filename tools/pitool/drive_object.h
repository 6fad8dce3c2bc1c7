// SPDX-License-Identifier: Apache-2.0
/// @file
/// A drive as a plug-in reports it to the service.
#pragma once

#include "drive_assessment.h"

#include <pi/object.h>

#include <cstdint>
#include <string>
#include <vector>

namespace pitool {

/// Object type of a physical drive; pitool's own, as plug-ins have theirs.
constexpr auto PHYSICAL_DRIVE = static_cast<PI::_OBJECT_TYPE>(19902);

/// Makes a managed object with the properties that are known of a drive and the operations that one would
/// offer on it. An operation's first header holds its identifier.
PI::CObject MakeDriveObject(std::uint64_t id, const DriveAssessment& drive);

/// Names of those operations.
std::vector<std::string> OperationNames(const DriveAssessment& drive);

}  // namespace pitool
