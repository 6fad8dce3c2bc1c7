// SPDX-License-Identifier: Apache-2.0

#include "print/table.h"

#include <algorithm>
#include <climits>
#include <map>

namespace pitool {
namespace {

constexpr std::size_t GAP = 2;
constexpr std::string_view NOTHING = "-";
constexpr std::string_view DOTS = "...";

/// Cuts a text to a width that it exceeds.
std::string Cut(std::string_view text, std::size_t width, bool isInFront) {
    const std::size_t rest = width - DOTS.size();
    if (!isInFront) {
        return std::string(text.substr(0, FittingLength(text, rest))).append(DOTS);
    }
    while (DisplayWidth(text) > rest) {
        text.remove_prefix(FittingLength(text, 1));
    }
    return std::string(DOTS).append(text);
}

std::size_t CountLines(std::string_view text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

}  // namespace

Table::Table(std::vector<Column> columns, LastColumn lastColumn)
    : m_Columns(std::move(columns)),
      m_LastColumn(lastColumn),
      m_Headings(m_Columns.front().m_Heading != nullptr ? 1 : 0) {
    constexpr std::size_t LEAST_OF_LAST = 12;
    if (m_Columns.back().m_Least == 0) {
        m_Columns.back().m_Least = LEAST_OF_LAST;
    }
    for (std::size_t i = 0; i < m_Headings * m_Columns.size(); ++i) {
        Add(m_Columns[i].m_Heading, Style::HEADING);
    }
}

void Table::Add(std::string_view text, Style style) {
    const bool isNothing = m_Headings != 0 && (text.empty() || text == NOTHING);
    m_Texts += isNothing ? std::string(NOTHING) : PrintableText(text);
    m_Cells.push_back({static_cast<std::uint32_t>(m_Texts.size()), isNothing ? Style::FAINT : style});
}

std::string_view Table::CellText(std::size_t cell) const {
    const std::size_t begin = cell == 0 ? 0 : m_Cells[cell - 1].m_End;
    return std::string_view(m_Texts).substr(begin, m_Cells[cell].m_End - begin);
}

std::string Table::FurtherText(std::size_t rows) const {
    return "... and " + std::to_string(rows) + " more; " + m_Where;
}

/// How wide each column is of the first rows, up to the last one that is shown; 0: it is left out.
/// @param room with a gap after the last one
std::vector<std::size_t> Table::Fit(std::size_t rows, std::size_t room) const {
    const std::size_t count = m_Columns.size();
    std::vector<std::size_t> widths(count);
    std::vector<bool> isBlank(count, m_Headings != 0);
    for (std::size_t i = 0; i < rows * count; ++i) {
        widths[i % count] = std::max(widths[i % count], DisplayWidth(CellText(i)));
        isBlank[i % count] = isBlank[i % count] && (i < count || CellText(i) == NOTHING);
    }
    std::multimap<int, std::size_t> order;
    for (std::size_t i = 0; i < count; ++i) {
        order.emplace(isBlank[i] ? INT_MAX : m_Columns[i].m_LeaveOut, i);
    }
    std::size_t least = 0;  // width of those shown, when cut as far as they may be
    std::size_t total = 0;
    for (const auto& [rank, i] : order) {
        const std::size_t cut = m_Columns[i].m_Least != 0 ? m_Columns[i].m_Least : widths[i];
        const std::size_t more = std::min(cut, widths[i]) + GAP;
        widths[i] = rank == 0 || least + more <= room ? widths[i] : 0;
        least += widths[i] != 0 ? more : 0;
        total += widths[i] != 0 ? widths[i] + GAP : 0;
    }
    while (widths.size() > 1 && widths.back() == 0) {
        widths.pop_back();
    }
    for (; total > room; --total) {
        std::pair<bool, std::size_t> largest = {false, 0};
        std::size_t most = 0;
        for (std::size_t i = 0; i < widths.size(); ++i) {
            // What is beyond the least goes first, then what leaves a text that is worth reading.
            const bool isBeyond = widths[i] > m_Columns[i].m_Least;
            const std::pair<bool, std::size_t> given = {isBeyond,
                                                        widths[i] - (isBeyond ? m_Columns[i].m_Least : 0)};
            const bool isCut = m_Columns[i].m_Least != 0 || i + 1 == widths.size();
            if (isCut && widths[i] > NARROWEST_TEXT && given > largest) {
                largest = given;
                most = i;
            }
        }
        if (largest.second == 0) {
            break;
        }
        --widths[most];
    }
    return widths;
}

void Table::AddRow(std::size_t row, const std::vector<std::size_t>& widths, const Screen& screen,
                   std::size_t indent, std::string& text) const {
    text.append(indent, ' ');
    for (std::size_t i = 0; i < widths.size(); ++i) {
        const std::size_t width = widths[i];
        if (width == 0) {
            continue;
        }
        const Align align = m_Columns[i].m_Align;
        const std::size_t index = row * m_Columns.size() + i;
        const std::string_view cell = CellText(index);
        const Style style = m_Cells[index].m_Style;
        const std::size_t used = DisplayWidth(cell);
        const std::size_t blanks = width - std::min(width, used);
        text.append(align == Align::RIGHT ? blanks : 0, ' ');
        if (m_LastColumn == LastColumn::WRAPPED && i + 1 == widths.size()) {
            std::string_view before;
            for (const std::string_view line : WrapText(cell, width)) {
                text.append(before).append(before.empty() ? 0 : indent, ' ');
                AddStyled(line, style, screen.m_Colors, text);
                before = "\n";
            }
        } else {
            AddStyled(used <= width ? std::string(cell) : Cut(cell, width, align == Align::PATH), style,
                      screen.m_Colors, text);
        }
        text.append((align == Align::RIGHT ? 0 : blanks) + GAP, ' ');
        indent += width + GAP;
    }
    text.erase(text.find_last_not_of(' ') + 1);
    text += '\n';
}

std::string Table::Text(const Screen& screen, std::size_t indent,
                        const std::function<void(std::string_view piece)>& take) const {
    constexpr std::size_t LONG = 65536;
    std::string below;
    if (!m_Summary.empty()) {
        AddWrapped("", "", m_Summary, Style::HEADING, screen, below);
    }
    const std::size_t all = m_Cells.size() / m_Columns.size();
    const std::size_t rows = all == m_Headings ? 0 : all;
    std::string further;
    AddWrapped("", "", FurtherText(rows + m_Further), Style::FAINT, screen, further);
    const std::size_t others = CountLines(below) + 1;  // and the prompt
    const std::size_t height =
        m_Headings == 0 || screen.m_Rows == 0 ? SIZE_MAX : std::max(screen.m_Rows, others) - others;
    const std::size_t room =
        screen.m_Columns == 0 ? SIZE_MAX : std::max(screen.m_Columns, indent) - indent + GAP;
    const std::vector<std::size_t> widths = Fit(std::min(rows, std::max(height, m_Headings + 1)), room);
    std::string text;
    std::size_t shown = 0;  // rows, at the end of which what is left can be counted
    std::size_t end = 0;
    std::size_t used = 0;
    for (std::size_t row = 0; row < rows && (row <= m_Headings || used <= height); ++row) {
        const std::size_t before = text.size();
        AddRow(row, widths, screen, indent, text);
        used += CountLines(std::string_view(text).substr(before));
        const bool isWhole = row + 1 == rows && m_Further == 0;
        if (row <= m_Headings || used + (isWhole ? 0 : CountLines(further)) <= height) {
            shown = row + 1;
            end = text.size();
        }
        if (take && end > LONG) {
            take(std::string_view(text).substr(0, end));
            text.erase(0, std::exchange(end, 0));
        }
    }
    text.resize(end);
    if (const std::size_t left = rows - shown + m_Further; left != 0) {
        AddWrapped("", "", FurtherText(left), Style::FAINT, screen, text);
    }
    text += below;
    return text;
}

std::string Table::Html(const std::function<std::string(std::size_t row)>& link) const {
    constexpr int ON_NARROW_SCREENS = 1;  // as m_LeaveOut counts
    constexpr int ON_MEDIUM_SCREENS = 3;
    constexpr const char* CLASSES[] = {"", "", " bad", " look", " faint"};  // in the order of Style
    const std::size_t count = m_Columns.size();
    std::string html = "<div class=scroll><table>";
    for (std::size_t i = 0; i < m_Cells.size(); ++i) {
        const Column& column = m_Columns[i % count];
        const bool isHeading = i < m_Headings * count;
        std::string classes = column.m_Align == Align::RIGHT ? " n" : "";
        classes += column.m_Align == Align::PATH ? " f" : "";
        classes += column.m_LeaveOut > ON_MEDIUM_SCREENS   ? " w"
                   : column.m_LeaveOut > ON_NARROW_SCREENS ? " m"
                                                           : "";
        classes += CLASSES[static_cast<std::size_t>(m_Cells[i].m_Style)];
        html.append(i % count == 0 ? "\n<tr>" : "").append(isHeading ? "<th" : "<td");
        html += classes.empty() ? "" : " class=\"" + classes.substr(1) + "\"";
        const std::string address = link && !isHeading && i % count == 0 ? link(i / count - m_Headings) : "";
        html += address.empty() ? ">" : "><a href=\"" + address + "\">";
        html.append(HtmlText(CellText(i))).append(address.empty() ? "" : "</a>");
    }
    html += "</table></div>";
    return m_Further == 0 ? html : html + "<p>" + HtmlText(FurtherText(m_Further)) + "</p>";
}

}  // namespace pitool
