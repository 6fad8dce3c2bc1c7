// SPDX-License-Identifier: Apache-2.0

#include "print/terminal.h"

#include "whole_number.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace pitool {
namespace {

/// A positive number of columns, or 0.
std::size_t ColumnsFromText(const char* text) {
    std::uint16_t columns = 0;
    return text != nullptr && ReadWholeNumber(text, columns) ? columns : 0;
}

bool IsSet(const char* variable) {
    return variable != nullptr && *variable != '\0';
}

bool KnowsColors(const ScreenFacts& facts) {
    return facts.m_Terminal && IsSet(facts.m_Term) && std::string(facts.m_Term) != "dumb";
}

}  // namespace

Screen ChooseScreen(const ScreenFacts& facts, WhenColor when) {
    constexpr std::size_t USUAL = 80;
    Screen screen;
    screen.m_Colors = when == WhenColor::ALWAYS ||
                      (when == WhenColor::AUTO && KnowsColors(facts) && !IsSet(facts.m_NoColor));
    if (facts.m_Terminal || screen.m_Colors) {
        screen.m_Columns =
            facts.m_TerminalColumns != 0 ? facts.m_TerminalColumns : ColumnsFromText(facts.m_Columns);
    }
    screen.m_Rows = facts.m_Terminal ? facts.m_TerminalRows : 0;
    if (facts.m_Terminal && screen.m_Columns == 0) {
        screen.m_Columns = USUAL;
    }
    return screen;
}

Screen ScreenOf(int descriptor, WhenColor when) {
    ScreenFacts facts;
    facts.m_Terminal = isatty(descriptor) == 1;
    winsize size{};
    if (facts.m_Terminal && ioctl(descriptor, TIOCGWINSZ, &size) == 0) {
        facts.m_TerminalColumns = size.ws_col;
        facts.m_TerminalRows = size.ws_row;
    }
    facts.m_Columns = std::getenv("COLUMNS");
    facts.m_Term = std::getenv("TERM");
    facts.m_NoColor = std::getenv("NO_COLOR");
    return ChooseScreen(facts, when);
}

}  // namespace pitool
