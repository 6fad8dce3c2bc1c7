// SPDX-License-Identifier: Apache-2.0
/// @file
/// Text in columns.
#pragma once

#include "print/terminal.h"
#include "print/text.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pitool {

enum class Align : std::uint8_t { LEFT, RIGHT };

struct Column {
    const char* m_Heading;  ///< null in all columns: no line of headings
    Align m_Align = Align::LEFT;
    int m_LeaveOut = 0;        ///< 0: never; else shown where there is room left, the lowest first
    std::size_t m_Widest = 0;  ///< longer cells are cut on a screen, unless in the last column; 0: any
};

/// A table whose columns are as wide as their contents. Where a screen is too narrow, columns are left out;
/// what is still too wide in the last column is wrapped or cut.
class Table {
public:
    enum class LastColumn : std::uint8_t {
        WRAPPED,
        CUT,
        CUT_IN_FRONT,  ///< for names of files, whose ends differ
    };

    explicit Table(std::vector<Column> columns, LastColumn lastColumn = LastColumn::CUT)
        : m_Columns(std::move(columns)), m_LastColumn(lastColumn) {}

    /// Adds the next cell, row by row.
    /// @param printable text that brings no control characters of its own
    void Add(std::string_view printable, Style style = Style::PLAIN);

    /// The lines, those of the headings first, each with its end.
    /// @param indent blanks before each line
    std::string Text(const Screen& screen, std::size_t indent = 0) const;

private:
    /// Rows are many: the texts are one.
    struct Cell {
        std::uint32_t m_End;
        Style m_Style;
    };
    std::string_view CellText(std::size_t cell) const;

    std::vector<Column> m_Columns;
    LastColumn m_LastColumn;
    std::string m_Texts;
    std::vector<Cell> m_Cells;
};

}  // namespace pitool
