// SPDX-License-Identifier: Apache-2.0
// Discovery of drives end to end: from what a drive reports to a managed object with its properties.

#include <malloc.h>
#include <pi/drive_health.h>
#include <pi/drives.h>
#include <pi/object.h>
#include <pi/plugin_helper.h>

#include <cstring>
#include <nlohmann/json.hpp>

#include "measure.h"

namespace {

using nlohmann::json;
namespace ID = PI::PropertyID;
namespace State = PI::PropertyValue;

/// What is known of a drive before the library is asked.
struct Drive {
    std::string m_ModelText;
    std::string m_SerialNumber;
    std::string m_Firmware;
    std::uint64_t m_CapacityBytes;
    std::uint64_t m_RotationRate;  ///< 0: solid state
    PI::_IDE_SMART_DATA m_Page;
};

struct Attribute {
    std::uint8_t m_ID;
    std::uint8_t m_Current;
    std::uint64_t m_Raw;
};

void SetPage(const std::vector<Attribute>& attributes, PI::_IDE_SMART_DATA& page) {
    page = {};
    std::size_t slot = 0;
    for (const Attribute& attribute : attributes) {
        PI::_IDE_SMART_ATTRIBUTE& target = page.m_Attributes[slot++];
        target.m_ID = attribute.m_ID;
        target.m_Current = attribute.m_Current;
        target.m_Worst = attribute.m_Current;
        for (unsigned byte = 0; byte < 6; ++byte) {
            target.m_Raw[byte] = static_cast<std::uint8_t>(attribute.m_Raw >> 8 * byte);
        }
    }
}

/// The drive of a number: in turn solid-state drives of three vendors and a disk, all figures of their own.
void Generate(unsigned long number, Drive& drive) {
    const auto hours = static_cast<std::uint64_t>(number % 40000);
    const auto wear = static_cast<std::uint8_t>(100 - number % 90);
    std::vector<Attribute> attributes = {
        {9, 100, hours}, {5, 100, 0}, {12, 100, number % 100}, {194, 60, 40}};
    drive.m_RotationRate = 0;
    drive.m_CapacityBytes = 480103981056;
    drive.m_Firmware = "N2010101";
    switch (number % 4) {
        case 0:
            drive.m_ModelText = "INTEL SSDSC2BB480G7";
            attributes.insert(attributes.end(), {{225, 100, hours * 90}, {232, 98, 0}, {233, wear, 0}});
            break;
        case 1:
            drive.m_ModelText = "Micron 5100 MTFDDAK480TCB";
            attributes.insert(attributes.end(), {{246, 100, hours * 9000000}, {202, wear, 0}});
            break;
        case 2:
            drive.m_ModelText = "SATADOM-ML 3ME3";
            attributes.insert(attributes.end(), {{241, 100, hours * 9}, {167, 100, number % 3000}});
            break;
        default:
            drive.m_ModelText = "WDC WD4000FYYZ-01UL1B2";
            drive.m_RotationRate = 7200;
            drive.m_CapacityBytes = 4000787030016;
            drive.m_Firmware = "01.01K03";
            break;
    }
    drive.m_SerialNumber = "WD-" + std::to_string(1000000000 + number);
    SetPage(attributes, drive.m_Page);
}

template <class... Values>
void AddProperty(PI::CObject& object, PI::_PROPERTY_ID id, const Values&... values) {
    object.m_Properties.emplace_back(id, true).SetValue(values...);
}

/// What a plug-in does with a drive that smartctl reported.
PI::CObject Discover(unsigned long number, Drive& drive) {
    PI::CObject object(number, PI::ObjectType::UNDEFINED);
    object.m_RelatedIDs1 = {1};
    object.m_Properties.reserve(15);

    std::string vendor;
    std::string model;
    PI::CPluginHelper::SplitSATAModelName(drive.m_ModelText, vendor, model);
    std::string serial = drive.m_SerialNumber;
    PI::CPluginHelper::CorrectSerialNumber(vendor, model, serial);
    AddProperty(object, ID::VENDOR, vendor);
    AddProperty(object, ID::PRODUCT, model);
    AddProperty(object, ID::SERIAL_NUMBER, serial);
    AddProperty(object, ID::FIRMWARE_VERSION, drive.m_Firmware);

    float size = 0;
    PI::_UNITS unit = PI::Units::BYTES;
    PI::CPluginHelper::ConvertBytesToOtherUnit(drive.m_CapacityBytes, size, unit);
    AddProperty(object, ID::PHYSICAL_SIZE, size);
    AddProperty(object, ID::STATUS, int{State::AVAILABLE}, std::vector<int>{State::AVAILABLE});
    AddProperty(object, ID::SMART_FLAGGED, false);
    const bool isDisk = drive.m_RotationRate != 0;
    const int medium = isDisk ? State::HDD : State::SSD;
    AddProperty(object, ID::MEDIA_TYPE, medium, std::vector<int>{State::HDD, State::SSD});
    if (isDisk) {
        unsigned long rpm = 0;
        PI::CPluginHelper::GetSATARPM(vendor, model, rpm);
        float thousands = 0;
        PI::CPluginHelper::RoundRPM(rpm, thousands);
        AddProperty(object, ID::RPM, rpm);
        AddProperty(object, ID::SPEED, thousands);
    }

    PI::CSmartValues smart(vendor, model);
    if (smart.Evaluate(drive.m_Page)) {
        unsigned long remaining = 0;
        PI::CPluginHelper::ComputeRemainingLifeTime(smart.m_PowerOnHours, smart.m_BytesWritten,
                                                    static_cast<unsigned>(smart.m_PercentUsed),
                                                    smart.m_Endurance, remaining);
        AddProperty(object, ID::POWERON_HOURS, smart.m_PowerOnHours);
        AddProperty(object, ID::BYTES_WRITTEN, smart.m_BytesWritten);
        AddProperty(object, ID::RATED_ENDURANCE_TB, smart.m_Endurance);
        AddProperty(object, ID::RATED_ENDURANCE_PERCENT, static_cast<unsigned long>(smart.m_PercentUsed));
        AddProperty(object, ID::ESTIMATED_LIFETIME, remaining);
    }
    object.m_ObjectValue = static_cast<std::uint64_t>(
        PI::CPluginHelper::GetPDStatusIcon(State::AVAILABLE, medium, false, false, State::ACTIVATED));
    return object;
}

/// A report on the drive as smartctl prints it, with what the discovery needs and little else.
std::string Report(const Drive& drive) {
    json table = json::array();
    for (const PI::_IDE_SMART_ATTRIBUTE& attribute : drive.m_Page.m_Attributes) {
        if (attribute.m_ID == 0) {
            continue;
        }
        std::uint64_t raw = 0;
        std::memcpy(&raw, attribute.m_Raw, sizeof(attribute.m_Raw));
        table.push_back({{"id", attribute.m_ID},
                         {"value", attribute.m_Current},
                         {"worst", attribute.m_Worst},
                         {"flags", {{"value", 50}, {"string", "-O--CK "}}},
                         {"raw", {{"value", raw}, {"string", std::to_string(raw)}}}});
    }
    const json report = {{"device", {{"name", "/dev/sda"}, {"type", "sat"}, {"protocol", "ATA"}}},
                         {"model_name", drive.m_ModelText},
                         {"serial_number", drive.m_SerialNumber},
                         {"firmware_version", drive.m_Firmware},
                         {"user_capacity", {{"bytes", drive.m_CapacityBytes}}},
                         {"rotation_rate", drive.m_RotationRate},
                         {"smart_status", {{"passed", true}}},
                         {"ata_smart_attributes", {{"revision", 16}, {"table", table}}}};
    return report.dump(2);
}

void AddDiscovery(unsigned long drives) {
    bench::Add("discovery_" + std::to_string(drives), "library", [=](benchmark::State& state) {
        Drive drive;
        bench::Measure(state, [&] {
            for (unsigned long number = 0; number < drives; ++number) {
                Generate(number, drive);
                benchmark::DoNotOptimize(Discover(number, drive));
            }
        });
    });
}

void AddParsing(unsigned long drives) {
    bench::Add("discovery_" + std::to_string(drives), "json", [=](benchmark::State& state) {
        std::vector<std::string> reports(drives);
        Drive drive;
        for (unsigned long number = 0; number < drives; ++number) {
            Generate(number, drive);
            reports[number] = Report(drive);
        }
        bench::Measure(state, [&] {
            for (const std::string& report : reports) {
                benchmark::DoNotOptimize(json::parse(report));
            }
        });
    });
}

/// A page with the checksum that drives put at its end.
void Seal(std::uint8_t* page) {
    constexpr std::size_t LAST = 511;
    std::uint8_t sum = 0;
    for (std::size_t i = 0; i < LAST; ++i) {
        sum = static_cast<std::uint8_t>(sum + page[i]);
    }
    page[LAST] = static_cast<std::uint8_t>(-sum);
}

/// From a drive's pages to what a plug-in reports of its health.
void AddHealth() {
    bench::Add("health", "library", [](benchmark::State& state) {
        constexpr unsigned long DRIVES = 100;
        std::vector<Drive> drives(DRIVES);
        for (unsigned long number = 0; number < DRIVES; ++number) {
            Generate(number, drives[number]);
            drives[number].m_Page.m_Revision[0] = 1;
            Seal(reinterpret_cast<std::uint8_t*>(&drives[number].m_Page));
        }
        std::uint8_t statistics[512] = {1, 0, 7, 0, 0, 0, 0, 0, 12, 0, 0, 0, 0, 0, 0, 0xC0};
        bench::Measure(state, [&] {
            for (const Drive& drive : drives) {
                PI::CDriveHealth health(PI::DriveProtocol::ATA, drive.m_ModelText);
                health.SetCapacity(drive.m_CapacityBytes);
                health.SetMedium(drive.m_RotationRate == 0 ? State::SSD : State::HDD);
                health.Take(PI::HealthPage::ATA_SMART_DATA, &drive.m_Page, sizeof(drive.m_Page));
                health.Take(PI::HealthPage::ATA_DEVICE_STATISTICS, statistics, sizeof(statistics));
                health.TakeVerdict(true);
                for (const auto figure :
                     {PI::HealthFigure::WEAR, PI::HealthFigure::SPARE, PI::HealthFigure::POWER_ON_HOURS,
                      PI::HealthFigure::BYTES_WRITTEN, PI::HealthFigure::RATED_TERABYTES,
                      PI::HealthFigure::TEMPERATURE, PI::HealthFigure::REALLOCATED_SECTORS}) {
                    benchmark::DoNotOptimize(health.GetFigure(figure));
                }
                benchmark::DoNotOptimize(health.GetState());
            }
        });
    });
}

/// Discovery of drives that are all kept, for the memory that each takes.
void AddKept() {
    bench::Add("discovery_kept", "library", [](benchmark::State& state) {
        constexpr unsigned long DRIVES = 10000;
        Drive drive;
        std::size_t used = 0;
        for (auto _ : state) {
            const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
            std::vector<PI::CObject> objects;
            objects.reserve(DRIVES);
            for (unsigned long number = 0; number < DRIVES; ++number) {
                Generate(number, drive);
                objects.push_back(Discover(number, drive));
            }
            used = mallinfo2().uordblks + mallinfo2().hblkhd - before;
        }
        state.counters["bytes_per_drive"] = static_cast<double>(used) / DRIVES;
        state.counters["bytes_per_property"] = sizeof(PI::CProperty);
    });
}

}  // namespace

void bench::RegisterBenchmarks() {
    for (const unsigned long drives : {100UL, 10000UL, 1000000UL}) {
        AddDiscovery(drives);
    }
    for (const unsigned long drives : {100UL, 10000UL}) {
        AddParsing(drives);
    }
    AddKept();
    AddHealth();
}
