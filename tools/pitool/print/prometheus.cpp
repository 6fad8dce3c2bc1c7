// SPDX-License-Identifier: Apache-2.0

#include "print/formats.h"

#include "print/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <map>
#include <string_view>

namespace pitool {
namespace {

namespace Health = PI::HealthFigure;

constexpr double NONE = std::numeric_limits<double>::quiet_NaN();
constexpr int SECONDS_PER_HOUR = 3600;

/// A figure of the drive's health where it is known, in the unit of its family.
template <PI::_HEALTH_FIGURE FIGURE, int FACTOR = 1, int DIVISOR = 1>
double Known(const DriveSummary& drive) {
    const SummaryFigure figure = drive.GetFigure(FIGURE);
    return figure.IsKnown() ? static_cast<double>(figure.m_Value) * FACTOR / DIVISOR : NONE;
}

double State(const DriveSummary& drive) {
    return drive.GetState();
}

double Capacity(const DriveSummary& drive) {
    return drive.GetCapacity() != 0 ? static_cast<double>(drive.GetCapacity()) : NONE;
}

double Time(const DriveSummary& drive) {
    return drive.GetTime() != 0 ? static_cast<double>(drive.GetTime()) : NONE;
}

double LifeLeft(const DriveSummary& drive) {
    const auto hours = drive.GetForecast().GetHours();
    return hours ? static_cast<double>(*hours) * SECONDS_PER_HOUR : NONE;
}

double LeastLifeLeft(const DriveSummary& drive) {
    const auto hours = drive.GetForecast().GetLow();
    return hours ? static_cast<double>(*hours) * SECONDS_PER_HOUR : NONE;
}

double Doubtful(const DriveSummary& drive) {
    double count = 0;
    for (int figure = Health::WEAR; figure <= Health::UNSAFE_SHUTDOWNS; ++figure) {
        count += drive.GetFigure(static_cast<PI::_HEALTH_FIGURE>(figure)).IsDoubtful() ? 1 : 0;
    }
    return count;
}

struct Family {
    const char* m_Name;
    const char* m_Help;
    double (*m_Value)(const DriveSummary& drive);  ///< NaN: the drive has no series
};

// Names and units never change: dashboards and alert rules depend on them. Names of counters end in "_total".
constexpr Family FAMILIES[] = {
    {"pi_drive_state", "What to do: 0 unknown, 1 good, 2 look at it, 3 replace it, 4 failed.", State},
    {"pi_drive_verdict", "The drive's own: 0 passed, 1 failing, 2 a warning.", Known<Health::VERDICT>},
    {"pi_drive_wear_ratio", "Life that the drive has used; may pass 1.", Known<Health::WEAR, 1, 100>},
    {"pi_drive_life_left_seconds", "Forecast of powered time until worn.", LifeLeft},
    {"pi_drive_life_left_low_seconds", "Low end of the forecast: one drive in ten is worn earlier.",
     LeastLifeLeft},
    {"pi_drive_spare_ratio", "Reserve blocks that are left.", Known<Health::SPARE, 1, 100>},
    {"pi_drive_power_on_seconds_total", "Time that the drive was powered.",
     Known<Health::POWER_ON_HOURS, SECONDS_PER_HOUR>},
    {"pi_drive_temperature_celsius", "Temperature now.", Known<Health::TEMPERATURE>},
    {"pi_drive_temperature_limit_celsius", "Temperature from which the drive warns.",
     Known<Health::TEMPERATURE_LIMIT>},
    {"pi_drive_capacity_bytes", "Size of the drive.", Capacity},
    {"pi_drive_written_bytes_total", "Bytes that hosts wrote.", Known<Health::BYTES_WRITTEN>},
    {"pi_drive_read_bytes_total", "Bytes that hosts read.", Known<Health::BYTES_READ>},
    {"pi_drive_media_errors_total", "Errors that the drive could not correct.", Known<Health::MEDIA_ERRORS>},
    {"pi_drive_reallocated_sectors", "Sectors replaced by spare ones.", Known<Health::REALLOCATED_SECTORS>},
    {"pi_drive_pending_sectors", "Sectors that could not be read.", Known<Health::PENDING_SECTORS>},
    {"pi_drive_interface_errors_total", "Damaged transfers between drive and host.",
     Known<Health::INTERFACE_ERRORS>},
    {"pi_drive_failed_self_tests", "Self-tests failed since the last one that passed.",
     Known<Health::FAILED_SELF_TESTS>},
    {"pi_drive_doubtful_figures", "Doubtful figures, which have no series.", Doubtful},
    {"pi_drive_report_timestamp_seconds", "When the report was made.", Time},
};

void AddNumber(double value, std::string& text) {
    char digits[64];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed).ptr);
}

void AddLabel(const char* name, std::string_view value, std::string& text) {
    text.append(text.empty() ? "" : ",").append(name).append("=\"");
    for (const char byte : PrintableText(value)) {
        text.append(byte == '"' || byte == '\\' ? 1 : 0, '\\');
        text += byte;
    }
    text += '"';
}

void AddHeading(const std::string& name, const char* help, std::string& text) {
    const bool isCounter = name.find("_total") != std::string::npos;
    text.append("# HELP ").append(name).append(" ").append(help);
    text.append("\n# TYPE ").append(name).append(isCounter ? " counter\n" : " gauge\n");
}

/// Labels that tell drives apart.
std::string Labels(const DriveSummary& drive) {
    std::string labels;
    AddLabel("model", drive.GetModel(), labels);
    AddLabel("serial", drive.GetSerial(), labels);
    AddLabel("device", drive.GetDevice(), labels);
    return labels;
}

}  // namespace

std::string PrometheusText(const DriveList& drives, std::size_t refused) {
    std::map<std::string, DriveList> reports;
    for (const DriveSummary* drive : drives) {
        reports[Labels(*drive)].push_back(drive);
    }
    std::map<std::string, const DriveSummary*> series;
    for (auto& [labels, list] : reports) {
        SortDrives("state", list);
        std::reverse(list.begin(), list.end());
        if (list.front()->IsIdentified()) {  // else a later report may be of another drive
            SortByAge(list);
        }
        series[labels] = list.back();
    }
    std::string text;
    AddHeading("pi_inputs_refused", "Inputs that gave no drive.", text);
    text += "pi_inputs_refused " + std::to_string(refused) + "\n";
    AddHeading("pi_drive_info", "What the drive is; always 1.", text);
    for (const auto& [labels, drive] : series) {
        std::string info = labels;
        AddLabel("firmware", drive->GetFirmware(), info);
        AddLabel("kind", drive->GetKind(), info);
        text.append("pi_drive_info{").append(info).append("} 1\n");
    }
    for (const Family& family : FAMILIES) {
        AddHeading(family.m_Name, family.m_Help, text);
        for (const auto& [labels, drive] : series) {
            const double value = family.m_Value(*drive);
            if (!std::isnan(value)) {
                text.append(family.m_Name).append("{").append(labels).append("} ");
                AddNumber(value, text);
                text += '\n';
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
