// SPDX-License-Identifier: Apache-2.0

#include "operations.h"

#include <pi/drive_combination.h>
#include <pi/layout.h>
#include <pi/plugin_helper.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "inventory.h"
#include "program.h"

namespace mdraid {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds PATIENCE(30);  // judgement: mdadm waits for udev and for drives that spin up

[[noreturn]] void Refuse(const std::string& reason) {
    throw std::runtime_error(reason);
}

const PI::CProperty& Parameter(const PI::COperation& operation, PI::_PROPERTY_ID id) {
    for (const PI::CProperty& each : operation.m_Properties) {
        if (each.m_ID == id) {
            return each;
        }
    }
    Refuse(PI::PropertyIDToString(id) + " is missing");
}

/// @param output out: all that mdadm says
/// @return whether it succeeded
bool TryMdadm(const Machine& machine, std::vector<std::string> arguments, std::string& output) {
    if (machine.m_Mdadm.empty() && machine.m_Root != "/") {
        Refuse("mdadm would work on this machine, not on " + machine.m_Root.string());
    }
    arguments.insert(arguments.begin(), machine.m_Mdadm.empty() ? "mdadm" : machine.m_Mdadm);
    std::string error;
    const std::optional<int> status =
        shared::RunProgram(arguments, PATIENCE, output, error, shared::ErrorOutput::TAKE);
    shared::Trace(arguments[0] + " " + arguments[1] + ": " +
                  (status.has_value() ? shared::OneLine(output) : error));
    if (!status.has_value()) {
        Refuse(error);
    }
    if (*status < 0) {
        Refuse(arguments[0] + " does not tell how it ended, but said: " + shared::OneLine(output));
    }
    if (*status != 0 && output.empty()) {
        output = arguments[0] + ": exit status " + std::to_string(*status);
    }
    return *status == 0;
}

/// @return what mdadm says, in one line
std::string RunMdadm(const Machine& machine, const std::vector<std::string>& arguments) {
    std::string output;
    if (!TryMdadm(machine, arguments, output)) {
        Refuse(shared::OneLine(output));
    }
    return shared::OneLine(output);
}

/// What an operation works on: read again, since the service may have asked some time ago.
class Subject {
public:
    Subject(const Machine& machine, shared::ObjectIDs& ids, Progress& progress, std::uint64_t objectID)
        : m_Machine(machine), m_IDs(ids), m_Progress(progress), m_ArrayID(objectID) {
        Look();
        std::vector<PI::CObject> objects;
        AppendObjects(m_Inventory, m_IDs, objects);
        const auto object = std::find_if(objects.begin(), objects.end(), [&](const PI::CObject& each) {
            return each.m_ObjectID == objectID;
        });
        if (object == objects.end()) {
            Refuse("object " + std::to_string(objectID) + " is gone");
        }
        m_Object = std::move(*object);
        if (m_Object.m_ObjectType == PHYSICAL_DRIVE) {
            m_ArrayID = m_Object.m_RelatedIDs1.at(0);
        }
    }

    void Look() {
        std::vector<std::string> errors;
        m_Inventory = ReadInventory(m_Machine.m_Root, m_IDs, m_Progress, errors);
    }

    /// The array itself, or the one that the drive belongs to.
    const ArrayReport& Report() const {
        for (const ArrayReport& each : m_Inventory.m_Arrays) {
            if (each.m_ObjectID == m_ArrayID) {
                return each;
            }
        }
        Refuse("object " + std::to_string(m_ArrayID) + " is gone");
    }

    std::string ArrayDevice() const { return DeviceFile(Report().m_Array.m_Name); }

    void Write(const std::string& attribute, const std::string& text) const {
        WriteArrayAttribute(m_Machine.m_Root, Report().m_Array.m_Name, attribute, text);
    }

