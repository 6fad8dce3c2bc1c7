// SPDX-License-Identifier: Apache-2.0

#include "plugin_process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <system_error>

#include "plugin_messages.h"

namespace service {
namespace {

constexpr int PATIENCE_MS = 1000;  // judgement: for what takes no time unless the machine is overloaded

void Check(int error, const char* what) {
    if (error != 0) {
        throw std::system_error(error, std::generic_category(), what);
    }
}

/// The socket in its place, no input, and the output where it cannot be taken for the host's.
class FileActions {
public:
    explicit FileActions(int socket) {
        posix_spawn_file_actions_init(&m_Actions);
        posix_spawn_file_actions_adddup2(&m_Actions, socket, PLUGIN_SOCKET);
        posix_spawn_file_actions_addclosefrom_np(&m_Actions, PLUGIN_SOCKET + 1);
        posix_spawn_file_actions_addopen(&m_Actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&m_Actions, STDERR_FILENO, STDOUT_FILENO);
    }
    ~FileActions() { posix_spawn_file_actions_destroy(&m_Actions); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    posix_spawn_file_actions_t m_Actions;
};

int Spawn(pid_t& id, std::vector<std::string>& command, int socket) {
    std::vector<char*> argv;
    for (std::string& text : command) {
        argv.push_back(text.data());
    }
    argv.push_back(nullptr);
    const FileActions files(socket);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    const int error = posix_spawn(&id, argv[0], &files.m_Actions, &attributes, argv.data(), environ);
    posix_spawnattr_destroy(&attributes);
    return error;
}

std::string EndText(const siginfo_t& end) {
    if (end.si_code == CLD_EXITED) {
        return end.si_status == OUT_OF_MEMORY ? "out of memory"
                                              : "ended with status " + std::to_string(end.si_status);
    }
    const char* const name = sigdescr_np(end.si_status);
    return "ended by signal " + std::to_string(end.si_status) +
           (name == nullptr ? "" : " (" + std::string(name) + ")");
}

}  // namespace

PluginProcess::PluginProcess(std::vector<std::string> command) {
    int ends[2];
    Check(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) == 0 ? 0 : errno, "socketpair");
    m_Socket.emplace(ends[0]);
    const int error = Spawn(m_ID, command, ends[1]);
    close(ends[1]);
    Check(error, command[0].c_str());
    m_Descriptor = static_cast<int>(syscall(SYS_pidfd_open, m_ID, 0));
}

PluginProcess::~PluginProcess() {
    m_Socket.reset();
    WaitForEnd(PATIENCE_MS);
    Kill();
    close(m_Descriptor);
}

bool PluginProcess::WaitForEnd(int milliseconds) const {
    pollfd wait = {m_Descriptor, POLLIN, 0};
    return poll(&wait, 1, milliseconds) == 1;
}

std::string PluginProcess::Kill() {
    if (m_IsGone) {
        return "";
    }
    // A process that crashes closes its socket a moment before it can be asked how it ended.
    WaitForEnd(m_Socket && m_Socket->IsClosed() ? PATIENCE_MS : 0);
    siginfo_t end = {};
    waitid(P_PID, static_cast<id_t>(m_ID), &end, WEXITED | WNOHANG | WNOWAIT);
    kill(-m_ID, SIGKILL);
    WaitForEnd(PATIENCE_MS);
    IsGone();
    return end.si_pid == 0 ? "" : EndText(end);
}

bool PluginProcess::IsGone() {
    m_IsGone = m_IsGone || waitpid(m_ID, nullptr, WNOHANG) != 0;  // or nobody waits for children
    return m_IsGone;
}

}  // namespace service
