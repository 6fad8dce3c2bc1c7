// SPDX-License-Identifier: Apache-2.0

#include "print/table.h"

#include <gtest/gtest.h>

using namespace pitool;

namespace {

std::string Shown(const Table& table, std::size_t columns, std::size_t indent = 0, bool colors = false) {
    Screen screen;
    screen.m_Columns = columns;
    screen.m_Colors = colors;
    return table.Text(screen, indent);
}

/// 38 columns wide.
Table Drives(Table::LastColumn lastColumn = Table::LastColumn::CUT) {
    Table table({{"STATE"}, {"MODEL", Align::LEFT, 1}, {"AGE", Align::RIGHT, 2}, {"REMARK"}}, lastColumn);
    for (const char* text : {"good", "A-1", "3 y", "nothing to act on", "failed", "B", "12 y", "replace"}) {
        table.Add(text);
    }
    return table;
}

}  // namespace

TEST(Table, IsAsWideAsItsContents) {
    const std::string whole =
        "STATE   MODEL   AGE  REMARK\n"
        "good    A-1     3 y  nothing to act on\n"
        "failed  B      12 y  replace\n";
    EXPECT_EQ(Shown(Drives(), 0), whole);
    EXPECT_EQ(Shown(Drives(), 38), whole);
    EXPECT_EQ(Shown(Drives(Table::LastColumn::WRAPPED), 38), whole);
}

TEST(Table, CutsTheLastColumnFirst) {
    EXPECT_EQ(Shown(Drives(), 37),
              "STATE   MODEL   AGE  REMARK\n"
              "good    A-1     3 y  nothing to ac...\n"
              "failed  B      12 y  replace\n");
}

TEST(Table, WrapsTheLastColumnWithinItself) {
    EXPECT_EQ(Shown(Drives(Table::LastColumn::WRAPPED), 37),
              "STATE   MODEL   AGE  REMARK\n"
              "good    A-1     3 y  nothing to act\n"
              "                     on\n"
              "failed  B      12 y  replace\n");
}

TEST(Table, LeavesOutColumnsWhereTheLastOneWouldHaveLessThan12) {
    EXPECT_EQ(Shown(Drives(), 33),
              "STATE   MODEL   AGE  REMARK\n"
              "good    A-1     3 y  nothing t...\n"
              "failed  B      12 y  replace\n");
    EXPECT_EQ(Shown(Drives(), 32),
              "STATE   MODEL  REMARK\n"
              "good    A-1    nothing to act on\n"
              "failed  B      replace\n");
    EXPECT_EQ(Shown(Drives(), 27),
              "STATE   MODEL  REMARK\n"
              "good    A-1    nothing t...\n"
              "failed  B      replace\n");
}

TEST(Table, ShowsALesserColumnWhereABetterOneDoesNotFit) {
    EXPECT_EQ(Shown(Drives(), 26),
              "STATE    AGE  REMARK\n"
              "good     3 y  nothing t...\n"
              "failed  12 y  replace\n");
    EXPECT_EQ(Shown(Drives(), 25),
              "STATE   REMARK\n"
              "good    nothing to act on\n"
              "failed  replace\n");
}

TEST(Table, CutsNamesOfFilesInFront) {
    Table table({{"STATE"}, {"FILE"}}, Table::LastColumn::CUT_IN_FRONT);
    table.Add("good");
    table.Add("folder/of/reports/host.json");
    EXPECT_EQ(Shown(table, 34), "STATE  FILE\ngood   folder/of/reports/host.json\n");
    EXPECT_EQ(Shown(table, 33), "STATE  FILE\ngood   ...er/of/reports/host.json\n");
    EXPECT_EQ(Shown(table, 1), "STATE  FILE\ngood   ...reports/host.json\n");
}

TEST(Table, CutsCellsOfColumnsWithAWidestWidthOnAScreenOnly) {
    Table table({{"A", Align::LEFT, 0, 6}, {"B"}});
    table.Add("1234567");
    table.Add("b");
    EXPECT_EQ(Shown(table, 0), "A        B\n1234567  b\n");
    EXPECT_EQ(Shown(table, 80), "A       B\n123...  b\n");
}

