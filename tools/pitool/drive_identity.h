// SPDX-License-Identifier: Apache-2.0
/// @file
/// Who made a drive and what it is.
#pragma once

#include "drive_report.h"
#include "fact.h"

#include <string>

namespace pitool {

struct DriveIdentity {
    Fact<std::string> m_Vendor;
    std::string m_Product;  ///< the bare model name
    Fact<std::string> m_Serial;
    bool m_SolidState = false;
    Fact<unsigned long> m_RPM;  ///< rotations per minute
};

/// Splits the model text, corrects the serial number and finds medium and rotation speed.
///
/// A drive that tells nothing about its medium is a disk, unless its model is in an endurance list, it knows
/// TRIM or it counts wear.
DriveIdentity IdentifyDrive(const DriveReport& report);

}  // namespace pitool
