// SPDX-License-Identifier: Apache-2.0

#include "commands.h"

#include "drive_detail.h"
#include "print/units.h"
#include "reports.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <tuple>

namespace pitool {
namespace {

namespace State = PI::WearForecastState;

struct Options {
    std::vector<std::string> m_Files;
    bool m_Json = false;
};

struct DriveForecast {
    /// The latest report that tells wear and power-on hours, else the latest one.
    const DriveSummary* m_Drive;
    std::size_t m_Readings;
    PI::CWearForecast m_Forecast;
};

SummaryFigure Wear(const DriveSummary& drive) {
    return drive.GetFigure(PI::HealthFigure::WEAR);
}

SummaryFigure Hours(const DriveSummary& drive) {
    return drive.GetFigure(PI::HealthFigure::POWER_ON_HOURS);
}

/// Warns of a report that is later than another one of the same drive and has fewer hours.
void CheckHistory(const DriveList& reports) {
    std::map<std::pair<std::int64_t, std::int64_t>, const DriveSummary*> dated;  // by date, then hours
    for (const DriveSummary* report : reports) {
        if (report->GetTime() != 0 && Hours(*report).IsKnown()) {
            dated[{report->GetTime(), Hours(*report).m_Value}] = report;
        }
    }
    const auto earlier = std::adjacent_find(
        dated.begin(), dated.end(),
        [](const auto& left, const auto& right) { return left.first.second > right.first.second; });
    if (earlier != dated.end()) {
        ReportWarning(std::next(earlier)->second->GetFile(),
                      "fewer power-on hours than in an earlier report of the same drive");
    }
}

/// @param reports of one drive, the oldest first
DriveForecast MakeForecast(const DriveList& reports) {
    std::vector<PI::CWearReading> readings;
    std::transform(reports.begin(), reports.end(), std::back_inserter(readings),
                   [](const DriveSummary* report) { return report->GetReading(); });
    const auto telling = std::find_if(reports.rbegin(), reports.rend(), [](const DriveSummary* report) {
        return Wear(*report).IsKnown() && Hours(*report).IsKnown();
    });
    const DriveSummary* const latest = telling != reports.rend() ? *telling : reports.back();
    return {latest, reports.size(), PI::CWearForecast(readings, latest->GetRating())};
}

/// Whether a drive comes first: those worn out earliest, then those whose wear stands still, then those
/// without a forecast.
bool IsWornEarlier(const DriveForecast& left, const DriveForecast& right) {
    const auto rank = [](const DriveForecast& drive) {
        const PI::CWearForecast& forecast = drive.m_Forecast;
        const int group = forecast.GetHours() ? 0 : forecast.GetLow() ? 1 : !drive.m_Drive->IsDisk() ? 2 : 3;
        return std::make_tuple(group, forecast.GetHours().value_or(0), forecast.GetLow().value_or(0),
                               -Wear(*drive.m_Drive).m_Value);
    };
    return rank(left) < rank(right);
}

std::string ForecastJson(const std::vector<DriveForecast>& drives, const DriveReports& reports) {
    const auto known = [](const SummaryFigure& figure) {
        return figure.IsKnown() ? std::optional(figure.m_Value) : std::nullopt;
    };
    return JsonDocument("pitool forecast", [&](JsonWriter& json) {
        json.Objects("drives", drives, [&](const DriveForecast& drive) {
            json.Member("serial_number", OrNull(drive.m_Drive->GetSerial()));
            json.Member("model", OrNull(drive.m_Drive->GetModel()));
            json.Member("readings", drive.m_Readings);
            json.Member("wear", known(Wear(*drive.m_Drive)));
            json.Member("hours", known(Hours(*drive.m_Drive)));
            AddForecast(drive.m_Forecast, drive.m_Drive->IsDisk(), json.Name("forecast"));
        });
        AddErrors(reports.m_Errors, json);
    });
}

/// The month in which a drive will have run for so many hours more.
std::string MonthText(const PI::CWearForecast& forecast, const std::optional<std::uint64_t>& hours) {
    constexpr std::size_t YEAR_AND_MONTH = 7;
    constexpr std::uint64_t LONGEST = 262980;  // hours of thirty years, as LifeText
    const bool isTold = hours && *hours <= LONGEST && forecast.GetState() != State::WORN;
    const std::string time = isTold ? TimeText(forecast.GetDate(*hours).value_or(0)) : "";
    return time.substr(0, YEAR_AND_MONTH);
}

std::string ForecastTable(const std::vector<DriveForecast>& drives, const Screen& screen) {
    const bool areDated = std::any_of(drives.begin(), drives.end(), [](const DriveForecast& drive) {
        return drive.m_Forecast.GetLow() && drive.m_Forecast.GetDate(0);
    });
    std::vector<Column> columns = {{"LIFE LEFT"},
                                   {"WORN IN"},
                                   {"EARLIEST", Align::LEFT, 6},
                                   {"LATEST", Align::LEFT, 7},
                                   {"WEAR", Align::RIGHT, 2},
                                   {"AGE", Align::RIGHT, 3},
                                   {"READINGS", Align::RIGHT, 5},
                                   {"MODEL", Align::LEFT, 1},
                                   {"SERIAL"},
                                   {"BASIS", Align::LEFT, 4}};
    if (!areDated) {
        columns.erase(columns.begin() + 1, columns.begin() + 4);
    }
    Table table(std::move(columns));
    for (const DriveForecast& drive : drives) {
        const PI::CWearForecast& forecast = drive.m_Forecast;
        const SummaryFigure wear = Wear(*drive.m_Drive);
        const SummaryFigure hours = Hours(*drive.m_Drive);
        table.Add(LifeText(forecast), forecast.GetState() == State::WORN ? Style::WARNING : Style::PLAIN);
        if (areDated) {
            table.Add(MonthText(forecast, forecast.GetHours()));
            table.Add(MonthText(forecast, forecast.GetLow()));
            table.Add(MonthText(forecast, forecast.GetHigh()));
        }
        table.Add(wear.HasValue() ? std::to_string(wear.m_Value) + (wear.IsKnown() ? " %" : " %?") : "");
        table.Add(hours.HasValue()
                      ? AgeText(static_cast<std::uint64_t>(hours.m_Value)) + (hours.IsKnown() ? "" : "?")
                      : "");
        table.Add(std::to_string(drive.m_Readings));
        table.Add(drive.m_Drive->GetModel());
        table.Add(drive.m_Drive->GetSerial());
        const std::string_view reason = drive.m_Drive->IsDisk() ? ROTATING : forecast.GetReason();
        table.Add(reason.empty() ? BasisText(forecast.GetBasis()) : reason);
    }
    return table.Text(screen);
}

ExitStatus Run(const Options& options) {
    const DriveReports reports = ReadDrives(options.m_Files);
    std::vector<DriveForecast> drives;
    drives.reserve(reports.m_Drives.size());
    for (const DriveList& drive : reports.m_Drives) {
        CheckHistory(drive);
        drives.push_back(MakeForecast(drive));
    }
    std::stable_sort(drives.begin(), drives.end(), IsWornEarlier);
    const ExitStatus printed = Print(options.m_Json   ? ForecastJson(drives, reports)
                                     : drives.empty() ? ""
                                                      : ForecastTable(drives, OutputScreen()));
    return reports.m_Errors.empty() ? printed : EXIT_BAD_INPUT;
}

}  // namespace

void AddForecast(CLI::App& app, Action& action) {
    CLI::App* command = app.add_subcommand("forecast", "Say when drives will be worn out, from reports");
    const auto options = std::make_shared<Options>();
    command->add_option("FILE", options->m_Files, "Files or folders of reports; - is standard input")
        ->option_text("...")
        ->required();
    command->add_flag("--json", options->m_Json, JSON_HELP);
    command->footer(
        std::string("Reports of the same model and serial number are readings of one drive.\n\n") + EXAMPLES +
        "  pitool forecast drives\n"
        "  pitool forecast --json history");
    command->callback([&action, options] { action = [options] { return Run(*options); }; });
}

}  // namespace pitool
