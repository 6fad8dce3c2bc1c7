// SPDX-License-Identifier: Apache-2.0

#include "print/table.h"

#include <algorithm>
#include <climits>

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

const char* ClassOf(Style style) {
    switch (style) {
        case Style::FAILING: return " bad";
        case Style::WARNING: return " look";
        case Style::FAINT: return " faint";
        default: return "";
    }
}

}  // namespace

/// A column on a screen.
struct Table::Shown {
    std::size_t m_Column;
    std::size_t m_Width;
};

Table::Table(std::vector<Column> columns, LastColumn lastColumn)
    : m_Columns(std::move(columns)), m_LastColumn(lastColumn) {
    constexpr std::size_t LEAST_OF_LAST = 12;
    if (m_Columns.back().m_Least == 0) {
        m_Columns.back().m_Least = LEAST_OF_LAST;
    }
    for (std::size_t i = 0; HasHeadings() && i < m_Columns.size(); ++i) {
        Add(m_Columns[i].m_Heading, Style::HEADING);
    }
}

void Table::Add(std::string_view text, Style style) {
    const bool isNothing = HasHeadings() && (text.empty() || text == NOTHING);
    m_Texts += isNothing ? std::string(NOTHING) : PrintableText(text);
    m_Cells.push_back({static_cast<std::uint32_t>(m_Texts.size()), isNothing ? Style::FAINT : style});
}

void Table::SetFurther(std::size_t rows, std::string where) {
    m_Further = rows;
    m_Where = std::move(where);
}

std::string_view Table::CellText(std::size_t cell) const {
    const std::size_t begin = cell == 0 ? 0 : m_Cells[cell - 1].m_End;
    return std::string_view(m_Texts).substr(begin, m_Cells[cell].m_End - begin);
}

/// The columns to show of the first rows, and how wide each is.
std::vector<Table::Shown> Table::Fit(std::size_t rows, std::size_t room) const {
    const std::size_t count = m_Columns.size();
    std::vector<std::size_t> widths(count);
    std::vector<bool> isBlank(count, HasHeadings());
    for (std::size_t i = 0; i < rows * count; ++i) {
        widths[i % count] = std::max(widths[i % count], DisplayWidth(CellText(i)));
        isBlank[i % count] = isBlank[i % count] && (i < count || CellText(i) == NOTHING);
    }
    std::vector<std::pair<int, std::size_t>> order;
    for (std::size_t i = 0; i < count; ++i) {
        order.emplace_back(isBlank[i] ? INT_MAX : m_Columns[i].m_LeaveOut, i);
    }
    std::sort(order.begin(), order.end());

    std::vector<Shown> shown;
    std::size_t used = 0;
    for (const auto& [rank, i] : order) {
        const std::size_t least = m_Columns[i].m_Least != 0 ? m_Columns[i].m_Least : widths[i];
        const std::size_t more = used + (shown.empty() ? 0 : GAP) + std::min(least, widths[i]);
        if (rank == 0 || more <= room) {
            shown.push_back({i, widths[i]});
            used = more;
        }
    }
    std::sort(shown.begin(), shown.end(),
              [](const Shown& left, const Shown& right) { return left.m_Column < right.m_Column; });

    std::size_t total = shown.empty() ? 0 : (shown.size() - 1) * GAP;
    for (const Shown& each : shown) {
        total += each.m_Width;
    }
    // What a column has beyond its least goes first, then what leaves a text that is worth reading.
    const auto toGive = [&](const Shown& each) -> std::pair<bool, std::size_t> {
        const std::size_t least = m_Columns[each.m_Column].m_Least;
        const bool isCut = (least != 0 || &each == &shown.back()) && each.m_Width > NARROWEST_TEXT;
        return {isCut && each.m_Width > least,
                !isCut ? 0 : each.m_Width - (each.m_Width > least ? least : 0)};
    };
    for (; total > room; --total) {
        const auto most = std::max_element(
            shown.begin(), shown.end(),
            [&](const Shown& left, const Shown& right) { return toGive(left) < toGive(right); });
        if (toGive(*most).second == 0) {
            break;
        }
        --most->m_Width;
    }
    return shown;
}

