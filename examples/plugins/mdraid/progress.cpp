// SPDX-License-Identifier: Apache-2.0

#include "progress.h"

#include <cstdint>

namespace mdraid {
namespace {

// Added to all times: a synchronisation that goes on where it was interrupted may have begun before the
// machine was started, which is where its clock begins.
constexpr std::uint64_t CLOCK_OFFSET_MS = std::uint64_t{1} << 40U;  // 34 years

/// How long one percent takes at the speed that the synchronisation has now; 0 when that is not known.
std::uint64_t MsPerPercent(const Sync& sync) {
    if (sync.m_SpeedKiBs == 0 || sync.m_TotalKiB > UINT64_MAX / 10) {
        return 0;
    }
    const std::uint64_t perPercent = sync.m_TotalKiB * 10 / sync.m_SpeedKiBs;
    return perPercent > CLOCK_OFFSET_MS / 100 ? 0 : perPercent;
}

int Percent(const Sync& sync) {
    return static_cast<int>(sync.m_PerMille / 10);
}

}  // namespace

std::string Progress::Update(std::uint64_t arrayID, const Array& array, std::uint64_t timeStampMs) {
    const auto known = m_Kinds.find(arrayID);
    if (known != m_Kinds.end() && (!array.m_Sync.has_value() || array.m_Sync->m_Kind != known->second)) {
        PI::CETR::Remove(m_Estimates, arrayID);
        m_Kinds.erase(arrayID);
    }
    const bool isKnown = m_Kinds.count(arrayID) != 0;
    const bool isRunning = array.m_Sync.has_value() && array.m_Sync->m_State == SyncState::RUNNING;
    if (!isRunning && !isKnown) {
        return "";
    }
    const Sync& sync = *array.m_Sync;
    const std::uint64_t now = timeStampMs + CLOCK_OFFSET_MS;
    if (!isKnown) {
        m_Kinds[arrayID] = sync.m_Kind;
        Begin(arrayID, sync, now);
    }
    const long index = PI::CETR::Add(m_Estimates, arrayID, Percent(sync), !isRunning, now);
    std::string remaining;
    if (isRunning) {
        m_Estimates[static_cast<std::size_t>(index)].GetETR(remaining);
    }
    return remaining;
}

void Progress::Begin(std::uint64_t arrayID, const Sync& sync, std::uint64_t now) {
    const std::uint64_t msPerPercent = MsPerPercent(sync);
    const int percent = Percent(sync);
    if (msPerPercent == 0 || percent == 0) {
        return;
    }
    // Samples as they would have been taken at an even pace: at the beginning, and one percent ago.
    PI::CETR::Add(m_Estimates, arrayID, 0, false, now - msPerPercent * static_cast<std::uint64_t>(percent));
    if (percent > 1) {
        PI::CETR::Add(m_Estimates, arrayID, percent - 1, false, now - msPerPercent);
    }
}

}  // namespace mdraid