    const Machine& m_Machine;
    shared::ObjectIDs& m_IDs;
    Inventory m_Inventory;
    PI::CObject m_Object;

private:
    Progress& m_Progress;
    std::uint64_t m_ArrayID;
};

// ---- Checks. The kernel keeps in sync_min where it was asked to end a check, and continues there when it is
// asked for one again: that is the pause. "frozen" would also prevent a rebuild if a drive fails meanwhile.

/// Ends the check that another follows: until that has looked again, sync_min says that the check has not
/// come to its end.
void CancelCheck(const Subject& subject) {
    subject.Write("sync_action", "idle");
    std::this_thread::sleep_for(2 * subject.m_Machine.m_Interval);
    subject.Write("sync_min", "0");
}

void FollowCheck(Subject& subject, const TaskReport& report, PI::CTask& task) {
    subject.Write("sync_action", "check");
    task.m_TaskText1 = "check of " + subject.Report().m_Title;
    for (subject.Look(); subject.Report().m_Sysfs.m_SyncAction == "check"; subject.Look()) {
        const ArrayReport& array = subject.Report();
        const Sync sync = array.m_Array.m_Sync.value_or(Sync());
        task.m_TaskStatus = sync.m_State == SyncState::RUNNING ? Value::OK : Value::PENDING;
        if (sync.m_PerMille.has_value()) {
            task.m_TaskFlag = true;
            task.m_TaskValue2 = *sync.m_PerMille / 10;
        }
        task.m_TaskValue4 = array.m_RemainingMs.value_or(UINT64_MAX);
        if (!report(task)) {
            subject.Write("sync_action", "idle");
            subject.Write("sync_min", "0");
            task.m_TaskStatus = Value::ABORTED;
            return;
        }
        std::this_thread::sleep_for(subject.m_Machine.m_Interval);
    }
    const SysfsArray& sysfs = subject.Report().m_Sysfs;
    task.m_TaskFlag = sysfs.m_SyncMin == 0;  // of one that is being ended the kernel lists all as done
    task.m_TaskStatus = sysfs.m_SyncMin == 0 ? Value::OK : Value::ABORTED;
    task.m_TaskText2 =
        std::to_string(sysfs.m_Mismatches) + " sectors differ" +
        (sysfs.m_SyncMin == 0 ? "" : ", ended by another at sector " + std::to_string(sysfs.m_SyncMin));
}

void PauseCheck(Subject& subject, PI::CTask& task) {
    subject.Write("sync_action", "idle");
    subject.Look();
    const std::uint64_t position = subject.Report().m_Sysfs.m_SyncMin;
    task.m_TaskText2 = position == 0 ? "nothing is done yet: it would begin anew"
                                     : "it would go on at sector " + std::to_string(position);
}

// ---- Drives

/// Refuses a drive that may not be mixed with another.
void CheckMix(const Machine& machine, const FreeDrive& other, const FreeDrive& drive) {
    const auto isGiven = [&](char permission) {
        return machine.m_Permissions.find(permission) != std::string::npos;
    };
    const std::vector<PI::CDriveMismatch> mismatches = PI::CPluginHelper::ExplainPhysicalDriveCombination(
        isGiven('0'), isGiven('1'), isGiven('2'), isGiven('3'), other.m_Kind.m_Protocol,
        other.m_Kind.m_Medium, false, drive.m_Kind.m_Protocol, drive.m_Kind.m_Medium, false);
    if (!mismatches.empty()) {
        Refuse(DeviceFile(drive.m_Name) + " is " + PI::PropertyValueToString(mismatches[0].DriveValue()) +
               " and " + DeviceFile(other.m_Name) + " " +
               PI::PropertyValueToString(mismatches[0].ContainerValue()) + ", which may not be mixed");
    }
}

/// The name of a device that a user gives: inside /dev, with links followed.
std::string DeviceName(const Machine& machine, const std::string& text) {
    constexpr std::string_view FOLDER = "/dev/";
    const std::string name = text.substr(text.compare(0, FOLDER.size(), FOLDER) == 0 ? FOLDER.size() : 0);
    std::error_code error;
    const fs::path folder = fs::weakly_canonical(machine.m_Root / "dev", error);
    std::string device = fs::weakly_canonical(folder / name, error).lexically_relative(folder);
    if (name.empty() || name[0] == '/' || error || DeviceFile(name).empty() || DeviceFile(device).empty()) {
        Refuse("\"" + text + "\" is no device below /dev");
    }
    return device;
}

std::string AddDrive(const Subject& subject, const PI::COperation& operation) {
    const std::string name =
        DeviceName(subject.m_Machine, Parameter(operation, ID::OS_DEVICE).m_Data.m_String.m_Value);
    std::map<std::string, DriveKind> kinds;
    for (const ArrayReport& report : subject.m_Inventory.m_Arrays) {
        for (const auto& [member, sysfs] : report.m_Sysfs.m_Members) {
            kinds[member] = sysfs.m_Kind;
        }
    }
    for (const FreeDrive& free : subject.m_Inventory.m_FreeDrives) {
        kinds[free.m_Name] = free.m_Kind;
    }
    const std::vector<Member>& members = subject.Report().m_Array.m_Members;
    if (kinds.count(name) != 0 && !members.empty()) {
        const std::string& other = members[0].m_Name;
        CheckMix(subject.m_Machine, {other, 0, kinds[other]}, {name, 0, kinds[name]});
    }
    return RunMdadm(subject.m_Machine, {"--manage", subject.ArrayDevice(), "--add", DeviceFile(name)});
}

std::string ManageDrive(const Subject& subject, const char* option) {
    const PI::CProperty* const device = PI::CPluginHelper::FindProperty(subject.m_Object, ID::OS_DEVICE);
    return RunMdadm(subject.m_Machine,
                    {"--manage", subject.ArrayDevice(), option, device->m_Data.m_String.m_Value});
}

// ---- A new array

/// What a configuration document asks for: that of an array is a logical drive without spares.
PI::CLogicalDrive ReadLayout(const VELK::XML::xml_document& document) {
    VELK::XML::xml_document copy;
    copy.reset(document);
    if (document.child("ArrayConfiguration")) {
        const PI::CArray array(copy);
        PI::CLogicalDrive drive;
        drive.m_Containers = array.m_Containers;
        drive.m_Units = array.m_Units;
        return drive;
    }
    if (!document.child("LogicalDriveConfiguration")) {
        Refuse("CONFIGURATION is no configuration document of an array or a logical drive");
    }
    PI::CLogicalDrive drive(copy);
    if (!drive.m_GlobalHotSpares.empty()) {
        Refuse("software RAID has no global hot spares");
    }
    return drive;
}

std::uint64_t ToBytes(std::uint64_t size, PI::_UNITS units) {
    constexpr std::pair<PI::_UNITS, unsigned> BITS[] = {
        {PI::Units::BYTES, 0},      {PI::Units::KILOBYTES, 10}, {PI::Units::MEGABYTES, 20},
        {PI::Units::GIGABYTES, 30}, {PI::Units::TERABYTES, 40}, {PI::Units::PETABYTES, 50},
    };
    for (const auto& [unit, bits] : BITS) {
        if (unit == units && size <= UINT64_MAX >> bits) {
            return size << bits;
        }
    }
    Refuse("CONFIGURATION has no size in units " + std::to_string(units) + " that could be used");
}

/// A name that mdadm accepts: "md5" for a number, others become links in /dev/md.
std::string NewDevice(const std::string& name) {
    constexpr const char* LETTERS = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-.";
    constexpr std::size_t LONGEST = 32;  // that metadata have room for
    if (name.empty() || name.size() > LONGEST || name.find_first_not_of(LETTERS) != std::string::npos ||
        name[0] == '.' || name[0] == '-') {
        Refuse("NAME \"" + name + "\" is not of one to 32 letters, digits, \"_\", \"-\" and \".\"");
    }
    const bool isNumber = name.compare(0, 2, "md") == 0 && name.size() > 2 &&
                          name.find_first_not_of("0123456789", 2) == std::string::npos;
    return (isNumber ? "/dev/" : "/dev/md/") + name;
}

/// The drives of the document, those of the array first.
std::vector<FreeDrive> FindDrives(const Subject& subject, const std::vector<PI::CDrive>& extents,
                                  const std::vector<std::uint64_t>& spares) {
    std::vector<std::uint64_t> ids;
    for (const PI::CDrive& extent : extents) {
        if (extent.m_StartAddress != 0) {
            Refuse("drive " + std::to_string(extent.m_ObjectID) + ": mdadm begins where a drive begins");
        }
        ids.push_back(extent.m_ObjectID);
    }
    ids.insert(ids.end(), spares.begin(), spares.end());
    const std::vector<FreeDrive>& free = subject.m_Inventory.m_FreeDrives;
    std::vector<FreeDrive> drives;
    for (const std::uint64_t id : ids) {
        const auto found = std::find_if(free.begin(), free.end(), [&](const FreeDrive& each) {
            return FreeDriveID(each, subject.m_IDs) == id;
        });
        if (found == free.end() || std::count(ids.begin(), ids.end(), id) != 1) {
            Refuse("object " + std::to_string(id) + " is no drive that is free, or is named twice");
        }
        drives.push_back(*found);
        CheckMix(subject.m_Machine, drives[0], *found);
    }
    return drives;
}

/// Whether drives of different sizes are all that mdadm asks about. It also asks where it finds contents, and
/// takes silence for a no.
bool AsksOfSizesAlone(const std::string& output) {
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        if (line.find(" exceeds size (") == std::string::npos && line.find("Continue creating array?") != 0) {
            return false;
        }
    }
    return !output.empty();
}

