// SPDX-License-Identifier: Apache-2.0

#include "print/output.h"

#include "print/text.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>

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
std::size_t progressLength = 0;         // of the text that stands on the terminal now

/// The file that is written, and the one that it will replace.
struct OutputFile {
    int m_Descriptor = -1;
    std::string m_Name;
    std::string m_Temporary;
} outputFile;

bool FailOutput() {
    ReportFileError(outputFile.m_Name, std::strerror(errno));
    return false;
}

/// Writes "pitool: file: mark: message", of which all but the message may be empty. A line stays a line on a
/// terminal too: messages are searched for and pasted.
void Report(std::string_view file, Style style, std::string_view mark, std::string_view message) {
    ShowProgress("");
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
    return ScreenOf(outputFile.m_Descriptor >= 0 ? outputFile.m_Descriptor : STDOUT_FILENO, whenColor);
}

bool OpenOutput(const std::string& file) {
    outputFile.m_Name = file;
    struct stat status = {};
    mode_t mode = 0666;
    if (stat(file.c_str(), &status) == 0) {
        if (!S_ISREG(status.st_mode)) {
            ReportFileError(file, "no regular file");
            return false;
        }
        mode = status.st_mode & 0777U;
        char* const target = realpath(file.c_str(), nullptr);
        outputFile.m_Name = target != nullptr ? target : file;
        std::free(target);
    } else {
        const mode_t mask = umask(0);
        umask(mask);
        mode &= ~mask;
    }
    outputFile.m_Temporary = outputFile.m_Name + ".XXXXXX";
    outputFile.m_Descriptor = mkostemp(outputFile.m_Temporary.data(), O_CLOEXEC);
    return (outputFile.m_Descriptor >= 0 && fchmod(outputFile.m_Descriptor, mode) == 0) || FailOutput();
}

bool CloseOutput(bool isWhole) {
    if (outputFile.m_Descriptor < 0) {
        return isWhole;
    }
    const bool isPlaced =
        isWhole && ((fsync(outputFile.m_Descriptor) == 0 &&
                     rename(outputFile.m_Temporary.c_str(), outputFile.m_Name.c_str()) == 0) ||
                    FailOutput());
    close(std::exchange(outputFile.m_Descriptor, -1));
    if (!isPlaced) {
        unlink(outputFile.m_Temporary.c_str());
    }
    return isPlaced;
}

void ShowProgress(std::string_view text) {
    if ((text.empty() && progressLength == 0) || isatty(STDERR_FILENO) != 1) {
        return;
    }
    const std::string line =
        text.empty() ? "\r" + std::string(progressLength, ' ') + "\r" : "\r" + std::string(text);
    progressLength = text.size();
    static_cast<void>(WriteAll(STDERR_FILENO, line));
}

bool WriteOutput(std::string_view text) {
    ShowProgress("");
    if (outputFile.m_Descriptor >= 0) {
        return WriteAll(outputFile.m_Descriptor, text) || FailOutput();
    }
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
