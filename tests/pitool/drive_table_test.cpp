// SPDX-License-Identifier: Apache-2.0

#include "drive_table.h"

#include "sample_reports.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

using namespace pitool;
using namespace pitool::test;

namespace {

Json Disk(const std::string& serial, std::uint64_t hours, std::uint64_t pending) {
    Json report = AtaReport("ST2000NM0033-9ZM175");
    report["serial_number"] = serial;
    report["rotation_rate"] = 7200;
    report["smart_status"]["passed"] = true;
    report["power_on_time"]["hours"] = hours;
    report["user_capacity"]["bytes"] = 2000398934016;
    report["ata_smart_attributes"]["table"] = Json::array({Attribute(197, 100, pending)});
    return report;
}

Json Nvme(const std::string& serial, int wear, int temperature) {
    return {{"device", {{"name", "/dev/nvme0"}, {"protocol", "NVMe"}}},
            {"model_name", "INTEL SSDPE2KX010T7"},
            {"serial_number", serial},
            {"temperature", {{"current", temperature}, {"op_limit_max", 70}}},
            {"nvme_smart_health_information_log",
             {{"critical_warning", 0},
              {"percentage_used", wear},
              {"power_on_hours", 20000},
              {"media_errors", 0}}}};
}

/// Drives of all kinds.
class DriveTableTest : public testing::Test {
protected:
    const std::vector<DriveSummary> m_Drives = {
        SummaryOf(Nvme("N1", 50, 71), "folder/n1.json"),
        SummaryOf(Disk("D1", 30000, 3), "folder/d1.json"),
        SummaryOf(Nvme("N2", 95, 30), "folder/n2.json"),
        SummaryOf(Disk("D2", 50000, 0), "folder/d2.json"),
        SummaryOf(AtaReport("QEMU HARDDISK"), "folder/q.json"),
    };

    DriveList All() const {
        DriveList list;
        for (const DriveSummary& drive : m_Drives) {
            list.push_back(&drive);
        }
        return list;
    }

    /// The files in the order of a key.
    std::vector<std::string> Sorted(const std::string& key) const {
        DriveList list = All();
        SortDrives(key, list);
        std::vector<std::string> files;
        for (const DriveSummary* drive : list) {
            files.push_back(std::string(drive->GetFile()).substr(7, 2));
        }
        return files;
    }

    std::string Shown(std::size_t columns, bool colors = false) const {
        DriveList list = All();
        SortDrives("state", list);
        Screen screen;
        screen.m_Columns = columns;
        screen.m_Colors = colors;
        return DriveTable(list).Text(screen);
    }
};

using Files = std::vector<std::string>;

}  // namespace

TEST_F(DriveTableTest, HasALineADrive) {
    EXPECT_EQ(Shown(0),
              "STATE    MODEL                SERIAL  SIZE    AGE  WEAR  LIFE LEFT           TEMP  ERRORS  "
              "REASON                                                       FILE\n"
              "look     ST2000NM0033-9ZM175  D1      2 TB  3.4 y     -  -                      -       3  "
              "3 pending sectors                                            folder/d1.json\n"
              "look     INTEL SSDPE2KX010T7  N2         -  2.3 y  95 %  0.1 y (0.1-0.5)  30/70 C       0  "
              "95 percent worn                                              folder/n2.json\n"
              "look     INTEL SSDPE2KX010T7  N1         -  2.3 y  50 %  2.1 y (1.1-8.7)  71/70 C       0  "
              "above its temperature limit: 71 degrees Celsius              folder/n1.json\n"
              "unknown  QEMU HARDDISK        -          -      -     -  -                      -       -  "
              "no verdict of the drive, and nothing that speaks against it  folder/q.json\n"
              "good     ST2000NM0033-9ZM175  D2      2 TB  5.7 y     -  -                      -       0  "
              "-                                                            folder/d2.json\n");
}

TEST_F(DriveTableTest, LeavesColumnsOutWhereTheScreenIsTooNarrow) {
    const auto headings = [this](std::size_t columns) {
        const std::string table = Shown(columns);
        return table.substr(0, table.find('\n'));
    };
    EXPECT_EQ(
        headings(120),
        "STATE    MODEL                SERIAL  SIZE    AGE  WEAR  LIFE LEFT        ERRORS  REASON           "
        "       FILE");
    EXPECT_EQ(headings(100),
              "STATE    MODEL                SERIAL    AGE  WEAR  ERRORS  REASON                     FILE");
    EXPECT_EQ(headings(80), "STATE    MODEL                SERIAL    AGE  WEAR  ERRORS  REASON");
    EXPECT_EQ(headings(60), "STATE    MODEL                WEAR  REASON");
    EXPECT_EQ(headings(1), "STATE    MODEL     REASON");
}

