// SPDX-License-Identifier: Apache-2.0

#include "print/formats.h"

#include "print/text.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>

namespace pitool {
namespace {

namespace Health = PI::HealthFigure;

constexpr int SECONDS_PER_HOUR = 3600;

using Value = std::optional<double>;
using Drive = const DriveSummary&;

/// A figure of the drive's health where it is known, in the unit of its family.
template <PI::_HEALTH_FIGURE FIGURE, int FACTOR = 1, int DIVISOR = 1>
Value Known(Drive drive) {
    const SummaryFigure figure = drive.GetFigure(FIGURE);
    return figure.IsKnown() ? Value(static_cast<double>(figure.m_Value) * FACTOR / DIVISOR) : std::nullopt;
}

template <class Number>
Value UnlessZero(Number number) {
    return number != 0 ? Value(number) : std::nullopt;
}

Value Seconds(const std::optional<std::uint64_t>& hours) {
    return hours ? Value(static_cast<double>(*hours) * SECONDS_PER_HOUR) : std::nullopt;
}

int CountDoubtful(Drive drive) {
    int count = 0;
    for (int figure = Health::WEAR; figure <= Health::UNSAFE_SHUTDOWNS; ++figure) {
        count += drive.GetFigure(static_cast<PI::_HEALTH_FIGURE>(figure)).IsDoubtful() ? 1 : 0;
    }
    return count;
}

struct Family {
    const char* m_Name;
    const char* m_Help;
    Value (*m_Value)(Drive drive);  ///< none: the drive has no series
};

// Names and units never change: dashboards and alert rules depend on them. Names of counters end in "_total".
constexpr Family FAMILIES[] = {
    {"pi_drive_state", "What to do: 0 unknown, 1 good, 2 look at it, 3 replace it, 4 failed.",
     [](Drive drive) { return Value(drive.GetState()); }},
    {"pi_drive_verdict", "The drive's own: 0 passed, 1 failing, 2 a warning.", Known<Health::VERDICT>},
    {"pi_drive_wear_ratio", "Life that the drive has used; may pass 1.", Known<Health::WEAR, 1, 100>},
    {"pi_drive_life_left_seconds", "Forecast of powered time until worn.",
     [](Drive drive) { return Seconds(drive.GetForecast().GetHours()); }},
    {"pi_drive_life_left_low_seconds", "Low end of the forecast: one drive in ten is worn earlier.",
     [](Drive drive) { return Seconds(drive.GetForecast().GetLow()); }},
    {"pi_drive_spare_ratio", "Reserve blocks that are left.", Known<Health::SPARE, 1, 100>},
    {"pi_drive_power_on_seconds_total", "Time that the drive was powered.",
     Known<Health::POWER_ON_HOURS, SECONDS_PER_HOUR>},
    {"pi_drive_temperature_celsius", "Temperature now.", Known<Health::TEMPERATURE>},
    {"pi_drive_temperature_limit_celsius", "Temperature from which the drive warns.",
     Known<Health::TEMPERATURE_LIMIT>},
    {"pi_drive_capacity_bytes", "Size of the drive.",
     [](Drive drive) { return UnlessZero(drive.GetCapacity()); }},
    {"pi_drive_written_bytes_total", "Bytes that hosts wrote.", Known<Health::BYTES_WRITTEN>},
    {"pi_drive_read_bytes_total", "Bytes that hosts read.", Known<Health::BYTES_READ>},
    {"pi_drive_media_errors_total", "Errors that the drive could not correct.", Known<Health::MEDIA_ERRORS>},
    {"pi_drive_reallocated_sectors", "Sectors replaced by spare ones.", Known<Health::REALLOCATED_SECTORS>},
    {"pi_drive_pending_sectors", "Sectors that could not be read.", Known<Health::PENDING_SECTORS>},
    {"pi_drive_interface_errors_total", "Damaged transfers between drive and host.",
     Known<Health::INTERFACE_ERRORS>},
    {"pi_drive_failed_self_tests", "Self-tests failed since the last one that passed.",
     Known<Health::FAILED_SELF_TESTS>},
    {"pi_drive_doubtful_figures", "Doubtful figures, which have no series.",
     [](Drive drive) { return Value(CountDoubtful(drive)); }},
    {"pi_drive_report_timestamp_seconds", "When the report was made.",
     [](Drive drive) { return UnlessZero(drive.GetTime()); }},
};

void AddHeading(const std::string& name, const char* help, std::string& text) {
    const bool isCounter = name.find("_total") != std::string::npos;
    text.append("# HELP ").append(name).append(" ").append(help);
    text.append("\n# TYPE ").append(name).append(isCounter ? " counter\n" : " gauge\n");
}

/// Labels that tell drives apart.
std::string Labels(Drive drive) {
    return "model=" + InQuotes(drive.GetModel(), '\\') + ",serial=" + InQuotes(drive.GetSerial(), '\\') +
           ",device=" + InQuotes(drive.GetDevice(), '\\');
}

}  // namespace

std::string PrometheusText(const DriveList& drives, std::size_t refused) {
    std::map<std::string, DriveList> series;  // the last report of each counts
    for (const DriveSummary* drive : drives) {
        series[Labels(*drive)].push_back(drive);
    }
    for (auto& [labels, list] : series) {
        SortDrives("state", list);
        std::reverse(list.begin(), list.end());
        if (list.front()->IsIdentified()) {  // else a later report may be of another drive
            SortByAge(list);
        }
    }
    std::string text;
    AddHeading("pi_inputs_refused", "Inputs that gave no drive.", text);
    text += "pi_inputs_refused " + std::to_string(refused) + "\n";
    AddHeading("pi_drive_info", "What the drive is; always 1.", text);
    for (const auto& [labels, list] : series) {
        text += "pi_drive_info{" + labels + ",firmware=" + InQuotes(list.back()->GetFirmware(), '\\') +
                ",kind=" + InQuotes(list.back()->GetKind(), '\\') + "} 1\n";
    }
    for (const Family& family : FAMILIES) {
        AddHeading(family.m_Name, family.m_Help, text);
        for (const auto& [labels, list] : series) {
            if (const Value value = family.m_Value(*list.back())) {
                char digits[64];
                char* const end =
                    std::to_chars(digits, std::end(digits), *value, std::chars_format::fixed).ptr;
                text.append(family.m_Name).append("{").append(labels).append("} ");
                text.append(digits, end) += '\n';
            }
        }
    }
    if (series.size() != drives.size()) {
        text += "# left out: " + std::to_string(drives.size() - series.size()) +
                " reports with model, serial number and device of another one\n";
    }
    return text;
}

}  // namespace pitool
