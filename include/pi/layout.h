// SPDX-License-Identifier: Apache-2.0
/// @file
/// Records that describe how drives make up arrays and logical drives.
///
/// Plain values: copies are deep, nothing is shared, the caller serialises access to one record. Sizes and
/// addresses are in the unit that their producer chose; identifiers are those of managed objects. What fields
/// named m_Value, m_Flag and m_Text mean is up to the plug-ins that fill them. Copies throw std::bad_alloc if
/// allocation fails.
#pragma once

#include <pi/property.h>
#include <pi/types.h>
#include <velk/xml.h>

#include <cstdint>
#include <string>
#include <vector>

namespace PI {

/// @addtogroup layout
/// @{

/// One extent of a physical drive.
class PI_API CDrive {
public:
    CDrive() = default;
    CDrive(const CDrive&) = default;
    CDrive(CDrive&&) noexcept = default;
    CDrive& operator=(const CDrive&) = default;
    CDrive& operator=(CDrive&&) noexcept = default;
    virtual ~CDrive();

    /// Compares drive and start address, which identify an extent, and nothing else.
    bool operator==(const CDrive& other) const;
    /// Orders by drive, then by start address.
    bool operator<(const CDrive& other) const;

    std::uint64_t m_ObjectID = 0;         ///< the physical drive
    std::uint64_t m_StartAddress = 0;     ///< where the extent begins on the drive
    std::uint64_t m_UsedSize = 0;         ///< how much of the drive it uses
    std::vector<CProperty> m_Properties;  ///< up to the plug-in
    std::uint64_t m_LogicalDrive = 0;     ///< the logical drive that uses the extent
    std::uint64_t m_LogicalOwner = 0;     ///< the logical object that owns it
    bool m_IsConfigurable = true;         ///< whether the extent may be reconfigured
};

/// A group of drive extents.
class PI_API CContainer {
public:
    CContainer() = default;
    CContainer(const CContainer&) = default;
    CContainer(CContainer&&) noexcept = default;
    CContainer& operator=(const CContainer&) = default;
    CContainer& operator=(CContainer&&) noexcept = default;
    virtual ~CContainer();

    /// Compares the drives in their order, by CDrive::operator==.
    bool operator==(const CContainer& other) const;

    std::vector<CDrive> m_Drives;  ///< in the order that the producer gives them
};

/// A logical drive.
class PI_API CLogicalDrive {
public:
    CLogicalDrive() = default;

    /// Reads a logical-drive configuration document (docs/configuration-documents.md).
    ///
    /// Never fails: what is missing or malformed gets 0, or true for IsConfigurable. So a document without
    /// Units gives the unit 0, where the default constructor has UNSPECIFIED. The document is not changed.
    explicit CLogicalDrive(VELK::XML::xml_document& document);

    CLogicalDrive(const CLogicalDrive&) = default;
    CLogicalDrive(CLogicalDrive&&) noexcept = default;
    CLogicalDrive& operator=(const CLogicalDrive&) = default;
    CLogicalDrive& operator=(CLogicalDrive&&) noexcept = default;
    virtual ~CLogicalDrive();

    /// Compares all but m_Value2, the hot spares and the associated logical drives, which do not make two
    /// logical drives different.
    bool operator==(const CLogicalDrive& other) const;

    std::uint32_t m_ID = 0;                           ///< number of the logical drive
    std::vector<CProperty> m_Properties;              ///< up to the plug-in
    std::uint32_t m_Value1 = 0;                       ///< up to the plug-in
    std::int32_t m_Value2 = -1;                       ///< up to the plug-in
    std::uint64_t m_Size = 0;                         ///< in m_Units
    _UNITS m_Units = Units::UNSPECIFIED;              ///< unit of m_Size
    std::uint64_t m_SpanCount = 0;                    ///< spans of the drive, as the producer counts them
    std::uint64_t m_SpanSize = 0;                     ///< size of a span, as the producer counts it
    std::uint32_t m_Value3 = 1;                       ///< up to the plug-in
    std::uint64_t m_Value4 = 0xFFFFFFFFFFFFFFFF;      ///< up to the plug-in
    std::vector<CContainer> m_Containers;             ///< the extents that hold the data
    std::vector<std::uint64_t> m_GlobalHotSpares;     ///< physical drives spare for every logical drive
    std::vector<std::uint64_t> m_DedicatedHotSpares;  ///< physical drives spare for this one
    std::vector<std::uint64_t> m_AssociatedLogicalDrives;  ///< logical drives that belong to this one
};

/// A disk array.
class PI_API CArray {
public:
    CArray() = default;

