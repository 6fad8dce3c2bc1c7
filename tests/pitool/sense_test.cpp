// SPDX-License-Identifier: Apache-2.0

#include "sense_data.h"
#include "sense_text.h"

#include <pi/plugin_helper.h>

#include <gtest/gtest.h>

using namespace pitool;

namespace {

SenseCodes Read(const std::string& data) {
    SenseCodes codes;
    std::string reason;
    EXPECT_TRUE(ReadSenseData(data, codes, reason)) << reason;
    return codes;
}

std::string Refusal(const std::string& data) {
    SenseCodes codes;
    std::string reason;
    EXPECT_FALSE(ReadSenseData(data, codes, reason)) << data;
    return reason;
}

SenseCodes Codes(std::uint8_t key, std::uint8_t asc, std::uint8_t ascq) {
    SenseCodes codes;
    codes.m_Key = key;
    codes.m_ASC = asc;
    codes.m_ASCQ = ascq;
    return codes;
}

const std::string FIXED = "70 00 03 00 00 00 00 06 00 00 00 00 11 04";

}  // namespace

TEST(ReadHexByte, TakesOneOrTwoDigitsInTheUsualSpellings) {
    std::uint8_t byte = 0;
    for (const char* text : {"5", "05", "0x5", "0X05", "5h", "05H"}) {
        EXPECT_TRUE(ReadHexByte(text, byte)) << text;
        EXPECT_EQ(byte, 5) << text;
    }
    EXPECT_TRUE(ReadHexByte("fF", byte));
    EXPECT_EQ(byte, 255);
    for (const char* text : {"", "0x", "h", "100", "005", "g", "-1", "+1", " 5", "5 "}) {
        EXPECT_FALSE(ReadHexByte(text, byte)) << text;
    }
}

TEST(ReadSenseData, FixedFormatHoldsTheKeyInByte2AndTheCodesInBytes12And13) {
    const SenseCodes codes = Read("f0 00 e3 00 00 00 00 06 00 00 00 00 11 04");
    EXPECT_EQ(codes.m_Format, SenseFormat::FIXED);
    EXPECT_EQ(codes.m_ResponseCode, 0x70);
    EXPECT_FALSE(codes.m_Deferred);
    EXPECT_EQ(codes.m_Key, 3);
    EXPECT_EQ(codes.m_ASC, 0x11);
    EXPECT_EQ(codes.m_ASCQ, 0x04);
    EXPECT_TRUE(Read("71" + FIXED.substr(2)).m_Deferred);
}

TEST(ReadSenseData, DescriptorFormatHoldsTheKeyInByte1AndTheCodesInBytes2And3) {
    const SenseCodes codes = Read("72 f6 29 01");
    EXPECT_EQ(codes.m_Format, SenseFormat::DESCRIPTOR);
    EXPECT_FALSE(codes.m_Deferred);
    EXPECT_EQ(codes.m_Key, 6);
    EXPECT_EQ(codes.m_ASC, 0x29);
    EXPECT_EQ(codes.m_ASCQ, 0x01);
    EXPECT_TRUE(Read("73 06 29 00 00 00 00 00").m_Deferred);
}

TEST(ReadSenseData, SeparatorsAreFree) {
    for (const char* data : {"72,06,29,00", " 0x72 6h 29\n0", "72062900", "7206 2900"}) {
        EXPECT_EQ(Read(data).m_ASC, 0x29) << data;
    }
}

TEST(ReadSenseData, RefusesWhatIsTooShort) {
    EXPECT_EQ(Read(FIXED).m_Key, 3);
    EXPECT_EQ(
        Refusal(FIXED.substr(0, FIXED.size() - 3)),
        "too short: 13 bytes, but the additional sense code and its qualifier stand in bytes 12 and 13");
    EXPECT_EQ(Refusal("70"),
              "too short: 1 byte, but the additional sense code and its qualifier stand in bytes 12 and 13");
    EXPECT_EQ(Refusal("72 05 24"),
              "too short: 3 bytes, but the additional sense code and its qualifier stand in bytes 2 and 3");
    EXPECT_EQ(Refusal("70 00 03 00 00 00 00 05 00 00 00 00 11 04"),
              "too short: the additional sense length (byte 7) is 5, but the additional sense code and its "
              "qualifier need 6");
    EXPECT_EQ(Refusal(" ,\n"), "empty");
}

