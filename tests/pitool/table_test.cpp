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

TEST(Table, ALongTextIsGivenInWholeLinesAndItsRestReturned) {
    Table table({{"NUMBER"}, {"TEXT"}});
    for (int row = 0; row < 2000; ++row) {
        table.Add(std::to_string(row));
        table.Add(std::string(100, 'x'));
    }
    table.SetSummary("2000 rows");
    std::string text;
    const std::string rest = table.Text({}, 0, [&text](std::string_view piece) {
        EXPECT_EQ(piece.back(), '\n');
        text += piece;
    });
    EXPECT_LT(rest.size(), 66000U);
    EXPECT_GT(text.size(), 130000U);
    EXPECT_EQ(text + rest, table.Text({}));
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
    Table table({{"STATE"}, {"FILE", Align::PATH}});
    table.Add("good");
    table.Add("folder/of/reports/host.json");
    EXPECT_EQ(Shown(table, 34), "STATE  FILE\ngood   folder/of/reports/host.json\n");
    EXPECT_EQ(Shown(table, 33), "STATE  FILE\ngood   ...er/of/reports/host.json\n");
    EXPECT_EQ(Shown(table, 15), "STATE  FILE\ngood   ....json\n");
    EXPECT_EQ(Shown(table, 1), "STATE  FILE\ngood   ....json\n");
}

TEST(Table, CutsTheWidestOfTheColumnsThatMayBe) {
    Table table({{"A", Align::LEFT, 0, 10}, {"B"}, {"C", Align::LEFT, 0, 10}});
    for (const char* text : {"12345678901234", "12345678901234", "123456789012"}) {
        table.Add(text);
    }
    EXPECT_EQ(Shown(table, 44),
              "A               B               C\n12345678901234  12345678901234  123456789012\n");
    EXPECT_EQ(Shown(table, 43),
              "A              B               C\n1234567890...  12345678901234  123456789012\n");
    EXPECT_EQ(Shown(table, 41),
              "A            B               C\n12345678...  12345678901234  123456789012\n");
    EXPECT_EQ(Shown(table, 1), "A         B               C\n12345...  12345678901234  12345...\n");
}

TEST(Table, AColumnIsShownWhereOthersMayStillBeCut) {
    Table table({{"A", Align::LEFT, 0, 10}, {"B", Align::LEFT, 1}});
    table.Add("12345678901234");
    table.Add("12345678");
    EXPECT_EQ(Shown(table, 20), "A           B\n1234567...  12345678\n");
    EXPECT_EQ(Shown(table, 19), "A\n12345678901234\n");
}

TEST(Table, ColumnsThatSayNothingAreLeftOutFirst) {
    Table table({{"A"}, {"NUMBER"}, {"B", Align::LEFT, 9}});
    for (const char* text : {"a", "", "b", "aa", "-", "bb"}) {
        table.Add(text);
    }
    EXPECT_EQ(Shown(table, 0), "A   NUMBER  B\na   -       b\naa  -       bb\n");
    EXPECT_EQ(Shown(table, 14), Shown(table, 0));
    EXPECT_EQ(Shown(table, 13), "A   B\na   b\naa  bb\n");
}

