// SPDX-License-Identifier: Apache-2.0

#include "commands.h"

#include "drive_figures.h"
#include "drive_identity.h"
#include "drive_json.h"
#include "print/json.h"
#include "print/output.h"
#include "print/table.h"
#include "print/text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace pitool {
namespace {

namespace Figure = PI::HealthFigure;
namespace State = PI::WearForecastState;

struct DriveForecast {
    DriveSummary m_Drive;  ///< the latest report that tells wear and power-on hours, else the latest one
    std::size_t m_Readings = 0;
    PI::CWearForecast m_Forecast;

    /// Why there is no estimate; empty where there is one.
    std::string Reason() const { return m_Drive.IsSolidState() ? m_Forecast.GetReason() : "rotating disk"; }
};

/// @param reports of one drive, the oldest first
DriveForecast MakeForecast(const std::vector<DriveSummary>& reports) {
    std::vector<PI::CWearReading> readings;
    readings.reserve(reports.size());
    for (const DriveSummary& report : reports) {
        readings.push_back(report.GetReading());
    }
    const auto telling = std::find_if(reports.rbegin(), reports.rend(), [](const DriveSummary& report) {
        return report.GetFigure(Figure::WEAR).IsKnown() && report.GetFigure(Figure::POWER_ON_HOURS).IsKnown();
    });
    const DriveSummary& latest = telling != reports.rend() ? *telling : reports.back();
    const SummaryFigure rated = latest.GetFigure(Figure::RATED_TERABYTES);
    return {latest, reports.size(),
            PI::CWearForecast(readings, rated.IsKnown() ? static_cast<std::uint64_t>(rated.m_Value) : 0)};
}

/// Whether a drive comes first: what is worn earliest, then what stands still, then what cannot be said.
bool IsWornEarlier(const DriveForecast& left, const DriveForecast& right) {
    const auto rank = [](const DriveForecast& drive) {
        const PI::CWearForecast& forecast = drive.m_Forecast;
        const int group = forecast.GetHours()            ? 0
                          : forecast.GetLow()            ? 1
                          : drive.m_Drive.IsSolidState() ? 2
                                                         : 3;
        return std::make_tuple(group, forecast.GetHours().value_or(0), forecast.GetLow().value_or(0),
                               -drive.m_Drive.GetFigure(Figure::WEAR).m_Value);
    };
    return rank(left) < rank(right);
}

template <class Value>
void AddNumber(JsonWriter& json, const char* name, const std::optional<Value>& value) {
    json.Name(name);
    value ? json.Number(*value) : json.Null();
}

void AddFigure(JsonWriter& json, const char* name, const SummaryFigure& figure) {
    AddNumber(json, name, figure.IsKnown() ? std::optional(figure.m_Value) : std::nullopt);
}

std::string ForecastJson(const std::vector<DriveForecast>& drives, const DriveReports& reports) {
    std::string text;
    JsonWriter json(text);
    json.BeginObject();
    json.Name("format").Text("pitool forecast");
    json.Name("version").Number(std::int64_t{1});
    json.Name("drives").BeginList();
    for (const DriveForecast& drive : drives) {
        json.BeginObject();
        json.Name("serial_number").TextOrNull(drive.m_Drive.GetSerial());
        json.Name("model").TextOrNull(drive.m_Drive.GetModel());
        json.Name("readings").Number(std::uint64_t{drive.m_Readings});
        AddFigure(json, "wear", drive.m_Drive.GetFigure(Figure::WEAR));
        AddFigure(json, "hours", drive.m_Drive.GetFigure(Figure::POWER_ON_HOURS));
        json.Name("forecast");
        AddForecast(drive.m_Forecast, drive.m_Drive.IsSolidState(), json);
        json.EndObject();
    }
    json.EndList();
    AddErrors(reports.m_Errors, json);
    json.EndObject();
    return text + "\n";
}

/// The month in which a drive will have run for so many hours more.
std::string MonthText(const PI::CWearForecast& forecast, const std::optional<std::uint64_t>& hours) {
    constexpr std::size_t YEAR_AND_MONTH = 7;
    constexpr std::uint64_t LONGEST = 262980;  // hours of thirty years, as LifeText
    const auto date = hours && *hours <= LONGEST ? forecast.GetDate(*hours) : std::nullopt;
    return date ? TimeText(*date).substr(0, YEAR_AND_MONTH) : "-";
}

std::string ForecastTable(const std::vector<DriveForecast>& drives, const Screen& screen) {
    const bool areDated = std::any_of(drives.begin(), drives.end(), [](const DriveForecast& drive) {
        return drive.m_Forecast.GetLow() && drive.m_Forecast.GetDate(0);
    });
    std::vector<Column> columns = {{"LIFE LEFT"}};
    if (areDated) {
        columns.insert(columns.end(),
                       {{"WORN IN"}, {"EARLIEST", Align::LEFT, 6}, {"LATEST", Align::LEFT, 7}});
    }
    columns.insert(columns.end(), {{"WEAR", Align::RIGHT, 2},
                                   {"AGE", Align::RIGHT, 3},
                                   {"READINGS", Align::RIGHT, 5},
                                   {"MODEL", Align::LEFT, 1},
                                   {"SERIAL"},
                                   {"BASIS", Align::LEFT, 4}});
    Table table(std::move(columns));
    for (const DriveForecast& drive : drives) {
        const PI::CWearForecast& forecast = drive.m_Forecast;
        const SummaryFigure wear = drive.m_Drive.GetFigure(Figure::WEAR);
        const SummaryFigure hours = drive.m_Drive.GetFigure(Figure::POWER_ON_HOURS);
        table.Add(LifeText(forecast), forecast.GetState() == State::WORN ? Style::WARNING : Style::PLAIN);
        if (areDated) {
            const bool isWorn = forecast.GetState() == State::WORN;
            table.Add(isWorn ? "-" : MonthText(forecast, forecast.GetHours()));
            table.Add(isWorn ? "-" : MonthText(forecast, forecast.GetLow()));
            table.Add(isWorn ? "-" : MonthText(forecast, forecast.GetHigh()));
        }
        table.Add(wear.HasValue() ? std::to_string(wear.m_Value) + (wear.IsKnown() ? " %" : " %?") : "-");
        table.Add(hours.HasValue() ? AgeText(static_cast<std::uint64_t>(hours.m_Value)) : "-");
        table.Add(std::to_string(drive.m_Readings));
        table.Add(PrintableText(drive.m_Drive.GetModel()));
        table.Add(PrintableText(drive.m_Drive.GetSerial()));
        const std::string reason = drive.Reason();
        table.Add(reason.empty() ? BasisText(forecast.GetBasis()) : reason);
    }
    return table.Text(screen);
}

ExitStatus RunForecast(const std::vector<std::string>& files, bool isJson) {
    const DriveReports reports = ReadDrives(files);
    std::vector<DriveForecast> drives;
    drives.reserve(reports.m_Drives.size());
    for (const std::vector<DriveSummary>& drive : reports.m_Drives) {
        drives.push_back(MakeForecast(drive));
    }
    std::stable_sort(drives.begin(), drives.end(), IsWornEarlier);
    const bool isWritten = WriteOutput(isJson           ? ForecastJson(drives, reports)
                                       : drives.empty() ? ""
                                                        : ForecastTable(drives, OutputScreen()));
    return isWritten && reports.m_Errors.empty() ? EXIT_DONE : EXIT_BAD_INPUT;
}

struct ForecastOptions {
    std::vector<std::string> m_Files;
    bool m_Json = false;
};

}  // namespace

void AddForecast(CLI::App& app, Action& action) {
    CLI::App* command = app.add_subcommand("forecast", "Tell when drives will be worn, from their reports");
    const auto options = std::make_shared<ForecastOptions>();
    command->add_option("FILE", options->m_Files, "Files or folders of reports; - is standard input")
        ->option_text("...")
        ->required();
    command->add_flag("--json", options->m_Json, JSON_HELP);
    command->footer(
        std::string("Reports of the same model and serial number are readings of one drive.\n\n") + EXAMPLES +
        "  pitool forecast drives\n"
        "  pitool forecast --json history");
    command->callback([&action, options] {
        action = [options] { return RunForecast(options->m_Files, options->m_Json); };
    });
}

}  // namespace pitool
