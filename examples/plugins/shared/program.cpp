// SPDX-License-Identifier: Apache-2.0

#include "program.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>
#include <thread>

#include "start_program.h"

namespace shared {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t MAX_SIZE = std::size_t{16} << 20U;

std::string Message(int number) {
    return std::generic_category().message(number);
}

/// Reads until the other end is closed.
/// @return what went wrong, if anything
std::string ReadAll(int input, Clock::time_point deadline, std::string& output) {
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        pollfd wait = {input, POLLIN, 0};
        const int ready = left <= 0 ? 0 : poll(&wait, 1, static_cast<int>(left));
        if (ready == 0) {
            return "no answer in time";
        }
        char buffer[65536];
        const ssize_t count = ready < 0 ? -1 : read(input, buffer, sizeof buffer);
        if (count < 0 && errno != EINTR) {
            return Message(errno);
        }
        if (count == 0) {
            return "";
        }
        output.append(buffer, static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        if (output.size() > MAX_SIZE) {
            return "too long an answer";
        }
    }
}

/// Waits for the program to end: it may have closed its output and go on.
/// @param status out: none in a host that ignores SIGCHLD, for which the kernel does not keep it
/// @return what went wrong, if anything
std::string Wait(pid_t child, Clock::time_point deadline, std::optional<int>& status) {
    int known = 0;
    pid_t ended = 0;
    while ((ended = waitpid(child, &known, WNOHANG)) == 0) {
        if (Clock::now() > deadline) {
            return "no end in time";
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    if (ended == child) {
        status = known;
    }
    return "";
}

}  // namespace

std::optional<std::string> ReadTextFile(const std::filesystem::path& path, std::string& error) {
    std::error_code ignored;
    if (std::filesystem::is_fifo(path, ignored)) {
        error = path.string() + ": is no file";  // reading would wait for a writer
        return std::nullopt;
    }
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "re"), &std::fclose);
    std::string text;
    if (file != nullptr) {
        char buffer[4096];
        for (std::size_t count = 0;
             text.size() < MAX_SIZE && (count = std::fread(buffer, 1, sizeof buffer, file.get())) > 0;) {
            text.append(buffer, count);
        }
    }
    if (file == nullptr || std::ferror(file.get()) != 0) {
        error = path.string() + ": " + Message(errno);
        return std::nullopt;
    }
    return text;
}

std::optional<int> RunProgram(const std::vector<std::string>& arguments, std::chrono::milliseconds timeout,
                              std::string& output, std::string& error, ErrorOutput errorOutput) {
    output.clear();
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        error = Message(errno);
        return std::nullopt;
    }
    pid_t child = 0;
    const int errorFile = errorOutput == ErrorOutput::TAKE ? ends[1] : -1;
    const int failure =
        service::StartProgram(arguments, {{ends[1], STDOUT_FILENO}, {errorFile, STDERR_FILENO}}, child);
    close(ends[1]);
    const Clock::time_point deadline = Clock::now() + timeout;
    std::optional<int> status;
    error = failure != 0 ? Message(failure) : ReadAll(ends[0], deadline, output);
    close(ends[0]);
    if (failure == 0 && error.empty()) {
        error = Wait(child, deadline, status);
    }
    if (failure == 0 && !error.empty()) {
        kill(child, SIGKILL);
        Wait(child, Clock::time_point::max(), status);
    } else if (status.has_value() && WIFSIGNALED(*status)) {
        error = "ended by signal " + std::to_string(WTERMSIG(*status));
    }
    if (!error.empty()) {
        error.insert(0, arguments[0] + ": ");
        return std::nullopt;
    }
    return status.has_value() ? WEXITSTATUS(*status) : -1;
}

std::string OneLine(std::string_view text) {
    constexpr std::size_t MOST = 200;
    constexpr std::string_view BLANKS = " \t\r";
    std::string joined;
    for (std::size_t start = 0; start < text.size() && joined.size() <= MOST;) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        std::string_view line = text.substr(start, end - start);
        line.remove_prefix(std::min(line.find_first_not_of(BLANKS), line.size()));
        line = line.substr(0, line.find_last_not_of(BLANKS) + 1);
        joined += joined.empty() || line.empty() ? "" : ", ";
        joined += line;
        start = end + 1;
    }
    return joined.size() <= MOST ? joined : joined.substr(0, MOST) + "...";
}

}  // namespace shared
