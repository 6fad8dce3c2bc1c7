// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/config_file.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

using PI::CConfigFile;
using PI::CConfigValue;

TEST(ConfigFile, NumberFormsReturnZero) {
    CConfigFile file;

    for (const int key : {0, 1, -1, 2147483647}) {
        EXPECT_EQ(file.ReadKeyValue(key, 7), 0);
        EXPECT_EQ(file.WriteKeyValue(key, 7), 0);
    }
}

TEST(ConfigFile, TextFormsReturnZeroAndLeaveTheirArgumentsAlone) {
    CConfigFile file;
    const std::string section = "section";
    const std::string key = "key";
    std::string value = "value";

    EXPECT_EQ(file.ReadKeyValue(key), 0);
    EXPECT_EQ(file.ReadSectionKeyValue(section, key, value), 0);
    EXPECT_EQ(file.WriteKeyValue(key), 0);
    EXPECT_EQ(file.WriteSectionKeyValue(section, key, value), 0);

    EXPECT_EQ(section, "section");
    EXPECT_EQ(key, "key");
    EXPECT_EQ(value, "value");
}

TEST(ConfigFile, ListFormsReturnZeroAndLeaveTheirListAlone) {
    CConfigFile file;
    std::vector<CConfigValue> values(2);
    values[0] = {"first", "1"};
    values[1] = {"second", "2"};

    EXPECT_EQ(file.ReadKeyValueList(values), 0);
    EXPECT_EQ(file.WriteKeyValueList(values), 0);

    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(values[0].m_Key, "first");
    EXPECT_EQ(values[0].m_Value, "1");
    EXPECT_EQ(values[1].m_Key, "second");
    EXPECT_EQ(values[1].m_Value, "2");
}

TEST(ConfigFile, NoFileComesIntoBeing) {
    const std::filesystem::path path = testing::TempDir() + "config_file_test.conf";
    std::filesystem::remove(path);
    CConfigFile file;

    file.SetFileName(path.string());
    EXPECT_EQ(file.WriteKeyValue("key"), 0);
    EXPECT_EQ(file.WriteKeyValue(1, 2), 0);
    EXPECT_EQ(file.WriteSectionKeyValue("section", "key", "value"), 0);
    EXPECT_EQ(file.WriteKeyValueList({{"key", "value"}}), 0);

    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(ConfigFile, NothingIsReadFromAFile) {
    CConfigFile file;
    std::string value = "before";

    file.SetFileName("/etc/hostname");
    EXPECT_EQ(file.ReadSectionKeyValue("", "", value), 0);
    EXPECT_EQ(value, "before");
    file.SetFileName("/no/such/file");
    EXPECT_EQ(file.ReadSectionKeyValue("", "", value), 0);
    EXPECT_EQ(value, "before");
}

}  // namespace
