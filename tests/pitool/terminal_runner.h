// SPDX-License-Identifier: Apache-2.0
// Runs a program on a terminal of its own.
#pragma once

#include <gtest/gtest.h>

#include <fcntl.h>
#include <pty.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

namespace pitool::test {

/// The variables of a run, such as "TERM=xterm"; nothing is taken over from the tests' own.
using Environment = std::vector<std::string>;

inline std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

/// What a program shows on a terminal of so many columns and rows, both its outputs together and without the
/// terminal's carriage returns. It must exit with the status given.
inline std::string ShowOnTerminal(const std::string& directory, std::vector<std::string> arguments,
                                  unsigned short columns, Environment environment = {"TERM=xterm"},
                                  int expectedStatus = 0, unsigned short rows = 24) {
    const winsize size{rows, columns, 0, 0};
    int terminal = -1;
    const pid_t process = forkpty(&terminal, nullptr, nullptr, &size);
    if (process == 0) {
        const std::vector<char*> argv = Pointers(arguments);
        const std::vector<char*> variables = Pointers(environment);
        if (chdir(directory.c_str()) == 0) {
            execve(argv[0], argv.data(), variables.data());
        }
        _exit(127);
    }
    EXPECT_GT(process, 0);
    std::string shown;
    char piece[4096];
    for (ssize_t length = 0; (length = read(terminal, piece, sizeof piece)) > 0;) {
        for (ssize_t i = 0; i < length; ++i) {
            if (piece[i] != '\r') {
                shown += piece[i];
            }
        }
    }
    close(terminal);
    int status = 0;
    EXPECT_EQ(waitpid(process, &status, 0), process);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == expectedStatus) << shown;
    return shown;
}

}  // namespace pitool::test
