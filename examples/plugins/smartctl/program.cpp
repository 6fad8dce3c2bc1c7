// SPDX-License-Identifier: Apache-2.0

#include "program.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

extern char** environ;

namespace smartctl {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t MAX_OUTPUT = std::size_t{16} << 20U;

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

bool Spawn(const std::vector<std::string>& arguments, int output, pid_t& child, std::string& error) {
    FileActions actions;
    posix_spawn_file_actions_addopen(actions.Get(), STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(actions.Get(), STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(actions.Get(), output, STDOUT_FILENO);

    std::vector<std::string> texts = arguments;
    std::vector<char*> argv;
    for (std::string& text : texts) {
        argv.push_back(text.data());
    }
    argv.push_back(nullptr);
    const int result = posix_spawnp(&child, argv[0], actions.Get(), nullptr, argv.data(), environ);
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
        if (output.size() > MAX_OUTPUT) {
            error = "too long an answer";
            return false;
        }
    }
}

}  // namespace

bool RunProgram(const std::vector<std::string>& arguments, std::chrono::milliseconds timeout,
                std::string& output, std::string& error) {
    output.clear();
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        error = Message(errno);
        return false;
    }
    pid_t child = 0;
    const bool spawned = Spawn(arguments, ends[1], child, error);
    close(ends[1]);
    bool complete = false;
    if (spawned) {
        complete = ReadAll(ends[0], Clock::now() + timeout, output, error);
        if (!complete) {
            kill(child, SIGKILL);
            error = arguments[0] + ": " + error;
        }
        while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    close(ends[0]);
    return complete;
}

}  // namespace smartctl
