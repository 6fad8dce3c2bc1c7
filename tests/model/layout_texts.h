// SPDX-License-Identifier: Apache-2.0
// Everything that a layout record holds, as text, so that records can be compared whole.
#pragma once

#include <pi/layout.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

namespace PI::Test {

inline std::string Describe(const std::vector<std::uint64_t>& ids) {
    std::string text;
    for (const std::uint64_t id : ids) {
        text += " " + std::to_string(id);
    }
    return text + "\n";
}

inline std::string Describe(const std::vector<CContainer>& containers) {
    std::ostringstream text;
    for (const CContainer& container : containers) {
        text << " container\n";
        for (const CDrive& drive : container.m_Drives) {
            text << "  drive " << drive.m_ObjectID << " start " << drive.m_StartAddress << " used "
                 << drive.m_UsedSize << " configurable " << drive.m_IsConfigurable << " logical drive "
                 << drive.m_LogicalDrive << " owner " << drive.m_LogicalOwner << " properties "
                 << drive.m_Properties.size() << "\n";
        }
    }
    return text.str();
}

inline std::string Describe(const CArray& array) {
    std::ostringstream text;
    text << "array: value1 " << array.m_Value1 << " size " << array.m_Size << " units " << array.m_Units
         << " properties " << array.m_Properties.size() << "\n"
         << Describe(array.m_Containers) << "logical drives" << Describe(array.m_LogicalDrives);
    return text.str();
}

inline std::string Describe(const CLogicalDrive& logicalDrive) {
    std::ostringstream text;
    text << "logical drive: id " << logicalDrive.m_ID << " value1 " << logicalDrive.m_Value1 << " value2 "
         << logicalDrive.m_Value2 << " size " << logicalDrive.m_Size << " units " << logicalDrive.m_Units
         << " spans " << logicalDrive.m_SpanCount << " of " << logicalDrive.m_SpanSize << " value3 "
         << logicalDrive.m_Value3 << " value4 " << logicalDrive.m_Value4 << " properties "
         << logicalDrive.m_Properties.size() << "\n"
         << Describe(logicalDrive.m_Containers) << "global" << Describe(logicalDrive.m_GlobalHotSpares)
         << "dedicated" << Describe(logicalDrive.m_DedicatedHotSpares) << "associated"
         << Describe(logicalDrive.m_AssociatedLogicalDrives);
    return text.str();
}

}  // namespace PI::Test
