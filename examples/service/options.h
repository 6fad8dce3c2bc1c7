// SPDX-License-Identifier: Apache-2.0
/// @file
/// The command line.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "isolated_plugin.h"

namespace service {

/// An operation to be carried out: "mdraid:md0:REPLACE_MISSING:OS_DEVICE=/dev/sdc".
struct Request {
    std::string m_Plugin;
    std::string m_Object;                                           ///< its identifier, name or device
    std::string m_Operation;                                        ///< its name
    std::vector<std::pair<std::string, std::string>> m_Parameters;  ///< names and values
};

struct Options {
    std::vector<std::string> m_Arguments;  ///< all, from the program's name
    std::filesystem::path m_PluginFolder;
    std::vector<Setting> m_Settings;
    std::set<int> m_TraceCategories;
    std::filesystem::path m_TraceFolder = ".";
    std::vector<std::filesystem::path> m_LanguageFiles;  ///< none: the one beside the program
    bool m_AllowChanges = false;
    std::optional<Request> m_Request;  ///< only where changes are allowed
    bool m_PrintJson = false;
    std::optional<std::chrono::milliseconds> m_WatchInterval;  ///< go on, and print changes
    bool m_Isolate = false;
    IsolationLimits m_Limits;
    std::filesystem::path m_IsolatedPlugin;  ///< what this process is there for; empty in the host itself
    std::string m_Help;                      ///< what is asked for; otherwise empty
};

/// @throws std::invalid_argument saying in one line what is wrong
Options ParseOptions(int argc, char** argv);

}  // namespace service
