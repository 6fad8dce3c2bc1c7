// SPDX-License-Identifier: Apache-2.0
/// @file
/// Rated write endurance of solid-state drives.
///
/// The lists are constant data of the library, valid until it is unloaded; reading them is thread-safe.
#pragma once

#include <pi/types.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace PI {

/// @addtogroup drives
/// @{

/// A text of a constant table: costs nothing at load and serves wherever a std::string is wanted.
class CConstantText : public std::string_view {
public:
    /// @param text terminated by a zero, and alive as long as the object
    constexpr CConstantText(const char* text) : std::string_view(text) {}
    /// A copy of the text.
    operator std::string() const { return std::string(data(), size()); }
    /// The text with its terminating zero.
    constexpr const char* c_str() const { return data(); }
};

/// A SATA or NVMe drive family.
struct _SSD_ENDURANCE {
    CConstantText m_Vendor;       ///< such as "INTEL"
    CConstantText m_Model;        ///< such as "SSDSC2BB120G4C"
    std::uint32_t m_MatchLength;  ///< how many leading characters of a model are compared; 0: the whole name
    std::uint32_t m_EnduranceTB;  ///< terabytes that may be written
    std::uint32_t m_Reserved;     ///< 0
    std::uint32_t m_GroupFlag;    ///< 1 marks the newer InnoDisk families, which count wear in attribute 167
};

/// A SAS drive.
struct _SAS_SSD_ENDURANCE {
    CConstantText m_Vendor;       ///< such as "TOSHIBA"
    CConstantText m_Model;        ///< such as "PX02SMF020"
    std::uint64_t m_EnduranceTB;  ///< terabytes that may be written
    std::uint32_t m_Reserved;     ///< 0
};

/// A constant table of rows, in fixed order.
template <class Row>
class CConstantTable {
public:
    /// @param rows  alive as long as the object
    /// @param count number of rows
    constexpr CConstantTable(const Row* rows, std::size_t count) : m_Rows(rows), m_Count(count) {}

    /// Number of rows.
    constexpr std::size_t size() const { return m_Count; }
    /// A row.
    /// @param index below size()
    constexpr const Row& operator[](std::size_t index) const { return m_Rows[index]; }
    /// The first row.
    constexpr const Row* begin() const { return m_Rows; }
    /// Behind the last row.
    constexpr const Row* end() const { return m_Rows + m_Count; }

private:
    const Row* m_Rows;
    std::size_t m_Count;
};

/// SATA drives, 117 rows; CPluginHelper::findLifeTimeProp searches it.
PI_API extern const CConstantTable<_SSD_ENDURANCE> SATASSDEndurance;
/// SAS drives, 71 rows.
PI_API extern const CConstantTable<_SAS_SSD_ENDURANCE> SASSSDEndurance;
/// NVMe drives, 52 rows.
PI_API extern const CConstantTable<_SSD_ENDURANCE> NVMeSSDEndurance;

/// @}

}  // namespace PI
