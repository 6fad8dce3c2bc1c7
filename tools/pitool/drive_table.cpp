// SPDX-License-Identifier: Apache-2.0

#include "drive_table.h"

#include "drive_sheet.h"
#include "printable_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace pitool {
namespace {

namespace ID = PI::PropertyID;

constexpr std::size_t COLUMNS = 8;
using Cells = std::array<std::string_view, COLUMNS>;

constexpr Cells HEADINGS = {
    "DRIVE", "MODEL", "KIND", "CAPACITY", "POWER-ON", "STATE", "WEAR (COUNTS UP)", "LIFETIME (COUNTS DOWN)"};

/// Short text of a figure: the reason for a missing one is only told where it matters most.
std::string ShortText(const DriveAssessment& drive, PI::_PROPERTY_ID id) {
    const Figure& figure = FindFigure(drive, id);
    if (figure.IsKnown()) {
        return FigureValueText(figure);
    }
    return figure.m_Applicable ? "unknown" : "-";
}

std::string LifetimeText(const DriveAssessment& drive) {
    const Figure& figure = FindFigure(drive, ID::REMAINING_HOURS);
    return figure.IsKnown() ? FigureValueText(figure) + ", " + LifetimeBasisText(drive.m_Lifetime.m_Basis)
                            : FigureText(figure);
}

Cells Split(std::string_view row) {
    Cells cells;
    for (std::string_view& cell : cells) {
        cell = row.substr(0, row.find('\n'));
        row.remove_prefix(cell.size() + 1);
    }
    return cells;
}

/// The cells in columns as wide as given, the last one as wide as it is.
void AddLine(const Cells& cells, const std::array<std::size_t, COLUMNS>& widths, std::string& table) {
    for (std::size_t i = 0; i + 1 < COLUMNS; ++i) {
        table += cells[i];
        table.append(widths[i] - CharacterCount(cells[i]) + 2, ' ');
    }
    table += cells.back();
    table += '\n';
}

}  // namespace

DriveRow MakeDriveRow(const DriveAssessment& drive) {
    DriveRow row;
    for (const std::string& cell :
         {PrintableText(drive.m_File), ShortText(drive, ID::PRODUCT), std::string(drive.m_Kind),
          ShortText(drive, ID::PHYSICAL_SIZE), ShortText(drive, ID::POWERON_HOURS),
          ShortText(drive, ID::HEALTH), ShortText(drive, ID::RATED_ENDURANCE_PERCENT), LifetimeText(drive)}) {
        row += cell + "\n";
    }
    row.shrink_to_fit();
    return row;
}

std::string DriveTable(const std::vector<const DriveRow*>& rows) {
    std::array<std::size_t, COLUMNS> widths{};
    const auto widen = [&](const Cells& cells) {
        for (std::size_t i = 0; i < COLUMNS; ++i) {
            widths[i] = std::max(widths[i], CharacterCount(cells[i]));
        }
    };
    widen(HEADINGS);
    for (const DriveRow* row : rows) {
        widen(Split(*row));
    }
    std::string table;
    AddLine(HEADINGS, widths, table);
    for (const DriveRow* row : rows) {
        AddLine(Split(*row), widths, table);
    }
    return table;
}

}  // namespace pitool
