// SPDX-License-Identifier: Apache-2.0
// How near estimates of the time remaining come, on simulated and recorded rebuilds, as JSON on the standard
// output. Usage: progress_accuracy CURVES [RECORDINGS...]: simulated curves of each kind, and files of
// recorded ones.
#include <pi/etr.h>
#include <pi/time_remaining.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <deque>
#include <exception>
#include <functional>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "progress_curves.h"

namespace {

using bench::ProgressCurve;
using bench::ProgressSample;
using bench::Scenario;
using Json = nlohmann::json;

constexpr double UNKNOWN = std::numeric_limits<double>::quiet_NaN();

/// Seconds remaining and their range, after each sample.
struct Answer {
    double m_Remaining;
    double m_Low;
    double m_High;
};

/// Takes sample after sample.
using Way = std::function<Answer(const ProgressSample&, std::uint64_t total)>;

Answer WithoutRange(double remaining) {
    return {remaining, UNKNOWN, UNKNOWN};
}

double Left(const ProgressSample& sample, std::uint64_t total) {
    return static_cast<double>(total) - static_cast<double>(sample.m_Position);
}

double Speed(const ProgressSample& from, const ProgressSample& to) {
    return (static_cast<double>(to.m_Position) - static_cast<double>(from.m_Position)) /
           (to.m_Seconds - from.m_Seconds);
}

/// What is left at a speed; unknown at none.
double TimeAt(double speed, const ProgressSample& sample, std::uint64_t total) {
    return speed > 0 ? Left(sample, total) / speed : UNKNOWN;
}

/// The mean speed from the beginning on.
Way Mean() {
    return
        [first = std::vector<ProgressSample>()](const ProgressSample& sample, std::uint64_t total) mutable {
            if (first.empty()) {
                first.push_back(sample);
                return WithoutRange(UNKNOWN);
            }
            return WithoutRange(TimeAt(Speed(first.front(), sample), sample, total));
        };
}

/// The mean speed of ten marks, three seconds apart or more, as Linux md shows it.
Way MarksOfMD() {
    return [marks = std::deque<ProgressSample>()](const ProgressSample& sample, std::uint64_t total) mutable {
        if (marks.empty() || sample.m_Seconds >= marks.back().m_Seconds + 3) {
            marks.push_back(sample);
            if (marks.size() > 10) {
                marks.pop_front();
            }
        }
        return WithoutRange(marks.front().m_Seconds < sample.m_Seconds
                                ? TimeAt(Speed(marks.front(), sample), sample, total)
                                : UNKNOWN);
    };
}

/// The mean of the speeds between a hundred samples, as udisks does it.
Way MeanOfSpeeds() {
    return
        [samples = std::deque<ProgressSample>()](const ProgressSample& sample, std::uint64_t total) mutable {
            samples.push_back(sample);
            if (samples.size() > 100) {
                samples.pop_front();
            }
            double speeds = 0;
            for (std::size_t i = 1; i < samples.size(); ++i) {
                speeds += Speed(samples[i - 1], samples[i]);
            }
            return WithoutRange(TimeAt(speeds / static_cast<double>(samples.size() - 1), sample, total));
        };
}

std::uint64_t Milliseconds(const ProgressSample& sample) {
    return 1000000000 + static_cast<std::uint64_t>(sample.m_Seconds * 1000);
}

Way FixedRules() {
    return [etr = PI::CETR()](const ProgressSample& sample, std::uint64_t total) mutable {
        etr.Compute(static_cast<int>(sample.m_Position * 100 / total), Milliseconds(sample));
        return WithoutRange(static_cast<double>(etr.m_RemainingTime) / 1000);
    };
}

Way TimeRemaining() {
    return [estimate = PI::CTimeRemaining()](const ProgressSample& sample, std::uint64_t total) mutable {
        if (sample.m_IsWaiting) {
            estimate.AddPause(Milliseconds(sample));
        } else {
            estimate.AddSample(Milliseconds(sample), sample.m_Position, total);
        }
        if (!estimate.GetRemaining().has_value()) {
            return WithoutRange(UNKNOWN);
        }
        return Answer{static_cast<double>(*estimate.GetRemaining()) / 1000,
                      static_cast<double>(*estimate.GetLow()) / 1000,
                      static_cast<double>(*estimate.GetHigh()) / 1000};
    };
}

/// What a way has answered on curves of one kind.
struct Tally {
    std::vector<double> m_Errors;  // in shares of the time that remained
    std::vector<double> m_Jumps;   // of the time of the end from sample to sample, in shares of the whole
    std::uint64_t m_Ranges = 0;
    std::uint64_t m_Inside = 0;
};

void Replay(const ProgressCurve& curve, const Way& way, bool knowsPauses, Tally& tally) {
    double lastEnd = UNKNOWN;
    std::uint64_t seen = 0;
    for (const ProgressSample& sample : curve.m_Samples) {
        if (sample.m_IsWaiting && !knowsPauses) {
            continue;
        }
        const Answer answer = way(sample, curve.m_Total);
        const double truth = curve.m_EndSeconds - sample.m_Seconds;
        seen += sample.m_IsWaiting ? 0 : 1;
        if (sample.m_IsWaiting || seen < 2 || truth <= 0) {
            continue;
        }
        // No answer is as wrong as one of 0.
        tally.m_Errors.push_back(
            std::isnan(answer.m_Remaining) ? 1 : std::fabs(answer.m_Remaining - truth) / truth);
        const double end = sample.m_Seconds + answer.m_Remaining;
        if (!std::isnan(end) && !std::isnan(lastEnd)) {
            tally.m_Jumps.push_back(std::fabs(end - lastEnd) / curve.m_EndSeconds);
        }
        lastEnd = end;
        if (!std::isnan(answer.m_Low)) {
            ++tally.m_Ranges;
            tally.m_Inside += answer.m_Low <= truth && truth <= answer.m_High ? 1 : 0;
        }
    }
}

double Quantile(std::vector<double> values, double share) {
    if (values.empty()) {
        return UNKNOWN;
    }
    const auto at =
        values.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

/// Percent with one decimal.
double Percent(double share) {
    return std::round(share * 10000) / 100;
}

Json Row(const std::string& kind, const std::vector<ProgressCurve>& curves, Tally& all) {
    Json row = {{"kind", kind}, {"curves", curves.size()}};
    const auto measure = [&](const char* name, Way (*way)()) {
        Tally tally;
        for (const ProgressCurve& curve : curves) {
            Replay(curve, way(), way == TimeRemaining, tally);
        }
        row[name] = {{"median", Percent(Quantile(tally.m_Errors, 0.5))},
                     {"ninetieth", Percent(Quantile(tally.m_Errors, 0.9))},
                     {"jump", Percent(Quantile(tally.m_Jumps, 0.5))}};
        return tally;
    };
    measure("mean", Mean);
    measure("md", MarksOfMD);
    measure("udisks", MeanOfSpeeds);
    measure("CETR", FixedRules);
    const Tally own = measure("CTimeRemaining", TimeRemaining);
    row["inside"] = Percent(static_cast<double>(own.m_Inside) / static_cast<double>(own.m_Ranges));
    all.m_Ranges += own.m_Ranges;
    all.m_Inside += own.m_Inside;
    return row;
}

void Compare(std::uint64_t count, const std::vector<std::string>& recordings) {
    struct Kind {
        const char* m_Name;
        Scenario m_Scenario;
    };
    constexpr Kind KINDS[] = {{"", Scenario::EVEN},
                              {", busy eight hours a day", Scenario::BUSY},
                              {", bursts", Scenario::BURSTS},
                              {", a pause of an hour", Scenario::PAUSE},
                              {", whole percents", Scenario::COARSE},
                              {", a second rebuild", Scenario::SECOND}};
    constexpr double NOISE = 0.05;
    Json rows = Json::array();
    Tally all;
    for (const bool zoned : {false, true}) {
        for (const Kind& kind : KINDS) {
            std::vector<ProgressCurve> curves;
            for (std::uint64_t seed = 1; seed <= count; ++seed) {
                curves.push_back(bench::Simulate(kind.m_Scenario, zoned, NOISE, seed));
            }
            rows.push_back(Row(std::string(zoned ? "zoned" : "constant") + kind.m_Name, curves, all));
        }
    }
    std::vector<ProgressCurve> recorded;
    for (const std::string& path : recordings) {
        recorded.push_back(bench::ReadRecording(path));
    }
    if (!recorded.empty()) {
        rows.push_back(Row("recorded", recorded, all));
    }
    const Json result = {
        {"rows", rows},
        {"inside", Percent(static_cast<double>(all.m_Inside) / static_cast<double>(all.m_Ranges))}};
    std::printf("%s\n", result.dump(1).c_str());
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const std::vector<std::string> arguments(argv + 1, argv + argc);
        Compare(std::stoul(arguments.at(0)), {arguments.begin() + 1, arguments.end()});
    } catch (const std::exception& error) {
        std::fprintf(stderr, "progress_accuracy: %s\n", error.what());
        return 1;
    }
    return 0;
}
