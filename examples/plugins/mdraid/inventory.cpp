// SPDX-License-Identifier: Apache-2.0

#include "inventory.h"

#include <pi/etr.h>

#include <algorithm>
#include <charconv>
#include <map>
#include <set>

#include "common_objects.h"
#include "program.h"

namespace mdraid {
namespace {

namespace Type = PI::PropertyType;
using namespace PI::ObjectBuilder;
using shared::AddKnown;

// Property, help topic, kind of data; in the order in which they are shown.
namespace AdapterRow {
constexpr auto LOGICAL_DRIVES = Describe(ID::CUR_LOGICAL_DRIVES, 1, Type::LONG);
}  // namespace AdapterRow

namespace ArrayRow {
constexpr auto NAME = Describe(ID::NAME, 23239, Type::STRING);
constexpr auto OS_DEVICE = Describe(ID::OS_DEVICE, 23241, Type::STRING);
constexpr auto NUMBER = Describe(ID::LOGICAL_DRIVE_NUMBER, 23240, Type::LONG);
constexpr auto USAGE = Describe(ID::USAGE, 1, Type::STRING);
constexpr auto RAID_LEVEL = Describe(ID::RAID_LEVEL_2, 23243, Type::CHOICE);
constexpr auto STATUS = Describe(ID::STATUS, 23249, Type::CHOICE);
constexpr auto SIZE = Describe(ID::LOGICAL_SIZE, 23237, Type::FLOAT);
constexpr auto STRIPE_SIZE = Describe(ID::STRIPESIZE, 23250, Type::FLOAT);
constexpr auto ACCESS_MODE = Describe(ID::ACCESS_MODE, 23221, Type::CHOICE);
constexpr auto MISSING_DRIVES = Describe(ID::MISSING_DRIVES, 23238, Type::LONG);
constexpr auto ACTIVITY = Describe(ID::ACTIVITY, 23222, Type::CHOICE);
constexpr auto REMAINING_TIME = Describe(ID::REMAINING_TIME, 23245, Type::STRING);
}  // namespace ArrayRow

namespace DriveRow {
constexpr auto USAGE = Describe(ID::USAGE, 23330, Type::STRING);
constexpr auto SIZE = Describe(ID::CONFIGURABLE_SIZE, 23281, Type::FLOAT);
constexpr auto MEDIA_TYPE = Describe(ID::MEDIA_TYPE, 23296, Type::CHOICE);
constexpr auto PROTOCOL = Describe(ID::PROTOCOL, 1, Type::CHOICE);
constexpr auto ERRORS = Describe(ID::MEDIA_ERROR_COUNT, 23295, Type::LONG);
}  // namespace DriveRow

// Activities, and the properties that their progress goes to.
constexpr std::pair<_PROPERTY_VALUE, PI::_PROPERTY_ID> PROGRESS[] = {
    {Value::VERIFYINGFIXING, ID::VERIFYFIX_PROGRESS},
    {Value::REBUILDING, ID::REBUILD_PROGRESS},
    {Value::MIGRATING, ID::MIGRATION_PROGRESS},
    {Value::CHECKING, ID::CHECK_PROGRESS},
};

// The operations for an activity. There are none for activities that the kernel restarts when they are
// stopped, and for reshapes, which mdadm may monitor until their end.
struct OperationRow {
    _PROPERTY_VALUE m_Activity;
    PI::_OPERATION_ID m_Operation;
    int m_HelpTopic;
};
constexpr OperationRow OPERATIONS[] = {
    {Value::IDLE, Operation::START_CHECK, 23508},
    {Value::CHECKING, Operation::PAUSE_CHECK, 23488},
    {Value::CHECKING, Operation::CANCEL_CHECK, 23415},
    {Value::CHECK_PAUSED, Operation::CONTINUE_CHECK, 23430},
    {Value::CHECK_PAUSED, Operation::CANCEL_CHECK, 23415},
    {Value::REBUILDING, Operation::PAUSE_REBUILD, 23494},
    {Value::REBUILD_PAUSED, Operation::CONTINUE_REBUILD, 23436},
};

constexpr int ICON_ARRAY_FAIL = 24050;
constexpr int ICON_ARRAY_OK = 24054;
constexpr int ICON_ARRAY_REBUILDING = 24062;
constexpr int ICON_ARRAY_WARNING = 24063;

// No slot on a bus: numbers of our own, far above those of buses and devices.
constexpr int ADAPTER_PLACE = 0x6D640000;

constexpr const char* MACHINE_ITSELF = "/";

constexpr const char* ADAPTER = "adapter";

/// The number at the end of "md127".
std::optional<unsigned long> ArrayNumber(const std::string& name) {
    unsigned long number = 0;
    const char* const end = name.data() + name.size();
    if (name.compare(0, 2, "md") != 0) {
        return std::nullopt;
    }
    const auto [rest, error] = std::from_chars(name.data() + 2, end, number);
    return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

int ArrayIcon(const Assessment& assessment) {
    switch (assessment.m_Status) {
        case Value::OPERATIONAL: return ICON_ARRAY_OK;
        case Value::FAILED:
        case Value::OFFLINE: return ICON_ARRAY_FAIL;
        default:
            return assessment.m_Activity == Value::REBUILDING ? ICON_ARRAY_REBUILDING : ICON_ARRAY_WARNING;
    }
}

/// The worst of all arrays; what is not known may be worse than it looks.
_PROPERTY_VALUE AdapterStatus(const Inventory& inventory) {
    constexpr _PROPERTY_VALUE FROM_GOOD_TO_BAD[] = {Value::OK, Value::UNKNOWN, Value::WARNING, Value::ERROR};
    int worst = inventory.m_IsComplete ? 0 : 1;
    for (const ArrayReport& report : inventory.m_Arrays) {
        const _PROPERTY_VALUE status = report.m_Assessment.m_Status;
        worst = std::max(worst, ArrayIcon(report.m_Assessment) == ICON_ARRAY_FAIL ? 3
                                : status == Value::UNKNOWN                        ? 1
                                : status == Value::OPERATIONAL                    ? 0
                                                                                  : 2);
    }
    return FROM_GOOD_TO_BAD[worst];
}

PI::CObject MakeAdapter(const Inventory& inventory, std::uint64_t id) {
    PI::CObject adapter =
        shared::MakeAdapter(id, "Linux software RAID", ADAPTER_PLACE, 0, AdapterStatus(inventory));
    const std::vector<ArrayReport>& reports = inventory.m_Arrays;
    if (inventory.m_IsComplete || !reports.empty()) {
        const auto arrays = std::count_if(reports.begin(), reports.end(), [](const ArrayReport& report) {
            return !report.m_Assessment.m_IsContainer;
        });
        AddNumber(adapter, AdapterRow::LOGICAL_DRIVES, static_cast<unsigned long>(arrays));
    }
    if (!inventory.m_FreeDrives.empty()) {
        AddOperation(adapter, Operation::CREATE_LOGICAL_DRIVE, 23439);
        std::vector<PI::CProperty>& parameters = adapter.m_Operations.back().m_Properties;
        parameters.emplace_back(ID::CONFIGURATION, false).SetValue(VELK::XML::xml_document());
        parameters.emplace_back(ID::RAID_LEVEL_2, false).SetValue(Value::RAID1, Levels());
        parameters.emplace_back(ID::NAME, false).SetValue("");
    }
    return adapter;
}

void AddActivity(PI::CObject& object, const ArrayReport& report) {
    AddState(object, ArrayRow::ACTIVITY, report.m_Assessment.m_Activity);
    const Sync sync = report.m_Array.m_Sync.value_or(Sync());
    for (const auto& [activity, progress] : PROGRESS) {
        if (activity == report.m_Assessment.m_Activity && sync.m_State == SyncState::RUNNING &&
            sync.m_PerMille.has_value()) {
            AddFraction(object, Describe(progress, 1, Type::FLOAT),
                        static_cast<float>(*sync.m_PerMille) / 10.0F);
        }
    }
    AddKnown(AddText, object, ArrayRow::REMAINING_TIME,
             PI::CETR::RemainingTimeToString(report.m_RemainingMs.value_or(0)));
}

/// Whether the array is in use and can be changed.
bool IsChangeable(const ArrayReport& report) {
    const _PROPERTY_VALUE status = report.m_Assessment.m_Status;
    return status != Value::OFFLINE && status != Value::FAILED && status != Value::UNKNOWN &&
           report.m_Assessment.m_Level != Value::UNKNOWN && report.m_Sysfs.m_State != "readonly" &&
           (!report.m_Array.m_ReadOnly || report.m_Array.m_AutoReadOnly) &&
           !DeviceFile(report.m_Array.m_Name).empty();
}

void AddArrayOperations(PI::CObject& object, const ArrayReport& report) {
    const Assessment& assessment = report.m_Assessment;
    if (!assessment.m_IsRedundant || !IsChangeable(report)) {
        return;
    }
    const bool isIdle = assessment.m_Activity == Value::IDLE;
    const bool isWhole = assessment.m_MissingDrives == 0;
    if (!IsExternal(report.m_Array) && (isWhole || isIdle)) {
        AddOperation(object, isWhole ? Operation::CREATE_DEDICATED_HOTSPARE : Operation::REPLACE_MISSING,
                     isWhole ? 23437 : 23498);
        object.m_Operations.back().m_Properties.emplace_back(ID::OS_DEVICE, false).SetValue("");
    }
    const std::optional<Sync>& sync = report.m_Array.m_Sync;
    for (const OperationRow& row : OPERATIONS) {
        if (row.m_Activity == assessment.m_Activity && (isWhole || !isIdle) &&
            (!sync.has_value() || sync->m_State == SyncState::RUNNING)) {
            AddOperation(object, row.m_Operation, row.m_HelpTopic);
        }
    }
}

/// 0 when it is not known.
std::uint64_t ToBytes(std::optional<std::uint64_t> sizeKiB) {
    return sizeKiB.value_or(0) <= UINT64_MAX / 1024 ? sizeKiB.value_or(0) * 1024 : 0;
}

PI::CObject MakeArray(const ArrayReport& report, std::uint64_t adapterID) {
    const Array& array = report.m_Array;
    const Assessment& assessment = report.m_Assessment;
    PI::CObject object(report.m_ObjectID, LOGICAL_DRIVE);
    object.m_RelatedIDs1 = {adapterID};
    object.m_ObjectValue = static_cast<std::uint64_t>(ArrayIcon(assessment));
    AddText(object, ArrayRow::NAME, report.m_GivenName.empty() ? array.m_Name : report.m_GivenName);
    AddKnown(AddText, object, ArrayRow::OS_DEVICE, DeviceFile(array.m_Name));
    if (const auto number = ArrayNumber(array.m_Name)) {
        AddNumber(object, ArrayRow::NUMBER, *number);
    }
    if (assessment.m_IsContainer) {
        AddText(object, ArrayRow::USAGE, "container");
    } else {
        AddState(object, ArrayRow::RAID_LEVEL, assessment.m_Level);
    }
    AddState(object, ArrayRow::STATUS, assessment.m_Status);
    if (assessment.m_IsContainer || array.m_State == ArrayState::INACTIVE) {
        return object;  // what else the kernel says of it is about its drives
    }
    AddKnown(AddCapacity, object, ArrayRow::SIZE,
             report.m_Sysfs.m_SizeBytes.value_or(ToBytes(array.m_SizeKiB)));
    AddKnown(AddCapacity, object, ArrayRow::STRIPE_SIZE, array.m_ChunkKiB * 1024UL);
    AddState(object, ArrayRow::ACCESS_MODE, array.m_ReadOnly ? Value::READ_ONLY : Value::READ_WRITE);
    if (array.m_Slots.has_value()) {
        AddNumber(object, ArrayRow::MISSING_DRIVES, assessment.m_MissingDrives);
    }
    AddActivity(object, report);
    AddArrayOperations(object, report);
    return object;
}

/// @param sizeBytes 0 when not known
PI::CObject MakeDrive(std::uint64_t id, std::uint64_t parentID, const std::string& name,
                      const MemberAssessment& assessment, const DriveKind& kind, std::uint64_t sizeBytes) {
    const _PROPERTY_VALUE icon = kind.m_Medium == Value::EMPTY ? Value::HDD : kind.m_Medium;
    PI::CObject object = shared::MakeDrive(id, parentID, name, DeviceFile(name), assessment.m_Status, icon);
    AddText(object, DriveRow::USAGE, assessment.m_Role);
    AddKnown(AddCapacity, object, DriveRow::SIZE, sizeBytes);
    AddKnown(AddState, object, DriveRow::MEDIA_TYPE, kind.m_Medium);
    AddKnown(AddState, object, DriveRow::PROTOCOL, kind.m_Protocol);
    return object;
}

PI::CObject MakeMember(const ArrayReport& report, std::size_t index, std::uint64_t id) {
    const Member& member = report.m_Array.m_Members[index];
    const MemberAssessment& assessment = report.m_Assessment.m_Members[index];
    const auto found = report.m_Sysfs.m_Members.find(member.m_Name);
    static const SysfsMember NOTHING;
    const SysfsMember& sysfs = found == report.m_Sysfs.m_Members.end() ? NOTHING : found->second;
    PI::CObject object =
        MakeDrive(id, report.m_ObjectID, member.m_Name, assessment, sysfs.m_Kind, ToBytes(sysfs.m_SizeKiB));
    if (sysfs.m_Errors.has_value()) {
        AddNumber(object, DriveRow::ERRORS, *sysfs.m_Errors);
    }
    if (!IsChangeable(report) || IsExternal(report.m_Array) || DeviceFile(member.m_Name).empty()) {
        return object;
    }
    if (assessment.m_Status == Value::DEDICATED_HOTSPARE) {
        AddOperation(object, Operation::DELETE_DEDICATED_HOTSPARE, 23444);
    } else if (assessment.m_Status == Value::FAILED) {
        AddOperation(object, Operation::REMOVE_DISK, 1);
    } else if (assessment.m_Status == Value::OPERATIONAL && report.m_Assessment.m_SparesADrive) {
        AddOperation(object, Operation::MAKE_OFFLINE, 23477);
    }
    return object;
}

/// Puts right a position at the very beginning. Linux lists it, wherever it is, in a moment in which more is
/// done than it has counted as begun (seen on 6.1 with RAID 5).
void MendPosition(Array& array, const SysfsArray& sysfs) {
    const std::uint64_t doneKiB = sysfs.m_SyncDone / 2;
    if (array.m_Sync.has_value() && array.m_Sync->m_DoneKiB <= 1 && doneKiB > 1 &&
        doneKiB <= array.m_Sync->m_TotalKiB) {
        array.m_Sync->m_DoneKiB = doneKiB;
        array.m_Sync->m_PerMille = static_cast<std::uint32_t>(doneKiB * 1000 / array.m_Sync->m_TotalKiB);
    }
}

}  // namespace

Inventory ReadInventory(const std::filesystem::path& root, shared::ObjectIDs& ids, Progress& progress,
                        std::vector<std::string>& errors) {
    ids.Get(ADAPTER);
    Inventory inventory;
    inventory.m_FreeDrives = ReadFreeDrives(root);
    const std::filesystem::path mdstatPath = root / "proc/mdstat";
    std::string error;
    const std::optional<std::string> text = shared::ReadTextFile(mdstatPath, error);
    if (!text.has_value()) {
        if (root == MACHINE_ITSELF && !std::filesystem::exists(mdstatPath)) {
            shared::Trace("no software RAID: there is no " +
                          mdstatPath.string());  // the kernel's module is not loaded
        } else {
            errors.push_back(error);
        }
        return inventory;
    }
    Mdstat mdstat = ParseMdstat(*text);
    for (const MdstatError& mdstatError : mdstat.m_Errors) {
        errors.push_back(mdstatPath.string() + ": line " + std::to_string(mdstatError.m_Line) + ": " +
                         mdstatError.m_Text);
    }
    shared::Trace(mdstatPath.string() + ": " + std::to_string(mdstat.m_Arrays.size()) + " arrays, " +
                  std::to_string(mdstat.m_Errors.size()) + " errors");

    inventory.m_IsComplete = mdstat.m_Errors.empty();
    std::set<std::string> free;
    for (const FreeDrive& drive : inventory.m_FreeDrives) {
        free.insert(drive.m_Name);
    }
    for (const std::string& name : mdstat.m_UnusedDevices) {
        if (free.insert(name).second) {
            inventory.m_FreeDrives.push_back({name, 0, {}});
        }
    }
    const std::map<std::string, std::string> names = ReadArrayNames(root);
    const ContainerUse use = FindContainerUse(mdstat.m_Arrays);
    const std::uint64_t now = PI::CETR::NowSteady();
    for (Array& array : mdstat.m_Arrays) {
        ArrayReport& report = inventory.m_Arrays.emplace_back();
        report.m_Array = std::move(array);
        const std::string& name = report.m_Array.m_Name;
        report.m_ObjectID = ids.Get("array " + name);
        report.m_Sysfs = ReadSysfsArray(root, name);
        MendPosition(report.m_Array, report.m_Sysfs);
        const auto given = names.find(name);
        report.m_GivenName = given == names.end() ? "" : given->second;
        report.m_Title = report.m_GivenName.empty() ? name : name + " (" + report.m_GivenName + ")";
        report.m_Assessment = Assess(report.m_Array, report.m_Sysfs, use);
        report.m_RemainingMs = progress.Update(report.m_ObjectID, report.m_Array, now);
        shared::TraceDebug(report.m_Title + " is " + PI::PropertyValueToString(report.m_Assessment.m_Status));
    }
    return inventory;
}

std::uint64_t FreeDriveID(const FreeDrive& drive, shared::ObjectIDs& ids) {
    return ids.Get("unused " + drive.m_Name);
}

void AppendObjects(const Inventory& inventory, shared::ObjectIDs& ids, std::vector<PI::CObject>& objects) {
    const std::uint64_t adapterID = ids.Get(ADAPTER);
    objects.push_back(MakeAdapter(inventory, adapterID));
    for (const ArrayReport& report : inventory.m_Arrays) {
        objects.push_back(MakeArray(report, adapterID));
        std::map<std::string, unsigned> seen;  // a list put together by hand may name a drive twice
        for (std::size_t i = 0; i < report.m_Array.m_Members.size(); ++i) {
            const std::string& member = report.m_Array.m_Members[i].m_Name;
            const unsigned times = ++seen[member];
            objects.push_back(MakeMember(report, i,
                                         ids.Get("member " + member + " of " + report.m_Array.m_Name +
                                                 (times == 1 ? "" : " again " + std::to_string(times)))));
        }
    }
    for (const FreeDrive& drive : inventory.m_FreeDrives) {
        objects.push_back(MakeDrive(FreeDriveID(drive, ids), adapterID, drive.m_Name,
                                    {Value::AVAILABLE, "in no array"}, drive.m_Kind, drive.m_SizeBytes));
    }
}

}  // namespace mdraid
