// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/sense.h>

#include <algorithm>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "support/random_seed.h"

namespace PI::Test {
namespace {

using Bytes = std::vector<std::uint8_t>;

CSense Decode(const Bytes& bytes) {
    return DecodeSense(bytes.data(), bytes.size());
}

/// The first bytes, in memory of just that size, so that a sanitizer sees what is read after them.
CSense DecodeFirst(const Bytes& bytes, std::size_t count) {
    return Decode(Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count)));
}

/// Fixed format with every figure: block 12345678h, unit 7, bit 3 of byte 0102h of the command.
Bytes Fixed() {
    return {0xF0, 0, 0x05, 0x12, 0x34, 0x56, 0x78, 10, 1, 2, 3, 4, 0x24, 0x01, 7, 0xCB, 0x01, 0x02};
}

Bytes WithKeySpecific(std::uint8_t key, std::uint8_t flags) {
    Bytes bytes = Fixed();
    bytes[2] = key;
    bytes[15] = flags;
    return bytes;
}

Bytes Descriptors(const std::vector<Bytes>& descriptors, std::uint8_t key = 0x05) {
    Bytes bytes = {0x72, key, 0x24, 0x01, 0, 0, 0, 0};
    for (const Bytes& descriptor : descriptors) {
        bytes.insert(bytes.end(), descriptor.begin(), descriptor.end());
    }
    bytes[7] = static_cast<std::uint8_t>(bytes.size() - 8);
    return bytes;
}

const Bytes INFORMATION = {0x00, 0x0A, 0x80, 0, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08};
const Bytes KEY_SPECIFIC = {0x02, 0x06, 0, 0, 0xCB, 0x01, 0x02, 0};
const Bytes UNIT = {0x03, 0x02, 0, 7};
const Bytes OTHER_PROGRESS = {0x0A, 0x06, 0x02, 0x04, 0x04, 0, 0x40, 0x00};
const Bytes BLOCK_DEVICE = {0x0D, 0x1C, 0x80, 0, 0xCB, 0x01, 0x02, 7, 1, 2, 3, 4, 5, 6, 7,
                            8,    0,    0,    0, 0,    0,    0,    0, 0, 0, 0, 0, 0, 0, 0};
const Bytes UNKNOWN = {0x77, 0x01, 0xFF};

constexpr std::uint64_t BLOCK = 0x0102030405060708;

void ExpectEqual(const CSense& one, const CSense& other) {
    EXPECT_EQ(one.GetFormat(), other.GetFormat());
    EXPECT_EQ(one.GetResponseCode(), other.GetResponseCode());
    EXPECT_EQ(one.IsDeferred(), other.IsDeferred());
    EXPECT_EQ(one.GetKey(), other.GetKey());
    EXPECT_EQ(one.GetCode(), other.GetCode());
    EXPECT_EQ(one.GetQualifier(), other.GetQualifier());
    EXPECT_EQ(one.GetInformation(), other.GetInformation());
    EXPECT_EQ(one.GetFieldReplaceableUnit(), other.GetFieldReplaceableUnit());
    EXPECT_EQ(one.GetProgress(), other.GetProgress());
    EXPECT_EQ(one.GetFieldPointer(), other.GetFieldPointer());
    EXPECT_EQ(one.GetFieldBit(), other.GetFieldBit());
    EXPECT_EQ(one.IsFieldInCommand(), other.IsFieldInCommand());
}

// --- Response codes

