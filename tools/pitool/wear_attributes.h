// SPDX-License-Identifier: Apache-2.0
/// @file
/// SMART attributes that hold the figures of the listed SATA families.
#pragma once

#include <cstdint>
#include <string_view>

namespace pitool {

/// A family's attributes. CSmartValues reads them; here they tell which of its figures were on the page.
struct WearAttributes {
    std::string_view m_Vendor;
    std::uint32_t m_GroupFlag;
    std::uint8_t m_Written;       ///< amount written
    std::uint64_t m_WrittenUnit;  ///< bytes per count
    std::uint8_t m_Spare;         ///< 0: the family has none
    std::uint8_t m_Wear;
    bool m_WearIsCurrent;  ///< the current value counts down from 100; else the raw value counts cycles
};

// clang-format off
constexpr WearAttributes WEAR_ATTRIBUTES[] = {
    {"INTEL",    0, 225, 1U << 25U, 232, 233, true},
    {"SAMSUNG",  0, 241, 1U << 9U,  180, 177, true},
    {"MICRON",   0, 246, 1U << 9U,  170, 202, true},
    {"INNODISK", 0, 241, 1U << 25U, 0,   173, false},
    {"INNODISK", 1, 241, 1U << 25U, 0,   167, false},
};
// clang-format on

}  // namespace pitool