std::string CreateArray(const Subject& subject, const PI::COperation& operation) {
    const PI::CLogicalDrive layout =
        ReadLayout(Parameter(operation, ID::CONFIGURATION).m_Data.m_XML.m_Document);
    std::vector<PI::CDrive> extents;
    for (const PI::CContainer& container : layout.m_Containers) {
        extents.insert(extents.end(), container.m_Drives.begin(), container.m_Drives.end());
    }
    const int level = Parameter(operation, ID::RAID_LEVEL_2).m_Data.m_Choice.m_Value;
    const std::vector<FreeDrive> drives = FindDrives(subject, extents, layout.m_DedicatedHotSpares);
    if (extents.empty() || (layout.m_Containers.size() > 1 && level != Value::RAID10)) {
        Refuse("CONFIGURATION needs drives in one container; only RAID10 takes several, one for each mirror");
    }
    std::vector<std::string> command = {
        "--create", NewDevice(Parameter(operation, ID::NAME).m_Data.m_String.m_Value), "--metadata=1.2",
        "--level=" + LevelName(level), "--raid-devices=" + std::to_string(extents.size())};
    if (level != Value::RAID0 && level != Value::CONCAT) {
        command.emplace_back("--bitmap=internal");  // judgement: a crash then costs no whole synchronisation
    }
    if (!layout.m_DedicatedHotSpares.empty()) {
        command.push_back("--spare-devices=" + std::to_string(layout.m_DedicatedHotSpares.size()));
    }
    std::uint64_t used = UINT64_MAX;   // the smallest part of a drive that the document gives, in bytes
    std::uint64_t whole = UINT64_MAX;  // the smallest drive
    for (const PI::CDrive& extent : extents) {
        used = extent.m_UsedSize == 0 ? used : std::min(used, ToBytes(extent.m_UsedSize, layout.m_Units));
    }
    for (const FreeDrive& drive : drives) {
        whole = drive.m_SizeBytes == 0 ? whole : std::min(whole, drive.m_SizeBytes);
    }
    // Near the size of the smallest drive it means all of it, of which mdadm keeps a little for itself.
    if (used < whole - whole / 100) {
        command.push_back("--size=" + std::to_string(used / 1024));
    }
    for (const FreeDrive& drive : drives) {
        command.push_back(DeviceFile(drive.m_Name));
    }
    std::string output;
    if (TryMdadm(subject.m_Machine, command, output)) {
        return shared::OneLine(output);
    }
    if (used == UINT64_MAX || !AsksOfSizesAlone(output)) {
        Refuse(shared::OneLine(output));
    }
    command.emplace_back("--run");
    return RunMdadm(subject.m_Machine, command);
}

}  // namespace

