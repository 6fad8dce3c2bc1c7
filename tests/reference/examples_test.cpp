// SPDX-License-Identifier: Apache-2.0
// The examples of the reference: what stands between two marks is shown there as it is, what follows proves
// it.

#include <gtest/gtest.h>
#include <pi/pi.h>
#include <velk/clock.h>
#include <velkx/language_support.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "support/language_file.h"

TEST(ReferenceExamples, Vocabulary) {
    //! [vocabulary]
    const int state = PI::PropertyValue::RAID5;                                   // 40014
    const std::string name = PI::PropertyValueToString(state);                    // "RAID5"
    const int number = PI::StringToPropertyValue("RAID" + std::to_string(6), 1);  // PropertyValue::RAID6
    //! [vocabulary]
    EXPECT_EQ(state, 40014);
    EXPECT_EQ(name, "RAID5");
    EXPECT_EQ(number, PI::PropertyValue::RAID6);
}

TEST(ReferenceExamples, Lists) {
    std::string constants;
    //! [lists]
    for (const PI::CVocabularyEntry entry : PI::Vocabulary::OperationIDs()) {
        if (std::string(entry.Name()).rfind("ALARM_", 0) == 0) {
            constants += std::string(entry.Constant()) + " " + std::to_string(entry.Number()) + "\n";
        }
    }
    //! [lists]
    EXPECT_EQ(constants, "ALARM_ON 50008\nALARM_OFF 50009\n");
}

TEST(ReferenceExamples, Properties) {
    //! [properties]
    PI::CProperty level(PI::PropertyID::RAID_LEVEL, false);
    level.SetValue(PI::PropertyValue::RAID5, {PI::PropertyValue::RAID0, PI::PropertyValue::RAID5});

    int value = 0;
    std::vector<int> choices;
    level.GetValue(value, choices);  // RAID5, of RAID0 and RAID5
    //! [properties]
    EXPECT_EQ(level.m_Type, PI::PropertyType::CHOICE);
    EXPECT_EQ(value, PI::PropertyValue::RAID5);
    EXPECT_EQ(choices, (std::vector<int>{PI::PropertyValue::RAID0, PI::PropertyValue::RAID5}));
}

TEST(ReferenceExamples, Objects) {
    //! [objects]
    PI::CObject adapter(1, PI::ObjectType::ADAPTER_1);
    adapter.m_Properties.emplace_back(PI::PropertyID::NAME, false).SetValue("Software RAID");

    PI::COperation rescan;
    rescan.m_Header1 = PI::OperationID::SCAN_CONFIGURATION;
    adapter.m_Operations.push_back(rescan);
    //! [objects]
    std::string name;
    adapter.m_Properties.at(0).GetValueString(name);
    EXPECT_EQ(name, "Software RAID");
    EXPECT_EQ(adapter.m_Operations.at(0).m_Header1, 50007U);
}

TEST(ReferenceExamples, Reading) {
    PI::CObject object;
    object.m_Properties.emplace_back(PI::PropertyID::POWERON_HOURS, false).SetValue(8760UL);
    std::string text;
    //! [reading]
    if (const PI::CProperty* hours = PI::CPluginHelper::FindProperty(object, PI::PropertyID::POWERON_HOURS)) {
        text = PI::CPluginHelper::StringifyProperty(*hours, "hours");  // "8760 hours"
    }
    //! [reading]
    EXPECT_EQ(text, "8760 hours");
}

TEST(ReferenceExamples, Layout) {
    //! [layout]
    VELK::XML::xml_document document;
    document.load_string(R"(<LogicalDriveConfiguration Size="512" Units="21022">
            <Containers>
                <Container><Drive ObjectID="7" StartAddress="0" UsedSize="512"/></Container>
            </Containers>
        </LogicalDriveConfiguration>)");
    const PI::CLogicalDrive drive(document);  // 512 gigabytes, on the drive with the identifier 7
    //! [layout]
    EXPECT_EQ(drive.m_Size, 512U);
    EXPECT_EQ(drive.m_Units, PI::Units::GIGABYTES);
    EXPECT_EQ(drive.m_Containers.at(0).m_Drives.at(0).m_ObjectID, 7U);
}

