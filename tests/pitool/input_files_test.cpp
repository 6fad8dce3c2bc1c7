// SPDX-License-Identifier: Apache-2.0

#include "reports.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

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

    std::vector<std::string> Expand(const std::string& argument) {
        std::vector<std::string> files;
        m_Reason = "";
        ForEachFile(
            argument, [&files](const std::string& file) { files.push_back(file); },
            [this](const std::string& folder, const std::string& reason) {
                m_Reason += folder + ": " + reason;
            });
        return files;
    }

    std::string m_Directory;
    std::string m_Text;
    std::string m_Reason;
};

}  // namespace

TEST_F(InputFiles, AFileIsTakenWhateverItsName) {
    for (const std::string& file : {Create("report"), std::string("-"), std::string("missing")}) {
        EXPECT_EQ(Expand(file), std::vector<std::string>{file});
    }
}

TEST_F(InputFiles, AFolderStandsForItsReportsAndThoseOfItsFolders) {
    fs::create_directories(m_Directory + "/c.json/deep");
    for (const char* name : {"b.json", "a.txt", "Z.json.gz", "d.gz", "c.json/deep/x.json", "c.json/y.txt"}) {
        Create(name);
    }
    for (const char* name : {"e.xml", "json", ".json", ".hidden.json", "c.json/notes"}) {
        Create(name);
    }
    fs::create_directory(m_Directory + "/.git");
    Create(".git/g.json");
    ASSERT_EQ(mkfifo((m_Directory + "/fifo.json").c_str(), 0600), 0);
    fs::create_symlink("a.txt", m_Directory + "/link.json");
    fs::create_directory_symlink("..", m_Directory + "/up");

    std::vector<std::string> expected;
    for (const char* name : {"Z.json.gz", "a.txt", "b.json", "c.json/deep/x.json", "c.json/y.txt", "d.gz"}) {
        expected.push_back(m_Directory + "/" + name);
    }
    EXPECT_EQ(Expand(m_Directory), expected);
    EXPECT_EQ(m_Reason, "");
}

TEST_F(InputFiles, AFolderThatIsNamedByALinkIsRead) {
    fs::create_directory(m_Directory + "/folder");
    Create("folder/a.json");
    fs::create_directory_symlink("folder", m_Directory + "/link");
    EXPECT_EQ(Expand(m_Directory + "/link"), std::vector<std::string>{m_Directory + "/link/a.json"});
}

TEST_F(InputFiles, AFolderWithoutReportsIsRefused) {
    fs::create_directory(m_Directory + "/empty");
    Create("c.xml");
    EXPECT_EQ(Expand(m_Directory), std::vector<std::string>{});
    EXPECT_EQ(m_Reason, m_Directory + R"(: no file ending ".json", ".txt" or ".gz" in this folder)");
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
}

TEST_F(InputFiles, ADeviceIsRefused) {
    for (const char* device : {"/dev/zero", "/dev/null"}) {
        EXPECT_FALSE(ReadInput(device, m_Text, m_Reason));
        EXPECT_EQ(m_Reason, "a device, no file");
    }
}

TEST_F(InputFiles, APipeThatNothingWritesToIsRefused) {
    const std::string pipe = m_Directory + "/pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(ReadInput(pipe, m_Text, m_Reason));
    EXPECT_EQ(m_Reason, "nothing writes to this pipe");
}

TEST_F(InputFiles, APipeIsReadAsItsWriterGetsOn) {
    const std::string pipe = m_Directory + "/pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::thread writer([&pipe] {
        std::ofstream stream(pipe);
        stream << "one ";
        stream.flush();
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        stream << "two";
    });
    EXPECT_TRUE(ReadInput(pipe, m_Text, m_Reason)) << m_Reason;
    writer.join();
    EXPECT_EQ(m_Text, "one two");
}
