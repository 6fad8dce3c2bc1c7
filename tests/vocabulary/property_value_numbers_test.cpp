// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/vocabulary.h>

#include <map>

#include "vocabulary/expected_names.h"

namespace {

using PI::PropertyValueToString;
using PI::StringToPropertyValue;

TEST(StringToPropertyValue, EveryNameGivesItsSmallestNumber) {
    std::map<std::string, int> numbers;
    for (const auto& [number, name] : PI::Test::ExpectedNames("property_values.tsv")) {
        numbers.emplace(name, number);
    }
    ASSERT_EQ(numbers.size(), 669u);

    for (const auto& [name, number] : numbers) {
        EXPECT_EQ(StringToPropertyValue(name, -1), number) << name;
        EXPECT_EQ(StringToPropertyValue(name, number + 1), number) << name;
    }
}

TEST(StringToPropertyValue, SmallerOfTwoNumbersWins) {
    EXPECT_EQ(StringToPropertyValue("CONTROLLER_BASED_ENCRYPTION", -1), 40674);
    EXPECT_EQ(PropertyValueToString(40675), "CONTROLLER_BASED_ENCRYPTION");
}

TEST(StringToPropertyValue, CaseMatters) {
    EXPECT_EQ(StringToPropertyValue("RAID0", 7), 40007);
    EXPECT_EQ(StringToPropertyValue("raid0", 7), 7);
    EXPECT_EQ(StringToPropertyValue("Raid0", 7), 7);
}

TEST(StringToPropertyValue, NameIsNotTrimmedOrCut) {
    EXPECT_EQ(StringToPropertyValue(" RAID0", 7), 7);
    EXPECT_EQ(StringToPropertyValue("RAID0 ", 7), 7);
    EXPECT_EQ(StringToPropertyValue("RAID", 7), 40512);
    EXPECT_EQ(StringToPropertyValue("RAI", 7), 7);
    EXPECT_EQ(StringToPropertyValue(std::string("RAID0\0", 6), 7), 7);
    EXPECT_EQ(StringToPropertyValue(std::string("\0", 1), 7), 7);
}

TEST(StringToPropertyValue, UnknownNameGivesTheDefault) {
    EXPECT_EQ(StringToPropertyValue("NO_SUCH_VALUE", 0), 0);
    EXPECT_EQ(StringToPropertyValue("NO_SUCH_VALUE", -1), -1);
    EXPECT_EQ(StringToPropertyValue("NO_SUCH_VALUE", 2147483647), 2147483647);
    EXPECT_EQ(StringToPropertyValue("NO_SUCH_VALUE", -2147483647 - 1), -2147483647 - 1);
    EXPECT_EQ(StringToPropertyValue("EMPTY", 7), 7);
}

TEST(StringToPropertyValue, EmptyNameGivesZeroWhateverTheDefault) {
    EXPECT_EQ(StringToPropertyValue("", 7), 0);
    EXPECT_EQ(StringToPropertyValue("", -7), 0);
}

TEST(StringToPropertyValue, UnknownPositiveNumbersDoNotChangeTheEmptyName) {
    EXPECT_EQ(PropertyValueToString(2), "");
    EXPECT_EQ(PropertyValueToString(40676), "");

    EXPECT_EQ(StringToPropertyValue("", 7), 0);
}

TEST(StringToPropertyValue, NamesThatBeginWithADigitAreNames) {
    EXPECT_EQ(StringToPropertyValue("512B", -1), 40046);
    EXPECT_EQ(StringToPropertyValue("16M", -1), 40061);
    EXPECT_EQ(StringToPropertyValue("_512B", -1), -1);
    EXPECT_NE(StringToPropertyValue("1GB_BOUNDARY", -1), -1);
    EXPECT_NE(StringToPropertyValue("160M_SCSI", -1), -1);
}

TEST(StringToPropertyValue, BlockSizesDoubleFrom512B) {
    const char* sizes[] = {"512B", "1K",   "2K",   "4K", "8K", "16K", "32K", "64K",
                           "128K", "256K", "512K", "1M", "2M", "4M",  "8M",  "16M"};
    for (int index = 0; index < 16; ++index) {
        EXPECT_EQ(StringToPropertyValue(sizes[index], -1), 40046 + index);
    }
}

TEST(PropertyValueToString, RaidLevelsStandTogetherWithOneStranger) {
    EXPECT_EQ(PropertyValueToString(40010), "RAID1E");
    EXPECT_EQ(PropertyValueToString(40011), "I2C_ERRORS");
    EXPECT_EQ(PropertyValueToString(40012), "RAID3");
    EXPECT_EQ(PropertyValueToString(40021), "CONCAT");
    EXPECT_EQ(PropertyValueToString(40022), "SINGLE");
}

}  // namespace
