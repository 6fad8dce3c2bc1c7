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

/// Says how many drives were read, from the first second on.
class Progress {
public:
    void Count(std::size_t drives) {
        m_Drives += drives;
        const auto now = std::chrono::steady_clock::now();
        if (now >= m_Next) {
            ShowProgress(std::to_string(m_Drives) + " drives read");
            m_Next = now + std::chrono::milliseconds(200);
        }
    }

private:
    std::size_t m_Drives = 0;
    std::chrono::steady_clock::time_point m_Next = std::chrono::steady_clock::now() + std::chrono::seconds(1);
};

}  // namespace

Refusals ReadReports(
    const std::vector<std::string>& arguments,
    const std::function<void(const std::string& file, const PI::CDriveReport& report)>& take) {
    Refusals all;
    std::string text;
    std::string reason;
    Progress progress;
    const auto refuse = [&all](const std::string& file, const std::string& why) {
        ReportFileError(file, why);
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
        progress.Count(reports.size());
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
