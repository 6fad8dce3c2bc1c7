// SPDX-License-Identifier: Apache-2.0
/// @file
/// How long an activity still takes, with a range, from its progress.
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
/// What an activity does, as far as its samples tell.
enum _TIME_REMAINING_STATE : std::int32_t {
    NOT_KNOWN = 1,  ///< fewer than two samples, or nothing has moved yet
    RUNNING = 2,    ///< it progresses
    STALLED = 3,    ///< it has not moved for a minute or more although it should have
    WAITING = 4,    ///< it was said to be delayed, pending or paused
    DONE = 5,       ///< all is done
};
}  // namespace TimeRemainingState
using TimeRemainingState::_TIME_REMAINING_STATE;

/// Estimates how long an activity still takes, such as a rebuild, and the range that holds the truth four
/// times out of five.
///
/// It learns from the samples whether speed falls towards the end of the position, as it does towards the
/// inner tracks of a disk, and tells that from load that comes and goes. Pauses and stalls do not count as
/// time; while one lasts, the time remaining is what is needed once the activity goes on. Beside CETR, whose
/// rules are fixed. A plain value of at most 64 samples that can be stored as text; the caller serialises
/// access to one. Method, constants and how well it does: docs/estimates.md. Since 1.1.0.
class PI_API CTimeRemaining {
public:
    /// Of an activity without samples.
    CTimeRemaining();

    /// Adds a sample.
    ///
    /// A position that goes back, or another total, begins anew. A time that goes back, as after a restart of
    /// the machine, costs only the pace since the sample before.
    /// @param timeMs   milliseconds of a clock that runs evenly, such as CETR::NowSteady
    /// @param position how far the activity is, in the unit of total: sectors, bytes, percent
    /// @param total    position of the end; with 0 the sample is ignored
    /// @throws std::bad_alloc; then nothing has changed
    void AddSample(std::uint64_t timeMs, std::uint64_t position, std::uint64_t total);

    /// The activity waits: delayed, pending, paused. The time since the sample before does not count.
    void AddPause(std::uint64_t timeMs);

    _TIME_REMAINING_STATE GetState() const;  ///< as of the latest sample or pause

    /// Milliseconds from the latest sample to the end, at most 10^15; none while the pace is not known.
    std::optional<std::uint64_t> GetRemaining() const;
    /// Low end of the range, in milliseconds; none while the pace is not known.
    std::optional<std::uint64_t> GetLow() const;
    /// High end of the range, in milliseconds; none while the pace is not known.
    std::optional<std::uint64_t> GetHigh() const;

    /// All that is kept, as one line of printable ASCII without a line end, at most 3,000 characters.
    /// @throws std::bad_alloc
    std::string ToText() const;

    /// What ToText has written.
    /// @return none where the text is anything else
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
