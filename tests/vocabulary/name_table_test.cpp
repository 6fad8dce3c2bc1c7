// SPDX-License-Identifier: Apache-2.0

#include "vocabulary/name_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "support/random_seed.h"
#include "vocabulary/packed_rows.h"

namespace {

using PI::NameTable;
using PI::Test::Below;
using PI::Test::RandomSeed;

struct NamedNumber {
    int m_Number;
    const char* m_Name;
};

/// Rows as the lists of the library keep them.
class Rows {
public:
    template <std::size_t Count>
    explicit Rows(const NamedNumber (&rows)[Count]) {
        for (const NamedNumber& row : rows) {
            m_Rows.push_back({row.m_Number, 0, static_cast<std::uint32_t>(m_Text.size())});
            m_Text.append(row.m_Name).push_back('\0');
        }
    }

    PI::CVocabulary List() const { return PI::CVocabulary(m_Rows.data(), m_Rows.size(), m_Text.data()); }

private:
    std::vector<PI::_PACKED_ROW> m_Rows;
    std::string m_Text;
};

class Table : Rows, public NameTable {
public:
    template <std::size_t Count>
    explicit Table(const NamedNumber (&rows)[Count]) : Rows(rows), NameTable(List()) {}
};

constexpr NamedNumber ONE[] = {{1, "one"}};

TEST(NameTable, GivesTheNameOfANumber) {
    constexpr NamedNumber ROWS[] = {{1, "one"}, {20, "twenty"}};
    Table table(ROWS);

    EXPECT_EQ(table.Name(1), "one");
    EXPECT_EQ(table.Name(20), "twenty");
    EXPECT_EQ(&table.Name(20), &table.Name(20));
}

TEST(NameTable, FirstRowOfANumberWins) {
    constexpr NamedNumber ROWS[] = {{1, "first"}, {2, "two"}, {1, "second"}};
    Table table(ROWS);

    EXPECT_EQ(table.Name(1), "first");
    EXPECT_EQ(table.Number("first", -1), 1);
    EXPECT_EQ(table.Number("second", -1), -1);
}

TEST(NameTable, RowsNeedNotAscend) {
    constexpr NamedNumber ROWS[] = {{30, "thirty"}, {10, "ten"}, {20, "twenty"}};
    Table table(ROWS);

    EXPECT_EQ(table.Name(10), "ten");
    EXPECT_EQ(table.Name(20), "twenty");
    EXPECT_EQ(table.Name(30), "thirty");
}

TEST(NameTable, UnknownNumberIsRememberedOnce) {
    Table table(ONE);

    const std::string& first = table.Name(2);
    EXPECT_EQ(first, "");
    EXPECT_EQ(&table.Name(2), &first);
    EXPECT_NE(&table.Name(3), &first);
}

TEST(NameTable, ReferencesOutliveGrowth) {
    Table table(ONE);
    const std::string& one = table.Name(1);
    const std::string& two = table.Name(2);

    for (int number = 3; number < 5000; ++number) {
        table.Name(number);
    }

    EXPECT_EQ(&table.Name(1), &one);
    EXPECT_EQ(one, "one");
    EXPECT_EQ(&table.Name(2), &two);
    EXPECT_EQ(two, "");
}

TEST(NameTable, TakesTheSmallestAndLargestNumbers) {
    constexpr NamedNumber ROWS[] = {{INT_MAX, "largest"}, {INT_MIN, "smallest"}};
    Table table(ROWS);

    EXPECT_EQ(table.Name(INT_MAX), "largest");
    EXPECT_EQ(table.Name(INT_MIN), "smallest");
    EXPECT_EQ(table.Name(INT_MAX - 1), "");
    EXPECT_EQ(table.Name(INT_MIN + 1), "");
    EXPECT_EQ(table.Number("largest", 0), INT_MAX);
    EXPECT_EQ(table.Number("smallest", 0), INT_MIN);
}

TEST(NameTable, SmallestNumberOfANameWins) {
    constexpr NamedNumber ROWS[] = {{7, "name"}, {5, "name"}, {6, "name"}};
    Table table(ROWS);

    EXPECT_EQ(table.Number("name", -1), 5);
}

TEST(NameTable, UnknownNameGivesTheDefaultAndIsNotRemembered) {
    Table table(ONE);

    EXPECT_EQ(table.Number("two", 42), 42);
    EXPECT_EQ(table.Number("two", 43), 43);
    EXPECT_EQ(table.Number("", 42), 42);
}

TEST(NameTable, RememberedNumbersBearTheEmptyName) {
    Table table(ONE);

    table.Name(9);
    EXPECT_EQ(table.Number("", 42), 9);
    table.Name(10);
    EXPECT_EQ(table.Number("", 42), 9);
    table.Name(-9);
    EXPECT_EQ(table.Number("", 42), -9);
}

TEST(NameTable, SmallerOfAKnownAndARememberedNumberBearsTheEmptyName) {
    constexpr NamedNumber ROWS[] = {{5, ""}};
    Table table(ROWS);

    table.Name(6);
    EXPECT_EQ(table.Number("", 42), 5);
    table.Name(4);
    EXPECT_EQ(table.Number("", 42), 4);
}

TEST(NameTable, NameIsComparedByteForByte) {
    Table table(ONE);

    EXPECT_EQ(table.Number("One", 0), 0);
    EXPECT_EQ(table.Number("on", 0), 0);
    EXPECT_EQ(table.Number("ones", 0), 0);
    EXPECT_EQ(table.Number(" one", 0), 0);
    EXPECT_EQ(table.Number(std::string("one\0", 4), 0), 0);
    EXPECT_EQ(table.Number("one", 0), 1);
}

/// Answers of a table against those of a map that is asked the plain way.
class PlainTable {
public:
    template <std::size_t Count>
    explicit PlainTable(const NamedNumber (&rows)[Count]) {
        for (const NamedNumber& row : rows) {
            m_Names.emplace(row.m_Number, row.m_Name);
        }
    }

