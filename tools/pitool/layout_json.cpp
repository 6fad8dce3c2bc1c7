// SPDX-License-Identifier: Apache-2.0

#include "layout_json.h"

#include "json_text.h"
#include "layout_units.h"

#include <cstdint>

namespace pitool {
namespace {

Json TextOrNull(const std::string& text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

Json SizeJson(std::uint64_t size, PI::_UNITS unit) {
    return {{"value", size}, {"text", TextOrNull(ScaledSize(size, unit))}};
}

Json UnitsJson(PI::_UNITS unit) {
    return {{"value", static_cast<int>(unit)}, {"name", TextOrNull(UnitName(unit))}};
}

Json ContainersJson(const std::vector<PI::CContainer>& containers, PI::_UNITS unit) {
    Json list = Json::array();
    for (const PI::CContainer& container : containers) {
        Json drives = Json::array();
        for (const PI::CDrive& drive : container.m_Drives) {
            drives.push_back({
                {"object_id", drive.m_ObjectID},
                {"start", SizeJson(drive.m_StartAddress, unit)},
                {"size", SizeJson(drive.m_UsedSize, unit)},
                {"configurable", drive.m_IsConfigurable},
                {"logical_drive", drive.m_LogicalDrive},
                {"logical_owner", drive.m_LogicalOwner},
            });
        }
        Json json = Json::object();
        json["drives"] = std::move(drives);
        list.push_back(std::move(json));
    }
    return list;
}

Json WarningsJson(const LayoutWarnings& warnings) {
    Json list = Json::array();
    for (const PlacedMessage& warning : warnings.m_Kept) {
        list.push_back({
            {"line", warning.m_Place.m_Line},
            {"column", warning.m_Place.m_Column},
            {"text", warning.m_Text},
        });
    }
    return list;
}

void AddLayout(const PI::CArray& array, Json& json) {
    json["kind"] = "array";
    json["size"] = SizeJson(array.m_Size, array.m_Units);
    json["units"] = UnitsJson(array.m_Units);
    json["containers"] = ContainersJson(array.m_Containers, array.m_Units);
    json["logical_drives"] = array.m_LogicalDrives;
}

void AddLayout(const PI::CLogicalDrive& drive, Json& json) {
    json["kind"] = "logical drive";
    json["size"] = SizeJson(drive.m_Size, drive.m_Units);
    json["units"] = UnitsJson(drive.m_Units);
    json["span_count"] = drive.m_SpanCount;
    json["span_size"] = drive.m_SpanSize;
    json["containers"] = ContainersJson(drive.m_Containers, drive.m_Units);
    json["global_hot_spares"] = drive.m_GlobalHotSpares;
    json["dedicated_hot_spares"] = drive.m_DedicatedHotSpares;
    json["associated_logical_drives"] = drive.m_AssociatedLogicalDrives;
}

}  // namespace

std::string LayoutJson(const std::string& file, const LayoutDocument& document) {
    Json json = {{"format", "pitool layout"}, {"version", 1}, {"file", file}};
    std::visit([&json](const auto& layout) { AddLayout(layout, json); }, document.m_Layout);
    json["warnings"] = WarningsJson(document.m_Warnings);
    json["warnings_left_out"] = document.m_Warnings.m_LeftOut;
    return JsonText(json);
}

}  // namespace pitool
