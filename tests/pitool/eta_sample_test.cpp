// SPDX-License-Identifier: Apache-2.0

#include "eta_sample.h"

#include <gtest/gtest.h>

using namespace pitool;

namespace {

EtaSample Read(const std::string& line) {
    EtaSample sample;
    std::string reason;
    EXPECT_TRUE(ReadEtaSample(line, sample, reason)) << reason;
    return sample;
}

std::string Refusal(const std::string& line) {
    EtaSample sample;
    std::string reason;
    EXPECT_FALSE(ReadEtaSample(line, sample, reason)) << line;
    return reason;
}

std::string NoPercentage(const std::string& word) {
    return "\"" + word + "\" is no percentage: a whole number from 0 to 100 is expected";
}

std::string NoTime(const std::string& word) {
    return "\"" + word + "\" is no time: milliseconds from 0 to 99999999999999 are expected";
}

}  // namespace

TEST(ReadEtaSample, TakesAPercentageAloneOrWithATime) {
    EXPECT_EQ(Read("0").m_Percent, 0);
    EXPECT_FALSE(Read("0").m_TimeMs.has_value());
    EXPECT_EQ(Read(" 100\t99999999999999 \r").m_Percent, 100);
    EXPECT_EQ(Read(" 100\t99999999999999 \r").m_TimeMs, 99999999999999U);
    EXPECT_EQ(Read("50 0").m_TimeMs, 0U);
}

TEST(ReadEtaSample, RefusesWhatIsNoPercentage) {
    for (const std::string word : {"-1", "101", "2147483648", "-2147483649", "4294967297",
                                   "99999999999999999999", "abc", "1.5", "50%", "+5", "0x10", "1e2"}) {
        EXPECT_EQ(Refusal(word + " 5"), NoPercentage(word));
    }
}

TEST(ReadEtaSample, RefusesWhatIsNoTime) {
    for (const std::string word : {"-1", "100000000000000", "18446744073709551616", "x", "1.0"}) {
        EXPECT_EQ(Refusal("5 " + word), NoTime(word));
    }
}

TEST(ReadEtaSample, RefusesMoreThanTwoWords) {
    EXPECT_EQ(Refusal("5 6 7"), "more than a percentage and a time");
}

TEST(ReadEtaSample, ShowsForeignTextPrintableAndShort) {
    EXPECT_EQ(Refusal("\x1B[2J"), NoPercentage("?[2J"));
    EXPECT_EQ(Refusal(std::string(41, 'a')), NoPercentage(std::string(40, 'a') + "..."));
    EXPECT_EQ(Refusal(std::string(40, 'a')), NoPercentage(std::string(40, 'a')));
}

TEST(IsBlankLine, TakesNothingButBlanks) {
    EXPECT_TRUE(IsBlankLine(""));
    EXPECT_TRUE(IsBlankLine(" \t\r"));
    EXPECT_FALSE(IsBlankLine(" 0"));
    EXPECT_FALSE(IsBlankLine("\v"));
}
