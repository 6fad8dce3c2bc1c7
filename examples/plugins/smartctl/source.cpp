// SPDX-License-Identifier: Apache-2.0

#include "source.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include "json.h"
#include "program.h"
#include "trace.h"

namespace smartctl {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

// A drive that is spun down takes a while.
constexpr std::chrono::seconds PATIENCE(60);

constexpr std::uintmax_t MAX_FILE_SIZE = std::uintmax_t{16} << 20U;

std::vector<fs::path> ListFiles(const fs::path& folder, std::vector<std::string>& errors) {
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (entry->path().extension() == ".json") {
            files.push_back(entry->path());
        }
    }
    if (error) {
        errors.push_back(folder.string() + ": " + error.message());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::string ReadFile(const fs::path& path) {
    if (fs::file_size(path) > MAX_FILE_SIZE) {
        throw std::system_error(std::make_error_code(std::errc::file_too_large));
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::system_error(errno, std::generic_category());
    }
    return std::string(std::istreambuf_iterator<char>(file), {});
}

/// Appends a drive, or the reason why there is none.
void Append(const std::string& source, const std::string& text, std::vector<Drive>& drives,
            std::vector<std::string>& errors) {
    try {
        drives.push_back(ReadDrive(source, text));
        TraceDebug(source + ": " + drives.back().m_Vendor + " " + drives.back().m_Model);
    } catch (const std::exception& error) {
        errors.push_back(source + ": " + error.what());
    }
}

}  // namespace

std::vector<Drive> ReadFolder(const fs::path& folder, std::vector<std::string>& errors) {
    std::vector<Drive> drives;
    for (const fs::path& file : ListFiles(folder, errors)) {
        try {
            Append(file.string(), ReadFile(file), drives, errors);
        } catch (const std::system_error& error) {
            errors.push_back(file.string() + ": " + error.code().message());
        }
    }
    Trace(folder.string() + ": " + std::to_string(drives.size()) + " drives, " +
          std::to_string(errors.size()) + " errors");
    return drives;
}

std::vector<Drive> ReadMachine(const std::string& program, std::vector<std::string>& errors) {
    std::vector<Drive> drives;
    std::string text;
    std::string reason;
    if (!RunProgram({program, "--scan", "--json"}, PATIENCE, text, reason)) {
        Trace("no drives: " + reason);
        return drives;
    }
    const json scan = json::parse(text, nullptr, false);
    const json* const devices = Find(scan, {"devices"});
    if (devices == nullptr || !devices->is_array()) {
        errors.push_back(program + ": no list of devices in its answer");
        return drives;
    }
    for (const json& device : *devices) {
        const std::string name = FindText(device, {"name"});
        const std::string type = FindText(device, {"type"});
        if (name.compare(0, 1, "/") != 0 || type.empty()) {  // a name is never taken for an option
            continue;
        }
        if (RunProgram({program, "--json", "-a", "-d", type, name}, PATIENCE, text, reason)) {
            Append(name, text, drives, errors);
        } else {
            errors.push_back(name + ": " + reason);
        }
    }
    Trace(program + ": " + std::to_string(drives.size()) + " drives, " + std::to_string(errors.size()) +
          " errors");
    return drives;
}

}  // namespace smartctl
