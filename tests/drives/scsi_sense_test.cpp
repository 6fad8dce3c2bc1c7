// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/plugin_helper.h>
#include <pi/vocabulary.h>

#include <set>
#include <string>

#include "drives/sense_texts.h"

namespace {

using PI::CPluginHelper;
using PI::Test::ReadSenseTexts;
using PI::Test::SensePatternText;
using PI::Test::SenseTexts;
using namespace std::string_literals;

constexpr const char* leftOver = "left over";

TEST(TranslateSenseKey, EveryKeyByItsLowFourBits) {
    struct Key {
        const char* m_Text;
        int m_Severity;
    };
    const Key keys[16] = {
        {"no sense", 2},       {"recovered error", 2}, {"not ready", 3},      {"medium error", 3},
        {"hardware error", 3}, {"illegal request", 3}, {"unit attention", 3}, {"data protect", 2},
        {"blank check", 2},    {"vendor specific", 2}, {"copy aborted", 3},   {"aborted command", 3},
        {"reserved", 2},       {"volume overflow", 3}, {"miscompare", 3},     {"completed", 2},
    };

    for (unsigned key = 0; key < 256; ++key) {
        std::string text = leftOver;
        auto severity = PI::Severity::ERROR;
        EXPECT_EQ(CPluginHelper::TranslateSenseKey(static_cast<unsigned char>(key), text, severity), 0);
        EXPECT_EQ(text, keys[key % 16].m_Text) << key;
        EXPECT_EQ(static_cast<int>(severity), keys[key % 16].m_Severity) << key;
    }
}

TEST(TranslateSenseKey, HighBitsDoNotCount) {
    std::string text;
    PI::_SEVERITY severity = PI::Severity::DEBUG;
    EXPECT_EQ(CPluginHelper::TranslateSenseKey(0x12, text, severity), PI::ErrorCode::SUCCESS);
    EXPECT_EQ(text, "not ready");
    EXPECT_EQ(severity, PI::Severity::WARNING);
}

TEST(TranslateSenseKey, DataProtectAndBlankCheckAreOnlyInformation) {
    std::string text;
    const unsigned char keys[] = {0x07, 0x08};
    for (const unsigned char key : keys) {
        PI::_SEVERITY severity = PI::Severity::ERROR;
        CPluginHelper::TranslateSenseKey(key, text, severity);
        EXPECT_EQ(severity, PI::Severity::INFORMATION) << text;
    }
}

TEST(TranslateSenseASC, EveryPair) {
    const SenseTexts expected = ReadSenseTexts(ADDITIONAL_SENSE_FILE);
    ASSERT_EQ(expected.size(), 738u);

    for (unsigned pair = 0; pair < 0x10000; ++pair) {
        const auto asc = static_cast<unsigned char>(pair >> 8);
        const auto ascq = static_cast<unsigned char>(pair & 0xFF);
        std::string expectedText = SensePatternText(asc, ascq);
        int expectedResult = 20000;
        const auto found = expected.find({asc, ascq});
        if (found != expected.end()) {
            expectedText = found->second;
            expectedResult = 0;
        }

        std::string text = leftOver;
        const int result = CPluginHelper::TranslateSenseASC(asc, ascq, text);

        ASSERT_EQ(result, expectedResult) << std::hex << pair;
        ASSERT_EQ(text, expectedText) << std::hex << pair;
    }
}

TEST(TranslateSenseASC, Knows738PairsUnder110Codes) {
    std::size_t pairs = 0;
    std::set<unsigned> codes;
    std::string text;
    for (unsigned pair = 0; pair < 0x10000; ++pair) {
        if (CPluginHelper::TranslateSenseASC(static_cast<unsigned char>(pair >> 8),
                                             static_cast<unsigned char>(pair & 0xFF), text) == 0) {
            ++pairs;
            codes.insert(pair >> 8);
            EXPECT_EQ(text.find_first_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ"), std::string::npos) << text;
            EXPECT_NE(text, "");
        }
    }
    EXPECT_EQ(pairs, 738u);
    EXPECT_EQ(codes.size(), 110u);
    EXPECT_EQ(*codes.begin(), 0x00u);
    EXPECT_EQ(*codes.rbegin(), 0x74u);
    EXPECT_EQ(codes.count(0x4D), 0u);
    EXPECT_EQ(codes.count(0x70), 0u);
}

TEST(TranslateSenseASC, UnknownPairEmptiesTheText) {
    const unsigned char pairs[][2] = {{0xFF, 0xFF}, {0x74, 0x7A}, {0x75, 0x00}, {0x40, 0x01}, {0x40, 0x7F}};
    for (const auto& [asc, ascq] : pairs) {
        std::string text = leftOver;
        EXPECT_EQ(CPluginHelper::TranslateSenseASC(asc, ascq, text), PI::ErrorCode::GENERAL);
        EXPECT_EQ(text, "");
    }
}

// These count as unknown, and yet callers show their text.
TEST(TranslateSenseASC, RangesHoldTheQualifierAsACharacter) {
    struct Sense {
        unsigned char m_ASC;
        unsigned char m_ASCQ;
        std::string m_Text;
    };
    const Sense senses[] = {
        {0x40, 0x80, "diagnostic failure on component 0x\x80"},
        {0x40, 0xFF, "diagnostic failure on component 0x\xFF"},
        {0x4D, 0x00, "tagged overlapped commands (task tag 0x\0)"s},
        {0x4D, 'A', "tagged overlapped commands (task tag 0xA)"},
        {0x4D, '%', "tagged overlapped commands (task tag 0x%)"},
        {0x4D, 0xFF, "tagged overlapped commands (task tag 0x\xFF)"},
        {0x70, 0x00, "decompression exception short algorithm id of 0x\0"s},
        {0x70, '1', "decompression exception short algorithm id of 0x1"},
    };
    for (const Sense& sense : senses) {
        std::string text = leftOver;
        EXPECT_EQ(CPluginHelper::TranslateSenseASC(sense.m_ASC, sense.m_ASCQ, text), PI::ErrorCode::GENERAL);
        EXPECT_EQ(text, sense.m_Text);
    }
}

}  // namespace
