// SPDX-License-Identifier: Apache-2.0

#include "layout_units.h"

#include <gtest/gtest.h>

#include <limits>

using namespace pitool;

namespace Units = PI::Units;

TEST(UnitName, IsBinaryOrEmpty) {
    EXPECT_EQ(UnitName(Units::BYTES), "bytes");
    EXPECT_EQ(UnitName(Units::KILOBYTES), "kibibytes");
    EXPECT_EQ(UnitName(Units::MEGABYTES), "mebibytes");
    EXPECT_EQ(UnitName(Units::GIGABYTES), "gibibytes");
    EXPECT_EQ(UnitName(Units::TERABYTES), "tebibytes");
    EXPECT_EQ(UnitName(Units::PETABYTES), "pebibytes");
    EXPECT_EQ(UnitName(Units::UNSPECIFIED), "");
    EXPECT_EQ(UnitName(static_cast<PI::_UNITS>(0)), "");
}

TEST(SizeText, StandsAsWrittenAndScaled) {
    EXPECT_EQ(SizeText(0, Units::BYTES), "0 (0 bytes)");
    EXPECT_EQ(SizeText(1, Units::BYTES), "1 (1 byte)");
    EXPECT_EQ(SizeText(1023, Units::BYTES), "1023 (1023 bytes)");
    EXPECT_EQ(SizeText(1024, Units::BYTES), "1024 (1.00 kibibytes)");
    EXPECT_EQ(SizeText(465, Units::GIGABYTES), "465 (465.00 gibibytes)");
    EXPECT_EQ(SizeText(1536, Units::MEGABYTES), "1536 (1.50 gibibytes)");
}

TEST(SizeText, OfAnUnknownUnitStandsAsWritten) {
    EXPECT_EQ(SizeText(465, Units::UNSPECIFIED), "465");
    EXPECT_EQ(SizeText(465, static_cast<PI::_UNITS>(-1)), "465");
}

TEST(SizeText, ScalesMoreBytesThan64BitsCount) {
    const std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(SizeText(most, Units::BYTES), "18446744073709551615 (16384.00 pebibytes)");
    EXPECT_EQ(SizeText(16383, Units::PETABYTES), "16383 (16383.00 pebibytes)");
    EXPECT_EQ(SizeText(16384, Units::PETABYTES), "16384 (16384.00 pebibytes)");
    EXPECT_EQ(SizeText(std::uint64_t{1} << 54U, Units::KILOBYTES), "18014398509481984 (16384.00 pebibytes)");
    EXPECT_EQ(SizeText(most, Units::PETABYTES), "18446744073709551615 (18446744073709551615.00 pebibytes)");
}
