// SPDX-License-Identifier: Apache-2.0
/// @file
/// The estimate that samples of progress add up to.
#pragma once

#include <pi/etr.h>

#include <cstdint>
#include <string>
#include <vector>

namespace pitool {

class EtaEstimate {
public:
    /// Takes a sample.
    ///
    /// @param percent 0 to 100
    /// @param timeMs  up to LATEST_TIME
    /// @return false when the time lies before that of the sample before; reason says so then
    bool Add(int percent, std::uint64_t timeMs, std::string& reason);

    /// The time that remains, such as "01:40:00 remaining".
    std::string Text();

private:
    std::vector<PI::CETR> m_Activities;  ///< one, once there is a sample
    std::uint64_t m_LastTimeMs = 0;
};

}  // namespace pitool