TEST(ReadSenseData, RefusesOtherKinds) {
    const std::string rest(" 00 00 00 00 00 00 00 00 00 00 00 00 00");
    for (const char* code : {"00", "6F", "74", "EF", "F4"}) {
        EXPECT_NE(Refusal(code + rest).find("neither fixed (70h, 71h) nor descriptor (72h, 73h) format"),
                  std::string::npos);
    }
    EXPECT_EQ(Refusal("6f" + rest),
              "response code 6Fh: neither fixed (70h, 71h) nor descriptor (72h, 73h) format");
    EXPECT_EQ(Refusal("7f" + rest), "response code 7Fh: the vendor's own format");
}

TEST(ReadSenseData, RefusesWhatIsNotHexadecimal) {
    EXPECT_EQ(Refusal("72 05 zz 00"), "\"zz\" is no hexadecimal byte");
    EXPECT_EQ(Refusal("720"), "\"720\" is no hexadecimal byte");
    EXPECT_EQ(Refusal("72 0x0500"), "\"0x0500\" is no hexadecimal byte");
    EXPECT_EQ(Refusal("\x1B[2J"), "\"?[2J\" is no hexadecimal byte");
}

TEST(SenseSheet, TellsTextsAndSeverity) {
    EXPECT_EQ(SenseSheet(Codes(0x5, 0x24, 0x00)),
              "sense key   5h, illegal request\n"
              "additional  24h 00h, invalid field in cdb\n"
              "severity    WARNING\n");
    EXPECT_EQ(SenseSheet(Codes(0x0, 0xFF, 0xFF)),
              "sense key   0h, no sense\n"
              "additional  FFh FFh, unknown\n"
              "severity    INFORMATION\n");
}

TEST(SenseSheet, TellsTheFormatOfData) {
    EXPECT_EQ(SenseSheet(Read("73 06 29 00")),
              "format      73h, descriptor, deferred error: it belongs to an earlier command\n"
              "sense key   6h, unit attention\n"
              "additional  29h 00h, power on, reset, or bus device reset occurred\n"
              "severity    WARNING\n");
    EXPECT_EQ(SenseSheet(Read(FIXED)).substr(0, 38), "format      70h, fixed, current error\n");
}

TEST(ExplainSense, QualifiersOfPatternedTextsStandAsDigits) {
    EXPECT_EQ(ExplainSense(Codes(4, 0x40, 0x7F)).m_AdditionalText, "");
    EXPECT_EQ(ExplainSense(Codes(4, 0x40, 0x80)).m_AdditionalText, "diagnostic failure on component 0x80");
    EXPECT_EQ(ExplainSense(Codes(0xB, 0x4D, 0x00)).m_AdditionalText,
              "tagged overlapped commands (task tag 0x00)");
    EXPECT_EQ(ExplainSense(Codes(0xB, 0x70, 0x1B)).m_AdditionalText,
              "decompression exception short algorithm id of 0x1B");
}

TEST(ExplainSense, NoTextHoldsAnythingUnprintable) {
    for (unsigned int asc = 0; asc < 256; ++asc) {
        for (unsigned int ascq = 0; ascq < 256; ++ascq) {
            const SenseMeaning meaning =
                ExplainSense(Codes(0, static_cast<std::uint8_t>(asc), static_cast<std::uint8_t>(ascq)));
            for (const char c : meaning.m_AdditionalText) {
                ASSERT_TRUE(c >= ' ' && c <= '~') << asc << " " << ascq;
            }
        }
    }
}

TEST(SenseJson, HasAllMembers) {
    EXPECT_EQ(SenseJson(Read("73 06 29 00")),
              "{\n"
              "  \"format\": \"pitool sense\",\n"
              "  \"version\": 1,\n"
              "  \"response_code\": 115,\n"
              "  \"layout\": \"descriptor\",\n"
              "  \"deferred\": true,\n"
              "  \"key\": 6,\n"
              "  \"key_text\": \"unit attention\",\n"
              "  \"asc\": 41,\n"
              "  \"ascq\": 0,\n"
              "  \"additional_text\": \"power on, reset, or bus device reset occurred\",\n"
              "  \"severity\": \"WARNING\"\n"
              "}\n");
    const std::string bare = SenseJson(Codes(0, 0xFF, 0xFF));
    EXPECT_NE(bare.find("\"response_code\": null"), std::string::npos);
    EXPECT_NE(bare.find("\"layout\": null"), std::string::npos);
    EXPECT_NE(bare.find("\"deferred\": null"), std::string::npos);
    EXPECT_NE(bare.find("\"additional_text\": null"), std::string::npos);
}