    const std::string& Name(int number) { return m_Names[number]; }

    int Number(const std::string& name, int defaultNumber) const {
        const auto found =
            std::find_if(m_Names.begin(), m_Names.end(), [&](const auto& row) { return row.second == name; });
        return found == m_Names.end() ? defaultNumber : found->first;
    }

private:
    std::map<int, std::string> m_Names;
};

TEST(NameTable, RandomTablesAnswerAsAMapDoes) {
    std::mt19937 random(RandomSeed());
    // Numbers near 0, near the bounds, and in runs that lie far from each other.
    const auto number = [&random] {
        constexpr int FIRSTS[] = {0, -5, 1010, 1030, 2050, 40000, INT_MAX - 20, INT_MIN};
        return FIRSTS[Below(random, static_cast<std::uint32_t>(std::size(FIRSTS)))] +
               static_cast<int>(Below(random, 20));
    };
    constexpr const char* NAMES[] = {"", "one", "two", "a name that does not fit into the string itself"};
    for (int round = 0; round < 500; ++round) {
        NamedNumber rows[60];
        for (NamedNumber& row : rows) {
            row = {number(), NAMES[Below(random, 4)]};
        }
        Table table(rows);
        PlainTable plain(rows);
        for (int step = 0; step < 100; ++step) {
            const int asked = number();
            ASSERT_EQ(table.Name(asked), plain.Name(asked)) << asked;
            const char* name = NAMES[Below(random, 4)];
            ASSERT_EQ(table.Number(name, 123456), plain.Number(name, 123456)) << name;
        }
    }
}

constexpr NamedNumber PROPERTY_IDS[] = {
#define PI_PROPERTY_ID(number, constant, name) {number, name},
#include <pi/vocabulary/property_ids.def>
#undef PI_PROPERTY_ID
};

TEST(NameTable, AListWithAllItsOdditiesAnswersAsAMapDoes) {
    std::mt19937 random(RandomSeed());
    Table table(PROPERTY_IDS);
    PlainTable plain(PROPERTY_IDS);
    for (const NamedNumber& row : PROPERTY_IDS) {
        ASSERT_EQ(table.Name(row.m_Number), plain.Name(row.m_Number)) << row.m_Number;
        ASSERT_EQ(table.Number(row.m_Name, -1), plain.Number(row.m_Name, -1)) << row.m_Name;
        ASSERT_EQ(table.Number(std::string(row.m_Name) + "x", -1), -1) << row.m_Name;
    }
    for (int number = -1; number <= 0x10000; ++number) {
        ASSERT_EQ(table.Name(number), plain.Name(number)) << number;
    }
    for (int i = 0; i < 100000; ++i) {
        const int number = static_cast<int>(random());
        ASSERT_EQ(table.Name(number), plain.Name(number)) << number;
    }
    EXPECT_EQ(table.Number("", 7), plain.Number("", 7));
}

}  // namespace
