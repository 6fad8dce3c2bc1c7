// SPDX-License-Identifier: Apache-2.0
/// @file
/// Reads the text of /proc/mdstat, the Linux kernel's list of its software RAID arrays.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mdraid {

/// A device that belongs to an array.
struct Member {
    std::string m_Name;                     ///< such as "sda1" or "cciss/c0d0p1"
    std::optional<std::uint32_t> m_Number;  ///< its number within the array, often also that of its slot
    bool m_Faulty = false;
    bool m_Spare = false;
    bool m_WriteMostly = false;
    bool m_Journal = false;
    bool m_Replacement = false;  ///< is being filled to take over another one's slot
};

enum class SyncKind { RESYNC, RECOVERY, RESHAPE, CHECK, OTHER };

enum class SyncState {
    RUNNING,
    DELAYED,  ///< waits for an array that shares a drive with this one
    PENDING,  ///< waits for the first write to the array
    REMOTE,   ///< runs on another node of the cluster
};

/// What the kernel says about a running or waiting synchronisation.
struct Sync {
    SyncKind m_Kind = SyncKind::RESYNC;  ///< of a waiting one RESYNC, whatever it is
    SyncState m_State = SyncState::RUNNING;
    // Of a running one only:
    std::optional<std::uint32_t> m_PerMille;
    std::uint64_t m_DoneKiB = 0;
    std::uint64_t m_TotalKiB = 0;             ///< 0 when not known
    std::optional<std::uint64_t> m_FinishMs;  ///< the kernel's estimate; none while nothing moves
};

enum class ArrayState { ACTIVE, INACTIVE, BROKEN, OTHER };

struct Array {
    std::string m_Name;  ///< such as "md0"
    ArrayState m_State = ArrayState::OTHER;
    bool m_ReadOnly = false;      ///< until the administrator changes it, or until the first write
    bool m_AutoReadOnly = false;  ///< until the first write
    std::string m_Level;          ///< such as "raid5"; an inactive array has one with old kernels only
    std::vector<Member> m_Members;
    std::optional<std::uint64_t> m_SizeKiB;
    std::string m_Metadata;          ///< such as "1.2" or "external:/md127/0"; empty for the oldest format
    std::uint32_t m_ChunkKiB = 0;    ///< 0 where the level has none
    std::uint32_t m_NearCopies = 0;  ///< of a RAID 10: side by side in a stripe; 0 where it has none
    std::uint32_t m_FarCopies = 0;  ///< of a RAID 10: one slot further in another stripe; 0 where it has none
    std::optional<std::uint32_t> m_Slots;  ///< drives it is made for; only levels with redundancy have it
    std::uint32_t m_WorkingSlots = 0;      ///< of these in place and up to date, as the kernel counts them
    std::vector<bool> m_SlotWorking;       ///< for each slot, may contradict the count; may be empty
    std::optional<Sync> m_Sync;
    bool m_IsCut = false;  ///< the text breaks off in it: a synchronisation may be missing
};

/// A place that could not be understood.
struct MdstatError {
    std::size_t m_Line = 0;  ///< from 1
    std::string m_Text;      ///< of a line's length, whatever the list holds
};

struct Mdstat {
    std::vector<Array> m_Arrays;
    std::vector<std::string> m_UnusedDevices;
    std::vector<MdstatError> m_Errors;  ///< in the order of the lines, at most 20; none: all was understood
};

/// Reads the whole text, up to a NUL byte. What cannot be understood is an error and does not affect the
/// rest: an array is left out only if its first line is invalid. Unknown lines and words inside an array are
/// ignored, since newer kernels may add some.
Mdstat ParseMdstat(std::string_view text);

/// @param name such as "recovery" in the list, or "recover" in sync_action below /sys
SyncKind FindSyncKind(std::string_view name);

}  // namespace mdraid
