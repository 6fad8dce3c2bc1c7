// SPDX-License-Identifier: Apache-2.0

#include "commands.h"

#include <CLI/CLI.hpp>

#include <pi/plugin_helper.h>
#include <pi/sense.h>
#include <pi/vocabulary.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pitool {
namespace {

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

/// Reads a byte of one or two digits, with an optional "0x" before or "h" after it, or several of two digits.
bool ReadWord(std::string_view word, std::vector<std::uint8_t>& bytes) {
    const bool isPrefixed = word.substr(0, 2) == "0x" || word.substr(0, 2) == "0X";
    word.remove_prefix(isPrefixed ? 2 : 0);
    const bool isSuffixed = !word.empty() && (word.back() == 'h' || word.back() == 'H');
    word.remove_suffix(isSuffixed ? 1 : 0);
    const bool areSeveral = word.size() > 2;
    if (word.empty() || word.find_first_not_of("0123456789abcdefABCDEF") != std::string_view::npos ||
        (areSeveral && (isPrefixed || isSuffixed || word.size() % 2 != 0))) {
        return false;
    }
    for (; !word.empty(); word.remove_prefix(std::min(word.size(), std::size_t{2}))) {
        bytes.push_back(static_cast<std::uint8_t>(std::stoul(std::string(word.substr(0, 2)), nullptr, 16)));
    }
    return true;
}

/// @param sense holds a key when the result is true
/// @return why the data are refused; empty when they are not
std::string ReadSenseData(std::string text, PI::CSense& sense) {
    std::vector<std::uint8_t> bytes;
    std::replace(text.begin(), text.end(), ',', ' ');
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        if (!ReadWord(word, bytes)) {
            return Quoted(word) + " is not a hexadecimal byte";
        }
    }
    sense = PI::DecodeSense(bytes.data(), bytes.size());
    if (sense.GetKey()) {
        return "";
    }
    if (bytes.empty()) {
        return "empty";
    }
    switch (sense.GetFormat()) {
        case PI::SenseFormat::VENDOR: return "response code 7Fh: the vendor's own format";
        case PI::SenseFormat::NONE:
            return "response code " + HexText(*sense.GetResponseCode()) +
                   ": neither fixed (70h, 71h) nor descriptor (72h, 73h) format";
        default:
            return "too short: " + std::to_string(bytes.size()) + (bytes.size() == 1 ? " byte" : " bytes") +
                   ", without a sense key";
    }
}

/// @return why the codes are refused; empty when they are not
std::string ReadCodes(const std::vector<std::string>& texts, PI::CSense& sense) {
    constexpr std::pair<const char*, std::uint8_t> CODES[] = {{"KEY", 0x0F}, {"ASC", 0xFF}, {"ASCQ", 0xFF}};
    std::vector<std::uint8_t> bytes = {0x72};  // as the shortest sense data that hold them
    for (std::size_t i = 0; i < std::size(CODES); ++i) {
        const auto [name, largest] = CODES[i];
        if (!ReadWord(texts[i], bytes) || bytes.size() != i + 2 || bytes.back() > largest) {
            return std::string(name) + ": " + Quoted(texts[i]) + " is not a hexadecimal number from 0 to " +
                   HexText(largest);
        }
    }
    sense = PI::DecodeSense(bytes.data(), bytes.size());
    return "";
}

Meaning Explain(const PI::CSense& sense) {
    Meaning meaning;
    PI::_SEVERITY severity = PI::Severity::DEBUG;
    PI::CPluginHelper::TranslateSenseKey(*sense.GetKey(), meaning.m_KeyText, severity);
    meaning.m_Severity = PI::SeverityToString(severity);
    std::string& text = meaning.m_AdditionalText;
    if (sense.GetCode() && sense.GetQualifier() &&
        PI::CPluginHelper::TranslateSenseASC(*sense.GetCode(), *sense.GetQualifier(), text) !=
            PI::ErrorCode::SUCCESS &&
        !text.empty()) {
        // The library puts the qualifier in as a character.
        text.replace(text.find("0x") + 2, 1, HexText(*sense.GetQualifier()).substr(0, 2));
    }
    return meaning;
}

const char* FormatText(PI::_SENSE_FORMAT format) {
    return format == PI::SenseFormat::FIXED ? "fixed" : "descriptor";
}

std::string AdditionalText(const PI::CSense& sense, const Meaning& meaning) {
    if (!sense.GetCode()) {
        return "not in the data";
    }
    return HexText(*sense.GetCode()) +
           (!sense.GetQualifier()
                ? ", the qualifier is not in the data"
                : " " + HexText(*sense.GetQualifier()) + ", " +
                      (meaning.m_AdditionalText.empty() ? "unknown" : meaning.m_AdditionalText));
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
    add("severity", meaning.m_Severity, SeverityStyle(meaning.m_Severity));
    return table.Text(OutputScreen());
}

std::string SenseJson(const PI::CSense& sense, bool isData) {
    const Meaning meaning = Explain(sense);
    const auto known = [](const auto& value, bool isKnown) {
        return isKnown ? std::optional(value) : std::nullopt;
    };
    return JsonDocument("pitool sense", [&](JsonWriter& json) {
        json.Member("response_code", isData ? sense.GetResponseCode() : std::nullopt);
        json.Member("layout", known(FormatText(sense.GetFormat()), isData));
        json.Member("deferred", known(sense.IsDeferred(), isData));
        json.Member("key", sense.GetKey());
        json.Member("key_text", meaning.m_KeyText);
        json.Member("asc", sense.GetCode());
        json.Member("ascq", sense.GetQualifier());
        json.Member("additional_text", OrNull(meaning.m_AdditionalText));
        json.Member("information", sense.GetInformation());
        json.Member("field_pointer", sense.GetFieldPointer());
        json.Member("field_bit", sense.GetFieldBit());
        json.Member("field_in_command", known(sense.IsFieldInCommand(), sense.GetFieldPointer().has_value()));
        json.Member("progress", sense.GetProgress());
        json.Member("field_replaceable_unit", sense.GetFieldReplaceableUnit());
        json.Member("severity", meaning.m_Severity);
    });
}

ExitStatus Run(const Options& options) {
    const bool isData = options.m_Codes.empty();
    if (isData && !options.m_Data) {
        ReportError("sense needs KEY ASC ASCQ or --data; see pitool sense --help");
        return EXIT_BAD_USAGE;
    }
    PI::CSense sense;
    const std::string reason =
        isData ? ReadSenseData(*options.m_Data, sense) : ReadCodes(options.m_Codes, sense);
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
