// SPDX-License-Identifier: Apache-2.0

#include "commands.h"

#include <pi/etr.h>
#include <pi/time_remaining.h>

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <limits>
#include <numeric>
#include <sstream>
#include <utility>

namespace pitool {
namespace {

constexpr std::size_t LONGEST_LINE = 4096;

/// Latest time that is accepted, in milliseconds: far beyond any clock, and no arithmetic of CETR wraps.
constexpr std::uint64_t LATEST_TIME = 99'999'999'999'999;

struct Sample {
    int m_Percent = 0;
    std::uint64_t m_TimeMs = PI::CETR::NowSteady();
};

/// Reads "percent" or "percent milliseconds", words that blanks divide.
/// @param sample out: holds the time before
/// @return why the line is refused; empty when it is not
std::string ReadSample(std::istream& words, Sample& sample) {
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

/// What PI::CTimeRemaining says; each part completes the one before it: ", 00:50:00 remaining",
/// " (00:48:00 to 00:53:00)".
std::vector<std::string> EstimateParts(const PI::CTimeRemaining& time) {
    if (time.GetState() == PI::TimeRemainingState::DONE) {
        return {", done"};
    }
    if (!time.GetRemaining()) {  // which a stall has: in percent, one is only known by the pace before
        return {", time remaining not known"};
    }
    const std::string remaining = Duration(*time.GetRemaining());
    const std::string range = " (" + Duration(*time.GetLow()) + " to " + Duration(*time.GetHigh()) + ")";
    if (time.GetState() == PI::TimeRemainingState::STALLED) {
        return {", stalled", ", " + remaining + range + " once it goes on"};
    }
    return {", " + remaining + " remaining", range};
}

/// As many of the parts as a terminal has room for, over the line before: with a bar where there is room for
/// one, and blanks up to the last column but one, since terminals wrap in the last.
std::string OnTerminal(int percent, const std::vector<std::string>& parts, std::size_t columns) {
    constexpr std::size_t LONGEST = 50;
    constexpr std::size_t SHORTEST = 5;
    constexpr std::size_t FRAME = 4;  // brackets, blank, the last column
    std::string line;
    for (const std::string& part : parts) {
        if (line.size() + part.size() >= columns) {
            break;
        }
        line += part;
    }
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
    ExitStatus status = EXIT_DONE;
    const auto finish = [&isDrawn] { return !std::exchange(isDrawn, false) || WriteOutput("\n"); };
    const auto refuse = [&](const std::string& reason) {
        finish();
        ReportError("standard input: " + reason);
        status = EXIT_BAD_INPUT;
    };
    char line[LONGEST_LINE + 1];
    for (std::size_t number = 1; std::cin.getline(line, sizeof line) || std::cin.gcount() != 0; ++number) {
        const std::string place = "line " + std::to_string(number) + ": ";
        if (std::cin.fail()) {
            refuse(place + "longer than " + std::to_string(LONGEST_LINE) + " bytes");
            std::cin.clear();
            std::cin.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
            continue;
        }
        const auto length = static_cast<std::size_t>(std::cin.gcount()) - (std::cin.eof() ? 0 : 1);
        std::istringstream words(std::string(line, length));
        if ((words >> std::ws).eof()) {
            continue;
        }
        const std::string reason = ReadSample(words, sample);
        if (!reason.empty()) {
            refuse(place + reason);
            continue;
        }
        time.AddSample(sample.m_TimeMs, static_cast<std::uint64_t>(sample.m_Percent), WHOLE);
        PI::CETR::Add(estimates, ACTIVITY, sample.m_Percent, false, sample.m_TimeMs);
        std::vector<std::string> parts = EstimateParts(time);
        parts.insert(parts.begin(), {std::to_string(sample.m_Percent), " percent"});
        parts.push_back("; CETR " + Duration(estimates.front().m_RemainingTime));
        isDrawn = isTerminal;
        if (!WriteOutput(isTerminal ? OnTerminal(sample.m_Percent, parts, OutputScreen().m_Columns)
                                    : std::accumulate(parts.begin(), parts.end(), std::string()) + "\n")) {
            return EXIT_BAD_INPUT;
        }
    }
    if (std::ferror(stdin) != 0) {
        refuse(std::strerror(errno));
    }
    return finish() ? status : EXIT_BAD_INPUT;
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
