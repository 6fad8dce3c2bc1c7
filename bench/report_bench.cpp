// SPDX-License-Identifier: Apache-2.0
// Reports of smartctl: drives with their health, against what parsing alone costs.

#include <pi/exchange/smartctl.h>

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

#include "measure.h"

namespace {

using nlohmann::json;

/// A report as smartctl -a prints it of an ATA drive, 30 attributes with all their members.
std::string Report(unsigned number) {
    json table = json::array();
    for (unsigned id = 1; id <= 30; ++id) {
        const std::uint64_t raw = std::uint64_t{id} * 1000003 + number;
        table.push_back({{"id", id},
                         {"name", "Attribute_Number_" + std::to_string(id)},
                         {"value", 100},
                         {"worst", 99},
                         {"thresh", 10},
                         {"when_failed", ""},
                         {"flags",
                          {{"value", 50},
                           {"string", "-O--CK "},
                           {"prefailure", false},
                           {"updated_online", true},
                           {"performance", false},
                           {"error_rate", false},
                           {"event_count", true},
                           {"auto_keep", true}}},
                         {"raw", {{"value", raw}, {"string", std::to_string(raw)}}}});
    }
    return json({{"json_format_version", {1, 0}},
                 {"smartctl",
                  {{"version", {7, 4}}, {"argv", {"smartctl", "-a", "-j", "/dev/sda"}}, {"exit_status", 0}}},
                 {"device", {{"name", "/dev/sda"}, {"type", "sat"}, {"protocol", "ATA"}}},
                 {"model_name", "INTEL SSDSC2BB480G7"},
                 {"serial_number", std::to_string(100000000 + number)},
                 {"firmware_version", "N2010101"},
                 {"user_capacity", {{"blocks", 937703088}, {"bytes", 480103981056}}},
                 {"logical_block_size", 512},
                 {"rotation_rate", 0},
                 {"smart_status", {{"passed", true}}},
                 {"ata_smart_attributes", {{"revision", 16}, {"table", table}}},
                 {"power_on_time", {{"hours", number}}},
                 {"power_cycle_count", 68},
                 {"temperature", {{"current", 30}}}})
        .dump(2);
}

constexpr unsigned REPORTS = 10000;

const std::vector<std::string>& Reports() {
    static const std::vector<std::string> reports = [] {
        std::vector<std::string> made;
        for (unsigned number = 0; number < REPORTS; ++number) {
            made.push_back(Report(number));
        }
        return made;
    }();
    return reports;
}

}  // namespace

void bench::RegisterBenchmarks() {
    Add("reports_10000", "library", [](benchmark::State& state) {
        const std::vector<std::string>& reports = Reports();
        Measure(state, [&] {
            for (const std::string& report : reports) {
                std::vector<PI::CDriveReport> drives;
                std::vector<PI::CReportRefusal> refusals;
                PI::ReadSmartctl(report.data(), report.size(), drives, refusals);
                benchmark::DoNotOptimize(drives.data());
            }
        });
    });
    Add("reports_10000", "json", [](benchmark::State& state) {
        const std::vector<std::string>& reports = Reports();
        Measure(state, [&] {
            for (const std::string& report : reports) {
                benchmark::DoNotOptimize(json::parse(report));
            }
        });
    });
}
