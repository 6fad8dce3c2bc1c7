// SPDX-License-Identifier: Apache-2.0
// A process of its own: the test needs to know every number that was ever looked up.
#include <gtest/gtest.h>
#include <pi/vocabulary.h>

#include <climits>

namespace {

using PI::PropertyValueToString;
using PI::StringToPropertyValue;

TEST(StringToPropertyValue, EmptyNameGivesTheSmallestRememberedNumber) {
    EXPECT_EQ(StringToPropertyValue("", 7), 0);

    PropertyValueToString(1000000);
    EXPECT_EQ(StringToPropertyValue("", 7), 0);

    PropertyValueToString(-5);
    EXPECT_EQ(StringToPropertyValue("", 7), -5);

    PropertyValueToString(-3);
    EXPECT_EQ(StringToPropertyValue("", 7), -5);

    // Neither a search by name nor a look-up in another vocabulary adds an entry.
    EXPECT_EQ(StringToPropertyValue("NO_SUCH_VALUE", -9), -9);
    PI::ErrorCodeToString(-10);
    PI::PropertyIDToString(-10);
    PI::OperationIDToString(-10);
    PI::EventIDToString(-10);
    EXPECT_EQ(StringToPropertyValue("", 7), -5);

    PropertyValueToString(INT_MIN);
    EXPECT_EQ(StringToPropertyValue("", 7), INT_MIN);

    EXPECT_EQ(StringToPropertyValue("RAID0", 7), 40007);
}

}  // namespace
