#include "drive_table.h"

#include "drive_sheet.h"
#include "printable_text.h"

#include <algorithm>

namespace pitool {
namespace {

namespace ID = PI::PropertyID;

constexpr const char* HEADINGS[TABLE_COLUMNS] = {
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

}  // namespace

DriveRow MakeDriveRow(const DriveAssessment& drive) {
    return {PrintableText(drive.m_File),
            ShortText(drive, ID::PRODUCT),
            drive.m_Kind,
            ShortText(drive, ID::PHYSICAL_SIZE),
            ShortText(drive, ID::POWERON_HOURS),
            ShortText(drive, ID::HEALTH),
            ShortText(drive, ID::RATED_ENDURANCE_PERCENT),
            LifetimeText(drive)};
}

std::string DriveTable(const std::vector<const DriveRow*>& rows) {
    DriveRow headings;
    std::copy(std::begin(HEADINGS), std::end(HEADINGS), headings.begin());
    std::vector<const DriveRow*> lines{&headings};
    lines.insert(lines.end(), rows.begin(), rows.end());

    std::array<std::size_t, TABLE_COLUMNS> widths{};
    for (const DriveRow* line : lines) {
        for (std::size_t i = 0; i < TABLE_COLUMNS; ++i) {
            widths[i] = std::max(widths[i], CharacterCount((*line)[i]));
        }
    }
    std::string table;
    for (const DriveRow* line : lines) {
        for (std::size_t i = 0; i + 1 < TABLE_COLUMNS; ++i) {
            table += (*line)[i];
            table.append(widths[i] - CharacterCount((*line)[i]) + 2, ' ');
        }
        table += line->back() + "\n";
    }
    return table;
}

}  // namespace pitool
