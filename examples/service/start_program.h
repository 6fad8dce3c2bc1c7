// SPDX-License-Identifier: Apache-2.0
/// @file
/// Starts programs.
#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <algorithm>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace service {

/// Starts a program without a shell, in a group of processes of its own: Ctrl+C asks the host to end, and no
/// program in the midst of its work. It has nothing to read, and of the open files those that are listed.
///
/// @param command the program, which is searched for in PATH, and its arguments
/// @param files   numbers of files here, none below 0 for /dev/null, and what they are there
/// @return 0, or a number of errno
inline int StartProgram(std::vector<std::string> command, std::initializer_list<std::pair<int, int>> files,
                        pid_t& id) {
    std::vector<char*> argv;
    for (std::string& text : command) {
        argv.push_back(text.data());
    }
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    int last = STDERR_FILENO;
    for (const auto& [here, there] : files) {
        if (here < 0) {
            posix_spawn_file_actions_addopen(&actions, there, "/dev/null", O_WRONLY, 0);
        } else {
            posix_spawn_file_actions_adddup2(&actions, here, there);
        }
        last = std::max(last, there);
    }
    posix_spawn_file_actions_addclosefrom_np(&actions, last + 1);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    const int error = posix_spawnp(&id, argv[0], &actions, &attributes, argv.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return error;
}

}  // namespace service
