// SPDX-License-Identifier: Apache-2.0

#include "print/style.h"

#include <gtest/gtest.h>

using namespace pitool;

namespace {

std::string Styled(const char* text, Style style, bool colors) {
    std::string styled;
    AddStyled(text, style, colors, styled);
    return styled;
}

}  // namespace

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
