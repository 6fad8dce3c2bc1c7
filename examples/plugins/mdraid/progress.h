// SPDX-License-Identifier: Apache-2.0
/// @file
/// Time that the synchronisations still need.
#pragma once

#include "mdstat.h"

#include <pi/events.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace mdraid {

/// Keeps an estimate for each array and feeds it on every poll.
///
/// The first poll already has an estimate that is worth something: from the size and the speed that the
/// kernel gives follows how long a percent takes, and with it the beginning.
class Progress {
public:
    /// Takes what the kernel says about an array.
    /// @param timeStampMs of CETR::NowSteady
    /// @return the time remaining as CETR writes it; empty when nothing runs
    std::string Update(std::uint64_t arrayID, const Array& array, std::uint64_t timeStampMs);

private:
    void Begin(std::uint64_t arrayID, const Sync& sync, std::uint64_t now);

    std::vector<PI::CETR> m_Estimates;
    std::map<std::uint64_t, SyncKind> m_Kinds;  // what each estimate is of
};

}  // namespace mdraid
