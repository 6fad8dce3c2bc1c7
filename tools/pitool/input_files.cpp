// SPDX-License-Identifier: Apache-2.0

#include "input_files.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace pitool {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t READ_STEP = std::size_t{256} * 1024;

bool ReadDescriptor(int descriptor, std::string& text, std::string& reason) {
    std::size_t length = 0;
    for (;;) {
        if (length == text.size()) {
            text.resize(std::min(std::max(length * 2, READ_STEP), MAX_INPUT_SIZE + 1));
        }
        const ssize_t count = read(descriptor, text.data() + length, text.size() - length);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            reason = std::strerror(errno);
            return false;
        }
        length += static_cast<std::size_t>(count);
        if (length > MAX_INPUT_SIZE) {
            reason = "larger than 64 mebibytes";
            return false;
        }
        if (count == 0) {
            text.resize(length);
            return true;
        }
    }
}

}  // namespace

bool ExpandArgument(const std::string& argument, std::vector<std::string>& files, std::string& reason) {
    files.clear();
    std::error_code error;
    if (argument == STANDARD_INPUT || !fs::is_directory(argument, error)) {
        files.push_back(argument);
        return true;
    }
    fs::directory_iterator entry(argument, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        std::error_code ignored;
        if (entry->path().extension() == ".json" && entry->is_regular_file(ignored)) {
            files.push_back(entry->path().string());
        }
    }
    if (error) {
        reason = error.message();
        return false;
    }
    if (files.empty()) {
        reason = "no file ending \".json\" in this directory";
        return false;
    }
    std::sort(files.begin(), files.end());
    return true;
}

bool ReadInput(const std::string& file, std::string& text, std::string& reason) {
    if (file == STANDARD_INPUT) {
        return ReadDescriptor(STDIN_FILENO, text, reason);
    }
    const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        reason = std::strerror(errno);
        return false;
    }
    const bool done = ReadDescriptor(descriptor, text, reason);
    close(descriptor);
    return done;
}

}  // namespace pitool