TEST(DecodeSense, TheResponseCodeTellsLayoutAndTime) {
    for (unsigned first = 0; first < 0x100; ++first) {
        Bytes bytes = Fixed();
        bytes[0] = static_cast<std::uint8_t>(first);
        const CSense sense = Decode(bytes);
        const unsigned code = first & 0x7FU;
        EXPECT_EQ(sense.GetResponseCode(), code);
        EXPECT_EQ(sense.GetFormat(), code == 0x70 || code == 0x71   ? SenseFormat::FIXED
                                     : code == 0x72 || code == 0x73 ? SenseFormat::DESCRIPTOR
                                     : code == 0x7F                 ? SenseFormat::VENDOR
                                                                    : SenseFormat::NONE);
        EXPECT_EQ(sense.IsDeferred(), code == 0x71 || code == 0x73);
        EXPECT_EQ(sense.GetKey().has_value(), code >= 0x70 && code <= 0x73);
        EXPECT_EQ(sense.GetInformation().has_value(), first == 0xF0 || first == 0xF1);
    }
}

TEST(DecodeSense, NoBytesSayNothing) {
    ExpectEqual(DecodeSense(nullptr, 0), CSense());
    EXPECT_FALSE(CSense().GetResponseCode());
}

// --- Fixed format

TEST(DecodeSense, FixedFormatHasEveryFigure) {
    const CSense sense = Decode(Fixed());
    EXPECT_EQ(sense.GetKey(), 0x05);
    EXPECT_EQ(sense.GetCode(), 0x24);
    EXPECT_EQ(sense.GetQualifier(), 0x01);
    EXPECT_EQ(sense.GetInformation(), 0x12345678U);
    EXPECT_EQ(sense.GetFieldReplaceableUnit(), 7);
    EXPECT_EQ(sense.GetFieldPointer(), 0x0102);
    EXPECT_EQ(sense.GetFieldBit(), 3);
    EXPECT_TRUE(sense.IsFieldInCommand());
    EXPECT_FALSE(sense.GetProgress());
}

TEST(DecodeSense, FixedFormatCutAnywhereGivesWhatIsThere) {
    for (std::size_t count = 0; count <= Fixed().size(); ++count) {
        SCOPED_TRACE(count);
        const CSense sense = DecodeFirst(Fixed(), count);
        EXPECT_EQ(sense.GetResponseCode().has_value(), count >= 1);
        EXPECT_EQ(sense.GetKey().has_value(), count >= 3);
        EXPECT_EQ(sense.GetInformation().has_value(), count >= 7);
        EXPECT_EQ(sense.GetCode().has_value(), count >= 13);
        EXPECT_EQ(sense.GetQualifier().has_value(), count >= 14);
        EXPECT_EQ(sense.GetFieldReplaceableUnit().has_value(), count >= 15);
        EXPECT_EQ(sense.GetFieldPointer().has_value(), count >= 18);
        EXPECT_EQ(sense.GetFieldBit().has_value(), count >= 18);
    }
}

TEST(DecodeSense, WhatStandsAfterTheAdditionalLengthIsNotRead) {
    for (unsigned length = 0; length < 0x100; ++length) {
        SCOPED_TRACE(length);
        Bytes bytes = Fixed();
        bytes[7] = static_cast<std::uint8_t>(length);
        const CSense sense = Decode(bytes);
        EXPECT_TRUE(sense.GetInformation());
        EXPECT_EQ(sense.GetCode().has_value(), length >= 5);
        EXPECT_EQ(sense.GetQualifier().has_value(), length >= 6);
        EXPECT_EQ(sense.GetFieldReplaceableUnit().has_value(), length >= 7);
        EXPECT_EQ(sense.GetFieldPointer().has_value(), length >= 10);
    }
}

TEST(DecodeSense, OnlyTheLowBitsOfTheKeyByteAreTheKey) {
    Bytes bytes = Fixed();
    bytes[2] = 0xF3;
    EXPECT_EQ(Decode(bytes).GetKey(), 3);
    bytes = Descriptors({});
    bytes[1] = 0xF3;
    EXPECT_EQ(Decode(bytes).GetKey(), 3);
}

