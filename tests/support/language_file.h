// SPDX-License-Identifier: Apache-2.0
// A language file for as long as a test wants it.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace PI::Test {

class LanguageFile {
public:
    explicit LanguageFile(const std::string& content)
        : m_Path(testing::TempDir() + "language_file." + std::to_string(getpid()) + "." +
                 std::to_string(++counter) + ".xml") {
        std::ofstream(m_Path, std::ios::binary) << content;
    }
    ~LanguageFile() { std::filesystem::remove(m_Path); }
    LanguageFile(const LanguageFile&) = delete;
    LanguageFile& operator=(const LanguageFile&) = delete;

    const std::string m_Path;

private:
    inline static int counter = 0;
};

}  // namespace PI::Test
