// SPDX-License-Identifier: Apache-2.0
// How numbers are written that JSON does not have, or that its readers would round.
#pragma once

#include <cstdint>
#include <cstring>

namespace PI {

/// 2^53: whole numbers beyond are written as text, since readers that know double precision only round them.
constexpr std::int64_t LARGEST_EXACT = std::int64_t{1} << 53;

/// @{
/// Other not-a-numbers are written with their bits: "NaN(ffc00000)".
constexpr const char* NAN_TEXT = "NaN";
constexpr std::uint32_t PLAIN_NAN = 0x7FC00000;
/// @}
constexpr const char* INFINITY_TEXT = "Infinity";
constexpr const char* MINUS_INFINITY_TEXT = "-Infinity";

inline std::uint32_t BitsOf(float value) {
    std::uint32_t bits = 0;
    static_assert(sizeof(bits) == sizeof(value));
    std::memcpy(&bits, &value, sizeof(bits));
    return bits;
}

inline float FloatOf(std::uint32_t bits) {
    float value = 0;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

}  // namespace PI
