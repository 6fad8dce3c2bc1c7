// SPDX-License-Identifier: Apache-2.0

#include "commands.h"

#include <pi/plugin_helper.h>
#include <pi/sense.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <sstream>
#include <utility>

namespace pitool {
namespace {

struct Options {
    std::vector<std::string> m_Codes;  ///< key, additional sense code, its qualifier; empty: data are given
    std::optional<std::string> m_Data;
    bool m_Json = false;
};

using Bytes = std::vector<std::uint8_t>;

/// A byte as the standard writes it, such as "4Dh".
std::string HexText(std::uint8_t byte) {
    char text[4];
    std::snprintf(text, sizeof text, "%02Xh", byte);
    return text;
}

/// Reads a byte of one or two digits, with an optional "0x" before or "h" after it, or several of two digits.
bool ReadWord(std::string_view word, Bytes& bytes) {
    const bool isPrefixed = word.substr(0, 2) == "0x" || word.substr(0, 2) == "0X";
    word.remove_prefix(isPrefixed ? 2 : 0);
    const bool isSuffixed = !word.empty() && (word.back() == 'h' || word.back() == 'H');
    word.remove_suffix(isSuffixed ? 1 : 0);
    if (word.empty() || (word.size() > 2 && (isPrefixed || isSuffixed || word.size() % 2 != 0))) {
        return false;
    }
    for (; !word.empty(); word.remove_prefix(std::min(word.size(), std::size_t{2}))) {
        const char* end = word.data() + std::min(word.size(), std::size_t{2});
        if (std::from_chars(word.data(), end, bytes.emplace_back(), 16).ptr != end) {
            return false;
        }
    }
    return true;
}

/// @return why the data are refused; empty when they are not
std::string ReadData(std::string text, Bytes& bytes) {
    std::replace(text.begin(), text.end(), ',', ' ');
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        if (!ReadWord(word, bytes)) {
            return Quoted(word) + " is not a hexadecimal byte";
        }
    }
    return "";
}

/// @param bytes out: the shortest sense data that hold the codes
/// @return why they are refused; empty when they are not
std::string ReadCodes(const std::vector<std::string>& codes, Bytes& bytes) {
    bytes = {0x72};
    for (const char* name : {"KEY", "ASC", "ASCQ"}) {
        const std::size_t place = bytes.size();
        const std::uint8_t largest = place == 1 ? 0x0F : 0xFF;
        if (!ReadWord(codes[place - 1], bytes) || bytes.size() != place + 1 || bytes.back() > largest) {
            return std::string(name) + ": " + Quoted(codes[place - 1]) +
                   " is not a hexadecimal number from 0 to " + HexText(largest);
        }
    }
    return "";
}

/// The text of the key, and its severity.
std::pair<std::string, std::string> ExplainKey(const PI::CSense& sense) {
    std::string text;
    PI::_SEVERITY severity = PI::Severity::DEBUG;
    PI::CPluginHelper::TranslateSenseKey(*sense.GetKey(), text, severity);
    return {text, PI::SeverityToString(severity)};
}

const char* FormatText(const PI::CSense& sense) {
    return sense.GetFormat() == PI::SenseFormat::FIXED ? "fixed" : "descriptor";
}

/// @param isData false when the codes were given by themselves: then nothing is said of a format
std::string SenseText(const PI::CSense& sense, bool isData) {
    const auto [key, severity] = ExplainKey(sense);
    Table table({{nullptr}, {nullptr}}, Table::LastColumn::WRAPPED);
    const auto add = [&table](const char* name, const std::string& text, Style style = Style::PLAIN) {
        table.Add(name);
        table.Add(text, style);
    };
    if (isData) {
        add("format", HexText(*sense.GetResponseCode()) + ", " + FormatText(sense) +
                          (sense.IsDeferred() ? ", deferred error: it belongs to an earlier command"
                                              : ", current error"));
    }
    add("sense key", HexText(*sense.GetKey()).substr(1) + ", " + key);
    const std::string additional = sense.GetAdditionalText();
    add("additional",
        !sense.GetCode()        ? "not in the data"
        : !sense.GetQualifier() ? HexText(*sense.GetCode()) + ", the qualifier is not in the data"
                                : HexText(*sense.GetCode()) + " " + HexText(*sense.GetQualifier()) + ", " +
                                      (additional.empty() ? "unknown" : additional),
        additional.empty() ? Style::FAINT : Style::PLAIN);
    if (sense.GetInformation()) {
        add("information", std::to_string(*sense.GetInformation()) + ", the LBA for a read, write or verify");
    }
    if (sense.GetFieldPointer()) {
        add("field",
            "byte " + std::to_string(*sense.GetFieldPointer()) +
                (sense.IsFieldInCommand() ? " of the command" : " of the data sent with the command") +
                (sense.GetFieldBit() ? ", bit " + std::to_string(*sense.GetFieldBit()) : ""));
    }
    if (sense.GetProgress()) {
        constexpr double WHOLE = 65536;
        char text[16];
        std::snprintf(text, sizeof text, "%.1f percent", 100 * *sense.GetProgress() / WHOLE);
        add("progress", text);
    }
    if (sense.GetFieldReplaceableUnit()) {
        add("unit",
            std::to_string(*sense.GetFieldReplaceableUnit()) + ", the part to replace by the vendor's list");
    }
    add("severity", severity, SeverityStyle(severity));
    return table.Text(OutputScreen());
}

std::string SenseJson(const PI::CSense& sense, bool isData) {
    return JsonDocument("pitool sense", [&](JsonWriter& json) {
        const auto [key, severity] = ExplainKey(sense);
        json.Member("response_code", isData ? sense.GetResponseCode() : std::nullopt);
        json.Member("layout", OrNull(isData ? FormatText(sense) : ""));
        json.Member("deferred", isData ? std::optional(sense.IsDeferred()) : std::nullopt);
        json.Member("key", sense.GetKey());
        json.Member("key_text", key);
        json.Member("asc", sense.GetCode());
        json.Member("ascq", sense.GetQualifier());
        json.Member("additional_text", OrNull(sense.GetAdditionalText()));
        json.Member("information", sense.GetInformation());
        json.Member("field_pointer", sense.GetFieldPointer());
        json.Member("field_bit", sense.GetFieldBit());
        json.Member("field_in_command",
                    sense.GetFieldPointer() ? std::optional(sense.IsFieldInCommand()) : std::nullopt);
        json.Member("progress", sense.GetProgress());
        json.Member("field_replaceable_unit", sense.GetFieldReplaceableUnit());
        json.Member("severity", severity);
    });
}

ExitStatus Run(const Options& options) {
    const bool isData = options.m_Codes.empty();
    if (isData && !options.m_Data) {
        ReportError("sense needs KEY ASC ASCQ or --data; see pitool sense --help");
        return EXIT_BAD_USAGE;
    }
    Bytes bytes;
    std::string reason = isData ? ReadData(*options.m_Data, bytes) : ReadCodes(options.m_Codes, bytes);
    const PI::CSense sense = PI::DecodeSense(bytes.data(), bytes.size());
    reason = reason.empty() ? sense.GetReason() : reason;
    if (!reason.empty()) {
        ReportError((isData ? "sense data: " : "") + reason);
        return isData ? EXIT_BAD_INPUT : EXIT_BAD_USAGE;
    }
    return Print(options.m_Json ? SenseJson(sense, isData) : SenseText(sense, isData));
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
