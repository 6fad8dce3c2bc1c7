// SPDX-License-Identifier: Apache-2.0

#include "output.h"

#include "printable_text.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <string>

namespace pitool {
namespace {

/// Writes past the C library's buffers: what the function reports written has left the process.
bool WriteAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(descriptor, text.data(), text.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written < 0) {
            return false;
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

}  // namespace

void PrepareOutput() {
    std::signal(SIGPIPE, SIG_IGN);
}

bool WriteOutput(std::string_view text) {
    if (WriteAll(STDOUT_FILENO, text)) {
        return true;
    }
    if (errno != EPIPE) {
        ReportError(std::string("standard output: ") + std::strerror(errno));
    }
    return false;
}

void ReportError(std::string_view message) {
    // Nobody is left to be told when standard error fails.
    static_cast<void>(WriteAll(STDERR_FILENO, "pitool: " + PrintableText(message) + "\n"));
}

void ReportFileError(std::string_view file, std::string_view reason) {
    ReportError(std::string(file) + ": " + std::string(reason));
}

}  // namespace pitool
