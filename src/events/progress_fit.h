// SPDX-License-Identifier: Apache-2.0
// The time that an activity still takes, from how far it was at which time.
#pragma once

#include <vector>

namespace PI {

/// How far an activity was, in shares of the whole, and at which time in milliseconds.
struct ProgressPoint {
    double m_Position;
    double m_Time;
};

struct ProgressEstimate {
    double m_Remaining;  // milliseconds from the latest point
    double m_Low;
    double m_High;
};

/// @param points two or more, positions and times ascending
ProgressEstimate FitProgress(const std::vector<ProgressPoint>& points);

}  // namespace PI