TEST(Table, IsWiderThanAScreenThatIsTooNarrowForTheColumnsThatStay) {
    const std::string least =
        "STATE   REMARK\n"
        "good    nothi...\n"
        "failed  replace\n";
    EXPECT_EQ(Shown(Drives(), 16), least);
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
    EXPECT_EQ(Shown(table, 20), "1  five six seven\n");
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

TEST(Table, AListShowsAsManyRowsAsFitTheHeight) {
    const auto rows = [](std::size_t height, const char* summary, std::size_t columns = 80) {
        Table table({{"A"}}, Table::LastColumn::WRAPPED);
        for (const char* text : {"1", "2", "3", "4"}) {
            table.Add(text);
        }
        table.SetSummary(summary);
        Screen screen;
        screen.m_Columns = columns;
        screen.m_Rows = height;
        return table.Text(screen);
    };
    EXPECT_EQ(rows(6, ""), "A\n1\n2\n3\n4\n") << "and the prompt";
    EXPECT_EQ(rows(5, ""), "A\n1\n2\n... and 2 more; | less shows all\n");
    EXPECT_EQ(rows(7, "four"), "A\n1\n2\n3\n4\nfour\n");
    EXPECT_EQ(rows(6, "four"), "A\n1\n2\n... and 2 more; | less shows all\nfour\n");
    EXPECT_EQ(rows(7, "four of four", 32), "A\n1\n2\n3\n4\nfour of four\n");
    EXPECT_EQ(rows(6, "four of four", 31), "A\n1\n... and 3 more; | less shows\nall\nfour of four\n");
    EXPECT_EQ(rows(7, "four of four", 8), "A\n1\n... and\n3 more;\n| less\nshows\nall\nfour of\nfour\n");
    EXPECT_EQ(rows(1, ""), "A\n1\n... and 3 more; | less shows all\n") << "the worst in any case";
}

TEST(Table, RowsOfSeveralLinesCountAsSuch) {
    Table table({{"A"}}, Table::LastColumn::WRAPPED);
    for (const char* text : {"one two three", "four five six", "seven"}) {
        table.Add(text);
    }
    Screen screen;
    screen.m_Columns = 8;
    screen.m_Rows = 7;
    EXPECT_EQ(table.Text(screen), "A\none two\nthree\nfour\nfive six\nseven\n");
    screen.m_Rows = 6;
    EXPECT_EQ(table.Text(screen), "A\none two\nthree\n... and\n2 more;\n| less\nshows\nall\n");
    screen.m_Rows = 11;
    table.SetFurther(9, "as well");
    EXPECT_EQ(table.Text(screen), "A\none two\nthree\nfour\nfive six\nseven\n... and\n9 more;\nas well\n");
    screen.m_Rows = 9;
    EXPECT_EQ(table.Text(screen), "A\none two\nthree\nfour\nfive six\n... and\n10 more;\nas well\n");
}

TEST(Table, WhatIsNoListIsShownWhole) {
    Table table({{nullptr}});
    table.Add("1");
    table.Add("2");
    Screen screen;
    screen.m_Rows = 1;
    EXPECT_EQ(table.Text(screen), "1\n2\n");
}

TEST(Table, CountsTheRowsThatItWasNotGiven) {
    Table table({{"A"}});
    table.Add("1");
    table.SetFurther(5, "there are the others");
    table.SetSummary("six");
    EXPECT_EQ(table.Text({}), "A\n1\n... and 5 more; there are the others\nsix\n");
    EXPECT_EQ(table.Html(),
              "<div class=scroll><table>\n<tr><th>A\n<tr><td>1</table></div>"
              "<p>... and 5 more; there are the others</p>");
}

TEST(Table, WithoutRowsThereAreNoHeadings) {
    Table table({{"A"}});
    EXPECT_EQ(table.Text({}), "");
    table.SetSummary("none");
    EXPECT_EQ(table.Text({}), "none\n");
}

TEST(Table, NoCellSteersATerminal) {
    Table table({{nullptr}});
    table.Add("a\x1B[2J");
    EXPECT_EQ(Shown(table, 0), "a?[2J\n");
}

TEST(Table, IsHtmlAsWell) {
    Table table({{"STATE"}, {"WEAR", Align::RIGHT, 1}, {"SIZE", Align::RIGHT, 3}, {"FILE", Align::PATH, 4}});
    table.Add("<look>", Style::WARNING);
    table.Add("95 %", Style::FAILING);
    table.Add("");
    table.Add("a/b");
    EXPECT_EQ(table.Html([](std::size_t row) { return "#" + std::to_string(row); }),
              "<div class=scroll><table>\n<tr><th>STATE<th class=\"n\">WEAR<th class=\"n m\">SIZE<th "
              "class=\"f w\">FILE\n"
              "<tr><td class=\"look\"><a href=\"#0\">&lt;look&gt;</a><td class=\"n bad\">95 %<td class=\"n m "
              "faint\">-<td class=\"f w\">a/b</table></div>");
}

TEST(Table, AStyleCoversTheTextAndNotTheBlanks) {
    Table table({{"A"}, {"B"}}, Table::LastColumn::WRAPPED);
    table.Add("abc", Style::FAILING);
    table.Add("one two three", Style::WARNING);
    EXPECT_EQ(Shown(table, 17, 0, true),
              "\x1B[1mA\x1B[0m    \x1B[1mB\x1B[0m\n"
              "\x1B[1;31mabc\x1B[0m  \x1B[33mone two\x1B[0m\n     \x1B[33mthree\x1B[0m\n");
}
