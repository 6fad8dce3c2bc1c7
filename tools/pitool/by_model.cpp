// SPDX-License-Identifier: Apache-2.0

#include "by_model.h"

#include <algorithm>
#include <array>
#include <map>

namespace pitool {
namespace {

namespace State = PI::DriveState;

struct Model {
    std::string_view m_Name;  ///< as reported
    StateCounts m_Counts;
    std::vector<std::int64_t> m_Hours;  ///< those that are known, the smallest first
    std::vector<std::int64_t> m_Wear;
};

std::vector<std::int64_t> Known(const DriveList& drives, PI::_HEALTH_FIGURE id) {
    std::vector<std::int64_t> values;
    for (const DriveSummary* drive : drives) {
        if (const SummaryFigure figure = drive->GetFigure(id); figure.IsKnown()) {
            values.push_back(figure.m_Value);
        }
    }
    std::sort(values.begin(), values.end());
    return values;
}

/// Of an even number of values the lower one of the two in the middle.
std::int64_t Median(const std::vector<std::int64_t>& values) {
    return values[(values.size() - 1) / 2];
}

}  // namespace

Table ModelTable(const DriveList& drives) {
    std::map<std::string_view, DriveList> byName;
    for (const DriveSummary* drive : drives) {
        byName[drive->GetModel()].push_back(drive);
    }
    std::vector<Model> models;
    for (const auto& [name, list] : byName) {
        models.push_back({name, StateCounts(list), Known(list, PI::HealthFigure::POWER_ON_HOURS),
                          Known(list, PI::HealthFigure::WEAR)});
    }
    std::stable_sort(models.begin(), models.end(), [](const Model& left, const Model& right) {
        const auto rank = [](const StateCounts& counts) {
            return std::array{counts.m_InState[State::FAILED], counts.m_InState[State::REPLACE],
                              counts.m_InState[State::LOOK], counts.m_Drives};
        };
        return rank(left.m_Counts) > rank(right.m_Counts);
    });

    Table table({{"FAILED", Align::RIGHT},
                 {"REPLACE", Align::RIGHT},
                 {"LOOK", Align::RIGHT, 1},
                 {"DRIVES", Align::RIGHT},
                 {"MEDIAN AGE", Align::RIGHT, 3},
                 {"MEDIAN WEAR", Align::RIGHT, 2},
                 {"HIGHEST WEAR", Align::RIGHT, 4},
                 {"MODEL", Align::LEFT, 0, 24}});
    for (const Model& model : models) {
        for (const auto& [state, style] : {std::pair{State::FAILED, Style::FAILING},
                                           {State::REPLACE, Style::FAILING},
                                           {State::LOOK, Style::WARNING}}) {
            const std::size_t count = model.m_Counts.m_InState[state];
            table.Add(count != 0 ? std::to_string(count) : "", style);
        }
        table.Add(std::to_string(model.m_Counts.m_Drives));
        table.Add(model.m_Hours.empty() ? "" : AgeText(static_cast<std::uint64_t>(Median(model.m_Hours))));
        table.Add(model.m_Wear.empty() ? "" : std::to_string(Median(model.m_Wear)) + " %");
        table.Add(model.m_Wear.empty() ? "" : std::to_string(model.m_Wear.back()) + " %");
        table.Add(model.m_Name);
    }
    return table;
}

}  // namespace pitool
