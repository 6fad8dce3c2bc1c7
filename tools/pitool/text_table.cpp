// SPDX-License-Identifier: Apache-2.0

#include "text_table.h"

#include "print/text.h"

#include <algorithm>

namespace pitool {

/// In files and pipes characters count, as they always have; only a terminal has columns.
std::size_t TextTable::WidthOf(std::string_view text) const {
    return m_Screen.m_Columns != 0 ? DisplayWidth(text) : CharacterCount(text);
}

std::size_t TextTable::Least(std::size_t column) const {
    return column < m_Least.size() ? m_Least[column] : 0;
}

void TextTable::Measure(const std::vector<Cell>& cells) {
    if (m_Columns.size() < cells.size()) {
        m_Columns.resize(cells.size());
    }
    for (std::size_t i = 0; i < cells.size(); ++i) {
        Column& column = m_Columns[i];
        const std::size_t width = WidthOf(cells[i].m_Text);
        if (m_Screen.m_Columns != 0) {
            column.m_Piece = std::max(column.m_Piece, LongestPiece(cells[i].m_Text));
            if (width > column.m_Natural) {
                column.m_Widest = cells[i].m_Text;
            }
        }
        column.m_Natural = std::max(column.m_Natural, width);
    }
}

bool TextTable::Fit() {
    std::size_t width = m_Indent;
    for (std::size_t i = 0; i < m_Columns.size(); ++i) {
        Column& column = m_Columns[i];
        column.m_Natural = std::max(column.m_Natural, Least(i));
        column.m_Width = column.m_Natural;
        width += column.m_Natural + (i == 0 ? 0 : m_Gap);
    }
    if (m_Screen.m_Columns == 0 || width <= m_Screen.m_Columns) {
        return true;
    }
    // Columns close together read better than words taken apart.
    struct Attempt {
        std::size_t m_Gap;
        std::size_t m_LongestPiece;
    };
    for (const bool keepLeast : {true, false}) {
        for (const Attempt attempt : {Attempt{2, 16}, {1, 16}, {1, 12}, {1, NARROWEST_TEXT}}) {
            if (Shrink(attempt.m_Gap, attempt.m_LongestPiece, keepLeast)) {
                return true;
            }
        }
    }
    return false;
}

/// Takes the narrowest columns, and widens them as far as there is room.
bool TextTable::Shrink(std::size_t gap, std::size_t longestPiece, bool keepLeast) {
    std::vector<std::size_t> widths;
    std::size_t used = m_Indent + gap * (m_Columns.size() - 1);
    for (const Column& column : m_Columns) {
        const std::size_t least = keepLeast ? Least(widths.size()) : 0;
        widths.push_back(std::max(std::min(column.m_Piece, longestPiece), least));
        used += widths.back();
    }
    if (used > m_Screen.m_Columns) {
        return false;
    }
    m_Gap = gap;
    m_Wraps = true;
    for (std::size_t i = 0; i < m_Columns.size(); ++i) {
        m_Columns[i].m_Width = widths[i];
        m_Columns[i].m_Lines = WrapText(m_Columns[i].m_Widest, widths[i]).size();
    }
    Widen(m_Screen.m_Columns - used);
    return true;
}

/// Gives room to the column whose widest cell has the most lines, as much as makes them fewer; again and
/// again. What makes no cell shorter any more goes to that column too: it may spare lines in other cells.
void TextTable::Widen(std::size_t room) {
    for (;;) {
        Column& tallest = *std::max_element(
            m_Columns.begin(), m_Columns.end(),
            [](const Column& left, const Column& right) { return left.m_Lines < right.m_Lines; });
        std::size_t more = 1;
        while (more <= room && WrapText(tallest.m_Widest, tallest.m_Width + more).size() >= tallest.m_Lines) {
            ++more;
        }
        if (more > room) {
            tallest.m_Width += room;
            return;
        }
        room -= more;
        tallest.m_Width += more;
        tallest.m_Lines = WrapText(tallest.m_Widest, tallest.m_Width).size();
    }
}

bool TextTable::IsTall() const {
    return m_Wraps && std::any_of(m_Columns.begin(), m_Columns.end(),
                                  [](const Column& column) { return column.m_Lines > 2; });
}

void TextTable::AddLine(const std::vector<Cell>& cells, std::string& text) const {
    std::vector<std::vector<std::string_view>> pieces;
    std::size_t lines = 1;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        pieces.push_back(m_Wraps ? WrapText(cells[i].m_Text, m_Columns[i].m_Width)
                                 : std::vector<std::string_view>{cells[i].m_Text});
        lines = std::max(lines, pieces.back().size());
    }
    for (std::size_t line = 0; line < lines; ++line) {
        // Blanks are due before a piece, so that divided cells leave none at the end of a line.
        std::size_t due = m_Indent;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const std::string_view piece = line < pieces[i].size() ? pieces[i][line] : std::string_view();
            if (!piece.empty() || !m_Wraps) {
                text.append(due, ' ');
                due = 0;
                AddStyled(piece, cells[i].m_Style, m_Screen.m_Colors, text);
            }
            due += m_Columns[i].m_Width - std::min(WidthOf(piece), m_Columns[i].m_Width) + m_Gap;
        }
        text += '\n';
    }
}

std::string TableText(const std::vector<std::vector<Cell>>& lines, const Screen& screen, std::size_t indent,
                      const std::vector<std::size_t>& widths) {
    TextTable table(screen, indent, widths);
    for (const std::vector<Cell>& line : lines) {
        table.Measure(line);
    }
    table.Fit();
    std::string text;
    for (const std::vector<Cell>& line : lines) {
        table.AddLine(line, text);
    }
    return text;
}

}  // namespace pitool
