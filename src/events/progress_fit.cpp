// SPDX-License-Identifier: Apache-2.0

#include "progress_fit.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace PI {

namespace {

// docs/estimates.md says where the constants come from and how accurate the results are.

constexpr double CONSTANT_SHARE = 0.85;       // of activities whose speed does not fall with the position
constexpr double CONSTANT_SHARE_RANGE = 0.5;  // the same, for the range
constexpr double NOISE_FLOOR = 0.005;         // of the logarithm of speed
constexpr double LEVEL_MIN_CHANGE = 0.2;      // of the logarithm of speed, for a change of load
constexpr double LEVEL_PENALTY = 6;           // of the logarithm of likelihood, for each change of load
constexpr std::size_t MAX_LEVELS = 9;
constexpr std::size_t LEVEL_MIN_STEPS = 2;
constexpr double LEVEL_STAYS = 4;  // times what it has lasted
constexpr double SPREAD_FLOOR = 0.02;
constexpr double SPREADS_BELOW = 1.3;
constexpr double SPREADS_ABOVE = 2.2;

enum class Course {
    SQUARE_ROOT,  // tracks of equal width and density: speed falls evenly with the radius
    LINEAR,       // speed falls evenly with the position
};

/// How speed falls from the beginning to the end.
struct Shape {
    Course m_Course;
    double m_EndSpeed;  // of that at the beginning
    double m_Weight;    // among the shapes that fall
};

constexpr Shape SHAPES[] = {
    {Course::LINEAR, 1, 0},  // even; has its share above
    {Course::SQUARE_ROOT, 0.40, 1},
    {Course::LINEAR, 0.40, 1},
    {Course::SQUARE_ROOT, 0.45, 1},
    {Course::LINEAR, 0.45, 1},
    {Course::SQUARE_ROOT, 0.50, 1},
    {Course::LINEAR, 0.50, 1},
    {Course::SQUARE_ROOT, 0.55, 1},
    {Course::LINEAR, 0.55, 1},
    {Course::SQUARE_ROOT, 0.60, 1},
    {Course::LINEAR, 0.60, 1},
    {Course::SQUARE_ROOT, 0.65, 1},
    {Course::LINEAR, 0.65, 1},
    {Course::SQUARE_ROOT, 0.70, 0.25},
    {Course::LINEAR, 0.70, 0.25},
    {Course::SQUARE_ROOT, 0.75, 0.25},
    {Course::LINEAR, 0.75, 0.25},
    {Course::SQUARE_ROOT, 0.80, 0.25},
    {Course::LINEAR, 0.80, 0.25},
    {Course::SQUARE_ROOT, 0.85, 0.25},
    {Course::LINEAR, 0.85, 0.25},
};
constexpr double FALLING_WEIGHTS = 14;

/// Time between two positions at the speed of 1 at the beginning.
double Work(const Shape& shape, double from, double to) {
    const double fall =
        shape.m_Course == Course::LINEAR ? 1 - shape.m_EndSpeed : 1 - shape.m_EndSpeed * shape.m_EndSpeed;
    if (fall == 0) {
        return to - from;
    }
    return shape.m_Course == Course::LINEAR
               ? (std::log1p(-fall * from) - std::log1p(-fall * to)) / fall
               : 2 * (std::sqrt(1 - fall * from) - std::sqrt(1 - fall * to)) / fall;
}

/// Speeds of the steps between the points, as logarithms, with the shape removed; sums for means over any
/// steps.
class Speeds {
public:
    Speeds(const std::vector<ProgressPoint>& points, const Shape& shape) : m_Sums(1, Sum{}) {
        const double elapsed = points.back().m_Time - points.front().m_Time;
        const double steps = static_cast<double>(points.size() - 1);
        for (std::size_t i = 0; i + 1 < points.size(); ++i) {
            const double duration = points[i + 1].m_Time - points[i].m_Time;
            const double work = Work(shape, points[i].m_Position, points[i + 1].m_Position);
            const double weight = duration / elapsed * steps;
            const double speed = std::log(work / duration * elapsed);
            m_Steps.push_back({weight, speed});
            const Sum& last = m_Sums.back();
            m_Sums.push_back({last.m_Weight + weight, last.m_Speed + weight * speed,
                              last.m_Square + weight * speed * speed, last.m_Work + work});
        }
    }

