// SPDX-License-Identifier: Apache-2.0

#include "operations.h"

#include <pi/drive_combination.h>
#include <pi/layout.h>
#include <pi/plugin_helper.h>

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "inventory.h"
#include "plugin_interface.h"
#include "program.h"

namespace mdraid {
namespace {

namespace fs = std::filesystem;
namespace ID = PI::PropertyID;
namespace Value = PI::PropertyValue;
namespace Operation = PI::OperationID;
using PI::CPluginHelper;

constexpr std::chrono::seconds PATIENCE(30);  // judgement: mdadm waits for udev and for drives that spin up

[[noreturn]] void Refuse(const std::string& reason) {
    throw std::runtime_error(reason);
}

std::string TextOf(const std::vector<PI::CProperty>& properties, PI::_PROPERTY_ID id) {
    const auto found = std::find_if(properties.begin(), properties.end(),
                                    [&](const PI::CProperty& each) { return each.m_ID == id; });
    return found == properties.end() ? "" : found->m_Data.m_String.m_Value;
}

/// 0 when it is not known.
int ChoiceOf(const PI::CObject& object, PI::_PROPERTY_ID id) {
    const PI::CProperty* const property = CPluginHelper::FindProperty(object, id);
    return property == nullptr ? 0 : property->m_Data.m_Choice.m_Value;
}

/// @param output out: all that mdadm says
/// @return whether it did what it was told to
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

/// What an operation works on: looked at anew, since the service may have asked some time ago.
class Subject {
public:
    Subject(const Machine& machine, shared::ObjectIDs& ids, Progress& progress, std::uint64_t objectID)
        : m_Machine(machine), m_IDs(ids), m_Progress(progress), m_ObjectID(objectID) {
        Look();
    }

    void Look() {
        std::vector<std::string> errors;
        m_Objects.clear();
        m_Inventory = ReadInventory(m_Machine.m_Root, m_IDs, m_Progress, errors);
        AppendObjects(m_Inventory, m_IDs, m_Objects);
    }

    const PI::CObject& Find(std::uint64_t id) const {
        const auto object = std::find_if(m_Objects.begin(), m_Objects.end(),
                                         [&](const PI::CObject& each) { return each.m_ObjectID == id; });
        if (object == m_Objects.end()) {
            Refuse("object " + std::to_string(id) + " is gone");
        }
        return *object;
    }

    const PI::CObject& Object() const { return Find(m_ObjectID); }

    /// The array itself, or the one that the drive belongs to.
    const ArrayReport& Report() const {
        const PI::CObject& object = Object();
        const std::uint64_t id =
            object.m_ObjectType == LOGICAL_DRIVE ? m_ObjectID : object.m_RelatedIDs1.at(0);
        return *std::find_if(m_Inventory.m_Arrays.begin(), m_Inventory.m_Arrays.end(),
                             [&](const ArrayReport& each) { return each.m_ObjectID == id; });
    }

    void Write(const std::string& attribute, const std::string& text) const {
        WriteArrayAttribute(m_Machine.m_Root, Report().m_Array.m_Name, attribute, text);
    }

    /// Size of the smallest of these free drives, in bytes.
    std::uint64_t SmallestFree(const std::vector<const PI::CObject*>& drives) const {
        std::uint64_t smallest = UINT64_MAX;
        for (const FreeDrive& free : m_Inventory.m_FreeDrives) {
            for (const PI::CObject* const drive : drives) {
                if (drive->m_ObjectID == m_IDs.Get("unused " + free.m_Name) && free.m_SizeBytes != 0) {
                    smallest = std::min(smallest, free.m_SizeBytes);
                }
            }
        }
        return smallest;
    }

