// SPDX-License-Identifier: Apache-2.0

#include "text_place.h"

#include <gtest/gtest.h>

using namespace pitool;

namespace {

std::string Place(const std::string& text, std::size_t offset) {
    return PlaceText("f", PlaceOf(text, offset));
}

}  // namespace

TEST(PlaceOf, CountsLinesAndColumnsFromOne) {
    EXPECT_EQ(Place("ab\ncd", 0), "f:1:1");
    EXPECT_EQ(Place("ab\ncd", 2), "f:1:3");
    EXPECT_EQ(Place("ab\ncd", 3), "f:2:1");
    EXPECT_EQ(Place("ab\ncd", 4), "f:2:2");
}

TEST(PlaceOf, CountsCharactersNotBytes) {
    EXPECT_EQ(Place("\xC3\xA4x", 2), "f:1:2");
}

TEST(PlaceOf, BeyondTheTextIsItsEnd) {
    EXPECT_EQ(Place("ab\n", 100), "f:2:1");
    EXPECT_EQ(Place("", 1), "f:1:1");
}
