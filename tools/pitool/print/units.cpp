// SPDX-License-Identifier: Apache-2.0

#include "print/units.h"

#include <algorithm>
#include <charconv>
#include <ctime>
#include <iterator>

namespace pitool {
namespace {

constexpr double HOURS_PER_YEAR = 365.25 * 24;

/// With so many places after the point.
std::string Rounded(double value, int places) {
    char text[64];
    return {text, std::to_chars(text, std::end(text), value, std::chars_format::fixed, places).ptr};
}

/// Years as ranges need them, without the unit: tenths below ten.
std::string YearsText(std::uint64_t hours) {
    const double years = static_cast<double>(hours) / HOURS_PER_YEAR;
    return Rounded(years, years < 9.95 ? 1 : 0);
}

}  // namespace

std::string SizeText(std::uint64_t bytes) {
    constexpr const char* UNITS[] = {" bytes", " kB", " MB", " GB", " TB", " PB"};
    constexpr std::size_t TERABYTES = 4;
    if (bytes == 0) {
        return "";
    }
    auto value = static_cast<double>(bytes);
    std::size_t unit = 0;
    for (; value >= 999.5 && unit + 1 < std::size(UNITS); ++unit) {
        value /= 1000;
    }
    std::string text = Rounded(value, unit >= TERABYTES ? 2 : value < 99.95 ? 1 : 0);
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        text.erase(text.find_last_not_of('.') + 1);
    }
    return text + UNITS[unit];
}

std::string AgeText(std::uint64_t hours) {
    return hours < 24                                         ? std::to_string(hours) + " h"
           : static_cast<double>(hours) < HOURS_PER_YEAR / 10 ? std::to_string(hours / 24) + " d"
                                                              : YearsText(hours) + " y";
}

std::string LifeText(const PI::CWearForecast& forecast) {
    constexpr auto LONGEST = static_cast<std::uint64_t>(30 * HOURS_PER_YEAR);
    if (forecast.GetState() == PI::WearForecastState::WORN) {
        return "worn";
    }
    if (!forecast.GetLow()) {
        return "-";
    }
    const std::uint64_t low = *forecast.GetLow();
    const std::uint64_t hours = forecast.GetHours().value_or(low);
    const std::uint64_t high = forecast.GetHigh().value_or(UINT64_MAX);
    const std::string text =
        (hours > LONGEST || !forecast.GetHours() ? "> " : "") + YearsText(std::min(hours, LONGEST)) + " y";
    return low >= LONGEST || !forecast.GetHours()
               ? text
               : text + " (" + YearsText(low) + "-" + (high <= LONGEST ? YearsText(high) : "") + ")";
}

const char* BasisText(PI::_WEAR_FORECAST_BASIS basis) {
    constexpr const char* WORDS[] = {"", "age", "recent pace", "bytes written"};
    return WordOf(WORDS, basis);
}

std::string TimeText(std::int64_t seconds) {
    constexpr std::size_t LENGTH = 20;  // with a year of four digits
    const std::time_t time = seconds;
    std::tm utc{};
    char text[32];
    return seconds != 0 && gmtime_r(&time, &utc) != nullptr &&
                   std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &utc) == LENGTH
               ? text
               : "";
}

}  // namespace pitool
