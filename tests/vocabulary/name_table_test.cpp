// SPDX-License-Identifier: Apache-2.0

#include "vocabulary/name_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <utility>

#include "support/random_seed.h"

namespace {

using PI::NameTable;
using PI::Test::Below;
using PI::Test::RandomSeed;

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

TEST(NameTable, RandomTablesAnswerAsAMapDoes) {
    std::mt19937 random(RandomSeed());
    // Numbers near 0, near the bounds, and around the gap that the table's index bridges.
    const auto number = [&random] {
        constexpr int FIRSTS[] = {0, -5, 1010, 1030, 2050, 40000, INT_MAX - 20, INT_MIN};
        return FIRSTS[Below(random, static_cast<std::uint32_t>(std::size(FIRSTS)))] +
               static_cast<int>(Below(random, 20));
    };
    constexpr const char* NAMES[] = {"", "one", "two", "a name that does not fit into the string itself"};
    for (int round = 0; round < 500; ++round) {
        std::pair<const int, const char*> pairs[] = {
            {number(), NAMES[Below(random, 4)]}, {number(), NAMES[Below(random, 4)]},
            {number(), NAMES[Below(random, 4)]}, {number(), NAMES[Below(random, 4)]},
            {number(), NAMES[Below(random, 4)]}, {number(), NAMES[Below(random, 4)]},
            {number(), NAMES[Below(random, 4)]}, {number(), NAMES[Below(random, 4)]}};
        NameTable table = {pairs[0], pairs[1], pairs[2], pairs[3], pairs[4], pairs[5], pairs[6], pairs[7]};
        std::map<int, std::string> map(std::begin(pairs), std::end(pairs));

        for (int step = 0; step < 100; ++step) {
            const int asked = number();
            ASSERT_EQ(table.Name(asked), map[asked]) << asked;
            ASSERT_EQ(table.size(), map.size());
            const char* name = NAMES[Below(random, 4)];
            const auto found =
                std::find_if(map.begin(), map.end(), [&](const auto& row) { return row.second == name; });
            ASSERT_EQ(table.Number(name, 123456), found == map.end() ? 123456 : found->first) << name;
        }
    }
}

}  // namespace
