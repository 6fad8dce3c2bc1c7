// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/plugin_helper.h>
#include <pi/types.h>
#include <velkx/language_support.h>

#include <boost/format.hpp>
#include <climits>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "support/global_locale.h"
#include "support/random_seed.h"

namespace {

using namespace PI::Test;
using PI::CPluginHelper;
using namespace std::string_literals;

std::string AllBytes() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

// --- stringurlencode

TEST(StringUrlEncode, EveryByte) {
    EXPECT_EQ(CPluginHelper::stringurlencode(AllBytes()),
              "%00%02%03%04%05%06%07%08%09%0a%0b%0c%0d%0e%0f"
              "%10%11%12%13%14%15%17%18%19%1a%1b%1c%1d%1e%1f"
              " %21%22%23%24%25%26%27()%2a%2b%2c-.%2f"
              "0123456789:%3b%3c%3d%3e%3f"
              "%40ABCDEFGHIJKLMNO"
              "PQRSTUVWXYZ%5b%5c%5d%5e_"
              "%60abcdefghijklmno"
              "pqrstuvwxyz%7b%7c%7d~%7f"
              "%80%81%82%83%84%85%86%87%88%89%8a%8b%8c%8d%8e%8f"
              "%90%91%92%93%94%95%96%97%98%99%9a%9b%9c%9d%9e%9f"
              "%a0%a1%a2%a3%a4%a5%a6%a7%a8%a9%aa%ab%ac%ad%ae%af"
              "%b0%b1%b2%b3%b4%b5%b6%b7%b8%b9%ba%bb%bc%bd%bf"
              "%c0%c1%c2%c3%c4%c5%c6%c7%c8%c9%ca%cb%cc%cd%ce%cf"
              "%d0%d1%d2%d3%d4%d5%d6%d7%d8%d9%da%db%dc%dd%de%df"
              "%e0%e1%e2%e3%e4%e5%e6%e7%e8%e9%ea%eb%ec%ed%ef"
              "%f0%f1%f2%f3%f4%f5%f6%f7%f8%f9%fa%fb%fc%fd%fe%ff");
}

TEST(StringUrlEncode, KeepsBlankParenthesesColonAndTilde) {
    EXPECT_EQ(CPluginHelper::stringurlencode("RAID Adapter (0): a-b_c.d~"), "RAID Adapter (0): a-b_c.d~");
    EXPECT_EQ(CPluginHelper::stringurlencode("a b/c~"), "a b%2fc~");
}

TEST(StringUrlEncode, EncodesInLowerCase) {
    EXPECT_EQ(CPluginHelper::stringurlencode("/+?*\xC3"), "%2f%2b%3f%2a%c3");
    EXPECT_EQ(CPluginHelper::stringurlencode("100%"), "100%25");
    EXPECT_EQ(CPluginHelper::stringurlencode("gr\xC3\xB6\xC3\x9F"), "gr%c3%b6%c3%9f");
}

TEST(StringUrlEncode, EncodesControlBytes) {
    EXPECT_EQ(CPluginHelper::stringurlencode("a\0b"s), "a%00b");
    EXPECT_EQ(CPluginHelper::stringurlencode("\x02\t\n\r\x15\x17\x1F\x7F"), "%02%09%0a%0d%15%17%1f%7f");
}

TEST(StringUrlEncode, DropsFourBytesEvenWithinACharacter) {
    EXPECT_EQ(CPluginHelper::stringurlencode("\x16"), "");
    EXPECT_EQ(CPluginHelper::stringurlencode("\x16\x01\xEE\xBE\x16"), "");
    EXPECT_EQ(CPluginHelper::stringurlencode("g\x01h\x16i\xBEj\xEEk"), "ghijk");
    EXPECT_EQ(CPluginHelper::stringurlencode("\xC3\xBE"), "%c3");
    EXPECT_EQ(CPluginHelper::stringurlencode("\xBD\xBF\xED\xEF"), "%bd%bf%ed%ef");
}

TEST(StringUrlEncode, EmptyTextStaysEmpty) {
    EXPECT_EQ(CPluginHelper::stringurlencode(""), "");
}

TEST(StringUrlEncode, MayBeAssignedToItsArgument) {
    std::string text = "a/b";
    text = CPluginHelper::stringurlencode(text);
    EXPECT_EQ(text, "a%2fb");
    text = CPluginHelper::stringurlencode(text);
    EXPECT_EQ(text, "a%252fb");
}

TEST(StringUrlEncode, DoesNotDependOnTheGlobalLocale) {
    const GlobalLocale locale(PI::Test::OddLocale());
    EXPECT_EQ(CPluginHelper::stringurlencode("xyz XYZ/\xE4"), "xyz XYZ%2f%e4");
}

// --- GenXMLNodeConformantString

std::string Conformant(const std::string& in) {
    std::string out = "left over";
    EXPECT_EQ(CPluginHelper::GenXMLNodeConformantString(in, out), 0);
    return out;
}

TEST(GenXMLNodeConformantString, RemovesTenCharactersAndNoOtherByte) {
    const std::string removed = " #()./:<=>";
    std::string rest;
    for (const char character : AllBytes()) {
        const bool isRemoved = removed.find(character) != std::string::npos;
        const std::string expected(isRemoved ? 0 : 1, character);
        EXPECT_EQ(Conformant(std::string(1, character)), expected) << static_cast<int>(character);
        rest += expected;
    }
    EXPECT_EQ(rest.size(), 246u);
    EXPECT_EQ(Conformant(AllBytes()), rest);
}

TEST(GenXMLNodeConformantString, LeavesWhatStandsBetween) {
    EXPECT_EQ(Conformant("RAID 5 (Array #1)"), "RAID5Array1");
    EXPECT_EQ(Conformant("  a  b  "), "ab");
    EXPECT_EQ(Conformant("a<b>c=d/e:f.g"), "abcdefg");
}

TEST(GenXMLNodeConformantString, OtherPunctuationAndHighBytesPass) {
    EXPECT_EQ(Conformant("a-b_c,d;e&f\"g'h\t\xC3\xA4"), "a-b_c,d;e&f\"g'h\t\xC3\xA4");
    EXPECT_EQ(Conformant("a\0 b"s), "a\0b"s);
}

TEST(GenXMLNodeConformantString, EmptiesTheResultOfEarlier) {
    EXPECT_EQ(Conformant(""), "");
    EXPECT_EQ(Conformant(" #()./:<=>"), "");
}

TEST(GenXMLNodeConformantString, SameStringMayBeInAndOut) {
    std::string text = "RAID 5 (Array #1)";
    EXPECT_EQ(CPluginHelper::GenXMLNodeConformantString(text, text), 0);
    EXPECT_EQ(text, "RAID5Array1");
}

// --- MatchNLS

constexpr int id = 12345;

class MatchNLS : public testing::Test {
protected:
    MatchNLS() { CLanguageSupport::Clear(); }
    ~MatchNLS() override { CLanguageSupport::Clear(); }

