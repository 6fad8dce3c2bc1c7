// SPDX-License-Identifier: Apache-2.0
// Reports of real drives, where the machine has them: what is read is what they say, in members and in lines.

#include <pi/vocabulary.h>

#include <algorithm>
#include <bitset>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <regex>

#include "exchange/read_report.h"

using namespace PI;
using namespace PI::Test;

namespace {

using nlohmann::json;

/// A report, asked for what stands in a place: a member, or what a regular expression finds in a line.
class Report {
public:
    explicit Report(const std::filesystem::path& path) {
        std::ifstream file(path, std::ios::binary);
        m_Text.assign(std::istreambuf_iterator<char>(file), {});
        m_Json = path.extension() == ".json" ? json::parse(m_Text) : json::object();
    }

    const std::string& Text() const { return m_Text; }

    std::optional<std::string> Find(const std::string& member, const std::string& line) const {
        if (m_Json.empty()) {
            std::smatch match;
            const std::regex pattern("(^|\n)" + line);
            return !line.empty() && std::regex_search(m_Text, match, pattern)
                       ? std::optional(match[match.size() - 1].str())
                       : std::nullopt;
        }
        const json::json_pointer pointer(member);
        if (member.empty() || !m_Json.contains(pointer) || m_Json[pointer].is_null()) {
            return std::nullopt;
        }
        return TextOf(m_Json[pointer]);
    }

    /// The raw value of an attribute.
    std::optional<std::string> Attribute(unsigned id) const {
        const std::string number = std::to_string(id);
        for (const json& row : m_Json.value("/ata_smart_attributes/table"_json_pointer, json::array())) {
            if (row["id"] == id) {
                return TextOf(row["raw"]["value"]);
            }
        }
        return Find("", " *" + number + R"( \S+ +[-POSRCK]{6} +\S+ +\S+ +\S+ +\S+ +(\d+))");
    }

    /// A value of device statistics.
    std::optional<std::string> Statistic(unsigned page, unsigned offset) const {
        for (const json& table : m_Json.value("/ata_device_statistics/pages"_json_pointer, json::array())) {
            for (const json& row : table["table"]) {
                if (table["number"] == page && row.value("offset", 0U) == offset && row.contains("value")) {
                    return TextOf(row["value"]);
                }
            }
        }
        char line[64];
        std::snprintf(line, sizeof(line), R"(0x%02x  0x%03x  \d +(-?\d+)  )", page, offset);
        return Find("", line);
    }

private:
    static std::string TextOf(const json& value) {
        return value.is_string() ? value.get<std::string>() : value.dump();
    }

