// SPDX-License-Identifier: Apache-2.0
// Wear is one figure from several sources.

#include <pi/drives.h>
#include <pi/ssd_endurance.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <vector>

#include "drives/health_checks.h"

namespace PI::Test {
namespace {

using namespace HealthPage;
namespace Figure = HealthFigure;

struct Seen {
    std::uint8_t m_ID;
    int m_Current;
    std::uint64_t m_Raw;
    const char* m_Name = "";
};

CDriveHealth Drive(const char* model, const std::vector<Seen>& attributes) {
    CDriveHealth drive(DriveProtocol::ATA, model);
    drive.SetMedium(PropertyValue::SSD);
    for (const Seen& seen : attributes) {
        drive.TakeAttribute(seen.m_ID, seen.m_Name, 0x32, seen.m_Current, seen.m_Current, -1, seen.m_Raw);
    }
    return drive;
}

std::string Wear(const CDriveHealth& drive) {
    return Told(drive, Figure::WEAR);
}

TEST(DriveWear, AttributesOfFamiliesAreReadByTheirRules) {
    struct {
        const char* m_Model;
        std::vector<Seen> m_Attributes;
        const char* m_Wear;
    } const rows[] = {
        {"SAMSUNG MZ7LM480HCHP-00005", {{177, 90, 1000}}, "known 10: SMART attribute 177"},
        {"Samsung SSD 860 EVO 1TB",
         {{177, 95, 90}},
         "known 5: SMART attribute 177"},  // 5 percent left is the end
        {"Samsung SSD 860 EVO 1TB",
         {{177, 5, 90}},
         "doubtful 100: SMART attribute 177 says 100 percent and counts no further"},
        {"INTEL SSDSC2BB480G7", {{233, 74, 0}}, "known 26: SMART attribute 233"},
        {"INTEL SSDSC2BB480G7",
         {{233, 1, 0}},
         "doubtful 99: SMART attribute 233 says 99 percent and counts no further"},
        {"INTEL SSDSC2BB480G7", {{233, 2, 0}}, "known 98: SMART attribute 233"},
        {"SSDSC2KG480G8R", {{233, 100, 4546}, {245, 60, 0}}, "known 40: SMART attribute 245"},
        {"INTEL SSDSC2BA200G3R", {{233, 100, 4546}}, "unknown: not reported"},
        {"Micron_5300_MTFDDAK960TDS", {{202, 97, 3}}, "known 3: SMART attribute 202"},
        {"XA480LE10063", {{231, 94, 0}}, "known 6: SMART attribute 231"},
        {"CT1000MX500SSD1", {{202, 255, 101}}, "known 101: SMART attribute 202"},  // the current value wraps
        {"CT500BX500SSD1",
         {{202, 97, 97}},
         "doubtful 3: SMART attribute 202 says 3 percent, but drives of this kind are known on which it does "
         "not tell"},
        {"TOSHIBA THNSF8240CCSE", {{173, 180, 0}}, "known 20: SMART attribute 173"},
        {"TOSHIBA THNSNJ960PCSZ", {{173, 200, 0}}, "unknown: not reported"},
        {"SanDisk SDSSDXPS480G", {{230, 100, 0x05000005}}, "known 5: SMART attribute 230"},
        {"ANY", {{230, 100, 0x07000007, "Media_Wearout_Indicator"}}, "known 7: SMART attribute 230"},
        {"ANY", {{167, 100, 300}, {168, 100, 3000}, {164, 1, 1}}, "known 10: SMART attribute 167"},
        {"ANY", {{167, 100, 300}, {168, 100, 999}, {164, 1, 1}}, "unknown: not reported"},  // no rated cycles
        {"ANY", {{167, 100, 300}, {168, 100, 3000}}, "unknown: not reported"},
        {"KINGSTON SA400S37240G", {{231, 94, 94}}, "known 6: SMART attribute 231"},
        {"ANY", {{231, 100, 88}}, "known 12: SMART attribute 231"},
        {"ANY", {{231, 94, 94}, {163, 1, 1}}, "unknown: not reported"},
        {"CT1000MX500SSD1",
         {{202, 0, 100}},
         "doubtful 100: SMART attribute 202 says 100 percent and counts no further"},
        {"TOSHIBA THNSF8240CCSE", {{173, 200, 0}}, "known 0: SMART attribute 173"},
        {"TOSHIBA THNSF8240CCSE", {{173, 201, 0}}, "unknown: not reported"},
        {"SanDisk SDSSDXPS480G", {{230, 100, 0}}, "known 0: SMART attribute 230"},
        {"SanDisk SDSSDXPS480G", {{230, 100, 5}}, "unknown: not reported"},  // neither form
        {"SanDisk SD7SB6S", {{230, 100, 0x0500}}, "known 5: SMART attribute 230"},
        {"SanDisk SD7SB6S", {{230, 100, 0x05000005}}, "known 5: SMART attribute 230"},
        {"HP SSD S700", {{173, 100, 550}}, "known 10: SMART attribute 173"},
        {"ANY", {{167, 100, 300}, {168, 100, 1000}, {164, 1, 1}}, "known 30: SMART attribute 167"},
        {"ANY", {{167, 100, 300}, {168, 100, 100000}, {164, 1, 1}}, "known 0: SMART attribute 167"},
        {"ANY", {{167, 100, 300}, {168, 100, 100001}, {164, 1, 1}}, "unknown: not reported"},
        {"ANY", {{167, 100, 300}, {164, 1, 1}}, "unknown: not reported"},
        {"ANY", {{167, 100, 10010}, {168, 100, 1000}, {164, 1, 1}}, "unknown: not reported"},  // 1001 percent
        {"ANY",
         {{231, 80, 200}},
         "doubtful 20: SMART attribute 231 says 20 percent, but drives of this kind are known on which it "
         "does not tell"},
        {"ANY", {{231, 100, 200}}, "unknown: not reported"},
        {"ANY",
         {{231, 99, 1}},
         "doubtful 1: SMART attribute 231 says 1 percent, but drives of this kind are known on which it does "
         "not tell"},
        {"ANY", {{231, 101, 0}}, "unknown: not reported"},
        {"ANY", {{231, -1, 88}}, "unknown: not reported"},
        {"SATADOM-ML 3ME",
         {{173, 100, 0x00'00FF'0000'FFFF}},
         "unknown: not reported"},  // more than 1000 percent
        {"ANY", {{42, 80, 0, "SSD_Life_Remaining"}}, "known 20: SMART attribute 42"},
        {"ANY", {{177, 90, 10, "Wear_Leveling_Count"}}, "unknown: not reported"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Wear(Drive(row.m_Model, row.m_Attributes)), row.m_Wear) << row.m_Model;
    }
}

TEST(DriveWear, ListedModelsWithoutARuleKeepTheirEvaluation) {
    // 3000 rated cycles in the list; bytes 0, 1 and 4 of the older families' attribute count.
    EXPECT_EQ(Wear(Drive("SATADOM-ML 3ME", {{173, 100, 0x00'0000'0000'012C}})),
              "known 10: SMART attribute 173");
    EXPECT_EQ(Wear(Drive("SATADOM-ML 3ME", {{1, 100, 0}})), "unknown: not reported");
}

TEST(DriveWear, MoreAttributesThanDrivesHaveAreHeardInTheirOrder) {
    std::vector<Seen> attributes;
    for (std::uint8_t id = 50; id < 60; ++id) {
        attributes.push_back({id, 80, 0, "SSD_Life_Remaining"});
    }
    EXPECT_EQ(Wear(Drive("ANY", attributes)), "known 20: SMART attribute 50");
}

TEST(DriveWear, OfADiskIsUnknown) {
    CDriveHealth drive = Disk();
    drive.TakeAttribute(177, "Wear_Leveling_Count", 0, 90, 90, -1, 1);
    EXPECT_EQ(Wear(drive), "unknown: rotating disk");
}

TEST(DriveWear, TheDrivesOwnStatisticCountsFirst) {
    CDriveHealth drive = Drive("SAMSUNG MZ7LM480HCHP-00005", {{177, 90, 1000}});
    drive.TakeStatistic(7, 8, 12);
    EXPECT_EQ(Wear(drive), "known 12: device statistics page 7");
}

TEST(DriveWear, SourcesMoreThanTenPointsApartAreDoubtful) {
    struct {
        std::int64_t m_Statistic;
        int m_Current;
        const char* m_Wear;
    } const rows[] = {
        {20, 90, "known 20: device statistics page 7"},
        {21, 90,
         "doubtful 21: device statistics page 7 says 21 percent, SMART attribute 177 says 10 percent"},
        {0, 90, "known 0: device statistics page 7"},
        {0, 89, "doubtful 0: device statistics page 7 says 0 percent, SMART attribute 177 says 11 percent"},
        {140, 1, "known 140: device statistics page 7"},
        {140, 10, "known 140: device statistics page 7"},
        {140, 11,
         "doubtful 140: device statistics page 7 says 140 percent, SMART attribute 177 says 89 percent"},
    };
    for (const auto& row : rows) {
        CDriveHealth drive = Drive("SAMSUNG MZ7LM480HCHP-00005", {{177, row.m_Current, 1000}});
        drive.TakeStatistic(7, 8, row.m_Statistic);
        EXPECT_EQ(Wear(drive), row.m_Wear);
    }
}

TEST(DriveWear, OfTwoAttributesThatDifferTheFigureIsDoubtful) {
    EXPECT_EQ(Wear(Drive("Micron_5300_MTFDDAK960TDS", {{202, 97, 3}, {173, 80, 600}})),
              "doubtful 3: SMART attribute 202 says 3 percent, SMART attribute 173 says 20 percent");
}

TEST(DriveWear, AListedModelIsASolidStateDrive) {
    CDriveHealth drive(DriveProtocol::ATA, "INTEL SSDSC2BB480G7");
    drive.TakeVerdict(true);
    drive.TakeFigure(Figure::REALLOCATED_SECTORS, 1);
    EXPECT_EQ(drive.GetState(), DriveState::GOOD);  // as blocks of a solid-state drive are
}

TEST(DriveWear, TwoHundredAndFiftyFiveIsDoubtfulUnlessAnotherSourceAgrees) {
    CDriveHealth alone = SolidState();
    alone.TakeStatistic(7, 8, 255);
    EXPECT_EQ(Wear(alone),
              "doubtful 255: device statistics page 7 says 255 percent, which stands for more than 254 or "
              "for nothing");
    CDriveHealth nvme(DriveProtocol::NVME, "");
    NVMeHealth health;
    health.m_Used = 255;
    Take(nvme, NVME_HEALTH_LOG, HealthLog(health));
    EXPECT_EQ(nvme.GetFigure(Figure::WEAR).GetState(), FigureState::DOUBTFUL);
    health.m_Used = 254;
    Take(nvme, NVME_HEALTH_LOG, HealthLog(health));
    EXPECT_EQ(Wear(nvme), "known 254: NVMe log 02h");

    CDriveHealth little = Drive("SAMSUNG MZ7LM480HCHP-00005", {{177, 97, 10}});
    little.TakeStatistic(7, 8, 255);
    EXPECT_EQ(Wear(little),
              "doubtful 3: device statistics page 7 says 255 percent, which stands for more than 254 or for "
              "nothing, "
              "SMART attribute 177 says 3 percent");
    for (const auto& [current, state] :
         {std::pair{11, FigureState::DOUBTFUL}, std::pair{10, FigureState::KNOWN}}) {
        CDriveHealth worn = Drive("SAMSUNG MZ7LM480HCHP-00005", {{177, current, 10}});
        worn.TakeStatistic(7, 8, 255);
        EXPECT_EQ(worn.GetFigure(Figure::WEAR).GetState(), state) << current;
    }
}

TEST(DriveWear, OfZeroAfterManyDriveWritesIsDoubtful) {
    for (const auto& [terabytes, wear] :
         {std::pair{std::uint64_t{99}, "known 0: NVMe log 02h"},
          std::pair{std::uint64_t{100},
                    "doubtful 0: NVMe log 02h says 0 percent, but the drive was written 100 times over"}}) {
        NVMeHealth health;
        health.m_Used = 0;
        health.m_UnitsWritten = terabytes * 1'000'000'000'000 / 512'000;
        CDriveHealth drive(DriveProtocol::NVME, "");
        Take(drive, NVME_HEALTH_LOG, HealthLog(health));
        EXPECT_EQ(Wear(drive), "known 0: NVMe log 02h");  // the capacity is not known
        drive.SetCapacity(1'000'000'000'000);
        EXPECT_EQ(Wear(drive), wear);
    }
}

TEST(DriveWear, WhatAnotherProgramMadeOfAttributesServesWithoutThemAlone) {
    CDriveHealth drive = SolidState();
    drive.TakeFigure(Figure::WEAR, 5);
    EXPECT_EQ(Wear(drive), "known 5: decoded by another program");
    CDriveHealth other = Drive("SAMSUNG MZ7LM480HCHP-00005", {{177, 70, 10}});
    other.TakeFigure(Figure::WEAR, 5);
    EXPECT_EQ(Wear(other), "known 30: SMART attribute 177");
}

TEST(DriveWear, ValuesThatCannotBeAreUnknown) {
    EXPECT_EQ(Wear(Drive("SAMSUNG MZ7LM480HCHP-00005", {{177, 101, 10}})), "unknown: not reported");
    EXPECT_EQ(Wear(Drive("SAMSUNG MZ7LM480HCHP-00005", {{177, -1, 10}})), "unknown: not reported");
    CDriveHealth drive = SolidState();
    drive.TakeFigure(Figure::WEAR, 1001);
    EXPECT_EQ(Wear(drive), "unknown: decoded by another program says 1001 percent, which cannot be");
    drive.TakeFigure(Figure::WEAR, -1);
    EXPECT_EQ(Wear(drive), "unknown: decoded by another program says -1 percent, which cannot be");
}

TEST(DriveWear, ModelsAreComparedWithoutRegardToCaseAndBlanksAround) {
    EXPECT_EQ(Wear(Drive("  samsung mz7lm480hchp-00005 ", {{177, 90, 1000}})),
              "known 10: SMART attribute 177");
}

TEST(DriveWear, OfAHealthLogIsComparedWithThatOfTheEnduranceGroup) {
    for (const auto& [group, wear] : {std::pair{13, "known 3: NVMe log 02h"},
                                      std::pair{14,
                                                "doubtful 3: NVMe log 02h says 3 percent, NVMe log 09h "
                                                "says 14 percent"},
                                      std::pair{255, "known 3: NVMe log 02h"}}) {
        CDriveHealth drive(DriveProtocol::NVME, "");
        Page page(512);
        page[3] = 100;
        page[5] = static_cast<std::uint8_t>(group);
        Take(drive, NVME_ENDURANCE_GROUP_LOG, page);
        Take(drive, NVME_HEALTH_LOG, HealthLog());
        EXPECT_EQ(Wear(drive), wear);
    }
}

TEST(DriveWear, AnInvalidFigureOfTheGroupDoesNotConfirmThatOfTheHealthLog) {
    CDriveHealth drive(DriveProtocol::NVME, "");
    NVMeHealth health;
    health.m_Used = 255;
    Take(drive, NVME_HEALTH_LOG, HealthLog(health));
    Page page(512);
    page[3] = 100;
    page[5] = 255;
    Take(drive, NVME_ENDURANCE_GROUP_LOG, page);
    EXPECT_EQ(drive.GetFigure(Figure::WEAR).GetState(), FigureState::DOUBTFUL);
    page[5] = 90;
    Take(drive, NVME_ENDURANCE_GROUP_LOG, page);
    EXPECT_EQ(Wear(drive), "known 255: NVMe log 02h");
}

TEST(DriveWear, AMissingCurrentValueAddsUpToNothing) {
    EXPECT_EQ(Wear(Drive("ANY", {{202, -1, 101}})), "unknown: not reported");
}

TEST(DriveWear, OnlyADiskIsKnownNotToWear) {
    CDriveHealth drive = Drive("INTEL SSDSC2BB480G7", {{233, 74, 0}});
    for (const int medium : {0, 1, int{PropertyValue::SSD}}) {
        drive.SetMedium(medium);
        EXPECT_EQ(Wear(drive), "known 26: SMART attribute 233") << medium;
    }
    drive.SetMedium(PropertyValue::HDD);
    EXPECT_EQ(Wear(drive), "unknown: rotating disk");
}

/// What CSmartValues says of a page, in 0 to 100.
int Prescribed(const std::string& model, Page page) {
    CSmartValues values("", model);
    _IDE_SMART_DATA data;
    std::memcpy(&data, page.data(), sizeof(data));
    EXPECT_TRUE(values.Evaluate(data)) << model;
    return std::clamp(static_cast<int>(values.m_PercentUsed), 0, 100);
}

CHealthFigure WearOf(const std::string& model, const Page& page) {
    CDriveHealth drive(DriveProtocol::ATA, model);
    drive.SetMedium(PropertyValue::SSD);
    EXPECT_EQ(Take(drive, ATA_SMART_DATA, page), "");
    return drive.GetFigure(Figure::WEAR);
}

TEST(DriveWear, OfListedModelsIsThatOfCSmartValuesWhereItIsKnown) {
    const std::map<std::string, std::uint8_t> attributes = {
        {"INTEL", 233}, {"SAMSUNG", 177}, {"MICRON", 202}};
    // Every value for the first model of a vendor, of the others the edges.
    const std::set<int> edges = {0, 1, 2, 50, 98, 99, 100, 101, 254, 255};
    std::set<std::string> seen;
    for (std::size_t row = 0; row < SATASSDEndurance.size(); ++row) {
        const auto attribute = attributes.find(SATASSDEndurance[row].m_Vendor);
        if (attribute == attributes.end()) {
            continue;
        }
        const std::string name = SATASSDEndurance[row].m_Model;
        const bool isFirst = seen.insert(attribute->first).second;
        int known = 0;
        for (int current = 0; current <= 255; ++current) {
            if (!isFirst && edges.count(current) == 0) {
                continue;
            }
            for (const int raw : {0, std::max(100 - current, 0), current, 4546}) {
                const Page page = SmartData({{attribute->second, static_cast<std::uint8_t>(current),
                                              static_cast<std::uint64_t>(raw)}});
                for (const std::string& model : {name, attribute->first + " " + name}) {
                    const CHealthFigure wear = WearOf(model, page);
                    if (wear.GetState() != FigureState::KNOWN) {
                        continue;
                    }
                    if (current <= 100) {
                        EXPECT_EQ(wear.GetValue(), Prescribed(name, page)) << model << " " << raw;
                    } else {  // it has gone below 0: CSmartValues gives less than none
                        EXPECT_GT(wear.GetValue(), 100) << model << " " << raw;
                    }
                    ++known;
                }
            }
        }
        EXPECT_GE(known, 2 * (isFirst ? 98 : 5)) << name;
    }
}

TEST(DriveWear, OfModelsRatedInCyclesIsThatOfCSmartValues) {
    int models = 0;
    for (std::size_t row = 0; row < SATASSDEndurance.size(); ++row) {
        if (SATASSDEndurance[row].m_Vendor != "INNODISK") {
            continue;
        }
        const std::string model = SATASSDEndurance[row].m_Model;
        const std::uint8_t attribute = SATASSDEndurance[row].m_GroupFlag == 0 ? 173 : 167;
        for (const int cycles : {0, 1, 29, 30, 1500, 2999, 3000}) {
            const Page page =
                SmartData({{attribute, 100, static_cast<std::uint64_t>(cycles) | std::uint64_t{0x77} << 40}});
            for (const std::string& text : {model, "InnoDisk " + model}) {
                const CHealthFigure wear = WearOf(text, page);
                EXPECT_EQ(wear.GetState(), FigureState::KNOWN) << text;
                EXPECT_EQ(wear.GetValue(), Prescribed(model, page)) << text << " " << cycles;
            }
        }
        ++models;
    }
    EXPECT_GT(models, 0);
}

TEST(DriveWear, WhatAPageHoldsInAByteIsNoMoreThan255) {
    struct Page {
        _DRIVE_PROTOCOL m_Protocol;
        _FIGURE_SOURCE m_Source;
        std::uint32_t m_Number;
        const char* m_Name;
    };
    for (const Page& page :
         {Page{DriveProtocol::NVME, FigureSource::NVME_LOG, 0x02, "NVMe log 02h"},
          Page{DriveProtocol::SCSI, FigureSource::SCSI_LOG_PAGE, 0x11, "SCSI log page 11h"},
          Page{DriveProtocol::ATA, FigureSource::ATA_DEVICE_STATISTICS, 7, "device statistics page 7"}}) {
        CDriveHealth drive(page.m_Protocol, "NOBODY KNOWS IT");
        drive.SetMedium(PropertyValue::SSD);
        drive.TakeFigure(Figure::WEAR, 255, page.m_Source, page.m_Number);
        EXPECT_EQ(drive.GetFigure(Figure::WEAR).GetState(), FigureState::DOUBTFUL);
        drive.TakeFigure(Figure::WEAR, 256, page.m_Source, page.m_Number);
        EXPECT_EQ(Wear(drive), std::string("unknown: ") + page.m_Name + " says 256 percent, which cannot be");
        drive.TakeFigure(Figure::WEAR, 3);
        EXPECT_EQ(Wear(drive), "known 3: decoded by another program");
    }
}

}  // namespace
}  // namespace PI::Test
