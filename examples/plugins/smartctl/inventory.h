// SPDX-License-Identifier: Apache-2.0
/// @file
/// The objects that the service gets to see.
#pragma once

#include <pi/model.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "drive.h"

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

/// What a drive is called; for people.
std::string Title(const Drive& drive);

/// The identifier of a drive's object.
std::uint64_t DriveID(const Drive& drive, ObjectIDs& ids);

/// Makes the drives into objects, below one adapter for each protocol.
void AppendObjects(const std::vector<Drive>& drives, ObjectIDs& ids, std::vector<PI::CObject>& objects);

}  // namespace smartctl
