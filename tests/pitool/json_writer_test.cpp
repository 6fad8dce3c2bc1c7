// SPDX-License-Identifier: Apache-2.0

#include "print/json.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace pitool;

namespace {

std::string Quoted(std::string_view value) {
    std::string text;
    JsonWriter(text).Text(value);
    return text;
}

std::string Fraction(double value) {
    std::string text;
    JsonWriter(text).Fraction(value);
    return text;
}

}  // namespace

TEST(JsonWriter, GivesTheTwoOutermostLevelsALineForEachMember) {
    std::string text;
    JsonWriter json(text);
    json.BeginObject();
    json.Name("a").Number(std::int64_t{-1});
    json.Name("b").BeginList();
    json.BeginObject();
    json.Name("c").BeginList();
    json.Bool(true);
    json.Null();
    json.EndList();
    json.Name("d").Bool(false);
    json.EndObject();
    json.Number(std::uint64_t{2});
    json.EndList();
    json.Name("e").Text("f");
    json.EndObject();
    EXPECT_EQ(text,
              "{\n"
              "  \"a\": -1,\n"
              "  \"b\": [\n"
              "    {\"c\":[true,null],\"d\":false},\n"
              "    2\n"
              "  ],\n"
              "  \"e\": \"f\"\n"
              "}");
}

TEST(JsonWriter, NothingIsBetweenTheBracketsOfWhatIsEmpty) {
    std::string text;
    JsonWriter json(text);
    json.BeginList();
    json.BeginObject();
    json.EndObject();
    json.BeginList();
    json.EndList();
    json.EndList();
    EXPECT_EQ(text, "[\n  {},\n  []\n]");
    text.clear();
    JsonWriter empty(text);
    empty.BeginObject();
    empty.EndObject();
    EXPECT_EQ(text, "{}");
}

TEST(JsonWriter, APieceOfADocumentHasTheLinesOfItsDepth) {
    std::string text;
    JsonWriter piece(text, 2);
    piece.BeginObject();
    piece.Name("a").Number(std::int64_t{1});
    piece.EndObject();
    EXPECT_EQ(text, "\n    {\"a\":1}");
}

TEST(JsonWriter, TakesJsonThatIsReady) {
    std::string text;
    JsonWriter json(text);
    json.BeginObject();
    json.Name("a").Raw("[1, 2]");
    json.Name("b").Raw("{}");
    json.EndObject();
    EXPECT_EQ(text, "{\n  \"a\": [1, 2],\n  \"b\": {}\n}");
}

TEST(JsonWriter, EscapesWhatIsNoPrintableAscii) {
    EXPECT_EQ(Quoted(""), R"("")");
    EXPECT_EQ(Quoted(R"(a"b\c/d)"), R"("a\"b\\c/d")");
    EXPECT_EQ(Quoted("\n\t\r\b\x1F\x20\x7E\x7F"), R"("\n\t\u000d\u0008\u001f ~\u007f")");
    EXPECT_EQ(Quoted(std::string_view("a\0b", 3)), R"("a\u0000b")");
    EXPECT_EQ(Quoted("\xC2\x80\xC3\xA4\xEF\xBF\xBF"), R"("\u0080\u00e4\uffff")");
    EXPECT_EQ(Quoted("\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"), R"("\ud800\udc00\udbff\udfff")");
}

TEST(JsonWriter, ReplacesWhatIsNoUtf8) {
    EXPECT_EQ(Quoted("\xFF"), R"("\ufffd")");
    EXPECT_EQ(Quoted("a\xC3"), R"("a\ufffd")");
    EXPECT_EQ(Quoted("\xC0\x80"), R"("\ufffd\ufffd")");
    EXPECT_EQ(Quoted("\xED\xA0\x80z"), R"("\ufffdz")");  // a surrogate
}

TEST(JsonWriter, NumbersKeepEveryDigit) {
    std::string text;
    JsonWriter(text).Number(std::numeric_limits<std::uint64_t>::max());
    text += ' ';
    JsonWriter(text).Number(std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(text, "18446744073709551615 -9223372036854775808");
    EXPECT_EQ(Fraction(0.1), "0.1");
    EXPECT_EQ(Fraction(-2.5), "-2.5");
    EXPECT_EQ(Fraction(3), "3");
    EXPECT_EQ(Fraction(1e300), "1e+300");
}

TEST(JsonWriter, WhatIsNotKnownIsNull) {
    EXPECT_EQ(Fraction(std::nan("")), "null");
    EXPECT_EQ(Fraction(std::numeric_limits<double>::infinity()), "null");
    std::string text;
    JsonWriter(text).TextOrNull("");
    JsonWriter(text).TextOrNull("a");
    EXPECT_EQ(text, R"(null"a")");
}
