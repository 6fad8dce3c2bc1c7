// SPDX-License-Identifier: Apache-2.0

#include "reports.h"

#include "input_files.h"
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
    Progress() = default;
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress() { ShowProgress(""); }

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

void ReadReports(const std::vector<std::string>& arguments,
                 const std::function<void(const std::string& file, const PI::CDriveReport& report)>& take,
                 const std::function<void(const std::string& file, const std::string& reason)>& refuse) {
    std::string text;
    std::string reason;
    Progress progress;
    const auto tell = [&refuse](const std::string& file, const std::string& why) {
        ReportFileError(file, why);
        refuse(file, why);
    };
    const auto read = [&](const std::string& file) {
        if (!ReadInput(file, text, reason)) {
            tell(file, reason);
            return;
        }
        std::vector<PI::CDriveReport> reports;
        std::vector<PI::CReportRefusal> refusals;
        PI::ReadSmartctl(text.data(), text.size(), reports, refusals);
        for (const PI::CDriveReport& report : reports) {
            take(file, report);
        }
        for (const PI::CReportRefusal& refusal : refusals) {
            tell(file, RefusalText(refusal));
        }
        progress.Count(reports.size());
    };
    for (const std::string& argument : arguments) {
        ForEachFile(argument, read, tell);
    }
}

}  // namespace pitool