    const Machine& m_Machine;
    std::vector<PI::CObject> m_Objects;

private:
    shared::ObjectIDs& m_IDs;
    Progress& m_Progress;
    std::uint64_t m_ObjectID;
    Inventory m_Inventory;
};

std::string Device(const PI::CObject& object) {
    std::string device = TextOf(object.m_Properties, ID::OS_DEVICE);
    if (device.empty()) {
        Refuse(TextOf(object.m_Properties, ID::NAME) + " has no file below /dev");
    }
    return device;
}

// ---- Checks. The kernel keeps in sync_min where it was told to end one, and begins there when it is asked
// for one again: that is the pause. "frozen" would also keep it from rebuilding, should a drive fail
// meanwhile.

void EndCheck(const Subject& subject) {
    subject.Write("sync_action", "idle");
    subject.Write("sync_min", "0");
}

/// Ends the check that another follows: until that has looked again, sync_min says that the check has not
/// come to its end.
void CancelCheck(const Subject& subject) {
    subject.Write("sync_action", "idle");
    std::this_thread::sleep_for(2 * subject.m_Machine.m_Interval);
    subject.Write("sync_min", "0");
}

void FollowCheck(Subject& subject, const std::function<bool(const PI::CTask&)>& report, PI::CTask& task) {
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
            EndCheck(subject);
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
void CheckMix(const Machine& machine, const PI::CObject& others, const PI::CObject& drive) {
    const auto isGiven = [&](char permission) {
        return machine.m_Permissions.find(permission) != std::string::npos;
    };
    const std::vector<PI::CDriveMismatch> mismatches = CPluginHelper::ExplainPhysicalDriveCombination(
        isGiven('0'), isGiven('1'), isGiven('2'), isGiven('3'), ChoiceOf(others, ID::PROTOCOL),
        ChoiceOf(others, ID::MEDIA_TYPE), false, ChoiceOf(drive, ID::PROTOCOL),
        ChoiceOf(drive, ID::MEDIA_TYPE), false);
    if (!mismatches.empty()) {
        Refuse(Device(drive) + " is " + PI::PropertyValueToString(mismatches[0].DriveValue()) + " and " +
               Device(others) + " " + PI::PropertyValueToString(mismatches[0].ContainerValue()) +
               ", which may not be mixed");
    }
}

/// The device that a user names: inside /dev, with links followed.
std::string DeviceOf(const Machine& machine, const std::string& text) {
    constexpr std::string_view FOLDER = "/dev/";
    const std::string name = text.substr(text.compare(0, FOLDER.size(), FOLDER) == 0 ? FOLDER.size() : 0);
    std::error_code error;
    const fs::path folder = fs::weakly_canonical(machine.m_Root / "dev", error);
    const fs::path path = fs::weakly_canonical(folder / name, error).lexically_relative(folder);
    std::string device = name.empty() || name[0] == '/' || error ? "" : DeviceFile(path);
    if (device.empty() || DeviceFile(name).empty()) {
        Refuse("\"" + text + "\" is no device below /dev");
    }
    return device;
}

std::string AddDrive(const Subject& subject, const PI::COperation& operation) {
    const PI::CObject& array = subject.Object();
    const std::string device = DeviceOf(subject.m_Machine, TextOf(operation.m_Properties, ID::OS_DEVICE));
    const auto isMember = [&](const PI::CObject& each) {
        return each.m_ObjectType == PHYSICAL_DRIVE && each.m_RelatedIDs1.at(0) == array.m_ObjectID;
    };
    const auto member = std::find_if(subject.m_Objects.begin(), subject.m_Objects.end(), isMember);
    for (const PI::CObject& object : subject.m_Objects) {
        if (TextOf(object.m_Properties, ID::OS_DEVICE) == device && !isMember(object) &&
            member != subject.m_Objects.end()) {
            CheckMix(subject.m_Machine, *member, object);
        }
    }
    return RunMdadm(subject.m_Machine, {"--manage", Device(array), "--add", device});
}

std::string ManageDrive(const Subject& subject, const char* option) {
    return RunMdadm(subject.m_Machine,
                    {"--manage", Device(subject.Find(subject.Object().m_RelatedIDs1.at(0))), option,
                     Device(subject.Object())});
}

// ---- A new array

/// What a configuration document asks for.
struct Layout {
    std::vector<PI::CContainer> m_Containers;
    PI::_UNITS m_Units = PI::Units::UNSPECIFIED;
    std::vector<std::uint64_t> m_Spares;
};

Layout ReadLayout(const VELK::XML::xml_document& document) {
    VELK::XML::xml_document copy;
    copy.reset(document);
    if (document.child("ArrayConfiguration")) {
        const PI::CArray array(copy);
        return {array.m_Containers, array.m_Units, {}};
    }
    if (!document.child("LogicalDriveConfiguration")) {
        Refuse("CONFIGURATION is no configuration document of an array or a logical drive");
    }
    const PI::CLogicalDrive drive(copy);
    if (!drive.m_GlobalHotSpares.empty()) {
        Refuse("software RAID has no global hot spares");
    }
    return {drive.m_Containers, drive.m_Units, drive.m_DedicatedHotSpares};
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

/// A name that mdadm takes as it is: "md5" for a number, others become links in /dev/md.
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

/// The smallest part of a drive that the document gives, in bytes; all ones when it gives none.
std::uint64_t UsedSize(const Layout& layout) {
    std::uint64_t used = UINT64_MAX;
    for (const PI::CContainer& container : layout.m_Containers) {
        for (const PI::CDrive& extent : container.m_Drives) {
            if (extent.m_UsedSize != 0) {
                used = std::min(used, ToBytes(extent.m_UsedSize, layout.m_Units));
            }
        }
    }
    return used;
}

/// The drives of the document, those of the array first.
std::vector<const PI::CObject*> FindDrives(const Subject& subject, const Layout& layout) {
    std::vector<std::uint64_t> ids;
    for (const PI::CContainer& container : layout.m_Containers) {
        for (const PI::CDrive& extent : container.m_Drives) {
            if (extent.m_StartAddress != 0) {
                Refuse("drive " + std::to_string(extent.m_ObjectID) + ": mdadm begins where a drive begins");
            }
            ids.push_back(extent.m_ObjectID);
        }
    }
    ids.insert(ids.end(), layout.m_Spares.begin(), layout.m_Spares.end());
    std::vector<const PI::CObject*> drives;
    for (const std::uint64_t id : ids) {
        const PI::CObject& drive = *drives.emplace_back(&subject.Find(id));
        if (ChoiceOf(drive, ID::STATUS) != Value::AVAILABLE || std::count(ids.begin(), ids.end(), id) != 1) {
            Refuse("object " + std::to_string(id) + " is no drive that is free, or is named twice");
        }
        CheckMix(subject.m_Machine, *drives[0], drive);
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
    const Layout layout = ReadLayout(operation.m_Properties.at(0).m_Data.m_XML.m_Document);
    const int level = operation.m_Properties.at(1).m_Data.m_Choice.m_Value;
    const std::vector<const PI::CObject*> drives = FindDrives(subject, layout);
    const std::size_t count = drives.size() - layout.m_Spares.size();
    if (count == 0 || (layout.m_Containers.size() > 1 && level != Value::RAID10)) {
        Refuse("CONFIGURATION needs drives in one container; only RAID10 takes several, one for each mirror");
    }
    std::vector<std::string> command = {"--create", NewDevice(TextOf(operation.m_Properties, ID::NAME)),
                                        "--metadata=1.2", "--level=" + LevelName(level),
                                        "--raid-devices=" + std::to_string(count)};
    if (level != Value::RAID0 && level != Value::CONCAT) {
        command.emplace_back("--bitmap=internal");  // judgement: a crash then costs no whole synchronisation
    }
    if (!layout.m_Spares.empty()) {
        command.push_back("--spare-devices=" + std::to_string(layout.m_Spares.size()));
    }
    // Near the size of the smallest drive it means all of it, of which mdadm keeps a little for itself.
    const std::uint64_t used = UsedSize(layout);
    const std::uint64_t whole = subject.SmallestFree(drives);
    if (used < whole - whole / 100) {
        command.push_back("--size=" + std::to_string(used / 1024));
    }
    for (const PI::CObject* const drive : drives) {
        command.push_back(Device(*drive));
    }
    std::string output;
    bool isMade = TryMdadm(subject.m_Machine, command, output);
    if (!isMade && used != UINT64_MAX && AsksOfSizesAlone(output)) {
        command.emplace_back("--run");
        isMade = TryMdadm(subject.m_Machine, command, output);
    }
    if (!isMade) {
        Refuse(shared::OneLine(output));
    }
    return shared::OneLine(output);
}

}  // namespace

void Execute(const Machine& machine, shared::ObjectIDs& ids, Progress& progress, std::uint64_t objectID,
             const PI::COperation& operation, const std::function<bool(const PI::CTask&)>& report,
             PI::CTask& task) {
    Subject subject(machine, ids, progress, objectID);
    const std::vector<PI::COperation>& offers = subject.Object().m_Operations;
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
