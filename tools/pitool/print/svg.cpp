// SPDX-License-Identifier: Apache-2.0

#include "print/formats.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <set>
#include <sstream>
#include <utility>

namespace pitool {
namespace {

namespace Health = PI::HealthFigure;

// The frame of a plot: x from the left, y from the top.
constexpr int WIDTH = 520;
constexpr int HEIGHT = 300;
constexpr int LEFT = 44;
constexpr int RIGHT = WIDTH - 10;
constexpr int TOP = 10;
constexpr int BOTTOM = HEIGHT - 40;
constexpr double HOURS_PER_YEAR = 365.25 * 24;

// What is drawn in a colour and a form of its own, in the order drawn: the worst on top.
constexpr const char* CLASSES[] = {"good", "look", "bad"};
constexpr std::size_t CLASS_OF[] = {0, 0, 1, 2, 2};  // in the order of the states

struct Point {
    double m_X;
    double m_Y;
    std::size_t m_Class;
};

/// An axis from 0 in steps that are easily read, drawn from one place to another.
struct Axis {
    Axis(double largest, int from, int to) : m_From(from), m_To(to) {
        constexpr double MOST_STEPS = 6;
        constexpr double STEPS[] = {1, 2, 5, 10, 20, 25, 50, 100, 200};
        const auto* const step = std::find_if(std::begin(STEPS), std::end(STEPS),
                                              [&](double each) { return largest <= each * MOST_STEPS; });
        m_Step = step != std::end(STEPS) ? *step : largest;
        m_Steps = static_cast<int>(std::ceil(largest / m_Step));
    }
    int Place(double value) const {
        return m_From + static_cast<int>(std::lround(value / (m_Step * m_Steps) * (m_To - m_From)));
    }

    int m_From;
    int m_To;
    double m_Step;
    int m_Steps;
};

void Plot(const std::vector<Point>& points, const char* title, const char* xLabel, std::ostream& svg) {
    double largestX = 1;
    double largestY = 100;
    for (const Point& point : points) {
        largestX = std::max(largestX, point.m_X);
        largestY = std::max(largestY, point.m_Y);
    }
    const Axis x(largestX, LEFT, RIGHT);
    const Axis y(largestY, BOTTOM, TOP);
    const std::string caption = std::string(title) + " of " + std::to_string(points.size()) +
                                (points.size() == 1 ? " drive" : " drives");
    const auto label = [&svg](int left, int top, const char* anchor) -> std::ostream& {
        return svg << "<text x=" << left << " y=" << top << " text-anchor=" << anchor << '>';
    };
    svg << "<figure><svg viewBox=\"0 0 " << WIDTH << ' ' << HEIGHT << "\" role=img aria-label=\"" << caption
        << "\">";
    for (int step = 0; step <= y.m_Steps; ++step) {
        label(LEFT - 6, y.Place(step * y.m_Step) + 4, "end") << std::lround(step * y.m_Step) << "%</text>";
    }
    for (int step = 0; step <= x.m_Steps; ++step) {
        label(x.Place(step * x.m_Step), BOTTOM + 16, "middle") << std::lround(step * x.m_Step) << "</text>";
    }
    label((LEFT + RIGHT) / 2, HEIGHT - 6, "middle") << xLabel << "</text><path class=a d=\"";
    for (int step = 0; step <= y.m_Steps; ++step) {
        svg << 'M' << LEFT << ' ' << y.Place(step * y.m_Step) << 'H' << RIGHT;
    }
    svg << "\"/>";
    // Points of many drives fall together: each place is drawn once.
    std::set<std::pair<int, int>> places[std::size(CLASSES)];
    for (const Point& point : points) {
        places[point.m_Class].emplace(x.Place(point.m_X), y.Place(point.m_Y));
    }
    for (std::size_t i = 0; i < std::size(CLASSES); ++i) {
        if (places[i].empty()) {
            continue;
        }
        svg << "<path class=\"p " << CLASSES[i] << "\" d=\"";
        for (const auto& [left, top] : places[i]) {
            svg << 'M' << left << ' ' << top << "h0";
        }
        svg << "\"/>";
    }
    svg << "</svg><figcaption><small>" << caption << "</small></figcaption></figure>";
}

}  // namespace

std::string WearPlots(const DriveList& drives) {
    std::vector<Point> byAge;
    std::vector<Point> byTemperature;
    for (const DriveSummary* drive : drives) {
        const SummaryFigure wear = drive->GetFigure(Health::WEAR);
        const SummaryFigure hours = drive->GetFigure(Health::POWER_ON_HOURS);
        const SummaryFigure temperature = drive->GetFigure(Health::TEMPERATURE);
        const auto y = static_cast<double>(wear.m_Value);
        const std::size_t drawn = CLASS_OF[drive->GetState()];
        if (wear.IsKnown() && hours.IsKnown()) {
            byAge.push_back({static_cast<double>(hours.m_Value) / HOURS_PER_YEAR, y, drawn});
        }
        if (wear.IsKnown() && temperature.IsKnown() && temperature.m_Value >= 0) {
            byTemperature.push_back({static_cast<double>(temperature.m_Value), y, drawn});
        }
    }
    std::ostringstream svg;
    Plot(byAge, "Wear against age", "years of power-on time", svg);
    Plot(byTemperature, "Wear against temperature", "degrees Celsius", svg);
    return svg.str();
}

}  // namespace pitool
