// SPDX-License-Identifier: Apache-2.0

#include "drive_detail.h"
#include "print/units.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace pitool {
namespace {

namespace Operation = PI::OperationID;

/// @param areNamed those with an identifier in the vocabulary, or those without
void AddProperties(const char* name, const std::vector<PI::CDriveProperty>& properties, bool areNamed,
                   JsonWriter& json) {
    constexpr const char* STATES[] = {"unknown", "known", "doubtful"};
    json.Member(name, [&] {
        for (const PI::CDriveProperty& property : properties) {
            if ((property.GetID() != 0) != areNamed) {
                continue;
            }
            json.Member(property.GetName(), [&] {
                json.Member("id", areNamed ? std::optional<int>(property.GetID()) : std::nullopt);
                if (property.GetNumber()) {
                    json.Member("value", property.GetNumber());
                } else {
                    json.Member("value", OrNull(property.GetText()));
                }
                json.Member("unit", OrNull(property.GetUnit()));
                json.Member("text", OrNull(ValueText(property)));
                json.Member("counts", OrNull(DirectionText(property)));
                json.Member("source", OrNull(property.GetSource()));
                json.Member("applicable", property.IsApplicable());
                json.Member("state", WordOf(STATES, property.GetState()));
                json.Member("reason", OrNull(property.GetReason()));
            });
        }
    });
}

/// @param properties of the drive
void AddLifetime(const std::vector<PI::CDriveProperty>& properties, const PI::CHealthAssessment& health,
                 JsonWriter& json) {
    const auto hours = std::find_if(properties.begin(), properties.end(), [](const auto& property) {
        return property.GetID() == PI::PropertyID::REMAINING_HOURS;
    });
    const bool isByAttribute =
        health.GetFigure(PI::HealthFigure::WEAR).GetSource() == PI::FigureSource::ATA_ATTRIBUTE;
    const char* const BASES[] = {"", isByAttribute ? "wear indicator" : "drive's own statistics",
                                 "rated endurance and bytes written", "power-on hours alone"};
    constexpr const char* LIMITS[] = {"",     "service span over", "worn out", "worn early", "wear",
                                      "rate", "service span"};
    json.Member("lifetime", [&] {
        json.Member("remaining_hours", hours->GetNumber());
        json.Member("counts", "down");
        json.Member("basis", OrNull(WordOf(BASES, health.GetLifetime().GetBasis())));
        json.Member("applicable", hours->IsApplicable());
        json.Member("limit", OrNull(WordOf(LIMITS, health.GetLifetime().GetLimit())));
        json.Member("reason", OrNull(hours->GetReason()));
    });
}

/// The forecast as dates.
void AddForecastTime(const PI::CWearForecast& forecast, JsonWriter& json) {
    const auto add = [&](const char* name, const std::optional<std::uint64_t>& hours) {
        const std::optional<std::int64_t> time = hours ? forecast.GetDate(*hours) : std::nullopt;
        json.Member(name, OrNull(time ? TimeText(*time) : ""));
    };
    json.Member("forecast_time", [&] {
        add("worn", forecast.GetHours());
        add("low", forecast.GetLow());
        add("high", forecast.GetHigh());
    });
}

/// The operations that one would offer on a drive: one that fails is no longer tested but taken out.
std::vector<PI::_OPERATION_ID> OperationsOf(const DriveSummary& drive, const PI::CDriveReport& report) {
    std::vector<PI::_OPERATION_ID> operations = {Operation::LOCATE_DEVICE, Operation::DISK_INFORMATION};
    if (report.GetTransport() == PI::PropertyValue::SAS) {
        operations.push_back(Operation::SENSE_LOG);
    }
    operations.push_back(drive.IsFailing() ? Operation::MAKE_OFFLINE : Operation::START_VERIFY);
    return operations;
}

}  // namespace

std::string DriveJson(const DriveSummary& drive, const PI::CDriveReport& report,
                      const PI::CHealthAssessment& health, const std::vector<RenderedEvent>* events) {
    constexpr int DEPTH = 2;  // of the document's list
    const std::vector<PI::CDriveProperty> properties = PI::DescribeDrive(report, health);
    const PI::CWearForecast forecast = drive.GetForecast();
    JsonWriter json(DEPTH + 1);
    json.Value([&] {
        json.Member("file", drive.GetFile());
        json.Member("model", OrNull(drive.GetModel()));
        json.Member("serial_number", OrNull(drive.GetSerial()));
        json.Member("time", OrNull(TimeText(drive.GetTime())));
        json.Member("kind", drive.GetKind());
        json.Member("state", PI::DriveStateToString(drive.GetState()));
        json.Objects("reasons", health.GetReasons(), [&](const PI::CHealthReason& reason) {
            json.Member("state", PI::DriveStateToString(reason.GetState()));
            json.Member("text", reason.GetText());
            json.Member("figure", PI::HealthFigureToString(reason.GetFigure().GetFigure()));
        });
        json.Member("notes", report.GetNotes());
        json.Member("failing", drive.IsFailing());
        json.Member("worn", drive.IsWorn());
        AddForecast(forecast, drive.IsDisk(), json.Name("forecast"));
        AddForecastTime(forecast, json);
        AddLifetime(properties, health, json);
        AddProperties("properties", properties, true, json);
        AddProperties("figures", properties, false, json);
        json.Name("operations").List(OperationsOf(drive, report), [&json](PI::_OPERATION_ID operation) {
            json.Value(PI::OperationIDToString(operation));
        });
        if (events == nullptr) {
            json.Name("events").Raw("null");
        } else {
            json.Name("events").List(*events, [&](const RenderedEvent& event) { AddEvent(event, json); });
        }
    });
    return json.Take();
}

void AddForecast(const PI::CWearForecast& forecast, bool isDisk, JsonWriter& json) {
    json.Value([&] {
        json.Member("hours_to_worn", forecast.GetHours());
        json.Member("low", forecast.GetLow());
        json.Member("high", forecast.GetHigh());
        json.Member("basis", OrNull(BasisText(forecast.GetBasis())));
        json.Member("reason", OrNull(isDisk ? ROTATING : forecast.GetReason()));
    });
}

}  // namespace pitool