TEST(ReferenceExamples, Events) {
    //! [events]
    CLanguageSupport::SetString(PI::EventID::LOGICALDRIVE_DEGRADED, "Array %1 is degraded: %2");

    PI::CEvent event;
    event.m_EventID = PI::EventID::LOGICALDRIVE_DEGRADED;
    event.m_Severity = PI::Severity::WARNING;
    event.m_TimeStamp = VELK::now();
    event.SetPlaceHolder1("md1");
    event.SetPlaceHolder2("a drive is missing");

    std::string description;  // "Array md1 is degraded: a drive is missing"
    for (const auto& [key, value] : PI::CPluginHelper::StringifyEventMessage(event)) {
        if (key == "Description") {
            description = value;
        }
    }
    //! [events]
    EXPECT_EQ(description, "Array md1 is degraded: a drive is missing");
    CLanguageSupport::Clear();
}

TEST(ReferenceExamples, Languages) {
    const PI::Test::LanguageFile englishFile(
        "<Strings><String id='10055'>Rebuild on %1 started</String></Strings>");
    const PI::Test::LanguageFile germanFile("<Strings/>");
    const std::string english = englishFile.m_Path;
    const std::string german = germanFile.m_Path;
    PI::CEvent event;
    event.m_EventID = PI::EventID::REBUILD_STARTED;
    event.SetPlaceHolder1("md1");
    //! [languages]
    const PI::CTextTable texts =
        PI::CTextTable::LoadFile(german).WithFallback(PI::CTextTable::LoadFile(english));
    const auto rendered =
        PI::CPluginHelper::StringifyEventMessageWith(event, texts, PI::WithoutText::NAME_AND_PLACEHOLDERS);
    //! [languages]
    EXPECT_EQ(rendered.at(7).second, "Rebuild on md1 started");
}

TEST(ReferenceExamples, RemainingTime) {
    const unsigned long start = PI::CETR::NowSteady();
    const unsigned long array = 3;
    //! [remaining time]
    std::vector<PI::CETR> activities;
    long index = 0;
    for (int percent = 0; percent <= 2; ++percent) {  // one percent a minute
        const auto timeStamp = start + static_cast<unsigned long>(percent) * 60'000;
        index = PI::CETR::Add(activities, array, percent, false, timeStamp);
    }
    std::string remaining;
    activities[static_cast<std::size_t>(index)].GetETR(remaining);  // "01:38:00"
    //! [remaining time]
    EXPECT_EQ(remaining, "01:38:00");
}

