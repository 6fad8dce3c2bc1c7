// SPDX-License-Identifier: Apache-2.0
/// @file
/// How long a drive will serve, as the prescribed estimate has it.
#pragma once

#include "fact.h"

#include <pi/drive_health.h>

#include <string>

namespace pitool {

struct Lifetime {
    Fact<unsigned long> m_RemainingHours;  ///< counts down
    const char* m_Basis = "";  ///< "rated endurance and bytes written", "wear indicator", "drive's own
                               ///< statistics", "power-on hours alone"; empty without an estimate
    const char* m_Limit = "";  ///< what decides the hours, as docs/pitool-drive-json.md lists it
    bool m_Applicable = true;  ///< false for rotating disks
};

/// Estimates as PI::CRemainingLifetime does. A doubtful wear is left out as if it were unknown; other
/// doubtful figures are used. Either makes the estimate doubtful.
Lifetime EstimateLifetime(const PI::CDriveHealth& health, bool solidState);

}  // namespace pitool
