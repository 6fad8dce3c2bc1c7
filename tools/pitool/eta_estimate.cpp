// SPDX-License-Identifier: Apache-2.0

#include "eta_estimate.h"

namespace pitool {

bool EtaEstimate::Add(int percent, std::uint64_t timeMs, std::string& reason) {
    constexpr unsigned long ACTIVITY = 1;
    if (timeMs < m_LastTimeMs) {
        reason = "the time " + std::to_string(timeMs) + " lies before that of the sample before, " +
                 std::to_string(m_LastTimeMs);
        return false;
    }
    m_LastTimeMs = timeMs;
    PI::CETR::Add(m_Activities, ACTIVITY, percent, false, timeMs);
    return true;
}

std::string EtaEstimate::Text() {
    std::string remaining;
    m_Activities.front().GetETR(remaining);
    return (remaining.empty() ? "less than a second" : remaining) + " remaining";
}

}  // namespace pitool
