// SPDX-License-Identifier: Apache-2.0
/// @file
/// A plug-in in a process of its own.
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "plugin_messages.h"
#include "plugin_process.h"
#include "worker.h"

namespace service {

struct IsolationLimits {
    std::chrono::milliseconds m_Time{60000};      ///< for one call
    std::size_t m_MemoryMB = 1024;                ///< of one answer; the process knows its own
    std::chrono::milliseconds m_FirstPause{100};  ///< before the first restart; doubles with each
    std::chrono::milliseconds m_LongestPause{
        60000};  ///< who lives longer than that begins with the first again
};

/// Runs a plug-in in a process of its own, so that nothing that the plug-in does harms the host.
///
/// When the process ends, does not answer in time, or answers what cannot be read, the call brings an error,
/// the next GetEvents an event (EventID::INTERNAL), and the first call after a pause starts the process
/// again, with its settings. Calls before that bring an error at once.
class IsolatedPlugin : public Worker {
public:
    /// Starts the process.
    /// @param command path and arguments of a program that calls ServePlugin
    /// @param name    of the plug-in, until it tells
    /// @throws std::runtime_error saying why the file is no plug-in for this host
    IsolatedPlugin(std::vector<std::string> command, std::string name, const IsolationLimits& limits);

    const std::string& Name() const override { return m_Name; }
    /// Kept for restarts, unless the plug-in refuses it.
    int Configure(const std::string& key, const std::string& value) override;
    std::vector<PI::CObject> GetObjects(std::vector<std::string>& errors) override;
    std::vector<PI::CEvent> GetEvents(std::vector<std::string>& errors) override;
    /// The time for a call begins anew with each report.
    int Execute(std::uint64_t objectID, const PI::COperation& operation,
                const std::function<bool(const PI::CTask&)>& report, PI::CTask& task,
                std::vector<std::string>& errors) override;

private:
    void Start(std::vector<std::string>& errors);
    void Limit();
    template <class Take>
    Message Exchange(const Message& request, Take take);
    template <class Take>
    Message Call(const Message& request, std::vector<std::string>& errors, Take take);
    void Fail(const std::string& reason, std::vector<std::string>& errors);

    const std::vector<std::string> m_Command;
    std::string m_Name;
    const IsolationLimits m_Limits;
    std::vector<std::pair<std::string, std::string>> m_Settings;
    std::unique_ptr<PluginProcess> m_Process;
    bool m_IsRunning = false;
    std::string m_Doing;  // what the process has been asked for
    std::chrono::steady_clock::time_point m_Started;
    std::chrono::steady_clock::time_point m_LastAnswer;
    std::chrono::steady_clock::time_point m_NextStart;
    std::chrono::milliseconds m_Pause{0};
    std::vector<PI::CEvent> m_Events;
};

}  // namespace service