    std::size_t Size() const { return m_Steps.size(); }
    double WorkSince(std::size_t from) const { return m_Sums.back().m_Work - m_Sums[from].m_Work; }
    double Mean(std::size_t from, std::size_t to) const {
        return (m_Sums[to].m_Speed - m_Sums[from].m_Speed) / (m_Sums[to].m_Weight - m_Sums[from].m_Weight);
    }
    /// Weighted squares of what the mean of these steps leaves.
    double Squares(std::size_t from, std::size_t to) const {
        const double speed = m_Sums[to].m_Speed - m_Sums[from].m_Speed;
        const double weight = m_Sums[to].m_Weight - m_Sums[from].m_Weight;
        return std::max(0.0, m_Sums[to].m_Square - m_Sums[from].m_Square - speed * speed / weight);
    }
    /// Steps that count as independent, by their weights alone.
    double Count() const {
        double squares = 0;
        for (const Step& step : m_Steps) {
            squares += step.m_Weight * step.m_Weight;
        }
        return static_cast<double>(Size()) * static_cast<double>(Size()) / squares;
    }
    /// The same, with neighbours that are alike counted as less.
    double IndependentCount(const std::vector<std::size_t>& levels) const {
        double products = 0;
        double squares = 0;
        double last = 0;
        std::size_t level = 0;
        for (std::size_t i = 0; i < Size(); ++i) {
            level += i >= levels[level + 1] ? 1 : 0;
            const double rest = (m_Steps[i].m_Speed - Mean(levels[level], levels[level + 1])) *
                                std::sqrt(m_Steps[i].m_Weight);
            squares += rest * rest;
            products += rest * last;
            last = rest;
        }
        const double likeness = squares > 1e-12 ? std::clamp(products / squares, -0.5, 0.98) : 0;
        return std::max(1.0, Count() * (1 - likeness) / (1 + likeness));
    }

private:
    struct Step {
        double m_Weight;
        double m_Speed;
    };
    struct Sum {
        double m_Weight;
        double m_Speed;
        double m_Square;
        double m_Work;
    };
    std::vector<Step> m_Steps;
    std::vector<Sum> m_Sums;  // up to each step
};

/// What is left of the squares' mean, never so little that nothing could be wrong.
double Variance(double squares, double steps) {
    return squares / steps + NOISE_FLOOR * NOISE_FLOOR;
}

/// Where load came or went: the first steps of the levels between which the speed jumps, and the end.
std::vector<std::size_t> FindLevels(const Speeds& speeds) {
    const double steps = static_cast<double>(speeds.Size());
    std::vector<std::size_t> levels = {0, speeds.Size()};
    double squares = speeds.Squares(0, speeds.Size());
    while (levels.size() <= MAX_LEVELS) {
        double most = 0;
        std::size_t best = 0;
        for (std::size_t level = 0; level + 1 < levels.size(); ++level) {
            const std::size_t from = levels[level];
            const std::size_t to = levels[level + 1];
            for (std::size_t cut = from + LEVEL_MIN_STEPS; cut + LEVEL_MIN_STEPS <= to; ++cut) {
                const double gain =
                    speeds.Squares(from, to) - speeds.Squares(from, cut) - speeds.Squares(cut, to);
                if (gain > most &&
                    std::fabs(speeds.Mean(from, cut) - speeds.Mean(cut, to)) >= LEVEL_MIN_CHANGE) {
                    most = gain;
                    best = cut;
                }
            }
        }
        const double rest = std::max(0.0, squares - most);
        if (best == 0 || 0.5 * speeds.Count() * std::log(Variance(squares, steps) / Variance(rest, steps)) <
                             LEVEL_PENALTY) {
            break;
        }
        levels.insert(std::lower_bound(levels.begin(), levels.end(), best), best);
        squares = rest;
    }
    return levels;
}

/// How well a shape fits, and what follows from it.
struct Fit {
    double m_Variance;
    double m_Penalty;
    double m_Count;   // independent steps
    double m_Left;    // logarithm of the time remaining
    double m_Change;  // logarithm of what it would be at the mean speed, against that at the latest level's
};

Fit FitShape(const std::vector<ProgressPoint>& points, const Shape& shape) {
    const Speeds speeds(points, shape);
    const std::vector<std::size_t> levels = FindLevels(speeds);
    double squares = 0;
    for (std::size_t level = 0; level + 1 < levels.size(); ++level) {
        squares += speeds.Squares(levels[level], levels[level + 1]);
    }
    const std::size_t latest = levels[levels.size() - 2];
    const double lasted = points.back().m_Time - points[latest].m_Time;
    const double speed = speeds.WorkSince(latest) / lasted;
    const double meanSpeed = speeds.WorkSince(0) / (points.back().m_Time - points.front().m_Time);
    const double work = Work(shape, points.back().m_Position, 1);
    const double stays = LEVEL_STAYS * lasted;
    const double left = work / speed <= stays ? work / speed : stays + (work - stays * speed) / meanSpeed;
    return {Variance(squares, static_cast<double>(speeds.Size())),
            LEVEL_PENALTY * static_cast<double>(levels.size() - 2), speeds.IndependentCount(levels),
            std::log(left), std::log(speed / meanSpeed)};
}

/// Mean and variance of the time remaining over the shapes, and the mean square of the change.
struct Mixture {
    double m_Left;
    double m_Variance;
    double m_Change;
};

Mixture Mix(const std::vector<Fit>& fits, double constantShare, double count) {
    std::vector<double> scores;
    for (std::size_t i = 0; i < fits.size(); ++i) {
        const double share =
            i == 0 ? constantShare : (1 - constantShare) * SHAPES[i].m_Weight / FALLING_WEIGHTS;
        scores.push_back(std::log(share) - fits[i].m_Penalty - 0.5 * count * std::log(fits[i].m_Variance));
    }
    const double best = *std::max_element(scores.begin(), scores.end());
    double shares = 0;
    Mixture mixture = {};
    for (std::size_t i = 0; i < fits.size(); ++i) {
        const double share = std::exp(scores[i] - best);
        shares += share;
        mixture.m_Left += share * fits[i].m_Left;
        mixture.m_Variance += share * fits[i].m_Left * fits[i].m_Left;
        mixture.m_Change += share * fits[i].m_Change * fits[i].m_Change;
    }
    mixture.m_Left /= shares;
    mixture.m_Variance = std::max(0.0, mixture.m_Variance / shares - mixture.m_Left * mixture.m_Left);
    mixture.m_Change /= shares;
    return mixture;
}

}  // namespace

