// SPDX-License-Identifier: Apache-2.0

#include "drives.h"

#include <pi/trace.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <system_error>

#include "program.h"

namespace smartctl {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds PATIENCE(60);  // a drive that is spun down takes a while
constexpr std::uintmax_t MAX_FILE_SIZE = std::uintmax_t{16} << 20U;

/// Appends the drives of a report, or the reasons why there are none.
void Append(const std::string& source, const std::string& text, std::vector<Drive>& drives,
            std::vector<std::string>& errors) {
    std::vector<PI::CDriveReport> reports;
    std::vector<PI::CReportRefusal> refusals;
    PI::ReadSmartctl(text.data(), text.size(), reports, refusals);
    for (std::size_t i = 0; i < reports.size(); ++i) {
        drives.push_back({i == 0 ? source : source + " " + std::to_string(i + 1), std::move(reports[i])});
    }
    for (const PI::CReportRefusal& refusal : refusals) {
        const std::string place = refusal.GetLine() == 0 ? ""
                                                         : ":" + std::to_string(refusal.GetLine()) + ":" +
                                                               std::to_string(refusal.GetColumn());
        errors.push_back(source + place + ": " + refusal.GetReason());
    }
}

void AppendFile(const fs::path& file, std::vector<Drive>& drives, std::vector<std::string>& errors) {
    if (!fs::is_regular_file(file) || fs::file_size(file) > MAX_FILE_SIZE) {
        errors.push_back(file.string() + ": no file, or too large for a report");
        return;
    }
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        errors.push_back(file.string() + ": " + std::generic_category().message(errno));
        return;
    }
    Append(file.string(), std::string(std::istreambuf_iterator<char>(stream), {}), drives, errors);
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
        AppendFile(file, drives, errors);
    }
    Trace(folder + ": " + std::to_string(drives.size()) + " drives, " + std::to_string(errors.size()) +
          " errors");
    return drives;
}

std::vector<Drive> ReadMachine(const std::string& program, std::vector<std::string>& errors) {
    std::vector<Drive> drives;
    std::string text;
    std::string reason;
    // A SATA drive that has not been opened is listed as a SCSI one.
    if (!RunProgram({program, "--scan-open"}, PATIENCE, text, reason)) {
        Trace("no drives: " + reason);
        return drives;
    }
    // Such as "/dev/sda -d sat # /dev/sda [SAT], ATA device"; behind "# " when it cannot be opened.
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
        if (name.compare(0, 1, "/") != 0 || option != "-d" ||
            type.empty()) {  // a name is never taken for an option
            continue;
        }
        if (RunProgram({program, "--json", "-x", "-d", type, name}, PATIENCE, text, reason)) {
            Append(name, text, drives, errors);
        } else {
            errors.push_back(name + ": " + reason);
        }
    }
    Trace(program + ": " + std::to_string(drives.size()) + " drives, " + std::to_string(errors.size()) +
          " errors");
    return drives;
}

void Trace(const std::string& text) {
    constexpr int TRACE_NUMBER = 502;  // marks this plug-in's lines
    VELKTrace(TRACE_NUMBER, "smartctl", 275, "%s") << text;
}

}  // namespace smartctl
