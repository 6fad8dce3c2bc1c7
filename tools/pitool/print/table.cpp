// SPDX-License-Identifier: Apache-2.0

#include "print/table.h"

#include "print/text.h"

#include <algorithm>

namespace pitool {
namespace {

constexpr std::size_t GAP = 2;

/// Cuts a text to a width that it exceeds, with three dots at its end.
std::string CutText(std::string_view text, std::size_t width) {
    constexpr std::string_view DOTS = "...";
    std::string cut;
    for (std::size_t used = DOTS.size(); !text.empty();) {
        const Character character = FirstCharacter(text);
        used += character.m_Width;
        if (used > width) {
            break;
        }
        cut += text.substr(0, character.m_Length);
        text.remove_prefix(character.m_Length);
    }
    return cut.append(DOTS);
}

std::size_t TotalWidth(const std::vector<std::size_t>& shown, const std::vector<std::size_t>& widths,
                       std::size_t indent) {
    std::size_t total = indent;
    for (const std::size_t column : shown) {
        total += widths[column] + (column == shown.front() ? 0 : GAP);
    }
    return total;
}

}  // namespace

void Table::Add(std::string_view printable, Style style) {
    m_Cells.push_back({std::string(printable), style});
}

std::string Table::Text(const Screen& screen, std::size_t indent) const {
    constexpr std::size_t LEAST_LAST_COLUMN = 12;
    const std::size_t count = m_Columns.size();
    const bool hasHeadings = m_Columns.front().m_Heading != nullptr;
    std::vector<std::size_t> widths(count);
    std::vector<std::size_t> shown(count);
    for (std::size_t i = 0; i < count; ++i) {
        shown[i] = i;
        widths[i] = hasHeadings ? DisplayWidth(m_Columns[i].m_Heading) : 0;
    }
    for (std::size_t i = 0; i < m_Cells.size(); ++i) {
        widths[i % count] = std::max(widths[i % count], DisplayWidth(m_Cells[i].m_Text));
    }

    const std::size_t screenWidth = screen.m_Columns != 0 ? screen.m_Columns : SIZE_MAX;
    const auto least = [&] {  // the last column may get narrower before one is left out
        const std::size_t last = widths[shown.back()];
        return TotalWidth(shown, widths, indent) - last + std::min(last, LEAST_LAST_COLUMN);
    };
    while (least() > screenWidth) {
        const auto next = std::max_element(shown.begin(), shown.end(), [&](std::size_t a, std::size_t b) {
            return m_Columns[a].m_LeaveOut < m_Columns[b].m_LeaveOut;
        });
        if (m_Columns[*next].m_LeaveOut == 0) {
            break;
        }
        shown.erase(next);
    }
    const std::size_t last = shown.back();
    const std::size_t lead = TotalWidth(shown, widths, indent) - widths[last];
    const std::size_t room = screenWidth > lead + LEAST_LAST_COLUMN
                                 ? screenWidth - lead
                                 : std::min(widths[last], LEAST_LAST_COLUMN);

    std::string text;
    const auto addLine = [&](const auto& cellText, const auto& cellStyle) {
        text.append(indent, ' ');
        for (const std::size_t column : shown) {
            const std::string_view cell = cellText(column);
            const std::size_t width = DisplayWidth(cell);
            const std::size_t blanks = widths[column] > width ? widths[column] - width : 0;
            const bool isRight = m_Columns[column].m_Align == Align::RIGHT;
            if (isRight) {
                text.append(blanks, ' ');
            }
            if (column != last || width <= room) {
                AddStyled(cell, cellStyle(column), screen.m_Colors, text);
            } else if (m_LastColumn == LastColumn::CUT) {
                AddStyled(CutText(cell, room), cellStyle(column), screen.m_Colors, text);
            } else {
                bool isFirst = true;
                for (const std::string_view piece : WrapText(cell, room)) {
                    text.append(isFirst ? 0 : 1, '\n').append(isFirst ? 0 : lead, ' ');
                    AddStyled(piece, cellStyle(column), screen.m_Colors, text);
                    isFirst = false;
                }
            }
            if (column != last) {
                text.append((isRight ? 0 : blanks) + GAP, ' ');
            }
        }
        text.erase(text.find_last_not_of(' ') + 1);
        text += '\n';
    };
    if (hasHeadings) {
        addLine([&](std::size_t column) { return std::string_view(m_Columns[column].m_Heading); },
                [](std::size_t) { return Style::HEADING; });
    }
    for (std::size_t row = 0; row < m_Cells.size(); row += count) {
        addLine([&](std::size_t column) { return std::string_view(m_Cells[row + column].m_Text); },
                [&](std::size_t column) { return m_Cells[row + column].m_Style; });
    }
    return text;
}

}  // namespace pitool
