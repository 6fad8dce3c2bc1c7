// SPDX-License-Identifier: Apache-2.0

#include "drive_table.h"

#include "by_model.h"
#include "drive_figures.h"
#include "print/table.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <tuple>

namespace pitool {
namespace {

namespace Figure = PI::HealthFigure;

constexpr const char* NOTHING = "-";
constexpr std::size_t LONGEST_NAME =
    26;  // of a cell on a screen: most models fit, and odd ones cost no column

/// What a cell shows.
struct Content {
    std::string m_Text;
    bool m_Warning = false;
};

Content TextContent(std::string_view text) {
    return {PrintableText(text)};
}

std::string Marked(const std::string& text, const SummaryFigure& figure) {
    return figure.IsDoubtful() ? text + "?" : text;
}

Content Reason(const DriveSummary& drive) {
    const bool isSaid = drive.GetState() != PI::DriveState::GOOD;
    return isSaid ? TextContent(drive.GetReason()) : Content{NOTHING};
}

Content Age(const DriveSummary& drive) {
    const SummaryFigure hours = drive.GetFigure(Figure::POWER_ON_HOURS);
    return {hours.HasValue() ? Marked(AgeText(static_cast<std::uint64_t>(hours.m_Value)), hours) : NOTHING};
}

Content Wear(const DriveSummary& drive) {
    const SummaryFigure wear = drive.GetFigure(Figure::WEAR);
    return {wear.HasValue() ? Marked(std::to_string(wear.m_Value) + " %", wear) : NOTHING, drive.IsWorn()};
}

Content Life(const DriveSummary& drive) {
    const PI::CWearForecast forecast = drive.GetForecast();
    return {LifeText(forecast), forecast.GetState() == PI::WearForecastState::WORN};
}

Content Temperature(const DriveSummary& drive) {
    const SummaryFigure now = drive.GetFigure(Figure::TEMPERATURE);
    const SummaryFigure limit = drive.GetTemperatureLimit();
    if (!now.HasValue()) {
        return {NOTHING};
    }
    return {Marked(std::to_string(now.m_Value) +
                       (limit.HasValue() ? "/" + std::to_string(limit.m_Value) : "") + " C",
                   now),
            drive.ExceededLimit().has_value()};
}

Content Errors(const DriveSummary& drive) {
    const SummaryFigure errors = drive.GetErrors();
    return {errors.HasValue() ? Marked(std::to_string(errors.m_Value), errors) : NOTHING};
}

Content Size(const DriveSummary& drive) {
    const std::string size = SizeText(drive.GetCapacity());
    return {size.empty() ? NOTHING : size};
}

/// Ways to put drives in order, each by a number, the smallest first, or by a text.
using NumberKey = std::optional<double> (*)(const DriveSummary& drive);
using TextKey = std::string_view (*)(const DriveSummary& drive);

std::optional<double> Largest(const SummaryFigure& figure) {
    return figure.HasValue() ? std::optional(-static_cast<double>(figure.m_Value)) : std::nullopt;
}

std::optional<double> LargestSize(const DriveSummary& drive) {
    return drive.GetCapacity() != 0 ? std::optional(-static_cast<double>(drive.GetCapacity())) : std::nullopt;
}

std::optional<double> ShortestLife(const DriveSummary& drive) {
    const PI::CWearForecast forecast = drive.GetForecast();
    const std::optional<std::uint64_t> hours = forecast.GetHours() ? forecast.GetHours() : forecast.GetLow();
    return hours ? std::optional(static_cast<double>(*hours)) : std::nullopt;
}

template <PI::_HEALTH_FIGURE FIGURE>
std::optional<double> LargestFigure(const DriveSummary& drive) {
    return Largest(drive.GetFigure(FIGURE));
}

std::optional<double> MostErrors(const DriveSummary& drive) {
    return Largest(drive.GetErrors());
}

/// A column of the table, which is also a way to sort.
struct DriveColumn {
    const char* m_Heading;
    Align m_Align;
    int m_LeaveOut;  ///< as Column has it
    Content (*m_Content)(const DriveSummary& drive);
    const char* m_Key;  ///< null: no way to sort
    NumberKey m_Number;
    TextKey m_SortText;
};

// Left out first is what the sheet of a drive says just as well, last what finds it.
constexpr DriveColumn COLUMNS[] = {
    {"STATE", Align::LEFT, 0,
     [](const DriveSummary& drive) { return TextContent(StateWord(drive.GetState())); }, "state", nullptr,
     nullptr},
    {"MODEL", Align::LEFT, 1, [](const DriveSummary& drive) { return TextContent(drive.GetModel()); },
     "model", nullptr, [](const DriveSummary& drive) { return drive.GetModel(); }},
    {"SERIAL", Align::LEFT, 4, [](const DriveSummary& drive) { return TextContent(drive.GetSerial()); },
     "serial", nullptr, [](const DriveSummary& drive) { return drive.GetSerial(); }},
    {"SIZE", Align::RIGHT, 6, Size, "size", LargestSize, nullptr},
    {"AGE", Align::RIGHT, 3, Age, "age", LargestFigure<Figure::POWER_ON_HOURS>, nullptr},
    {"WEAR", Align::RIGHT, 2, Wear, "wear", LargestFigure<Figure::WEAR>, nullptr},
    {"LIFE LEFT", Align::LEFT, 8, Life, "life", ShortestLife, nullptr},
    {"TEMP", Align::RIGHT, 7, Temperature, "temperature", LargestFigure<Figure::TEMPERATURE>, nullptr},
    {"ERRORS", Align::RIGHT, 5, Errors, "errors", MostErrors, nullptr},
    {"REASON", Align::LEFT, 9, Reason, nullptr, nullptr, nullptr},
    {"FILE", Align::LEFT, 0, [](const DriveSummary& drive) { return TextContent(drive.GetFile()); }, "file",
     nullptr, [](const DriveSummary& drive) { return drive.GetFile(); }},
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
    const auto column = std::find_if(std::begin(COLUMNS), std::end(COLUMNS), [&key](const DriveColumn& each) {
        return each.m_Key != nullptr && key == each.m_Key;
    });
    if (column == std::end(COLUMNS) || (column->m_Number == nullptr && column->m_SortText == nullptr)) {
        return;
    }
    // What is unknown last, then the number, then the text.
    std::vector<std::tuple<bool, double, std::string_view, const DriveSummary*>> keyed;
    keyed.reserve(drives.size());
    for (const DriveSummary* drive : drives) {
        const std::string_view text = column->m_SortText != nullptr ? column->m_SortText(*drive) : "";
        const std::optional<double> number =
            column->m_Number != nullptr ? column->m_Number(*drive) : std::nullopt;
        keyed.emplace_back(!number && text.empty(), number.value_or(0), text, drive);
    }
    const auto rank = [](const auto& item) {
        return std::tie(std::get<0>(item), std::get<1>(item), std::get<2>(item));
    };
    std::stable_sort(keyed.begin(), keyed.end(),
                     [&rank](const auto& left, const auto& right) { return rank(left) < rank(right); });
    std::transform(keyed.begin(), keyed.end(), drives.begin(),
                   [](const auto& item) { return std::get<3>(item); });
}

void StateCounts::Add(PI::_DRIVE_STATE state) {
    ++m_Drives;
    ++m_InState[state];
}

std::string StateCounts::Text() const {
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
    return text;
}

std::string DriveTable(const DriveList& drives, const Screen& screen) {
    std::vector<Column> columns;
    for (const DriveColumn& column : COLUMNS) {
        columns.push_back({column.m_Heading, column.m_Align, column.m_LeaveOut,
                           column.m_SortText != nullptr ? LONGEST_NAME : 0});
    }
    Table table(std::move(columns), Table::LastColumn::CUT_IN_FRONT);
    for (const DriveSummary* drive : drives) {
        for (const DriveColumn& column : COLUMNS) {
            const Content content = column.m_Content(*drive);
            const Style style = &column == std::begin(COLUMNS) ? StateStyle(drive->GetState())
                                : content.m_Warning            ? Style::WARNING
                                : content.m_Text == NOTHING    ? Style::FAINT
                                                               : Style::PLAIN;
            table.Add(content.m_Text.empty() ? NOTHING : content.m_Text, style);
        }
    }
    return table.Text(screen);
}

std::string ModelTable(const DriveList& drives, const Screen& screen) {
    Table table({{"FAILED", Align::RIGHT},
                 {"REPLACE", Align::RIGHT},
                 {"LOOK", Align::RIGHT, 4},
                 {"DRIVES", Align::RIGHT},
                 {"MEDIAN AGE", Align::RIGHT, 1},
                 {"MEDIAN WEAR", Align::RIGHT, 2},
                 {"HIGHEST WEAR", Align::RIGHT, 3},
                 {"MODEL"}});
    const auto addCount = [&table](std::size_t count, Style style) {
        table.Add(count != 0 ? std::to_string(count) : NOTHING, count != 0 ? style : Style::FAINT);
    };
    const auto addPercent = [&table](const std::optional<std::int64_t>& wear) {
        table.Add(wear ? std::to_string(*wear) + " %" : NOTHING, wear ? Style::PLAIN : Style::FAINT);
    };
    for (const ModelCounts& model : CountByModel(drives)) {
        addCount(model.m_Failed, Style::FAILING);
        addCount(model.m_Replace, Style::FAILING);
        addCount(model.m_Look, Style::WARNING);
        addCount(model.m_Drives, Style::PLAIN);
        table.Add(model.m_MedianHours ? AgeText(static_cast<std::uint64_t>(*model.m_MedianHours)) : NOTHING);
        addPercent(model.m_MedianWear);
        addPercent(model.m_HighestWear);
        table.Add(model.m_Model.empty() ? NOTHING : PrintableText(model.m_Model));
    }
    return table.Text(screen);
}

}  // namespace pitool
