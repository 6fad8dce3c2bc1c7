// SPDX-License-Identifier: Apache-2.0

#include "print/formats.h"

#include "print/text.h"
#include "print/units.h"

#include <utility>

namespace pitool {
namespace {

namespace Figure = PI::HealthFigure;

constexpr std::pair<const char*, PI::_HEALTH_FIGURE> FIGURES[] = {
    {"power_on_hours", Figure::POWER_ON_HOURS},
    {"wear_percent", Figure::WEAR},
    {"spare_percent", Figure::SPARE},
    {"bytes_written", Figure::BYTES_WRITTEN},
    {"rated_terabytes", Figure::RATED_TERABYTES},
    {"temperature_celsius", Figure::TEMPERATURE},
    {"temperature_limit_celsius", Figure::TEMPERATURE_LIMIT},
    {"critical_temperature_celsius", Figure::CRITICAL_TEMPERATURE},
    {"reallocated_sectors", Figure::REALLOCATED_SECTORS},
    {"pending_sectors", Figure::PENDING_SECTORS},
    {"uncorrectable_sectors", Figure::UNCORRECTABLE_SECTORS},
    {"media_errors", Figure::MEDIA_ERRORS},
    {"interface_errors", Figure::INTERFACE_ERRORS},
    {"failed_self_tests", Figure::FAILED_SELF_TESTS},
};

std::string Cell(std::string_view value) {
    std::string text = PrintableText(value);
    if (text.size() > 1 && std::string_view("=+-@").find(text.front()) != std::string_view::npos) {
        text.insert(0, 1, '\'');
    }
    return text.find_first_of("\",") == std::string::npos ? text : InQuotes(text, '"');
}

}  // namespace

std::string CsvText(const DriveList& drives) {
    std::string text = "state,reason,model,serial_number,firmware,kind,device,file,time,capacity_bytes,";
    for (const auto& [name, figure] : FIGURES) {
        text.append(name).append(",");
    }
    text += "hours_to_worn,hours_to_worn_low,hours_to_worn_high,doubtful\r\n";
    for (const DriveSummary* drive : drives) {
        const std::string time = TimeText(drive->GetTime());
        text += StateWord(drive->GetState());
        for (const std::string_view value :
             {drive->GetReason(), drive->GetModel(), drive->GetSerial(), drive->GetFirmware(),
              drive->GetKind(), drive->GetDevice(), drive->GetFile(), std::string_view(time)}) {
            text += "," + Cell(value);
        }
        text += drive->GetCapacity() != 0 ? "," + std::to_string(drive->GetCapacity()) : ",";
        std::string doubtful;
        for (const auto& [name, id] : FIGURES) {
            const SummaryFigure figure = drive->GetFigure(id);
            text += figure.HasValue() ? "," + std::to_string(figure.m_Value) : ",";
            doubtful += figure.IsDoubtful() ? (doubtful.empty() ? "" : " ") + std::string(name) : "";
        }
        const PI::CWearForecast forecast = drive->GetForecast();
        for (const auto& hours : {forecast.GetHours(), forecast.GetLow(), forecast.GetHigh()}) {
            text += hours ? "," + std::to_string(*hours) : ",";
        }
        text += "," + doubtful + "\r\n";
    }
    return text;
}

}  // namespace pitool
