// SPDX-License-Identifier: Apache-2.0
/// @file
/// SCSI sense data: why a drive did not do what a command asked for.
#pragma once

#include <pi/types.h>

#include <cstddef>
#include <cstdint>
#include <optional>

namespace PI {

/// @addtogroup drives
/// @{

namespace SenseFormat {
/// How sense data are laid out (SPC-5, 4.4), by the response code in their first byte.
enum _SENSE_FORMAT : std::int32_t {
    NONE = 0,        ///< no sense data
    FIXED = 1,       ///< 70h, 71h
    DESCRIPTOR = 2,  ///< 72h, 73h
    VENDOR = 3,      ///< 7Fh: the vendor's own, of which only the response code is read
};
}  // namespace SenseFormat
using SenseFormat::_SENSE_FORMAT;

/// What sense data say (SPC-5, 4.4). A figure that they do not hold, or do not mark as valid, has no value.
///
/// A value without hidden state: it may be copied, and read by several threads. Nothing here throws.
class PI_API CSense {
public:
    /// No sense data: SenseFormat::NONE.
    CSense() = default;

    /// The layout; NONE and VENDOR have no figure but the response code.
    _SENSE_FORMAT GetFormat() const;
    /// The first byte without its highest bit; 70h to 73h in the formats of the standard.
    std::optional<std::uint8_t> GetResponseCode() const;
    /// Whether the error belongs to an earlier command (71h, 73h).
    bool IsDeferred() const;

    /// Sense key, 0 to 15; CPluginHelper::TranslateSenseKey has its text.
    std::optional<std::uint8_t> GetKey() const;
    /// Additional sense code; CPluginHelper::TranslateSenseASC has the text of code and qualifier.
    std::optional<std::uint8_t> GetCode() const;
    /// Qualifier of the additional sense code.
    std::optional<std::uint8_t> GetQualifier() const;

    /// The information field, where the drive marks it as valid. For a read, write or verify command it is
    /// the address of the logical block that failed; for others the command's standard says what it is.
    std::optional<std::uint64_t> GetInformation() const;
    /// Number of the part that failed, 1 to 255, by the vendor's own list.
    std::optional<std::uint8_t> GetFieldReplaceableUnit() const;
    /// How far a running operation such as a format has come, in 65536ths. It comes with the keys NO SENSE
    /// and NOT READY, or as the progress of another operation in a descriptor of its own.
    std::optional<std::uint16_t> GetProgress() const;

    /// With ILLEGAL REQUEST: number of the byte that is wrong, from 0.
    std::optional<std::uint16_t> GetFieldPointer() const;
    /// Number of the bit in it that is wrong, 0 to 7; of a wider field the highest.
    std::optional<std::uint8_t> GetFieldBit() const;
    /// Whether that byte is one of the command; else it is one of the data sent with it. False without a
    /// field pointer.
    bool IsFieldInCommand() const;

private:
    friend class CSenseReader;

    std::optional<std::uint64_t> m_Information;
    std::optional<std::uint16_t> m_Progress;
    std::optional<std::uint16_t> m_FieldPointer;
    std::optional<std::uint8_t> m_FieldBit;
    std::optional<std::uint8_t> m_ResponseCode;
    std::optional<std::uint8_t> m_Key;
    std::optional<std::uint8_t> m_Code;
    std::optional<std::uint8_t> m_Qualifier;
    std::optional<std::uint8_t> m_FieldReplaceableUnit;
    _SENSE_FORMAT m_Format = SenseFormat::NONE;
    bool m_IsDeferred = false;
    bool m_IsFieldInCommand = false;
    [[maybe_unused]] std::uint64_t m_Reserved[4] = {};
};

/// Reads sense data as a drive returns them. Data that end early give the figures that are whole; a
/// descriptor that is cut, or has another length than the standard's, is left out. What follows the
/// data's own length is not read.
///
/// @param bytes  readable as far as length says; null when length is 0
/// @param length number of bytes received
PI_API CSense DecodeSense(const std::uint8_t* bytes, std::size_t length);

/// @}

}  // namespace PI
