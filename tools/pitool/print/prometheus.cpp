// SPDX-License-Identifier: Apache-2.0

#include "print/prometheus.h"

#include "drive_identity.h"
#include "print/text.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <string_view>

namespace pitool {
namespace {

namespace Health = PI::HealthFigure;

constexpr double NONE = std::numeric_limits<double>::quiet_NaN();
constexpr double SECONDS_PER_HOUR = 3600;

/// A figure of the drive's health where it is known.
template <PI::_HEALTH_FIGURE FIGURE>
double Known(const DriveSummary& drive) {
    const SummaryFigure figure = drive.GetFigure(FIGURE);
    return figure.IsKnown() ? static_cast<double>(figure.m_Value) : NONE;
}

template <PI::_HEALTH_FIGURE FIGURE>
double Ratio(const DriveSummary& drive) {
    return Known<FIGURE>(drive) / 100;
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

double Number(const std::optional<std::uint64_t>& hours) {
    return hours ? static_cast<double>(*hours) : NONE;
}

double LifeLeft(const DriveSummary& drive) {
    return Number(drive.GetForecast().GetHours());
}

double LeastLifeLeft(const DriveSummary& drive) {
    return Number(drive.GetForecast().GetLow());
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
    const char* m_Type;
    double (*m_Value)(const DriveSummary& drive);  ///< NaN: the drive has no series
    double m_Factor;                               ///< to the unit of the family
    const char* m_Help;
};

// Names and units never change: dashboards and alert rules rest on them.
constexpr Family FAMILIES[] = {
    {"pi_drive_state", "gauge", State, 1,
     "What to do: 0 unknown, 1 good, 2 look at it, 3 replace it, 4 failed."},
    {"pi_drive_verdict", "gauge", Known<Health::VERDICT>, 1,
     "The drive's own: 0 passed, 1 failing, 2 a warning."},
    {"pi_drive_wear_ratio", "gauge", Ratio<Health::WEAR>, 1, "Life that the drive has used; may pass 1."},
    {"pi_drive_life_left_seconds", "gauge", LifeLeft, SECONDS_PER_HOUR,
     "Forecast of powered time until worn."},
    {"pi_drive_life_left_low_seconds", "gauge", LeastLifeLeft, SECONDS_PER_HOUR,
     "Low end of the forecast: one drive in ten is worn earlier."},
    {"pi_drive_spare_ratio", "gauge", Ratio<Health::SPARE>, 1, "Reserve blocks that are left."},
    {"pi_drive_power_on_seconds_total", "counter", Known<Health::POWER_ON_HOURS>, SECONDS_PER_HOUR,
     "Time that the drive was powered."},
    {"pi_drive_temperature_celsius", "gauge", Known<Health::TEMPERATURE>, 1, "Temperature now."},
    {"pi_drive_temperature_limit_celsius", "gauge", Known<Health::TEMPERATURE_LIMIT>, 1,
     "Temperature from which the drive warns."},
    {"pi_drive_capacity_bytes", "gauge", Capacity, 1, "Size of the drive."},
    {"pi_drive_written_bytes_total", "counter", Known<Health::BYTES_WRITTEN>, 1, "Bytes that hosts wrote."},
    {"pi_drive_read_bytes_total", "counter", Known<Health::BYTES_READ>, 1, "Bytes that hosts read."},
    {"pi_drive_media_errors_total", "counter", Known<Health::MEDIA_ERRORS>, 1,
     "Errors that the drive could not correct."},
    {"pi_drive_reallocated_sectors", "gauge", Known<Health::REALLOCATED_SECTORS>, 1,
     "Sectors replaced by spare ones."},
    {"pi_drive_pending_sectors", "gauge", Known<Health::PENDING_SECTORS>, 1,
     "Sectors that could not be read."},
    {"pi_drive_interface_errors_total", "counter", Known<Health::INTERFACE_ERRORS>, 1,
     "Damaged transfers between drive and host."},
    {"pi_drive_failed_self_tests", "gauge", Known<Health::FAILED_SELF_TESTS>, 1,
     "Self-tests failed since the last one that passed."},
    {"pi_drive_doubtful_figures", "gauge", Doubtful, 1,
     "Figures against which something speaks; they have no series."},
    {"pi_drive_report_timestamp_seconds", "gauge", Time, 1, "When the report was made."},
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

void AddHeading(const char* name, const char* type, const char* help, std::string& text) {
    text.append("# HELP ").append(name).append(" ").append(help);
    text.append("\n# TYPE ").append(name).append(" ").append(type).append("\n");
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

std::string PrometheusText(const std::vector<const DriveSummary*>& drives, std::size_t refused) {
    std::map<std::string, const DriveSummary*> series;
    for (const DriveSummary* drive : drives) {
        const DriveSummary*& kept = series[Labels(*drive)];
        // Without a serial number that identifies it, a later report may be of another drive.
        const bool hasOrder =
            kept != nullptr && IdentifiesDrive(drive->GetSerial()) && kept->GetTime() != drive->GetTime();
        const bool isTaken =
            kept == nullptr || (hasOrder ? kept->GetTime() < drive->GetTime() : IsWorse(*drive, *kept));
        kept = isTaken ? drive : kept;
    }
    std::string text;
    AddHeading("pi_inputs_refused", "gauge", "Inputs that gave no drive.", text);
    text += "pi_inputs_refused " + std::to_string(refused) + "\n";
    AddHeading("pi_drive_info", "gauge", "What the drive is; always 1.", text);
    for (const auto& [labels, drive] : series) {
        std::string info = labels;
        AddLabel("firmware", drive->GetFirmware(), info);
        AddLabel("kind", drive->GetKind(), info);
        text.append("pi_drive_info{").append(info).append("} 1\n");
    }
    for (const Family& family : FAMILIES) {
        AddHeading(family.m_Name, family.m_Type, family.m_Help, text);
        for (const auto& [labels, drive] : series) {
            const double value = family.m_Value(*drive) * family.m_Factor;
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