TEST_F(DriveTableTest, OddModelsCostNoColumn) {
    const DriveSummary drive = SummaryOf(AtaReport("MTFDDAK128MAR-1J1AA  90Y8649 90Y8652IBM"));
    Screen screen;
    EXPECT_NE(DriveTable({&drive}).Text(screen).find("90Y8652IBM"), std::string::npos);
    screen.m_Columns = 74;
    EXPECT_NE(DriveTable({&drive}).Text(screen).find(
                  "MTFDDAK128MAR-1J1AA  90Y8...  no verdict of the d...  sample"),
              std::string::npos)
        << DriveTable({&drive}).Text(screen);
}

TEST_F(DriveTableTest, WhatIsWornOrHotStandsOut) {
    const std::string table = Shown(0, true);
    for (const char* text : {"\x1B[33mlook\x1B[0m", "\x1B[33m95 %\x1B[0m", "\x1B[33m71/70 C\x1B[0m"}) {
        EXPECT_NE(table.find(text), std::string::npos) << table;
    }
    EXPECT_EQ(table.find("\x1B[33m50 %"), std::string::npos);
    const DriveSummary worn = SummaryOf(Nvme("N", 100, 30));
    Screen screen;
    screen.m_Colors = true;
    EXPECT_NE(DriveTable({&worn}).Text(screen).find("\x1B[33mworn\x1B[0m"), std::string::npos);
}

TEST_F(DriveTableTest, DoubtfulFiguresHaveAQuestionMark) {
    const DriveSummary drive = SummaryOf(Nvme("N", 255, 30));
    EXPECT_NE(DriveTable({&drive}).Text({}).find("  255 %?  "), std::string::npos)
        << DriveTable({&drive}).Text({});
}

TEST_F(DriveTableTest, SortsByEveryKey) {
    EXPECT_EQ(SortKeys(), (std::vector<std::string>{"state", "model", "serial", "size", "age", "wear", "life",
                                                    "temperature", "errors", "file"}));
    EXPECT_EQ(Sorted("state"), (Files{"d1", "n2", "n1", "q.", "d2"}));
    EXPECT_EQ(Sorted("model"), (Files{"n2", "n1", "q.", "d1", "d2"}));
    EXPECT_EQ(Sorted("serial"), (Files{"d1", "d2", "n1", "n2", "q."}));
    EXPECT_EQ(Sorted("size"), (Files{"d1", "d2", "n2", "n1", "q."}));
    EXPECT_EQ(Sorted("age"), (Files{"d2", "d1", "n2", "n1", "q."}));
    EXPECT_EQ(Sorted("wear"), (Files{"n2", "n1", "d1", "q.", "d2"}));
    EXPECT_EQ(Sorted("life"), (Files{"n2", "n1", "d1", "q.", "d2"}));
    EXPECT_EQ(Sorted("temperature"), (Files{"n1", "n2", "d1", "q.", "d2"}));
    EXPECT_EQ(Sorted("errors"), (Files{"d1", "n2", "n1", "d2", "q."}));
    EXPECT_EQ(Sorted("file"), (Files{"d1", "d2", "n1", "n2", "q."}));
}

TEST_F(DriveTableTest, ModelsAreCounted) {
    EXPECT_EQ(ModelTable(All()).Text({}),
              "FAILED  REPLACE  LOOK  DRIVES  MEDIAN AGE  MEDIAN WEAR  HIGHEST WEAR  MODEL\n"
              "     -        -     2       2       2.3 y         50 %          95 %  INTEL SSDPE2KX010T7\n"
              "     -        -     1       2       3.4 y            -             -  ST2000NM0033-9ZM175\n"
              "     -        -     -       1           -            -             -  QEMU HARDDISK\n");
}

TEST_F(DriveTableTest, CountsLeaveOutStatesWithoutDrives) {
    EXPECT_EQ(StateCounts({}).Text(), "0 drives");
    EXPECT_EQ(StateCounts({&m_Drives[3]}).Text(), "1 drive: 1 good");
    EXPECT_EQ(StateCounts(All()).Text(), "5 drives: 3 to look at, 1 unknown, 1 good");
    const DriveSummary failed = SummaryOf(
        Json::parse(R"({"device":{"protocol":"ATA"},"model_name":"M","smart_status":{"passed":false}})"));
    const DriveSummary replace = SummaryOf(Nvme("N3", 5, 30));
    EXPECT_EQ(StateCounts({&failed, &failed, &m_Drives[4]}).Text(), "3 drives: 2 failed, 1 unknown");
}
