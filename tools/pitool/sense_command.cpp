// SPDX-License-Identifier: Apache-2.0

#include "sense_command.h"
#include "commands.h"

#include "hex_bytes.h"
#include "print/output.h"
#include "print/text.h"
#include "sense_text.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace pitool {
namespace {

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

}  // namespace

bool ReadSenseData(std::string_view text, PI::CSense& sense, std::string& reason) {
    std::vector<std::uint8_t> bytes;
    if (!ReadHexBytes(text, bytes, reason)) {
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

ExitStatus RunSense(const SenseOptions& options) {
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
    return WriteOutput(options.m_Json ? SenseJson(sense, isData) : SenseSheet(sense, isData, OutputScreen()))
               ? EXIT_DONE
               : EXIT_BAD_INPUT;
}

void AddSense(CLI::App& app, Action& action) {
    CLI::App* command = app.add_subcommand("sense", "Explain SCSI sense codes or sense data");
    const auto options = std::make_shared<SenseOptions>();
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
    command->callback([&action, options] { action = [options] { return RunSense(*options); }; });
}

}  // namespace pitool
