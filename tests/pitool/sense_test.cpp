// SPDX-License-Identifier: Apache-2.0

#include "hex_bytes.h"
#include "sense_command.h"
#include "sense_text.h"

#include <pi/sense.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace pitool;

namespace {

PI::CSense Read(const std::string& data) {
    PI::CSense sense;
    std::string reason;
    EXPECT_TRUE(ReadSenseData(data, sense, reason)) << reason;
    return sense;
}

std::string Refusal(const std::string& data) {
    PI::CSense sense;
    std::string reason;
    EXPECT_FALSE(ReadSenseData(data, sense, reason)) << data;
    return reason;
}

PI::CSense Codes(std::uint8_t key, std::uint8_t asc, std::uint8_t ascq) {
    const std::uint8_t bytes[] = {0x72, key, asc, ascq};
    return PI::DecodeSense(bytes, sizeof bytes);
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

TEST(ReadSenseData, SeparatorsAreFree) {
    for (const char* data : {"72,06,29,00", " 0x72 6h 29\n0", "72062900", "7206 2900"}) {
        EXPECT_EQ(Read(data).GetCode(), 0x29) << data;
    }
}

TEST(ReadSenseData, RefusesWhatHoldsNoKey) {
    EXPECT_EQ(Read("70 00 03").GetKey(), 3);
    EXPECT_EQ(Refusal("70 00"), "too short: 2 bytes, without a sense key");
    EXPECT_EQ(Refusal("70"), "too short: 1 byte, without a sense key");
    EXPECT_EQ(Read("72 05").GetKey(), 5);
    EXPECT_EQ(Refusal("72"), "too short: 1 byte, without a sense key");
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
    EXPECT_EQ(SenseSheet(Codes(0x5, 0x24, 0x00), false),
              "sense key   5h, illegal request\n"
              "additional  24h 00h, invalid field in cdb\n"
              "severity    WARNING\n");
    EXPECT_EQ(SenseSheet(Codes(0x0, 0xFF, 0xFF), false),
              "sense key   0h, no sense\n"
              "additional  FFh FFh, unknown\n"
              "severity    INFORMATION\n");
}

TEST(SenseSheet, TellsTheFormatOfData) {
    EXPECT_EQ(SenseSheet(Read("73 06 29 00"), true),
              "format      73h, descriptor, deferred error: it belongs to an earlier command\n"
              "sense key   6h, unit attention\n"
              "additional  29h 00h, power on, reset, or bus device reset occurred\n"
              "severity    WARNING\n");
    EXPECT_EQ(SenseSheet(Read(FIXED), true).substr(0, 38), "format      70h, fixed, current error\n");
}

TEST(SenseSheet, TellsEveryFigureOfTheData) {
    EXPECT_EQ(SenseSheet(Read("f0 00 05 00 01 e2 40 0a 00 00 00 00 24 00 07 cb 00 04"), true),
              "format       70h, fixed, current error\n"
              "sense key    5h, illegal request\n"
              "additional   24h 00h, invalid field in cdb\n"
              "information  123456, the LBA for a read, write or verify\n"
              "field        byte 4 of the command, bit 3\n"
              "unit         7, the part to replace by the vendor's list\n"
              "severity     WARNING\n");
    EXPECT_EQ(SenseSheet(Read("70 00 05 00 00 00 00 0a 00 00 00 00 26 00 00 80 01 00"), true),
              "format      70h, fixed, current error\n"
              "sense key   5h, illegal request\n"
              "additional  26h 00h, invalid field in parameter list\n"
              "field       byte 256 of the data sent with the command\n"
              "severity    WARNING\n");
    EXPECT_EQ(SenseSheet(Read("72 02 04 04 00 00 00 08 02 06 00 00 80 40 00 00"), true),
              "format      72h, descriptor, current error\n"
              "sense key   2h, not ready\n"
              "additional  04h 04h, logical unit not ready, format in progress\n"
              "progress    25.0 percent\n"
              "severity    WARNING\n");
}

TEST(SenseSheet, TellsWhatIsNotInTheData) {
    EXPECT_EQ(SenseSheet(Read(FIXED.substr(0, 3 * 12)), true),
              "format      70h, fixed, current error\n"
              "sense key   3h, medium error\n"
              "additional  not in the data\n"
              "severity    WARNING\n");
    EXPECT_EQ(SenseSheet(Read(FIXED.substr(0, 3 * 13)), true),
              "format      70h, fixed, current error\n"
              "sense key   3h, medium error\n"
              "additional  11h, the qualifier is not in the data\n"
              "severity    WARNING\n");
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
    EXPECT_EQ(SenseJson(Read("f1 00 05 00 01 e2 40 0a 00 00 00 00 24 00 07 cb 00 04"), true),
              "{\n"
              "  \"format\": \"pitool sense\",\n"
              "  \"version\": 1,\n"
              "  \"response_code\": 113,\n"
              "  \"layout\": \"fixed\",\n"
              "  \"deferred\": true,\n"
              "  \"key\": 5,\n"
              "  \"key_text\": \"illegal request\",\n"
              "  \"asc\": 36,\n"
              "  \"ascq\": 0,\n"
              "  \"additional_text\": \"invalid field in cdb\",\n"
              "  \"information\": 123456,\n"
              "  \"field_pointer\": 4,\n"
              "  \"field_bit\": 3,\n"
              "  \"field_in_command\": true,\n"
              "  \"progress\": null,\n"
              "  \"field_replaceable_unit\": 7,\n"
              "  \"severity\": \"WARNING\"\n"
              "}\n");
    EXPECT_EQ(SenseJson(Codes(0, 0xFF, 0xFF), false),
              "{\n"
              "  \"format\": \"pitool sense\",\n"
              "  \"version\": 1,\n"
              "  \"response_code\": null,\n"
              "  \"layout\": null,\n"
              "  \"deferred\": null,\n"
              "  \"key\": 0,\n"
              "  \"key_text\": \"no sense\",\n"
              "  \"asc\": 255,\n"
              "  \"ascq\": 255,\n"
              "  \"additional_text\": null,\n"
              "  \"information\": null,\n"
              "  \"field_pointer\": null,\n"
              "  \"field_bit\": null,\n"
              "  \"field_in_command\": null,\n"
              "  \"progress\": null,\n"
              "  \"field_replaceable_unit\": null,\n"
              "  \"severity\": \"INFORMATION\"\n"
              "}\n");
    EXPECT_THAT(SenseJson(Read("72 02 04 04 00 00 00 08 02 06 00 00 80 40 00 00"), true),
                testing::HasSubstr("\"progress\": 16384,\n"));
    EXPECT_THAT(SenseJson(Read("70 00 02"), true),
                testing::HasSubstr("\"asc\": null,\n  \"ascq\": null,\n  \"additional_text\": null,\n"));
}
