// SPDX-License-Identifier: Apache-2.0
/// @file
/// Time remaining of the synchronisations.
#pragma once

#include "mdstat.h"

#include <pi/time_remaining.h>

#include <cstdint>
#include <map>
#include <optional>

namespace mdraid {

/// Keeps an estimate for each array and adds a sample on every poll. Until a pace is known, the kernel's
/// estimate is used.
class Progress {
public:
    /// Takes what the kernel says about an array.
    /// @param timeStampMs of CETR::NowSteady
    /// @return the time remaining in milliseconds; none when nothing gets on or nothing is known
    std::optional<std::uint64_t> Update(std::uint64_t arrayID, const Array& array,
                                        std::uint64_t timeStampMs) {
        if (!array.m_Sync.has_value()) {
            if (!array.m_IsCut) {
                m_Estimates.erase(arrayID);
            }
            return std::nullopt;
        }
        const Sync& sync = *array.m_Sync;
        Estimate& estimate = m_Estimates[arrayID];
        if (sync.m_State != SyncState::RUNNING) {
            estimate.m_Time.AddPause(timeStampMs);
            return std::nullopt;
        }
        if (estimate.m_Kind != sync.m_Kind) {
            estimate = {sync.m_Kind, {}};
        }
        estimate.m_Time.AddSample(timeStampMs, sync.m_DoneKiB, sync.m_TotalKiB);
        std::optional<std::uint64_t> remaining = sync.m_FinishMs;
        if (estimate.m_Time.GetState() != PI::TimeRemainingState::NOT_KNOWN) {
            remaining = estimate.m_Time.GetRemaining();
        }
        if (estimate.m_Time.GetState() == PI::TimeRemainingState::STALLED) {
            remaining.reset();
        }
        return remaining;
    }

private:
    struct Estimate {
        SyncKind m_Kind = SyncKind::OTHER;
        PI::CTimeRemaining m_Time;
    };
    std::map<std::uint64_t, Estimate> m_Estimates;
};

}  // namespace mdraid
