// SPDX-License-Identifier: Apache-2.0

#include "drive_json.h"

#include "drive_figures.h"
#include "print/json.h"
#include "print/units.h"

#include <pi/vocabulary.h>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

namespace pitool {
namespace {

namespace Operation = PI::OperationID;

/// Puts short parts together in less time than a string does.
class Parts {
public:
    // cppcheck-suppress uninitMemberVar // only bytes that were written are read
    explicit Parts(std::string& text) : m_Text(text) {}
    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;
    ~Parts() { Flush(); }

    void Add(std::string_view part) {
        if (part.size() > sizeof m_Bytes - m_Size) {
            Flush();
        }
        if (part.size() > sizeof m_Bytes) {
            m_Text += part;
            return;
        }
        std::memcpy(m_Bytes + m_Size, part.data(), part.size());
        m_Size += part.size();
    }
    void AddNumber(std::int64_t number) {
        char digits[24];
        const char* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
        Add({digits, static_cast<std::size_t>(end - digits)});
    }
    void AddTextOrNull(std::string_view text) {
        if (text.empty()) {
            Add("null");
        } else if (IsPlainJson(text)) {
            Add("\"");
            Add(text);
            Add("\"");
        } else {
            Flush();
            AddJsonText(text, m_Text);
        }
    }

private:
    void Flush() {
        m_Text.append(m_Bytes, m_Size);
        m_Size = 0;
    }

    std::string& m_Text;
    std::size_t m_Size = 0;
    char m_Bytes[4096];
};

/// An object of figures. They are most of the document, so they are written as they are.
/// @param text that the writer writes to
void AddFigures(std::string_view name, const std::vector<DriveFigure>& figures, JsonWriter& json,
                std::string& text) {
    json.Name(name).Raw("");
    Parts parts(text);
    std::string_view before = "{";
    for (const DriveFigure& figure : figures) {
        parts.Add(before);
        before = "},";
        parts.AddTextOrNull(figure.m_Name);
        parts.Add(R"(:{"id":)");
        figure.m_ID != 0 ? parts.AddNumber(figure.m_ID) : parts.Add("null");
        parts.Add(R"(,"value":)");
        figure.m_Number ? parts.AddNumber(*figure.m_Number) : parts.AddTextOrNull(figure.m_Text);
        parts.Add(R"(,"unit":)");
        parts.AddTextOrNull(figure.m_Unit);
        parts.Add(R"(,"text":)");
        parts.AddTextOrNull(figure.ValueText());
        parts.Add(R"(,"counts":)");
        parts.AddTextOrNull(figure.m_Counts);
        parts.Add(R"(,"source":)");
        parts.AddTextOrNull(figure.m_Source);
        parts.Add(figure.m_Applicable ? R"(,"applicable":true,"state":")"
                                      : R"(,"applicable":false,"state":")");
        parts.Add(figure.StateText());
        parts.Add(R"(","reason":)");
        parts.AddTextOrNull(figure.m_Reason);
    }
    parts.Add("}}");
}

void AddLifetime(const Lifetime& lifetime, JsonWriter& json) {
    json.Member("lifetime", [&] {
        json.Member("remaining_hours", lifetime.m_Hours);
        json.Member("counts", "down");
        json.Member("basis", OrNull(lifetime.m_Basis));
        json.Member("applicable", lifetime.m_Applicable);
        json.Member("limit", OrNull(lifetime.m_Limit));
        json.Member("reason", OrNull(lifetime.m_Reason));
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
std::vector<std::string> OperationsOf(const DriveSummary& drive, const PI::CDriveReport& report) {
    std::vector<std::string> names = {PI::OperationIDToString(Operation::LOCATE_DEVICE),
                                      PI::OperationIDToString(Operation::DISK_INFORMATION)};
    if (report.GetTransport() == PI::PropertyValue::SAS) {
        names.push_back(PI::OperationIDToString(Operation::SENSE_LOG));
    }
    names.push_back(
        PI::OperationIDToString(drive.IsFailing() ? Operation::MAKE_OFFLINE : Operation::START_VERIFY));
    return names;
}

}  // namespace

std::string DriveJson(const DriveSummary& drive, const PI::CDriveReport& report,
                      const PI::CHealthAssessment& health, const std::vector<RenderedEvent>* events) {
    constexpr int DEPTH = 2;  // of the document's list
    constexpr std::size_t USUAL_LENGTH = 12288;
    const DriveFigures figures = FiguresOf(drive, report, health);
    const PI::CWearForecast forecast = drive.GetForecast();
    std::string text;
    text.reserve(USUAL_LENGTH);
    JsonWriter json(text, DEPTH + 1);
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
        AddLifetime(figures.m_Lifetime, json);
        AddFigures("properties", figures.m_Properties, json, text);
        AddFigures("figures", figures.m_Others, json, text);
        json.Member("operations", OperationsOf(drive, report));
        if (events == nullptr) {
            json.Name("events").Raw("null");
        } else {
            json.Name("events").List(*events, [&](const RenderedEvent& event) { AddEvent(event, json); });
        }
    });
    text.shrink_to_fit();
    return text;
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
