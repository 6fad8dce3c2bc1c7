// SPDX-License-Identifier: Apache-2.0
// Wear as CSmartValues reads it for the rows of SATASSDEndurance that hold erase cycles.
#pragma once

#include <pi/ssd_endurance.h>

#include <cstdint>

namespace PI {

/// Number of the attribute that counts the cycles; 0 for none.
std::uint8_t CycleAttribute(const _SSD_ENDURANCE& row);

/// Percent of the rated cycles.
/// @param raw value of that attribute
std::int64_t WearByCycles(const _SSD_ENDURANCE& row, std::uint64_t raw);

}  // namespace PI
