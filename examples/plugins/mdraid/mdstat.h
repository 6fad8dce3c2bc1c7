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
    std::string m_Name;  ///< such as "sda1"
    std::uint32_t m_Number =
        0;  ///< its number within the array; for the drives an array began with also their slot
    bool m_Faulty = false;
    bool m_Spare = false;
    bool m_WriteMostly = false;
    bool m_Journal = false;
    bool m_Replacement = false;  ///< is being filled to take over another one's slot
};

enum class SyncKind { RESYNC, RECOVERY, RESHAPE, CHECK };

enum class SyncState {
    RUNNING,
    DELAYED,  ///< waits for an array that shares a drive with this one
    PENDING,  ///< waits for the first write to the array
    REMOTE,   ///< runs on another node of the cluster
};

/// What the kernel says about a running or waiting synchronisation.
struct Sync {
    SyncKind m_Kind = SyncKind::RESYNC;
    SyncState m_State = SyncState::RUNNING;
    // Of a running one only:
    std::uint32_t m_PerMille = 0;
    std::uint64_t m_DoneKiB = 0;
    std::uint64_t m_TotalKiB = 0;
    std::uint64_t m_SpeedKiBs = 0;  ///< per second
};

enum class ArrayState { ACTIVE, INACTIVE, BROKEN };

struct Array {
    std::string m_Name;  ///< such as "md0"
    ArrayState m_State = ArrayState::ACTIVE;
    bool m_ReadOnly = false;  ///< until told otherwise, or until the first write
    std::string m_Level;      ///< such as "raid5"; empty for an inactive array
    std::vector<Member> m_Members;
    std::optional<std::uint64_t> m_SizeKiB;
    std::string m_Metadata;          ///< such as "1.2" or "external:/md127/0"; empty for the oldest format
    std::uint32_t m_ChunkKiB = 0;    ///< 0 where the level has none
    std::uint32_t m_NearCopies = 0;  ///< of a RAID 10, 0 where it is laid out otherwise
    std::optional<std::uint32_t>
        m_Slots;                       ///< how many drives the array is made for; levels with redundancy only
    std::uint32_t m_WorkingSlots = 0;  ///< how many of them are in place and up to date
    std::vector<bool> m_SlotWorking;   ///< for each slot; may be empty
    std::optional<Sync> m_Sync;
    bool m_Bitmap =
        false;  ///< keeps a list of what has been written, so that a resync after a crash is short
};

/// A place that could not be understood.
struct MdstatError {
    std::size_t m_Line = 0;  ///< from 1
    std::string m_Text;
};

struct Mdstat {
    std::vector<std::string> m_Personalities;
    std::vector<Array> m_Arrays;
    std::vector<std::string> m_UnusedDevices;
    std::vector<MdstatError> m_Errors;  ///< in the order of the lines
};

/// Reads the whole text. An array with an error, or in which the text breaks off, is left out; the others are
/// given. Lines and words inside an array that are not known are passed over: newer kernels may add some.
Mdstat ParseMdstat(std::string_view text);

}  // namespace mdraid
