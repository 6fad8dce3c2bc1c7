// SPDX-License-Identifier: Apache-2.0

#include "sysfs.h"

#include <fcntl.h>
#include <pi/vocabulary.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include "program.h"

namespace mdraid {
namespace {

namespace fs = std::filesystem;
namespace Value = PI::PropertyValue;

constexpr std::uint64_t SECTOR_SIZE = 512;  // of all sizes in /sys/block, whatever the drive's own is

/// What is in a folder, in alphabetical order; nothing where it cannot be read.
std::vector<fs::path> Entries(const fs::path& folder) {
    std::error_code error;
    std::vector<fs::path> entries;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        entries.push_back(entry->path());
    }
    std::sort(entries.begin(), entries.end());
    return entries;
}

std::string ReadAttribute(const fs::path& path) {
    std::string error;
    std::string text = shared::ReadTextFile(path, error).value_or("");
    text.erase(std::find(text.begin(), text.end(), '\n'), text.end());
    return text;
}

template <class Number>
std::optional<Number> ReadNumber(const fs::path& path) {
    const std::string line = ReadAttribute(path);
    const std::string text = line.substr(0, line.find(" / "));  // of a position that stands before its end
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return number;
}

DriveKind ReadKind(const fs::path& block) {
    DriveKind kind;
    for (const fs::path& drive : {block, block / ".."}) {  // a partition is in the folder of its drive
        std::error_code ignored;
        if (const auto rotational = ReadNumber<unsigned>(drive / "queue/rotational")) {
            kind.m_Medium = *rotational != 0 ? Value::HDD : Value::SSD;
            kind.m_Protocol = ReadAttribute(drive / "device/vendor").substr(0, 4) == "ATA " ? Value::SATA
                              : fs::exists(drive / "device/sas_address", ignored)           ? Value::SAS
                              : fs::exists(drive / "nsid", ignored)                         ? Value::NVME
                                                                                            : Value::EMPTY;
            break;
        }
    }
    return kind;
}

/// Whether udev knows of contents: a file system, a member of something, a table of partitions.
bool HasContents(const fs::path& root, const std::string& number) {
    std::string ignored;
    const std::string text =
        shared::ReadTextFile(root / "run/udev/data" / ("b" + number), ignored).value_or("");
    return text.find("E:ID_FS_TYPE=") != std::string::npos ||
           text.find("E:ID_PART_TABLE_TYPE=") != std::string::npos;
}

/// The name as a file name: /sys has '!' for '/'. Empty when the name leads out of the folder.
std::string FileName(std::string name) {
    std::replace(name.begin(), name.end(), '/', '!');
    return name == "." || name == ".." ? "" : name;
}

}  // namespace

SysfsArray ReadSysfsArray(const fs::path& root, const std::string& name) {
    SysfsArray array;
    const std::string fileName = FileName(name);
    if (fileName.empty()) {
        return array;
    }
    const fs::path block = root / "sys/block" / fileName;
    const fs::path md = block / "md";
    array.m_Level = ReadAttribute(md / "level");
    array.m_State = ReadAttribute(md / "array_state");
    array.m_SyncAction = ReadAttribute(md / "sync_action");
    array.m_SyncDone = ReadNumber<std::uint64_t>(md / "sync_completed").value_or(0);
    array.m_SyncMin = ReadNumber<std::uint64_t>(md / "sync_min").value_or(0);
    array.m_Mismatches = ReadNumber<std::uint64_t>(md / "mismatch_cnt").value_or(0);
    if (const auto sectors = ReadNumber<std::uint64_t>(block / "size")) {
        array.m_SizeBytes = *sectors * SECTOR_SIZE;
    }

    constexpr std::string_view MEMBER_PREFIX = "dev-";
    for (const fs::path& entry : Entries(md)) {
        const std::string folder = entry.filename();
        if (folder.compare(0, MEMBER_PREFIX.size(), MEMBER_PREFIX) != 0) {
            continue;
        }
        SysfsMember& member = array.m_Members[folder.substr(MEMBER_PREFIX.size())];
        member.m_Slot = ReadNumber<std::uint32_t>(entry / "slot");
        member.m_SizeKiB = ReadNumber<std::uint64_t>(entry / "size");
        member.m_Errors = ReadNumber<std::uint64_t>(entry / "errors");
        member.m_Kind = ReadKind(entry / "block");
        std::error_code missing;
        member.m_IsGone = !fs::exists(entry / "block", missing);
    }
    return array;
}

std::map<std::string, std::string> ReadArrayNames(const fs::path& root) {
    std::map<std::string, std::string> names;
    for (const fs::path& entry : Entries(root / "dev/md")) {
        std::error_code error;
        const fs::path target = fs::read_symlink(entry, error);
        if (!error) {
            names.emplace(target.filename(), entry.filename());
        }
    }
    return names;
}

std::vector<FreeDrive> ReadFreeDrives(const fs::path& root) {
    std::string ignored;
    const std::string used = shared::ReadTextFile(root / "proc/mounts", ignored).value_or("") +
                             shared::ReadTextFile(root / "proc/swaps", ignored).value_or("");
    std::vector<FreeDrive> drives;
    for (const fs::path& block : Entries(root / "sys/block")) {
        const std::string name = block.filename();
        std::error_code ignoredError;
        const std::uint64_t sectors = ReadNumber<std::uint64_t>(block / "size").value_or(0);
        bool isFree = sectors != 0 && fs::exists(block / "device", ignoredError) &&
                      ReadAttribute(block / "removable") != "1" && ReadAttribute(block / "ro") != "1" &&
                      fs::is_empty(block / "holders", ignoredError) &&
                      used.find("/dev/" + name + " ") == std::string::npos &&
                      !HasContents(root, ReadAttribute(block / "dev"));
        for (const fs::path& part : isFree ? Entries(block) : std::vector<fs::path>()) {
            isFree = isFree && !fs::exists(part / "partition", ignoredError);
        }
        if (isFree) {
            drives.push_back({name, sectors * SECTOR_SIZE, ReadKind(block)});
        }
    }
    return drives;
}

void WriteArrayAttribute(const fs::path& root, const std::string& name, const std::string& attribute,
                         const std::string& text) {
    const fs::path path = root / "sys/block" / FileName(name) / "md" / attribute;
    const int file = open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    const bool isWritten = file >= 0 && write(file, text.data(), text.size()) >= 0;
    const int reason = errno;
    if (file >= 0) {
        close(file);
    }
    if (!isWritten) {
        throw std::runtime_error(path.string() + " does not take \"" + text +
                                 "\": " + std::generic_category().message(reason));
    }
}

std::string DeviceFile(const std::string& name) {
    const fs::path path(name);
    const bool staysInside = std::none_of(path.begin(), path.end(),
                                          [](const fs::path& part) { return part == "." || part == ".."; });
    return staysInside && !name.empty() ? "/dev/" + name : "";
}

}  // namespace mdraid