TEST(DecodeSense, InformationCountsOnlyWhereItIsValid) {
    Bytes bytes = Fixed();
    bytes[0] = 0x70;
    EXPECT_EQ(Decode(bytes).GetInformation(), std::nullopt);
    bytes = Fixed();
    std::fill_n(bytes.begin() + 3, 4, std::uint8_t{0});
    EXPECT_EQ(Decode(bytes).GetInformation(), 0U) << "block 0 is a block";
}

TEST(DecodeSense, RegistersOfAnATADriveAreNoInformation) {
    Bytes bytes = Fixed();
    bytes[12] = 0x00;
    bytes[13] = 0x1D;
    EXPECT_EQ(Decode(bytes).GetInformation(), std::nullopt);
    bytes[13] = 0x1C;
    EXPECT_TRUE(Decode(bytes).GetInformation());
    bytes[12] = 0x01;
    bytes[13] = 0x1D;
    EXPECT_TRUE(Decode(bytes).GetInformation());
}

TEST(DecodeSense, Unit0IsNone) {
    Bytes bytes = Fixed();
    bytes[14] = 0;
    EXPECT_EQ(Decode(bytes).GetFieldReplaceableUnit(), std::nullopt);
    EXPECT_EQ(Decode(Descriptors({{0x03, 0x02, 0, 0}})).GetFieldReplaceableUnit(), std::nullopt);
}

TEST(DecodeSense, TheKeySaysWhatTheKeySpecificBytesAre) {
    for (std::uint8_t key = 0; key < 16; ++key) {
        SCOPED_TRACE(int{key});
        const CSense sense = Decode(WithKeySpecific(key, 0x80));
        const bool hasProgress = key == 0x0 || key == 0x2;
        EXPECT_EQ(sense.GetProgress(), hasProgress ? std::optional<std::uint16_t>(0x0102) : std::nullopt);
        EXPECT_EQ(sense.GetFieldPointer(), key == 0x5 ? std::optional<std::uint16_t>(0x0102) : std::nullopt);
        EXPECT_FALSE(sense.GetFieldBit());
        EXPECT_FALSE(sense.IsFieldInCommand());

        const CSense invalid = Decode(WithKeySpecific(key, 0x7F));
        EXPECT_FALSE(invalid.GetProgress());
        EXPECT_FALSE(invalid.GetFieldPointer());
        EXPECT_FALSE(invalid.GetFieldBit());
        EXPECT_FALSE(invalid.IsFieldInCommand());
    }
}

TEST(DecodeSense, TheBitOfAFieldCountsOnlyWhereItIsValid) {
    const CSense inData = Decode(WithKeySpecific(0x5, 0x8F));
    EXPECT_EQ(inData.GetFieldBit(), 7);
    EXPECT_FALSE(inData.IsFieldInCommand());
    const CSense inCommand = Decode(WithKeySpecific(0x5, 0xC7));
    EXPECT_EQ(inCommand.GetFieldBit(), std::nullopt);
    EXPECT_TRUE(inCommand.IsFieldInCommand());
}

// --- Descriptor format

TEST(DecodeSense, DescriptorFormatHasEveryFigureInAnyOrder) {
    std::vector<Bytes> descriptors = {INFORMATION, KEY_SPECIFIC, UNKNOWN, UNIT};
    std::sort(descriptors.begin(), descriptors.end());
    do {
        const CSense sense = Decode(Descriptors(descriptors));
        EXPECT_EQ(sense.GetFormat(), SenseFormat::DESCRIPTOR);
        EXPECT_EQ(sense.GetKey(), 0x05);
        EXPECT_EQ(sense.GetCode(), 0x24);
        EXPECT_EQ(sense.GetQualifier(), 0x01);
        EXPECT_EQ(sense.GetInformation(), BLOCK);
        EXPECT_EQ(sense.GetFieldReplaceableUnit(), 7);
        EXPECT_EQ(sense.GetFieldPointer(), 0x0102);
        EXPECT_EQ(sense.GetFieldBit(), 3);
        EXPECT_TRUE(sense.IsFieldInCommand());
    } while (std::next_permutation(descriptors.begin(), descriptors.end()));
}

