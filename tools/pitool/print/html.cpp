// SPDX-License-Identifier: Apache-2.0

#include "print/formats.h"

#include "print/units.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <utility>

namespace pitool {
namespace {

constexpr std::size_t FIRST_TO_ACT_ON = 20;

// Colours have a contrast of 4.5 and more on their ground, light and dark. Classes are those of Table and of
// plots.
constexpr const char* STYLE = R"(
:root{color-scheme:light dark;--ground:#fff;--text:#1a1d21;--faint:#5a6068;--line:#d5d9de;--bad:#b3001b;--look:#7a4f00;--good:#176437}
@media(prefers-color-scheme:dark){:root{--ground:#14171a;--text:#e7eaee;--faint:#a4acb5;--line:#3a4047;--bad:#ff8f87;--look:#ffc15e;--good:#7fd798}}
body{font:14px/1.45 system-ui,sans-serif;background:var(--ground);color:var(--text);max-width:1360px;margin:0 auto;padding:1rem}
h1{font-size:1.4rem;margin:0}h2{font-size:1.15rem;margin:2rem 0 .5rem}
.scroll{overflow-x:auto}table{border-collapse:collapse;width:100%}
th,td{text-align:left;padding:.25rem .7rem .25rem 0;border-bottom:1px solid var(--line);vertical-align:top;overflow-wrap:break-word}
.w{white-space:nowrap}.f{white-space:normal;overflow-wrap:anywhere;min-width:9rem}
th{font-weight:600;font-size:.8rem;color:var(--faint)}th,a{white-space:nowrap}.n{text-align:right;white-space:nowrap}
.bad,.look{font-weight:600}.bad{color:var(--bad)}.look{color:var(--look)}.faint,p,small{color:var(--faint)}
.plots{display:flex;flex-wrap:wrap;gap:1rem}figure{margin:0;flex:1 1 440px;max-width:680px}svg{width:100%;height:auto;display:block}
svg text{font-size:12px;fill:var(--faint)}svg .a{stroke:var(--line);fill:none}svg .p{fill:none;stroke-width:9;stroke-linecap:round}
svg .bad{stroke:var(--bad)}svg .look{stroke:var(--look);stroke-linecap:square;stroke-width:7}svg .good{stroke:var(--good);stroke-width:6}
details{border-bottom:1px solid var(--line);padding:.25rem 0}summary{cursor:pointer;overflow-wrap:anywhere}a{color:inherit}
@media(max-width:1200px){.w{display:none}}
@media(max-width:700px){.m{display:none}}
@media(max-width:520px){td+td{overflow-wrap:anywhere}svg text{font-size:14px}}
@media print{body{max-width:none;padding:0;font-size:9pt}tr,details,figure{break-inside:avoid}}
)";

// The frame of a plot: x from the left, y from the top.
constexpr int WIDTH = 520;
constexpr int HEIGHT = 300;
constexpr int LEFT = 44;
constexpr int RIGHT = WIDTH - 10;
constexpr int TOP = 10;
constexpr int BOTTOM = HEIGHT - 40;

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

/// Adds a picture of wear against another figure: a point for each drive of which both are known.
/// @param unit of the axis, in that of the figure
void AddPlot(const DriveList& drives, PI::_HEALTH_FIGURE figure, double unit, const std::string& title,
             const char* xLabel, std::ostream& svg) {
    std::vector<Point> points;
    double largestX = 1;
    double largestY = 100;
    for (const DriveSummary* drive : drives) {
        const SummaryFigure wear = drive->GetFigure(PI::HealthFigure::WEAR);
        const SummaryFigure other = drive->GetFigure(figure);
        if (wear.IsKnown() && other.IsKnown() && other.m_Value >= 0) {
            points.push_back({static_cast<double>(other.m_Value) / unit, static_cast<double>(wear.m_Value),
                              CLASS_OF[drive->GetState()]});
            largestX = std::max(largestX, points.back().m_X);
            largestY = std::max(largestY, points.back().m_Y);
        }
    }
    const Axis x(largestX, LEFT, RIGHT);
    const Axis y(largestY, BOTTOM, TOP);
    const std::string caption =
        title + " of " + std::to_string(points.size()) + (points.size() == 1 ? " drive" : " drives");
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

/// Pictures whose colours the style of the page decides on.
std::string WearPlots(const DriveList& drives) {
    constexpr double HOURS_PER_YEAR = 365.25 * 24;
    std::ostringstream svg;
    AddPlot(drives, PI::HealthFigure::POWER_ON_HOURS, HOURS_PER_YEAR, "Wear against age",
            "years of power-on time", svg);
    AddPlot(drives, PI::HealthFigure::TEMPERATURE, 1, "Wear against temperature", "degrees Celsius", svg);
    return svg.str();
}

/// When the reports were made; empty where none says so.
std::string Period(const DriveList& drives) {
    std::set<std::int64_t> times;
    for (const DriveSummary* drive : drives) {
        times.insert(drive->GetTime());
    }
    times.erase(0);
    return times.empty() ? ""
                         : "<p>Reports of " + TimeText(*times.begin()) +
                               (times.size() == 1 ? "" : " to " + TimeText(*times.rbegin())) + "</p>";
}

}  // namespace

std::string HtmlPage(const DriveList& all, const DriveList& drives, const Refusals& refused) {
    std::map<const DriveSummary*, std::string> anchors;
    std::string sheets;
    for (const DriveSummary* drive : drives) {
        if (all.size() <= HTML_SHEETS_OF_ALL || drive->GetState() != PI::DriveState::GOOD) {
            const std::string anchor = "d" + std::to_string(anchors.size() + 1);
            anchors[drive] = "#" + anchor;
            sheets += "<details id=" + anchor + "><summary>" + StateWord(drive->GetState()) + " " +
                      HtmlText(drive->GetModel()) + " " + HtmlText(drive->GetSerial()) + " <small>" +
                      HtmlText(drive->GetFile()) + "</small></summary>";
            sheets.append(drive->GetDetail()).append("</details>\n");
        }
    }
    const auto rows = [&anchors](const DriveList& list, std::size_t most) {
        Table table = DriveTable(list, most);
        table.SetFurther(list.size() - std::min(list.size(), most), "see all drives");
        return table.Html([&](std::size_t row) {
            const auto found = anchors.find(list[row]);
            return found != anchors.end() ? found->second : "";
        });
    };
    DriveList toActOn;
    std::copy_if(all.begin(), all.end(), std::back_inserter(toActOn),
                 [](const DriveSummary* drive) { return drive->GetState() >= PI::DriveState::LOOK; });
    SortDrives("state", toActOn);

    std::string html =
        "<!DOCTYPE html>\n<html lang=en><head><meta charset=utf-8><title>Drives</title>"
        "<meta name=viewport content=\"width=device-width,initial-scale=1\"><style>" +
        std::string(STYLE) + "</style></head>\n<body><h1>" + StateCounts(all).Text(refused.size()) + "</h1>" +
        Period(drives);
    const auto add = [&html](const char* heading, const std::string& section) {
        html.append("\n<h2>").append(heading).append("</h2>").append(section);
    };
    add("What to act on first", toActOn.empty() ? "<p>Nothing.</p>" : rows(toActOn, FIRST_TO_ACT_ON));
    add("Wear", "<div class=plots>" + WearPlots(drives) + "</div>");
    add("By model", ModelTable(drives).Html());
    add(drives.size() == all.size() ? "All drives" : "The drives chosen", rows(drives, drives.size()));
    if (!anchors.empty()) {
        add("Sheets", anchors.size() < drives.size() ? "<p>Only of drives that are not good.</p>" : "");
        html += sheets;
    }
    if (!refused.empty()) {
        Table table({{"FILE"}, {"REASON"}});
        for (const auto& [file, reason] : refused) {
            table.Add(file);
            table.Add(reason);
        }
        add("Not read", table.Html());
    }
    return html + "</body></html>\n";
}

}  // namespace pitool
