// SPDX-License-Identifier: Apache-2.0
// The time of a text report: "Fri Feb 13 23:31:30 2009 UTC".

#include <cstdio>
#include <ctime>
#include <string>

#include "report_builder.h"

namespace PI {

namespace {

struct Zone {
    std::string_view m_Name;
    int m_Minutes;  ///< east of Greenwich
};
// Abbreviations in the IANA time zone data with one offset only.
constexpr Zone ZONES[] = {
    {"UTC", 0},    {"GMT", 0},    {"WET", 0},    {"WEST", 60},   {"CET", 60},    {"CEST", 120}, {"EET", 120},
    {"EEST", 180}, {"MSK", 180},  {"EST", -300}, {"EDT", -240},  {"CDT", -300},  {"MST", -420}, {"MDT", -360},
    {"PST", -480}, {"PDT", -420}, {"JST", 540},  {"KST", 540},   {"AEST", 600},  {"AEDT", 660}, {"NZST", 720},
    {"NZDT", 780}, {"SAST", 120}, {"HST", -600}, {"AKST", -540}, {"AKDT", -480},
};

/// Minutes of "CET", "+03" or "-0330".
bool ReadZone(std::string_view name, int& minutes) {
    for (const Zone& zone : ZONES) {
        if (zone.m_Name == name) {
            minutes = zone.m_Minutes;
            return true;
        }
    }
    const bool isSigned = !name.empty() && (name[0] == '+' || name[0] == '-');
    if (!isSigned || (name.size() != 3 && name.size() != 5) ||
        name.substr(1).find_first_not_of("0123456789") != std::string_view::npos) {
        return false;
    }
    const auto digit = [name](std::size_t index) { return index < name.size() ? name[index] - '0' : 0; };
    minutes = (digit(1) * 10 + digit(2)) * 60 + digit(3) * 10 + digit(4);
    minutes = name[0] == '-' ? -minutes : minutes;
    return true;
}

}  // namespace

std::int64_t ReadReportTime(std::string_view text) {
    static constexpr std::string_view MONTHS = "JanFebMarAprMayJunJulAugSepOctNovDec";
    char month[4] = {};
    char zone[8] = {};
    std::tm time = {};
    int minutes = 0;
    // NOLINTNEXTLINE(cert-err34-c): the widths keep the numbers in range
    if (std::sscanf(std::string(text).c_str(), "%*3s %3s %2d %2d:%2d:%2d %4d %7s", month, &time.tm_mday,
                    &time.tm_hour, &time.tm_min, &time.tm_sec, &time.tm_year, zone) != 7 ||
        !ReadZone(zone, minutes)) {
        return 0;
    }
    const std::size_t index = MONTHS.find(month);
    if (index % 3 != 0 || time.tm_year < 1970) {
        return 0;
    }
    time.tm_mon = static_cast<int>(index / 3);
    time.tm_year -= 1900;
    return timegm(&time) - std::int64_t{60} * minutes;
}

}  // namespace PI
