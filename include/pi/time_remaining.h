// SPDX-License-Identifier: Apache-2.0
/// @file
/// Time remaining of an activity, with a range, from its progress.
#pragma once

#include <pi/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace PI {

/// @addtogroup events
/// @{

namespace TimeRemainingState {
/// State of an activity, as far as its samples show.
enum _TIME_REMAINING_STATE : std::int32_t {
    NOT_KNOWN = 1,  ///< fewer than two samples, or no progress yet
    RUNNING = 2,    ///< it progresses
    STALLED = 3,    ///< no progress for a minute or more, although some was due
    WAITING = 4,    ///< reported as delayed, pending or paused
    DONE = 5,       ///< complete
};
}  // namespace TimeRemainingState
using TimeRemainingState::_TIME_REMAINING_STATE;

/// Estimates the time remaining of an activity such as a rebuild, and a range that contains the true value
/// four times out of five.
///
/// It learns from the samples whether the speed falls with the position, as it does towards the inner tracks
/// of a disk, and distinguishes that from load that comes and goes. Pauses and stalls do not count as time;
/// during one, the time remaining is the time needed once the activity resumes. CETR, whose rules are fixed,
/// remains unchanged beside it. A value with at most 64 samples that can be stored as text; the caller
/// serialises access to one object. docs/estimates.md describes the method, its constants and its accuracy.
/// Since 1.1.0.
class PI_API CTimeRemaining {
public:
    /// An activity without samples. Does not throw.
    CTimeRemaining();

    /// Adds a sample.
    ///
    /// A position that goes back, or another total, restarts the estimate. If the time goes back, as after a
    /// reboot, only the pace since the previous sample is lost.
    /// @param timeMs   milliseconds of a monotonic clock, such as CETR::NowSteady
    /// @param position progress, in the unit of total: sectors, bytes, percent
    /// @param total    position of the end; if 0, the sample is ignored
    /// @throws std::bad_alloc if allocation fails; nothing is changed then
    void AddSample(std::uint64_t timeMs, std::uint64_t position, std::uint64_t total);

    /// Reports that the activity is waiting: delayed, pending or paused. The time since the previous sample
    /// does not count. Does not throw.
    /// @param timeMs as for AddSample
    void AddPause(std::uint64_t timeMs);

    _TIME_REMAINING_STATE GetState() const;  ///< at the latest sample or pause

    /// Milliseconds from the latest sample to the end, at most 10^15; no value while the pace is unknown.
    std::optional<std::uint64_t> GetRemaining() const;
    /// Low end of the range, in milliseconds; no value while the pace is unknown.
    std::optional<std::uint64_t> GetLow() const;
    /// High end of the range, in milliseconds; no value while the pace is unknown.
    std::optional<std::uint64_t> GetHigh() const;

    /// The whole state as printable ASCII on one line, without a line end, at most 3,000 characters.
    /// @throws std::bad_alloc
    std::string ToText() const;

    /// Restores what ToText wrote.
    /// @return no value if the text is anything else
    /// @throws std::bad_alloc
    static std::optional<CTimeRemaining> FromText(const std::string& text);

private:
    _TIME_REMAINING_STATE m_State = TimeRemainingState::NOT_KNOWN;
    bool m_StartsInside = false;  // the first position is rounded down, and its beginning was not seen
    std::uint64_t m_Total = 0;
    std::uint64_t m_Offset = 0;   // from time that counts to the clock; wraps
    std::uint64_t m_Latest = 0;   // sample, in time that counts
    std::uint64_t m_Changed = 0;  // when the position last did
    std::vector<std::pair<std::uint64_t, std::uint64_t>> m_Points;  // positions, with the time that counts
    std::optional<std::uint64_t> m_Remaining;
    std::optional<std::uint64_t> m_Low;
    std::optional<std::uint64_t> m_High;
    [[maybe_unused]] std::uint64_t m_Reserve[4] = {};
};

/// @}

}  // namespace PI
