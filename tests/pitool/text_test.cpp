// SPDX-License-Identifier: Apache-2.0

#include "print/text.h"

#include "support/random_seed.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

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

std::string Styled(const char* text, Style style, bool colors) {
    std::string styled;
    AddStyled(text, style, colors, styled);
    return styled;
}

}  // namespace

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
    EXPECT_EQ(PrintableText("\xED\xA0\x80"), "???") << "surrogate";
    EXPECT_EQ(PrintableText("\xF4\x8F\xBF\xBF"), "\xF4\x8F\xBF\xBF") << "last code point";
    EXPECT_EQ(PrintableText("\xF4\x90\x80\x80"), "????") << "beyond the last code point";
    EXPECT_EQ(PrintableText("\xF5\xFF"), "??");
}

TEST(DisplayWidth, CountsColumnsAndNotBytes) {
    EXPECT_EQ(DisplayWidth(""), 0U);
    EXPECT_EQ(DisplayWidth("abc"), 3U);
    EXPECT_EQ(DisplayWidth("\xC3\xA4\xC3\xB6"), 2U);          // ä, ö
    EXPECT_EQ(DisplayWidth("\xE7\xA3\x81\xE7\x9B\x98"), 4U);  // two wide characters
    EXPECT_EQ(DisplayWidth("a\xCC\x88"), 1U);                 // a and a diaeresis that combines with it
    EXPECT_EQ(DisplayWidth("\xF0\x9F\x92\xBE"), 2U);          // a floppy disk
}

TEST(DisplayWidth, TakesBytesThatAreNoCharacterForOneEach) {
    EXPECT_EQ(DisplayWidth("\xFF\xC3"), 2U);
}

TEST(FittingLength, IsOfWholeCharactersAndAtLeastOne) {
    EXPECT_EQ(FittingLength("abc", 2), 2U);
    EXPECT_EQ(FittingLength("abc", 3), 3U);
    EXPECT_EQ(FittingLength("abc", 0), 1U);
    EXPECT_EQ(FittingLength("\xE7\xA3\x81g", 1), 3U);
    EXPECT_EQ(FittingLength("\xE7\xA3\x81g", 2), 3U);
    EXPECT_EQ(FittingLength("a\xCC\x88g", 1), 3U) << "a mark belongs to the character before it";
}

TEST(HtmlText, EscapesWhatMeansSomethingInHtml) {
    EXPECT_EQ(HtmlText("<b class=\"x\">a & b"), "&lt;b class=&quot;x&quot;&gt;a &amp; b");
    EXPECT_EQ(HtmlText("a\x1Bz"), "a?z");
}

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

TEST(WrapText, BreaksNamesAfterSlashesHyphensAndUnderscores) {
    EXPECT_EQ(WrapText("ab/cd/ef", 6), (Lines{"ab/cd/", "ef"}));
    EXPECT_EQ(WrapText("NEAR_WEARING_OUT", 13), (Lines{"NEAR_WEARING_", "OUT"}));
    EXPECT_EQ(WrapText("NEAR_WEARING_OUT", 12), (Lines{"NEAR_", "WEARING_OUT"}));
    EXPECT_EQ(WrapText("drives/a-disk.json", 11), (Lines{"drives/a-", "disk.json"}));
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

TEST(AddStyled, EachStyleEndsBehindItsText) {
    EXPECT_EQ(Styled("a", Style::PLAIN, true), "a");
    EXPECT_EQ(Styled("a", Style::HEADING, true), "\x1B[1ma\x1B[0m");
    EXPECT_EQ(Styled("a", Style::FAILING, true), "\x1B[1;31ma\x1B[0m");
    EXPECT_EQ(Styled("a", Style::WARNING, true), "\x1B[33ma\x1B[0m");
    EXPECT_EQ(Styled("a", Style::FAINT, true), "\x1B[2ma\x1B[0m");
}

TEST(AddStyled, WithoutColorsOrTextNothingIsAdded) {
    for (const Style style : {Style::PLAIN, Style::HEADING, Style::FAILING, Style::WARNING, Style::FAINT}) {
        EXPECT_EQ(Styled("a", style, false), "a");
        EXPECT_EQ(Styled("", style, true), "");
    }
}

TEST(SeverityStyle, ErrorsAndWarningsStandOut) {
    EXPECT_EQ(SeverityStyle("ERROR"), Style::FAILING);
    EXPECT_EQ(SeverityStyle("WARNING"), Style::WARNING);
    EXPECT_EQ(SeverityStyle("INFORMATION"), Style::PLAIN);
    EXPECT_EQ(SeverityStyle("DEBUG"), Style::FAINT);
    EXPECT_EQ(SeverityStyle("7"), Style::PLAIN);
}
