// SPDX-License-Identifier: Apache-2.0
/// @file
/// The objects that the service gets to see.
#pragma once

#include "assessment.h"
#include "mdstat.h"
#include "progress.h"
#include "sysfs.h"

#include <pi/model.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace mdraid {

/// An array with all that is known about it.
struct ArrayReport {
    std::uint64_t m_ObjectID = 0;
    std::string m_Title;  ///< "md127 (Home Data)"; for people
    Array m_Array;
    SysfsArray m_Sysfs;
    Assessment m_Assessment;
    std::string m_GivenName;      ///< empty when there is none
    std::string m_RemainingTime;  ///< of its synchronisation; empty when nothing runs
};

/// All that the plug-in knows.
struct Inventory {
    bool m_IsComplete = false;  ///< there is a list, and all of it was understood
    std::vector<ArrayReport> m_Arrays;
    std::vector<std::string> m_UnusedDevices;  ///< names of drives that the kernel holds for no array
};

/// Gives things identifiers that stay the same from poll to poll.
class ObjectIDs {
public:
    std::uint64_t Get(const std::string& thing) {
        return m_IDs.emplace(thing, m_IDs.size() + 1).first->second;
    }

private:
    std::map<std::string, std::uint64_t> m_IDs;
};

/// Reads /proc/mdstat and what else there is under a root folder.
/// @param errors takes a line for each thing that could not be read
Inventory ReadInventory(const std::filesystem::path& root, ObjectIDs& ids, Progress& progress,
                        std::vector<std::string>& errors);

/// Makes the adapter, the arrays, their members and the unused drives into objects.
void AppendObjects(const Inventory& inventory, ObjectIDs& ids, std::vector<PI::CObject>& objects);

}  // namespace mdraid