void Execute(const Machine& machine, shared::ObjectIDs& ids, Progress& progress, std::uint64_t objectID,
             const PI::COperation& operation, const TaskReport& report, PI::CTask& task) {
    Subject subject(machine, ids, progress, objectID);
    const std::vector<PI::COperation>& offers = subject.m_Object.m_Operations;
    if (std::none_of(offers.begin(), offers.end(),
                     [&](const PI::COperation& each) { return each.m_Header1 == operation.m_Header1; })) {
        Refuse("the operation is not offered any more");
    }
    switch (operation.m_Header1) {
        case Operation::START_CHECK:
        case Operation::CONTINUE_CHECK: FollowCheck(subject, report, task); break;
        case Operation::PAUSE_CHECK: PauseCheck(subject, task); break;
        case Operation::CANCEL_CHECK: CancelCheck(subject); break;
        case Operation::PAUSE_REBUILD: subject.Write("sync_action", "frozen"); break;
        case Operation::CONTINUE_REBUILD: subject.Write("sync_action", "idle"); break;
        case Operation::CREATE_DEDICATED_HOTSPARE:
        case Operation::REPLACE_MISSING: task.m_TaskText2 = AddDrive(subject, operation); break;
        case Operation::MAKE_OFFLINE: task.m_TaskText2 = ManageDrive(subject, "--fail"); break;
        case Operation::DELETE_DEDICATED_HOTSPARE:
        case Operation::REMOVE_DISK: task.m_TaskText2 = ManageDrive(subject, "--remove"); break;
        case Operation::CREATE_LOGICAL_DRIVE: task.m_TaskText2 = CreateArray(subject, operation); break;
        default: Refuse("the operation is not known");
    }
}

}  // namespace mdraid