void Table::AddRow(std::size_t row, const std::vector<Shown>& shown, const Screen& screen, std::size_t indent,
                   std::string& text) const {
    text.append(indent, ' ');
    for (const auto& [number, width] : shown) {
        const Column& column = m_Columns[number];
        const std::size_t index = row * m_Columns.size() + number;
        const bool isLast = number == shown.back().m_Column;
        const Style style = m_Cells[index].m_Style;
        const std::size_t used = DisplayWidth(CellText(index));
        const std::size_t blanks = width > used ? width - used : 0;
        text.append(column.m_Align == Align::RIGHT ? blanks : 0, ' ');
        if (used <= width) {
            AddStyled(CellText(index), style, screen.m_Colors, text);
        } else if (isLast && m_LastColumn == LastColumn::WRAPPED) {
            const char* end = "";
            for (const std::string_view line : WrapText(CellText(index), width)) {
                text.append(end).append(*end != '\0' ? indent : 0, ' ');
                AddStyled(line, style, screen.m_Colors, text);
                end = "\n";
            }
        } else {
            AddStyled(Cut(CellText(index), width, column.m_Align == Align::PATH), style, screen.m_Colors,
                      text);
        }
        if (!isLast) {
            text.append((column.m_Align == Align::RIGHT ? 0 : blanks) + GAP, ' ');
            indent += width + GAP;
        }
    }
    text.erase(text.find_last_not_of(' ') + 1);
    text += '\n';
}

std::string Table::Text(const Screen& screen, std::size_t indent) const {
    std::string below;
    if (!m_Summary.empty()) {
        AddWrapped("", "", m_Summary, Style::HEADING, screen, below);
    }
    const std::size_t headings = HasHeadings() ? 1 : 0;
    const std::size_t rows = m_Cells.size() / m_Columns.size();
    const auto lines = [](std::string_view text) {
        return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    };
    const std::size_t others = lines(below) + 1;  // and the prompt
    const std::size_t height =
        headings == 0 || screen.m_Rows == 0 ? SIZE_MAX - 1 : std::max(screen.m_Rows, others) - others;
    const std::size_t room = screen.m_Columns == 0 ? SIZE_MAX : std::max(screen.m_Columns, indent) - indent;
    const std::vector<Shown> shown = Fit(std::min(rows, std::max(height, headings + 1)), room);

    std::size_t width = 1;
    for (const Shown& each : shown) {
        width += each.m_Width + GAP;
    }
    std::string text;
    text.reserve(std::min(rows, height) * width);
    std::size_t row = 0;
    for (std::size_t used = 0; row < rows && rows != headings; ++row) {
        const std::size_t before = text.size();
        AddRow(row, shown, screen, indent, text);
        used += lines(std::string_view(text).substr(before));
        const std::size_t further = row + 1 < rows || m_Further != 0 ? 1 : 0;
        if (row > headings && used + further > height) {
            text.resize(before);
            break;
        }
    }
    const std::size_t further = rows == headings ? m_Further : rows - row + m_Further;
    if (further != 0) {
        AddStyled("... and " + std::to_string(further) + " more; " + m_Where, Style::FAINT, screen.m_Colors,
                  text);
        text += '\n';
    }
    return text += below;
}

std::string Table::Html(const std::function<std::string(std::size_t row)>& link) const {
    constexpr int ON_NARROW_SCREENS = 1;  // as m_LeaveOut counts
    const std::size_t count = m_Columns.size();
    const std::size_t headings = HasHeadings() ? 1 : 0;
    std::string html = "<div class=scroll><table>";
    for (std::size_t i = 0; i < m_Cells.size(); ++i) {
        const Column& column = m_Columns[i % count];
        const bool isHeading = i < headings * count;
        std::string classes = column.m_Align == Align::RIGHT ? " n" : "";
        classes += column.m_LeaveOut > ON_NARROW_SCREENS ? " w" : "";
        classes += ClassOf(m_Cells[i].m_Style);
        html.append(i % count == 0 ? "\n<tr>" : "").append(isHeading ? "<th" : "<td");
        html += classes.empty() ? "" : " class=\"" + classes.substr(1) + "\"";
        const std::string address =
            link && !isHeading && i % count == 0 ? link(i / count - headings) : std::string();
        html += address.empty() ? ">" : "><a href=\"" + address + "\">";
        html.append(HtmlText(CellText(i))).append(address.empty() ? "" : "</a>");
    }
    html += "</table></div>";
    return m_Further == 0
               ? html
               : html + "<p>... and " + std::to_string(m_Further) + " more; " + HtmlText(m_Where) + "</p>";
}

}  // namespace pitool
