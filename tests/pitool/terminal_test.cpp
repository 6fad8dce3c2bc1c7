// SPDX-License-Identifier: Apache-2.0

#include "print/terminal.h"

#include <gtest/gtest.h>

using namespace pitool;

namespace {

/// A terminal of 100 columns that knows colours.
ScreenFacts Terminal() {
    ScreenFacts facts;
    facts.m_Terminal = true;
    facts.m_TerminalColumns = 100;
    facts.m_Term = "xterm";
    return facts;
}

}  // namespace

TEST(ChooseScreen, AFileTakesAnyWidthWithoutColors) {
    ScreenFacts facts;
    facts.m_Term = "xterm";
    facts.m_Columns = "60";
    for (const WhenColor when : {WhenColor::AUTO, WhenColor::NEVER}) {
        EXPECT_EQ(ChooseScreen(facts, when).m_Columns, 0U);
        EXPECT_FALSE(ChooseScreen(facts, when).m_Colors);
    }
}

TEST(ChooseScreen, ATerminalHasItsWidthAndColors) {
    EXPECT_EQ(ChooseScreen(Terminal(), WhenColor::AUTO).m_Columns, 100U);
    EXPECT_TRUE(ChooseScreen(Terminal(), WhenColor::AUTO).m_Colors);
}

TEST(ChooseScreen, ATerminalWithoutWidthHasThatOfColumnsOr80) {
    ScreenFacts facts = Terminal();
    facts.m_Columns = "60";
    EXPECT_EQ(ChooseScreen(facts, WhenColor::AUTO).m_Columns, 100U);
    facts.m_TerminalColumns = 0;
    EXPECT_EQ(ChooseScreen(facts, WhenColor::AUTO).m_Columns, 60U);
    for (const char* columns : {"", "0", "-5", "wide", "70000", " 60"}) {
        facts.m_Columns = columns;
        EXPECT_EQ(ChooseScreen(facts, WhenColor::AUTO).m_Columns, 80U) << columns;
    }
    facts.m_Columns = nullptr;
    EXPECT_EQ(ChooseScreen(facts, WhenColor::AUTO).m_Columns, 80U);
}

TEST(ChooseScreen, NoColorCountsWhenItIsNotEmpty) {
    ScreenFacts facts = Terminal();
    facts.m_NoColor = "";
    EXPECT_TRUE(ChooseScreen(facts, WhenColor::AUTO).m_Colors);
    for (const char* value : {"1", "0", "no"}) {
        facts.m_NoColor = value;
        EXPECT_FALSE(ChooseScreen(facts, WhenColor::AUTO).m_Colors) << value;
    }
    EXPECT_EQ(ChooseScreen(facts, WhenColor::AUTO).m_Columns, 100U);
}

TEST(ChooseScreen, ATerminalThatIsDumbOrNamelessHasNoColors) {
    ScreenFacts facts = Terminal();
    for (const char* term : {static_cast<const char*>(nullptr), "", "dumb"}) {
        facts.m_Term = term;
        EXPECT_FALSE(ChooseScreen(facts, WhenColor::AUTO).m_Colors);
        EXPECT_EQ(ChooseScreen(facts, WhenColor::AUTO).m_Columns, 100U);
    }
}

TEST(ChooseScreen, AnOptionWinsOverTheEnvironment) {
    ScreenFacts facts = Terminal();
    EXPECT_FALSE(ChooseScreen(facts, WhenColor::NEVER).m_Colors);
    EXPECT_EQ(ChooseScreen(facts, WhenColor::NEVER).m_Columns, 100U);
    facts.m_NoColor = "1";
    facts.m_Term = "dumb";
    EXPECT_TRUE(ChooseScreen(facts, WhenColor::ALWAYS).m_Colors);
}

TEST(ChooseScreen, ColorsInAFileComeWithTheWidthOfColumns) {
    ScreenFacts facts;
    EXPECT_TRUE(ChooseScreen(facts, WhenColor::ALWAYS).m_Colors);
    EXPECT_EQ(ChooseScreen(facts, WhenColor::ALWAYS).m_Columns, 0U);
    facts.m_Columns = "110";
    EXPECT_EQ(ChooseScreen(facts, WhenColor::ALWAYS).m_Columns, 110U);
}
