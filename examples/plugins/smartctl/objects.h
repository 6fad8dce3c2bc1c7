// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the service gets to see of the drives: objects, and events about what changed.
#pragma once

#include <pi/model.h>

#include <cstdint>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "drives.h"
#include "plugin_base.h"

namespace smartctl {

std::uint64_t DriveID(const Drive& drive, shared::ObjectIDs& ids);

/// Makes the drives into objects, below one adapter for each protocol, and self-tests that run
/// into tasks.
void AppendObjects(const std::vector<Drive>& drives, shared::ObjectIDs& ids,
                   std::vector<PI::CObject>& objects);

/// Reports of every drive once that it fails or is to be replaced, and once that it is wearing out.
class EventLog : public shared::EventList {
public:
    void Update(const std::vector<Drive>& drives, shared::ObjectIDs& ids);

private:
    void AddOnce(std::uint64_t handle, PI::_EVENT_ID id, const std::string& drive, const std::string& detail);

    std::set<std::tuple<std::uint64_t, std::string, PI::_EVENT_ID>> m_Told;
};

}  // namespace smartctl
