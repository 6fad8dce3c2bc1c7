// SPDX-License-Identifier: Apache-2.0
/// @file
/// Courses of rebuilds: simulated, or read from a recording.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

struct ProgressSample {
    double m_Seconds;
    std::uint64_t m_Position;
    bool m_IsWaiting;  ///< paused, delayed or pending: there is no position
};

struct ProgressCurve {
    std::uint64_t m_Total;
    std::vector<ProgressSample> m_Samples;
    double m_EndSeconds;  // when the position reaches the total
};

/// What happens to a simulated rebuild.
enum class Scenario { EVEN, BUSY, BURSTS, PAUSE, COARSE, SECOND };

/// A rebuild of two to thirty hours at full speed, sampled three hundred times or more.
///
/// @param zoned  whether speed falls to 45 to 60 percent towards the end, in 12 to 30 zones
/// @param noise  standard deviation of the logarithm of speed from sample to sample
/// @param seed   the same seed gives the same curve
ProgressCurve Simulate(Scenario scenario, bool zoned, double noise, std::uint64_t seed);

/// A recorded curve: lines of seconds, position and total, further fields passed over; lines with # are
/// remarks.
///
/// @throws std::runtime_error naming the file, when it cannot be read or does not reach its end
ProgressCurve ReadRecording(const std::string& path);

}  // namespace bench
