// SPDX-License-Identifier: Apache-2.0
/// @file
/// Reads what /sys and /dev tell about an array beyond /proc/mdstat.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace mdraid {

/// A member as /sys describes it.
struct SysfsMember {
    std::optional<std::uint32_t> m_Slot;     ///< none for spares and failed drives
    std::optional<std::uint64_t> m_SizeKiB;  ///< what the array uses of it
    std::optional<std::uint64_t> m_Errors;   ///< read errors that were corrected
    std::optional<bool> m_Rotational;
};

/// An array as /sys describes it. What cannot be read stays empty: older kernels and captured trees have
/// less.
struct SysfsArray {
    std::string m_Level;       ///< also of an inactive array
    std::string m_State;       ///< such as "clean", "readonly", "broken"
    std::string m_SyncAction;  ///< such as "idle", "check", "repair"
    std::optional<std::uint64_t> m_SizeBytes;
    std::map<std::string, SysfsMember> m_Members;  ///< by the names that /proc/mdstat gives
};

/// Reads root/sys/block/NAME. The root folder is "/" for the machine itself.
SysfsArray ReadSysfsArray(const std::filesystem::path& root, const std::string& name);

/// The names that the links in root/dev/md give arrays, by array: {"md127", "Home Data"}. A link that was
/// given up for a home host's prefix or a clash of names counts as well; of several the first in alphabetical
/// order is taken.
std::map<std::string, std::string> ReadArrayNames(const std::filesystem::path& root);

/// A whole file.
/// @param error out: why it could not be read, when the result is empty
std::optional<std::string> ReadTextFile(const std::filesystem::path& path, std::string& error);

}  // namespace mdraid
