// SPDX-License-Identifier: Apache-2.0
/// @file
/// All that there is to say of one drive: its sheet for people, its JSON as docs/pitool-json.md describes it,
/// and the events that it raises.
#pragma once

#include "drive_summary.h"
#include "event.h"
#include "print/table.h"

#include <pi/event.h>
#include <pi/exchange/drive_properties.h>

#include <cstdint>
#include <string>
#include <vector>

namespace pitool {

/// Why a disk has no figure of solid-state drives.
constexpr const char* ROTATING = "rotating disk";

/// How the state of a drive stands out.
Style StateStyle(PI::_DRIVE_STATE state);

/// The value with its unit, with a question mark when doubtful; empty when unknown.
std::string ValueText(const PI::CDriveProperty& property);

/// "up" or "down"; empty for what does not change as the drive ages.
const char* DirectionText(const PI::CDriveProperty& property);

/// Its state, the reasons for it, the forecast, every property with what it rests on, notes. Figures without
/// an identifier are left out where nothing reports them.
/// @param drive, health of the report
Table SheetTable(const DriveSummary& drive, const PI::CDriveReport& report,
                 const PI::CHealthAssessment& health);

/// An element of the document's list.
/// @param drive, health of the report
/// @param events those of the drive; null when they are not wanted
std::string DriveJson(const DriveSummary& drive, const PI::CDriveReport& report,
                      const PI::CHealthAssessment& health, const std::vector<RenderedEvent>* events);

/// Every event that a drive can raise.
constexpr PI::_EVENT_ID DRIVE_EVENTS[] = {
    PI::EventID::SMART_ERROR,                          ///< the drive's own SMART verdict is that it fails
    PI::EventID::PD_WEAR_LEVEL_COUNT_ABOVE_THRESHOLD,  ///< worn to more than WORN_PERCENT
    PI::EventID::PD_TEMP_HIGH,                         ///< hotter than the limit that the drive states
};

/// Raises the events of a drive, in the order above, with the present time and this host's name.
/// @param handle of the drive
std::vector<PI::CEvent> RaiseDriveEvents(const DriveSummary& drive, std::uint64_t handle);

/// Adds a forecast as an object.
void AddForecast(const PI::CWearForecast& forecast, bool isDisk, JsonWriter& json);

}  // namespace pitool
