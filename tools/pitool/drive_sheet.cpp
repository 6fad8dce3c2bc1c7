// SPDX-License-Identifier: Apache-2.0

#include "drive_sheet.h"

#include "printable_text.h"

namespace pitool {

std::string FigureText(const Figure& figure) {
    if (!figure.IsKnown()) {
        return std::string(figure.m_Applicable ? "unknown" : "not applicable") + " (" +
               PrintableText(figure.m_Reason) + ")";
    }
    std::string text = FigureValueText(figure);
    const std::string counts = DirectionText(figure.m_Direction);
    if (!counts.empty()) {
        text += ", counts " + counts;
    }
    return figure.m_Source.empty() ? text : text + "; " + figure.m_Source;
}

std::string DriveSheet(const DriveAssessment& drive) {
    constexpr std::size_t NAME_WIDTH = 25;
    std::string sheet = PrintableText(drive.m_File) + "\n";
    for (const Figure& figure : drive.m_Figures) {
        std::string name = PI::PropertyIDToString(figure.m_Property.m_ID);
        name.resize(NAME_WIDTH, ' ');
        sheet += "  " + name + FigureText(figure) + "\n";
    }
    return sheet;
}

}  // namespace pitool
