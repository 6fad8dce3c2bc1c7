// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the service gets to see of the drives: objects, and events about what changed.
#pragma once

#include <pi/model.h>

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "drives.h"

namespace smartctl {

/// Gives things identifiers that stay the same from poll to poll.
class ObjectIDs {
public:
    std::uint64_t Get(const std::string& thing) {
        return m_IDs.emplace(thing, m_IDs.size() + 1).first->second;
    }

private:
    std::map<std::string, std::uint64_t> m_IDs;
};

/// Makes the drives into objects, below one adapter for each protocol.
void AppendObjects(const std::vector<Drive>& drives, ObjectIDs& ids, std::vector<PI::CObject>& objects);

/// Tells of every drive once that it fails or is to be replaced, and once that it is wearing out.
class EventLog {
public:
    void Update(const std::vector<Drive>& drives, ObjectIDs& ids);

    /// Hands over the events since the last call.
    std::vector<PI::CEvent> Take();

private:
    void Add(std::uint64_t handle, PI::_EVENT_ID id, const std::string& drive, const std::string& detail);

    std::set<std::pair<std::uint64_t, PI::_EVENT_ID>> m_Told;
    std::vector<PI::CEvent> m_Events;
    std::uint32_t m_SequenceNumber = 0;
};

}  // namespace smartctl
