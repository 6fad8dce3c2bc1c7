// SPDX-License-Identifier: Apache-2.0
/// @file
/// Who reads an output: a person at a terminal, or a file or program.
#pragma once

#include <cstddef>

namespace pitool {

/// When an output is coloured.
enum class WhenColor {
    AUTO,    ///< on a terminal that knows colours, unless NO_COLOR is set
    ALWAYS,  ///< also into files and pipes
    NEVER,
};

/// What a text is laid out for. A file or a pipe takes lines of any length, without colours.
struct Screen {
    std::size_t m_Columns = 0;  ///< width that the lines have to fit; 0: any
    bool m_Colors = false;
    std::size_t m_Rows = 0;  ///< height of a terminal; 0: any
};

/// What decides on a screen. Pointers are null for variables that are not set.
struct ScreenFacts {
    bool m_Terminal = false;
    std::size_t m_TerminalColumns = 0;  ///< as the terminal tells; 0: it does not
    std::size_t m_TerminalRows = 0;     ///< likewise
    const char* m_Columns = nullptr;    ///< COLUMNS
    const char* m_Term = nullptr;       ///< TERM
    const char* m_NoColor = nullptr;    ///< NO_COLOR
};

/// A terminal has the width that it tells, else that of COLUMNS, else 80 columns. What is coloured although
/// it is no terminal is likely shown on one later, and has the width of COLUMNS where that is given.
Screen ChooseScreen(const ScreenFacts& facts, WhenColor when);

/// The screen behind a file descriptor, as it is now.
Screen ScreenOf(int descriptor, WhenColor when);

}  // namespace pitool
