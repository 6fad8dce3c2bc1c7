// SPDX-License-Identifier: Apache-2.0
// Compares the forecasts of drives' wear with what came.
//
// Reads lines of JSON, one a drive, from the standard input: {"drive": a hexadecimal text, "readings":
// [...]}, a reading with "hours", "firmware" and the wear as "statistics" {"7:8": [name, value]} or "health"
// {"percentage_used", "data_units_written"}. Drives whose text begins with an odd digit are the half that no
// constant was taken from.
#include <pi/wear_forecast.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <iostream>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace {

using Json = nlohmann::json;
using PI::CWearForecast;
using PI::CWearReading;

constexpr double NEVER = std::numeric_limits<double>::infinity();

CWearReading Decode(const Json& json) {
    CWearReading reading;
    const auto hours = json.find("hours");
    if (hours != json.end() && hours->is_number()) {
        reading.SetPowerOnHours(hours->get<std::uint64_t>());
    }
    const Json wear = json.value(Json::json_pointer("/statistics/7:8/1"),
                                 json.value(Json::json_pointer("/health/percentage_used"), Json()));
    if (wear.is_number() && wear != 255) {  // 255 may be more, or no figure at all
        reading.SetWear(wear.get<std::uint32_t>());
    }
    reading.SetFirmware(json.value("firmware", ""));
    return reading;
}

struct Outcome {
    CWearForecast m_Forecast;
    double
        m_Truth;  // hours until 100 percent at the pace from the latest reading given to the drive's last one
};

/// What was forecast from the first readings of a drive, and what came; empty where nothing could be expected
/// to come.
std::vector<Outcome> Compare(const std::vector<CWearReading>& readings, std::size_t given) {
    if (readings.size() <= given) {
        return {};
    }
    const CWearReading& latest = readings[given - 1];
    const double hours = static_cast<double>(*latest.GetPowerOnHours());
    const double wear = *latest.GetWear();
    const double span = static_cast<double>(*readings.back().GetPowerOnHours()) - hours;
    if (wear < 3 || wear > 99 || span <= 0 || (wear + 0.5) / hours * span < 3) {
        return {};
    }
    const double growth = *readings.back().GetWear() - wear;
    return {{CWearForecast({readings.begin(), readings.begin() + static_cast<std::ptrdiff_t>(given)}),
             growth > 0 ? (100 - wear) * span / growth : NEVER}};
}

double Quantile(const std::vector<double>& sorted, double share) {
    return sorted.empty() ? 0
                          : sorted[static_cast<std::size_t>(share * static_cast<double>(sorted.size() - 1))];
}

void Print(const char* drives, std::size_t given, const std::vector<Outcome>& outcomes) {
    std::size_t estimated = 0;
    std::size_t close = 0;
    std::size_t inside = 0;
    std::vector<double> ratios;
    for (const Outcome& outcome : outcomes) {
        const CWearForecast& forecast = outcome.m_Forecast;
        if (forecast.GetLow().has_value()) {
            const double high =
                forecast.GetHigh().has_value() ? static_cast<double>(*forecast.GetHigh()) : NEVER;
            inside += static_cast<double>(*forecast.GetLow()) <= outcome.m_Truth && outcome.m_Truth <= high;
        }
        if (forecast.GetHours().has_value()) {
            const double ratio = static_cast<double>(*forecast.GetHours()) / outcome.m_Truth;
            ++estimated;
            close += 0.5 <= ratio && ratio <= 2;
            ratios.push_back(ratio);
        }
    }
    std::sort(ratios.begin(), ratios.end());
    const auto percent = [](std::size_t part, std::size_t whole) {
        return whole == 0 ? 0 : 100.0 * static_cast<double>(part) / static_cast<double>(whole);
    };
    std::printf("%-10s %8zu %7zu %9.1f %12.1f %12.1f %9.1f   %.2f %.2f %.2f %.2f %.2f\n", drives, given,
                outcomes.size(), percent(estimated, outcomes.size()), percent(close, estimated),
                percent(close, outcomes.size()), percent(inside, outcomes.size()), Quantile(ratios, 0.1),
                Quantile(ratios, 0.25), Quantile(ratios, 0.5), Quantile(ratios, 0.75), Quantile(ratios, 0.9));
}

void Evaluate() {
    std::vector<Outcome> halves[2][2];  // by half and readings given
    for (std::string line; std::getline(std::cin, line);) {
        const Json drive = Json::parse(line);
        std::vector<CWearReading> readings;
        for (const Json& json : drive.at("readings")) {
            const CWearReading reading = Decode(json);
            if (reading.GetPowerOnHours().has_value() && reading.GetWear().has_value()) {
                readings.push_back(reading);
            }
        }
        const bool isOther =
            std::stoul(drive.at("drive").get<std::string>().substr(0, 1), nullptr, 16) % 2 == 1;
        for (const std::size_t given : {std::size_t{1}, std::size_t{2}}) {
            for (const Outcome& outcome : Compare(readings, given)) {
                halves[isOther ? 1 : 0][given - 1].push_back(outcome);
            }
        }
    }
    std::printf("%-10s %8s %7s %9s %12s %12s %9s   %s\n", "half", "readings", "drives", "forecast%",
                "factor2%", "factor2-all%", "inside%", "estimate/truth at 10 25 50 75 90%");
    for (const std::size_t given : {std::size_t{1}, std::size_t{2}}) {
        std::vector<Outcome> all = halves[0][given - 1];
        all.insert(all.end(), halves[1][given - 1].begin(), halves[1][given - 1].end());
        Print("constants", given, halves[0][given - 1]);
        Print("other", given, halves[1][given - 1]);
        Print("both", given, all);
    }
}

}  // namespace

int main() {
    try {
        Evaluate();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "evaluate_forecast: %s\n", error.what());
        return 1;
    }
    return 0;
}