    std::string m_Text;
    json m_Json;
};

/// Without the separators of thousands, and without the point of a decimal fraction.
std::int64_t ToNumber(std::string text) {
    text.erase(std::remove_if(text.begin(), text.end(), [](char is) { return is == ',' || is == '.'; }),
               text.end());
    return std::stoll(text);
}

/// What a fact is in the words of this library.
std::string Plain(const std::string& name, const std::string& said) {
    if (name == "verdict") {
        return said == "true" || said == "PASSED" ? "0" : "1";
    }
    if (name == "interface") {
        return "SATA";
    }
    return name == "capacity" ? std::to_string(ToNumber(said)) : said;
}

// What a report says plainly, in a member and in a line.

struct Fact {
    const char* m_Name;
    std::string (*m_Read)(const CDriveReport& drive);
    const char* m_Member;
    const char* m_Line;
};
// clang-format off
const Fact FACTS[] = {
    {"model", [](const CDriveReport& drive) { return drive.GetModel(); }, "/model_name", "(Device Model|Model Number): +(.*)"},
    {"model", [](const CDriveReport& drive) { return drive.GetModel(); }, "/scsi_model_name", ""},
    {"vendor", [](const CDriveReport& drive) { return drive.GetVendor(); }, "/vendor", "Vendor: +(.*)"},
    {"vendor", [](const CDriveReport& drive) { return drive.GetVendor(); }, "/scsi_vendor", ""},
    {"product", [](const CDriveReport& drive) { return drive.GetProduct(); }, "/product", "Product: +(.*)"},
    {"product", [](const CDriveReport& drive) { return drive.GetProduct(); }, "/scsi_product", ""},
    {"serial number", [](const CDriveReport& drive) { return drive.GetSerialNumber(); }, "/serial_number", "Serial [Nn]umber: +(.*)"},
    {"firmware", [](const CDriveReport& drive) { return drive.GetFirmware(); }, "/firmware_version", "(Firmware Version|Revision): +(.*)"},
    {"firmware", [](const CDriveReport& drive) { return drive.GetFirmware(); }, "/revision", ""},
    {"firmware", [](const CDriveReport& drive) { return drive.GetFirmware(); }, "/scsi_revision", ""},
    {"device", [](const CDriveReport& drive) { return drive.GetDevice(); }, "/device/name", ""},
    {"capacity", [](const CDriveReport& drive) { return std::to_string(drive.GetCapacity()); }, "/user_capacity/bytes", "User Capacity: +([0-9,]+)"},
    {"block size", [](const CDriveReport& drive) { return std::to_string(drive.GetBlockSize()); }, "/logical_block_size", "Sector Sizes?: +([0-9]+)"},
    {"rotations", [](const CDriveReport& drive) { return std::to_string(drive.GetRPM()); }, "/rotation_rate", "Rotation Rate: +([0-9]+) rpm"},
    {"time", [](const CDriveReport& drive) { return std::to_string(drive.GetTime()); }, "/local_time/time_t", ""},
    {"interface", [](const CDriveReport& drive) { return std::string(drive.GetTransport() == PropertyValue::SATA ? "SATA" : "SAS"); }, "/interface_speed/max/sata_value", "(SATA) Version is"},
    {"verdict", [](const CDriveReport& drive) { return Figure(drive, HealthFigure::VERDICT).substr(0, 1); }, "/smart_status/passed", "SMART overall-health self-assessment test result: ([A-Z]+)"},
};

struct Statement {
    _HEALTH_FIGURE m_Figure;
    const char* m_Member;
    const char* m_Line;
    std::int64_t m_Unit = 1;
};
#define NVME_LOG(member) "/nvme_smart_health_information_log/" member
const Statement STATEMENTS[] = {
    {HealthFigure::TEMPERATURE, "/temperature/current", "Current Temperature: +(-?[0-9]+)"},
    {HealthFigure::HIGHEST_TEMPERATURE, "/temperature/lifetime_max", "Lifetime    Min/Max Temperature: .*/(-?[0-9]+)"},
    {HealthFigure::TEMPERATURE_LIMIT, "/temperature/op_limit_max", "Specified Max Operating Temperature: +([0-9]+)"},
    {HealthFigure::TEMPERATURE_LIMIT, "/temperature/drive_trip", "Min/Max recommended Temperature: +-?[0-9]+/([0-9]+)"},
    {HealthFigure::POWER_ON_HOURS, "/power_on_time/hours", ""},
    {HealthFigure::POWER_CYCLES, "/power_cycle_count", ""},
    {HealthFigure::LOGGED_ERRORS, "/ata_smart_error_log/summary/count", "ATA Error Count: ([0-9]+)"},
    {HealthFigure::LOGGED_ERRORS, "/ata_smart_error_log/extended/count", "Device Error Count: ([0-9]+)"},
    {HealthFigure::FAILED_SELF_TESTS, "/ata_smart_self_test_log/standard/error_count_total", ""},
    {HealthFigure::REALLOCATED_SECTORS, "/scsi_grown_defect_list", ""},
    {HealthFigure::MEDIA_ERRORS, "/scsi_error_counter_log/read/total_uncorrected_errors", ""},
    {HealthFigure::BYTES_READ, "/scsi_error_counter_log/read/gigabytes_processed", "", 1'000'000},
    {HealthFigure::BYTES_WRITTEN, "/scsi_error_counter_log/write/gigabytes_processed", "", 1'000'000},
    {HealthFigure::CRITICAL_WARNING, NVME_LOG("critical_warning"), ""},
    {HealthFigure::TEMPERATURE, NVME_LOG("temperature"), ""},
    {HealthFigure::SPARE, NVME_LOG("available_spare"), ""},
    {HealthFigure::SPARE_THRESHOLD, NVME_LOG("available_spare_threshold"), ""},
    {HealthFigure::WEAR, NVME_LOG("percentage_used"), ""},
    {HealthFigure::BYTES_READ, NVME_LOG("data_units_read"), "", 512'000},
    {HealthFigure::BYTES_WRITTEN, NVME_LOG("data_units_written"), "", 512'000},
    {HealthFigure::POWER_CYCLES, NVME_LOG("power_cycles"), ""},
    {HealthFigure::POWER_ON_HOURS, NVME_LOG("power_on_hours"), ""},
    {HealthFigure::UNSAFE_SHUTDOWNS, NVME_LOG("unsafe_shutdowns"), ""},
    {HealthFigure::MEDIA_ERRORS, NVME_LOG("media_errors"), ""},
    {HealthFigure::LOGGED_ERRORS, NVME_LOG("num_err_log_entries"), ""},
};
#undef NVME_LOG
// clang-format on

// Attributes that mean the same on every drive, and statistics.
struct Value {
    _HEALTH_FIGURE m_Figure;
    unsigned m_Page;  ///< of statistics; 0: an attribute
    unsigned m_Number;
    bool m_IsInBlocks = false;
};
constexpr Value VALUES[] = {
    {HealthFigure::REALLOCATED_SECTORS, 0, 5},    {HealthFigure::POWER_ON_HOURS, 0, 9},
    {HealthFigure::POWER_CYCLES, 0, 12},          {HealthFigure::MEDIA_ERRORS, 0, 187},
    {HealthFigure::PENDING_SECTORS, 0, 197},      {HealthFigure::UNCORRECTABLE_SECTORS, 0, 198},
    {HealthFigure::INTERFACE_ERRORS, 0, 199},     {HealthFigure::POWER_CYCLES, 1, 0x08},
    {HealthFigure::POWER_ON_HOURS, 1, 0x10},      {HealthFigure::BYTES_WRITTEN, 1, 0x18, true},
    {HealthFigure::BYTES_READ, 1, 0x28, true},    {HealthFigure::REALLOCATED_SECTORS, 3, 0x20},
    {HealthFigure::MEDIA_ERRORS, 4, 0x08},        {HealthFigure::TEMPERATURE, 5, 0x08},
    {HealthFigure::HIGHEST_TEMPERATURE, 5, 0x20}, {HealthFigure::TEMPERATURE_LIMIT, 5, 0x58},
    {HealthFigure::INTERFACE_ERRORS, 6, 0x18},    {HealthFigure::WEAR, 7, 0x08},
};

// Figures that are not what the report says plainly, each looked at.
struct Exception {
    const char* m_File;
    _HEALTH_FIGURE m_Figure;
    const char* m_Why;
};
constexpr Exception EXCEPTIONS[] = {
    {"mtfddak128mam-1j1.json", HealthFigure::TEMPERATURE, "0 of a drive without a sensor"},
    {"mtfddak128mam-1j1.json", HealthFigure::HIGHEST_TEMPERATURE, "0 of a drive without a sensor"},
    {"satadom-", HealthFigure::TEMPERATURE_LIMIT, "127, which is none"},
    {"sat-Phison_Driven_SSDs", HealthFigure::PENDING_SECTORS, "attribute 197 is named Not_In_Use"},
};

std::vector<std::filesystem::path> Captures() {
    const char* given = std::getenv("PI_CAPTURES");
    const std::filesystem::path folder = given != nullptr ? given : PI_CAPTURES;
    std::vector<std::filesystem::path> files;
    for (const char* name : {"smartctl", "smartctl_more", "smartctl_text"}) {
        if (std::filesystem::exists(folder / name)) {
            for (const auto& file : std::filesystem::directory_iterator(folder / name)) {
                files.push_back(file.path());
            }
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

class SmartctlCaptures : public testing::Test {
protected:
    void SetUp() override {
        if (m_Captures.empty()) {
            GTEST_SKIP() << "the captures are missing";
        }
    }

    const std::vector<std::filesystem::path> m_Captures = Captures();
};

using Stated = std::map<_HEALTH_FIGURE, std::vector<std::int64_t>>;

/// What a report says of figures.
Stated WhatIsStated(const Report& report, std::int64_t blockSize) {
    Stated stated;
    for (const Statement& row : STATEMENTS) {
        if (const auto said = report.Find(row.m_Member, row.m_Line)) {
            stated[row.m_Figure].push_back(ToNumber(*said) * row.m_Unit);
        }
    }
    for (const Value& row : VALUES) {
        const bool isAttribute = row.m_Page == 0;
        if (const auto said =
                isAttribute ? report.Attribute(row.m_Number) : report.Statistic(row.m_Page, row.m_Number)) {
            constexpr std::int64_t LOW_24_BITS = 0xFFFFFF;  // above them attribute 9 counts parts of hours
            const std::int64_t value = ToNumber(*said);
            stated[row.m_Figure].push_back(row.m_IsInBlocks ? value * blockSize
                                           : isAttribute    ? value & LOW_24_BITS
                                                            : value);
        }
    }
    return stated;
}

}  // namespace

TEST_F(SmartctlCaptures, FactsAreWhatTheReportsSay) {
    for (const std::filesystem::path& path : m_Captures) {
        const Report report(path);
        for (const CDriveReport& drive : ReadAll(report.Text()).m_Drives) {
            for (const Fact& fact : FACTS) {
                if (const auto said = report.Find(fact.m_Member, fact.m_Line)) {
                    const std::string plain = Plain(fact.m_Name, *said);
                    // That of an invented drive: as little as no drive has.
                    EXPECT_EQ(fact.m_Read(drive), plain == "1024" ? "0" : plain)
                        << path << " " << fact.m_Name;
                }
            }
        }
    }
}

TEST_F(SmartctlCaptures, FiguresAreWhatTheReportsSay) {
    for (const std::filesystem::path& path : m_Captures) {
        const Report report(path);
        for (const CDriveReport& drive : ReadAll(report.Text()).m_Drives) {
            for (const auto& [which, said] : WhatIsStated(report, drive.GetBlockSize())) {
                const std::string name = path.filename();
                const bool isException = std::any_of(
                    std::begin(EXCEPTIONS), std::end(EXCEPTIONS), [&, figure = which](const Exception& row) {
                        return row.m_Figure == figure && name.rfind(row.m_File, 0) == 0;
                    });
                const CHealthFigure figure = drive.GetHealth().GetFigure(which);
                SCOPED_TRACE(name + " " + HealthFigureToString(which) + ": " + figure.GetText());
                EXPECT_EQ(figure.HasValue(), !isException);
                EXPECT_TRUE(isException || std::count(said.begin(), said.end(), figure.GetValue()) != 0)
                    << Figure(drive, which);
            }
        }
    }
}

TEST_F(SmartctlCaptures, AttributesAtTheirThresholdsAreCounted) {
    const std::regex failing(R"rx("when_failed": *"now"|( NOW ))rx");
    for (const std::filesystem::path& path : m_Captures) {
        const Report report(path);
        const auto count =
            std::distance(std::sregex_iterator(report.Text().begin(), report.Text().end(), failing), {});
        for (const CDriveReport& drive : ReadAll(report.Text()).m_Drives) {
            EXPECT_EQ(drive.GetHealth().GetFigure(HealthFigure::ATTRIBUTES_BELOW_THRESHOLD).GetValue(), count)
                << path;
        }
    }
}

TEST_F(SmartctlCaptures, BitsOfTheExitStatusAreNoted) {
    for (const std::filesystem::path& path : m_Captures) {
        const Report report(path);
        const auto status = std::stoul(report.Find("/smartctl/exit_status", "").value_or("0"));
        for (const CDriveReport& drive : ReadAll(report.Text()).m_Drives) {
            const std::vector<std::string>& notes = drive.GetNotes();
            EXPECT_EQ(std::count_if(notes.begin(), notes.end(),
                                    [](const std::string& note) { return note.find("exit status") == 0; }),
                      static_cast<std::ptrdiff_t>(std::bitset<8>(status).count()))
                << path;
        }
    }
}

TEST_F(SmartctlCaptures, NoReadableDriveIsRefused) {
    std::vector<std::string> refused;
    for (const std::filesystem::path& path : m_Captures) {
        const ReadResult result = ReadAll(Report(path).Text());
        EXPECT_EQ(result.m_Drives.size() + result.m_Refusals.size(), 1U) << path;
        if (result.m_Drives.empty()) {
            refused.push_back(path.filename());
        }
    }
    // Lists of devices, and reports without identity; the first two are of one collection.
    ASSERT_EQ(refused.size(), 8U);
    EXPECT_EQ(refused[0].substr(0, 4) + refused[1].substr(0, 4), "pls_pls_");
    refused.erase(refused.begin(), refused.begin() + 2);
    EXPECT_EQ(refused,
              (std::vector<std::string>{"sc_smart-pass.json", "sc_smart-sat.json",
                                        "sc_smartctl_scan_megaraid.json", "sc_smartctl_scan_nvme.json",
                                        "sc_smartctl_scan_simple.json", "tg_testcases_scan_include.json"}));
}
