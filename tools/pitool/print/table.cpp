// SPDX-License-Identifier: Apache-2.0

#include "print/table.h"

#include "print/text.h"

#include <algorithm>
#include <numeric>

namespace pitool {
namespace {

constexpr std::size_t GAP = 2;

/// What the last column keeps before another is left out.
std::size_t LeastWidth(Table::LastColumn lastColumn) {
    switch (lastColumn) {
        case Table::LastColumn::CUT_IN_FRONT: return 20;
        default: return 12;
    }
}

constexpr std::string_view DOTS = "...";

/// Cuts a text to a width that it exceeds, with three dots at its end.
std::string CutText(std::string_view text, std::size_t width) {
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

/// The same with the dots at its beginning.
std::string CutInFront(std::string_view text, std::size_t width) {
    while (!text.empty() && DOTS.size() + DisplayWidth(text) > width) {
        text.remove_prefix(FirstCharacter(text).m_Length);
    }
    return std::string(DOTS).append(text);
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
    m_Texts += printable;
    m_Cells.push_back({static_cast<std::uint32_t>(m_Texts.size()), style});
}

std::string_view Table::CellText(std::size_t cell) const {
    const std::size_t begin = cell == 0 ? 0 : m_Cells[cell - 1].m_End;
    return std::string_view(m_Texts).substr(begin, m_Cells[cell].m_End - begin);
}

std::string Table::Text(const Screen& screen, std::size_t indent) const {
    const std::size_t leastOfLast = LeastWidth(m_LastColumn);
    const std::size_t count = m_Columns.size();
    if (count == 0) {
        return "";
    }
    const bool hasHeadings = m_Columns.front().m_Heading != nullptr;
    std::vector<std::size_t> widths(count);
    for (std::size_t i = 0; i < count; ++i) {
        widths[i] = hasHeadings ? DisplayWidth(m_Columns[i].m_Heading) : 0;
    }
    for (std::size_t i = 0; i < m_Cells.size(); ++i) {
        widths[i % count] = std::max(widths[i % count], DisplayWidth(CellText(i)));
    }

    const std::size_t screenWidth = screen.m_Columns != 0 ? screen.m_Columns : SIZE_MAX;
    for (std::size_t i = 0; i + 1 < count; ++i) {
        if (screen.m_Columns != 0 && m_Columns[i].m_Widest != 0) {
            widths[i] = std::min(widths[i], m_Columns[i].m_Widest);
        }
    }
    const auto least = [&](const std::vector<std::size_t>& columns) {  // the last column may get narrower
        const std::size_t last = widths[columns.back()];
        return TotalWidth(columns, widths, indent) - last + std::min(last, leastOfLast);
    };
    std::vector<std::size_t> order(count);
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
        return m_Columns[a].m_LeaveOut < m_Columns[b].m_LeaveOut;
    });
    std::vector<std::size_t> shown;
    for (const std::size_t column : order) {
        std::vector<std::size_t> more = shown;
        more.insert(std::upper_bound(more.begin(), more.end(), column), column);
        if (m_Columns[column].m_LeaveOut == 0 || least(more) <= screenWidth) {
            shown = std::move(more);
        }
    }
    const std::size_t last = shown.back();
    const std::size_t lead = TotalWidth(shown, widths, indent) - widths[last];
    const std::size_t forced = m_LastColumn == LastColumn::WRAPPED ? NARROWEST_TEXT : leastOfLast;
    const std::size_t room =
        screenWidth > lead + forced ? screenWidth - lead : std::min(widths[last], forced);

    std::string text;
    text.reserve((m_Cells.size() / count + 1) * (lead + std::min(widths[last], room) + 1));
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
            if (column != last ? width <= widths[column] : width <= room) {
                AddStyled(cell, cellStyle(column), screen.m_Colors, text);
            } else if (column != last) {
                AddStyled(CutText(cell, widths[column]), cellStyle(column), screen.m_Colors, text);
            } else if (m_LastColumn == LastColumn::CUT) {
                AddStyled(CutText(cell, room), cellStyle(column), screen.m_Colors, text);
            } else if (m_LastColumn == LastColumn::CUT_IN_FRONT) {
                AddStyled(CutInFront(cell, room), cellStyle(column), screen.m_Colors, text);
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
        addLine([&](std::size_t column) { return CellText(row + column); },
                [&](std::size_t column) { return m_Cells[row + column].m_Style; });
    }
    return text;
}

}  // namespace pitool
