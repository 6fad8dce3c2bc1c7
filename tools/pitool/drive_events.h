// SPDX-License-Identifier: Apache-2.0
/// @file
/// The events that a drive's state raises.
#pragma once

#include "drive_summary.h"

#include <pi/event.h>
#include <pi/vocabulary.h>

#include <cstdint>
#include <vector>

namespace pitool {

/// Every event that a drive can raise.
constexpr PI::_EVENT_ID DRIVE_EVENTS[] = {
    PI::EventID::SMART_ERROR,                          ///< the drive's own SMART verdict is that it fails
    PI::EventID::PD_WEAR_LEVEL_COUNT_ABOVE_THRESHOLD,  ///< worn to more than WORN_PERCENT
    PI::EventID::PD_TEMP_HIGH,                         ///< hotter than the limit that the drive states
};

/// Raises the events of a drive, in the order above, with the present time and this host's name.
/// @param handle of the drive
std::vector<PI::CEvent> RaiseDriveEvents(const DriveSummary& drive, std::uint64_t handle);

}  // namespace pitool
