// SPDX-License-Identifier: Apache-2.0
/// @file
/// Capacities, ages, times and other figures as people read them.
#pragma once

#include <pi/wear_forecast.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace pitool {

/// The word at a number's place in a list; empty where the list ends before.
template <std::size_t Size>
const char* WordOf(const char* const (&words)[Size], std::int32_t number) {
    return number >= 0 && static_cast<std::size_t>(number) < Size ? words[number] : "";
}

/// A capacity as makers print it: "960 GB", "1.92 TB"; empty for 0.
std::string SizeText(std::uint64_t bytes);

/// Power-on time: "3.4 y", "25 d" below a tenth of a year, "5 h" below a day.
std::string AgeText(std::uint64_t hours);

/// Time left with its range: "4.2 y (1.9-7.5)", "4.2 y (1.9-)" where the range is open; "> 3.1 y" where the
/// wear stands still; "worn"; "-" without a forecast. Nothing above 30 years is told apart (judgement: no
/// drive runs that long).
std::string LifeText(const PI::CWearForecast& forecast);

/// What a forecast rests on: "age", "recent pace", "bytes written"; empty where there is none.
const char* BasisText(PI::_WEAR_FORECAST_BASIS basis);

/// "2031-05-17T08:30:00Z", ISO 8601, of seconds since 1970 UTC; empty for 0 and after the year 9999.
std::string TimeText(std::int64_t seconds);

}  // namespace pitool
