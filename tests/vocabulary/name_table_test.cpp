#include "vocabulary/name_table.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

using PI::NameTable;

TEST(NameTable, GivesTheNameOfANumber) {
    NameTable table = {{1, "one"}, {20, "twenty"}};

    EXPECT_EQ(table.Name(1), "one");
    EXPECT_EQ(table.Name(20), "twenty");
    EXPECT_EQ(table.size(), 2u);
}

TEST(NameTable, FirstPairOfANumberWins) {
    NameTable table = {{1, "first"}, {2, "two"}, {1, "second"}};

    EXPECT_EQ(table.Name(1), "first");
    EXPECT_EQ(table.Number("second", -1), -1);
    EXPECT_EQ(table.size(), 2u);
}

TEST(NameTable, PairsNeedNotAscend) {
    NameTable table = {{30, "thirty"}, {10, "ten"}, {20, "twenty"}};

    EXPECT_EQ(table.Name(10), "ten");
    EXPECT_EQ(table.Name(20), "twenty");
    EXPECT_EQ(table.Name(30), "thirty");
}

TEST(NameTable, UnknownNumberIsRememberedOnce) {
    NameTable table = {{1, "one"}};

    const std::string& first = table.Name(2);
    EXPECT_EQ(first, "");
    EXPECT_EQ(table.size(), 2u);

    const std::string& second = table.Name(2);
    EXPECT_EQ(&second, &first);
    EXPECT_EQ(table.size(), 2u);
}

TEST(NameTable, KnownNumberDoesNotGrowTheTable) {
    NameTable table = {{1, "one"}};

    const std::string& first = table.Name(1);
    EXPECT_EQ(&table.Name(1), &first);
    EXPECT_EQ(table.size(), 1u);
}

TEST(NameTable, ReferencesOutliveGrowth) {
    NameTable table = {{1, "one"}};
    const std::string& one = table.Name(1);

    for (int number = 2; number < 5000; ++number) {
        table.Name(number);
    }

    EXPECT_EQ(&table.Name(1), &one);
    EXPECT_EQ(one, "one");
    EXPECT_EQ(table.size(), 4999u);
}

TEST(NameTable, TakesTheSmallestAndLargestNumbers) {
    NameTable table = {{INT_MAX, "largest"}, {INT_MIN, "smallest"}};

    EXPECT_EQ(table.Name(INT_MAX), "largest");
    EXPECT_EQ(table.Name(INT_MIN), "smallest");
    EXPECT_EQ(table.Name(INT_MAX - 1), "");
    EXPECT_EQ(table.Name(INT_MIN + 1), "");
    EXPECT_EQ(table.Number("largest", 0), INT_MAX);
    EXPECT_EQ(table.Number("smallest", 0), INT_MIN);
}

TEST(NameTable, SmallestNumberOfANameWins) {
    const NameTable table = {{7, "name"}, {5, "name"}, {6, "name"}};

    EXPECT_EQ(table.Number("name", -1), 5);
}

TEST(NameTable, UnknownNameGivesTheDefaultAndIsNotRemembered) {
    const NameTable table = {{1, "one"}};

    EXPECT_EQ(table.Number("two", 42), 42);
    EXPECT_EQ(table.Number("", 42), 42);
    EXPECT_EQ(table.size(), 1u);
}

TEST(NameTable, EmptyTableGivesTheDefault) {
    const NameTable table = {};

    EXPECT_EQ(table.Number("", 42), 42);
    EXPECT_EQ(table.Number("one", -42), -42);
    EXPECT_EQ(table.size(), 0u);
}

TEST(NameTable, RememberedNumbersTakePartInTheSearch) {
    NameTable table = {{1, "one"}};

    table.Name(9);
    EXPECT_EQ(table.Number("", 42), 9);
    table.Name(-9);
    EXPECT_EQ(table.Number("", 42), -9);
}

TEST(NameTable, NameIsComparedByteForByte) {
    const NameTable table = {{1, "one"}};

    EXPECT_EQ(table.Number("One", 0), 0);
    EXPECT_EQ(table.Number("on", 0), 0);
    EXPECT_EQ(table.Number("ones", 0), 0);
    EXPECT_EQ(table.Number(" one", 0), 0);
    EXPECT_EQ(table.Number(std::string("one\0", 4), 0), 0);
    EXPECT_EQ(table.Number("one", 0), 1);
}

}  // namespace
