// SPDX-License-Identifier: Apache-2.0

#include "print/output.h"

#include "print/text.h"

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

WhenColor whenColor = WhenColor::AUTO;  // one for the whole run: messages come from everywhere

/// Writes "pitool: file: mark: message", of which all but the message may be empty. A line stays a line on a
/// terminal too: messages are searched for and pasted.
void Report(std::string_view file, Style style, std::string_view mark, std::string_view message) {
    const bool colors = ScreenOf(STDERR_FILENO, whenColor).m_Colors;
    std::string line;
    AddStyled("pitool:", mark.empty() ? style : Style::PLAIN, colors, line);
    line += ' ';
    if (!file.empty()) {
        line += PrintableText(file) + ": ";
    }
    if (!mark.empty()) {
        AddStyled(mark, style, colors, line);
        line += ' ';
    }
    // Nobody is left to be told when standard error fails.
    static_cast<void>(WriteAll(STDERR_FILENO, line + PrintableText(message) + "\n"));
}

constexpr const char* WARNING_MARK = "warning:";

}  // namespace

void PrepareOutput() {
    std::signal(SIGPIPE, SIG_IGN);
}

void UseColors(WhenColor when) {
    whenColor = when;
}

Screen OutputScreen() {
    return ScreenOf(STDOUT_FILENO, whenColor);
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
    Report("", Style::FAILING, "", message);
}

void ReportWarning(std::string_view message) {
    Report("", Style::WARNING, WARNING_MARK, message);
}

void ReportFileError(std::string_view file, std::string_view reason) {
    ReportError(std::string(file) + ": " + std::string(reason));
}

void ReportFileWarning(std::string_view file, std::string_view message) {
    Report(file, Style::WARNING, WARNING_MARK, message);
}

}  // namespace pitool
