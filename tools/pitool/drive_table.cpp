// SPDX-License-Identifier: Apache-2.0

#include "drive_table.h"

#include "drive_sheet.h"
#include "printable_text.h"
#include "text_table.h"
#include "wrapped_text.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace pitool {
namespace {

namespace ID = PI::PropertyID;

constexpr std::array<std::string_view, DRIVE_COLUMNS> HEADINGS = {
    "DRIVE", "MODEL", "KIND", "CAPACITY", "POWER-ON", "STATE", "WEAR (COUNTS UP)", "LIFETIME (COUNTS DOWN)"};

/// Short text of a figure: the reason for a missing one is only told where it matters most.
std::string ShortText(const DriveAssessment& drive, PI::_PROPERTY_ID id) {
    const Figure& figure = FindFigure(drive, id);
    if (figure.HasValue()) {
        return FigureValueText(figure);
    }
    return figure.m_Applicable ? "unknown" : "-";
}

std::string LifetimeText(const DriveAssessment& drive) {
    const Figure& figure = FindFigure(drive, ID::REMAINING_HOURS);
    return figure.HasValue() ? FigureValueText(figure) + ", " + drive.m_Lifetime.m_Basis : FigureText(figure);
}

std::vector<Cell> HeadingCells() {
    std::vector<Cell> cells;
    cells.reserve(DRIVE_COLUMNS);
    for (const std::string_view heading : HEADINGS) {
        cells.push_back({heading, Style::HEADING});
    }
    return cells;
}

/// The cells of a row in place of those that a list held before: rows are many.
void Split(const DriveRow& row, std::vector<Cell>& cells) {
    std::string_view rest = row.m_Text;
    cells.resize(DRIVE_COLUMNS);
    for (std::size_t i = 0; i < DRIVE_COLUMNS; ++i) {
        cells[i] = {rest.substr(0, rest.find('\n')), row.m_Styles[i]};
        rest.remove_prefix(cells[i].m_Text.size() + 1);
    }
}

/// The lines of a drive in a list: a heading and its cell in each.
std::array<std::vector<Cell>, DRIVE_COLUMNS - 1> ListLines(const std::vector<Cell>& cells) {
    std::array<std::vector<Cell>, DRIVE_COLUMNS - 1> lines;
    for (std::size_t i = 1; i < DRIVE_COLUMNS; ++i) {
        lines[i - 1] = {{HEADINGS[i]}, cells[i]};
    }
    return lines;
}

/// The drives one below the other, their files as headings.
std::string DriveList(const std::vector<const DriveRow*>& rows, const Screen& screen) {
    constexpr std::size_t INDENT = 2;
    TextTable table(screen, INDENT);
    std::vector<Cell> cells;
    for (const DriveRow* row : rows) {
        Split(*row, cells);
        for (const std::vector<Cell>& line : ListLines(cells)) {
            table.Measure(line);
        }
    }
    table.Fit();
    std::string list;
    for (const DriveRow* row : rows) {
        Split(*row, cells);
        AddWrapped("", "", cells.front().m_Text, Style::HEADING, screen, list);
        for (const std::vector<Cell>& line : ListLines(cells)) {
            table.AddLine(line, list);
        }
        list += '\n';
    }
    return list;
}

}  // namespace

DriveRow MakeDriveRow(const DriveAssessment& drive) {
    DriveRow row;
    std::size_t column = 0;
    const auto add = [&](const std::string& cell, Style style) {
        row.m_Text += cell + "\n";
        row.m_Styles[column++] = style;
    };
    const auto addFigure = [&](PI::_PROPERTY_ID id) {
        add(ShortText(drive, id), FigureStyle(drive, FindFigure(drive, id)));
    };
    add(PrintableText(drive.m_File), Style::PLAIN);
    addFigure(ID::PRODUCT);
    add(drive.m_Kind, Style::PLAIN);
    addFigure(ID::PHYSICAL_SIZE);
    addFigure(ID::POWERON_HOURS);
    add(PI::DriveStateToString(drive.m_State), StateStyle(drive.m_State));
    addFigure(ID::RATED_ENDURANCE_PERCENT);
    add(LifetimeText(drive), FigureStyle(drive, FindFigure(drive, ID::REMAINING_HOURS)));
    row.m_Text.shrink_to_fit();
    return row;
}

std::string DriveTable(const std::vector<const DriveRow*>& rows, const Screen& screen) {
    TextTable table(screen, 0);
    const std::vector<Cell> headings = HeadingCells();
    table.Measure(headings);
    std::vector<Cell> cells;
    for (const DriveRow* row : rows) {
        Split(*row, cells);
        table.Measure(cells);
    }
    if (!table.Fit()) {
        return DriveList(rows, screen);
    }
    std::string text;
    table.AddLine(headings, text);
    text += table.IsTall() ? "\n" : "";
    for (const DriveRow* row : rows) {
        Split(*row, cells);
        table.AddLine(cells, text);
        text += table.IsTall() ? "\n" : "";
    }
    return text;
}

}  // namespace pitool
