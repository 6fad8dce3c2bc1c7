// SPDX-License-Identifier: Apache-2.0
/// @file
/// Rows and columns, printed as text for a screen or as HTML.
#pragma once

#include "print/text.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pitool {

enum class Align : std::uint8_t {
    LEFT,
    RIGHT,
    PATH,  ///< left, and cut in front: names of files differ at their ends
};

struct Column {
    const char* m_Heading;  ///< null in all columns: no line of headings
    Align m_Align = Align::LEFT;
    int m_LeaveOut = 0;       ///< 0: never; else shown where there is room left, the lowest first
    std::size_t m_Least = 0;  ///< width in which it may be cut and is worth showing; 0: it is not cut
};

/// A table whose columns are as wide as their contents. Where a screen is too narrow, columns are left out,
/// those first in which no cell says anything; then the widest ones that may be are cut, and the last one is
/// cut or wrapped. A list with headings shows no more rows than fit the height of a screen.
class Table {
public:
    enum class LastColumn : std::uint8_t { WRAPPED, CUT };

    explicit Table(std::vector<Column> columns, LastColumn lastColumn = LastColumn::CUT);

    /// Adds the next cell, row by row. Below a heading an empty one reads "-".
    void Add(std::string_view text, Style style = Style::PLAIN);
    /// Says how many further rows there would be, and where they can be had.
    void SetFurther(std::size_t rows, std::string where) {
        m_Further = rows;
        m_Where = std::move(where);
    }
    /// Sets the text that stands below the table.
    void SetSummary(std::string text) { m_Summary = std::move(text); }

    /// The lines, those of the headings first, each with its end.
    /// @param indent blanks before each line
    /// @param take   if given, is called with long pieces as they are made; what remains is returned
    std::string Text(const Screen& screen, std::size_t indent = 0,
                     const std::function<void(std::string_view piece)>& take = {}) const;

    /// The rows as an HTML table, whose page decides on the classes: n for numbers, f for files, w for what
    /// only wide screens show, m for what medium ones show too, bad, look and faint.
    /// @param link of the first cell of a row, such as "#d1"; an empty one is none
    std::string Html(const std::function<std::string(std::size_t row)>& link = {}) const;

private:
    struct Cell {  ///< rows are many: the texts are one
        std::uint32_t m_End;
        Style m_Style;
    };
    std::string_view CellText(std::size_t cell) const;
    std::vector<std::size_t> Fit(std::size_t rows, std::size_t room) const;
    void AddRow(std::size_t row, const std::vector<std::size_t>& widths, const Screen& screen,
                std::size_t indent, std::string& text) const;
    std::string FurtherText(std::size_t rows) const;

    std::vector<Column> m_Columns;
    LastColumn m_LastColumn;
    std::size_t m_Headings;  ///< lines of them, 0 or 1
    std::string m_Texts;
    std::vector<Cell> m_Cells;  ///< those of the headings first
    std::size_t m_Further = 0;
    std::string m_Where = "| less shows all";
    std::string m_Summary;
};

}  // namespace pitool
