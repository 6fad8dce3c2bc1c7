// SPDX-License-Identifier: Apache-2.0
/// @file
/// Time that the synchronisations still need.
#pragma once

#include "mdstat.h"

#include <pi/time_remaining.h>

#include <cstdint>
#include <map>
#include <optional>

namespace mdraid {

/// Keeps an estimate for each array and feeds it on every poll. Until it knows a pace, the kernel's counts.
class Progress {
public:
    /// Takes what the kernel says about an array.
    /// @param timeStampMs of CETR::NowSteady
    /// @return the time remaining in milliseconds; none when nothing gets on or nothing is known
    std::optional<std::uint64_t> Update(std::uint64_t arrayID, const Array& array, std::uint64_t timeStampMs);

private:
    struct Estimate {
        SyncKind m_Kind = SyncKind::OTHER;
        PI::CTimeRemaining m_Time;
    };
    std::map<std::uint64_t, Estimate> m_Estimates;
};

}  // namespace mdraid