ProgressEstimate FitProgress(const std::vector<ProgressPoint>& points) {
    std::vector<Fit> fits;
    for (const Shape& shape : SHAPES) {
        fits.push_back(FitShape(points, shape));
    }
    const double steps = static_cast<double>(points.size() - 1);
    const Fit& best = *std::min_element(fits.begin(), fits.end(), [&](const Fit& a, const Fit& b) {
        return a.m_Penalty + 0.5 * steps * std::log(a.m_Variance) <
               b.m_Penalty + 0.5 * steps * std::log(b.m_Variance);
    });
    const Mixture middle = Mix(fits, CONSTANT_SHARE, best.m_Count);
    const Mixture wide = Mix(fits, CONSTANT_SHARE_RANGE, best.m_Count);

    const double remaining = std::exp(middle.m_Left);
    const double elapsed = points.back().m_Time - points.front().m_Time;
    // Of the mean speed so far, and of the mean speed to come.
    const double noise =
        best.m_Variance *
        std::min(1.0, 1 / best.m_Count + 1 / std::max(1.0, best.m_Count * remaining / elapsed));
    const double shift = wide.m_Left - middle.m_Left;
    const double spread =
        std::sqrt(wide.m_Variance + shift * shift + wide.m_Change + noise + SPREAD_FLOOR * SPREAD_FLOOR);
    return {remaining, remaining * std::exp(-SPREADS_BELOW * spread),
            remaining * std::exp(SPREADS_ABOVE * spread)};
}

}  // namespace PI