    /// Reads an array configuration document; otherwise like CLogicalDrive(VELK::XML::xml_document&).
    explicit CArray(VELK::XML::xml_document& document);

    CArray(const CArray&) = default;
    CArray(CArray&&) noexcept = default;
    CArray& operator=(const CArray&) = default;
    CArray& operator=(CArray&&) noexcept = default;
    virtual ~CArray();

    /// Compares every field.
    bool operator==(const CArray& other) const;

    std::vector<CProperty> m_Properties;         ///< up to the plug-in
    std::uint32_t m_Value1 = 0;                  ///< up to the plug-in
    std::uint64_t m_Size = 0;                    ///< in m_Units
    _UNITS m_Units = Units::UNSPECIFIED;         ///< unit of m_Size
    std::vector<CContainer> m_Containers;        ///< the extents that make up the array
    std::vector<std::uint64_t> m_LogicalDrives;  ///< the logical drives on it
};

/// A RAID level that an operation offers or asks for.
class PI_API CLevel {
public:
    CLevel() = default;
    CLevel(const CLevel&) = default;
    CLevel(CLevel&&) noexcept = default;
    CLevel& operator=(const CLevel&) = default;
    CLevel& operator=(CLevel&&) noexcept = default;
    virtual ~CLevel();

    /// Compares every field.
    bool operator==(const CLevel& other) const;

    /// @{
    /// Its meaning is up to the plug-in that fills it.
    std::uint32_t m_Value1 = 0;
    std::vector<std::int32_t> m_Values;
    std::uint32_t m_Value2 = 0;
    std::vector<CProperty> m_Properties;
    std::uint64_t m_Value3 = 0;
    std::uint64_t m_Value4 = 0;
    std::uint64_t m_Value5 = 0;
    std::uint64_t m_Value6 = 0;
    _UNITS m_Units = Units::UNSPECIFIED;
    std::uint32_t m_Value7 = 0;
    std::uint32_t m_Value8 = 0;
    bool m_Flag = true;
    std::uint32_t m_Value9 = 0;
    /// @}
};

/// A partition on a logical drive.
class PI_API CPartition {
public:
    CPartition() = default;
    CPartition(const CPartition&) = default;
    CPartition(CPartition&&) noexcept = default;
    CPartition& operator=(const CPartition&) = default;
    CPartition& operator=(CPartition&&) noexcept = default;
    virtual ~CPartition();

    /// Compares every field.
    bool operator==(const CPartition& other) const;

    /// @{
    /// Its meaning is up to the plug-in that fills it.
    std::uint64_t m_Value1 = 0;
    std::uint64_t m_Value2 = 0;
    std::uint32_t m_Value3 = 1;
    std::string m_Text1;
    std::string m_Text2;
    /// @}
};

/// A migration that an operation offers or asks for.
class PI_API CMigration {
public:
    CMigration() = default;
    CMigration(const CMigration&) = default;
    CMigration(CMigration&&) noexcept = default;
    CMigration& operator=(const CMigration&) = default;
    CMigration& operator=(CMigration&&) noexcept = default;
    virtual ~CMigration();

    /// Compares every field.
    bool operator==(const CMigration& other) const;

    /// @{
    /// Its meaning is up to the plug-in that fills it.
    std::uint64_t m_Value1 = 0;
    std::uint32_t m_Value2 = 0;
    std::vector<CProperty> m_Properties;
    /// @}
};

/// @}

}  // namespace PI
