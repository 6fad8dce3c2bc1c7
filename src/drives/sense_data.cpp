// SPDX-License-Identifier: Apache-2.0

#include <pi/plugin_helper.h>
#include <pi/sense.h>

#include <algorithm>
#include <cstdio>

namespace PI {

namespace {

constexpr unsigned NO_SENSE = 0x0;
constexpr unsigned NOT_READY = 0x2;
constexpr unsigned ILLEGAL_REQUEST = 0x5;

constexpr std::uint8_t VALID = 0x80;  // of the information field, and of the key-specific bytes
constexpr std::size_t HEADER = 8;     // bytes before those that the additional length counts

/// A number of several bytes, the highest first.
std::uint64_t BigEndian(const std::uint8_t* bytes, std::size_t count) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < count; ++i) {
        number = number << 8 | bytes[i];
    }
    return number;
}

std::string HexText(std::uint8_t byte) {
    char digits[3];
    std::snprintf(digits, sizeof digits, "%02X", byte);
    return digits;
}

}  // namespace

/// Fills a CSense from bytes (SPC-5, 4.4.2 and 4.4.3).
class CSenseReader {
public:
    CSenseReader(const std::uint8_t* bytes, std::size_t length) : m_Bytes(bytes), m_Length(length) {
        m_Sense.m_Length = length;
        if (length > HEADER) {
            m_Length = std::min(length, HEADER + bytes[HEADER - 1]);
        }
    }

    CSense Read() {
        if (m_Length == 0) {
            return m_Sense;
        }
        const unsigned responseCode = m_Bytes[0] & 0x7FU;
        m_Sense.m_ResponseCode = static_cast<std::uint8_t>(responseCode);
        switch (responseCode) {
            case 0x70:
            case 0x71: ReadFixed(); break;
            case 0x72:
            case 0x73: ReadDescriptors(); break;
            case 0x7F: m_Sense.m_Format = SenseFormat::VENDOR; return m_Sense;
            default: return m_Sense;
        }
        m_Sense.m_IsDeferred = (responseCode & 1U) != 0;
        return m_Sense;
    }

private:
    std::optional<std::uint8_t> Byte(std::size_t place) const {
        return place < m_Length ? std::optional(m_Bytes[place]) : std::nullopt;
    }

    void ReadKey(std::size_t place) {
        if (place < m_Length) {
            m_Sense.m_Key = static_cast<std::uint8_t>(m_Bytes[place] & 0x0FU);
        }
    }

    void ReadFixed() {
        m_Sense.m_Format = SenseFormat::FIXED;
        ReadKey(2);
        m_Sense.m_Code = Byte(12);
        m_Sense.m_Qualifier = Byte(13);
        // With this code the drive is behind a SATA bridge, which puts ATA registers into the information
        // field and after it (SAT-4, ATA PASS-THROUGH).
        const bool isATA = m_Sense.m_Code == 0x00 && m_Sense.m_Qualifier == 0x1D;
        if (m_Length >= 7 && (m_Bytes[0] & VALID) != 0 && !isATA) {
            m_Sense.m_Information = BigEndian(m_Bytes + 3, 4);
        }
        if (m_Length >= 15) {
            ReadFieldReplaceableUnit(m_Bytes[14]);
        }
        if (m_Length >= 18) {
            ReadKeySpecific(m_Bytes + 15);
        }
    }

    void ReadDescriptors() {
        m_Sense.m_Format = SenseFormat::DESCRIPTOR;
        ReadKey(1);
        m_Sense.m_Code = Byte(2);
        m_Sense.m_Qualifier = Byte(3);
        std::optional<std::uint16_t> otherProgress;
        for (std::size_t place = HEADER; place + 2 <= m_Length;) {
            const std::uint8_t* descriptor = m_Bytes + place;
            const std::size_t size = 2 + std::size_t{descriptor[1]};
            if (size > m_Length - place) {
                break;
            }
            if (descriptor[0] == 0x0A && size == 8 && !otherProgress) {
                otherProgress = static_cast<std::uint16_t>(BigEndian(descriptor + 6, 2));
            }
            ReadDescriptor(descriptor, size);
            place += size;
        }
        if (!m_Sense.m_Progress) {
            m_Sense.m_Progress = otherProgress;
        }
    }

