// SPDX-License-Identifier: Apache-2.0

#include "eta_sample.h"

#include "quoted_text.h"
#include "whole_number.h"

#include <algorithm>

namespace pitool {
namespace {

constexpr std::string_view BLANKS = " \t\r";

/// Takes the next word off a line; empty at its end.
std::string_view TakeWord(std::string_view& line) {
    line.remove_prefix(std::min(line.find_first_not_of(BLANKS), line.size()));
    const std::string_view word = line.substr(0, line.find_first_of(BLANKS));
    line.remove_prefix(word.size());
    return word;
}

}  // namespace

bool IsBlankLine(std::string_view line) {
    return line.find_first_not_of(BLANKS) == std::string_view::npos;
}

bool ReadEtaSample(std::string_view line, EtaSample& sample, std::string& reason) {
    const std::string_view percent = TakeWord(line);
    const std::string_view time = TakeWord(line);
    sample = EtaSample();
    if (!ReadWholeNumber(percent, sample.m_Percent) || sample.m_Percent < 0 || sample.m_Percent > 100) {
        reason = Quoted(percent) + " is no percentage: a whole number from 0 to 100 is expected";
        return false;
    }
    if (!time.empty()) {
        std::uint64_t timeMs = 0;
        if (!ReadWholeNumber(time, timeMs) || timeMs > LATEST_TIME) {
            reason = Quoted(time) + " is no time: milliseconds from 0 to " + std::to_string(LATEST_TIME) +
                     " are expected";
            return false;
        }
        sample.m_TimeMs = timeMs;
    }
    if (!IsBlankLine(line)) {
        reason = "more than a percentage and a time";
        return false;
    }
    return true;
}

}  // namespace pitool
