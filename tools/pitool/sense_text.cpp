// SPDX-License-Identifier: Apache-2.0

#include "sense_text.h"

#include "hex_bytes.h"
#include "json_text.h"
#include "text_table.h"

#include <pi/plugin_helper.h>
#include <pi/vocabulary.h>

#include <cstdio>
#include <optional>
#include <utility>
#include <vector>

namespace pitool {
namespace {

constexpr const char* UNKNOWN_PAIR = "unknown";
constexpr const char* NOT_IN_DATA = "not in the data";

/// The library puts the qualifier of a patterned text in as a character; here it stands as digits.
std::string WithQualifierAsDigits(std::string text, std::uint8_t qualifier) {
    const std::size_t place = text.find(std::string("0x") + static_cast<char>(qualifier));
    if (place != std::string::npos) {
        text.replace(place + 2, 1, HexText(qualifier).substr(0, 2));
    }
    return text;
}

const char* FormatText(PI::_SENSE_FORMAT format) {
    switch (format) {
        case PI::SenseFormat::FIXED: return "fixed";
        case PI::SenseFormat::DESCRIPTOR: return "descriptor";
        case PI::SenseFormat::VENDOR: return "vendor";
        case PI::SenseFormat::NONE: break;
    }
    return "";
}

std::string AdditionalText(const PI::CSense& sense, const SenseMeaning& meaning) {
    if (!sense.GetCode()) {
        return NOT_IN_DATA;
    }
    const std::string code = HexText(*sense.GetCode());
    if (!sense.GetQualifier()) {
        return code + ", the qualifier is " + NOT_IN_DATA;
    }
    return code + " " + HexText(*sense.GetQualifier()) + ", " +
           (meaning.m_AdditionalText.empty() ? UNKNOWN_PAIR : meaning.m_AdditionalText);
}

std::string ProgressText(std::uint16_t progress) {
    constexpr double WHOLE = 65536;
    char text[16];
    std::snprintf(text, sizeof text, "%.1f percent", 100 * progress / WHOLE);
    return text;
}

std::string FieldText(const PI::CSense& sense) {
    return "byte " + std::to_string(*sense.GetFieldPointer()) +
           (sense.IsFieldInCommand() ? " of the command" : " of the data sent with the command") +
           (sense.GetFieldBit() ? ", bit " + std::to_string(*sense.GetFieldBit()) : "");
}

template <class Number>
Json NumberOrNull(const std::optional<Number>& number) {
    return number ? Json(*number) : Json(nullptr);
}

}  // namespace

SenseMeaning ExplainSense(const PI::CSense& sense) {
    SenseMeaning meaning;
    PI::_SEVERITY severity = PI::Severity::DEBUG;
    PI::CPluginHelper::TranslateSenseKey(*sense.GetKey(), meaning.m_KeyText, severity);
    meaning.m_Severity = PI::SeverityToString(severity);
    if (sense.GetCode() && sense.GetQualifier()) {
        const int result = PI::CPluginHelper::TranslateSenseASC(*sense.GetCode(), *sense.GetQualifier(),
                                                                meaning.m_AdditionalText);
        if (result != PI::ErrorCode::SUCCESS) {
            meaning.m_AdditionalText =
                WithQualifierAsDigits(std::move(meaning.m_AdditionalText), *sense.GetQualifier());
        }
    }
    return meaning;
}

std::string SenseSheet(const PI::CSense& sense, bool isData, const Screen& screen) {
    const SenseMeaning meaning = ExplainSense(sense);
    std::vector<std::pair<const char*, std::string>> lines;
    if (isData) {
        lines.emplace_back("format",
                           HexText(*sense.GetResponseCode()) + ", " + FormatText(sense.GetFormat()) +
                               (sense.IsDeferred() ? ", deferred error: it belongs to an earlier command"
                                                   : ", current error"));
    }
    lines.emplace_back("sense key", HexText(*sense.GetKey()).substr(1) + ", " + meaning.m_KeyText);
    lines.emplace_back("additional", AdditionalText(sense, meaning));
    if (sense.GetInformation()) {
        lines.emplace_back("information",
                           std::to_string(*sense.GetInformation()) + ", the LBA for a read, write or verify");
    }
    if (sense.GetFieldPointer()) {
        lines.emplace_back("field", FieldText(sense));
    }
    if (sense.GetProgress()) {
        lines.emplace_back("progress", ProgressText(*sense.GetProgress()));
    }
    if (sense.GetFieldReplaceableUnit()) {
        lines.emplace_back("unit", std::to_string(*sense.GetFieldReplaceableUnit()) +
                                       ", the part to replace by the vendor's list");
    }
    lines.emplace_back("severity", meaning.m_Severity);

    std::vector<std::vector<Cell>> cells;
    for (const auto& [name, text] : lines) {
        cells.push_back({{name}, {text}});
    }
    cells[isData ? 2 : 1][1].m_Style = meaning.m_AdditionalText.empty() ? Style::FAINT : Style::PLAIN;
    cells.back()[1].m_Style = SeverityStyle(meaning.m_Severity);
    return TableText(cells, screen, 0);
}

std::string SenseJson(const PI::CSense& sense, bool isData) {
    const SenseMeaning meaning = ExplainSense(sense);
    return JsonText({
        {"format", "pitool sense"},
        {"version", 1},
        {"response_code", isData ? NumberOrNull(sense.GetResponseCode()) : Json(nullptr)},
        {"layout", isData ? Json(FormatText(sense.GetFormat())) : Json(nullptr)},
        {"deferred", isData ? Json(sense.IsDeferred()) : Json(nullptr)},
        {"key", NumberOrNull(sense.GetKey())},
        {"key_text", meaning.m_KeyText},
        {"asc", NumberOrNull(sense.GetCode())},
        {"ascq", NumberOrNull(sense.GetQualifier())},
        {"additional_text",
         meaning.m_AdditionalText.empty() ? Json(nullptr) : Json(meaning.m_AdditionalText)},
        {"information", NumberOrNull(sense.GetInformation())},
        {"field_pointer", NumberOrNull(sense.GetFieldPointer())},
        {"field_bit", NumberOrNull(sense.GetFieldBit())},
        {"field_in_command", sense.GetFieldPointer() ? Json(sense.IsFieldInCommand()) : Json(nullptr)},
        {"progress", NumberOrNull(sense.GetProgress())},
        {"field_replaceable_unit", NumberOrNull(sense.GetFieldReplaceableUnit())},
        {"severity", meaning.m_Severity},
    });
}

}  // namespace pitool
