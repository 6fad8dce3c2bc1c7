// SPDX-License-Identifier: Apache-2.0

#include "drive_identity.h"

#include "print/output.h"

#include <algorithm>
#include <cctype>
#include <map>

namespace pitool {
namespace {

/// Words instead of a serial number, in lower case.
constexpr std::string_view PLACEHOLDERS =
    "|redacted|removed|hidden|masked|private|censored|anonymized|unknown|none|not available|not reported|n/a|"
    "na|null|serial|serial number|no information found|to be filled by o.e.m.|";

/// In lower case, without anything before the first and after the last letter or digit.
std::string Core(std::string_view serial) {
    const auto isWordCharacter = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; };
    const auto first = std::find_if(serial.begin(), serial.end(), isWordCharacter);
    const auto last = std::find_if(serial.rbegin(), serial.rend(), isWordCharacter).base();
    std::string core(first, std::max(first, last));
    for (char& c : core) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return core;
}

/// Orders the reports of one drive in time: by their dates, unless one has none; then by power-on hours.
void SortByAge(std::vector<DriveSummary>& reports) {
    const bool areDated = std::all_of(reports.begin(), reports.end(),
                                      [](const DriveSummary& report) { return report.GetTime() != 0; });
    std::stable_sort(reports.begin(), reports.end(),
                     [areDated](const DriveSummary& left, const DriveSummary& right) {
                         return IsOlder(left, right, areDated);
                     });
}

}  // namespace

bool IdentifiesDrive(std::string_view serial) {
    const std::string core = Core(serial);
    return core.find_first_not_of(std::string{' ', core[0]}) != std::string::npos &&
           PLACEHOLDERS.find("|" + core + "|") == std::string_view::npos &&
           core.find("xxxx") == std::string::npos && serial.find_first_of("*#?") == std::string_view::npos &&
           serial.find("...") == std::string_view::npos;
}

std::pair<std::string, std::string> IdentityOf(const DriveSummary& drive) {
    const auto trimmed = [](std::string_view text) {
        text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
        return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
    };
    return {trimmed(drive.GetModel()), trimmed(drive.GetSerial())};
}

bool IsOlder(const DriveSummary& left, const DriveSummary& right, bool areDated) {
    if (areDated && left.GetTime() != 0 && right.GetTime() != 0 && left.GetTime() != right.GetTime()) {
        return left.GetTime() < right.GetTime();
    }
    return left.GetFigure(PI::HealthFigure::POWER_ON_HOURS).m_Value <
           right.GetFigure(PI::HealthFigure::POWER_ON_HOURS).m_Value;
}

DriveReports ReadDrives(const std::vector<std::string>& arguments) {
    DriveReports reports;
    std::vector<std::string> unidentified;
    std::map<std::pair<std::string, std::string>, std::size_t> indices;
    reports.m_Errors = ReadReports(arguments, [&](const std::string& file, const PI::CDriveReport& report) {
        DriveSummary summary = Summarize(file, report);
        std::size_t index = reports.m_Drives.size();
        if (IdentifiesDrive(summary.GetSerial())) {
            index = indices.try_emplace(IdentityOf(summary), index).first->second;
        } else {
            unidentified.push_back(file);
        }
        reports.m_Drives.resize(std::max(reports.m_Drives.size(), index + 1));
        reports.m_Drives[index].push_back(std::move(summary));
    });
    if (!unidentified.empty()) {  // a line for each would be thousands where reports are published
        const bool isOne = unidentified.size() == 1;
        ReportWarning(
            unidentified.front(),
            "its serial number" +
                (isOne ? "" : ", as those of " + std::to_string(unidentified.size() - 1) + " more,") +
                " identifies no drive: " + (isOne ? "it matches" : "they match") + " no other report");
    }
    for (std::vector<DriveSummary>& drive : reports.m_Drives) {
        SortByAge(drive);
    }
    return reports;
}

}  // namespace pitool
