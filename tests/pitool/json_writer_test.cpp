// SPDX-License-Identifier: Apache-2.0

#include "print/json.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

using namespace pitool;

namespace {

template <class Type>
std::string Json(const Type& value) {
    JsonWriter json;
    json.Value(value);
    return json.Take();
}

}  // namespace

TEST(JsonWriter, GivesTheTwoOutermostLevelsALineForEachMember) {
    const std::vector<int> numbers{2, 3};
    EXPECT_EQ(JsonDocument("a command",
                           [&](JsonWriter& json) {
                               json.Objects("objects", numbers, [&](int number) {
                                   json.Member("number", number);
                                   json.Member("list", std::vector<std::optional<bool>>{true, {}});
                                   json.Member("empty", [] {});
                               });
                               json.Name("values").List(
                                   numbers, [&](int number) { json.Raw(number == 2 ? "2" : "[]"); });
                               json.Member("object", [&] { json.Member("c", "d"); });
                               json.Name("ready").Raw("[1, 2]");
                           }),
              "{\n"
              "  \"format\": \"a command\",\n"
              "  \"version\": 1,\n"
              "  \"objects\": [\n"
              "    {\"number\":2,\"list\":[true,null],\"empty\":{}},\n"
              "    {\"number\":3,\"list\":[true,null],\"empty\":{}}\n"
              "  ],\n"
              "  \"values\": [\n"
              "    2,\n"
              "    []\n"
              "  ],\n"
              "  \"object\": {\n"
              "    \"c\": \"d\"\n"
              "  },\n"
              "  \"ready\": [1, 2]\n"
              "}\n");
}

TEST(JsonWriter, NothingIsBetweenTheBracketsOfWhatIsEmpty) {
    JsonWriter json;
    json.Value([&] {
        json.Member("a", std::vector<int>());
        json.Member("b", [] {});
    });
    EXPECT_EQ(json.Take(), "{\n  \"a\": [],\n  \"b\": {}\n}");
}

TEST(JsonWriter, APieceOfADocumentHasTheLinesOfItsDepth) {
    JsonWriter json(2);
    json.Value([&] { json.Member("a", 1); });
    EXPECT_EQ(json.Take(), "\n    {\"a\":1}");
}

TEST(JsonWriter, EscapesWhatIsNoPrintableAscii) {
    EXPECT_EQ(Json(""), R"("")");
    EXPECT_EQ(Json(R"(a"b\c/d)"), R"("a\"b\\c/d")");
    EXPECT_EQ(Json("\n\t\r\b\x1F\x20\x7E\x7F"), R"("\n\t\u000d\u0008\u001f ~\u007f")");
    EXPECT_EQ(Json(std::string_view("a\0b", 3)), R"("a\u0000b")");
    EXPECT_EQ(Json("\xC2\x80\xC3\xA4\xEF\xBF\xBF"), R"("\u0080\u00e4\uffff")");
    EXPECT_EQ(Json("\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"), R"("\ud800\udc00\udbff\udfff")");
}

TEST(JsonWriter, ReplacesWhatIsNoUtf8) {
    EXPECT_EQ(Json("\xFF"), R"("\ufffd")");
    EXPECT_EQ(Json("a\xC3"), R"("a\ufffd")");
    EXPECT_EQ(Json("\xC0\x80"), R"("\ufffd\ufffd")");
    EXPECT_EQ(Json("\xED\xA0\x80z"), R"("\ufffd\ufffd\ufffdz")");  // a surrogate
}

TEST(JsonWriter, WritesValuesOfEveryKind) {
    EXPECT_EQ(Json(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
    EXPECT_EQ(Json(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(Json(std::uint8_t{65}), "65");
    EXPECT_EQ(Json(false), "false");
    EXPECT_EQ(Json(std::string("a")), R"("a")");
    EXPECT_EQ(Json(std::optional(true)), "true");
    EXPECT_EQ(Json(std::optional<bool>()), "null");
    EXPECT_EQ(Json(OrNull("")), "null");
    EXPECT_EQ(Json(OrNull("a")), R"("a")");
}