    static bool Matches(const std::string& text, const std::string& resource, bool conformant = false) {
        CLanguageSupport::SetString(id, resource);
        return CPluginHelper::MatchNLS(text, id, conformant);
    }
};

/// Pairs the lower and upper letters of ISO 8859-1, above 127 too.
class Latin1 : public std::ctype<char> {
protected:
    char do_toupper(char character) const override {
        const auto byte = static_cast<unsigned char>(character);
        const bool isLower = (byte >= 'a' && byte <= 'z') || (byte >= 0xE0 && byte <= 0xFE && byte != 0xF7);
        return isLower ? static_cast<char>(byte - 0x20) : character;
    }
};

TEST_F(MatchNLS, IgnoresCase) {
    EXPECT_TRUE(Matches("Rebuild", "Rebuild"));
    EXPECT_TRUE(Matches("rEBUILD", "Rebuild"));
    EXPECT_FALSE(Matches("Rebuilt", "Rebuild"));
}

TEST_F(MatchNLS, LengthsMustAgree) {
    EXPECT_FALSE(Matches("Rebuil", "Rebuild"));
    EXPECT_FALSE(Matches("Rebuild ", "Rebuild"));
    EXPECT_FALSE(Matches("", "Rebuild"));
    EXPECT_FALSE(Matches("Rebuild", ""));
    EXPECT_FALSE(Matches("Rebuild\0"s, "Rebuild"));
    EXPECT_FALSE(Matches("a\0b"s, "a\0c"s));
    EXPECT_TRUE(Matches("a\0b"s, "A\0B"s));
}

TEST_F(MatchNLS, UnknownResourceIsTheEmptyText) {
    EXPECT_FALSE(CPluginHelper::MatchNLS("Rebuild", id, false));
    EXPECT_TRUE(CPluginHelper::MatchNLS("", id, false));
    EXPECT_TRUE(CPluginHelper::MatchNLS("", id, true));
}

TEST_F(MatchNLS, ConformantComparesWithTheElementName) {
    EXPECT_TRUE(Matches("raid5array1", "RAID 5 (Array #1)", true));
    EXPECT_FALSE(Matches("raid5array1", "RAID 5 (Array #1)", false));
    EXPECT_TRUE(Matches("raid 5 (array #1)", "RAID 5 (Array #1)", false));
}

TEST_F(MatchNLS, ConformantCleansTheResourceOnly) {
    EXPECT_FALSE(Matches("RAID 5 (Array #1)", "RAID 5 (Array #1)", true));
    EXPECT_FALSE(Matches("RAID 5", "RAID5", true));
    EXPECT_TRUE(Matches("", " #()./:<=>", true));
    EXPECT_FALSE(Matches("", " #()./:<=>", false));
}

TEST_F(MatchNLS, AsksForTheGivenNumber) {
    CLanguageSupport::SetString(1, "one");
    CLanguageSupport::SetString(2, "two");
    EXPECT_TRUE(CPluginHelper::MatchNLS("one", 1, false));
    EXPECT_TRUE(CPluginHelper::MatchNLS("two", 2, false));
    EXPECT_FALSE(CPluginHelper::MatchNLS("two", 1, false));
}

TEST_F(MatchNLS, NegativeNumbersAreTheHighestUnsignedOnes) {
    CLanguageSupport::SetString(UINT_MAX, "last");
    EXPECT_TRUE(CPluginHelper::MatchNLS("LAST", -1, false));
    EXPECT_FALSE(CPluginHelper::MatchNLS("LAST", 1, false));
}

TEST_F(MatchNLS, ClassicLocaleKnowsAsciiLettersOnly) {
    const GlobalLocale locale(std::locale::classic());
    for (const char first : AllBytes()) {
        for (const char second : AllBytes()) {
            const bool bothLetters = (first | 0x20) >= 'a' && (first | 0x20) <= 'z';
            const bool expected = first == second || (bothLetters && (first ^ second) == 0x20);
            ASSERT_EQ(Matches(std::string(1, first), std::string(1, second)), expected)
                << static_cast<int>(first) << " " << static_cast<int>(second);
        }
    }
}

TEST_F(MatchNLS, TakesUpperCaseFromTheGlobalLocale) {
    const GlobalLocale locale(PI::Test::OddLocale());
    EXPECT_TRUE(Matches("abc", "xyz"));
    EXPECT_TRUE(Matches("abc", "!!!"));
    EXPECT_TRUE(Matches("!!!", "abc"));
    EXPECT_FALSE(Matches("abc", "ABC"));
    EXPECT_TRUE(Matches("a b", "c d"));
    EXPECT_TRUE(Matches("ab", "c d", true));
}

TEST_F(MatchNLS, TakesUpperCaseOfHighBytesFromTheGlobalLocale) {
    EXPECT_FALSE(Matches("t\xFCr", "T\xDCR"));
    const GlobalLocale locale(std::locale(std::locale::classic(), new Latin1));
    EXPECT_TRUE(Matches("t\xFCr", "T\xDCR"));
    EXPECT_FALSE(Matches("\xF7", "\xD7"));
    EXPECT_FALSE(Matches("\xFF", "\xDF"));
}

TEST_F(MatchNLS, FollowsAChangeOfTheGlobalLocale) {
    EXPECT_FALSE(Matches("abc", "xyz"));
    {
        const GlobalLocale locale(PI::Test::OddLocale());
        EXPECT_TRUE(Matches("abc", "xyz"));
    }
    EXPECT_FALSE(Matches("abc", "xyz"));
}

// --- ValidatePasswordStrength

/// Whether a password is strong, and checks that it is left alone.
bool IsStrong(const std::string& password) {
    std::string passed = password;
    const bool strong = CPluginHelper::ValidatePasswordStrength(passed);
    EXPECT_EQ(passed, password);
    return strong;
}

TEST(ValidatePasswordStrength, EightToThirtyTwoBytes) {
    for (std::size_t length = 4; length <= 70; ++length) {
        EXPECT_EQ(IsStrong("Aa1!" + std::string(length - 4, 'x')), length >= 8 && length <= 32) << length;
    }
    EXPECT_FALSE(IsStrong("Aa1!xyz"));
    EXPECT_TRUE(IsStrong("Aa1!wxyz"));
    EXPECT_TRUE(IsStrong("Aa1!56789012345678901234567890ab"));
    EXPECT_FALSE(IsStrong("Aa1!56789012345678901234567890abc"));
    EXPECT_FALSE(IsStrong(""));
}

TEST(ValidatePasswordStrength, BytesCountNotCharacters) {
    EXPECT_TRUE(IsStrong("Aa1!\xC3\xA4\xC3\xB6"));
    EXPECT_FALSE(IsStrong("Aa1!" + std::string(27, 'x') + "\xC3\xA4"));
}

TEST(ValidatePasswordStrength, AllFourClassesMustOccur) {
    for (int classes = 0; classes < 16; ++classes) {
        const std::string password = std::string(classes & 1 ? "AZ" : "  ") + (classes & 2 ? "az" : "  ") +
                                     (classes & 4 ? "09" : "  ") + (classes & 8 ? "!~" : "  ");
        EXPECT_EQ(IsStrong(password), classes == 15) << password;
    }
}

TEST(ValidatePasswordStrength, EveryByteCountsForItsClassOnly) {
    struct Class {
        std::string m_Members;
        std::string m_Without;  // seven characters of the other classes
    };
    const Class classes[] = {{"ABCDEFGHIJKLMNOPQRSTUVWXYZ", "aaa11!!"},
                             {"abcdefghijklmnopqrstuvwxyz", "AAA11!!"},
                             {"0123456789", "AAAaa!!"},
                             {"!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~", "AAAaa11"}};
    for (const Class& one : classes) {
        for (const char byte : AllBytes()) {
            const bool isMember = one.m_Members.find(byte) != std::string::npos;
            EXPECT_EQ(IsStrong(one.m_Without + byte), isMember) << one.m_Members << " " << int{byte};
            EXPECT_EQ(IsStrong(byte + one.m_Without), isMember) << one.m_Members << " " << int{byte};
        }
    }
}

TEST(ValidatePasswordStrength, OtherBytesAreAllowed) {
    for (int byte = 0; byte < 256; ++byte) {
        EXPECT_TRUE(IsStrong("Aa" + std::string(4, static_cast<char>(byte)) + "1!")) << byte;
    }
}

TEST(ValidatePasswordStrength, BlankIsNoSpecialCharacter) {
    EXPECT_FALSE(IsStrong("Abcdef 12"));
    EXPECT_TRUE(IsStrong("Abcdef_12"));
}

TEST(ValidatePasswordStrength, EveryPunctuationCharacterIsSpecial) {
    const std::string punctuation = "!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~";
    ASSERT_EQ(punctuation.size(), 32u);
    for (const char character : punctuation) {
        EXPECT_TRUE(IsStrong("Abcdef1" + std::string(1, character))) << character;
    }
}

TEST(ValidatePasswordStrength, DoesNotDependOnTheGlobalLocale) {
    const GlobalLocale locale(PI::Test::OddLocale());
    EXPECT_TRUE(IsStrong("Xxxxxx1!"));
    EXPECT_FALSE(IsStrong("xxxxxx1!"));
}

// --- HexDump

std::string Dump(std::vector<unsigned char> data, unsigned long first, unsigned long end) {
    std::string out = "left over";
    EXPECT_TRUE(CPluginHelper::HexDump(out, data.data(), first, end));
    return out;
}

TEST(HexDump, UpperCaseBytesWithBlanksBetween) {
    EXPECT_EQ(Dump({0x0A, 0x1B, 0xFF}, 0, 3), "0A 1B FF");
    EXPECT_EQ(Dump({0x00, 0x41}, 0, 2), "00 41");
}

TEST(HexDump, OneByteIsTwoDigits) {
    EXPECT_EQ(Dump({0x0A, 0x1B, 0xFF}, 1, 2), "1B");
    EXPECT_EQ(Dump({0x07}, 0, 1), "07");
}

TEST(HexDump, EmptyRangeEmptiesTheResult) {
    EXPECT_EQ(Dump({0x0A, 0x1B, 0xFF}, 0, 0), "");
    EXPECT_EQ(Dump({0x0A, 0x1B, 0xFF}, 3, 3), "");
    EXPECT_EQ(Dump({0x0A, 0x1B, 0xFF}, 3, 2), "");
    EXPECT_EQ(Dump({0x0A, 0x1B, 0xFF}, ULONG_MAX, 0), "");
    EXPECT_EQ(Dump({0x0A, 0x1B, 0xFF}, ULONG_MAX, ULONG_MAX), "");

    std::string out = "left over";
    EXPECT_TRUE(CPluginHelper::HexDump(out, nullptr, 0, 0));
    EXPECT_EQ(out, "");
}

TEST(HexDump, OneMebibyte) {
    std::mt19937 random(PI::Test::RandomSeed());
    std::vector<unsigned char> data(1 << 20);
    std::vector<std::string> formatted;
    for (unsigned byte = 0; byte < 256; ++byte) {
        formatted.push_back((boost::format("%02X ") % byte).str());
    }
    std::string expected;
    for (unsigned char& byte : data) {
        byte = static_cast<unsigned char>(PI::Test::Below(random, 256));
        expected += formatted[byte];
    }
    expected.pop_back();

    // Compared without printing megabytes.
    EXPECT_TRUE(Dump(data, 0, data.size()) == expected);
}

TEST(HexDump, LeavesTheDataAlone) {
    std::vector<unsigned char> data = {1, 2, 3};
    std::string out;
    CPluginHelper::HexDump(out, data.data(), 0, data.size());
    EXPECT_EQ(data, (std::vector<unsigned char>{1, 2, 3}));
}

// --- IsAdapterType

TEST(IsAdapterType, NineNumbersAndNoOther) {
    const std::set<int> adapters = {19007, 19009, 19010, 19012, 19037, 19038, 19039, 19042, 19051};
    for (int type = -20000; type <= 70000; ++type) {
        ASSERT_EQ(CPluginHelper::IsAdapterType(static_cast<PI::_OBJECT_TYPE>(type)),
                  adapters.count(type) == 1)
            << type;
    }
    for (const int type : {INT_MIN, INT_MAX}) {
        EXPECT_FALSE(CPluginHelper::IsAdapterType(static_cast<PI::_OBJECT_TYPE>(type))) << type;
    }
}

TEST(IsAdapterType, NamedTypes) {
    using namespace PI::ObjectType;
    for (const PI::_OBJECT_TYPE type : {ADAPTER_1, ADAPTER_2, ADAPTER_3, ADAPTER_4, ADAPTER_5, ADAPTER_6,
                                        ADAPTER_7, ADAPTER_8, ADAPTER_9}) {
        EXPECT_TRUE(CPluginHelper::IsAdapterType(type)) << type;
    }
    EXPECT_FALSE(CPluginHelper::IsAdapterType(UNDEFINED));
    EXPECT_FALSE(CPluginHelper::IsAdapterType(TASK));
}

}  // namespace
