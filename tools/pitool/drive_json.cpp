// SPDX-License-Identifier: Apache-2.0

#include "drive_json.h"

#include "drive_object.h"
#include "event.h"
#include "json_text.h"

namespace pitool {
namespace {

Json EventPairs(const RenderedEvent& event) {
    Json pairs = Json::object();
    for (const auto& [key, value] : event) {
        pairs[key] = value;
    }
    return pairs;
}

constexpr int FORMAT_VERSION = 1;

/// ASCII only, so no text of a drive can steer a terminal; bytes that are not UTF-8 become U+FFFD.
std::string Dump(const Json& json) {
    return json.dump(-1, ' ', true, Json::error_handler_t::replace);
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
    const PI::_PROPERTY_ID id = figure.m_Property.m_ID;
    return {
        {"id", id != NO_PROPERTY ? Json(static_cast<int>(id)) : Json(nullptr)},
        {"value", FigureValue(figure.m_Property)},
        {"unit", TextOrNull(UnitText(figure.m_Unit))},
        {"text", TextOrNull(FigureValueText(figure))},
        {"counts", TextOrNull(DirectionText(figure.m_Direction))},
        {"source", TextOrNull(figure.m_Source)},
        {"applicable", figure.m_Applicable},
        {"state", StateText(figure)},
        {"reason", TextOrNull(figure.m_Reason)},
    };
}

Json FiguresJson(const std::vector<Figure>& figures) {
    Json json = Json::object();
    for (const Figure& figure : figures) {
        json[figure.m_Name] = FigureJson(figure);
    }
    return json;
}

Json ReasonsJson(const std::vector<PI::CHealthReason>& reasons) {
    Json list = Json::array();
    for (const PI::CHealthReason& reason : reasons) {
        list.push_back({{"state", PI::DriveStateToString(reason.GetState())},
                        {"text", reason.GetText()},
                        {"figure", PI::HealthFigureToString(reason.GetFigure().GetFigure())}});
    }
    return list;
}

Json EventsJson(const std::vector<RenderedEvent>& events) {
    Json list = Json::array();
    for (const RenderedEvent& event : events) {
        list.push_back(EventPairs(event));
    }
    return list;
}

Json LifetimeJson(const Lifetime& lifetime) {
    return {
        {"remaining_hours", ValueOrNull(lifetime.m_RemainingHours.m_Value)},
        {"counts", "down"},
        {"basis", TextOrNull(lifetime.m_Basis)},
        {"limit", TextOrNull(lifetime.m_Limit)},
        {"applicable", lifetime.m_Applicable},
        {"reason", TextOrNull(lifetime.m_RemainingHours.m_Reason)},
    };
}

/// Lays compact JSON text out over lines; the first begins where the text is put, at a depth in steps of two
/// columns. Reading thousands of drives back to print them would cost as much as reading them at first.
std::string LayOut(std::string_view compact, std::size_t depth) {
    std::string text;
    const auto newLine = [&] { text.append(1, '\n').append(2 * depth, ' '); };
    bool inString = false;
    for (std::size_t i = 0; i < compact.size(); ++i) {
        const char c = compact[i];
        const bool empty = i + 1 < compact.size() && (compact[i + 1] == '}' || compact[i + 1] == ']');
        if (inString || c == '"') {
            text += c;
            if (c == '\\') {
                text += compact[++i];
            }
            inString = inString != (c == '"');
        } else if ((c == '{' || c == '[') && empty) {
            text += {c, compact[++i]};
        } else if (c == '{' || c == '[') {
            text += c;
            ++depth;
            newLine();
        } else if (c == '}' || c == ']') {
            --depth;
            newLine();
            text += c;
        } else if (c == ',') {
            text += c;
            newLine();
        } else {
            text += c;
            text.append(c == ':' ? 1 : 0, ' ');
        }
    }
    return text;
}

/// Writes a list of values as member of the document.
/// @param compactText makes the compact JSON text of a value
template <class Values, class CompactText>
bool WriteList(const char* name, const Values& values, const Writer& write, CompactText compactText) {
    if (!write(std::string("  \"") + name + "\": [")) {
        return false;
    }
    const char* separator = "\n    ";
    for (const auto& value : values) {
        if (!write(separator + LayOut(compactText(value), 2))) {
            return false;
        }
        separator = ",\n    ";
    }
    return write(values.empty() ? "],\n" : "\n  ],\n");
}

}  // namespace

std::string DriveJson(const DriveAssessment& drive, const std::vector<RenderedEvent>* events) {
    const Json json = {
        {"file", drive.m_File},
        {"kind", drive.m_Kind},
        {"state", PI::DriveStateToString(drive.m_State)},
        {"reasons", ReasonsJson(drive.m_Reasons)},
        {"notes", drive.m_Notes},
        {"failing", drive.m_Failing},
        {"worn", IsWorn(drive)},
        {"lifetime", LifetimeJson(drive.m_Lifetime)},
        {"properties", FiguresJson(drive.m_Figures)},
        {"figures", FiguresJson(drive.m_OtherFigures)},
        {"operations", OperationNames(drive)},
        {"events", events != nullptr ? EventsJson(*events) : Json(nullptr)},
    };
    return Dump(json);
}

bool WriteDriveDocument(const std::vector<const std::string*>& drives,
                        const std::vector<std::pair<std::string, std::string>>& errors,
                        const DriveCounts& summary, const Writer& write) {
    const Json counts = {
        {"drives", summary.m_Drives},   {"failing", summary.m_Failing},
        {"worn", summary.m_Worn},       {"unknown_lifetime", summary.m_UnknownLifetime},
        {"refused", summary.m_Refused},
    };
    const auto driveText = [](const std::string* drive) -> const std::string& { return *drive; };
    const auto errorText = [](const auto& error) {
        return Dump({{"file", error.first}, {"reason", error.second}});
    };
    return write("{\n  \"format\": \"pitool drive\",\n  \"version\": " + std::to_string(FORMAT_VERSION) +
                 ",\n") &&
           WriteList("drives", drives, write, driveText) && WriteList("errors", errors, write, errorText) &&
           write("  \"summary\": " + LayOut(Dump(counts), 1) + "\n}\n");
}

}  // namespace pitool
