// SPDX-License-Identifier: Apache-2.0

#include <pi/plugin_helper.h>
#include <pi/vocabulary.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <string_view>

namespace PI {

namespace {

struct SenseKey {
    const char* m_Text;
    _SEVERITY m_Severity;
};

// By sense key, as SCSI Primary Commands (SPC) numbers them.
constexpr SenseKey SENSE_KEYS[16] = {
    {"no sense", Severity::INFORMATION},         // 0h
    {"recovered error", Severity::INFORMATION},  // 1h
    {"not ready", Severity::WARNING},            // 2h
    {"medium error", Severity::WARNING},         // 3h
    {"hardware error", Severity::WARNING},       // 4h
    {"illegal request", Severity::WARNING},      // 5h
    {"unit attention", Severity::WARNING},       // 6h
    {"data protect", Severity::INFORMATION},     // 7h
    {"blank check", Severity::INFORMATION},      // 8h
    {"vendor specific", Severity::INFORMATION},  // 9h
    {"copy aborted", Severity::WARNING},         // Ah
    {"aborted command", Severity::WARNING},      // Bh
    {"reserved", Severity::INFORMATION},         // Ch
    {"volume overflow", Severity::WARNING},      // Dh
    {"miscompare", Severity::WARNING},           // Eh
    {"completed", Severity::INFORMATION},        // Fh
};

constexpr unsigned SenseCode(unsigned asc, unsigned ascq) {
    return asc << 8 | ascq;
}

struct AdditionalSense {
    std::uint16_t m_Code;
    std::string_view m_Text;
};

constexpr AdditionalSense ADDITIONAL_SENSE[] = {
#define PI_SENSE(asc, ascq, text) {SenseCode(asc, ascq), text},
#include "drives/additional_sense.def"
#undef PI_SENSE
};

constexpr bool IsAscending() {
    for (std::size_t i = 1; i < std::size(ADDITIONAL_SENSE); ++i) {
        if (ADDITIONAL_SENSE[i - 1].m_Code >= ADDITIONAL_SENSE[i].m_Code) {
            return false;
        }
    }
    return true;
}
static_assert(IsAscending());

constexpr std::size_t CODES = 256;

/// By additional sense code, where its rows begin: in front of where those of the next code do.
constexpr std::array<std::uint16_t, CODES + 1> MakeFirstRows() {
    std::array<std::uint16_t, CODES + 1> first = {};
    for (const AdditionalSense& sense : ADDITIONAL_SENSE) {
        ++first[(sense.m_Code >> 8) + 1U];
    }
    for (std::size_t code = 0; code < CODES; ++code) {
        // cppcheck-suppress containerOutOfBounds ; reads the size CODES + 1 as CODES
        first[code + 1] = static_cast<std::uint16_t>(first[code] + first[code + 1]);
    }
    return first;
}

constexpr std::array<std::uint16_t, CODES + 1> FIRST_ROWS = MakeFirstRows();

const AdditionalSense* FindAdditionalSense(unsigned char asc, unsigned char ascq) {
    const unsigned code = SenseCode(asc, ascq);
    const unsigned first = FIRST_ROWS[asc];
    // A code has few gaps among its qualifiers, so the row is where it would be without gaps or a little
    // before.
    unsigned behind = std::min<unsigned>(first + ascq + 1, FIRST_ROWS[asc + 1U]);
    while (behind > first && ADDITIONAL_SENSE[behind - 1].m_Code > code) {
        --behind;
    }
    return behind > first && ADDITIONAL_SENSE[behind - 1].m_Code == code ? &ADDITIONAL_SENSE[behind - 1]
                                                                         : nullptr;
}

// Codes of a range: the qualifier goes into the text as the character that it is, not as digits.
// Callers show these texts although the code counts as unknown.
std::string PatternText(unsigned char asc, unsigned char ascq) {
    const char qualifier = static_cast<char>(ascq);
    if (asc == 0x40 && ascq >= 0x80) {
        return std::string("diagnostic failure on component 0x") + qualifier;
    }
    if (asc == 0x4D) {
        return std::string("tagged overlapped commands (task tag 0x") + qualifier + ")";
    }
    if (asc == 0x70) {
        return std::string("decompression exception short algorithm id of 0x") + qualifier;
    }
    return std::string();
}

}  // namespace

int CPluginHelper::TranslateSenseKey(unsigned char senseKey, std::string& text, _SEVERITY& severity) {
    const SenseKey& key = SENSE_KEYS[senseKey & 0x0F];
    text = key.m_Text;
    severity = key.m_Severity;
    return ErrorCode::SUCCESS;
}

int CPluginHelper::TranslateSenseASC(unsigned char asc, unsigned char ascq, std::string& text) {
    if (const AdditionalSense* found = FindAdditionalSense(asc, ascq)) {
        text = found->m_Text;
        return ErrorCode::SUCCESS;
    }
    text = PatternText(asc, ascq);
    return ErrorCode::GENERAL;
}

}  // namespace PI
