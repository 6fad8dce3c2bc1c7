// SPDX-License-Identifier: Apache-2.0
/// @file
/// Estimated time remaining of long-running activities.
#pragma once

#include <pi/types.h>

#include <cstdint>
#include <string>
#include <vector>

namespace PI {

/// @addtogroup events
/// @{

/// Estimates the time remaining of an activity from samples of its progress.
///
/// A plug-in keeps one estimate per activity in a vector and adds a sample whenever it polls the activity.
/// Times are milliseconds of the monotonic clock (NowSteady). All arithmetic is unsigned 64-bit and wraps.
/// The caller serialises access. Traces are of category 3.
///
/// Up to the second sample the pace is unknown: the estimate for each percent left is the time since
/// m_StartTime, but at least a minute. From the third on, the pace of the samples is used, extrapolated back
/// to 0 percent. So after a restart of the service the first estimate for an activity at 60 percent is 40
/// minutes, however long it took before. Times must not be kept across a reboot, which restarts the clock.
class PI_API CETR {
public:
    CETR() = default;
    /// An activity that starts at timeStamp, with its first sample.
    /// @throws std::bad_alloc if allocation fails
    CETR(unsigned long id, int percent, unsigned long timeStamp);

    /// Identifier of the activity, m_ID.
    unsigned long GetID();

    /// Milliseconds of CLOCK_MONOTONIC. Thread-safe.
    static unsigned long NowSteady();

    /// Adds a sample.
    ///
    /// @param percent   0 to 100; a negative one is ignored. One at or below an earlier sample drops that
    ///                  sample and all later ones. From 100 on, an estimate above a minute becomes one minute
    ///                  and the sample is not kept.
    /// @param timeStamp when the sample was taken
    /// @throws std::bad_alloc if allocation fails; the estimate stays as it is then
    void Compute(int percent, unsigned long timeStamp);

    /// Adds a sample to the activity with an identifier, which is added to the list if it is new.
    ///
    /// @param pause for a known activity: the time since its last sample does not count, and percent is
    /// ignored
    /// @return the activity's index in the list
    /// @throws std::bad_alloc if allocation fails
    static long Add(std::vector<CETR>& list, unsigned long id, int percent, bool pause,
                    unsigned long timeStamp);

    /// Removes all activities with an identifier, if any; the others keep their order.
    static void Remove(std::vector<CETR>& list, unsigned long id);

    /// A duration in milliseconds as hours:minutes:seconds; empty below a second, "> 99:59:59" from 100 hours
    /// on.
    static std::string RemainingTimeToString(unsigned long ms);

    /// The estimate as RemainingTimeToString gives it; "> 99:59:59" when there is none yet.
    void GetETR(std::string& out);

    // All ones in a time: not known.
    std::uint64_t m_ID = 0;                          ///< identifier of the activity, chosen by the plug-in
    std::uint64_t m_StartTime = 0xFFFFFFFFFFFFFFFF;  ///< may be moved to match the pace of the samples
    std::uint64_t m_LastTime = 0xFFFFFFFFFFFFFFFF;   ///< of the latest sample
    std::uint64_t m_RemainingTime = 0xFFFFFFFFFFFFFFFF;  ///< the estimate in milliseconds
    std::vector<std::int32_t> m_PercentageComplete;      ///< of the samples kept, ascending
    std::vector<std::uint64_t> m_TimeStamps;             ///< of the samples kept, same index
};

/// @}

}  // namespace PI
