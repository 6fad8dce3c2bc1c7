// SPDX-License-Identifier: Apache-2.0

#include "program.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>
#include <thread>

extern char** environ;

namespace shared {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t MAX_SIZE = std::size_t{16} << 20U;

std::string Message(int number) {
    return std::generic_category().message(number);
}

class FileActions {
public:
    FileActions() { posix_spawn_file_actions_init(&m_Actions); }
    ~FileActions() { posix_spawn_file_actions_destroy(&m_Actions); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;
    posix_spawn_file_actions_t* Get() { return &m_Actions; }

private:
    posix_spawn_file_actions_t m_Actions;
};

bool Spawn(const std::vector<std::string>& arguments, int output, ErrorOutput errorOutput, pid_t& child,
           std::string& error) {
    FileActions actions;
    posix_spawn_file_actions_addopen(actions.Get(), STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(actions.Get(), output, STDOUT_FILENO);
    if (errorOutput == ErrorOutput::TAKE) {
        posix_spawn_file_actions_adddup2(actions.Get(), output, STDERR_FILENO);
    } else {
        posix_spawn_file_actions_addopen(actions.Get(), STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    }

    std::vector<std::string> texts = arguments;
    std::vector<char*> argv;
    for (std::string& text : texts) {
        argv.push_back(text.data());
    }
    argv.push_back(nullptr);
    // A process group of its own: Ctrl+C asks the service to end, and no program in the midst of its work.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    const int result = posix_spawnp(&child, argv[0], actions.Get(), &attributes, argv.data(), environ);
    posix_spawnattr_destroy(&attributes);
    if (result != 0) {
        error = arguments[0] + ": " + Message(result);
    }
    return result == 0;
}

/// Reads until the other end is closed.
bool ReadAll(int input, Clock::time_point deadline, std::string& output, std::string& error) {
    for (;;) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        pollfd wait = {input, POLLIN, 0};
        const int ready = left <= 0 ? 0 : poll(&wait, 1, static_cast<int>(left));
        if (ready == 0) {
            error = "no answer in time";
            return false;
        }
        char buffer[65536];
        const ssize_t count = ready < 0 ? -1 : read(input, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            error = Message(errno);
            return false;
        }
        if (count == 0) {
            return true;
        }
        output.append(buffer, static_cast<std::size_t>(count));
        if (output.size() > MAX_SIZE) {
            error = "too long an answer";
            return false;
        }
    }
}

/// Waits for the program to end: it may have closed its output and go on.
/// @param status out: none in a host that ignores SIGCHLD, where the kernel keeps it to itself
bool Wait(pid_t child, Clock::time_point deadline, std::optional<int>& status, std::string& error) {
    int known = 0;
    pid_t ended = 0;
    while ((ended = waitpid(child, &known, WNOHANG)) == 0) {
        if (Clock::now() > deadline) {
            error = "no end in time";
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    if (ended == child) {
        status = known;
    }
    return true;
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
    const bool spawned = Spawn(arguments, ends[1], errorOutput, child, error);
    close(ends[1]);
    const Clock::time_point deadline = Clock::now() + timeout;
    std::optional<int> status;
    bool complete =
        spawned && ReadAll(ends[0], deadline, output, error) && Wait(child, deadline, status, error);
    close(ends[0]);
    if (spawned && !complete) {
        kill(child, SIGKILL);
        Wait(child, Clock::time_point::max(), status, output);
        error.insert(0, arguments[0] + ": ");
    } else if (status.has_value() && WIFSIGNALED(*status)) {
        complete = false;
        error = arguments[0] + ": ended by signal " + std::to_string(WTERMSIG(*status));
    }
    if (!complete) {
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
