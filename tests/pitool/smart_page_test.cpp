// SPDX-License-Identifier: Apache-2.0

#include "smart_page.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

using pitool::BuildSmartPage;
using pitool::SmartAttribute;

namespace {

std::array<unsigned char, 512> Bytes(const PI::_IDE_SMART_DATA& page) {
    std::array<unsigned char, 512> bytes{};
    std::memcpy(bytes.data(), &page, bytes.size());
    return bytes;
}

}  // namespace

TEST(BuildSmartPage, AnEmptyTableGivesThePageOfARevisionOnly) {
    std::array<unsigned char, 512> expected{};
    expected[0] = 0x34;
    expected[1] = 0x12;
    EXPECT_EQ(Bytes(BuildSmartPage(0x1234, {})), expected);
}

TEST(BuildSmartPage, AnAttributeFillsItsTwelveBytesLowestFirst) {
    std::array<unsigned char, 512> expected{};
    expected[0] = 16;
    const unsigned char slot[] = {9, 0x32, 0x01, 98, 97, 0x06, 0x05, 0x04, 0x03, 0x02, 0x01, 0};
    std::copy(std::begin(slot), std::end(slot), expected.begin() + 14);
    const SmartAttribute filler{};
    const SmartAttribute attribute{9, 0x0132, 98, 97, 0x010203040506};

    EXPECT_EQ(Bytes(BuildSmartPage(16, {filler, attribute})), expected);
}

TEST(BuildSmartPage, TheThirtiethAttributeEndsAtByte362) {
    std::vector<SmartAttribute> attributes(30);
    attributes.back() = {255, 0xFFFF, 255, 254, pitool::MAX_RAW_VALUE};

    const auto bytes = Bytes(BuildSmartPage(0, attributes));

    EXPECT_EQ(bytes[350], 255);
    EXPECT_EQ(bytes[353], 255);
    EXPECT_EQ(bytes[354], 254);
    EXPECT_EQ(bytes[355], 0xFF);
    EXPECT_EQ(bytes[360], 0xFF);
    EXPECT_EQ(bytes[361], 0);
    EXPECT_EQ(bytes[362], 0);
}
