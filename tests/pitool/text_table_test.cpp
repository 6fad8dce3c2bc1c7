// SPDX-License-Identifier: Apache-2.0

#include "text_table.h"

#include <gtest/gtest.h>

using namespace pitool;

namespace {

std::string Table(const std::vector<std::vector<Cell>>& lines, std::size_t columns, bool colors = false,
                  std::size_t indent = 0, const std::vector<std::size_t>& widths = {}) {
    Screen screen;
    screen.m_Columns = columns;
    screen.m_Colors = colors;
    return TableText(lines, screen, indent, widths);
}

const std::vector<std::vector<Cell>> SAMPLE = {{{"FILE"}, {"STATE"}, {"REMARK"}},
                                               {{"drives/a-disk.json"}, {"OK"}, {"nothing to be told"}},
                                               {{"b.json"}, {"FAILING"}, {"to be replaced"}}};

}  // namespace

TEST(TextTable, IsAsWideAsItsContentsWhereAnyWidthFits) {
    const std::string whole =
        "FILE                STATE    REMARK\n"
        "drives/a-disk.json  OK       nothing to be told\n"
        "b.json              FAILING  to be replaced\n";
    EXPECT_EQ(Table(SAMPLE, 0), whole);
    EXPECT_EQ(Table(SAMPLE, 47), whole);
}

TEST(TextTable, DividesTheTallestCellsFirst) {
    EXPECT_EQ(Table(SAMPLE, 46),
              "FILE                STATE    REMARK\n"
              "drives/a-disk.json  OK       nothing to be\n"
              "                             told\n"
              "b.json              FAILING  to be replaced\n");
    EXPECT_EQ(Table(SAMPLE, 34),
              "FILE           STATE    REMARK\n"
              "drives/        OK       nothing to\n"
              "a-disk.json             be told\n"
              "b.json         FAILING  to be\n"
              "                        replaced\n");
}

TEST(TextTable, MovesColumnsTogetherBeforeItTakesWordsApart) {
    EXPECT_EQ(Table(SAMPLE, 27),
              "FILE       STATE   REMARK\n"
              "drives/    OK      nothing\n"
              "a-                 to be\n"
              "disk.json          told\n"
              "b.json     FAILING to be\n"
              "                   replaced\n");
}

TEST(TextTable, GivesUpWhereTheNarrowestColumnsDoNotFit) {
    EXPECT_NE(Table(SAMPLE, 25), Table(SAMPLE, 0));
    EXPECT_EQ(Table(SAMPLE, 24), Table(SAMPLE, 0));
}

TEST(TextTable, FitsEveryScreenThatItDoesNotGiveUp) {
    for (std::size_t columns = 25; columns < 60; ++columns) {
        const std::string table = Table(SAMPLE, columns);
        for (std::size_t begin = 0; begin < table.size();) {
            const std::size_t end = table.find('\n', begin);
            EXPECT_LE(end - begin, columns);
            EXPECT_TRUE(end == begin || table[end - 1] != ' ') << table;
            begin = end + 1;
        }
    }
}

TEST(TextTable, ColumnsHaveTheLeastWidthsAndAnIndent) {
    EXPECT_EQ(Table({{{"a"}, {"b"}}}, 0, false, 2, {4}), "  a     b\n");
    EXPECT_EQ(Table({{{"a"}, {"one two three"}}}, 17, false, 2, {4}), "  a     one two\n        three\n");
}

TEST(TextTable, AColumnKeepsItsLeastWidthAsLongAsTheOthersFit) {
    const std::vector<std::vector<Cell>> lines = {{{"RATED_ENDURANCE_PERCENT"}, {"96 percent"}}};
    EXPECT_EQ(Table(lines, 31, false, 0, {23}),
              "RATED_ENDURANCE_PERCENT 96\n"
              "                        percent\n");
    EXPECT_EQ(Table(lines, 30, false, 0, {23}),
              "RATED_ENDURANCE_       96\n"
              "PERCENT                percent\n");
}

TEST(TextTable, AlignsWideCharactersOnATerminalAndCountsCharactersElsewhere) {
    const std::vector<std::vector<Cell>> lines{{{"\xE7\xA3\x81"}, {"x"}}, {{"abc"}, {"y"}}};
    EXPECT_EQ(Table(lines, 80), "\xE7\xA3\x81   x\nabc  y\n");
    EXPECT_EQ(Table(lines, 0), "\xE7\xA3\x81    x\nabc  y\n");
}

TEST(TextTable, AStyleCoversTheTextAndNotTheBlanks) {
    EXPECT_EQ(Table({{{"a", Style::HEADING}, {"one two three", Style::WARNING}}}, 12, true),
              "\x1B[1ma\x1B[0m  \x1B[33mone two\x1B[0m\n   \x1B[33mthree\x1B[0m\n");
}

TEST(TextTable, KeepsTheBlanksBeforeAnEmptyLastCellInFiles) {
    EXPECT_EQ(Table({{{"a"}, {""}}, {{"b"}}}, 0), "a  \nb\n");
}

TEST(TextTable, IsTallWhenACellHasMoreThanTwoLines) {
    const std::vector<Cell> cells{{"a"}, {"one two three"}};
    for (const std::size_t columns : {0U, 16U, 15U, 11U, 10U}) {
        Screen screen;
        screen.m_Columns = columns;
        TextTable table(screen, 0);
        table.Measure(cells);
        EXPECT_TRUE(table.Fit());
        EXPECT_EQ(table.IsTall(), columns == 8) << columns;
    }
}
