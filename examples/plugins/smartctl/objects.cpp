// SPDX-License-Identifier: Apache-2.0
// What the library knows of a drive becomes properties; nothing is decided here.

#include "objects.h"

#include <pi/health_assessment.h>

#include <algorithm>

#include "common_objects.h"

namespace smartctl {
namespace {

namespace ID = PI::PropertyID;
namespace Value = PI::PropertyValue;
namespace Type = PI::PropertyType;
namespace Figure = PI::HealthFigure;
using namespace PI::ObjectBuilder;
using shared::AddKnown;

// Property, help topic, kind of data.
constexpr auto PROTOCOL = Describe(ID::PROTOCOL, 23103, Type::CHOICE);
constexpr auto TASK_NAME = Describe(ID::NAME, 1, Type::STRING);
constexpr auto TASK_PROGRESS = Describe(ID::VERIFY_PROGRESS, 1, Type::LONG);

namespace DriveRow {
constexpr auto SMART_FLAGGED = Describe(ID::SMART_FLAGGED, 23323, Type::CHOICE);
constexpr auto VENDOR = Describe(ID::VENDOR, 23331, Type::STRING);
constexpr auto PRODUCT = Describe(ID::PRODUCT, 23308, Type::STRING);
constexpr auto SERIAL_NUMBER = Describe(ID::SERIAL_NUMBER, 23320, Type::STRING);
constexpr auto FIRMWARE_VERSION = Describe(ID::FIRMWARE_VERSION, 23287, Type::STRING);
constexpr auto MEDIA_TYPE = Describe(ID::MEDIA_TYPE, 23296, Type::CHOICE);
constexpr auto SIZE = Describe(ID::PHYSICAL_SIZE, 23304, Type::FLOAT);
constexpr auto BLOCK_SIZE = Describe(ID::BLOCK_SIZE, 23278, Type::LONG);
constexpr auto BYTES_WRITTEN = Describe(ID::BYTES_WRITTEN, 23279, Type::FLOAT);
constexpr auto RPM = Describe(ID::RPM, 23316, Type::LONG);
constexpr auto LIFETIME = Describe(ID::ESTIMATED_LIFETIME, 23286, Type::LONG);
}  // namespace DriveRow

// Figures of a drive's health, each shown when it is known.
struct FigureRow {
    PI::_PROPERTY_DESCRIPTION m_Description;
    PI::_HEALTH_FIGURE m_Figure;
};
constexpr FigureRow FIGURES[] = {
    {Describe(ID::TEMPERATURE, 23326, Type::LONG), Figure::TEMPERATURE},
    {Describe(ID::POWERON_HOURS, 23307, Type::LONG), Figure::POWER_ON_HOURS},
    {Describe(ID::RATED_ENDURANCE_TB, 23310, Type::LONG), Figure::RATED_TERABYTES},
    {Describe(ID::RATED_ENDURANCE_PERCENT, 23309, Type::LONG), Figure::WEAR},
    {Describe(ID::REMAINING_RESERVE_SPACE, 23313, Type::LONG), Figure::SPARE},
};

// One adapter for each protocol, if it has drives.
struct ProtocolRow {
    PI::_DRIVE_PROTOCOL m_Protocol;
    PI::_PROPERTY_VALUE m_Value;
    const char* m_AdapterName;
};
constexpr ProtocolRow PROTOCOLS[] = {
    {PI::DriveProtocol::ATA, Value::SATA, "SATA drives"},
    {PI::DriveProtocol::SCSI, Value::SAS, "SAS drives"},
    {PI::DriveProtocol::NVME, Value::NVME, "NVMe drives"},
};

// No slot on a bus: numbers of our own, far above those of buses and devices. The protocol is the second
// part.
constexpr int ADAPTER_PLACE = 0x73630000;

std::string Title(const PI::CDriveReport& report) {
    return report.GetVendor().empty() ? report.GetProduct() : report.GetVendor() + " " + report.GetProduct();
}

bool IsBad(const Drive& drive) {
    return drive.m_Report.GetHealth().GetState() >= PI::DriveState::REPLACE;
}

PI::_PROPERTY_VALUE Verdict(const PI::CHealthFigure& verdict) {
    return !verdict.HasValue() ? Value::UNKNOWN : verdict.GetValue() == 0 ? Value::NO : Value::YES;
}

PI::CObject MakeAdapter(const ProtocolRow& protocol, bool hasBadDrive, shared::ObjectIDs& ids) {
    PI::CObject adapter = shared::MakeAdapter(ids.Get(protocol.m_AdapterName), protocol.m_AdapterName,
                                              ADAPTER_PLACE, static_cast<int>(&protocol - PROTOCOLS),
                                              hasBadDrive ? Value::WARNING : Value::OK);
    adapter.m_ObjectType = PI::ObjectType::ADAPTER_2;
    AddState(adapter, PROTOCOL, protocol.m_Value);
    return adapter;
}

void AddHealth(PI::CObject& object, const PI::CHealthAssessment& health) {
    const PI::CHealthFigure written = health.GetFigure(Figure::BYTES_WRITTEN);
    AddKnown(
        AddCapacity, object, DriveRow::BYTES_WRITTEN,
        written.GetState() == PI::FigureState::KNOWN ? static_cast<std::uint64_t>(written.GetValue()) : 0);
    for (const FigureRow& row : FIGURES) {
        const PI::CHealthFigure figure = health.GetFigure(row.m_Figure);
        if (figure.GetState() == PI::FigureState::KNOWN && figure.GetValue() >= 0) {
            AddNumber(object, row.m_Description, static_cast<std::uint64_t>(figure.GetValue()));
        }
    }
    if (const PI::CRemainingLifetime lifetime = health.GetLifetime();
        lifetime.IsKnown() && health.GetLifetimeReason().empty()) {
        AddNumber(object, DriveRow::LIFETIME, lifetime.GetHours());
    }
}

PI::CObject MakeDrive(const Drive& drive, std::uint64_t adapterID, shared::ObjectIDs& ids) {
    const PI::CDriveReport& report = drive.m_Report;
    const PI::CHealthAssessment health(report.GetHealth());
    const PI::_PROPERTY_VALUE status =
        health.GetState() >= PI::DriveState::REPLACE ? Value::AVAILABLE_SMART : Value::AVAILABLE;
    PI::CObject object = shared::MakeDrive(DriveID(drive, ids), adapterID, Title(report), report.GetDevice(),
                                           status, report.GetMedium());
    AddState(object, DriveRow::SMART_FLAGGED, Verdict(health.GetFigure(Figure::VERDICT)));
    AddText(object, DriveRow::VENDOR, report.GetVendor());
    AddText(object, DriveRow::PRODUCT, report.GetProduct());
    AddText(object, DriveRow::SERIAL_NUMBER, report.GetCorrectedSerialNumber());
    AddText(object, DriveRow::FIRMWARE_VERSION, report.GetFirmware());
    AddKnown(AddState, object, DriveRow::MEDIA_TYPE, static_cast<PI::_PROPERTY_VALUE>(report.GetMedium()));
    AddKnown(AddCapacity, object, DriveRow::SIZE, report.GetCapacity());
    AddKnown(AddNumber, object, DriveRow::BLOCK_SIZE, report.GetBlockSize());
    AddKnown(AddNumber, object, DriveRow::RPM, report.GetRPM());
    AddHealth(object, health);
    if (drive.m_Type.empty()) {  // read from a file
        return object;
    }
    if (report.IsSelfTesting()) {
        AddOperation(object, PI::OperationID::CANCEL_VERIFY, 23422);
    } else {
        AddOperation(object, PI::OperationID::START_VERIFY, 23517);
        object.m_Operations.back().m_Properties.emplace_back(ID::TYPE, false).SetValue("short");
    }
    return object;
}

/// A self-test that runs, whoever has started it.
PI::CObject MakeTask(const Drive& drive, std::uint64_t driveID, shared::ObjectIDs& ids) {
    PI::CObject task(ids.Get("self-test of " + drive.m_Source), PI::ObjectType::TASK);
    task.m_RelatedIDs1 = {driveID};
    AddText(task, TASK_NAME, "self-test");
    if (drive.m_Report.GetSelfTestProgress() >= 0) {
        AddNumber(task, TASK_PROGRESS, static_cast<unsigned long>(drive.m_Report.GetSelfTestProgress()));
    }
    return task;
}

}  // namespace

std::uint64_t DriveID(const Drive& drive, shared::ObjectIDs& ids) {
    return ids.Get("drive " + drive.m_Source);
}

void AppendObjects(const std::vector<Drive>& drives, shared::ObjectIDs& ids,
                   std::vector<PI::CObject>& objects) {
    for (const ProtocolRow& protocol : PROTOCOLS) {
        std::vector<const Drive*> group;
        for (const Drive& drive : drives) {
            if (drive.m_Report.GetProtocol() == protocol.m_Protocol) {
                group.push_back(&drive);
            }
        }
        if (group.empty()) {
            continue;
        }
        const bool hasBadDrive =
            std::any_of(group.begin(), group.end(), [](const Drive* drive) { return IsBad(*drive); });
        objects.push_back(MakeAdapter(protocol, hasBadDrive, ids));
        const std::uint64_t adapterID = objects.back().m_ObjectID;
        for (const Drive* const drive : group) {
            objects.push_back(MakeDrive(*drive, adapterID, ids));
            if (drive->m_Report.IsSelfTesting()) {
                objects.push_back(MakeTask(*drive, objects.back().m_ObjectID, ids));
            }
        }
    }
}

void EventLog::Update(const std::vector<Drive>& drives, shared::ObjectIDs& ids) {
    for (const Drive& drive : drives) {
        const std::string& serial = drive.m_Report.GetCorrectedSerialNumber();
        const std::string name = Title(drive.m_Report) + " (" + drive.m_Report.GetDevice() +
                                 (serial.empty() ? "" : ", serial number " + serial) + ")";
        for (const PI::CHealthReason& reason : drive.m_Report.GetHealth().GetReasons()) {
            if (reason.GetState() < PI::DriveState::LOOK) {
                continue;
            }
            if (reason.GetFigure().GetFigure() == Figure::WEAR) {
                AddOnce(DriveID(drive, ids), PI::EventID::PD_WEAR_LEVEL_COUNT_ABOVE_THRESHOLD, name,
                        reason.GetText());
            } else if (reason.GetState() >= PI::DriveState::REPLACE) {
                AddOnce(DriveID(drive, ids), PI::EventID::SMART_WARNING, name, reason.GetText());
            }
        }
    }
}

void EventLog::AddOnce(std::uint64_t handle, PI::_EVENT_ID id, const std::string& drive,
                       const std::string& detail) {
    if (m_Told.emplace(handle, drive, id).second) {
        Add(handle, id, PI::Severity::WARNING, drive, detail);
    }
}

}  // namespace smartctl
