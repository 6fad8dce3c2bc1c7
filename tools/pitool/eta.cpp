// SPDX-License-Identifier: Apache-2.0

#include "commands.h"

#include <CLI/CLI.hpp>

#include <pi/etr.h>
#include <pi/time_remaining.h>

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

namespace pitool {
namespace {

constexpr std::size_t LONGEST_LINE = 4096;

/// Latest time that is accepted, in milliseconds: far beyond any clock, and no arithmetic of CETR wraps.
constexpr std::uint64_t LATEST_TIME = 99'999'999'999'999;

/// Reads up to the end of a line, and no further than a byte more than the longest line.
/// @return false at the end of standard input
bool ReadLine(std::string& line) {
    line.clear();
    int c = 0;
    while (line.size() <= LONGEST_LINE && (c = std::getchar()) != EOF && c != '\n') {
        line += static_cast<char>(c);
    }
    return c != EOF || !line.empty();
}

void SkipLine() {
    for (int c = 0; c != '\n' && c != EOF; c = std::getchar()) {
    }
}

struct Sample {
    int m_Percent = 0;
    std::uint64_t m_TimeMs = PI::CETR::NowSteady();
};

/// Reads "percent" or "percent milliseconds", words that blanks divide.
/// @param sample out: holds the time before
/// @return why the line is refused; empty when it is not
std::string ReadSample(const std::string& line, Sample& sample) {
    std::istringstream words(line);
    std::string percent;
    std::string time;
    std::string more;
    words >> percent >> time >> more;
    Sample read;
    if (!ReadWholeNumber(percent, read.m_Percent) || read.m_Percent < 0 || read.m_Percent > 100) {
        return Quoted(percent) + " is not a percentage: expected a whole number from 0 to 100";
    }
    if (!time.empty() && (!ReadWholeNumber(time, read.m_TimeMs) || read.m_TimeMs > LATEST_TIME)) {
        return Quoted(time) + " is not a time: expected milliseconds from 0 to " +
               std::to_string(LATEST_TIME);
    }
    if (!more.empty()) {
        return "more than a percentage and a time";
    }
    if (read.m_TimeMs < sample.m_TimeMs) {
        return "the time " + std::to_string(read.m_TimeMs) + " is before that of the previous sample, " +
               std::to_string(sample.m_TimeMs);
    }
    sample = read;
    return "";
}

std::string Duration(std::uint64_t ms) {
    const std::string duration = PI::CETR::RemainingTimeToString(ms);
    return duration.empty() ? "less than a second" : duration;
}

/// What PI::CTimeRemaining says, such as "00:50:00 remaining (00:48:00 to 00:53:00)".
std::string EstimateText(const PI::CTimeRemaining& time) {
    const bool isStalled = time.GetState() == PI::TimeRemainingState::STALLED;
    if (time.GetState() == PI::TimeRemainingState::DONE) {
        return "done";
    }
    if (!time.GetRemaining()) {
        return isStalled ? "stalled" : "time remaining not known";
    }
    const std::string range = " (" + Duration(*time.GetLow()) + " to " + Duration(*time.GetHigh()) + ")";
    return isStalled ? "stalled, " + Duration(*time.GetRemaining()) + range + " once it goes on"
                     : Duration(*time.GetRemaining()) + " remaining" + range;
}

/// The line as a terminal shows it, over the one before: with a bar where there is room for one, and blanks
/// up to the last column but one, since terminals wrap in the last.
std::string OnTerminal(int percent, std::string line, std::size_t columns) {
    constexpr std::size_t LONGEST = 50;
    constexpr std::size_t SHORTEST = 5;
    constexpr std::size_t FRAME = 4;  // brackets, blank, the last column
    const std::size_t room = columns - std::min(columns, line.size() + FRAME);
    if (room >= SHORTEST) {
        std::string bar(std::min(room, LONGEST), '-');
        std::fill_n(bar.begin(), bar.size() * static_cast<std::size_t>(percent) / 100, '#');
        line.insert(0, "[" + bar + "] ");
    }
    line.resize(columns - 1, ' ');
    return "\r" + line;
}

ExitStatus RunEta() {
    constexpr unsigned long ACTIVITY = 1;
    constexpr std::uint64_t WHOLE = 100;
    const bool isTerminal = isatty(STDOUT_FILENO) == 1;
    PI::CTimeRemaining time;
    std::vector<PI::CETR> estimates;
    Sample sample = {0, 0};
    bool isDrawn = false;  // a line that has no end yet
    const auto finish = [&isDrawn] { return !std::exchange(isDrawn, false) || WriteOutput("\n"); };
    ExitStatus status = EXIT_DONE;
    std::string line;
    for (std::size_t number = 1; ReadLine(line); ++number) {
        const bool isTooLong = line.size() > LONGEST_LINE;
        if (!isTooLong && line.find_first_not_of(" \t\r") == std::string::npos) {
            continue;
        }
        const std::string reason =
            isTooLong ? "longer than " + std::to_string(LONGEST_LINE) + " bytes" : ReadSample(line, sample);
        if (!reason.empty()) {
            finish();
            ReportError("standard input: line " + std::to_string(number) + ": " + reason);
            status = EXIT_BAD_INPUT;
            if (isTooLong) {
                SkipLine();
            }
            continue;
        }
        time.AddSample(sample.m_TimeMs, static_cast<std::uint64_t>(sample.m_Percent), WHOLE);
        PI::CETR::Add(estimates, ACTIVITY, sample.m_Percent, false, sample.m_TimeMs);
        const std::string text = std::to_string(sample.m_Percent) + " percent, " + EstimateText(time) +
                                 "; CETR " + Duration(estimates.front().m_RemainingTime);
        isDrawn = isTerminal;
        if (!WriteOutput(isTerminal ? OnTerminal(sample.m_Percent, text, OutputScreen().m_Columns)
                                    : text + "\n")) {
            return EXIT_BAD_INPUT;
        }
    }
    const int error = std::ferror(stdin) != 0 ? errno : 0;
    const bool isWritten = finish();
    if (error != 0) {
        ReportError("standard input: " + std::string(std::strerror(error)));
    }
    return isWritten && error == 0 ? status : EXIT_BAD_INPUT;
}

}  // namespace

void AddEta(CLI::App& app, Action& action) {
    CLI::App* command = app.add_subcommand("eta", "Estimate the time remaining of an activity");
    command->footer(
        std::string("Standard input has lines \"percent milliseconds\", or \"percent\" for now.\n\n") +
        EXAMPLES +
        "  pitool eta < progress/rebuild.txt\n"
        "  echo 40 | pitool eta");
    command->callback([&action] { action = RunEta; });
}

}  // namespace pitool
