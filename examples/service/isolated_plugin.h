// SPDX-License-Identifier: Apache-2.0
/// @file
/// A plug-in in a process of its own.
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

#include "plugin.h"

namespace service {

struct IsolationLimits {
    std::chrono::milliseconds m_Time{60000};          ///< for one call, or for a report of one that reports
    std::size_t m_MemoryMB = 1024;                    ///< of one answer; the process knows its own
    std::chrono::milliseconds m_FirstPause{100};      ///< before the first restart; doubles with each
    std::chrono::milliseconds m_LongestPause{60000};  ///< who lives longer begins with the first again
};

/// Runs a plug-in in a process of its own, so that nothing that the plug-in does harms the host.
///
/// When the process ends, does not answer in time, or answers what cannot be read, the call brings an error,
/// the next GetEvents an event (EventID::INTERNAL), and the first call after a pause starts the process
/// again. Calls before that bring an error at once.
/// @param command path and arguments of a program that calls ServePlugin
/// @param name    of the plug-in, until it tells
/// @throws std::runtime_error as LoadPlugin
std::unique_ptr<Plugin> IsolatePlugin(Texts command, std::string name, const IsolationLimits& limits);

}  // namespace service
