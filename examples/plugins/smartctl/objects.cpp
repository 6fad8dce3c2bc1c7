// SPDX-License-Identifier: Apache-2.0
// What the library knows of a drive becomes properties; nothing is decided here.

#include "objects.h"

#include <pi/object_builder.h>
#include <pi/remaining_lifetime.h>
#include <velk/clock.h>

#include <algorithm>

#include "plugin_interface.h"

namespace smartctl {
namespace {

namespace ID = PI::PropertyID;
namespace Value = PI::PropertyValue;
namespace Type = PI::PropertyType;
namespace Figure = PI::HealthFigure;
using namespace PI::ObjectBuilder;

// Property, help topic, kind of data.
namespace AdapterRow {
constexpr auto NAME = Describe(ID::NAME, 23081, Type::STRING);
constexpr auto ADAPTER_NUMBER = Describe(ID::ADAPTER_NUMBER, 23003, Type::LONG);
constexpr auto PROTOCOL = Describe(ID::PROTOCOL, 23103, Type::CHOICE);
constexpr auto STATUS = Describe(ID::STATUS, 23127, Type::CHOICE);
}  // namespace AdapterRow

namespace DriveRow {
constexpr auto NAME = Describe(ID::NAME, 23298, Type::STRING);
constexpr auto OS_DEVICE = Describe(ID::OS_DEVICE, 23300, Type::STRING);
constexpr auto STATUS = Describe(ID::STATUS, 23324, Type::CHOICE);
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

constexpr int ICON_ADAPTER_OK = 24000;
constexpr int ICON_ADAPTER_WARNING = 24002;

// No slot on a bus: numbers of our own, far above those of buses and devices. The protocol is the second
// part.
constexpr int ADAPTER_PLACE = 0x73630000;

std::string Title(const PI::CDriveReport& report) {
    return report.GetVendor().empty() ? report.GetProduct() : report.GetVendor() + " " + report.GetProduct();
}

std::uint64_t DriveID(const Drive& drive, ObjectIDs& ids) {
    return ids.Get("drive " + drive.m_Source);
}

bool IsBad(const Drive& drive) {
    return drive.m_Report.GetHealth().GetState() >= PI::DriveState::REPLACE;
}

PI::_PROPERTY_VALUE Verdict(const PI::CHealthFigure& verdict) {
    return !verdict.HasValue() ? Value::UNKNOWN : verdict.GetValue() == 0 ? Value::NO : Value::YES;
}

PI::CObject MakeAdapter(const ProtocolRow& protocol, bool hasBadDrive, ObjectIDs& ids) {
    PI::CObject adapter(ids.Get(protocol.m_AdapterName), PI::ObjectType::ADAPTER_2);
    adapter.m_ObjectValue = static_cast<std::uint64_t>(hasBadDrive ? ICON_ADAPTER_WARNING : ICON_ADAPTER_OK);
    AddText(adapter, AdapterRow::NAME, protocol.m_AdapterName);
    const int index = static_cast<int>(&protocol - PROTOCOLS);
    AddAdapterNumber(adapter, AdapterRow::ADAPTER_NUMBER, ADAPTER_PLACE, index, 0, 0);
    AddState(adapter, AdapterRow::PROTOCOL, protocol.m_Value);
    AddState(adapter, AdapterRow::STATUS, hasBadDrive ? Value::WARNING : Value::OK);
    return adapter;
}

/// The figure's value where it is known, else 0.
std::uint64_t Known(const PI::CDriveHealth& health, PI::_HEALTH_FIGURE kind) {
    const PI::CHealthFigure figure = health.GetFigure(kind);
    return figure.GetState() == PI::FigureState::KNOWN ? static_cast<std::uint64_t>(figure.GetValue()) : 0;
}

void AddHealth(PI::CObject& object, const PI::CDriveHealth& health) {
    if (const std::uint64_t written = Known(health, Figure::BYTES_WRITTEN)) {
        AddCapacity(object, DriveRow::BYTES_WRITTEN, written);
    }
    for (const FigureRow& row : FIGURES) {
        const PI::CHealthFigure figure = health.GetFigure(row.m_Figure);
        if (figure.GetState() == PI::FigureState::KNOWN && figure.GetValue() >= 0) {
            AddNumber(object, row.m_Description, static_cast<std::uint64_t>(figure.GetValue()));
        }
    }
    if (health.GetFigure(Figure::WEAR).GetState() == PI::FigureState::KNOWN) {
        const PI::CRemainingLifetime lifetime(
            Known(health, Figure::POWER_ON_HOURS), Known(health, Figure::BYTES_WRITTEN),
            static_cast<std::uint32_t>(Known(health, Figure::WEAR)), Known(health, Figure::RATED_TERABYTES));
        if (lifetime.IsKnown()) {
            AddNumber(object, DriveRow::LIFETIME, lifetime.GetHours());
        }
    }
}

PI::CObject MakeDrive(const Drive& drive, std::uint64_t adapterID, ObjectIDs& ids) {
    const PI::CDriveReport& report = drive.m_Report;
    const PI::_PROPERTY_VALUE status = IsBad(drive) ? Value::AVAILABLE_SMART : Value::AVAILABLE;
    PI::CObject object(DriveID(drive, ids), PHYSICAL_DRIVE);
    object.m_RelatedIDs1 = {adapterID};
    object.m_ObjectValue = static_cast<std::uint64_t>(
        PI::CPluginHelper::GetPDStatusIcon(status, report.GetMedium(), false, false, Value::ACTIVATED));
    AddText(object, DriveRow::NAME, Title(report));
    AddText(object, DriveRow::OS_DEVICE, report.GetDevice());
    AddState(object, DriveRow::STATUS, status);
    AddState(object, DriveRow::SMART_FLAGGED, Verdict(report.GetHealth().GetFigure(Figure::VERDICT)));
    AddText(object, DriveRow::VENDOR, report.GetVendor());
    AddText(object, DriveRow::PRODUCT, report.GetProduct());
    AddText(object, DriveRow::SERIAL_NUMBER, report.GetCorrectedSerialNumber());
    AddText(object, DriveRow::FIRMWARE_VERSION, report.GetFirmware());
    if (report.GetMedium() != 0) {
        AddState(object, DriveRow::MEDIA_TYPE, static_cast<PI::_PROPERTY_VALUE>(report.GetMedium()));
    }
    if (report.GetCapacity() != 0) {
        AddCapacity(object, DriveRow::SIZE, report.GetCapacity());
    }
    if (report.GetBlockSize() != 0) {
        AddNumber(object, DriveRow::BLOCK_SIZE, report.GetBlockSize());
    }
    if (report.GetRPM() != 0) {
        AddNumber(object, DriveRow::RPM, report.GetRPM());
    }
    AddHealth(object, report.GetHealth());
    return object;
}

}  // namespace

void AppendObjects(const std::vector<Drive>& drives, ObjectIDs& ids, std::vector<PI::CObject>& objects) {
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
        }
    }
}

