// SPDX-License-Identifier: Apache-2.0

#include "print/output.h"

#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fcntl.h>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <utility>

namespace pitool {
namespace {

namespace fs = std::filesystem;

// One each for the whole run: messages come from everywhere.
std::string whenColor = "auto";
std::size_t progressLength = 0;  // of the text that is on the terminal now
std::FILE* output = stdout;
std::string outputName = "standard output";
std::string temporary;  // the file that is written, until it takes the place of the one of that name

std::string_view Variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// The screen of a stream, as it is now.
Screen ScreenOf(std::FILE* stream) {
    constexpr std::size_t USUAL = 80;
    winsize size{};
    const bool isTerminal = ioctl(fileno(stream), TIOCGWINSZ, &size) == 0;
    const std::string_view kind = Variable("TERM");
    Screen screen;
    screen.m_Colors = whenColor == "always" || (whenColor == "auto" && isTerminal && !kind.empty() &&
                                                kind != "dumb" && Variable("NO_COLOR").empty());
    if (size.ws_col == 0 && (isTerminal || screen.m_Colors)) {
        ReadWholeNumber(Variable("COLUMNS"), size.ws_col);
    }
    screen.m_Columns = size.ws_col == 0 && isTerminal ? USUAL : size.ws_col;
    screen.m_Rows = size.ws_row;
    return screen;
}

bool FailOutput() {
    if (errno != EPIPE) {
        ReportError(outputName + ": " + std::strerror(errno));
    }
    return false;
}

/// Ends the program as the signal would have, without half a file.
void RemoveTemporary(int signal) {
    unlink(temporary.c_str());
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

/// Writes a line. It stays one on a terminal too: messages are searched for and pasted.
void Report(std::string line, const char* mark, Style style, std::string_view message) {
    ShowProgress("");
    AddStyled(mark, style, ScreenOf(stderr).m_Colors, line);
    line += " " + PrintableText(message) + "\n";
    std::fputs(line.c_str(), stderr);
}

}  // namespace

void PrepareOutput() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    std::setvbuf(stdout, nullptr, _IONBF, 0);  // what is reported written has left the process
}

void UseColors(const std::string& when) {
    whenColor = when;
}

Screen OutputScreen() {
    return ScreenOf(output);
}

bool OpenOutput(const std::string& file) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    const bool isThere = fs::exists(status);
    if (isThere ? !fs::is_regular_file(status) : fs::is_symlink(file, error)) {
        ReportError(file + (isThere ? ": no regular file" : ": a link to nothing"));
        return false;
    }
    outputName = isThere ? fs::canonical(file, error).string() : file;
    temporary = outputName + ".XXXXXX";
    constexpr int HARMLESS[] = {SIGCHLD, SIGCONT, SIGTSTP, SIGTTIN, SIGTTOU, SIGURG, SIGWINCH};
    for (int signal = 1; signal <= SIGRTMAX; ++signal) {
        if (std::count(std::begin(HARMLESS), std::end(HARMLESS), signal) == 0 &&
            std::signal(signal, RemoveTemporary) == SIG_IGN) {
            std::signal(signal, SIG_IGN);
        }
    }
    const int descriptor = mkostemp(temporary.data(), O_CLOEXEC);
    const mode_t mask = umask(0);
    umask(mask);
    std::FILE* const opened = descriptor >= 0 ? fdopen(descriptor, "w") : nullptr;
    if (opened == nullptr) {
        return FailOutput();
    }
    // A file system without modes leaves it as private as it was made.
    fchmod(descriptor, isThere ? static_cast<mode_t>(status.permissions()) & 0777U : 0666U & ~mask);
    output = opened;
    return std::setvbuf(output, nullptr, _IONBF, 0) == 0;
}

bool CloseOutput(bool isWhole) {
    if (output == stdout) {
        return isWhole;
    }
    const bool isPlaced =
        isWhole && ((fsync(fileno(output)) == 0 && std::rename(temporary.c_str(), outputName.c_str()) == 0) ||
                    FailOutput());
    std::fclose(std::exchange(output, stdout));
    if (!isPlaced) {
        unlink(temporary.c_str());
    }
    return isPlaced;
}

void ShowProgress(std::string_view text) {
    if ((text.empty() && progressLength == 0) || isatty(STDERR_FILENO) != 1) {
        return;
    }
    const std::string blanks = text.empty() ? std::string(progressLength, ' ') + "\r" : "";
    std::fputs(("\r" + blanks + std::string(text)).c_str(), stderr);
    progressLength = text.size();
}

bool WriteOutput(std::string_view text) {
    ShowProgress("");
    return std::fwrite(text.data(), 1, text.size(), output) == text.size() || FailOutput();
}

void ReportError(std::string_view message) {
    Report("", "pitool:", Style::FAILING, message);
}

void ReportWarning(std::string_view file, std::string_view message) {
    Report("pitool: " + (file.empty() ? "" : PrintableText(file) + ": "), "warning:", Style::WARNING,
           message);
}

}  // namespace pitool
