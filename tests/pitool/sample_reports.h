// SPDX-License-Identifier: Apache-2.0
// Reports to start a test from, and ways to change them.
#pragma once

#include "drive_summary.h"

#include <pi/exchange/smartctl.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace pitool::test {

using Json = nlohmann::ordered_json;

/// The least that is a report of an ATA drive.
inline Json AtaReport(const std::string& model) {
    return {{"device", {{"name", "/dev/sdx"}, {"protocol", "ATA"}}}, {"model_name", model}};
}

/// A row of an attribute table.
inline Json Attribute(int id, int current, std::uint64_t raw) {
    return {{"id", id}, {"value", current}, {"worst", current}, {"raw", {{"value", raw}}}};
}

/// A solid-state drive with an attribute table.
inline Json SolidStateReport(const std::string& model, std::uint64_t hours,
                             const std::vector<Json>& attributes) {
    Json report = AtaReport(model);
    report["rotation_rate"] = 0;
    report["power_on_time"]["hours"] = hours;
    report["ata_smart_attributes"]["table"] = attributes;
    return report;
}

/// The one drive of a report.
inline PI::CDriveReport ReportOf(const Json& json) {
    const std::string text = json.dump();
    std::vector<PI::CDriveReport> drives;
    std::vector<PI::CReportRefusal> refusals;
    PI::ReadSmartctl(text.data(), text.size(), drives, refusals);
    if (drives.size() != 1) {
        throw std::runtime_error(refusals.empty() ? "several drives" : refusals[0].GetReason());
    }
    return drives[0];
}

inline DriveSummary SummaryOf(const Json& json, const char* file = "sample.json") {
    return Summarize(file, ReportOf(json));
}

inline std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

}  // namespace pitool::test
