// SPDX-License-Identifier: Apache-2.0

#include "drive_detail.h"
#include "drive_table.h"
#include "print/units.h"

#include <algorithm>
#include <array>
#include <map>

namespace pitool {
namespace {

namespace State = PI::DriveState;

struct Model {
    std::string_view m_Name;  ///< as reported
    DriveList m_Drives;
    StateCounts m_Counts = StateCounts(m_Drives);

    /// The values of a figure that are known, the smallest first.
    std::vector<std::int64_t> Known(PI::_HEALTH_FIGURE id) const {
        std::vector<std::int64_t> values;
        for (const DriveSummary* drive : m_Drives) {
            if (const SummaryFigure figure = drive->GetFigure(id); figure.IsKnown()) {
                values.push_back(figure.m_Value);
            }
        }
        std::sort(values.begin(), values.end());
        return values;
    }

    bool operator<(const Model& other) const {
        const auto rank = [](const StateCounts& counts) {
            return std::array{counts.m_InState[State::FAILED], counts.m_InState[State::REPLACE],
                              counts.m_InState[State::LOOK], counts.m_Drives};
        };
        return rank(m_Counts) > rank(other.m_Counts);
    }
};

/// Of an even number of values the lower one of the two in the middle.
std::int64_t Median(const std::vector<std::int64_t>& values) {
    return values[(values.size() - 1) / 2];
}

}  // namespace

Table ModelTable(const DriveList& drives, std::size_t most) {
    std::map<std::string_view, DriveList> byName;
    for (const DriveSummary* drive : drives) {
        byName[drive->GetModel()].push_back(drive);
    }
    std::vector<Model> models;
    for (const auto& [name, list] : byName) {
        models.push_back({name, list});
    }
    std::stable_sort(models.begin(), models.end());
    Table table({{"FAILED", Align::RIGHT},
                 {"REPLACE", Align::RIGHT},
                 {"LOOK", Align::RIGHT, 1},
                 {"DRIVES", Align::RIGHT},
                 {"MEDIAN AGE", Align::RIGHT, 3},
                 {"MEDIAN WEAR", Align::RIGHT, 2},
                 {"HIGHEST WEAR", Align::RIGHT, 4},
                 {"MODEL", Align::LEFT, 0, 24}});
    const std::size_t rows = std::min(most, models.size());
    table.SetFurther(models.size() - rows, "--limit 0 shows all");
    models.resize(rows);
    for (const Model& model : models) {
        for (const auto state : {State::FAILED, State::REPLACE, State::LOOK}) {
            const std::size_t count = model.m_Counts.m_InState[state];
            table.Add(count != 0 ? std::to_string(count) : "", StateStyle(state));
        }
        const std::vector<std::int64_t> hours = model.Known(PI::HealthFigure::POWER_ON_HOURS);
        const std::vector<std::int64_t> wear = model.Known(PI::HealthFigure::WEAR);
        table.Add(std::to_string(model.m_Drives.size()));
        table.Add(hours.empty() ? "" : AgeText(static_cast<std::uint64_t>(Median(hours))));
        table.Add(wear.empty() ? "" : std::to_string(Median(wear)) + " %");
        table.Add(wear.empty() ? "" : std::to_string(wear.back()) + " %");
        table.Add(model.m_Name);
    }
    return table;
}

}  // namespace pitool
