// SPDX-License-Identifier: Apache-2.0

#include "progress.h"

namespace mdraid {

std::optional<std::uint64_t> Progress::Update(std::uint64_t arrayID, const Array& array,
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

}  // namespace mdraid
