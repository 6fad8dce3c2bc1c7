// SPDX-License-Identifier: Apache-2.0
/// @file
/// Text in columns.
#pragma once

#include "print/terminal.h"
#include "print/text.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace pitool {

/// A printable text in a table.
struct Cell {
    std::string_view m_Text;
    Style m_Style = Style::PLAIN;
};

/// Columns as wide as their contents, or narrower where a screen wants it: then the cells go on in further
/// lines within their columns.
///
/// Measure each line, choose the widths, then add each line; so a table of many lines need not be held in
/// cells.
class TextTable {
public:
    /// @param indent blanks before each line
    /// @param widths that the first columns have at least, as long as the others then fit
    TextTable(const Screen& screen, std::size_t indent, const std::vector<std::size_t>& widths = {})
        : m_Screen(screen), m_Indent(indent), m_Least(widths) {}

    void Measure(const std::vector<Cell>& cells);

    /// Chooses the widths.
    ///
    /// @return false when the narrowest columns do not fit the screen; the table then is as wide as it is
    bool Fit();

    /// Adds a line that has been measured to a text.
    void AddLine(const std::vector<Cell>& cells, std::string& text) const;

    /// Whether lines are divided into so many that a blank line between them helps the eye: into more than
    /// two.
    bool IsTall() const;

private:
    struct Column {
        std::size_t m_Natural = 0;  ///< as wide as the widest cell
        std::size_t m_Piece = 0;    ///< longest piece that better stays in one line
        std::size_t m_Width = 0;    ///< the one chosen
        std::size_t m_Lines = 0;    ///< of the widest cell in the width chosen
        std::string m_Widest;       ///< text of the widest cell
    };

    std::size_t WidthOf(std::string_view text) const;
    std::size_t Least(std::size_t column) const;
    bool Shrink(std::size_t gap, std::size_t longestPiece, bool keepLeast);
    void Widen(std::size_t room);

    Screen m_Screen;
    std::size_t m_Indent;
    std::vector<std::size_t> m_Least;
    std::vector<Column> m_Columns;
    std::size_t m_Gap = 2;  ///< blanks between two columns
    bool m_Wraps = false;
};

/// A table of a few lines; widths as for TextTable.
std::string TableText(const std::vector<std::vector<Cell>>& lines, const Screen& screen, std::size_t indent,
                      const std::vector<std::size_t>& widths = {});

}  // namespace pitool
