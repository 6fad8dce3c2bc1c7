// SPDX-License-Identifier: Apache-2.0
// What the library knows of a drive becomes properties; nothing is decided here.

#include "objects.h"

#include <pi/exchange/drive_properties.h>

#include <algorithm>

#include "common_objects.h"

namespace smartctl {
namespace {

namespace ID = PI::PropertyID;
namespace Value = PI::PropertyValue;
namespace Type = PI::PropertyType;
namespace Figure = PI::HealthFigure;
using namespace PI::ObjectBuilder;

// Property, help topic, kind of data.
constexpr auto PROTOCOL = Describe(ID::PROTOCOL, 23103, Type::CHOICE);
constexpr auto TASK_NAME = Describe(ID::NAME, 1, Type::STRING);
constexpr auto TASK_PROGRESS = Describe(ID::VERIFY_PROGRESS, 1, Type::LONG);

constexpr auto SMART_FLAGGED = Describe(ID::SMART_FLAGGED, 23323, Type::CHOICE);

// Properties of drives, each shown if it is known.
struct DriveRow {
    PI::_PROPERTY_DESCRIPTION m_Description;
    PI::_PROPERTY_ID m_Source = m_Description.m_ID;
};
constexpr DriveRow DRIVE_ROWS[] = {
    {Describe(ID::VENDOR, 23331, Type::STRING)},
    {Describe(ID::PRODUCT, 23308, Type::STRING)},
    {Describe(ID::SERIAL_NUMBER, 23320, Type::STRING)},
    {Describe(ID::FIRMWARE_VERSION, 23287, Type::STRING)},
    {Describe(ID::MEDIA_TYPE, 23296, Type::CHOICE)},
    {Describe(ID::PHYSICAL_SIZE, 23304, Type::FLOAT)},
    {Describe(ID::BLOCK_SIZE, 23278, Type::LONG)},
    {Describe(ID::RPM, 23316, Type::LONG)},
    {Describe(ID::BYTES_WRITTEN, 23279, Type::FLOAT)},
    {Describe(ID::TEMPERATURE, 23326, Type::LONG)},
    {Describe(ID::POWERON_HOURS, 23307, Type::LONG)},
    {Describe(ID::RATED_ENDURANCE_TB, 23310, Type::LONG)},
    {Describe(ID::RATED_ENDURANCE_PERCENT, 23309, Type::LONG)},
    {Describe(ID::REMAINING_RESERVE_SPACE, 23313, Type::LONG)},
    {Describe(ID::ESTIMATED_LIFETIME, 23286, Type::LONG), ID::REMAINING_HOURS},
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

void AddProperties(PI::CObject& object, const std::vector<PI::CDriveProperty>& properties) {
    for (const DriveRow& row : DRIVE_ROWS) {
        const auto property = std::find_if(properties.begin(), properties.end(),
                                           [&row](const auto& each) { return each.GetID() == row.m_Source; });
        const std::int64_t number = property->GetNumber().value_or(0);
        if (property->GetState() != PI::FigureState::KNOWN || number < 0) {
            continue;
        }
        switch (row.m_Description.m_Type) {
            case Type::CHOICE: AddState(object, row.m_Description, property->GetChoice()); break;
            case Type::STRING: AddText(object, row.m_Description, property->GetText()); break;
            case Type::FLOAT:
                AddCapacity(object, row.m_Description, static_cast<std::uint64_t>(number));
                break;
            default: AddNumber(object, row.m_Description, static_cast<std::uint64_t>(number));
        }
    }
}

PI::CObject MakeDrive(const Drive& drive, std::uint64_t adapterID, shared::ObjectIDs& ids) {
    const PI::CDriveReport& report = drive.m_Report;
    const PI::CHealthAssessment health(report.GetHealth());
    const PI::_PROPERTY_VALUE status =
        health.GetState() >= PI::DriveState::REPLACE ? Value::AVAILABLE_SMART : Value::AVAILABLE;
    PI::CObject object = shared::MakeDrive(DriveID(drive, ids), adapterID, Title(report), report.GetDevice(),
                                           status, report.GetMedium());
    AddState(object, SMART_FLAGGED, Verdict(health.GetFigure(Figure::VERDICT)));
    AddProperties(object, PI::DescribeDrive(report, health));
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
