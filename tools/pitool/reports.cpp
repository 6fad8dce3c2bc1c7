// SPDX-License-Identifier: Apache-2.0

#include "reports.h"

#include "input_files.h"
#include "print/json.h"
#include "print/output.h"

#include <chrono>

namespace pitool {
namespace {

std::string RefusalText(const PI::CReportRefusal& refusal) {
    return refusal.GetLine() == 0 ? refusal.GetReason()
                                  : refusal.GetReason() + " (line " + std::to_string(refusal.GetLine()) +
                                        ", column " + std::to_string(refusal.GetColumn()) + ")";
}

}  // namespace

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
            refuse(file, RefusalText(refusal));
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

}  // namespace pitool