TEST(ReferenceExamples, TimeRemainingWithItsRange) {
    //! [time remaining with its range]
    PI::CTimeRemaining rebuild;
    const std::uint64_t total = 7'814'037'168;  // sectors
    for (std::uint64_t minute = 0; minute <= 60; ++minute) {
        rebuild.AddSample(minute * 60'000, minute * 10'000'000, total);
    }
    const bool isRunning = rebuild.GetState() == PI::TimeRemainingState::RUNNING;
    const auto milliseconds = rebuild.GetRemaining();  // 12 hours, four times out of five
    const auto low = rebuild.GetLow();                 // no less than this
    const auto high = rebuild.GetHigh();               // and no more than this
    const std::string stored = rebuild.ToText();       // for CTimeRemaining::FromText after a restart
    //! [time remaining with its range]
    EXPECT_TRUE(isRunning);
    EXPECT_NEAR(static_cast<double>(*milliseconds) / 3'600'000, 12.02, 0.2);
    EXPECT_TRUE(*low < *milliseconds && *milliseconds < *high);
    EXPECT_TRUE(PI::CTimeRemaining::FromText(stored).has_value());
}

TEST(ReferenceExamples, Drives) {
    //! [drives]
    const PI::_SSD_ENDURANCE* row = PI::CPluginHelper::findLifeTimeProp("SSDSC2BB480G7");
    const unsigned long enduranceTB = row == nullptr ? 0 : row->m_EnduranceTB;  // 945

    unsigned long hours = 0;  // 10,000 hours have written 100 terabytes of 945
    const bool isKnown =
        PI::CPluginHelper::ComputeRemainingLifeTime(10'000, 100'000'000'000'000, 0, enduranceTB, hours);
    //! [drives]
    EXPECT_EQ(enduranceTB, 945U);
    EXPECT_TRUE(isKnown);
    EXPECT_GT(hours, 0U);
    EXPECT_LE(hours, 43829U);
}

TEST(ReferenceExamples, Health) {
    std::vector<unsigned char> page(
        512);  // 35 degrees Celsius, 95 percent of the spare left, 92 percent used
    page[1] = 0x34;
    page[2] = 0x01;
    page[3] = 95;
    page[4] = 10;
    page[5] = 92;
    //! [health]
    PI::CDriveHealth drive(PI::DriveProtocol::NVME, "SAMSUNG MZQL2960HCJR-00A07");
    const char* refused =
        drive.Take(PI::HealthPage::NVME_HEALTH_LOG, page.data(), page.size());  // null: taken

    const PI::CHealthFigure wear = drive.GetFigure(PI::HealthFigure::WEAR);
    const bool isKnown = wear.GetState() == PI::FigureState::KNOWN;
    const std::string source = wear.GetText();                          // "NVMe log 02h"
    const std::string reason = drive.GetReasons().front().GetText();    // "92 percent worn"
    const bool isUrgent = drive.GetState() >= PI::DriveState::REPLACE;  // it is to be looked at
    //! [health]
    EXPECT_EQ(refused, nullptr);
    EXPECT_TRUE(isKnown);
    EXPECT_EQ(wear.GetValue(), 92);
    EXPECT_EQ(source, "NVMe log 02h");
    EXPECT_EQ(reason, "92 percent worn");
    EXPECT_FALSE(isUrgent);
}

TEST(ReferenceExamples, WearForecast) {
    //! [wear forecast]
    PI::CWearReading lastYear;
    lastYear.SetPowerOnHours(8'500);
    lastYear.SetWear(7);
    PI::CWearReading now;
    now.SetPowerOnHours(9'500);
    now.SetWear(9);

    const PI::CWearForecast forecast({lastYear, now});
    const auto hours = forecast.GetHours();  // 54,600 hours until 100 percent, four times out of five
    const auto low = forecast.GetLow();      // 34,398 or more
    const auto high = forecast.GetHigh();    // and 120,120 or less
    //! [wear forecast]
    EXPECT_EQ(hours, std::uint64_t{54'600});
    EXPECT_EQ(low, std::uint64_t{34'398});
    EXPECT_EQ(high, std::uint64_t{120'120});
}

TEST(ReferenceExamples, Helper) {
    //! [helper]
    std::string vendor, model;
    PI::CPluginHelper::SplitSATAModelName("INTEL SSDSC2BB480G7", vendor, model);  // "INTEL", "SSDSC2BB480G7"

    float value = 0;
    PI::_UNITS unit = PI::Units::BYTES;
    PI::CPluginHelper::ConvertBytesToOtherUnit(4'000'787'030'016, value, unit);  // 3.64 terabytes

    std::string text;
    PI::CPluginHelper::TranslateSenseASC(0x04, 0x01, text);  // "logical unit is in process of becoming ready"
    //! [helper]
    EXPECT_EQ(vendor, "INTEL");
    EXPECT_EQ(model, "SSDSC2BB480G7");
    EXPECT_NEAR(value, 3.64, 0.005);
    EXPECT_EQ(unit, PI::Units::TERABYTES);
    EXPECT_EQ(text, "logical unit is in process of becoming ready");
}

TEST(ReferenceExamples, Trace) {
    const int number = 7;
    //! [trace]
    VELKTrace(494, "MyPlugin", 275, "drive %d: %s") << number << "not ready";
    //! [trace]
    EXPECT_FALSE(VELKTrace::tracesEnabled);
}

TEST(ReferenceExamples, Adapters) {
    //! [adapters]
    const std::string serialNumber = "SV71401234";
    const auto hash = static_cast<unsigned int>(std::hash<std::string>{}(serialNumber));
    PI::CGlobalAdapterID adapter;
    adapter.SetAdapterUniqueID(static_cast<int>(hash | 0x80000000));  // apart from what addresses make
    const unsigned int number = adapter.GetGlobalAdapterNumber();     // 0 for the first adapter of the host
    //! [adapters]
    EXPECT_EQ(number, 0U);
}
