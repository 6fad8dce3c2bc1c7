// SPDX-License-Identifier: Apache-2.0

#include "assessment.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

namespace mdraid {
namespace {

namespace Value = PI::PropertyValue;
using PI::_PROPERTY_VALUE;

// How many slots a level can do without; ALL_BUT_ONE for mirrors of everything, BY_LAYOUT for RAID 10.
constexpr int ALL_BUT_ONE = -1;
constexpr int BY_LAYOUT = -2;

struct Level {
    std::string_view m_Name;
    _PROPERTY_VALUE m_Value;
    int m_Spared;
};

constexpr Level LEVELS[] = {
    {"linear", Value::CONCAT, 0},         {"raid0", Value::RAID0, 0}, {"raid1", Value::RAID1, ALL_BUT_ONE},
    {"raid4", Value::RAID4, 1},           {"raid5", Value::RAID5, 1}, {"raid6", Value::RAID6, 2},
    {"raid10", Value::RAID10, BY_LAYOUT},
};
constexpr Level OTHER_LEVEL = {"", Value::UNKNOWN, 0};

const Level& FindLevel(std::string_view name) {
    for (const Level& level : LEVELS) {
        if (level.m_Name == name) {
            return level;
        }
    }
    return OTHER_LEVEL;
}

bool TakesASlot(const Member& member) {
    return !member.m_Faulty && !member.m_Spare && !member.m_Journal && !member.m_Replacement;
}

/// The slot of a member. /proc/mdstat gives it only for the drives that the array began with.
std::optional<std::uint32_t> FindSlot(const Array& array, const Member& member, const SysfsArray& sysfs) {
    const auto found = sysfs.m_Members.find(member.m_Name);
    if (found != sysfs.m_Members.end()) {
        return found->second.m_Slot;
    }
    if (TakesASlot(member) && member.m_Number < array.m_Slots.value_or(UINT32_MAX)) {
        return member.m_Number;
    }
    return std::nullopt;
}

/// The members that are being filled, or wait for it, by name.
std::set<std::string> FindOutOfDate(const Array& array, const SysfsArray& sysfs) {
    std::set<std::string> outOfDate;
    if (array.m_SlotWorking.empty()) {
        return outOfDate;
    }
    std::uint32_t workingElsewhere = array.m_WorkingSlots;
    std::vector<std::pair<std::uint32_t, std::string>> withoutSlot;
    for (const Member& member : array.m_Members) {
        const std::optional<std::uint32_t> slot = FindSlot(array, member, sysfs);
        if (!TakesASlot(member)) {
            continue;
        }
        if (!slot.has_value() || *slot >= array.m_SlotWorking.size()) {
            withoutSlot.emplace_back(member.m_Number, member.m_Name);
        } else if (!array.m_SlotWorking[*slot]) {
            outOfDate.insert(member.m_Name);
        } else if (workingElsewhere > 0) {
            --workingElsewhere;
        }
    }
    // Numbers ascend: those that came last are the ones that are not ready yet.
    std::sort(withoutSlot.begin(), withoutSlot.end());
    for (std::size_t i = workingElsewhere; i < withoutSlot.size(); ++i) {
        outOfDate.insert(withoutSlot[i].second);
    }
    return outOfDate;
}

bool IsRebuilding(const Array& array) {
    return array.m_Sync.has_value() && array.m_Sync->m_Kind == SyncKind::RECOVERY &&
           array.m_Sync->m_State == SyncState::RUNNING;
}

MemberAssessment AssessMember(const Array& array, const Member& member, const SysfsArray& sysfs,
                              bool isOutOfDate) {
    const std::optional<std::uint32_t> slot = FindSlot(array, member, sysfs);
    MemberAssessment result;
    result.m_Role = slot.has_value() ? "slot " + std::to_string(*slot) : "";
    if (member.m_Faulty) {
        result.m_Status = Value::FAILED;
        result.m_Role = "failed";
    } else if (member.m_Journal) {
        result.m_Status = Value::JOURNALING;
        result.m_Role = "journal";
    } else if (array.m_State == ArrayState::INACTIVE) {
        result.m_Status = Value::OFFLINE;  // all members of such an array are listed as spares
        result.m_Role = "not in use";
    } else if (member.m_Spare) {
        result.m_Status = Value::DEDICATED_HOTSPARE;
        result.m_Role = "spare";
    } else if (member.m_Replacement) {
        result.m_Status = IsRebuilding(array) ? Value::COPY_BACK : Value::OPERATIONAL;
        result.m_Role = slot.has_value() ? "replacement for " + result.m_Role : "replacement";
    } else if (isOutOfDate) {
        result.m_Status = IsRebuilding(array) ? Value::REBUILDING : Value::REBUILD_PAUSED;
        result.m_Role = slot.has_value() ? "rebuilding " + result.m_Role : "rebuilding";
    } else {
        result.m_Status = Value::OPERATIONAL;
        result.m_Role = slot.has_value() ? result.m_Role : "in use";
    }
    if (member.m_WriteMostly) {
        result.m_Role += ", write-mostly";
    }
    return result;
}

_PROPERTY_VALUE FindActivity(const Array& array, bool rebuilds) {
    struct Row {
        SyncKind m_Kind;
        _PROPERTY_VALUE m_Running;
        _PROPERTY_VALUE m_Waiting;
    };
    constexpr Row ROWS[] = {
        {SyncKind::RESYNC, Value::INITIALIZING, Value::INITIALIZATION_PAUSED},
        {SyncKind::RECOVERY, Value::REBUILDING, Value::REBUILD_PAUSED},
        {SyncKind::RESHAPE, Value::MIGRATING, Value::MIGRATION_PAUSED},
        {SyncKind::CHECK, Value::CHECKING, Value::CHECK_PAUSED},
    };
    if (!array.m_Sync.has_value()) {
        return Value::IDLE;
    }
    const bool waits =
        array.m_Sync->m_State == SyncState::DELAYED || array.m_Sync->m_State == SyncState::PENDING;
    if (waits && rebuilds) {  // the kernel calls everything that waits a resync
        return Value::REBUILD_PAUSED;
    }
    for (const Row& row : ROWS) {
        if (row.m_Kind == array.m_Sync->m_Kind) {
            return waits ? row.m_Waiting : row.m_Running;
        }
    }
    return Value::IDLE;
}

/// Whether a RAID 10 has lost all copies of some data. Only the layout with copies side by side is looked
/// into; of the others the kernel tells when they are broken.
bool HasLostAllCopies(const Array& array) {
    const std::uint32_t copies = array.m_NearCopies;
    const std::size_t slots = array.m_SlotWorking.size();
    if (copies == 0 || slots % copies != 0) {
        return false;
    }
    for (std::size_t first = 0; first < slots; first += copies) {
        const auto begin = array.m_SlotWorking.begin() + static_cast<std::ptrdiff_t>(first);
        if (std::find(begin, begin + static_cast<std::ptrdiff_t>(copies), true) ==
            begin + static_cast<std::ptrdiff_t>(copies)) {
            return true;
        }
    }
    return false;
}

_PROPERTY_VALUE StatusOfLoss(const Array& array, const Level& level, std::uint32_t missing) {
    if (level.m_Value == Value::UNKNOWN) {
        return array.m_WorkingSlots == 0 ? Value::FAILED : Value::DEGRADED;
    }
    std::uint32_t spared = static_cast<std::uint32_t>(std::max(level.m_Spared, 0));
    if (level.m_Spared == ALL_BUT_ONE) {
        spared = *array.m_Slots == 0 ? 0 : *array.m_Slots - 1;
    } else if (level.m_Spared == BY_LAYOUT) {
        return HasLostAllCopies(array) ? Value::FAILED : Value::DEGRADED;
    }
    if (missing > spared) {
        return Value::FAILED;
    }
    return missing == spared ? Value::DEGRADED : Value::PARTIALLY_DEGRADED;
}

std::string Count(std::uint32_t count, std::uint32_t total) {
    return std::to_string(count) + " of " + std::to_string(total) + (total == 1 ? " drive" : " drives");
}

void AssessStatus(const Array& array, const SysfsArray& sysfs, const Level& level, Assessment& result) {
    if (array.m_State == ArrayState::INACTIVE) {
        result.m_Status = Value::OFFLINE;
        result.m_Reason = "it is assembled but not started";
        return;
    }
    const auto failed = static_cast<std::uint32_t>(std::count_if(
        array.m_Members.begin(), array.m_Members.end(), [](const Member& m) { return m.m_Faulty; }));
    const bool isBroken = array.m_State == ArrayState::BROKEN || sysfs.m_State == "broken";
    if (isBroken || (!result.m_IsRedundant && failed != 0)) {
        result.m_Status = Value::FAILED;
        result.m_Reason = failed == 0
                              ? "the kernel has given it up"
                              : Count(failed, static_cast<std::uint32_t>(array.m_Members.size())) + " failed";
    } else if (result.m_MissingDrives != 0) {
        result.m_Status = StatusOfLoss(array, level, result.m_MissingDrives);
        result.m_Reason = Count(result.m_MissingDrives, *array.m_Slots) + " missing or not up to date";
    } else {
        result.m_Status = Value::OPERATIONAL;
    }
}

}  // namespace

bool IsContainer(const Array& array, const SysfsArray& sysfs) {
    constexpr std::string_view EXTERNAL = "external:";
    const std::string& metadata = array.m_Metadata;
    const bool isExternal = metadata.compare(0, EXTERNAL.size(), EXTERNAL) == 0;
    // An array proper names its container: "external:/md127/0".
    return sysfs.m_Level == "container" || (isExternal && metadata.compare(EXTERNAL.size(), 1, "/") != 0 &&
                                            metadata.compare(EXTERNAL.size(), 1, "-") != 0);
}

Assessment Assess(const Array& array, const SysfsArray& sysfs) {
    Assessment result;
    const Level& level = FindLevel(sysfs.m_Level.empty() ? array.m_Level : sysfs.m_Level);
    result.m_Level = level.m_Value;
    result.m_IsRedundant = level.m_Spared != 0;
    if (array.m_State != ArrayState::INACTIVE && array.m_Slots.has_value()) {
        result.m_MissingDrives = *array.m_Slots - array.m_WorkingSlots;
    }
    AssessStatus(array, sysfs, level, result);

    const std::set<std::string> outOfDate = FindOutOfDate(array, sysfs);
    for (const Member& member : array.m_Members) {
        result.m_Members.push_back(AssessMember(array, member, sysfs, outOfDate.count(member.m_Name) != 0));
    }
    result.m_Activity = FindActivity(array, !outOfDate.empty());
    return result;
}

}  // namespace mdraid
