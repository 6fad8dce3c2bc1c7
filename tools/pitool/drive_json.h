// SPDX-License-Identifier: Apache-2.0
/// @file
/// Drives as JSON, in the shape that docs/pitool-json.md describes.
#pragma once

#include "drive_summary.h"
#include "event.h"

#include <pi/exchange/smartctl.h>

#include <string>
#include <vector>

namespace pitool {

class JsonWriter;

/// One drive as an element of the document's list.
/// @param drive, health of the report
/// @param events those of the drive; null when they are not wanted
std::string DriveJson(const DriveSummary& drive, const PI::CDriveReport& report,
                      const PI::CHealthAssessment& health, const std::vector<RenderedEvent>* events);

/// Adds a forecast as an object.
void AddForecast(const PI::CWearForecast& forecast, bool isDisk, JsonWriter& json);

}  // namespace pitool
