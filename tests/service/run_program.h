// SPDX-License-Identifier: Apache-2.0
// Runs a program and keeps what it printed.
#pragma once

#include <fcntl.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace PI::Test {

/// A folder that is there as long as the test runs.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "service-test-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        m_Path = name;
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_Path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return m_Path; }

    /// Writes a file, with the folders it stands in.
    void Write(const std::filesystem::path& file, const std::string& text) const {
        std::filesystem::create_directories((m_Path / file).parent_path());
        std::ofstream(m_Path / file, std::ios::binary) << text;
    }

private:
    std::filesystem::path m_Path;
};

inline std::string ReadFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        throw std::runtime_error("cannot read " + file.string());
    }
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

struct Outcome {
    int m_Status = -1;  ///< exit status; -1 when a signal ended the program
    std::string m_Output;
    std::string m_Errors;
};

/// @param folder in which the program runs
inline Outcome RunProgram(const std::vector<std::string>& command, const std::filesystem::path& folder) {
    const TemporaryFolder files;
    const std::string output = files.Path() / "output";
    const std::string errors = files.Path() / "errors";
    std::vector<std::string> texts = command;
    std::vector<char*> argv;
    for (std::string& text : texts) {
        argv.push_back(text.data());
    }
    argv.push_back(nullptr);

    const pid_t child = fork();
    if (child == 0) {
        const int flags = O_WRONLY | O_CREAT;
        if (dup2(open(output.c_str(), flags, 0600), 1) == 1 &&
            dup2(open(errors.c_str(), flags, 0600), 2) == 2 && chdir(folder.c_str()) == 0) {
            execv(argv[0], argv.data());
        }
        _exit(127);
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            throw std::runtime_error("the program is lost");
        }
    }
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(output), ReadFile(errors)};
}

}  // namespace PI::Test
