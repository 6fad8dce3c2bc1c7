// SPDX-License-Identifier: Apache-2.0

#include "layout_units.h"

#include "figure.h"

#include <cstdio>
#include <limits>

namespace pitool {
namespace {

struct UnitRow {
    PI::_UNITS m_Unit;
    const char* m_Name;
    std::uint64_t m_Bytes;
};

constexpr UnitRow UNITS[] = {
    {PI::Units::BYTES, "bytes", 1},
    {PI::Units::KILOBYTES, "kibibytes", std::uint64_t{1} << 10U},
    {PI::Units::MEGABYTES, "mebibytes", std::uint64_t{1} << 20U},
    {PI::Units::GIGABYTES, "gibibytes", std::uint64_t{1} << 30U},
    {PI::Units::TERABYTES, "tebibytes", std::uint64_t{1} << 40U},
    {PI::Units::PETABYTES, "pebibytes", std::uint64_t{1} << 50U},
};

const UnitRow* FindUnit(PI::_UNITS unit) {
    for (const UnitRow& row : UNITS) {
        if (row.m_Unit == unit) {
            return &row;
        }
    }
    return nullptr;
}

/// More bytes than 64 bits count.
std::string HugeSize(std::uint64_t size, const UnitRow& unit) {
    constexpr UnitRow LARGEST = UNITS[std::size(UNITS) - 1];
    const long double scaled = static_cast<long double>(size) * static_cast<long double>(unit.m_Bytes) /
                               static_cast<long double>(LARGEST.m_Bytes);
    char text[64];
    std::snprintf(text, sizeof text, "%.2Lf %s", scaled, LARGEST.m_Name);
    return text;
}

}  // namespace

std::string UnitName(PI::_UNITS unit) {
    const UnitRow* row = FindUnit(unit);
    return row != nullptr ? row->m_Name : "";
}

std::string ScaledSize(std::uint64_t size, PI::_UNITS unit) {
    const UnitRow* row = FindUnit(unit);
    if (row == nullptr) {
        return "";
    }
    return size > std::numeric_limits<std::uint64_t>::max() / row->m_Bytes ? HugeSize(size, *row)
                                                                           : BytesText(size * row->m_Bytes);
}

std::string SizeText(std::uint64_t size, PI::_UNITS unit) {
    const std::string scaled = ScaledSize(size, unit);
    return std::to_string(size) + (scaled.empty() ? "" : " (" + scaled + ")");
}

}  // namespace pitool
