// SPDX-License-Identifier: Apache-2.0
/// @file
/// Reads SCSI sense data.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace pitool {

/// How sense data are laid out (SPC, response codes 70h to 73h).
enum class SenseFormat { NONE, FIXED, DESCRIPTOR };

/// What sense data say.
struct SenseCodes {
    std::uint8_t m_Key = 0;  ///< 0 to 15
    std::uint8_t m_ASC = 0;
    std::uint8_t m_ASCQ = 0;
    SenseFormat m_Format = SenseFormat::NONE;  ///< NONE: the codes were given by themselves
    std::uint8_t m_ResponseCode = 0;
    bool m_Deferred = false;  ///< the error belongs to an earlier command
};

/// Reads a hexadecimal number of one or two digits; "0x" may lead, "h" may follow.
bool ReadHexByte(std::string_view text, std::uint8_t& byte);

/// A byte as the standard writes it, such as "4Dh".
std::string HexText(std::uint8_t byte);

/// Reads sense data from text of hexadecimal bytes, separated by blanks or commas or not at all.
///
/// @param codes  out: meaningful when the result is true
/// @param reason out: why the data are refused, in one line, when the result is false
bool ReadSenseData(std::string_view text, SenseCodes& codes, std::string& reason);

}  // namespace pitool
