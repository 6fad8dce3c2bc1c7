// SPDX-License-Identifier: Apache-2.0
/// @file
/// Sizes of configuration documents in readable units.
#pragma once

#include <pi/types.h>

#include <cstdint>
#include <string>

namespace pitool {

/// Name of a unit, all of them binary: "bytes", "kibibytes"... Empty for what is no unit.
std::string UnitName(PI::_UNITS unit);

/// A size in the largest binary unit that it fills, such as "931.51 gibibytes"; empty where the unit is none.
std::string ScaledSize(std::uint64_t size, PI::_UNITS unit);

/// A size as it is written, with the scaled one behind it where the unit is known, such as
/// "465 (465.00 gibibytes)".
std::string SizeText(std::uint64_t size, PI::_UNITS unit);

}  // namespace pitool
