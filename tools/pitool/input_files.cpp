// SPDX-License-Identifier: Apache-2.0

#include "reports.h"

#include "print/output.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

namespace pitool {
namespace {

namespace fs = std::filesystem;

/// What smartctl prints for one drive stays below a hundredth of it.
constexpr std::size_t MAX_INPUT_SIZE = std::size_t{64} * 1024 * 1024;
constexpr std::size_t READ_STEP = std::size_t{256} * 1024;
constexpr int PATIENCE_MS = 5000;  // judgement: long enough for a writer that starts at the same time

/// Whether there is something to read, or its end, before the time is over.
bool IsReady(int descriptor, int milliseconds) {
    pollfd wait = {descriptor, POLLIN, 0};
    return poll(&wait, 1, milliseconds) != 0;
}

/// @param size of a regular file; 0 where it is none, or not known
/// @param file for a warning
bool ReadDescriptor(int descriptor, std::size_t size, const std::string& file, std::string& text,
                    std::string& reason) {
    bool isLate = size == 0 && !IsReady(descriptor, PATIENCE_MS);
    const auto warn = [&] { ReportWarning(file, "nothing to read yet, still waiting"); };
    if (isLate && file == STANDARD_INPUT) {
        warn();
    }
    text.resize(size != 0 ? std::min(size, MAX_INPUT_SIZE + 1) : READ_STEP);
    for (std::size_t length = 0;;) {
        if (length == text.size()) {
            text.resize(std::min(length * 2, MAX_INPUT_SIZE + 1));
        }
        const ssize_t count = read(descriptor, text.data() + length, text.size() - length);
        if (count < 0 && (errno == EINTR || errno == EAGAIN)) {
            if (std::exchange(isLate, false)) {
                warn();
            }
            IsReady(descriptor, -1);
            continue;
        }
        length += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
        reason = count < 0                                        ? std::strerror(errno)
                 : count == 0 && isLate && file != STANDARD_INPUT ? "nothing writes to this pipe"
                 : length > MAX_INPUT_SIZE                        ? "larger than 64 mebibytes"
                                                                  : "";
        isLate = false;
        if (!reason.empty() || count == 0 || length == size) {
            text.resize(length);
            return reason.empty();
        }
    }
}

/// @return whether there was a report, or what could not be read was refused
bool TakeFolder(const fs::path& folder, const TakeFile& take, const Refuse& refuse) {
    std::vector<std::pair<std::string, bool>> names;  // whether each is a folder
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        std::error_code ignored;  // what is no longer there is passed over
        std::string name = entry->path().filename().string();
        const std::string ending = name.substr(std::min(name.rfind('.'), name.size()));
        const bool isReport = ending == ".json" || ending == ".txt" || ending == ".gz";
        const bool isFolder = entry->is_directory(ignored);
        if (name.front() != '.' && !entry->is_symlink(ignored) &&
            (isFolder || (isReport && entry->is_regular_file(ignored)))) {
            names.emplace_back(std::move(name), isFolder);
        }
    }
    if (error) {
        refuse(folder.string(), error.message());
    }
    bool isAny = static_cast<bool>(error);
    std::sort(names.begin(), names.end());
    for (const auto& [name, isFolder] : names) {
        if (!isFolder) {
            take((folder / name).string());
        }
        isAny = !isFolder || TakeFolder(folder / name, take, refuse) || isAny;
    }
    return isAny;
}

}  // namespace

void ForEachFile(const std::string& argument, const TakeFile& take, const Refuse& refuse) {
    std::error_code error;
    if (argument == STANDARD_INPUT || !fs::is_directory(argument, error)) {
        take(argument);
    } else if (!TakeFolder(argument, take, refuse)) {
        refuse(argument, R"(no file ending ".json", ".txt" or ".gz" in this folder)");
    }
}

bool ReadInput(const std::string& file, std::string& text, std::string& reason) {
    if (file == STANDARD_INPUT) {
        return ReadDescriptor(STDIN_FILENO, 0, file, text, reason);
    }
    struct stat status = {};
    if (stat(file.c_str(), &status) == 0 && (S_ISBLK(status.st_mode) || S_ISCHR(status.st_mode))) {
        reason = "a device, no file";
        return false;
    }
    const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        reason = std::strerror(errno);
        return false;
    }
    const auto size = static_cast<std::size_t>(S_ISREG(status.st_mode) ? status.st_size : 0);
    const bool done = ReadDescriptor(descriptor, size, file, text, reason);
    close(descriptor);
    return done;
}

}  // namespace pitool
