#include "drive_json.h"

#include <nlohmann/json.hpp>

namespace pitool {
namespace {

using Json = nlohmann::ordered_json;

constexpr int FORMAT_VERSION = 1;

/// ASCII only, so no text of a drive can steer a terminal; bytes that are not UTF-8 become U+FFFD.
std::string Dump(const Json& json, int indent) {
    return json.dump(indent, ' ', true, Json::error_handler_t::replace);
}

Json TextOrNull(const std::string& text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

template <class Value>
Json ValueOrNull(const std::optional<Value>& value) {
    return value ? Json(*value) : Json(nullptr);
}

Json FigureValue(const PI::CProperty& property) {
    switch (property.m_Type) {
        case PI::PropertyType::STRING: return property.m_Data.m_String.m_Value;
        case PI::PropertyType::CHOICE: return PI::PropertyValueToString(property.m_Data.m_Choice.m_Value);
        case PI::PropertyType::LONG: return property.m_Data.m_Long.m_Value;
        case PI::PropertyType::SIGNED_LONG: return property.m_Data.m_SignedLong.m_Value;
        default: return nullptr;
    }
}

Json FigureJson(const Figure& figure) {
    return {
        {"id", static_cast<int>(figure.m_Property.m_ID)},
        {"value", FigureValue(figure.m_Property)},
        {"unit", TextOrNull(UnitText(figure.m_Unit))},
        {"text", TextOrNull(FigureValueText(figure))},
        {"counts", TextOrNull(DirectionText(figure.m_Direction))},
        {"source", TextOrNull(figure.m_Source)},
        {"applicable", figure.m_Applicable},
        {"reason", TextOrNull(figure.m_Reason)},
    };
}

Json LifetimeJson(const Lifetime& lifetime) {
    return {
        {"remaining_hours", ValueOrNull(lifetime.m_RemainingHours.m_Value)},
        {"counts", "down"},
        {"basis", TextOrNull(LifetimeBasisText(lifetime.m_Basis))},
        {"applicable", lifetime.m_Applicable},
        {"reason", TextOrNull(lifetime.m_RemainingHours.m_Reason)},
    };
}

/// Shifts all lines of a text but the first to the right.
std::string Indent(const std::string& text, std::size_t columns) {
    std::string shifted;
    for (const char c : text) {
        shifted += c;
        if (c == '\n') {
            shifted.append(columns, ' ');
        }
    }
    return shifted;
}

/// Writes a list of values as member of the document.
template <class Values, class MakeJson>
bool WriteList(const char* name, const Values& values, const Writer& write, MakeJson makeJson) {
    if (!write(std::string("  \"") + name + "\": [")) {
        return false;
    }
    const char* separator = "\n    ";
    for (const auto& value : values) {
        if (!write(separator + Indent(Dump(makeJson(value), 2), 4))) {
            return false;
        }
        separator = ",\n    ";
    }
    return write(values.empty() ? "],\n" : "\n  ],\n");
}

}  // namespace

std::string DriveJson(const DriveAssessment& drive) {
    Json properties = Json::object();
    for (const Figure& figure : drive.m_Figures) {
        properties[PI::PropertyIDToString(figure.m_Property.m_ID)] = FigureJson(figure);
    }
    const Json json = {
        {"file", drive.m_File},
        {"kind", drive.m_Kind},
        {"failing", drive.m_Failing},
        {"worn", drive.m_PercentUsed >= WORN_PERCENT},
        {"lifetime", LifetimeJson(drive.m_Lifetime)},
        {"properties", std::move(properties)},
    };
    return Dump(json, -1);
}

bool WriteDriveDocument(const std::vector<const std::string*>& drives,
                        const std::vector<std::pair<std::string, std::string>>& errors,
                        const DriveSummary& summary, const Writer& write) {
    const Json counts = {
        {"drives", summary.m_Drives},   {"failing", summary.m_Failing},
        {"worn", summary.m_Worn},       {"unknown_lifetime", summary.m_UnknownLifetime},
        {"refused", summary.m_Refused},
    };
    const auto driveJson = [](const std::string* drive) { return Json::parse(*drive); };
    const auto errorJson = [](const auto& error) {
        return Json{{"file", error.first}, {"reason", error.second}};
    };
    return write("{\n  \"format\": \"pitool drive\",\n  \"version\": " + std::to_string(FORMAT_VERSION) +
                 ",\n") &&
           WriteList("drives", drives, write, driveJson) && WriteList("errors", errors, write, errorJson) &&
           write("  \"summary\": " + Indent(Dump(counts, 2), 2) + "\n}\n");
}

}  // namespace pitool
