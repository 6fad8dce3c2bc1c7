// SPDX-License-Identifier: Apache-2.0

#include "print/svg.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace pitool {
namespace {

namespace Health = PI::HealthFigure;

constexpr int WIDTH = 520;
constexpr int HEIGHT = 300;
constexpr int LEFT = 44;
constexpr int RIGHT = 10;
constexpr int TOP = 10;
constexpr int BOTTOM = 40;
constexpr double HOURS_PER_YEAR = 365.25 * 24;

/// What is drawn in a colour and a form of its own, in the order drawn: the worst on top.
enum Class { GOOD, LOOK, BAD, CLASSES };
constexpr const char* CLASS_NAMES[CLASSES] = {"good", "look", "bad"};

struct Point {
    double m_X;
    double m_Y;
    Class m_Class;
};

Class ClassOf(PI::_DRIVE_STATE state) {
    return state >= PI::DriveState::REPLACE ? BAD : state == PI::DriveState::LOOK ? LOOK : GOOD;
}

/// An axis from 0 in steps that are easily read.
struct Axis {
    double m_Step;
    int m_Steps;
    double m_End;
};

Axis MakeAxis(double largest) {
    constexpr double STEPS[] = {1, 2, 5, 10, 20, 25, 50, 100, 200};
    constexpr double MOST_STEPS = 6;
    for (const double step : STEPS) {
        if (largest <= step * MOST_STEPS) {
            const int steps = std::max(1, static_cast<int>(std::ceil(largest / step)));
            return {step, steps, step * steps};
        }
    }
    return {largest, 1, largest};
}

int Scaled(double value, const Axis& axis, int from, int to) {
    return from + static_cast<int>(std::lround(value / axis.m_End * (to - from)));
}

std::string Label(int x, int y, const char* anchor, const std::string& text) {
    return "<text x=" + std::to_string(x) + " y=" + std::to_string(y) + " text-anchor=" + anchor + ">" +
           text + "</text>";
}

std::string Plot(const std::vector<Point>& points, const char* title, const char* xLabel) {
    double largestX = 1;
    double largestY = 100;
    for (const Point& point : points) {
        largestX = std::max(largestX, point.m_X);
        largestY = std::max(largestY, point.m_Y);
    }
    const Axis x = MakeAxis(largestX);
    const Axis y = MakeAxis(largestY);
    std::string svg = "<figure><svg viewBox=\"0 0 " + std::to_string(WIDTH) + " " + std::to_string(HEIGHT) +
                      "\" role=img aria-label=\"" + title + ", " + std::to_string(points.size()) +
                      " drives\">";
    std::string lines;
    for (int step = 0; step <= y.m_Steps; ++step) {
        const double tick = step * y.m_Step;
        const int place = Scaled(tick, y, HEIGHT - BOTTOM, TOP);
        lines +=
            "M" + std::to_string(LEFT) + " " + std::to_string(place) + "H" + std::to_string(WIDTH - RIGHT);
        svg += Label(LEFT - 6, place + 4, "end", std::to_string(std::lround(tick)) + "%");
    }
    for (int step = 0; step <= x.m_Steps; ++step) {
        const double tick = step * x.m_Step;
        svg += Label(Scaled(tick, x, LEFT, WIDTH - RIGHT), HEIGHT - BOTTOM + 16, "middle",
                     std::to_string(std::lround(tick)));
    }
    svg += Label((LEFT + WIDTH - RIGHT) / 2, HEIGHT - 6, "middle", xLabel);
    svg += "<path class=a d=\"" + lines + "\"/>";

    // Points of many drives fall together: each place is drawn once.
    std::set<std::pair<int, int>> places[CLASSES];
    for (const Point& point : points) {
        places[point.m_Class].emplace(Scaled(point.m_X, x, LEFT, WIDTH - RIGHT),
                                      Scaled(point.m_Y, y, HEIGHT - BOTTOM, TOP));
    }
    for (int each = GOOD; each < CLASSES; ++each) {
        std::string path;
        for (const auto& [left, top] : places[each]) {
            path += "M" + std::to_string(left) + " " + std::to_string(top) + "h0";
        }
        if (!path.empty()) {
            svg.append("<path class=\"p ").append(CLASS_NAMES[each]).append("\" d=\"").append(path) += "\"/>";
        }
    }
    return svg + "</svg><figcaption><small>" + title + " of " + std::to_string(points.size()) +
           (points.size() == 1 ? " drive" : " drives") + "</small></figcaption></figure>";
}

}  // namespace

std::string WearPlots(const std::vector<const DriveSummary*>& drives) {
    std::vector<Point> byAge;
    std::vector<Point> byTemperature;
    for (const DriveSummary* drive : drives) {
        const SummaryFigure wear = drive->GetFigure(Health::WEAR);
        const SummaryFigure hours = drive->GetFigure(Health::POWER_ON_HOURS);
        const SummaryFigure temperature = drive->GetFigure(Health::TEMPERATURE);
        const auto y = static_cast<double>(wear.m_Value);
        const Class drawn = ClassOf(drive->GetState());
        if (wear.IsKnown() && hours.IsKnown()) {
            byAge.push_back({static_cast<double>(hours.m_Value) / HOURS_PER_YEAR, y, drawn});
        }
        if (wear.IsKnown() && temperature.IsKnown() && temperature.m_Value >= 0) {
            byTemperature.push_back({static_cast<double>(temperature.m_Value), y, drawn});
        }
    }
    return Plot(byAge, "Wear against age", "years of power-on time") +
           Plot(byTemperature, "Wear against temperature", "degrees Celsius");
}

}  // namespace pitool
