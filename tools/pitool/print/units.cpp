// SPDX-License-Identifier: Apache-2.0

#include "print/units.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <iterator>

namespace pitool {
namespace {

/// A fraction with as many places after the point as asked for, less the zeros at its end.
std::string ShortFraction(double value, int places) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", places, value);
    std::string fraction = text;
    if (places > 0) {
        fraction.erase(fraction.find_last_not_of('0') + 1);
        fraction.erase(fraction.find_last_not_of('.') + 1);
    }
    return fraction;
}

constexpr double HOURS_PER_YEAR = 365.25 * 24;

/// Years as ranges need them, without the unit: tenths below ten.
std::string YearsText(std::uint64_t hours) {
    constexpr double WHOLE_FROM = 9.95;
    const double years = static_cast<double>(hours) / HOURS_PER_YEAR;
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", years < WHOLE_FROM ? 1 : 0, years);
    return text;
}

}  // namespace

std::string SizeText(std::uint64_t bytes) {
    constexpr const char* UNITS[] = {" bytes", " kB", " MB", " GB", " TB", " PB"};
    constexpr double STEP = 1000;
    constexpr double ROUNDED_UP = 999.5;
    if (bytes == 0) {
        return "";
    }
    auto value = static_cast<double>(bytes);
    std::size_t unit = 0;
    while (value >= ROUNDED_UP && unit + 1 < std::size(UNITS)) {
        value /= STEP;
        ++unit;
    }
    constexpr std::size_t TERABYTES = 4;
    constexpr double THREE_DIGITS = 99.95;
    return ShortFraction(value, unit >= TERABYTES ? 2 : value < THREE_DIGITS ? 1 : 0) + UNITS[unit];
}

std::string AgeText(std::uint64_t hours) {
    constexpr std::uint64_t HOURS_PER_DAY = 24;
    if (hours < HOURS_PER_DAY) {
        return std::to_string(hours) + " h";
    }
    return static_cast<double>(hours) < HOURS_PER_YEAR / 10 ? std::to_string(hours / HOURS_PER_DAY) + " d"
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
    constexpr int FIRST_YEAR = 1900;
    constexpr int LAST = 9999;
    const std::time_t time = seconds;
    std::tm utc{};
    if (seconds == 0 || gmtime_r(&time, &utc) == nullptr || utc.tm_year + FIRST_YEAR < 1000 ||
        utc.tm_year + FIRST_YEAR > LAST) {
        return "";
    }
    char text[32];
    return {text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &utc)};
}

}  // namespace pitool
