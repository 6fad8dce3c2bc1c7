// SPDX-License-Identifier: Apache-2.0

#include "sense_text.h"

#include "json_text.h"
#include "text_table.h"

#include <pi/plugin_helper.h>
#include <pi/vocabulary.h>

#include <utility>
#include <vector>

namespace pitool {
namespace {

constexpr const char* UNKNOWN_PAIR = "unknown";

/// The library puts the qualifier of a patterned text in as a character; here it stands as digits.
std::string WithQualifierAsDigits(std::string text, std::uint8_t qualifier) {
    const std::size_t place = text.find(std::string("0x") + static_cast<char>(qualifier));
    if (place != std::string::npos) {
        text.replace(place + 2, 1, HexText(qualifier).substr(0, 2));
    }
    return text;
}

const char* SeverityText(PI::_SEVERITY severity) {
    switch (severity) {
        case PI::Severity::INFORMATION: return "INFORMATION";
        case PI::Severity::WARNING: return "WARNING";
        case PI::Severity::ERROR: return "ERROR";
        case PI::Severity::DEBUG: break;
    }
    return "DEBUG";
}

const char* FormatText(SenseFormat format) {
    switch (format) {
        case SenseFormat::FIXED: return "fixed";
        case SenseFormat::DESCRIPTOR: return "descriptor";
        case SenseFormat::NONE: break;
    }
    return "";
}

std::string KeyDigit(const SenseCodes& codes) {
    return HexText(codes.m_Key).substr(1);
}

}  // namespace

SenseMeaning ExplainSense(const SenseCodes& codes) {
    SenseMeaning meaning;
    PI::_SEVERITY severity = PI::Severity::DEBUG;
    PI::CPluginHelper::TranslateSenseKey(codes.m_Key, meaning.m_KeyText, severity);
    meaning.m_Severity = SeverityText(severity);
    const int result =
        PI::CPluginHelper::TranslateSenseASC(codes.m_ASC, codes.m_ASCQ, meaning.m_AdditionalText);
    if (result != PI::ErrorCode::SUCCESS) {
        meaning.m_AdditionalText = WithQualifierAsDigits(std::move(meaning.m_AdditionalText), codes.m_ASCQ);
    }
    return meaning;
}

std::string SenseSheet(const SenseCodes& codes, const Screen& screen) {
    const SenseMeaning meaning = ExplainSense(codes);
    const bool unknown = meaning.m_AdditionalText.empty();
    const std::string format =
        HexText(codes.m_ResponseCode) + ", " + FormatText(codes.m_Format) +
        (codes.m_Deferred ? ", deferred error: it belongs to an earlier command" : ", current error");
    const std::string key = KeyDigit(codes) + ", " + meaning.m_KeyText;
    const std::string additional = HexText(codes.m_ASC) + " " + HexText(codes.m_ASCQ) + ", " +
                                   (unknown ? UNKNOWN_PAIR : meaning.m_AdditionalText);
    std::vector<std::vector<Cell>> lines;
    if (codes.m_Format != SenseFormat::NONE) {
        lines.push_back({{"format"}, {format}});
    }
    lines.push_back({{"sense key"}, {key}});
    lines.push_back({{"additional"}, {additional, unknown ? Style::FAINT : Style::PLAIN}});
    lines.push_back({{"severity"}, {meaning.m_Severity, SeverityStyle(meaning.m_Severity)}});
    return TableText(lines, screen, 0);
}

std::string SenseJson(const SenseCodes& codes) {
    const SenseMeaning meaning = ExplainSense(codes);
    const bool bare = codes.m_Format == SenseFormat::NONE;
    return JsonText({
        {"format", "pitool sense"},
        {"version", 1},
        {"response_code", bare ? Json(nullptr) : Json(codes.m_ResponseCode)},
        {"layout", bare ? Json(nullptr) : Json(FormatText(codes.m_Format))},
        {"deferred", bare ? Json(nullptr) : Json(codes.m_Deferred)},
        {"key", codes.m_Key},
        {"key_text", meaning.m_KeyText},
        {"asc", codes.m_ASC},
        {"ascq", codes.m_ASCQ},
        {"additional_text",
         meaning.m_AdditionalText.empty() ? Json(nullptr) : Json(meaning.m_AdditionalText)},
        {"severity", meaning.m_Severity},
    });
}

}  // namespace pitool
