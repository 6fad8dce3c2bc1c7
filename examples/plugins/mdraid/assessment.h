// SPDX-License-Identifier: Apache-2.0
/// @file
/// States of arrays and their members in the service's terms.
#pragma once

#include "mdstat.h"
#include "sysfs.h"

#include <pi/vocabulary.h>

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace mdraid {

namespace ID = PI::PropertyID;
namespace Operation = PI::OperationID;
namespace Value = PI::PropertyValue;
using PI::_PROPERTY_VALUE;

/// A member in the service's terms.
struct MemberAssessment {
    _PROPERTY_VALUE m_Status = Value::UNKNOWN;
    std::string m_Role;  ///< such as "slot 0, write-mostly"
};

/// An array in the service's terms.
struct Assessment {
    _PROPERTY_VALUE m_Level = Value::UNKNOWN;
    _PROPERTY_VALUE m_Status = Value::UNKNOWN;
    _PROPERTY_VALUE m_Activity = Value::IDLE;
    std::uint32_t m_MissingDrives = 0;        ///< slots without a drive that works
    bool m_IsRedundant = false;               ///< by its level
    bool m_SparesADrive = false;              ///< it is OPERATIONAL, and stays in use if any one drive fails
    bool m_IsContainer = false;               ///< see IsContainer; has neither level nor activity
    std::string m_Reason;                     ///< why the status is not OPERATIONAL; for people
    std::vector<MemberAssessment> m_Members;  ///< in the order of Array::m_Members
};

/// The levels that the vocabulary names, and how the kernel and mdadm name one.
std::vector<int> Levels();
std::string LevelName(int level);

/// Whether its metadata are those of a BIOS, which another process manages.
bool IsExternal(const Array& array);

/// Whether an array is only a container for drives with metadata of a BIOS, from whose drives the actual
/// arrays are made.
bool IsContainer(const Array& array, const SysfsArray& sysfs);

/// The arrays that use a drive of a container, by the names of container and drive.
using ContainerUse = std::map<std::pair<std::string, std::string>, std::string>;
ContainerUse FindContainerUse(const std::vector<Array>& arrays);

/// @param sysfs takes precedence; may be empty
/// @param use   for a container
Assessment Assess(const Array& array, const SysfsArray& sysfs, const ContainerUse& use = {});

}  // namespace mdraid
