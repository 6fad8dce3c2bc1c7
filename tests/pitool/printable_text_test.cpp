// SPDX-License-Identifier: Apache-2.0

#include "printable_text.h"

#include <gtest/gtest.h>

#include <string>

using pitool::CharacterCount;
using pitool::PrintableText;

TEST(PrintableText, AsciiAndUtf8StayAsTheyAre) {
    const std::string text = "SSD 840 \xC3\xA9\xE2\x82\xAC\xF0\x9F\x92\xBE~";
    EXPECT_EQ(PrintableText(text), text);
}

TEST(PrintableText, ControlCharactersBecomeQuestionMarks) {
    EXPECT_EQ(PrintableText("a\x1B[2Jb"), "a?[2Jb");
    EXPECT_EQ(PrintableText("a\nb\tc\x7F"), "a?b?c?");
    EXPECT_EQ(PrintableText(std::string_view("\0", 1)), "?");
    EXPECT_EQ(PrintableText("\x1F\x20\x7E"), "? ~");
}

TEST(PrintableText, C1ControlsBecomeQuestionMarks) {
    EXPECT_EQ(PrintableText("\xC2\x80\xC2\x9B\xC2\x9F"), "???");
    EXPECT_EQ(PrintableText("\xC2\xA0"), "\xC2\xA0");
}

TEST(PrintableText, DirectionMarksBecomeQuestionMarks) {
    EXPECT_EQ(PrintableText("\xE2\x80\x8E\xE2\x80\xAE\xE2\x81\xA6\xE2\x81\xA9\xD8\x9C"), "?????");
    EXPECT_EQ(PrintableText("\xE2\x80\xA8"), "?") << "line separator";
    EXPECT_EQ(PrintableText("\xE2\x80\x90\xE2\x80\xAF"), "\xE2\x80\x90\xE2\x80\xAF") << "neighbours";
}

TEST(PrintableText, BytesThatAreNotUtf8BecomeQuestionMarks) {
    EXPECT_EQ(PrintableText("\x80"), "?");
    EXPECT_EQ(PrintableText("\xC3"), "?");
    EXPECT_EQ(PrintableText("\xC3("), "?(");
    EXPECT_EQ(PrintableText("\xC1\x81"), "??") << "overlong";
    EXPECT_EQ(PrintableText("\xE0\x80\x80"), "???") << "overlong";
    EXPECT_EQ(PrintableText("\xED\xA0\x80"), "?") << "surrogate";
    EXPECT_EQ(PrintableText("\xF4\x8F\xBF\xBF"), "\xF4\x8F\xBF\xBF") << "last code point";
    EXPECT_EQ(PrintableText("\xF4\x90\x80\x80"), "????") << "beyond the last code point";
    EXPECT_EQ(PrintableText("\xF5\xFF"), "??");
}

TEST(CharacterCount, CountsCharactersNotBytes) {
    EXPECT_EQ(CharacterCount(""), 0U);
    EXPECT_EQ(CharacterCount("abc"), 3U);
    EXPECT_EQ(CharacterCount("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x92\xBE"), 3U);
}
