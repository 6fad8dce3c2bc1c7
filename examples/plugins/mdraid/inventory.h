// SPDX-License-Identifier: Apache-2.0
/// @file
/// The objects that the service gets to see.
#pragma once

#include <pi/model.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "assessment.h"
#include "mdstat.h"
#include "plugin_base.h"
#include "progress.h"
#include "sysfs.h"

namespace mdraid {

/// An array with all that is known about it.
struct ArrayReport {
    std::uint64_t m_ObjectID = 0;
    std::string m_Title;  ///< "md127 (Home Data)"; for people
    Array m_Array;
    SysfsArray m_Sysfs;
    Assessment m_Assessment;
    std::string m_GivenName;                     ///< empty when there is none
    std::optional<std::uint64_t> m_RemainingMs;  ///< of its synchronisation; none when nothing runs
};

/// All that the plug-in knows.
struct Inventory {
    bool m_IsComplete = false;  ///< there is a list, and all of it was understood
    std::vector<ArrayReport> m_Arrays;
    std::vector<FreeDrive> m_FreeDrives;  ///< that the kernel holds for no array, and that nothing uses
};

/// Reads /proc/mdstat and what else there is under a root folder.
/// @param errors takes a line for each thing that could not be read
Inventory ReadInventory(const std::filesystem::path& root, shared::ObjectIDs& ids, Progress& progress,
                        std::vector<std::string>& errors);

/// The identifier of a free drive's object.
std::uint64_t FreeDriveID(const FreeDrive& drive, shared::ObjectIDs& ids);

/// Makes the adapter, the arrays, their members and the free drives into objects, with
/// what can be done with them (operations.h).
void AppendObjects(const Inventory& inventory, shared::ObjectIDs& ids, std::vector<PI::CObject>& objects);

}  // namespace mdraid