TEST(DecodeSense, DescriptorFormatCutAnywhereGivesWhatIsWhole) {
    const Bytes bytes = Descriptors({INFORMATION, UNKNOWN, KEY_SPECIFIC, UNIT});
    for (std::size_t count = 0; count <= bytes.size(); ++count) {
        SCOPED_TRACE(count);
        const CSense sense = DecodeFirst(bytes, count);
        EXPECT_EQ(sense.GetResponseCode().has_value(), count >= 1);
        EXPECT_EQ(sense.GetKey().has_value(), count >= 2);
        EXPECT_EQ(sense.GetCode().has_value(), count >= 3);
        EXPECT_EQ(sense.GetQualifier().has_value(), count >= 4);
        EXPECT_EQ(sense.GetInformation().has_value(), count >= 20);
        EXPECT_EQ(sense.GetFieldPointer().has_value(), count >= 31);
        EXPECT_EQ(sense.GetFieldReplaceableUnit().has_value(), count >= 35);
    }
}

TEST(DecodeSense, DescriptorsAfterTheAdditionalLengthAreNotRead) {
    Bytes bytes = Descriptors({INFORMATION, UNIT});
    for (unsigned length = 0; length < 0x100; ++length) {
        bytes[7] = static_cast<std::uint8_t>(length);
        const CSense sense = Decode(bytes);
        EXPECT_EQ(sense.GetInformation().has_value(), length >= 12) << length;
        EXPECT_EQ(sense.GetFieldReplaceableUnit().has_value(), length >= 16) << length;
    }
}

TEST(DecodeSense, TheDescriptorOfBlockDevicesHasAllOfThem) {
    const Bytes bytes = Descriptors({BLOCK_DEVICE});
    const CSense sense = Decode(bytes);
    EXPECT_EQ(sense.GetInformation(), BLOCK);
    EXPECT_EQ(sense.GetFieldReplaceableUnit(), 7);
    EXPECT_EQ(sense.GetFieldPointer(), 0x0102);
    EXPECT_EQ(sense.GetFieldBit(), 3);
    for (std::size_t count = 0; count < bytes.size(); ++count) {
        EXPECT_FALSE(DecodeFirst(bytes, count).GetInformation()) << count;
        EXPECT_FALSE(DecodeFirst(bytes, count).GetFieldReplaceableUnit()) << count;
    }
    Bytes invalid = BLOCK_DEVICE;
    invalid[2] = 0x7F;
    EXPECT_FALSE(Decode(Descriptors({invalid})).GetInformation());
}

TEST(DecodeSense, ADescriptorOfAnotherLengthIsLeftOut) {
    for (Bytes descriptor : {INFORMATION, KEY_SPECIFIC, UNIT, OTHER_PROGRESS, BLOCK_DEVICE}) {
        for (const int change : {-1, 1}) {
            Bytes other = descriptor;
            other.resize(other.size() + static_cast<std::size_t>(change));
            other[1] = static_cast<std::uint8_t>(other[1] + change);
            const CSense sense = Decode(Descriptors({other, UNKNOWN}));
            ExpectEqual(sense, Decode(Descriptors({UNKNOWN})));
        }
    }
    EXPECT_EQ(Decode(Descriptors({{0x03, 0x00}, UNIT})).GetFieldReplaceableUnit(), 7) << "empty, then whole";
}

TEST(DecodeSense, TheFirstValidDescriptorOfAKindCounts) {
    Bytes invalid = INFORMATION;
    invalid[2] = 0;
    Bytes other = INFORMATION;
    other[11] = 9;
    EXPECT_EQ(Decode(Descriptors({invalid, INFORMATION, other})).GetInformation(), BLOCK);
    EXPECT_EQ(Decode(Descriptors({UNIT, {0x03, 0x02, 0, 8}})).GetFieldReplaceableUnit(), 7);
}

