// SPDX-License-Identifier: Apache-2.0

#include "display_width.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

using namespace pitool;

TEST(DisplayWidth, CountsColumnsAndNotBytes) {
    EXPECT_EQ(DisplayWidth(""), 0U);
    EXPECT_EQ(DisplayWidth("abc"), 3U);
    EXPECT_EQ(DisplayWidth("\xC3\xA4\xC3\xB6"), 2U);          // ä, ö
    EXPECT_EQ(DisplayWidth("\xE7\xA3\x81\xE7\x9B\x98"), 4U);  // two wide characters
    EXPECT_EQ(DisplayWidth("a\xCC\x88"), 1U);                 // a and a diaeresis that combines with it
    EXPECT_EQ(DisplayWidth("\xF0\x9F\x92\xBE"), 2U);          // a floppy disk
}

TEST(DisplayWidth, LeavesTheLocaleOfTheProcessAlone) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    EXPECT_EQ(DisplayWidth("\xE7\xA3\x81"), 2U);
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
}

TEST(DisplayWidth, TakesBytesThatAreNoCharacterForOneEach) {
    EXPECT_EQ(DisplayWidth("\xFF\xC3"), 2U);
}

TEST(FirstCharacter, HasALengthAndAWidth) {
    EXPECT_EQ(FirstCharacter("ab").m_Length, 1U);
    EXPECT_EQ(FirstCharacter("\xE7\xA3\x81g").m_Length, 3U);
    EXPECT_EQ(FirstCharacter("\xE7\xA3\x81g").m_Width, 2U);
}
