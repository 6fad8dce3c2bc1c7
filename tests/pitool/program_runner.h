// SPDX-License-Identifier: Apache-2.0
// Runs the built program and collects what it does.
#pragma once

#include <gtest/gtest.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

extern char** environ;

namespace pitool::test {

struct Outcome {
    int m_ExitStatus;
    std::string m_Output;
    std::string m_Errors;
};

/// A file without name that a stream is directed to.
class Stream {
public:
    Stream() : m_File(std::tmpfile()) {}
    ~Stream() { std::fclose(m_File); }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    int Descriptor() const { return fileno(m_File); }
    void Write(const std::string& text) {
        std::fwrite(text.data(), 1, text.size(), m_File);
        std::rewind(m_File);
    }
    std::string Read() {
        std::rewind(m_File);
        std::string text;
        for (int c = std::fgetc(m_File); c != EOF; c = std::fgetc(m_File)) {
            text += static_cast<char>(c);
        }
        return text;
    }

private:
    std::FILE* m_File;
};

/// @param program   file to run
/// @param directory where it runs
/// @param output    what standard output is directed to; -1: it is collected
inline Outcome RunProgram(const std::string& program, const std::string& directory,
                          std::vector<std::string> arguments, const std::string& input = "",
                          int output = -1) {
    arguments.insert(arguments.begin(), program);
    std::vector<char*> argv;
    for (std::string& argument : arguments) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);

    Stream standardInput;
    Stream standardOutput;
    Stream standardError;
    standardInput.Write(input);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addchdir_np(&actions, directory.c_str());
    posix_spawn_file_actions_adddup2(&actions, standardInput.Descriptor(), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output >= 0 ? output : standardOutput.Descriptor(),
                                     STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, standardError.Descriptor(), STDERR_FILENO);
    pid_t process = 0;
    EXPECT_EQ(posix_spawn(&process, program.c_str(), &actions, nullptr, argv.data(), environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    EXPECT_EQ(waitpid(process, &status, 0), process);
    EXPECT_TRUE(WIFEXITED(status)) << "signal " << WTERMSIG(status);
    return {WEXITSTATUS(status), standardOutput.Read(), standardError.Read()};
}

}  // namespace pitool::test
