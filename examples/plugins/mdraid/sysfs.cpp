// SPDX-License-Identifier: Apache-2.0

#include "sysfs.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <memory>
#include <string_view>
#include <system_error>

namespace mdraid {
namespace {

namespace fs = std::filesystem;

// Far above what the kernel writes, so that a wrong root folder does no harm.
constexpr std::size_t MAX_FILE_SIZE = std::size_t{16} << 20U;

constexpr std::uint64_t SECTOR_SIZE = 512;  // of all sizes in /sys/block, whatever the drive's own is

std::string ReadAttribute(const fs::path& path) {
    std::string error;
    std::string text = ReadTextFile(path, error).value_or("");
    text.erase(std::find(text.begin(), text.end(), '\n'), text.end());
    return text;
}

template <class Number>
std::optional<Number> ReadNumber(const fs::path& path) {
    const std::string text = ReadAttribute(path);
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return number;
}

std::optional<bool> ReadRotational(const fs::path& device) {
    // "block" leads to the drive, or to a partition in the folder of its drive.
    for (const char* const place : {"block/queue/rotational", "block/../queue/rotational"}) {
        if (const auto rotational = ReadNumber<unsigned>(device / place)) {
            return *rotational != 0;
        }
    }
    return std::nullopt;
}

/// The name as a file name: /sys has '!' for '/'. Empty when the name leads out of the folder.
std::string FileName(std::string name) {
    std::replace(name.begin(), name.end(), '/', '!');
    return name == "." || name == ".." ? "" : name;
}

}  // namespace

std::optional<std::string> ReadTextFile(const fs::path& path, std::string& error) {
    std::error_code ignored;
    if (fs::is_fifo(path, ignored)) {
        error = path.string() + ": is no file";  // reading would wait for a writer
        return std::nullopt;
    }
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "re"), &std::fclose);
    std::string text;
    if (file != nullptr) {
        char buffer[4096];
        for (std::size_t count = 0;
             text.size() < MAX_FILE_SIZE && (count = std::fread(buffer, 1, sizeof buffer, file.get())) > 0;) {
            text.append(buffer, count);
        }
    }
    if (file == nullptr || std::ferror(file.get()) != 0) {
        error = path.string() + ": " + std::generic_category().message(errno);
        return std::nullopt;
    }
    return text;
}

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
    if (const auto sectors = ReadNumber<std::uint64_t>(block / "size")) {
        array.m_SizeBytes = *sectors * SECTOR_SIZE;
    }

    constexpr std::string_view MEMBER_PREFIX = "dev-";
    std::error_code error;
    for (fs::directory_iterator entry(md, error), end; !error && entry != end; entry.increment(error)) {
        const std::string folder = entry->path().filename();
        if (folder.compare(0, MEMBER_PREFIX.size(), MEMBER_PREFIX) != 0) {
            continue;
        }
        SysfsMember& member = array.m_Members[folder.substr(MEMBER_PREFIX.size())];
        member.m_Slot = ReadNumber<std::uint32_t>(entry->path() / "slot");
        member.m_SizeKiB = ReadNumber<std::uint64_t>(entry->path() / "size");
        member.m_Errors = ReadNumber<std::uint64_t>(entry->path() / "errors");
        member.m_Rotational = ReadRotational(entry->path());
    }
    return array;
}

std::map<std::string, std::string> ReadArrayNames(const fs::path& root) {
    std::map<std::string, std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(root / "dev/md", error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code linkError;
        const fs::path target = fs::read_symlink(entry->path(), linkError);
        if (linkError) {
            continue;
        }
        const std::string name = entry->path().filename();
        const auto [place, isNew] = names.emplace(target.filename(), name);
        if (!isNew) {
            place->second = std::min(place->second, name);
        }
    }
    return names;
}

}  // namespace mdraid
