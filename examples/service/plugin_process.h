// SPDX-License-Identifier: Apache-2.0
/// @file
/// The process that a plug-in runs in.
#pragma once

#include <sys/syscall.h>
#include <sys/wait.h>

#include <csignal>
#include <cstring>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "channel.h"
#include "plugin_messages.h"
#include "start_program.h"

namespace service {

/// A child process with a socket, and what it starts itself: a group of processes. It has no standard input,
/// and its standard output is the error output.
class PluginProcess {
public:
    /// @param command the path of a program, and its arguments
    /// @throws std::system_error when it cannot be started
    explicit PluginProcess(const std::vector<std::string>& command) {
        int ends[2];
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
            throw std::system_error(errno, std::generic_category(), "socketpair");
        }
        m_Socket.emplace(ends[0]);
        const int error =
            StartProgram(command, {{ends[1], PLUGIN_SOCKET}, {STDERR_FILENO, STDOUT_FILENO}}, m_ID);
        close(ends[1]);
        if (error != 0) {
            throw std::system_error(error, std::generic_category(), command[0]);
        }
        m_Descriptor = static_cast<int>(syscall(SYS_pidfd_open, m_ID, 0));
    }

    /// Closes the socket, at which the process ends; if it does not within a second, it is killed.
    ~PluginProcess() {
        m_Socket.reset();
        WaitForEnd(PATIENCE_MS);
        Kill();
        close(m_Descriptor);
    }

    PluginProcess(const PluginProcess&) = delete;
    PluginProcess& operator=(const PluginProcess&) = delete;

    Channel& Socket() { return *m_Socket; }

    /// Kills the group.
    /// @return how the process had ended before, such as "ended by signal 6 (Aborted)"; empty when it had not
    std::string Kill() {
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
        const std::string status = std::to_string(end.si_status);
        if (end.si_pid == 0) {
            return "";
        }
        if (end.si_code == CLD_EXITED) {
            return end.si_status == OUT_OF_MEMORY ? "out of memory" : "ended with status " + status;
        }
        const char* const name = sigdescr_np(end.si_status);
        return "ended by signal " + status + (name == nullptr ? "" : " (" + std::string(name) + ")");
    }

    /// False after Kill for as long as the kernel holds a process, which may wait for hardware.
    bool IsGone() {
        m_IsGone = m_IsGone || waitpid(m_ID, nullptr, WNOHANG) != 0;  // or nobody waits for children
        return m_IsGone;
    }

private:
    static constexpr int PATIENCE_MS =
        1000;  // judgement: for what takes no time unless the machine is overloaded

    bool WaitForEnd(int milliseconds) const {
        pollfd wait = {m_Descriptor, POLLIN, 0};
        return poll(&wait, 1, milliseconds) == 1;
    }

    std::optional<Channel> m_Socket;
    pid_t m_ID = 0;
    int m_Descriptor = -1;  // becomes readable when the process ends
    bool m_IsGone = false;
};

}  // namespace service
