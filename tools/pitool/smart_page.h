// SPDX-License-Identifier: Apache-2.0
/// @file
/// The SMART page of a drive, rebuilt from its printed attribute table.
#pragma once

#include <pi/drives.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace pitool {

/// How many attributes a page has room for.
constexpr std::size_t PAGE_ATTRIBUTES = 30;

/// Largest raw value of an attribute: 48 bits.
constexpr std::uint64_t MAX_RAW_VALUE = (std::uint64_t{1} << 48U) - 1;

/// One row of an attribute table.
struct SmartAttribute {
    std::uint8_t m_ID = 0;
    std::uint16_t m_Flags = 0;
    std::uint8_t m_Current = 0;
    std::uint8_t m_Worst = 0;
    std::uint64_t m_Raw = 0;  ///< up to MAX_RAW_VALUE
};

/// The 512 bytes that the drive returned, as far as the table tells: bytes behind the attributes are 0.
/// @param attributes at most PAGE_ATTRIBUTES
PI::_IDE_SMART_DATA BuildSmartPage(std::uint16_t revision, const std::vector<SmartAttribute>& attributes);

}  // namespace pitool
