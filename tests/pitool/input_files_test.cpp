// SPDX-License-Identifier: Apache-2.0

#include "input_files.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

using namespace pitool;
namespace fs = std::filesystem;

namespace {

/// A directory of its own for each test.
class InputFiles : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = testing::TempDir() + "pitool_XXXXXX";
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        m_Directory = pattern;
    }
    void TearDown() override { fs::remove_all(m_Directory); }

    std::string Create(const std::string& name, const std::string& text = "") const {
        const std::string path = m_Directory + "/" + name;
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }

    std::string m_Directory;
    std::vector<std::string> m_Files;
    std::string m_Text;
    std::string m_Reason;
};

}  // namespace

TEST_F(InputFiles, AFileStandsForItselfWhateverItsName) {
    const std::string file = Create("report.txt");
    ASSERT_TRUE(ExpandArgument(file, m_Files, m_Reason));
    EXPECT_EQ(m_Files, std::vector<std::string>{file});
    ASSERT_TRUE(ExpandArgument("-", m_Files, m_Reason));
    EXPECT_EQ(m_Files, std::vector<std::string>{"-"});
    ASSERT_TRUE(ExpandArgument("missing", m_Files, m_Reason));
    EXPECT_EQ(m_Files, std::vector<std::string>{"missing"});
}

TEST_F(InputFiles, ADirectoryStandsForItsJsonFilesInTheOrderOfTheirNames) {
    const std::string b = Create("b.json");
    const std::string a = Create("a.json");
    const std::string capital = Create("Z.json");
    Create("c.txt");
    Create("json");
    fs::create_directory(m_Directory + "/sub.json");
    ASSERT_EQ(mkfifo((m_Directory + "/fifo.json").c_str(), 0600), 0);
    fs::create_symlink(a, m_Directory + "/link.json");

    ASSERT_TRUE(ExpandArgument(m_Directory, m_Files, m_Reason)) << m_Reason;

    EXPECT_EQ(m_Files, (std::vector<std::string>{capital, a, b, m_Directory + "/link.json"}));
}

TEST_F(InputFiles, ADirectoryWithoutJsonFilesIsRefused) {
    Create("c.txt");
    EXPECT_FALSE(ExpandArgument(m_Directory, m_Files, m_Reason));
    EXPECT_EQ(m_Reason, "no file ending \".json\" in this directory");
}

TEST_F(InputFiles, ReadsAFileWhole) {
    m_Text = "from before, and longer than what comes";
    ASSERT_TRUE(ReadInput(Create("x", std::string("a\0b\n", 4)), m_Text, m_Reason));
    EXPECT_EQ(m_Text, std::string("a\0b\n", 4));
    const std::string large(1'000'003, 'x');
    ASSERT_TRUE(ReadInput(Create("y", large), m_Text, m_Reason));
    EXPECT_EQ(m_Text, large);
    ASSERT_TRUE(ReadInput(Create("z"), m_Text, m_Reason));
    EXPECT_EQ(m_Text, "");
}

TEST_F(InputFiles, AFileThatCannotBeReadIsRefused) {
    EXPECT_FALSE(ReadInput(m_Directory + "/missing", m_Text, m_Reason));
    EXPECT_EQ(m_Reason, "No such file or directory");
    EXPECT_FALSE(ReadInput(m_Directory, m_Text, m_Reason));
    EXPECT_EQ(m_Reason, "Is a directory");
}

TEST_F(InputFiles, TakesSixtyFourMebibytesAndRefusesMore) {
    const std::string file = Create("large");
    fs::resize_file(file, 64U * 1024U * 1024U);
    EXPECT_TRUE(ReadInput(file, m_Text, m_Reason));
    EXPECT_EQ(m_Text.size(), 67108864U);
    fs::resize_file(file, 64U * 1024U * 1024U + 1);
    EXPECT_FALSE(ReadInput(file, m_Text, m_Reason));
    EXPECT_EQ(m_Reason, "larger than 64 mebibytes");
    EXPECT_FALSE(ReadInput("/dev/zero", m_Text, m_Reason)) << "endless";
    EXPECT_EQ(m_Reason, "larger than 64 mebibytes");
}