void EventLog::Update(const std::vector<Drive>& drives, ObjectIDs& ids) {
    for (const Drive& drive : drives) {
        const std::string& serial = drive.m_Report.GetCorrectedSerialNumber();
        const std::string name = Title(drive.m_Report) + " (" + drive.m_Report.GetDevice() +
                                 (serial.empty() ? "" : ", serial number " + serial) + ")";
        for (const PI::CHealthReason& reason : drive.m_Report.GetHealth().GetReasons()) {
            if (reason.GetState() < PI::DriveState::LOOK) {
                continue;
            }
            if (reason.GetFigure().GetFigure() == Figure::WEAR) {
                Add(DriveID(drive, ids), PI::EventID::PD_WEAR_LEVEL_COUNT_ABOVE_THRESHOLD, name,
                    reason.GetText());
            } else if (reason.GetState() >= PI::DriveState::REPLACE) {
                Add(DriveID(drive, ids), PI::EventID::SMART_WARNING, name, reason.GetText());
            }
        }
    }
}

void EventLog::Add(std::uint64_t handle, PI::_EVENT_ID id, const std::string& drive,
                   const std::string& detail) {
    if (!m_Told.emplace(handle, id).second) {
        return;
    }
    Trace("event " + PI::EventIDToString(id));
    PI::CEvent& event = m_Events.emplace_back();
    event.m_Handle = handle;
    event.m_EventID = static_cast<std::uint32_t>(id);
    event.m_Severity = PI::Severity::WARNING;
    event.m_TimeStamp = VELK::now();
    event.SetPlaceHolder1(drive);
    event.SetPlaceHolder2(detail);
    event.m_Source = "smartctl";
    event.m_SequenceNumber = ++m_SequenceNumber;
}

std::vector<PI::CEvent> EventLog::Take() {
    return std::exchange(m_Events, {});
}

}  // namespace smartctl
