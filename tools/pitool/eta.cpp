// SPDX-License-Identifier: Apache-2.0

#include "commands.h"

#include "print/output.h"
#include "print/text.h"
#include "whole_number.h"

#include <CLI/CLI.hpp>

#include <pi/etr.h>
#include <pi/time_remaining.h>

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace pitool {
namespace {

constexpr std::size_t LONGEST_LINE = 4096;
constexpr std::string_view BLANKS = " \t\r";

/// Latest time that is taken, in milliseconds: far beyond any clock, and no arithmetic of CETR wraps.
constexpr std::uint64_t LATEST_TIME = 99'999'999'999'999;

/// Reads up to the end of a line, and no further than a byte more than the longest line.
/// @return false at the end of standard input, or where errno says why
bool ReadLine(std::string& line) {
    line.clear();
    while (line.size() <= LONGEST_LINE) {
        const int c = std::getchar();
        if (c == '\n' || c == EOF) {
            return c == '\n' || (!line.empty() && std::ferror(stdin) == 0);
        }
        line += static_cast<char>(c);
    }
    return true;
}

void SkipLine() {
    for (int c = 0; c != '\n' && c != EOF; c = std::getchar()) {
    }
}

/// Takes the next word off a line; empty at its end.
std::string_view TakeWord(std::string_view& line) {
    line.remove_prefix(std::min(line.find_first_not_of(BLANKS), line.size()));
    const std::string_view word = line.substr(0, line.find_first_of(BLANKS));
    line.remove_prefix(word.size());
    return word;
}

/// Reads "percent" or "percent milliseconds".
/// @param timeMs out: as given, else now
/// @param reason out: why the line is refused, when the result is false
bool ReadSample(std::string_view line, int& percent, std::uint64_t& timeMs, std::string& reason) {
    const std::string_view first = TakeWord(line);
    const std::string_view second = TakeWord(line);
    if (!ReadWholeNumber(first, percent) || percent < 0 || percent > 100) {
        reason = Quoted(first) + " is no percentage: a whole number from 0 to 100 is expected";
        return false;
    }
    timeMs = PI::CETR::NowSteady();
    if (!second.empty() && (!ReadWholeNumber(second, timeMs) || timeMs > LATEST_TIME)) {
        reason = Quoted(second) + " is no time: milliseconds from 0 to " + std::to_string(LATEST_TIME) +
                 " are expected";
        return false;
    }
    if (!TakeWord(line).empty()) {
        reason = "more than a percentage and a time";
        return false;
    }
    return true;
}

std::string Duration(std::uint64_t ms) {
    const std::string duration = PI::CETR::RemainingTimeToString(ms);
    return duration.empty() ? "less than a second" : duration;
}

/// What PI::CTimeRemaining says, such as "00:50:00 remaining (00:48:00 to 00:53:00)".
std::string EstimateText(const PI::CTimeRemaining& time) {
    if (time.GetState() == PI::TimeRemainingState::DONE) {
        return "done";
    }
    return std::string(time.GetState() == PI::TimeRemainingState::STALLED ? "stalled, " : "") +
           (time.GetRemaining() ? Duration(*time.GetRemaining()) + " remaining (" + Duration(*time.GetLow()) +
                                      " to " + Duration(*time.GetHigh()) + ")"
                                : "time remaining not known");
}

/// A line for a terminal, with a bar where there is room for one, that never reaches the last column, where
/// terminals wrap.
std::string Bar(int percent, const std::string& line, const std::string& cetr, std::size_t columns) {
    constexpr std::size_t LONGEST = 50;
    constexpr std::size_t SHORTEST = 5;
    constexpr std::size_t FRAME = 4;  // brackets, blank, the last column
    constexpr std::size_t PERCENT_WIDTH = 3;
    std::string text = line;
    text.insert(0, PERCENT_WIDTH - std::to_string(percent).size(), ' ');
    text += text.size() + cetr.size() < columns ? cetr : "";
    if (columns < text.size() + SHORTEST + FRAME) {
        return text.substr(0, columns - 1);
    }
    const std::size_t width = std::min(columns - text.size() - FRAME, LONGEST);
    const std::size_t filled = width * static_cast<std::size_t>(percent) / 100;
    return "[" + std::string(filled, '#') + std::string(width - filled, '-') + "] " + text;
}

/// Progress as lines, or on a terminal as one that is drawn again and again.
class Display {
public:
    /// @return false when it could not be written
    bool Show(int percent, const std::string& estimate, const std::string& cetr) {
        const std::string line = std::to_string(percent) + " percent, " + estimate;
        if (!m_IsTerminal) {
            return WriteOutput(line + cetr + "\n");
        }
        const std::size_t columns = OutputScreen().m_Columns;
        const std::string bar = Bar(percent, line, cetr, columns);
        const std::size_t covered = std::min(m_Shown, columns - 1);  // a terminal may have become narrower
        const std::size_t leftOver = covered - std::min(bar.size(), covered);
        m_Shown = bar.size();
        return WriteOutput("\r" + bar + std::string(leftOver, ' '));
    }

    /// Ends the line that is drawn, so that other text can follow.
    bool Finish() {
        const bool isDrawn = m_Shown != 0;
        m_Shown = 0;
        return !isDrawn || WriteOutput("\n");
    }

private:
    bool m_IsTerminal = isatty(STDOUT_FILENO) == 1;
    std::size_t m_Shown = 0;  ///< length of what is drawn
};

ExitStatus RunEta() {
    constexpr unsigned long ACTIVITY = 1;
    constexpr std::uint64_t WHOLE = 100;
    PI::CTimeRemaining time;
    std::vector<PI::CETR> prescribed;
    std::uint64_t lastMs = 0;
    Display display;
    ExitStatus status = EXIT_DONE;
    std::string line;
    for (std::size_t number = 1; ReadLine(line); ++number) {
        const bool isTooLong = line.size() > LONGEST_LINE;
        if (!isTooLong && line.find_first_not_of(BLANKS) == std::string::npos) {
            continue;
        }
        int percent = 0;
        std::uint64_t timeMs = 0;
        std::string reason;
        if (isTooLong) {
            reason = "longer than " + std::to_string(LONGEST_LINE) + " bytes";
        } else if (ReadSample(line, percent, timeMs, reason) && timeMs < lastMs) {
            reason = "the time " + std::to_string(timeMs) + " lies before that of the sample before, " +
                     std::to_string(lastMs);
        }
        if (!reason.empty()) {
            display.Finish();
            ReportError("standard input: line " + std::to_string(number) + ": " + reason);
            status = EXIT_BAD_INPUT;
            if (isTooLong) {
                SkipLine();
            }
            continue;
        }
        lastMs = timeMs;
        time.AddSample(timeMs, static_cast<std::uint64_t>(percent), WHOLE);
        PI::CETR::Add(prescribed, ACTIVITY, percent, false, timeMs);
        if (!display.Show(percent, EstimateText(time),
                          "; CETR " + Duration(prescribed.front().m_RemainingTime))) {
            return EXIT_BAD_INPUT;
        }
    }
    if (std::ferror(stdin) != 0) {
        const std::string reason = std::strerror(errno);
        display.Finish();
        ReportError("standard input: " + reason);
        return EXIT_BAD_INPUT;
    }
    return display.Finish() ? status : EXIT_BAD_INPUT;
}

}  // namespace

void AddEta(CLI::App& app, Action& action) {
    CLI::App* command = app.add_subcommand("eta", "Estimate the time remaining of a progress");
    command->footer(
        std::string("Standard input holds lines \"percent milliseconds\", or \"percent\" for now.\n\n") +
        EXAMPLES +
        "  pitool eta < progress/rebuild.txt\n"
        "  echo 40 | pitool eta");
    command->callback([&action] { action = RunEta; });
}

}  // namespace pitool
