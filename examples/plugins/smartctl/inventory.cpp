// SPDX-License-Identifier: Apache-2.0

#include "inventory.h"

#include <pi/object_builder.h>

#include <algorithm>
#include <optional>

#include "plugin_interface.h"

namespace smartctl {
namespace {

namespace ID = PI::PropertyID;
namespace Value = PI::PropertyValue;
namespace Type = PI::PropertyType;
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
constexpr auto SMART_FLAGGED = Describe(ID::SMART_FLAGGED, 23323, Type::BOOL);
constexpr auto SIZE = Describe(ID::PHYSICAL_SIZE, 23304, Type::FLOAT);
constexpr auto MEDIA_TYPE = Describe(ID::MEDIA_TYPE, 23296, Type::CHOICE);
}  // namespace DriveRow

// The texts of a drive, in the order in which they are shown.
struct TextRow {
    PI::_PROPERTY_DESCRIPTION m_Description;
    std::string Drive::*m_Text;
};
constexpr TextRow TEXTS[] = {
    {Describe(ID::VENDOR, 23331, Type::STRING), &Drive::m_Vendor},
    {Describe(ID::PRODUCT, 23308, Type::STRING), &Drive::m_Model},
    {Describe(ID::SERIAL_NUMBER, 23320, Type::STRING), &Drive::m_SerialNumber},
    {Describe(ID::FIRMWARE_VERSION, 23287, Type::STRING), &Drive::m_Firmware},
};

// Its figures, each shown when it is known. The lifetime is in hours.
struct NumberRow {
    PI::_PROPERTY_DESCRIPTION m_Description;
    std::optional<std::uint64_t> Drive::*m_Number;
};
constexpr NumberRow NUMBERS[] = {
    {Describe(ID::RPM, 23316, Type::LONG), &Drive::m_RPM},
    {Describe(ID::TEMPERATURE, 23326, Type::LONG), &Drive::m_TemperatureC},
    {Describe(ID::POWERON_HOURS, 23307, Type::LONG), &Drive::m_PowerOnHours},
    {Describe(ID::RATED_ENDURANCE_TB, 23310, Type::LONG), &Drive::m_EnduranceTB},
    {Describe(ID::RATED_ENDURANCE_PERCENT, 23309, Type::LONG), &Drive::m_PercentUsed},
    {Describe(ID::REMAINING_RESERVE_SPACE, 23313, Type::LONG), &Drive::m_SparePercent},
    {Describe(ID::ESTIMATED_LIFETIME, 23286, Type::LONG), &Drive::m_RemainingHours},
};
constexpr auto BYTES_WRITTEN = Describe(ID::BYTES_WRITTEN, 23279, Type::FLOAT);

// One adapter for each protocol, if it has drives.
struct ProtocolRow {
    PI::_PROPERTY_VALUE m_Protocol;
    const char* m_AdapterName;
};
constexpr ProtocolRow PROTOCOLS[] = {
    {Value::SATA, "SATA drives"},
    {Value::SAS, "SAS drives"},
    {Value::NVME, "NVMe drives"},
};

constexpr int ICON_ADAPTER_OK = 24000;
constexpr int ICON_ADAPTER_WARNING = 24002;

// No slot on a bus: numbers of our own, far above those of buses and devices. The protocol is the second
// part.
constexpr int ADAPTER_PLACE = 0x73630000;

PI::_PROPERTY_VALUE Status(const Drive& drive) {
    return drive.m_PredictsFailure ? Value::AVAILABLE_SMART : Value::AVAILABLE;
}

PI::CObject MakeAdapter(const ProtocolRow& protocol, bool anyPredictsFailure, ObjectIDs& ids) {
    PI::CObject adapter(ids.Get(protocol.m_AdapterName), PI::ObjectType::ADAPTER_2);
    adapter.m_ObjectValue =
        static_cast<std::uint64_t>(anyPredictsFailure ? ICON_ADAPTER_WARNING : ICON_ADAPTER_OK);
    AddText(adapter, AdapterRow::NAME, protocol.m_AdapterName);
    const int index = static_cast<int>(&protocol - PROTOCOLS);
    AddAdapterNumber(adapter, AdapterRow::ADAPTER_NUMBER, ADAPTER_PLACE, index, 0, 0);
    AddState(adapter, AdapterRow::PROTOCOL, protocol.m_Protocol);
    AddState(adapter, AdapterRow::STATUS, anyPredictsFailure ? Value::WARNING : Value::OK);
    return adapter;
}

PI::CObject MakeDrive(const Drive& drive, std::uint64_t adapterID, ObjectIDs& ids) {
    PI::CObject object(DriveID(drive, ids), PHYSICAL_DRIVE);
    object.m_RelatedIDs1 = {adapterID};
    object.m_ObjectValue = static_cast<std::uint64_t>(
        PI::CPluginHelper::GetPDStatusIcon(Status(drive), drive.m_Medium, false, false, Value::ACTIVATED));
    AddText(object, DriveRow::NAME, Title(drive));
    AddText(object, DriveRow::OS_DEVICE, drive.m_Device);
    AddState(object, DriveRow::STATUS, Status(drive));
    AddProperty(object, DriveRow::SMART_FLAGGED).SetValue(drive.m_PredictsFailure);
    for (const TextRow& row : TEXTS) {
        AddText(object, row.m_Description, drive.*row.m_Text);
    }
    AddState(object, DriveRow::MEDIA_TYPE, drive.m_Medium);
    if (drive.m_SizeBytes.has_value()) {
        AddCapacity(object, DriveRow::SIZE, *drive.m_SizeBytes);
    }
    if (drive.m_BytesWritten.has_value()) {
        AddCapacity(object, BYTES_WRITTEN, *drive.m_BytesWritten);
    }
    for (const NumberRow& row : NUMBERS) {
        if (const auto& number = drive.*row.m_Number) {
            AddNumber(object, row.m_Description, *number);
        }
    }
    return object;
}

}  // namespace

std::string Title(const Drive& drive) {
    return drive.m_Vendor == "--" ? drive.m_Model : drive.m_Vendor + " " + drive.m_Model;
}

std::uint64_t DriveID(const Drive& drive, ObjectIDs& ids) {
    return ids.Get("drive " + drive.m_Source);
}

void AppendObjects(const std::vector<Drive>& drives, ObjectIDs& ids, std::vector<PI::CObject>& objects) {
    for (const ProtocolRow& protocol : PROTOCOLS) {
        std::vector<const Drive*> group;
        for (const Drive& drive : drives) {
            if (drive.m_Protocol == protocol.m_Protocol) {
                group.push_back(&drive);
            }
        }
        if (group.empty()) {
            continue;
        }
        const bool anyPredictsFailure = std::any_of(
            group.begin(), group.end(), [](const Drive* drive) { return drive->m_PredictsFailure; });
        objects.push_back(MakeAdapter(protocol, anyPredictsFailure, ids));
        const std::uint64_t adapterID = objects.back().m_ObjectID;
        for (const Drive* const drive : group) {
            objects.push_back(MakeDrive(*drive, adapterID, ids));
        }
    }
}

}  // namespace smartctl
