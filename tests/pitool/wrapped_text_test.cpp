// SPDX-License-Identifier: Apache-2.0

#include "wrapped_text.h"

#include "display_width.h"
#include "support/random_seed.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace pitool;

namespace {

using Lines = std::vector<std::string_view>;

std::string WithoutBlanks(std::string_view text) {
    std::string kept(text);
    kept.erase(std::remove(kept.begin(), kept.end(), ' '), kept.end());
    return kept;
}

std::string Added(const std::string& text, std::size_t columns, bool colors = false) {
    Screen screen;
    screen.m_Columns = columns;
    screen.m_Colors = colors;
    std::string output;
    AddWrapped("|-- ", "|   ", text, Style::HEADING, screen, output);
    return output;
}

}  // namespace

TEST(WrapText, WhatFitsStaysAsItIs) {
    EXPECT_EQ(WrapText("", 5), (Lines{""}));
    EXPECT_EQ(WrapText("ab  cd ", 7), (Lines{"ab  cd "}));
}

TEST(WrapText, BreaksAtTheLastBlankThatFits) {
    EXPECT_EQ(WrapText("one two three", 12), (Lines{"one two", "three"}));
    EXPECT_EQ(WrapText("one two three", 7), (Lines{"one two", "three"}));
    EXPECT_EQ(WrapText("one two three", 6), (Lines{"one", "two", "three"}));
    EXPECT_EQ(WrapText("one   two", 4), (Lines{"one", "two"}));
    EXPECT_EQ(WrapText("one two     ", 8), (Lines{"one two"}));
}

TEST(WrapText, BreaksNamesBehindSlashesHyphensAndUnderscores) {
    EXPECT_EQ(WrapText("ab/cd/ef", 6), (Lines{"ab/cd/", "ef"}));
    EXPECT_EQ(WrapText("NEAR_WEARING_OUT", 13), (Lines{"NEAR_WEARING_", "OUT"}));
    EXPECT_EQ(WrapText("NEAR_WEARING_OUT", 12), (Lines{"NEAR_", "WEARING_OUT"}));
}

TEST(WrapText, BreaksPathsBetweenFoldersBeforeNames) {
    EXPECT_EQ(WrapText("drives/a-disk.json", 11), (Lines{"drives/", "a-disk.json"}));
    EXPECT_EQ(WrapText("drives/a-disk.json", 10), (Lines{"drives/", "a-", "disk.json"}));
}

TEST(WrapText, BreaksWordsWhereNothingElseHelps) {
    EXPECT_EQ(WrapText("abcdef", 4), (Lines{"abcd", "ef"}));
    EXPECT_EQ(WrapText("/abcdef", 4), (Lines{"/abc", "def"}));
    EXPECT_EQ(WrapText("  abcdef", 4), (Lines{"  ab", "cdef"}));
    EXPECT_EQ(WrapText("abc", 0), (Lines{"a", "b", "c"}));
}

TEST(WrapText, NeverDividesACharacterOrTakesAMarkFromIt) {
    EXPECT_EQ(WrapText("\xE7\xA3\x81\xE7\x9B\x98", 3), (Lines{"\xE7\xA3\x81", "\xE7\x9B\x98"}));
    EXPECT_EQ(WrapText("\xE7\xA3\x81\xE7\x9B\x98", 1), (Lines{"\xE7\xA3\x81", "\xE7\x9B\x98"}));
    EXPECT_EQ(WrapText("ab\xCC\x88"
                       "c",
                       2),
              (Lines{"ab\xCC\x88", "c"}));
}

TEST(WrapText, LosesOnlyBlanksAndFitsEveryWidth) {
    std::mt19937 random(PI::Test::RandomSeed());
    const std::vector<std::string> signs{"a", "b", "c", "1",        " ",           " ",
                                         "/", "_", "-", "\xC3\xA4", "\xE7\xA3\x81"};
    for (int round = 0; round < 5000; ++round) {
        std::string text;
        for (std::size_t length = random() % 40; length > 0; --length) {
            text += signs[random() % signs.size()];
        }
        const std::size_t width = 2 + random() % 20;
        std::string joined;
        for (const std::string_view line : WrapText(text, width)) {
            EXPECT_LE(DisplayWidth(line), width) << text;
            joined += line;
        }
        EXPECT_EQ(WithoutBlanks(joined), WithoutBlanks(text));
    }
}

TEST(LongestPiece, IsWhatStaysTogetherWhenEveryOtherBreakIsTaken) {
    EXPECT_EQ(LongestPiece(""), 0U);
    EXPECT_EQ(LongestPiece("one three"), 5U);
    EXPECT_EQ(LongestPiece("drives/wd-disk.json"), 9U);
    EXPECT_EQ(LongestPiece("NEAR_WEARING_OUT"), 8U);
    EXPECT_EQ(LongestPiece("\xE7\xA3\x81\xE7\x9B\x98 a"), 4U);
}

TEST(AddWrapped, GoesOnBelowItsLead) {
    EXPECT_EQ(Added("one two three", 12), "|-- one two\n|   three\n");
    EXPECT_EQ(Added("one two three", 0), "|-- one two three\n");
}

TEST(AddWrapped, StaysInOneLineWhereTheLeadLeavesNoRoom) {
    EXPECT_EQ(Added("one two three", 11), "|-- one two three\n");
}

TEST(AddWrapped, StylesEachLineForItself) {
    EXPECT_EQ(Added("one two three", 12, true),
              "\x1B[2m|-- \x1B[0m\x1B[1mone two\x1B[0m\n\x1B[2m|   \x1B[0m\x1B[1mthree\x1B[0m\n");
}
