// SPDX-License-Identifier: Apache-2.0
/// @file
/// The process that a plug-in runs in.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

#include "channel.h"

namespace service {

/// A child process with a socket, and what it starts itself: a group of processes. It has no standard input,
/// and its standard output is the error output.
class PluginProcess {
public:
    /// @param command the path of a program, and its arguments
    /// @throws std::system_error when it cannot be started
    explicit PluginProcess(std::vector<std::string> command);
    /// Closes the socket, at which the process ends; if it does not within a second, it is killed.
    ~PluginProcess();
    PluginProcess(const PluginProcess&) = delete;
    PluginProcess& operator=(const PluginProcess&) = delete;

    Channel& Socket() { return *m_Socket; }

    /// Kills the group.
    /// @return how the process had ended before, such as "ended by signal 6 (Aborted)"; empty when it had not
    std::string Kill();

    /// False after Kill for as long as the kernel holds a process, which may wait for hardware.
    bool IsGone();

private:
    bool WaitForEnd(int milliseconds) const;

    std::optional<Channel> m_Socket;
    pid_t m_ID = 0;
    int m_Descriptor = -1;  // becomes readable when the process ends
    bool m_IsGone = false;
};

}  // namespace service
