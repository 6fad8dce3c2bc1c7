// SPDX-License-Identifier: Apache-2.0
/// @file
/// SCSI sense data: why a command failed.
#pragma once

#include <pi/types.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace PI {

/// @addtogroup drives
/// @{

namespace SenseFormat {
/// Format of sense data (SPC-5, 4.4), by the response code in the first byte.
enum _SENSE_FORMAT : std::int32_t {
    NONE = 0,        ///< no sense data
    FIXED = 1,       ///< 70h, 71h
    DESCRIPTOR = 2,  ///< 72h, 73h
    VENDOR = 3,      ///< 7Fh: vendor specific; only the response code is read
};
}  // namespace SenseFormat
using SenseFormat::_SENSE_FORMAT;

/// Decoded sense data (SPC-5, 4.4). A field that they do not contain, or do not mark as valid, has no value.
///
/// A value: copies are independent, and any number of threads may read one. Nothing here throws, but texts
/// std::bad_alloc if allocation fails.
class PI_API CSense {
public:
    /// No sense data: SenseFormat::NONE.
    CSense() = default;

    /// The format; NONE and VENDOR have no field but the response code.
    _SENSE_FORMAT GetFormat() const;
    /// The first byte without its highest bit; 70h to 73h in the standard formats.
    std::optional<std::uint8_t> GetResponseCode() const;
    /// Whether the error belongs to an earlier command (71h, 73h).
    bool IsDeferred() const;

    /// Sense key, 0 to 15; CPluginHelper::TranslateSenseKey has its text.
    std::optional<std::uint8_t> GetKey() const;
    /// Why there is no key, for people, in English, such as "too short: 2 bytes, without a sense key"; empty
    /// if there is one.
    std::string GetReason() const;
    /// Additional sense code.
    std::optional<std::uint8_t> GetCode() const;
    /// Qualifier of the additional sense code.
    std::optional<std::uint8_t> GetQualifier() const;
    /// Text of code and qualifier as CPluginHelper::TranslateSenseASC has it, except that a qualifier in it
    /// is two hexadecimal digits; empty if the pair is unknown or not in the data.
    std::string GetAdditionalText() const;

    /// The information field, if the drive marks it as valid. For a read, write or verify command it is the
    /// address of the logical block that failed; for others see the standard of the command.
    std::optional<std::uint64_t> GetInformation() const;
    /// Number of the part that failed, 1 to 255, in the vendor's numbering.
    std::optional<std::uint8_t> GetFieldReplaceableUnit() const;
    /// Progress of a running operation such as a format, in 65536ths. It is reported with the keys NO SENSE
    /// and NOT READY, or in a descriptor for the progress of another operation.
    std::optional<std::uint16_t> GetProgress() const;

    /// With ILLEGAL REQUEST: index of the wrong byte, from 0.
    std::optional<std::uint16_t> GetFieldPointer() const;
    /// Number of the wrong bit in that byte, 0 to 7; of a wider field its highest bit.
    std::optional<std::uint8_t> GetFieldBit() const;
    /// Whether that byte is in the command; otherwise it is in the data sent with it. False without a field
    /// pointer.
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
    std::uint64_t m_Length = 0;  // of the data
    [[maybe_unused]] std::uint64_t m_Reserved[3] = {};
};

/// Decodes sense data as a drive returns them. Of data that end early, the complete fields are used; a
/// descriptor that is cut off, or has another length than in the standard, is ignored. Bytes after the length
/// that the data state are not read. Thread-safe.
///
/// @param bytes  readable as far as length says; null when length is 0
/// @param length number of bytes received
PI_API CSense DecodeSense(const std::uint8_t* bytes, std::size_t length);

/// @}

}  // namespace PI
