// SPDX-License-Identifier: Apache-2.0

#include "sense_command.h"

#include "output.h"
#include "quoted_text.h"
#include "sense_data.h"
#include "sense_text.h"

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

bool ReadCodes(const std::vector<std::string>& texts, SenseCodes& codes) {
    return ReadCode("KEY", texts[0], 0x0F, codes.m_Key) && ReadCode("ASC", texts[1], 0xFF, codes.m_ASC) &&
           ReadCode("ASCQ", texts[2], 0xFF, codes.m_ASCQ);
}

}  // namespace

ExitStatus RunSense(const SenseOptions& options) {
    constexpr std::size_t CODES = 3;
    SenseCodes codes;
    std::string reason;
    if (options.m_Codes.size() == CODES) {
        if (!ReadCodes(options.m_Codes, codes)) {
            return EXIT_BAD_USAGE;
        }
    } else if (!ReadSenseData(options.m_Data, codes, reason)) {
        ReportError("sense data: " + reason);
        return EXIT_BAD_INPUT;
    }
    return WriteOutput(options.m_Json ? SenseJson(codes) : SenseSheet(codes, OutputScreen()))
               ? EXIT_DONE
               : EXIT_BAD_INPUT;
}

}  // namespace pitool
