// SPDX-License-Identifier: Apache-2.0

#include "by_model.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace pitool {
namespace {

using Values = std::vector<std::int64_t>;

void AddKnown(const SummaryFigure& figure, Values& values) {
    if (figure.IsKnown()) {
        values.push_back(figure.m_Value);
    }
}

/// Of an even number of values the lower one of the two in the middle.
std::optional<std::int64_t> Median(Values& values) {
    if (values.empty()) {
        return std::nullopt;
    }
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>((values.size() - 1) / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

}  // namespace

std::vector<ModelCounts> CountByModel(const std::vector<const DriveSummary*>& drives) {
    struct Model {
        ModelCounts m_Counts;
        Values m_Hours;
        Values m_Wear;
    };
    std::map<std::string_view, Model> models;
    for (const DriveSummary* drive : drives) {
        Model& model = models[drive->GetModel()];
        model.m_Counts.m_Drives += 1;
        model.m_Counts.m_Failed += drive->GetState() == PI::DriveState::FAILED ? 1 : 0;
        model.m_Counts.m_Replace += drive->GetState() == PI::DriveState::REPLACE ? 1 : 0;
        model.m_Counts.m_Look += drive->GetState() == PI::DriveState::LOOK ? 1 : 0;
        AddKnown(drive->GetFigure(PI::HealthFigure::POWER_ON_HOURS), model.m_Hours);
        AddKnown(drive->GetFigure(PI::HealthFigure::WEAR), model.m_Wear);
    }
    std::vector<ModelCounts> counts;
    for (auto& [name, model] : models) {
        model.m_Counts.m_Model = name;
        model.m_Counts.m_MedianHours = Median(model.m_Hours);
        model.m_Counts.m_MedianWear = Median(model.m_Wear);
        if (!model.m_Wear.empty()) {
            model.m_Counts.m_HighestWear = *std::max_element(model.m_Wear.begin(), model.m_Wear.end());
        }
        counts.push_back(std::move(model.m_Counts));
    }
    std::stable_sort(counts.begin(), counts.end(), [](const ModelCounts& left, const ModelCounts& right) {
        return std::tie(left.m_Failed, left.m_Replace, left.m_Drives) >
               std::tie(right.m_Failed, right.m_Replace, right.m_Drives);
    });
    return counts;
}

}  // namespace pitool
