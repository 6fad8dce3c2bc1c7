// SPDX-License-Identifier: Apache-2.0
// Reports of smartctl: read without a tree as with one, then assessed and printed.
#include "drive_assessment.h"
#include "drive_json.h"
#include "drive_sheet.h"
#include "drive_table.h"
#include "smartctl_reader.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <set>

#include "check.h"
#include "printable_check.h"

namespace {

using nlohmann::json;
using pitool::DriveReport;

/// The tree of a document; none where a name stands twice in an object, because the reader takes both then.
std::optional<json> ReadTree(const std::string& text) {
    bool hasTwins = false;
    std::vector<std::set<std::string>> names;
    json tree = json::parse(text, [&](int, json::parse_event_t event, json& parsed) {
        if (event == json::parse_event_t::object_start) {
            names.emplace_back();
        } else if (event == json::parse_event_t::object_end) {
            names.pop_back();
        } else if (event == json::parse_event_t::key) {
            hasTwins = !names.back().insert(parsed.get<std::string>()).second || hasTwins;
        }
        return true;
    });
    return hasTwins ? std::nullopt : std::optional<json>(std::move(tree));
}

/// What stands at the first of some places.
template <class Value>
std::optional<Value> ValueAt(const json& tree, std::initializer_list<const char*> places) {
    for (const char* place : places) {
        const json::json_pointer pointer(place);
        if (tree.contains(pointer)) {
            return tree.at(pointer).get<Value>();
        }
    }
    return std::nullopt;
}

std::optional<std::string> TextAt(const json& tree, std::initializer_list<const char*> places) {
    const auto text = ValueAt<std::string>(tree, places);
    return text && !text->empty() ? text : std::nullopt;
}

void CheckAttributes(const DriveReport& report, const json& tree) {
    const json::json_pointer table("/ata_smart_attributes/table");
    CHECK(report.m_HasAttributes == tree.contains(table));
    const json rows = report.m_HasAttributes ? tree.at(table) : json::array();
    CHECK(report.m_Attributes.size() == rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const pitool::SmartAttribute& attribute = report.m_Attributes[i];
        CHECK(attribute.m_ID == rows[i].at("id").get<std::uint64_t>());
        CHECK(attribute.m_Current == rows[i].at("value").get<std::uint64_t>());
        CHECK(attribute.m_Worst == rows[i].at("worst").get<std::uint64_t>());
        CHECK(attribute.m_Raw == rows[i].at("raw").at("value").get<std::uint64_t>());
    }
}

void CheckAgainstTree(const DriveReport& report, const json& tree) {
    CHECK(report.m_SerialNumber == TextAt(tree, {"/serial_number"}));
    CHECK(report.m_FirmwareVersion == TextAt(tree, {"/firmware_version", "/scsi_revision", "/revision"}));
    CHECK(report.m_Device == TextAt(tree, {"/device/name"}));
    CHECK(report.m_RotationRate == ValueAt<std::uint64_t>(tree, {"/rotation_rate"}));
    CHECK(report.m_BlockSize == ValueAt<std::uint64_t>(tree, {"/logical_block_size"}));
    CHECK(report.m_CapacityBytes ==
          ValueAt<std::uint64_t>(tree, {"/user_capacity/bytes", "/nvme_total_capacity"}));
    CHECK(report.m_PowerOnHours ==
          ValueAt<std::uint64_t>(
              tree, {"/power_on_time/hours", "/nvme_smart_health_information_log/power_on_hours"}));
    CHECK(report.m_Temperature == ValueAt<std::int64_t>(tree, {"/temperature/current"}));
    CHECK(report.m_SmartPassed == ValueAt<bool>(tree, {"/smart_status/passed"}));
    CHECK(report.m_TrimSupported == ValueAt<bool>(tree, {"/trim/supported"}));
    CheckAttributes(report, tree);
}

void CheckRanges(const DriveReport& report) {
    CHECK(!report.m_ModelText.empty());
    CHECK(report.m_Attributes.size() <= pitool::PAGE_ATTRIBUTES);
    for (const pitool::SmartAttribute& attribute : report.m_Attributes) {
        CHECK(attribute.m_ID != 0 && attribute.m_Raw <= pitool::MAX_RAW_VALUE);
    }
    CHECK(report.m_PercentUsed.value_or(0) <= 255 && report.m_AvailableSpare.value_or(0) <= 255);
}

void CheckAssessment(const pitool::DriveAssessment& drive) {
    for (const pitool::Figure& figure : drive.m_Figures) {
        CHECK(figure.IsKnown() == figure.m_Reason.empty());
    }
    const auto& remaining = drive.m_Lifetime.m_RemainingHours;
    CHECK(!remaining || (*remaining >= 1 && *remaining <= pitool::SERVICE_SPAN_HOURS));

    PI::Fuzz::CheckPrintable(pitool::DriveSheet(drive));
    const pitool::DriveRow row = pitool::MakeDriveRow(drive);
    PI::Fuzz::CheckPrintable(pitool::DriveTable({&row}));
    const std::string object = pitool::DriveJson(drive);
    CHECK(json::accept(object));
    CHECK(std::all_of(object.begin(), object.end(), [](char character) { return character >= ' '; }));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    DriveReport report;
    std::string reason;
    if (!pitool::ReadSmartctlReport(text, report, reason)) {
        CHECK(!reason.empty());
        return 0;
    }
    CheckRanges(report);
    if (const std::optional<json> tree = ReadTree(text)) {
        CheckAgainstTree(report, *tree);
    }
    CheckAssessment(pitool::AssessDrive("report.json", report));
    return 0;
}