TEST(Table, IsWiderThanAScreenThatIsTooNarrowForTheColumnsThatStay) {
    const std::string least =
        "STATE   REMARK\n"
        "good    nothing t...\n"
        "failed  replace\n";
    EXPECT_EQ(Shown(Drives(), 20), least);
    EXPECT_EQ(Shown(Drives(), 1), least);
}

TEST(Table, TheLastColumnMayBeLeftOut) {
    Table table({{"A"}, {"B", Align::LEFT, 1}});
    table.Add("left");
    table.Add("a file of a long name");
    EXPECT_EQ(Shown(table, 18), "A     B\nleft  a file of...\n");
    EXPECT_EQ(Shown(table, 17), "A\nleft\n");
}

TEST(Table, WhatIsLastThenIsCutOrWrapped) {
    Table table({{nullptr}, {nullptr, Align::LEFT, 1}, {nullptr, Align::LEFT, 2}},
                Table::LastColumn::WRAPPED);
    for (const char* text : {"1", "one two three four", "five six seven"}) {
        table.Add(text);
    }
    EXPECT_EQ(Shown(table, 35), "1  one two three four  five six\n                       seven\n");
    EXPECT_EQ(Shown(table, 34), "1  one two three four\n");
    EXPECT_EQ(Shown(table, 20), "1  one two three\n   four\n");
    EXPECT_EQ(Shown(table, 15), "1  one two\n   three four\n");
    EXPECT_EQ(Shown(table, 14), "1\n");
}

TEST(Table, AnIndentCounts) {
    Table table({{nullptr}, {nullptr}}, Table::LastColumn::WRAPPED);
    table.Add("key");
    table.Add("one two three four");
    EXPECT_EQ(Shown(table, 25, 2), "  key  one two three four\n");
    EXPECT_EQ(Shown(table, 24, 2), "  key  one two three\n       four\n");
}

TEST(Table, WithoutHeadingsThereIsNoLineOfThem) {
    Table table({{nullptr}});
    EXPECT_EQ(Shown(table, 0), "");
    table.Add("a");
    EXPECT_EQ(Shown(table, 0), "a\n");
}

TEST(Table, NoBlanksEndALine) {
    Table table({{nullptr}, {nullptr}});
    for (const char* text : {"long", "", "a", "b", "", ""}) {
        table.Add(text);
    }
    EXPECT_EQ(Shown(table, 0), "long\na     b\n\n");
}

TEST(Table, AlignsWideCharacters) {
    Table table({{nullptr}, {nullptr}});
    for (const char* text : {"\xE7\xA3\x81", "x", "abc", "y"}) {
        table.Add(text);
    }
    EXPECT_EQ(Shown(table, 80), "\xE7\xA3\x81   x\nabc  y\n");
    EXPECT_EQ(Shown(table, 0), Shown(table, 80));
}

TEST(Table, CutsBetweenWideCharacters) {
    Table table({{nullptr}});
    table.Add("abcdefg\xE7\xA3\x81\xE7\xA3\x81\xE7\xA3\x81");  // 13 columns
    EXPECT_EQ(Shown(table, 13), "abcdefg\xE7\xA3\x81\xE7\xA3\x81\xE7\xA3\x81\n");
    EXPECT_EQ(Shown(table, 12), "abcdefg\xE7\xA3\x81...\n");
}

TEST(Table, AStyleCoversTheTextAndNotTheBlanks) {
    Table table({{"A"}, {"B"}}, Table::LastColumn::WRAPPED);
    table.Add("abc", Style::FAILING);
    table.Add("one two three", Style::WARNING);
    EXPECT_EQ(Shown(table, 17, 0, true),
              "\x1B[1mA\x1B[0m    \x1B[1mB\x1B[0m\n"
              "\x1B[1;31mabc\x1B[0m  \x1B[33mone two\x1B[0m\n     \x1B[33mthree\x1B[0m\n");
}
