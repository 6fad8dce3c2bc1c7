// SPDX-License-Identifier: Apache-2.0
/// @file
/// Drives counted by their model.
#pragma once

#include "drive_summary.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace pitool {

/// The drives of a model. Only known figures count.
struct ModelCounts {
    std::string m_Model;  ///< as reported
    std::size_t m_Drives = 0;
    std::size_t m_Failed = 0;
    std::size_t m_Replace = 0;  ///< to be replaced
    std::size_t m_Look = 0;     ///< to be looked at
    std::optional<std::int64_t> m_MedianHours;
    std::optional<std::int64_t> m_MedianWear;
    std::optional<std::int64_t> m_HighestWear;
};

/// The models with the most failed drives first, then those with the most drives.
std::vector<ModelCounts> CountByModel(const std::vector<const DriveSummary*>& drives);

}  // namespace pitool
