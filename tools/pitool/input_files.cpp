// SPDX-License-Identifier: Apache-2.0

#include "input_files.h"

#include "print/output.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace pitool {
namespace {

namespace fs = std::filesystem;

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
        if (count < 0) {
            reason = std::strerror(errno);
            return false;
        }
        if (count == 0 && isLate && file != STANDARD_INPUT) {
            reason = "nothing writes to this pipe";
            return false;
        }
        isLate = false;
        length += static_cast<std::size_t>(count);
        if (length > MAX_INPUT_SIZE) {
            reason = "larger than 64 mebibytes";
            return false;
        }
        if (count == 0 || length == size) {
            text.resize(length);
            return true;
        }
    }
}

bool IsReport(const std::string& name) {
    constexpr std::string_view ENDINGS[] = {".json", ".txt", ".gz"};
    return std::any_of(std::begin(ENDINGS), std::end(ENDINGS), [&name](std::string_view ending) {
        return name.size() > ending.size() &&
               name.compare(name.size() - ending.size(), ending.size(), ending) == 0;
    });
}

/// Adds the reports of a folder and of those in it.
void AddFiles(const fs::path& folder, std::vector<std::string>& files, const Refuse& refuse) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        std::error_code ignored;  // what is no longer there is passed over
        const std::string name = entry->path().filename().string();
        if (name.front() == '.' || entry->is_symlink(ignored)) {
            continue;
        }
        if (entry->is_directory(ignored)) {
            AddFiles(entry->path(), files, refuse);
        } else if (IsReport(name) && entry->is_regular_file(ignored)) {
            files.push_back(entry->path().string());
        }
    }
    if (error) {
        refuse(folder.string(), error.message());
    }
}

/// Orders by the names of folders and files, one after another.
bool IsBefore(const std::string& left, const std::string& right) {
    const auto rank = [](char c) { return c == '/' ? 0 : static_cast<unsigned char>(c); };
    return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(),
                                        [&rank](char a, char b) { return rank(a) < rank(b); });
}

}  // namespace

void ForEachFile(const std::string& argument, const std::function<void(const std::string& file)>& take,
                 const Refuse& refuse) {
    std::error_code error;
    if (argument == STANDARD_INPUT || !fs::is_directory(argument, error)) {
        take(argument);
        return;
    }
    bool isRefused = false;
    std::vector<std::string> files;
    AddFiles(argument, files, [&](const std::string& folder, const std::string& reason) {
        isRefused = true;
        refuse(folder, reason);
    });
    if (files.empty() && !isRefused) {
        refuse(argument, R"(no file ending ".json", ".txt" or ".gz" in this folder)");
    }
    std::sort(files.begin(), files.end(), IsBefore);
    std::for_each(files.begin(), files.end(), take);
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
