// SPDX-License-Identifier: Apache-2.0

#include "drives.h"

#include <pi/etr.h>
#include <pi/time_remaining.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <thread>

#include "plugin_base.h"
#include "program.h"

namespace smartctl {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds PATIENCE(30);  // judgement: a drive that is spun down takes a while
constexpr std::chrono::seconds INTERVAL(2);   // between looks at a self-test; the shortest takes one minute

/// Appends the drives of a report, or the reasons why there are none.
void Append(const std::string& source, const std::string& type, const std::string& text,
            std::vector<Drive>& drives, std::vector<std::string>& errors) {
    std::vector<PI::CDriveReport> reports;
    std::vector<PI::CReportRefusal> refusals;
    PI::ReadSmartctl(text.data(), text.size(), reports, refusals);
    for (std::size_t i = 0; i < reports.size(); ++i) {
        drives.push_back(
            {i == 0 ? source : source + " " + std::to_string(i + 1), std::move(reports[i]), type});
    }
    for (const PI::CReportRefusal& refusal : refusals) {
        const std::string line = std::to_string(refusal.GetLine());
        const std::string column = std::to_string(refusal.GetColumn());
        errors.push_back(source + (line == "0" ? "" : ":" + line + ":" + column) + ": " +
                         refusal.GetReason());
    }
}

/// What smartctl says of a drive.
struct Answer {
    /// @throws std::runtime_error with the first error
    [[noreturn]] void Refuse(const std::string& otherwise) const {
        throw std::runtime_error(m_Errors.empty() ? otherwise : m_Errors[0]);
    }

    std::optional<int> m_Status;  // its exit status; none with an error
    std::vector<Drive> m_Drives;
    std::vector<std::string> m_Errors;
};

Answer Ask(const std::string& program, const std::string& option, const std::string& device,
           const std::string& type) {
    Answer answer;
    std::string text;
    std::string reason;
    answer.m_Status =
        shared::RunProgram({program, "--json", option, "-d", type, device}, PATIENCE, text, reason);
    if (answer.m_Status.has_value()) {
        Append(device, type, text, answer.m_Drives, answer.m_Errors);
    } else {
        answer.m_Errors.push_back(device + ": " + reason);
    }
    return answer;
}

void Count(const std::string& place, const std::vector<Drive>& drives,
           const std::vector<std::string>& errors) {
    shared::Trace(place + ": " + std::to_string(drives.size()) + " drives, " + std::to_string(errors.size()) +
                  " errors");
}

/// Runs smartctl to make a drive do something.
void Tell(const std::string& program, const std::string& option, const Drive& drive) {
    constexpr int FAILED = 7;  // bits of smartctl(8)'s status: usage, device, command; others tell of health
    const Answer answer = Ask(program, option, drive.m_Source, drive.m_Type);
    if (!answer.m_Status.has_value() || (*answer.m_Status & FAILED) != 0) {
        answer.Refuse(drive.m_Source + ": refuses");
    }
}

/// Follows a self-test to its end.
/// @return whether it came to it; false to end it early
bool Follow(const std::string& program, const Drive& drive, const TaskReport& report, PI::CTask& task) {
    PI::CTimeRemaining time;
    for (bool isSeen = false;; isSeen = true) {
        const Answer answer = Ask(program, "-x", drive.m_Source, drive.m_Type);
        if (answer.m_Drives.empty()) {
            answer.Refuse(drive.m_Source + ": says nothing");
        }
        const PI::CDriveReport& now = answer.m_Drives[0].m_Report;
        if (!now.IsSelfTesting()) {
            const auto failed = now.GetHealth().GetFigure(PI::HealthFigure::FAILED_SELF_TESTS);
            if (!isSeen && !failed.HasValue()) {
                throw std::runtime_error(drive.m_Source + ": was not seen testing itself, and keeps no log");
            }
            task.m_TaskText2 = failed.HasValue() ? std::to_string(failed.GetValue()) +
                                                       " failed since the last one that passed"
                                                 : "the drive keeps no log of how it ended";
            return true;
        }
        if (now.GetSelfTestProgress() >= 0) {
            task.m_TaskFlag = true;
            task.m_TaskValue2 = static_cast<std::uint32_t>(now.GetSelfTestProgress());
            time.AddSample(PI::CETR::NowSteady(), task.m_TaskValue2, 100);
            task.m_TaskValue4 = time.GetRemaining().value_or(UINT64_MAX);
        }
        if (!report(task)) {
            return false;
        }
        std::this_thread::sleep_for(INTERVAL);
    }
}

}  // namespace

std::vector<Drive> ReadFolder(const std::string& folder, std::vector<std::string>& errors) {
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (entry->path().extension() == ".json") {
            files.push_back(entry->path());
        }
    }
    if (error) {
        errors.push_back(folder + ": " + error.message());
    }
    std::sort(files.begin(), files.end());
    std::vector<Drive> drives;
    for (const fs::path& file : files) {
        std::string reason;
        if (const auto text = shared::ReadTextFile(file, reason)) {
            Append(file, "", *text, drives, errors);
        } else {
            errors.push_back(reason);
        }
    }
    Count(folder, drives, errors);
    return drives;
}

std::vector<Drive> ReadMachine(const std::string& program, std::vector<std::string>& errors) {
    std::vector<Drive> drives;
    std::string text;
    std::string reason;
    // A SATA drive that has not been opened is listed as a SCSI one.
    if (!shared::RunProgram({program, "--scan-open"}, PATIENCE, text, reason)) {
        shared::Trace("no drives: " + reason);
        if (reason != DEFAULT_PROGRAM + (": " + std::generic_category().message(ENOENT))) {
            errors.push_back(reason);
        }
        return drives;
    }
    // Such as "/dev/sda -d sat # /dev/sda [SAT], ATA device"; after "# " if it cannot be opened.
    std::istringstream scan(text);
    for (std::string line; std::getline(scan, line);) {
        std::istringstream words(line);
        std::string name;
        std::string option;
        std::string type;
        words >> name;
        if (name == "#") {
            words >> name;
        }
        words >> option >> type;
        if (name.compare(0, 1, "/") == 0 && option == "-d" && !type.empty()) {  // a name is never an option
            Answer answer = Ask(program, "-x", name, type);
            std::move(answer.m_Drives.begin(), answer.m_Drives.end(), std::back_inserter(drives));
            std::move(answer.m_Errors.begin(), answer.m_Errors.end(), std::back_inserter(errors));
        }
    }
    Count(program, drives, errors);
    return drives;
}

void SelfTest(const std::string& program, const Drive& drive, const PI::COperation& operation,
              const TaskReport& report, PI::CTask& task) {
    if (operation.m_Header1 == PI::OperationID::CANCEL_VERIFY) {
        Tell(program, "--abort", drive);
        return;
    }
    const std::string& kind = operation.m_Properties.at(0).m_Data.m_String.m_Value;
    if (kind != "short" && kind != "long") {
        throw std::runtime_error("TYPE is short or long");
    }
    Tell(program, "--test=" + kind, drive);
    task.m_TaskText1 = kind + " self-test of " + drive.m_Source;
    try {
        if (!Follow(program, drive, report, task)) {
            Tell(program, "--abort", drive);
            task.m_TaskStatus = PI::PropertyValue::ABORTED;
        }
    } catch (const std::exception&) {
        Ask(program, "--abort", drive.m_Source, drive.m_Type);
        throw;
    }
}

}  // namespace smartctl
