// SPDX-License-Identifier: Apache-2.0
/// @file
/// What is worth telling about the drives.
#pragma once

#include <pi/events.h>

#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "inventory.h"

namespace smartctl {

/// Tells of every drive once that it predicts its failure, and once that it will soon be worn out.
class EventLog {
public:
    void Update(const std::vector<Drive>& drives, ObjectIDs& ids);

    /// Hands over the events since the last call.
    std::vector<PI::CEvent> Take();

private:
    void Add(std::uint64_t handle, PI::_EVENT_ID id, const std::string& object, const std::string& detail);

    std::set<std::pair<std::uint64_t, PI::_EVENT_ID>> m_Told;
    std::vector<PI::CEvent> m_Events;
    std::uint32_t m_SequenceNumber = 0;
};

}  // namespace smartctl
