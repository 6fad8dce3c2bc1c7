// SPDX-License-Identifier: Apache-2.0

#include "drive_table.h"

#include "drive_detail.h"
#include "print/units.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <tuple>
#include <utility>

namespace pitool {
namespace {

namespace Figure = PI::HealthFigure;

/// What a cell shows. Drives are sorted by its number, the smallest first, or by its text where it has none.
struct Content {
    std::string m_Text;  ///< empty: unknown
    Style m_Style = Style::PLAIN;
    std::optional<double> m_Number = std::nullopt;
};

/// A figure, the largest first.
Content FigureContent(const SummaryFigure& figure, const std::string& text, bool isWarning = false) {
    return !figure.HasValue()
               ? Content{}
               : Content{figure.IsDoubtful() ? text + "?" : text, isWarning ? Style::WARNING : Style::PLAIN,
                         -static_cast<double>(figure.m_Value)};
}

Content State(const DriveSummary& drive) {
    return {StateWord(drive.GetState()), StateStyle(drive.GetState()), 0};
}

Content Size(const DriveSummary& drive) {
    return {SizeText(drive.GetCapacity()), Style::PLAIN, -static_cast<double>(drive.GetCapacity())};
}

Content Age(const DriveSummary& drive) {
    const SummaryFigure hours = drive.GetFigure(Figure::POWER_ON_HOURS);
    return FigureContent(hours, AgeText(static_cast<std::uint64_t>(hours.m_Value)));
}

Content Wear(const DriveSummary& drive) {
    const SummaryFigure wear = drive.GetFigure(Figure::WEAR);
    return FigureContent(wear, std::to_string(wear.m_Value) + " %", drive.IsWorn());
}

Content Life(const DriveSummary& drive) {
    const PI::CWearForecast forecast = drive.GetForecast();
    const bool isWorn = forecast.GetState() == PI::WearForecastState::WORN;
    const std::optional<std::uint64_t> hours = forecast.GetHours() ? forecast.GetHours() : forecast.GetLow();
    return !isWorn && !hours ? Content{}
                             : Content{LifeText(forecast), isWorn ? Style::WARNING : Style::PLAIN,
                                       static_cast<double>(hours.value_or(0))};
}

Content Temperature(const DriveSummary& drive) {
    const SummaryFigure now = drive.GetFigure(Figure::TEMPERATURE);
    const SummaryFigure limit = drive.GetTemperatureLimit();
    return FigureContent(
        now,
        std::to_string(now.m_Value) + (limit.HasValue() ? "/" + std::to_string(limit.m_Value) : "") + " C",
        drive.ExceededLimit().has_value());
}

Content Errors(const DriveSummary& drive) {
    const SummaryFigure errors = drive.GetErrors();
    return FigureContent(errors, std::to_string(errors.m_Value));
}

Content Reason(const DriveSummary& drive) {
    return drive.GetState() == PI::DriveState::GOOD ? Content{} : Content{std::string(drive.GetReason())};
}

/// A text as the summary has it.
template <std::string_view (DriveSummary::*GET)() const>
Content Text(const DriveSummary& drive) {
    return {std::string((drive.*GET)())};
}

/// A column of the table, which is also a way to sort.
struct DriveColumn {
    Column m_Column;
    const char* m_Key;  ///< null: no way to sort
    Content (*m_Content)(const DriveSummary& drive);
};

// Left out first is what the sheet of a drive says just as well.
constexpr DriveColumn COLUMNS[] = {
    {{"STATE"}, "state", State},
    {{"MODEL", Align::LEFT, 0, 26}, "model", Text<&DriveSummary::GetModel>},  // most fit into this width
    {{"SERIAL", Align::LEFT, 2, 20}, "serial", Text<&DriveSummary::GetSerial>},
    {{"SIZE", Align::RIGHT, 7}, "size", Size},
    {{"AGE", Align::RIGHT, 3}, "age", Age},
    {{"WEAR", Align::RIGHT, 1}, "wear", Wear},
    {{"LIFE LEFT", Align::LEFT, 6}, "life", Life},
    {{"TEMP", Align::RIGHT, 8}, "temperature", Temperature},
    {{"ERRORS", Align::RIGHT, 4}, "errors", Errors},
    {{"REASON", Align::LEFT, 0, 20}, nullptr, Reason},
    {{"FILE", Align::PATH, 5, 20}, "file", Text<&DriveSummary::GetFile>},
};

}  // namespace

std::vector<std::string> SortKeys() {
    std::vector<std::string> keys;
    for (const DriveColumn& column : COLUMNS) {
        if (column.m_Key != nullptr) {
            keys.emplace_back(column.m_Key);
        }
    }
    return keys;
}

void SortDrives(const std::string& key, DriveList& drives) {
    std::stable_sort(drives.begin(), drives.end(), [](const DriveSummary* left, const DriveSummary* right) {
        return IsWorse(*left, *right);
    });
    const auto* const column =
        std::find_if(std::begin(COLUMNS), std::end(COLUMNS),
                     [&key](const DriveColumn& each) { return each.m_Key != nullptr && key == each.m_Key; });
    if (column == std::end(COLUMNS)) {
        return;
    }
    // What is unknown last, then the number, then the text; equal ones keep their order.
    std::multimap<std::tuple<bool, double, std::string>, const DriveSummary*> order;
    for (const DriveSummary* drive : drives) {
        Content content = column->m_Content(*drive);
        const bool isUnknown = content.m_Text.empty();
        order.emplace(std::tuple(isUnknown, content.m_Number.value_or(0),
                                 content.m_Number ? "" : std::move(content.m_Text)),
                      drive);
    }
    std::transform(order.begin(), order.end(), drives.begin(), [](const auto& each) { return each.second; });
}

StateCounts::StateCounts(const DriveList& drives) : m_Drives(drives.size()) {
    for (const DriveSummary* drive : drives) {
        ++m_InState[drive->GetState()];
    }
}

std::string StateCounts::Text(std::size_t refused) const {
    constexpr std::pair<PI::_DRIVE_STATE, const char*> WORDS[] = {
        {PI::DriveState::FAILED, " failed"},   {PI::DriveState::REPLACE, " to replace"},
        {PI::DriveState::LOOK, " to look at"}, {PI::DriveState::UNKNOWN, " unknown"},
        {PI::DriveState::GOOD, " good"},
    };
    std::string text = std::to_string(m_Drives) + (m_Drives == 1 ? " drive" : " drives");
    const char* separator = ": ";
    for (const auto& [state, words] : WORDS) {
        if (m_InState[state] != 0) {
            text += separator + std::to_string(m_InState[state]) + words;
            separator = ", ";
        }
    }
    return text + (refused == 0   ? ""
                   : refused == 1 ? "; 1 input refused"
                                  : "; " + std::to_string(refused) + " inputs refused");
}

Table DriveTable(const DriveList& drives, std::size_t most) {
    std::vector<Column> columns;
    std::transform(std::begin(COLUMNS), std::end(COLUMNS), std::back_inserter(columns),
                   [](const DriveColumn& column) { return column.m_Column; });
    Table table(std::move(columns));
    for (std::size_t row = 0; row < std::min(most, drives.size()); ++row) {
        for (const DriveColumn& column : COLUMNS) {
            const Content content = column.m_Content(*drives[row]);
            table.Add(content.m_Text, content.m_Style);
        }
    }
    return table;
}

}  // namespace pitool
