// SPDX-License-Identifier: Apache-2.0

#include "print/output.h"

#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fcntl.h>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

namespace pitool {
namespace {

namespace fs = std::filesystem;

WhenColor whenColor = WhenColor::AUTO;  // one for the whole run: messages come from everywhere
std::size_t progressLength = 0;         // of the text that is on the terminal now

/// The file that is written, and the one that it will replace.
struct OutputFile {
    int m_Descriptor = -1;
    std::string m_Name;
    std::string m_Temporary;
} outputFile;

std::string_view Variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// The screen of a file descriptor, as it is now.
Screen ScreenOf(int descriptor) {
    constexpr std::size_t USUAL = 80;
    const bool isTerminal = isatty(descriptor) == 1;
    winsize size{};
    if (isTerminal) {
        static_cast<void>(ioctl(descriptor, TIOCGWINSZ, &size));
    }
    Screen screen;
    const std::string_view kind = Variable("TERM");
    screen.m_Colors =
        whenColor == WhenColor::ALWAYS || (whenColor == WhenColor::AUTO && isTerminal && !kind.empty() &&
                                           kind != "dumb" && Variable("NO_COLOR").empty());
    unsigned short columns = size.ws_col;
    if (columns == 0 && (isTerminal || screen.m_Colors)) {
        ReadWholeNumber(Variable("COLUMNS"), columns);
    }
    screen.m_Columns = columns == 0 && isTerminal ? USUAL : columns;
    screen.m_Rows = size.ws_row;
    return screen;
}

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

bool FailOutput() {
    ReportFileError(outputFile.m_Name, std::strerror(errno));
    return false;
}

/// Ends the program as the signal would have, without leaving half a file behind.
void RemoveTemporary(int signal) {
    unlink(outputFile.m_Temporary.c_str());
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

/// Writes "pitool: file: mark: message", of which all but the message may be empty. A line stays a line on a
/// terminal too: messages are searched for and pasted.
void Report(std::string_view file, Style style, std::string_view mark, std::string_view message) {
    ShowProgress("");
    const bool colors = ScreenOf(STDERR_FILENO).m_Colors;
    std::string line;
    AddStyled("pitool:", mark.empty() ? style : Style::PLAIN, colors, line);
    line += file.empty() ? " " : " " + PrintableText(file) + ": ";
    AddStyled(mark, style, colors, line);
    line += mark.empty() ? "" : " ";
    // If standard error fails, too, nothing is left to report to.
    static_cast<void>(WriteAll(STDERR_FILENO, line + PrintableText(message) + "\n"));
}

}  // namespace

void PrepareOutput() {
    std::signal(SIGPIPE, SIG_IGN);
}

void UseColors(WhenColor when) {
    whenColor = when;
}

Screen OutputScreen() {
    return ScreenOf(outputFile.m_Descriptor >= 0 ? outputFile.m_Descriptor : STDOUT_FILENO);
}

bool OpenOutput(const std::string& file) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    const bool isThere = fs::exists(status);
    if (isThere ? !fs::is_regular_file(status) : fs::is_symlink(file, error)) {
        ReportFileError(file, isThere ? "no regular file" : "a link to nothing");
        return false;
    }
    outputFile.m_Name = isThere ? fs::canonical(file, error).string() : file;
    outputFile.m_Temporary = outputFile.m_Name + ".XXXXXX";
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
        if (std::signal(signal, RemoveTemporary) == SIG_IGN) {
            std::signal(signal, SIG_IGN);
        }
    }
    outputFile.m_Descriptor = mkostemp(outputFile.m_Temporary.data(), O_CLOEXEC);
    const mode_t mask = umask(0);
    umask(mask);
    const mode_t mode = isThere ? static_cast<mode_t>(status.permissions()) & 0777U : 0666U & ~mask;
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
        ReportFileError("standard output", std::strerror(errno));
    }
    return false;
}

void ReportError(std::string_view message) {
    Report("", Style::FAILING, "", message);
}

void ReportWarning(std::string_view message) {
    ReportFileWarning("", message);
}

void ReportFileError(std::string_view file, std::string_view reason) {
    Report(file, Style::FAILING, "", reason);
}

void ReportFileWarning(std::string_view file, std::string_view message) {
    Report(file, Style::WARNING, "warning:", message);
}

}  // namespace pitool
