// SPDX-License-Identifier: Apache-2.0
// Configuration documents read in the plainest form, to compare the library's way with.
#pragma once

#include <pi/layout.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "util/plain_number.h"

namespace PI::Test {

// --- Everything a record holds, as text, so that records can be compared whole.

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

// --- The reading rules in their plainest form: a path for every list, a stream for every number.

template <class Number>
inline Number PlainNumber(const VELK::XML::xml_node& node, const char* attribute, Number fallback) {
    return ReadPlainly<Number>(node.attribute(attribute).value()).value_or(fallback);
}

inline void PlainContainers(const VELK::XML::xml_document& document, const char* path,
                            std::vector<CContainer>& containers) {
    for (const auto& selected : document.select_nodes(path)) {
        CContainer container;
        for (const auto& child : selected.node().select_nodes("*")) {
            CDrive drive;
            drive.m_ObjectID = PlainNumber<std::uint64_t>(child.node(), "ObjectID", 0);
            drive.m_StartAddress = PlainNumber<std::uint64_t>(child.node(), "StartAddress", 0);
            drive.m_UsedSize = PlainNumber<std::uint64_t>(child.node(), "UsedSize", 0);
            drive.m_IsConfigurable = PlainNumber<bool>(child.node(), "IsConfigurable", true);
            drive.m_LogicalDrive = PlainNumber<std::uint64_t>(child.node(), "LogicalDrive", 0);
            drive.m_LogicalOwner = PlainNumber<std::uint64_t>(child.node(), "LogicalOwner", 0);
            container.m_Drives.push_back(drive);
        }
        containers.push_back(container);
    }
}

inline void PlainIDs(const VELK::XML::xml_document& document, const char* path,
                     std::vector<std::uint64_t>& ids) {
    for (const auto& selected : document.select_nodes(path)) {
        ids.push_back(PlainNumber<std::uint64_t>(selected.node(), "ObjectID", 0));
    }
}

inline CArray PlainArray(const VELK::XML::xml_document& document) {
    CArray array;
    const VELK::XML::xml_node root = document.select_node("/ArrayConfiguration").node();
    array.m_Size = PlainNumber<std::uint64_t>(root, "Size", 0);
    array.m_Units = static_cast<_UNITS>(PlainNumber<std::int32_t>(root, "Units", 0));
    PlainContainers(document, "/ArrayConfiguration/Containers/Container", array.m_Containers);
    PlainIDs(document, "/ArrayConfiguration/LogicalDrives/LogicalDrive", array.m_LogicalDrives);
    return array;
}

inline CLogicalDrive PlainLogicalDrive(const VELK::XML::xml_document& document) {
    CLogicalDrive drive;
    const VELK::XML::xml_node root = document.select_node("/LogicalDriveConfiguration").node();
    drive.m_Size = PlainNumber<std::uint64_t>(root, "Size", 0);
    drive.m_Units = static_cast<_UNITS>(PlainNumber<std::int32_t>(root, "Units", 0));
    drive.m_SpanCount = PlainNumber<std::uint64_t>(root, "SpanCount", 0);
    drive.m_SpanSize = PlainNumber<std::uint64_t>(root, "SpanSize", 0);
    PlainContainers(document, "/LogicalDriveConfiguration/Containers/Container", drive.m_Containers);
    PlainIDs(document, "/LogicalDriveConfiguration/GlobalHotSpares/Drive", drive.m_GlobalHotSpares);
    PlainIDs(document, "/LogicalDriveConfiguration/DedicatedHotSpares/Drive", drive.m_DedicatedHotSpares);
    PlainIDs(document, "/LogicalDriveConfiguration/AssociatedLogicalDrives/LogicalDrive",
             drive.m_AssociatedLogicalDrives);
    return drive;
}

}  // namespace PI::Test
