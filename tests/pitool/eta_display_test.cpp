// SPDX-License-Identifier: Apache-2.0

#include "eta_display.h"

#include <gtest/gtest.h>

using namespace pitool;

TEST(EtaLine, TellsPercentAndEstimate) {
    EXPECT_EQ(EtaLine(5, "00:50:00 remaining"), "5 percent, 00:50:00 remaining");
}

TEST(EtaBar, FillsWithThePercentage) {
    const std::string fifty(50, '#');
    EXPECT_EQ(EtaBar(0, "x", 100), "[" + std::string(50, '-') + "]   0 percent, x");
    EXPECT_EQ(EtaBar(50, "x", 100), "[" + std::string(25, '#') + std::string(25, '-') + "]  50 percent, x");
    EXPECT_EQ(EtaBar(99, "x", 100), "[" + std::string(49, '#') + "-]  99 percent, x");
    EXPECT_EQ(EtaBar(100, "x", 100), "[" + fifty + "] 100 percent, x");
}

TEST(EtaBar, NeverReachesTheLastColumn) {
    for (std::size_t columns = 1; columns < 120; ++columns) {
        EXPECT_LT(EtaBar(50, "00:50:00 remaining", columns).size(), columns) << columns;
    }
    EXPECT_EQ(EtaBar(50, "x", 0), "");
}

TEST(EtaBar, IsLeftOutWhereItWouldBeTooShort) {
    EXPECT_EQ(EtaBar(50, "00:50:00 remaining", 45), "[#####-----]  50 percent, 00:50:00 remaining");
    EXPECT_EQ(EtaBar(50, "00:50:00 remaining", 44), " 50 percent, 00:50:00 remaining");
    EXPECT_EQ(EtaBar(50, "00:50:00 remaining", 32), " 50 percent, 00:50:00 remaining");
    EXPECT_EQ(EtaBar(50, "00:50:00 remaining", 31), " 50 percent, 00:50:00 remainin");
}
