// SPDX-License-Identifier: Apache-2.0
// Finds out what an input is that should be smartctl's.

#include <algorithm>
#include <iterator>

#include "gunzip.h"
#include "smartctl_readers.h"

namespace PI {

namespace {

struct Reason {
    std::string_view m_Part;
    const char* m_Reason;
};
// What a message holds, in the words of RELEASE_7_0 to 7_5; the first that fits counts.
constexpr Reason REASONS[] = {
    {" mode, exit(", "a drive in standby, which was not woken"},
    {"STANDBY", "a drive in standby, which was not woken"},
    {"Permission denied", "permission denied: smartctl needs the rights of root"},
    {"Operation not permitted", "permission denied: smartctl needs the rights of root"},
    {"nknown device type", "an unknown device type was asked for"},
    {"Unable to detect device type", "smartctl does not know the type of the device"},
    {"Unknown USB bridge", "smartctl does not know the USB bridge"},
    {"try adding '-d", "a volume of a RAID controller, which smartctl asks for its drives with -d"},
    {"please try adding", "a volume of a RAID controller, which smartctl asks for its drives with -d"},
    {"No such device", "no such device"},
    {"No such file or directory", "no such device"},
};

bool IsUTF16(std::string_view text) {
    const std::string_view begin = text.substr(0, 2);
    return begin == "\xFF\xFE" || begin == "\xFE\xFF" ||
           (text.size() >= 2 && (text[0] == '\0') != (text[1] == '\0'));
}

bool HasLine(std::string_view text, std::string_view begin) {
    return text.substr(0, begin.size()) == begin ||
           text.find("\n" + std::string(begin)) != std::string_view::npos;
}

void ReadPlain(std::string_view text, SmartctlResults& results) {
    constexpr std::string_view UTF8_MARK = "\xEF\xBB\xBF";
    if (IsUTF16(text)) {
        results.m_Refusals.emplace_back("a text in UTF-16; reports are read in UTF-8");
        return;
    }
    if (text.substr(0, UTF8_MARK.size()) == UTF8_MARK) {
        text.remove_prefix(UTF8_MARK.size());
    }
    const std::size_t first = text.find_first_not_of(JSON_BLANKS);
    if (first == std::string_view::npos) {
        results.m_Refusals.emplace_back("the text is empty", 1, 1);
        return;
    }
    const std::size_t json = FindJson(text);
    const std::string_view before = text.substr(0, json);  // all of it where there is none
    if (HasLine(before, "json_format_version:")) {
        results.m_Refusals.emplace_back("a report as YAML; read are JSON (--json) and text");
    } else if (json != 0 && HasLine(text, "json = {};")) {
        results.m_Refusals.emplace_back(
            "a report as assignments (--json=g); read are JSON (--json) and text");
    } else if (json != std::string_view::npos && before.find("=== START OF ") == std::string_view::npos) {
        ReadSmartctlJson(std::string(text), results);
    } else {
        ReadSmartctlText(text, results);
    }
    if (results.m_Drives.empty() && results.m_Refusals.empty()) {
        results.m_Refusals.emplace_back(NO_REPORT);
    }
}

}  // namespace

Place PlaceCounter::At(std::size_t offset) {
    for (; m_Offset < offset; ++m_Offset) {
        if (m_Text[m_Offset] == '\n') {
            ++m_Line;
            m_LineBegin = m_Offset + 1;
        }
    }
    return {m_Line, m_Offset - m_LineBegin + 1};
}

std::size_t FindJson(std::string_view text, std::size_t from) {
    // A brace before a key, or a bracket before a brace: words of other programs hold others. After a
    // document also a brace that follows directly, and either at the end: a document that is broken.
    const std::size_t follower =
        from != 0 ? text.find_first_not_of(JSON_BLANKS, from) : std::string_view::npos;
    for (std::size_t start = text.find_first_of("{[", from); start != std::string_view::npos;
         start = text.find_first_of("{[", start + 1)) {
        const std::size_t next = text.find_first_not_of(JSON_BLANKS, start + 1);
        if (next == std::string_view::npos) {
            return from != 0 || text.find_first_not_of(JSON_BLANKS) == start ? start : next;
        }
        const std::string_view wanted = text[start] == '{' ? "\"}" : "{[]";
        if (wanted.find(text[next]) != std::string_view::npos || (text[start] == '{' && start == follower)) {
            return start;
        }
    }
    return std::string_view::npos;
}

const char* FindReason(std::string_view message) {
    const auto* reason = std::find_if(std::begin(REASONS), std::end(REASONS), [message](const Reason& row) {
        return message.find(row.m_Part) != std::string_view::npos;
    });
    return reason != std::end(REASONS) ? reason->m_Reason : nullptr;
}

void ReadSmartctl(const char* text, std::size_t length, std::vector<CDriveReport>& drives,
                  std::vector<CReportRefusal>& refusals) {
    const std::string_view given(length != 0 ? text : "", length);
    SmartctlResults results;
    std::string unpacked;
    const char* damage = IsGzip(given) ? Gunzip(given, unpacked) : nullptr;
    if (damage != nullptr) {
        results.m_Refusals.emplace_back(damage);
    } else {
        ReadPlain(IsGzip(given) ? std::string_view(unpacked) : given, results);
    }
    drives.reserve(drives.size() + results.m_Drives.size());
    refusals.reserve(refusals.size() + results.m_Refusals.size());
    std::move(results.m_Drives.begin(), results.m_Drives.end(), std::back_inserter(drives));
    std::move(results.m_Refusals.begin(), results.m_Refusals.end(), std::back_inserter(refusals));
}

}  // namespace PI
