// SPDX-License-Identifier: Apache-2.0
/// @file
/// Reads what /sys and /dev say about an array beyond /proc/mdstat.
#pragma once

#include <pi/vocabulary.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace mdraid {

/// What kind of drive a device is, or is a partition of.
struct DriveKind {
    PI::_PROPERTY_VALUE m_Medium = PI::PropertyValue::EMPTY;    ///< HDD or SSD; EMPTY when not known
    PI::_PROPERTY_VALUE m_Protocol = PI::PropertyValue::EMPTY;  ///< SATA, SAS or NVME; EMPTY when not known
};

/// A member as /sys describes it.
struct SysfsMember {
    std::optional<std::uint32_t> m_Slot;     ///< none for spares and failed drives
    std::optional<std::uint64_t> m_SizeKiB;  ///< what the array uses of it
    std::optional<std::uint64_t> m_Errors;   ///< read errors that were corrected
    DriveKind m_Kind;
    bool m_IsGone = false;  ///< the machine has the drive no more; the kernel notices with the next access
};

/// A drive that nothing uses.
struct FreeDrive {
    std::string m_Name;
    std::uint64_t m_SizeBytes = 0;
    DriveKind m_Kind;
};

/// An array as /sys describes it. What cannot be read stays empty: older kernels and captured trees have
/// less.
struct SysfsArray {
    std::string m_Level;       ///< also of an inactive array
    std::string m_State;       ///< such as "clean", "readonly", "broken"
    std::string m_SyncAction;  ///< such as "idle", "check", "repair"
    std::optional<std::uint64_t> m_SizeBytes;
    std::uint64_t m_SyncDone = 0;                  ///< sectors that a synchronisation has certainly done
    std::uint64_t m_SyncMin = 0;                   ///< sector at which the next check begins
    std::uint64_t m_Mismatches = 0;                ///< sectors that the latest check found to differ
    std::map<std::string, SysfsMember> m_Members;  ///< by the names that /proc/mdstat gives
};

/// Reads root/sys/block/NAME. The root folder is "/" for the machine itself.
SysfsArray ReadSysfsArray(const std::filesystem::path& root, const std::string& name);

/// The names that the links in root/dev/md give arrays, by array: {"md127", "Home Data"}. A link that was
/// abandoned because of a home host's prefix or a clash of names counts as well; of several, the first in
/// alphabetical order is used.
std::map<std::string, std::string> ReadArrayNames(const std::filesystem::path& root);

/// Whole drives of root/sys/block without partitions, users, a mount, or contents that udev knows of.
std::vector<FreeDrive> ReadFreeDrives(const std::filesystem::path& root);

/// Writes to root/sys/block/NAME/md/ATTRIBUTE.
/// @throws std::runtime_error saying what the kernel does not accept
void WriteArrayAttribute(const std::filesystem::path& root, const std::string& name,
                         const std::string& attribute, const std::string& text);

/// The file of a device that /proc/mdstat names; empty when the name leads out of /dev.
std::string DeviceFile(const std::string& name);

}  // namespace mdraid
