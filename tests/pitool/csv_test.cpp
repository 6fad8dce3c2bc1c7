// SPDX-License-Identifier: Apache-2.0

#include "print/formats.h"

#include "sample_reports.h"

#include <gtest/gtest.h>

#include <string>

using namespace pitool;
using namespace pitool::test;

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
    EXPECT_EQ(CsvHeader(),
              "state,reason,model,serial_number,firmware,kind,device,file,time,capacity_bytes,power_on_hours,"
              "wear_percent,spare_percent,bytes_written,rated_terabytes,temperature_celsius,"
              "temperature_limit_celsius,critical_temperature_celsius,reallocated_sectors,pending_sectors,"
              "uncorrectable_sectors,media_errors,interface_errors,failed_self_tests,hours_to_worn,"
              "hours_to_worn_low,hours_to_worn_high,doubtful\r\n");
    EXPECT_EQ(
        CsvLine(SummaryOf(report)),
        "look,\"perhaps 255 percent worn: NVMe log 02h says 255 percent, which stands for more than 254 or "
        "for nothing\",INTEL SSDPE2KX010T7,S1,F,NVME SSD,/dev/sdx,sample.json,2023-11-14T22:13:20Z,"
        "1000204886016,20000,255,,512000000000000,1380,,,,,,,,,,93203,55922,372813,wear_percent\r\n");
}

TEST(Csv, CellsAreQuotedWhereTheyMustBe) {
    // The model is the third cell, and the fourth, the serial number, is empty.
    const auto model = [](const std::string& text) {
        const std::string line = CsvLine(SummaryOf(AtaReport(text)));
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
        EXPECT_NE(CsvLine(SummaryOf(AtaReport(text))).find(",'" + text + ","), std::string::npos) << text;
    }
    EXPECT_NE(CsvLine(SummaryOf(AtaReport("a=1"))).find(",a=1,"), std::string::npos);
    EXPECT_NE(CsvLine(SummaryOf(AtaReport("a"), "-")).find(",-,"), std::string::npos) << "standard input";
}
