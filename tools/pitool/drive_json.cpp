// SPDX-License-Identifier: Apache-2.0

#include "drive_json.h"

#include "drive_figures.h"
#include "print/json.h"

#include <pi/vocabulary.h>

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

namespace pitool {
namespace {

namespace Operation = PI::OperationID;

template <class Value>
void AddOptional(const std::optional<Value>& value, JsonWriter& json) {
    value ? json.Number(*value) : json.Null();
}

void AddTextOrNull(std::string_view text, std::string& json) {
    text.empty() ? static_cast<void>(json += "null") : AddJsonText(text, json);
}

void AddNumber(std::int64_t number, std::string& json) {
    char digits[24];
    json.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

/// A figure as an object. Its names are most of the document, so they are written as they are.
void AddFigure(const DriveFigure& figure, std::string& json) {
    json += R"({"id":)";
    figure.m_ID != 0 ? AddNumber(figure.m_ID, json) : static_cast<void>(json += "null");
    json += R"(,"value":)";
    figure.m_Number ? AddNumber(*figure.m_Number, json) : AddTextOrNull(figure.m_Text, json);
    json += R"(,"unit":)";
    AddTextOrNull(figure.m_Unit, json);
    json += R"(,"text":)";
    AddTextOrNull(figure.ValueText(), json);
    json += R"(,"counts":)";
    AddTextOrNull(figure.m_Counts, json);
    json += R"(,"source":)";
    AddTextOrNull(figure.m_Source, json);
    json += figure.m_Applicable ? R"(,"applicable":true,"state":")" : R"(,"applicable":false,"state":")";
    json += figure.StateText();
    json += R"(","reason":)";
    AddTextOrNull(figure.m_Reason, json);
    json += '}';
}

void AddFigures(const std::vector<DriveFigure>& figures, JsonWriter& json) {
    std::string text;
    json.BeginObject();
    for (const DriveFigure& figure : figures) {
        text.clear();
        AddFigure(figure, text);
        json.Name(figure.m_Name).Raw(text);
    }
    json.EndObject();
}

void AddLifetime(const Lifetime& lifetime, JsonWriter& json) {
    json.BeginObject();
    json.Name("remaining_hours");
    AddOptional(lifetime.m_Hours, json);
    json.Name("counts").Text("down");
    json.Name("basis").TextOrNull(lifetime.m_Basis);
    json.Name("applicable").Bool(lifetime.m_Applicable);
    json.Name("limit").TextOrNull(lifetime.m_Limit);
    json.Name("reason").TextOrNull(lifetime.m_Reason);
    json.EndObject();
}

void AddReasons(const std::vector<PI::CHealthReason>& reasons, JsonWriter& json) {
    json.BeginList();
    for (const PI::CHealthReason& reason : reasons) {
        json.BeginObject();
        json.Name("state").Text(PI::DriveStateToString(reason.GetState()));
        json.Name("text").Text(reason.GetText());
        json.Name("figure").Text(PI::HealthFigureToString(reason.GetFigure().GetFigure()));
        json.EndObject();
    }
    json.EndList();
}

/// When a drive will have run for so many hours more.
void AddTime(const char* name, const PI::CWearForecast& forecast, const std::optional<std::uint64_t>& hours,
             JsonWriter& json) {
    const std::optional<std::int64_t> time = hours ? forecast.GetDate(*hours) : std::nullopt;
    json.Name(name).TextOrNull(time ? TimeText(*time) : "");
}

/// The operations that one would offer on a drive: one that fails is no longer put to the test but taken out.
void AddOperations(bool isSas, bool isFailing, JsonWriter& json) {
    json.BeginList();
    json.Text(PI::OperationIDToString(Operation::LOCATE_DEVICE));
    json.Text(PI::OperationIDToString(Operation::DISK_INFORMATION));
    if (isSas) {
        json.Text(PI::OperationIDToString(Operation::SENSE_LOG));
    }
    json.Text(PI::OperationIDToString(isFailing ? Operation::MAKE_OFFLINE : Operation::START_VERIFY));
    json.EndList();
}

}  // namespace

std::string DriveJson(const DriveSummary& drive, const PI::CDriveReport& report, const DecidedHealth& health,
                      const std::vector<RenderedEvent>* events) {
    constexpr int DEPTH = 2;  // of the document's list
    const DriveFigures figures = FiguresOf(drive, report, health);
    constexpr std::size_t USUAL_LENGTH = 12288;
    std::string text;
    text.reserve(USUAL_LENGTH);
    JsonWriter json(text, DEPTH + 1);
    json.BeginObject();
    json.Name("file").Text(drive.GetFile());
    json.Name("model").TextOrNull(drive.GetModel());
    json.Name("serial_number").TextOrNull(drive.GetSerial());
    json.Name("time").TextOrNull(TimeText(drive.GetTime()));
    json.Name("kind").Text(drive.GetKind());
    json.Name("state").Text(PI::DriveStateToString(drive.GetState()));
    json.Name("reasons");
    AddReasons(health.GetReasons(), json);
    json.Name("notes").BeginList();
    for (const std::string& note : report.GetNotes()) {
        json.Text(note);
    }
    json.EndList();
    json.Name("failing").Bool(drive.IsFailing());
    json.Name("worn").Bool(drive.IsWorn());
    json.Name("forecast");
    const PI::CWearForecast forecast = drive.GetForecast();
    AddForecast(forecast, drive.IsSolidState(), json);
    json.Name("forecast_time").BeginObject();
    AddTime("worn", forecast, forecast.GetHours(), json);
    AddTime("low", forecast, forecast.GetLow(), json);
    AddTime("high", forecast, forecast.GetHigh(), json);
    json.EndObject();
    json.Name("lifetime");
    AddLifetime(figures.m_Lifetime, json);
    json.Name("properties");
    AddFigures(figures.m_Properties, json);
    json.Name("figures");
    AddFigures(figures.m_Others, json);
    json.Name("operations");
    AddOperations(report.GetTransport() == PI::PropertyValue::SAS, drive.IsFailing(), json);
    json.Name("events");
    if (events == nullptr) {
        json.Null();
    } else {
        json.BeginList();
        for (const RenderedEvent& event : *events) {
            AddEvent(event, json);
        }
        json.EndList();
    }
    json.EndObject();
    text.shrink_to_fit();
    return text;
}

void AddForecast(const PI::CWearForecast& forecast, bool isSolidState, JsonWriter& json) {
    json.BeginObject();
    json.Name("hours_to_worn");
    AddOptional(forecast.GetHours(), json);
    json.Name("low");
    AddOptional(forecast.GetLow(), json);
    json.Name("high");
    AddOptional(forecast.GetHigh(), json);
    json.Name("basis").TextOrNull(BasisText(forecast.GetBasis()));
    json.Name("reason").TextOrNull(isSolidState ? forecast.GetReason() : "rotating disk");
    json.EndObject();
}

}  // namespace pitool
