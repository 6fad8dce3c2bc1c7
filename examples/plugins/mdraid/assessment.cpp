// SPDX-License-Identifier: Apache-2.0

#include "assessment.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <tuple>

namespace mdraid {
namespace {

// How many slots a level can do without; ALL_BUT_ONE for mirrors of everything, BY_LAYOUT for RAID 10.
constexpr int ALL_BUT_ONE = -1;
constexpr int BY_LAYOUT = -2;
constexpr int NOT_KNOWN = -3;

struct Level {
    std::string_view m_Name;
    _PROPERTY_VALUE m_Value;
    int m_Spared;
};

constexpr Level LEVELS[] = {
    {"linear", Value::CONCAT, 0},         {"raid0", Value::RAID0, 0},
    {"raid1", Value::RAID1, ALL_BUT_ONE}, {"raid4", Value::RAID4, 1},
    {"raid5", Value::RAID5, 1},           {"raid6", Value::RAID6, 2},
    {"raid10", Value::RAID10, BY_LAYOUT}, {"multipath", Value::UNKNOWN, ALL_BUT_ONE},  // paths to one drive
    {"faulty", Value::UNKNOWN, 0},  // a drive that fails on purpose
};
constexpr Level OTHER_LEVEL = {"", Value::UNKNOWN, NOT_KNOWN};

const Level& FindLevel(std::string_view name) {
    const auto row = std::find_if(std::begin(LEVELS), std::end(LEVELS),
                                  [&](const Level& level) { return level.m_Name == name; });
    return row == std::end(LEVELS) ? OTHER_LEVEL : *row;
}

bool TakesASlot(const Member& member) {
    return !member.m_Faulty && !member.m_Spare && !member.m_Journal && !member.m_Replacement;
}

/// How many slots lack a drive that works. Where the map and the count contradict each other, which they do
/// for a moment, the worse one counts; but what a reshape adds is no loss, and only the map has it.
std::uint32_t CountMissing(const Array& array) {
    const std::uint32_t counted = array.m_Slots.value_or(0) - array.m_WorkingSlots;
    const auto holes =
        static_cast<std::uint32_t>(std::count(array.m_SlotWorking.begin(), array.m_SlotWorking.end(), false));
    const bool isReshaped = array.m_Sync.has_value() && array.m_Sync->m_Kind == SyncKind::RESHAPE;
    return isReshaped ? counted : std::max(counted, holes);
}

bool IsHole(const Array& array, std::uint32_t slot) {
    return slot < array.m_SlotWorking.size() && !array.m_SlotWorking[slot];
}

/// The slot of a member. /proc/mdstat gives it only for the drives that the array began with.
std::optional<std::uint32_t> FindSlot(const Array& array, const Member& member, const SysfsArray& sysfs) {
    const auto found = sysfs.m_Members.find(member.m_Name);
    if (found != sysfs.m_Members.end()) {
        return found->second.m_Slot;
    }
    const bool isSlot =
        TakesASlot(member) && member.m_Number.value_or(UINT32_MAX) < array.m_Slots.value_or(UINT32_MAX);
    return isSlot ? member.m_Number : std::nullopt;
}

/// The members that are being filled, or wait for it, by name: as many as take a slot and do not work.
std::set<std::string> FindOutOfDate(const Array& array, const SysfsArray& sysfs) {
    // First those of which it is sure that they work. The doubt is 0 in a slot that works, 1 in an unknown
    // one, 2 in one that does not; numbers ascend: the latest is the one that is not ready yet.
    std::vector<std::tuple<int, std::uint32_t, std::string>> candidates;
    for (const Member& member : array.m_Members) {
        const std::optional<std::uint32_t> slot = FindSlot(array, member, sysfs);
        if (TakesASlot(member)) {
            const int doubt = !slot.has_value() ? 1 : IsHole(array, *slot) ? 2 : 0;
            candidates.emplace_back(doubt, member.m_Number.value_or(UINT32_MAX), member.m_Name);
        }
    }
    std::sort(candidates.begin(), candidates.end());
    std::set<std::string> outOfDate;
    const std::size_t working = array.m_Slots.has_value() ? *array.m_Slots - CountMissing(array) : SIZE_MAX;
    for (std::size_t i = working; i < candidates.size(); ++i) {
        outOfDate.insert(std::get<std::string>(candidates[i]));
    }
    return outOfDate;
}

bool IsRebuilding(const Array& array) {
    return array.m_Sync.has_value() && array.m_Sync->m_Kind == SyncKind::RECOVERY &&
           (array.m_Sync->m_State == SyncState::RUNNING || array.m_Sync->m_State == SyncState::REMOTE);
}

/// Whether what the array needs waits for something.
bool IsHeld(const Array& array, const SysfsArray& sysfs) {
    return array.m_Sync.has_value() || sysfs.m_SyncAction == "frozen";
}

MemberAssessment AssessMember(const Array& array, const Member& member, const SysfsArray& sysfs,
                              bool isOutOfDate, bool isAnyMissing) {
    const std::optional<std::uint32_t> slot = FindSlot(array, member, sysfs);
    const auto inSlot = [&](const std::string& before, const std::string& otherwise) {
        return slot.has_value() ? before + "slot " + std::to_string(*slot) : otherwise;
    };
    const auto found = sysfs.m_Members.find(member.m_Name);
    MemberAssessment result;
    if (member.m_Faulty) {
        result = {Value::FAILED, "failed"};
    } else if (found != sysfs.m_Members.end() && found->second.m_IsGone) {
        result = {Value::FAILED, "gone"};
    } else if (member.m_Journal) {
        result = {Value::JOURNALING, "journal"};
    } else if (array.m_State == ArrayState::INACTIVE) {
        result = {Value::OFFLINE, "not in use"};  // all members of such an array are listed as spares
    } else if (member.m_Spare || (isOutOfDate && !isAnyMissing)) {
        result = {Value::DEDICATED_HOTSPARE, "spare"};  // kernels before 2.6 do not mark it
    } else if (member.m_Replacement) {
        result = {IsRebuilding(array) ? Value::COPY_BACK : Value::OPERATIONAL,
                  inSlot("replacement for ", "replacement")};
    } else if (isOutOfDate && !IsHeld(array, sysfs)) {
        result = {Value::OFFLINE, slot.has_value() ? inSlot("", "") + ", not up to date" : "not up to date"};
    } else if (isOutOfDate) {
        result = {IsRebuilding(array) ? Value::REBUILDING : Value::REBUILD_PAUSED,
                  inSlot("rebuilding ", "rebuilding")};
    } else {  // perhaps in another slot than that of its number
        result = {Value::OPERATIONAL,
                  slot.has_value() && IsHole(array, *slot) ? "in use" : inSlot("", "in use")};
    }
    if (member.m_WriteMostly) {
        result.m_Role += ", write-mostly";
    }
    return result;
}

_PROPERTY_VALUE FindActivity(const Array& array, const SysfsArray& sysfs, bool rebuilds) {
    struct Row {
        SyncKind m_Kind;
        _PROPERTY_VALUE m_Running;
        _PROPERTY_VALUE m_Waiting;
    };
    constexpr Row ROWS[] = {
        {SyncKind::RESYNC, Value::VERIFYINGFIXING, Value::PAUSED},
        {SyncKind::RECOVERY, Value::REBUILDING, Value::REBUILD_PAUSED},
        {SyncKind::RESHAPE, Value::MIGRATING, Value::MIGRATION_PAUSED},
        {SyncKind::CHECK, Value::CHECKING, Value::CHECK_PAUSED},
    };
    if (!array.m_Sync.has_value() && (array.m_IsCut || !array.m_SizeKiB.has_value())) {
        return Value::UNKNOWN;
    }
    if (!array.m_Sync.has_value()) {
        // The kernel keeps where it was asked to end a check; an array that lacks a drive is not checked.
        const bool isCheckPaused = sysfs.m_SyncAction == "idle" && sysfs.m_SyncMin != 0;
        return rebuilds && IsHeld(array, sysfs)            ? Value::REBUILD_PAUSED
               : isCheckPaused && CountMissing(array) == 0 ? Value::CHECK_PAUSED
                                                           : Value::IDLE;
    }
    SyncKind kind = array.m_Sync->m_Kind;
    const bool waits =
        array.m_Sync->m_State == SyncState::DELAYED || array.m_Sync->m_State == SyncState::PENDING;
    if (waits && kind == SyncKind::RESYNC) {  // the kernel's word for everything that waits
        const SyncKind action = FindSyncKind(sysfs.m_SyncAction);
        kind = action != SyncKind::OTHER ? action : rebuilds ? SyncKind::RECOVERY : kind;
    }
    for (const Row& row : ROWS) {
        if (row.m_Kind == kind) {
            return waits ? row.m_Waiting : row.m_Running;
        }
    }
    return Value::UNKNOWN;
}

/// How many drives can be lost, whichever they are.
std::uint32_t Spared(const Array& array, const Level& level) {
    const std::uint32_t slots = array.m_Slots.value_or(0);
    switch (level.m_Spared) {
        case NOT_KNOWN: return 0;
        case ALL_BUT_ONE: return std::max(slots, 1U) - 1;
        case BY_LAYOUT: {
            const std::uint64_t copies =
                std::max<std::uint64_t>(array.m_NearCopies, 1) * std::max(array.m_FarCopies, 1U);
            return static_cast<std::uint32_t>(std::clamp<std::uint64_t>(copies, 1, std::max(slots, 1U))) - 1;
        }
        default: return static_cast<std::uint32_t>(level.m_Spared);
    }
}

/// Whether a RAID 10 has lost all copies of some data. They are in as many slots that follow each other, from
/// a multiple of the near copies on (md(4)).
bool HasLostAllCopies(const Array& array, std::size_t copies) {
    const std::size_t slots = array.m_SlotWorking.size();
    std::vector<std::size_t> holesFrom(slots);
    std::size_t holes = 0;
    for (std::size_t i = 2 * slots; i-- > 0;) {  // twice around: the last slot is followed by the first
        holes = array.m_SlotWorking[i % slots] ? 0 : holes + 1;
        holesFrom[i % slots] = holes;
    }
    for (std::size_t chunk = 0; chunk < slots; ++chunk) {
        if (holesFrom[chunk * std::max(array.m_NearCopies, 1U) % slots] >= copies) {
            return true;
        }
    }
    return false;
}

_PROPERTY_VALUE StatusOfLoss(const Array& array, const Level& level, std::uint32_t missing) {
    const std::uint32_t spared = Spared(array, level);
    if (missing >= *array.m_Slots) {
        return Value::FAILED;
    }
    if (level.m_Spared == NOT_KNOWN || (level.m_Spared == BY_LAYOUT && spared == 0)) {
        return Value::DEGRADED;
    }
    if (level.m_Spared == BY_LAYOUT) {
        return HasLostAllCopies(array, spared + 1) ? Value::FAILED : Value::DEGRADED;
    }
    return missing > spared ? Value::FAILED : missing == spared ? Value::DEGRADED : Value::PARTIALLY_DEGRADED;
}

std::string Count(std::uint32_t count, std::uint32_t total) {
    return std::to_string(count) + " of " + std::to_string(total) + (total == 1 ? " drive" : " drives");
}

void AssessStatus(const Array& array, const SysfsArray& sysfs, const Level& level, Assessment& result) {
    const auto failed = static_cast<std::uint32_t>(std::count_if(
        array.m_Members.begin(), array.m_Members.end(), [](const Member& m) { return m.m_Faulty; }));
    if (array.m_State == ArrayState::INACTIVE) {
        result.m_Status = Value::OFFLINE;
        result.m_Reason = "it is assembled but not started";
    } else if (array.m_State == ArrayState::BROKEN || sysfs.m_State == "broken" ||
               (level.m_Spared == 0 && failed != 0)) {
        result.m_Status = Value::FAILED;
        result.m_Reason = failed == 0
                              ? "the kernel has given it up"
                              : Count(failed, static_cast<std::uint32_t>(array.m_Members.size())) + " failed";
    } else if (result.m_MissingDrives != 0) {
        result.m_Status = StatusOfLoss(array, level, result.m_MissingDrives);
        result.m_Reason = Count(result.m_MissingDrives, *array.m_Slots) + " missing or not up to date";
    } else if (array.m_State == ArrayState::ACTIVE && array.m_SizeKiB.has_value() &&
               (level.m_Spared == 0 || array.m_Slots.has_value())) {
        result.m_Status = Value::OPERATIONAL;
        result.m_SparesADrive = Spared(array, level) != 0;
    } else {
        result.m_Status = Value::UNKNOWN;
        result.m_Reason = "the kernel's list says too little";
    }
}

constexpr std::string_view EXTERNAL = "external:";

/// The container of an array, from metadata such as "external:/md127/0", or "external:-md127/0" of a
/// read-only one.
std::string ContainerOf(const Array& array) {
    const std::string_view metadata = array.m_Metadata;
    const std::size_t start = EXTERNAL.size() + 1;
    if (metadata.size() < start || !IsExternal(array) ||
        (metadata[start - 1] != '/' && metadata[start - 1] != '-')) {
        return "";
    }
    return std::string(metadata.substr(start, metadata.find('/', start) - start));
}

MemberAssessment AssessContainerMember(const Array& container, const Member& member,
                                       const ContainerUse& use) {
    if (member.m_Faulty) {
        return {Value::FAILED, "failed"};
    }
    const auto user = use.find({container.m_Name, member.m_Name});
    return user == use.end() ? MemberAssessment{Value::AVAILABLE, "not in use"}
                             : MemberAssessment{Value::OPERATIONAL, "in " + user->second};
}

}  // namespace

std::vector<int> Levels() {
    std::vector<int> levels;
    for (const Level& level : LEVELS) {
        if (level.m_Value != Value::UNKNOWN) {
            levels.push_back(level.m_Value);
        }
    }
    return levels;
}

std::string LevelName(int level) {
    const auto row = std::find_if(std::begin(LEVELS), std::end(LEVELS),
                                  [&](const Level& each) { return each.m_Value == level; });
    return row == std::end(LEVELS) ? "" : std::string(row->m_Name);
}

bool IsExternal(const Array& array) {
    return array.m_Metadata.compare(0, EXTERNAL.size(), EXTERNAL) == 0;
}

bool IsContainer(const Array& array, const SysfsArray& sysfs) {
    return sysfs.m_Level == "container" || (IsExternal(array) && ContainerOf(array).empty());
}

ContainerUse FindContainerUse(const std::vector<Array>& arrays) {
    ContainerUse use;
    for (const Array& array : arrays) {
        const std::string container = ContainerOf(array);
        for (std::size_t i = 0; !container.empty() && i < array.m_Members.size(); ++i) {
            std::string& users = use[{container, array.m_Members[i].m_Name}];
            users += (users.empty() ? "" : ", ") + array.m_Name;
        }
    }
    return use;
}

Assessment Assess(const Array& array, const SysfsArray& sysfs, const ContainerUse& use) {
    Assessment result;
    if (IsContainer(array, sysfs)) {
        result.m_Status = Value::OPERATIONAL;  // it is never started
        result.m_IsContainer = true;
        for (const Member& member : array.m_Members) {
            result.m_Members.push_back(AssessContainerMember(array, member, use));
        }
        return result;
    }
    const Level& level = FindLevel(sysfs.m_Level.empty() ? array.m_Level : sysfs.m_Level);
    result.m_Level = level.m_Value;
    result.m_IsRedundant = level.m_Spared != 0;
    if (array.m_State != ArrayState::INACTIVE) {
        result.m_MissingDrives = CountMissing(array);
    }
    AssessStatus(array, sysfs, level, result);

    const bool isAnyMissing = result.m_MissingDrives != 0;
    const std::set<std::string> outOfDate = FindOutOfDate(array, sysfs);
    for (const Member& member : array.m_Members) {
        const bool isOutOfDate = outOfDate.count(member.m_Name) != 0;
        MemberAssessment& assessed =
            result.m_Members.emplace_back(AssessMember(array, member, sysfs, isOutOfDate, isAnyMissing));
        if (result.m_Status == Value::UNKNOWN && assessed.m_Status == Value::OPERATIONAL) {
            assessed.m_Status = Value::UNKNOWN;
        }
    }
    result.m_Activity = FindActivity(array, sysfs, !outOfDate.empty() && isAnyMissing);
    return result;
}

}  // namespace mdraid
