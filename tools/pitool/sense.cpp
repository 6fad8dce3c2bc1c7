// SPDX-License-Identifier: Apache-2.0

#include "commands.h"

#include "print/json.h"
#include "print/output.h"
#include "print/table.h"
#include "print/text.h"

#include <CLI/CLI.hpp>

#include <pi/plugin_helper.h>
#include <pi/sense.h>
#include <pi/vocabulary.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pitool {
namespace {

constexpr const char* NOT_IN_DATA = "not in the data";

struct Options {
    std::vector<std::string> m_Codes;  ///< key, additional sense code, its qualifier; empty: data are given
    std::optional<std::string> m_Data;
    bool m_Json = false;
};

struct Meaning {
    std::string m_KeyText;
    std::string m_AdditionalText;  ///< empty: the pair is unknown, or not in the data
    std::string m_Severity;
};

/// A byte as the standard writes it, such as "4Dh".
std::string HexText(std::uint8_t byte) {
    char text[4];
    std::snprintf(text, sizeof text, "%02Xh", byte);
    return text;
}

bool ReadHexDigits(std::string_view text, std::uint8_t& byte) {
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, byte, 16);
    return error == std::errc() && rest == end && text.size() <= 2;
}

/// One or two digits; "0x" may lead, "h" may follow.
bool ReadHexByte(std::string_view text, std::uint8_t& byte) {
    if (text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X") {
        text.remove_prefix(2);
    }
    if (!text.empty() && (text.back() == 'h' || text.back() == 'H')) {
        text.remove_suffix(1);
    }
    return ReadHexDigits(text, byte);
}

/// A byte, or several written without separators.
bool ReadWord(std::string_view word, std::vector<std::uint8_t>& bytes) {
    std::uint8_t byte = 0;
    if (ReadHexByte(word, byte)) {
        bytes.push_back(byte);
        return true;
    }
    for (; word.size() >= 2 && ReadHexDigits(word.substr(0, 2), byte); word.remove_prefix(2)) {
        bytes.push_back(byte);
    }
    return word.empty();
}

/// Bytes separated by blanks or commas or not at all.
/// @param reason out: why the text is refused, when the result is false
bool ReadBytes(std::string_view text, std::vector<std::uint8_t>& bytes, std::string& reason) {
    constexpr std::string_view SEPARATORS = " ,\t\r\n";
    for (;;) {
        text.remove_prefix(std::min(text.find_first_not_of(SEPARATORS), text.size()));
        if (text.empty()) {
            return true;
        }
        const std::string_view word = text.substr(0, text.find_first_of(SEPARATORS));
        if (!ReadWord(word, bytes)) {
            reason = Quoted(word) + " is no hexadecimal byte";
            return false;
        }
        text.remove_prefix(word.size());
    }
}

/// @param sense  out: holds a key when the result is true
/// @param reason out: why the data are refused, when it is false
bool ReadSenseData(std::string_view text, PI::CSense& sense, std::string& reason) {
    std::vector<std::uint8_t> bytes;
    if (!ReadBytes(text, bytes, reason)) {
        return false;
    }
    sense = PI::DecodeSense(bytes.data(), bytes.size());
    if (sense.GetKey()) {
        return true;
    }
    if (!sense.GetResponseCode()) {
        reason = "empty";
    } else if (sense.GetFormat() == PI::SenseFormat::VENDOR) {
        reason = "response code 7Fh: the vendor's own format";
    } else if (sense.GetFormat() == PI::SenseFormat::NONE) {
        reason = "response code " + HexText(*sense.GetResponseCode()) +
                 ": neither fixed (70h, 71h) nor descriptor (72h, 73h) format";
    } else {
        reason = "too short: " + std::to_string(bytes.size()) + (bytes.size() == 1 ? " byte" : " bytes") +
                 ", without a sense key";
    }
    return false;
}

bool ReadCode(const char* name, const std::string& text, std::uint8_t largest, std::uint8_t& code) {
    if (ReadHexByte(text, code) && code <= largest) {
        return true;
    }
    ReportError(std::string(name) + ": " + Quoted(text) + " is no hexadecimal number from 0 to " +
                HexText(largest));
    return false;
}

bool ReadCodes(const std::vector<std::string>& texts, PI::CSense& sense) {
    std::uint8_t bytes[] = {0x72, 0, 0, 0};  // as the shortest sense data that hold them
    if (!ReadCode("KEY", texts[0], 0x0F, bytes[1]) || !ReadCode("ASC", texts[1], 0xFF, bytes[2]) ||
        !ReadCode("ASCQ", texts[2], 0xFF, bytes[3])) {
        return false;
    }
    sense = PI::DecodeSense(bytes, sizeof bytes);
    return true;
}

/// The library puts the qualifier of a patterned text in as a character; here it is written as digits.
void WriteQualifierAsDigits(std::uint8_t qualifier, std::string& text) {
    const std::size_t place = text.find(std::string("0x") + static_cast<char>(qualifier));
    if (place != std::string::npos) {
        text.replace(place + 2, 1, HexText(qualifier).substr(0, 2));
    }
}

Meaning Explain(const PI::CSense& sense) {
    Meaning meaning;
    PI::_SEVERITY severity = PI::Severity::DEBUG;
    PI::CPluginHelper::TranslateSenseKey(*sense.GetKey(), meaning.m_KeyText, severity);
    meaning.m_Severity = PI::SeverityToString(severity);
    if (sense.GetCode() && sense.GetQualifier() &&
        PI::CPluginHelper::TranslateSenseASC(*sense.GetCode(), *sense.GetQualifier(),
                                             meaning.m_AdditionalText) != PI::ErrorCode::SUCCESS) {
        WriteQualifierAsDigits(*sense.GetQualifier(), meaning.m_AdditionalText);
    }
    return meaning;
}

