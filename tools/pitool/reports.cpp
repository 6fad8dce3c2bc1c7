// SPDX-License-Identifier: Apache-2.0

#include "reports.h"

#include "input_files.h"
#include "print/output.h"

namespace pitool {
namespace {

std::string RefusalText(const PI::CReportRefusal& refusal) {
    return refusal.GetLine() == 0 ? refusal.GetReason()
                                  : refusal.GetReason() + " (line " + std::to_string(refusal.GetLine()) +
                                        ", column " + std::to_string(refusal.GetColumn()) + ")";
}

}  // namespace

void ReadReports(const std::vector<std::string>& arguments,
                 const std::function<void(const std::string& file, const PI::CDriveReport& report)>& take,
                 const std::function<void(const std::string& file, const std::string& reason)>& refuse) {
    std::vector<std::string> files;
    std::string text;
    std::string reason;
    const auto tell = [&refuse](const std::string& file, const std::string& why) {
        ReportFileError(file, why);
        refuse(file, why);
    };
    for (const std::string& argument : arguments) {
        if (!ExpandArgument(argument, files, reason)) {
            tell(argument, reason);
            continue;
        }
        for (const std::string& file : files) {
            if (!ReadInput(file, text, reason)) {
                tell(file, reason);
                continue;
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
        }
    }
}

}  // namespace pitool