    void ReadDescriptor(const std::uint8_t* descriptor, std::size_t size) {
        if (descriptor[0] == 0x00 && size == 12) {
            ReadInformation(descriptor[2], descriptor + 4);
        } else if (descriptor[0] == 0x02 && size == 8) {
            ReadKeySpecific(descriptor + 4);
        } else if (descriptor[0] == 0x03 && size == 4) {
            ReadFieldReplaceableUnit(descriptor[3]);
        } else if (descriptor[0] == 0x0D && size == 30) {  // all of them for block devices
            ReadInformation(descriptor[2], descriptor + 8);
            ReadKeySpecific(descriptor + 4);
            ReadFieldReplaceableUnit(descriptor[7]);
        }
    }

    void ReadInformation(std::uint8_t flags, const std::uint8_t* bytes) {
        if ((flags & VALID) != 0 && !m_Sense.m_Information) {
            m_Sense.m_Information = BigEndian(bytes, 8);
        }
    }

    void ReadFieldReplaceableUnit(std::uint8_t unit) {
        if (unit != 0 && !m_Sense.m_FieldReplaceableUnit) {
            m_Sense.m_FieldReplaceableUnit = unit;
        }
    }

    /// Three bytes, whose meaning depends on the key.
    void ReadKeySpecific(const std::uint8_t* bytes) {
        if ((bytes[0] & VALID) == 0) {
            return;
        }
        const auto number = static_cast<std::uint16_t>(BigEndian(bytes + 1, 2));
        const unsigned key = m_Sense.m_Key.value_or(0xFF);
        if ((key == NO_SENSE || key == NOT_READY) && !m_Sense.m_Progress) {
            m_Sense.m_Progress = number;
        }
        if (key == ILLEGAL_REQUEST && !m_Sense.m_FieldPointer) {
            m_Sense.m_FieldPointer = number;
            m_Sense.m_IsFieldInCommand = (bytes[0] & 0x40U) != 0;
            if ((bytes[0] & 0x08U) != 0) {
                m_Sense.m_FieldBit = static_cast<std::uint8_t>(bytes[0] & 0x07U);
            }
        }
    }

    const std::uint8_t* m_Bytes;
    std::size_t m_Length;
    CSense m_Sense;
};

_SENSE_FORMAT CSense::GetFormat() const {
    return m_Format;
}

std::optional<std::uint8_t> CSense::GetResponseCode() const {
    return m_ResponseCode;
}

bool CSense::IsDeferred() const {
    return m_IsDeferred;
}

std::optional<std::uint8_t> CSense::GetKey() const {
    return m_Key;
}

std::string CSense::GetReason() const {
    if (m_Key) {
        return "";
    }
    if (!m_ResponseCode) {
        return "empty";
    }
    if (m_Format == SenseFormat::VENDOR) {
        return "response code 7Fh: the vendor's own format";
    }
    if (m_Format == SenseFormat::NONE) {
        return "response code " + HexText(*m_ResponseCode) +
               "h: neither fixed (70h, 71h) nor descriptor (72h, 73h) format";
    }
    return "too short: " + std::to_string(m_Length) + (m_Length == 1 ? " byte" : " bytes") +
           ", without a sense key";
}

std::optional<std::uint8_t> CSense::GetCode() const {
    return m_Code;
}

std::optional<std::uint8_t> CSense::GetQualifier() const {
    return m_Qualifier;
}

std::string CSense::GetAdditionalText() const {
    std::string text;
    if (m_Code && m_Qualifier &&
        CPluginHelper::TranslateSenseASC(*m_Code, *m_Qualifier, text) != ErrorCode::SUCCESS &&
        !text.empty()) {
        text.replace(text.find("0x") + 2, 1, HexText(*m_Qualifier));
    }
    return text;
}

std::optional<std::uint64_t> CSense::GetInformation() const {
    return m_Information;
}

std::optional<std::uint8_t> CSense::GetFieldReplaceableUnit() const {
    return m_FieldReplaceableUnit;
}

std::optional<std::uint16_t> CSense::GetProgress() const {
    return m_Progress;
}

std::optional<std::uint16_t> CSense::GetFieldPointer() const {
    return m_FieldPointer;
}

std::optional<std::uint8_t> CSense::GetFieldBit() const {
    return m_FieldBit;
}

bool CSense::IsFieldInCommand() const {
    return m_IsFieldInCommand;
}

CSense DecodeSense(const std::uint8_t* bytes, std::size_t length) {
    return CSenseReader(bytes, length).Read();
}

}  // namespace PI
