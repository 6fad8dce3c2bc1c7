// SPDX-License-Identifier: Apache-2.0
/// @file
/// Carries out what the objects of the inventory offer: by the kernel's files below /sys, or by mdadm.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>

#include "plugin_base.h"
#include "plugin_interface.h"
#include "progress.h"

namespace mdraid {

/// The machine whose arrays these are, and what may be done with it.
struct Machine {
    std::filesystem::path m_Root = "/";
    std::string m_Mdadm;  ///< empty: that of PATH, which works on this machine alone
    /// Permissions of CPluginHelper::ValidatePhysicalDriveCombination that are given, "0" to "3". Judgement:
    /// drives of different protocols may be mixed, disks and solid-state drives may not.
    std::string m_Permissions = "01";
    std::chrono::milliseconds m_Interval{1000};  ///< between looks at a check that runs
};

/// Carries out an operation; the parameters are those of PluginExecute.
/// @throws std::runtime_error saying in one line why it failed
void Execute(const Machine& machine, shared::ObjectIDs& ids, Progress& progress, std::uint64_t objectID,
             const PI::COperation& operation, const TaskReport& report, PI::CTask& task);

}  // namespace mdraid
