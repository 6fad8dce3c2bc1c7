// SPDX-License-Identifier: Apache-2.0

#include "reports.h"

#include "print/json.h"
#include "print/output.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <tuple>

namespace pitool {

Refusals ReadReports(
    const std::vector<std::string>& arguments,
    const std::function<void(const std::string& file, const PI::CDriveReport& report)>& take) {
    Refusals all;
    std::string text;
    std::string reason;
    using Clock = std::chrono::steady_clock;
    std::size_t drives = 0;
    Clock::time_point next = Clock::now() + std::chrono::seconds(1);  // of saying how many there are
    const auto refuse = [&all](const std::string& file, const std::string& why) {
        ReportError(file + ": " + why);
        all.emplace_back(file, why);
    };
    const auto read = [&](const std::string& file) {
        if (!ReadInput(file, text, reason)) {
            refuse(file, reason);
            return;
        }
        std::vector<PI::CDriveReport> reports;
        std::vector<PI::CReportRefusal> refusals;
        PI::ReadSmartctl(text.data(), text.size(), reports, refusals);
        for (const PI::CDriveReport& report : reports) {
            take(file, report);
        }
        for (const PI::CReportRefusal& refusal : refusals) {
            const std::string place = refusal.GetLine() == 0
                                          ? ""
                                          : " (line " + std::to_string(refusal.GetLine()) + ", column " +
                                                std::to_string(refusal.GetColumn()) + ")";
            refuse(file, refusal.GetReason() + place);
        }
        drives += reports.size();
        if (const Clock::time_point now = Clock::now(); now >= next) {
            ShowProgress(std::to_string(drives) + (drives == 1 ? " drive read" : " drives read"));
            next = now + std::chrono::milliseconds(200);
        }
    };
    for (const std::string& argument : arguments) {
        ForEachFile(argument, read, refuse);
    }
    ShowProgress("");
    return all;
}

void AddErrors(const Refusals& refusals, JsonWriter& json) {
    json.Objects("errors", refusals, [&json](const auto& refusal) {
        json.Member("file", refusal.first);
        json.Member("reason", refusal.second);
    });
}

std::pair<std::string_view, std::string_view> IdentityOf(const DriveSummary& drive) {
    const auto trimmed = [](std::string_view text) {
        text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
        return text.substr(0, text.find_last_not_of(' ') + 1);
    };
    return {trimmed(drive.GetModel()), trimmed(drive.GetSerial())};
}

void SortByAge(DriveList& reports) {
    const bool areDated = std::all_of(reports.begin(), reports.end(),
                                      [](const DriveSummary* report) { return report->GetTime() != 0; });
    const auto age = [areDated](const DriveSummary* report) {
        return std::pair(areDated ? report->GetTime() : 0,
                         report->GetFigure(PI::HealthFigure::POWER_ON_HOURS).m_Value);
    };
    std::stable_sort(
        reports.begin(), reports.end(),
        [&age](const DriveSummary* left, const DriveSummary* right) { return age(left) < age(right); });
}

DriveReports ReadDrives(const std::vector<std::string>& arguments) {
    DriveReports all;
    std::map<std::pair<std::string_view, std::string_view>, std::size_t> indices;
    const DriveSummary* firstUnidentified = nullptr;
    std::size_t unidentified = 0;
    all.m_Errors = ReadReports(arguments, [&](const std::string& file, const PI::CDriveReport& report) {
        const DriveSummary& drive = all.m_Reports.emplace_back(Summarize(file, report));
        std::size_t index = all.m_Drives.size();
        if (drive.IsIdentified()) {
            index = indices.try_emplace(IdentityOf(drive), index).first->second;
        } else {
            firstUnidentified = unidentified++ == 0 ? &drive : firstUnidentified;
        }
        all.m_Drives.resize(std::max(all.m_Drives.size(), index + 1));
        all.m_Drives[index].push_back(&drive);
    });
    if (unidentified != 0) {  // a line for each would be thousands where reports are published
        ReportWarning(firstUnidentified->GetFile(),
                      unidentified == 1
                          ? "its serial number identifies no drive: it matches no other report"
                          : "its serial number, as those of " + std::to_string(unidentified - 1) +
                                " more, identifies no drive: they match no other report");
    }
    std::for_each(all.m_Drives.begin(), all.m_Drives.end(), SortByAge);
    return all;
}

}  // namespace pitool
