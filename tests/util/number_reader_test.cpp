// SPDX-License-Identifier: Apache-2.0

#include "util/number_reader.h"

#include <gtest/gtest.h>

#include <limits>
#include <locale>
#include <optional>
#include <sstream>
#include <string>

#include "support/global_locale.h"

namespace {

using namespace PI;
using namespace PI::Test;

/// A stream of its own for every text.
template <class Number>
std::optional<Number> ReadPlainly(const std::string& text) {
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    Number number = {};
    stream >> std::dec >> std::skipws >> std::noboolalpha >> number;
    const bool isConsumed = stream.rdbuf()->sgetc() == std::istringstream::traits_type::eof();
    return stream.fail() || !isConsumed ? std::nullopt : std::optional<Number>(number);
}

template <class Number>
void ExpectAllWaysAgree(NumberReader& reader, const std::string& text) {
    const std::optional<Number> expected = ReadPlainly<Number>(text);
    EXPECT_EQ(reader.Read<Number>(text), expected) << "\"" << text << "\"";
    EXPECT_EQ(reader.ReadFromStream<Number>(text), expected) << "\"" << text << "\"";
}

std::optional<std::uint64_t> Unsigned(const std::string& text) {
    return NumberReader().Read<std::uint64_t>(text);
}

std::optional<std::int32_t> Signed(const std::string& text) {
    return NumberReader().Read<std::int32_t>(text);
}

std::optional<bool> Bool(const std::string& text) {
    return NumberReader().Read<bool>(text);
}

/// Groups digits by three and prints other names for the truth values.
class GroupedDigits : public std::numpunct<char> {
protected:
    char do_thousands_sep() const override { return ','; }
    std::string do_grouping() const override { return "\3"; }
    std::string do_truename() const override { return "1,0"; }
};

TEST(NumberReader, ReadsDecimalDigits) {
    EXPECT_EQ(Unsigned("0"), 0U);
    EXPECT_EQ(Unsigned("1024"), 1024U);
    EXPECT_EQ(Unsigned("010"), 10U) << "not octal";
    EXPECT_EQ(Unsigned("0x10"), std::nullopt) << "not hexadecimal";
    EXPECT_EQ(Signed("-5"), -5);
}

TEST(NumberReader, AnEmptyTextIsNoNumber) {
    EXPECT_EQ(Unsigned(""), std::nullopt);
    EXPECT_EQ(Signed(""), std::nullopt);
    EXPECT_EQ(Bool(""), std::nullopt);
    EXPECT_EQ(NumberReader().Read<int>(std::string_view()), std::nullopt);
    EXPECT_EQ(NumberReader().ReadFromStream<int>(std::string_view()), std::nullopt);
}

TEST(NumberReader, SkipsLeadingWhiteSpace) {
    EXPECT_EQ(Unsigned(" 1024"), 1024U);
    EXPECT_EQ(Unsigned(" \t\n\v\f\r1024"), 1024U);
    EXPECT_EQ(Signed("  -5"), -5);
    EXPECT_EQ(Bool(" 0"), false);
}

TEST(NumberReader, TakesNothingBehindTheNumber) {
    EXPECT_EQ(Unsigned("1024 "), std::nullopt);
    EXPECT_EQ(Unsigned("1024K"), std::nullopt);
    EXPECT_EQ(Unsigned("10 24"), std::nullopt);
    EXPECT_EQ(Unsigned("1,024"), std::nullopt);
    EXPECT_EQ(Unsigned("1.0"), std::nullopt);
    EXPECT_EQ(Unsigned("1e3"), std::nullopt);
    EXPECT_EQ(Signed("5-"), std::nullopt);
    EXPECT_EQ(Bool("1 "), std::nullopt);
    EXPECT_EQ(Unsigned(std::string("12\0", 3)), std::nullopt);
    EXPECT_EQ(Unsigned(std::string("12\0"
                                   "34",
                                   5)),
              std::nullopt);
    EXPECT_EQ(Unsigned("12\xFF"), std::nullopt);
}

TEST(NumberReader, ATextWithoutANumberIsNone) {
    EXPECT_EQ(Unsigned(" "), std::nullopt);
    EXPECT_EQ(Unsigned("K"), std::nullopt);
    EXPECT_EQ(Unsigned("+"), std::nullopt);
    EXPECT_EQ(Signed("-"), std::nullopt);
    EXPECT_EQ(Signed("- 5"), std::nullopt);
    EXPECT_EQ(Signed("--5"), std::nullopt);
    EXPECT_EQ(Bool("true"), std::nullopt);
}

TEST(NumberReader, TakesAPlusSign) {
    EXPECT_EQ(Unsigned("+5"), 5U);
    EXPECT_EQ(Signed("+5"), 5);
    EXPECT_EQ(Bool("+1"), true);
}

TEST(NumberReader, ANegativeNumberWrapsWhereNoSignIsStored) {
    EXPECT_EQ(Unsigned("-1"), 0xFFFFFFFFFFFFFFFF);
    EXPECT_EQ(Unsigned("-0"), 0U);
    EXPECT_EQ(Unsigned("-18446744073709551615"), 1U);
    EXPECT_EQ(Unsigned("-18446744073709551616"), std::nullopt);
}

TEST(NumberReader, ANumberThatDoesNotFitIsNone) {
    EXPECT_EQ(Unsigned("18446744073709551615"), 0xFFFFFFFFFFFFFFFF);
    EXPECT_EQ(Unsigned("18446744073709551616"), std::nullopt);
    EXPECT_EQ(Unsigned("99999999999999999999999999"), std::nullopt);
    EXPECT_EQ(Signed("2147483647"), 2147483647);
    EXPECT_EQ(Signed("2147483648"), std::nullopt);
    EXPECT_EQ(Signed("-2147483648"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(Signed("-2147483649"), std::nullopt);
}

TEST(NumberReader, ABoolIsZeroOrOne) {
    EXPECT_EQ(Bool("0"), false);
    EXPECT_EQ(Bool("1"), true);
    EXPECT_EQ(Bool("00"), false);
    EXPECT_EQ(Bool("01"), true);
    EXPECT_EQ(Bool("2"), std::nullopt);
    EXPECT_EQ(Bool("-1"), std::nullopt);
    EXPECT_EQ(Bool("18446744073709551616"), std::nullopt);
}

TEST(NumberReader, AFailureLeavesNothingBehind) {
    NumberReader reader;
    EXPECT_EQ(reader.Read<std::uint64_t>("12K"), std::nullopt);
    EXPECT_EQ(reader.Read<std::uint64_t>(" 7"), 7U);
    EXPECT_EQ(reader.Read<bool>("word"), std::nullopt);
    EXPECT_EQ(reader.Read<std::int32_t>("99999999999"), std::nullopt);
    EXPECT_EQ(reader.Read<bool>("1"), true);
    EXPECT_EQ(reader.Read<std::int32_t>(" -7"), -7);
}

TEST(NumberReader, ReadsOnlyWhatItIsGiven) {
    const std::string digits = "123456";
    EXPECT_EQ(NumberReader().Read<int>(std::string_view(digits).substr(1, 2)), 23);
    EXPECT_EQ(NumberReader().ReadFromStream<int>(std::string_view(digits).substr(1, 2)), 23);
}

TEST(NumberReader, TheGlobalLocaleDoesNotMatter) {
    const GlobalLocale grouped(std::locale(std::locale::classic(), new GroupedDigits));
    NumberReader reader;
    ExpectAllWaysAgree<std::uint64_t>(reader, " 1024");
    EXPECT_EQ(reader.Read<std::uint64_t>(" 1024"), 1024U);
    EXPECT_EQ(reader.Read<std::uint64_t>(" 1,024"), std::nullopt);
    EXPECT_EQ(reader.Read<bool>("1"), true);

    const GlobalLocale odd(OddLocale());
    EXPECT_EQ(NumberReader().Read<std::uint64_t>(" 1024"), 1024U);
    EXPECT_EQ(NumberReader().Read<std::uint64_t>("x1024"), std::nullopt);
}

TEST(NumberReader, EveryTextOfUpToThreeCharactersReadsAsFromAPlainStream) {
    // One of each class of characters, and a byte beyond ASCII.
    const std::string characters("019 \t+-xK.,\0\xFF", 13);
    NumberReader reader;
    const auto check = [&](const std::string& text) {
        ExpectAllWaysAgree<std::uint64_t>(reader, text);
        ExpectAllWaysAgree<std::int32_t>(reader, text);
        ExpectAllWaysAgree<bool>(reader, text);
    };
    for (const char first : characters) {
        check({first});
        for (const char second : characters) {
            check({first, second});
            for (const char third : characters) {
                check({first, second, third});
            }
        }
    }
}

}  // namespace
