// SPDX-License-Identifier: Apache-2.0

#include "progress_curves.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>

namespace bench {

namespace {

constexpr double HOUR = 3600;

/// Numbers that a seed gives the same on every machine: the distributions of the standard library do not.
class Random {
public:
    explicit Random(std::uint64_t seed) : m_Engine(seed) {}

    double Between(double low, double high) {
        return low + (high - low) * static_cast<double>(m_Engine() >> 11U) / 9007199254740992.0;
    }
    double Exponential(double mean) { return -mean * std::log(1 - Between(0, 1)); }
    double Normal() {
        return std::sqrt(2 * Exponential(1)) * std::cos(Between(0, 2 * 3.14159265358979323846));
    }

private:
    std::mt19937_64 m_Engine;
};

/// Share of the full speed that load leaves at a time.
class Load {
public:
    Load(Scenario scenario, double fullSpeedSeconds, Random& random)
        : m_Scenario(scenario),
          m_Random(random),
          m_StartHour(random.Between(0, 24)),
          m_Busy(random.Between(0.3, 0.7)),
          m_Burst(random.Between(0.2, 0.8)),
          m_BurstSeconds(random.Between(120, 1800)),
          m_RestSeconds(random.Between(300, 5400)),
          m_SecondBegins(random.Between(0, 0.8) * fullSpeedSeconds),
          m_SecondEnds(m_SecondBegins + random.Between(0.2, 0.8) * fullSpeedSeconds),
          m_SecondLeaves(random.Between(0.4, 0.6)) {}

    double At(double seconds) {
        switch (m_Scenario) {
            case Scenario::BUSY: {
                const double hour = std::fmod(m_StartHour + seconds / HOUR, 24);
                return hour >= 9 && hour < 17 ? m_Busy : 1;
            }
            case Scenario::BURSTS:
                if (seconds >= m_Switches) {
                    m_IsBurst = !m_IsBurst;
                    m_Switches = seconds + m_Random.Exponential(m_IsBurst ? m_BurstSeconds : m_RestSeconds);
                }
                return m_IsBurst ? m_Burst : 1;
            case Scenario::SECOND:
                return seconds >= m_SecondBegins && seconds < m_SecondEnds ? m_SecondLeaves : 1;
            default: return 1;
        }
    }

private:
    Scenario m_Scenario;
    Random& m_Random;
    double m_StartHour;
    double m_Busy;
    double m_Burst;
    double m_BurstSeconds;
    double m_RestSeconds;
    double m_SecondBegins;
    double m_SecondEnds;
    double m_SecondLeaves;
    bool m_IsBurst = false;
    double m_Switches = 0;
};

/// Speed in shares of the whole a second for each share of the way, of disks whose speed falls with the
/// radius.
class Disk {
public:
    Disk(bool zoned, double fullSpeedSeconds, Random& random)
        : m_EndSpeed(zoned ? random.Between(0.45, 0.6) : 1),
          m_Zones(std::floor(random.Between(12, 30))),
          m_StartSpeed(2 / (1 + m_EndSpeed) / fullSpeedSeconds) {}

    double SpeedAt(double share) const {
        const double middle = (std::floor(share * m_Zones) + 0.5) / m_Zones;
        return m_StartSpeed * std::sqrt(1 - middle * (1 - m_EndSpeed * m_EndSpeed));
    }

private:
    double m_EndSpeed;
    double m_Zones;
    double m_StartSpeed;
};

}  // namespace

ProgressCurve Simulate(Scenario scenario, bool zoned, double noise, std::uint64_t seed) {
    constexpr double STEPS_PER_SAMPLE = 10;
    constexpr double LIKENESS = 0.9;  // of the noise of one step and the next
    Random random(seed);
    const double fullSpeedSeconds = HOUR * std::exp(random.Between(std::log(2), std::log(30)));
    const Disk disk(zoned, fullSpeedSeconds, random);
    Load load(scenario, fullSpeedSeconds, random);
    const double interval = fullSpeedSeconds / random.Between(300, 1500);
    const double pauseAt = random.Between(0.1, 0.9);
    double pauseSeconds = scenario == Scenario::PAUSE ? HOUR : 0;

    ProgressCurve curve = {scenario == Scenario::COARSE ? 100U : 8000000000U, {}, 0};
    const double step = interval / STEPS_PER_SAMPLE;
    double share = 0;
    double swing = 0;
    for (std::uint64_t i = 0; share < 1; ++i) {
        const double seconds = static_cast<double>(i) * step;
        if (i % static_cast<std::uint64_t>(STEPS_PER_SAMPLE) == 0) {
            curve.m_Samples.push_back(
                {seconds, static_cast<std::uint64_t>(share * static_cast<double>(curve.m_Total)), false});
        }
        if (share >= pauseAt && pauseSeconds > 0) {
            pauseSeconds -= step;
            continue;
        }
        swing = LIKENESS * swing + std::sqrt(1 - LIKENESS * LIKENESS) * random.Normal();
        const double speed = disk.SpeedAt(share) * load.At(seconds) * std::exp(noise * swing);
        curve.m_EndSeconds = seconds + std::min(step, (1 - share) / speed);
        share += speed * step;
    }
    return curve;
}

ProgressCurve ReadRecording(const std::string& path) {
    std::ifstream file(path);
    ProgressCurve curve = {};
    for (std::string line; std::getline(file, line);) {
        std::istringstream fields(line);
        ProgressSample sample = {};
        if (!(fields >> sample.m_Seconds)) {
            continue;  // a remark, or the names of the columns
        }
        sample.m_IsWaiting = !(fields >> sample.m_Position >> curve.m_Total);
        curve.m_Samples.push_back(sample);
    }
    const auto isDone = [&](const ProgressSample& sample) {
        return !sample.m_IsWaiting && sample.m_Position >= curve.m_Total;
    };
    const auto end = std::find_if(curve.m_Samples.begin(), curve.m_Samples.end(), isDone);
    if (end == curve.m_Samples.end()) {
        throw std::runtime_error(path + ": not recorded to the end");
    }
    curve.m_EndSeconds = end->m_Seconds;
    curve.m_Samples.erase(end, curve.m_Samples.end());
    return curve;
}

}  // namespace bench
