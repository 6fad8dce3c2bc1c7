// SPDX-License-Identifier: Apache-2.0
/// @file
/// A plug-in at work.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "plugin_interface.h"

namespace service {

/// A plug-in, wherever it runs: in this process (Plugin) or in one of its own (IsolatedPlugin). One thread at
/// a time.
class Worker {
public:
    Worker() = default;
    virtual ~Worker() = default;
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    virtual const std::string& Name() const = 0;

    /// @return an error code
    virtual int Configure(const std::string& key, const std::string& value) = 0;

    /// Asks for objects. What the plug-in throws in spite of the rules becomes an error.
    /// @param errors takes at least one line when something went wrong
    virtual std::vector<PI::CObject> GetObjects(std::vector<std::string>& errors) = 0;

    /// Asks for events; otherwise as GetObjects.
    virtual std::vector<PI::CEvent> GetEvents(std::vector<std::string>& errors) = 0;

    /// Carries out an operation, as PluginExecute describes it; otherwise as GetObjects.
    /// @return an error code; INVALID_OPERATION from a plug-in that carries nothing out
    virtual int Execute(std::uint64_t objectID, const PI::COperation& operation,
                        const std::function<bool(const PI::CTask&)>& report, PI::CTask& task,
                        std::vector<std::string>& errors) = 0;
};

}  // namespace service
