// SPDX-License-Identifier: Apache-2.0
// Wear as CSmartValues reads it for the models of SATASSDEndurance.
#pragma once

#include <pi/ssd_endurance.h>

#include <cstdint>

namespace PI {

/// Number of the attribute that tells the wear of a listed model; 0 for none.
std::uint8_t ListedWearAttribute(const _SSD_ENDURANCE& row);

/// The wear that the attribute tells, in percent; negative where its current value is above 100.
/// @param current normalised value
/// @param raw     48 bits
std::int64_t ListedWear(const _SSD_ENDURANCE& row, std::int64_t current, std::uint64_t raw);

}  // namespace PI