TEST(DecodeSense, TheProgressOfTheCommandCountsBeforeThatOfAnother) {
    EXPECT_EQ(Decode(Descriptors({OTHER_PROGRESS}, 0x6)).GetProgress(), 0x4000);
    EXPECT_EQ(Decode(Descriptors({OTHER_PROGRESS, KEY_SPECIFIC}, 0x2)).GetProgress(), 0x0102);
    EXPECT_EQ(Decode(Descriptors({KEY_SPECIFIC, OTHER_PROGRESS}, 0x2)).GetProgress(), 0x0102);
}

// --- Anything

TEST(DecodeSense, RandomBytesAreReadWithinTheirLength) {
    std::mt19937 random(RandomSeed());
    for (int round = 0; round < 20000; ++round) {
        Bytes bytes(Below(random, 300));
        for (std::uint8_t& byte : bytes) {
            byte = static_cast<std::uint8_t>(Below(random, 4) == 0 ? random() : Below(random, 16));
        }
        if (!bytes.empty()) {
            bytes[0] = static_cast<std::uint8_t>(0x70 + Below(random, 4));
        }
        const CSense sense = Decode(bytes);
        EXPECT_LT(sense.GetKey().value_or(0), 16);
        EXPECT_EQ(sense.GetKey().has_value(),
                  bytes.size() > (sense.GetFormat() == SenseFormat::FIXED ? 2 : 1));
        EXPECT_NE(sense.GetFieldReplaceableUnit(), 0);
        EXPECT_LT(sense.GetFieldBit().value_or(0), 8);
    }
}

static_assert(std::is_nothrow_copy_constructible_v<CSense> &&
              std::is_nothrow_default_constructible_v<CSense>);

// --- Texts

TEST(SenseReason, SaysWhyThereIsNoKey) {
    const std::string other = "h: neither fixed (70h, 71h) nor descriptor (72h, 73h) format";
    EXPECT_EQ(CSense().GetReason(), "empty");
    EXPECT_EQ(Decode({}).GetReason(), "empty");
    EXPECT_EQ(Decode({0x72}).GetReason(), "too short: 1 byte, without a sense key");
    EXPECT_EQ(Decode({0xF0, 0}).GetReason(), "too short: 2 bytes, without a sense key");
    EXPECT_EQ(Decode({0x70, 0, 3}).GetReason(), "");
    EXPECT_EQ(Decode({0x72, 5}).GetReason(), "");
    EXPECT_EQ(Decode(Bytes(18, 0x7F)).GetReason(), "response code 7Fh: the vendor's own format");
    EXPECT_EQ(Decode(Bytes(18, 0x0A)).GetReason(), "response code 0A" + other);
    EXPECT_EQ(Decode(Bytes(18, 0xEF)).GetReason(), "response code 6F" + other);
}

TEST(AdditionalText, IsThatOfThePairWithTheQualifierInDigits) {
    const auto text = [](std::uint8_t code, std::uint8_t qualifier) {
        return Decode({0x72, 4, code, qualifier}).GetAdditionalText();
    };
    EXPECT_EQ(text(0x11, 0x00), "unrecovered read error");
    EXPECT_EQ(text(0x40, 0x7F), "");
    EXPECT_EQ(text(0x40, 0x80), "diagnostic failure on component 0x80");
    EXPECT_EQ(text(0x4D, 0x00), "tagged overlapped commands (task tag 0x00)");
    EXPECT_EQ(text(0x4D, 0x0A), "tagged overlapped commands (task tag 0x0A)");
    EXPECT_EQ(text(0x70, 0x1B), "decompression exception short algorithm id of 0x1B");
    EXPECT_EQ(text(0xFF, 0xFF), "");
    EXPECT_EQ(Decode({0x72, 4, 0x11}).GetAdditionalText(), "");
    EXPECT_EQ(CSense().GetAdditionalText(), "");
}

}  // namespace
}  // namespace PI::Test