const char* FormatText(PI::_SENSE_FORMAT format) {
    return format == PI::SenseFormat::FIXED ? "fixed" : "descriptor";
}

std::string AdditionalText(const PI::CSense& sense, const Meaning& meaning) {
    if (!sense.GetCode()) {
        return NOT_IN_DATA;
    }
    const std::string code = HexText(*sense.GetCode());
    if (!sense.GetQualifier()) {
        return code + ", the qualifier is " + NOT_IN_DATA;
    }
    return code + " " + HexText(*sense.GetQualifier()) + ", " +
           (meaning.m_AdditionalText.empty() ? "unknown" : meaning.m_AdditionalText);
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

/// @param isData false when the codes were given by themselves: then nothing is said of a format
std::string SenseText(const PI::CSense& sense, bool isData) {
    const Meaning meaning = Explain(sense);
    Table table({{nullptr}, {nullptr}}, Table::LastColumn::WRAPPED);
    const auto add = [&table](const char* name, const std::string& text, Style style = Style::PLAIN) {
        table.Add(name);
        table.Add(text, style);
    };
    if (isData) {
        add("format", HexText(*sense.GetResponseCode()) + ", " + FormatText(sense.GetFormat()) +
                          (sense.IsDeferred() ? ", deferred error: it belongs to an earlier command"
                                              : ", current error"));
    }
    add("sense key", HexText(*sense.GetKey()).substr(1) + ", " + meaning.m_KeyText);
    add("additional", AdditionalText(sense, meaning),
        meaning.m_AdditionalText.empty() ? Style::FAINT : Style::PLAIN);
    if (sense.GetInformation()) {
        add("information", std::to_string(*sense.GetInformation()) + ", the LBA for a read, write or verify");
    }
    if (sense.GetFieldPointer()) {
        add("field", FieldText(sense));
    }
    if (sense.GetProgress()) {
        add("progress", ProgressText(*sense.GetProgress()));
    }
    if (sense.GetFieldReplaceableUnit()) {
        add("unit",
            std::to_string(*sense.GetFieldReplaceableUnit()) + ", the part to replace by the vendor's list");
    }
    add("severity", meaning.m_Severity, SeverityStyle(meaning.m_Severity));
    return table.Text(OutputScreen());
}

std::string SenseJson(const PI::CSense& sense, bool isData) {
    const Meaning meaning = Explain(sense);
    std::string text;
    JsonWriter json(text);
    const auto number = [&json](const char* name, const auto& value, bool isKnown = true) {
        json.Name(name);
        value&& isKnown ? json.Number(std::uint64_t{*value}) : json.Null();
    };
    const auto flag = [&json](const char* name, bool value, bool isKnown) {
        json.Name(name);
        isKnown ? json.Bool(value) : json.Null();
    };
    json.BeginObject();
    json.Name("format").Text("pitool sense");
    json.Name("version").Number(std::int64_t{1});
    number("response_code", sense.GetResponseCode(), isData);
    json.Name("layout").TextOrNull(isData ? FormatText(sense.GetFormat()) : "");
    flag("deferred", sense.IsDeferred(), isData);
    number("key", sense.GetKey());
    json.Name("key_text").Text(meaning.m_KeyText);
    number("asc", sense.GetCode());
    number("ascq", sense.GetQualifier());
    json.Name("additional_text").TextOrNull(meaning.m_AdditionalText);
    number("information", sense.GetInformation());
    number("field_pointer", sense.GetFieldPointer());
    number("field_bit", sense.GetFieldBit());
    flag("field_in_command", sense.IsFieldInCommand(), sense.GetFieldPointer().has_value());
    number("progress", sense.GetProgress());
    number("field_replaceable_unit", sense.GetFieldReplaceableUnit());
    json.Name("severity").Text(meaning.m_Severity);
    json.EndObject();
    return text + "\n";
}

ExitStatus Run(const Options& options) {
    const bool isData = options.m_Codes.empty();
    if (isData && !options.m_Data) {
        ReportError("sense needs KEY ASC ASCQ or --data; see pitool sense --help");
        return EXIT_BAD_USAGE;
    }
    PI::CSense sense;
    std::string reason;
    if (!isData && !ReadCodes(options.m_Codes, sense)) {
        return EXIT_BAD_USAGE;
    }
    if (isData && !ReadSenseData(*options.m_Data, sense, reason)) {
        ReportError("sense data: " + reason);
        return EXIT_BAD_INPUT;
    }
    return WriteOutput(options.m_Json ? SenseJson(sense, isData) : SenseText(sense, isData)) ? EXIT_DONE
                                                                                             : EXIT_BAD_INPUT;
}

}  // namespace

void AddSense(CLI::App& app, Action& action) {
    CLI::App* command = app.add_subcommand("sense", "Explain SCSI sense codes or sense data");
    const auto options = std::make_shared<Options>();
    constexpr int CODES = 3;
    CLI::Option* codes =
        command->add_option("CODE", options->m_Codes, "Sense key, additional code and qualifier")
            ->option_text("CODE CODE")
            ->expected(CODES);
    command->add_option("--data", options->m_Data, "Sense data, hexadecimal bytes")
        ->option_text("BYTES")
        ->excludes(codes);
    command->add_flag("--json", options->m_Json, JSON_HELP);
    command->footer(std::string(EXAMPLES) +
                    "  pitool sense 5 24 00\n"
                    "  pitool sense --data \"$(cat sense/fixed-unrecovered-read.txt)\"\n"
                    "  pitool sense --json 3 11 00");
    command->callback([&action, options] { action = [options] { return Run(*options); }; });
}

}  // namespace pitool
