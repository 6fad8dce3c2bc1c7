// SPDX-License-Identifier: Apache-2.0

#include "print/formats.h"

#include "sample_reports.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

using namespace pitool;
using namespace pitool::test;

namespace {

std::string CsvLine(const Json& report, const char* file = "sample.json") {
    const DriveSummary drive = SummaryOf(report, file);
    return CsvText({&drive}).substr(CsvText({}).size());
}

}  // namespace

TEST(Csv, ALineHasTheColumnsOfTheHeader) {
    Json report = AtaReport("INTEL SSDPE2KX010T7");
    report["device"]["protocol"] = "NVMe";
    report["serial_number"] = "S1";
    report["firmware_version"] = "F";
    report["local_time"]["time_t"] = 1700000000;
    report["user_capacity"]["bytes"] = 1000204886016;
    report["nvme_smart_health_information_log"] = {{"critical_warning", 0},
                                                   {"percentage_used", 255},
                                                   {"power_on_hours", 20000},
                                                   {"data_units_written", 1000000000}};
    EXPECT_EQ(CsvText({}),
              "state,reason,model,serial_number,firmware,kind,device,file,time,capacity_bytes,power_on_hours,"
              "wear_percent,spare_percent,bytes_written,rated_terabytes,temperature_celsius,"
              "temperature_limit_celsius,critical_temperature_celsius,reallocated_sectors,pending_sectors,"
              "uncorrectable_sectors,media_errors,interface_errors,failed_self_tests,hours_to_worn,"
              "hours_to_worn_low,hours_to_worn_high,doubtful\r\n");
    EXPECT_EQ(
        CsvLine(report),
        "look,\"perhaps 255 percent worn: NVMe log 02h says 255 percent, which stands for more than 254 or "
        "for nothing\",INTEL SSDPE2KX010T7,S1,F,NVME SSD,/dev/sdx,sample.json,2023-11-14T22:13:20Z,"
        "1000204886016,20000,255,,512000000000000,1380,,,,,,,,,,93203,55922,372813,wear_percent\r\n");
}

TEST(Csv, EachFigureHasItsColumn) {
    std::vector<std::string> header;
    std::stringstream names(CsvText({}));
    for (std::string name; std::getline(names, name, ',');) {
        header.push_back(name);
    }
    const std::pair<const char*, const char*> FIGURES[] = {
        {"power_on_hours", R"("power_on_time":{"hours":7})"},
        {"spare_percent",
         R"("device":{"protocol":"NVMe"},"nvme_smart_health_information_log":{"available_spare":7})"},
        {"temperature_celsius", R"("temperature":{"current":7})"},
        {"temperature_limit_celsius", R"("temperature":{"op_limit_max":7})"},
        {"critical_temperature_celsius",
         R"("device":{"protocol":"NVMe"},"nvme_composite_temperature_threshold":{"critical":7})"},
        {"reallocated_sectors", R"("device":{"protocol":"SCSI"},"scsi_grown_defect_list":7)"},
        {"pending_sectors", R"("device":{"protocol":"ATA"},"ata_pending_defects_log":{"count":7})"},
        {"uncorrectable_sectors",
         R"("device":{"protocol":"ATA"},"ata_smart_attributes":{"table":[{"id":198,"raw":{"value":7}}]})"},
        {"media_errors",
         R"("device":{"protocol":"NVMe"},"nvme_smart_health_information_log":{"media_errors":7})"},
        {"interface_errors",
         R"("device":{"protocol":"ATA"},"ata_smart_attributes":{"table":[{"id":199,"raw":{"value":7}}]})"},
    };
    for (const auto& [column, members] : FIGURES) {
        const Json report = Json::parse(std::string(R"({"model_name":"A",)") + members + "}");
        std::string line = CsvLine(report);
        line.erase(0, line.find(",A,"));  // what is before it may hold commas
        std::stringstream cells(line.substr(1));
        std::string cell;
        for (std::size_t at = 2; at < header.size() && std::getline(cells, cell, ','); ++at) {
            EXPECT_EQ(cell == "7", header[at] == column) << header[at] << " " << members;
        }
    }
}

TEST(Csv, CellsAreQuotedWhereTheyMustBe) {
    // The model is the third cell, and the fourth, the serial number, is empty.
    const auto model = [](const std::string& text) {
        const std::string line = CsvLine(AtaReport(text));
        const std::size_t begin = line.find(" against it\",") + 13;
        return line.substr(begin, line.find(",,,ATA HDD") - begin);
    };
    EXPECT_EQ(model("a b"), "a b");
    EXPECT_EQ(model("a,b"), "\"a,b\"");
    EXPECT_EQ(model("2.5\" SSD"), "\"2.5\"\" SSD\"");
    EXPECT_EQ(model("a\r\nb"), "a??b");
}

TEST(Csv, NoTextIsAFormula) {
    for (const std::string text : {"=1+2", "+1", "-1", "@SUM(A1)"}) {
        EXPECT_NE(CsvLine(AtaReport(text)).find(",'" + text + ","), std::string::npos) << text;
    }
    EXPECT_NE(CsvLine(AtaReport("a=1")).find(",a=1,"), std::string::npos);
    EXPECT_NE(CsvLine(AtaReport("a"), "-").find(",-,"), std::string::npos) << "standard input";
}
