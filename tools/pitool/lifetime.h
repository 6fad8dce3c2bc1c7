// SPDX-License-Identifier: Apache-2.0
/// @file
/// How long a drive will serve.
#pragma once

#include "drive_wear.h"
#include "fact.h"

#include <string>

namespace pitool {

/// What an estimate goes by.
enum class LifetimeBasis { NONE, RATED_ENDURANCE, WEAR_INDICATOR, DRIVE_STATISTICS, POWER_ON_HOURS };

/// "rated endurance and bytes written", "wear indicator", "drive's own statistics", "power-on hours alone";
/// empty for NONE.
const char* LifetimeBasisText(LifetimeBasis basis);

struct Lifetime {
    Fact<unsigned long> m_RemainingHours;  ///< counts down
    LifetimeBasis m_Basis = LifetimeBasis::NONE;
    bool m_Applicable = true;  ///< false for rotating disks
};

/// Estimates as PI::CRemainingLifetime does.
Lifetime EstimateLifetime(const DriveWear& wear, bool solidState);

}  // namespace pitool
