// SPDX-License-Identifier: Apache-2.0
/// @file
/// A plug-in at work.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "plugin_interface.h"

namespace service {

using Texts = std::vector<std::string>;

/// A setting of a plug-in: "mdraid.root=/srv/captured".
struct Setting {
    std::string m_Plugin;
    std::string m_Key;
    std::string m_Value;
};

/// A plug-in, in this process (LoadPlugin) or in one of its own (IsolatePlugin). One thread at a time.
class Plugin {
public:
    virtual ~Plugin() = default;

    virtual const std::string& Name() const = 0;

    /// Asks for objects. What the plug-in throws in spite of the rules becomes an error.
    /// @param errors takes at least one line when something went wrong
    virtual std::vector<PI::CObject> GetObjects(Texts& errors) = 0;

    /// Asks for events; otherwise as GetObjects.
    virtual std::vector<PI::CEvent> GetEvents(Texts& errors) = 0;

    /// Carries out an operation, as PluginExecute describes it; otherwise as GetObjects.
    /// @return an error code; INVALID_OPERATION from a plug-in that carries nothing out
    virtual int Execute(std::uint64_t objectID, const PI::COperation& operation, const TaskReport& report,
                        PI::CTask& task, Texts& errors) = 0;
};

/// Loads a plug-in into this process, for as long as the result lives.
/// @param settings it gets those that are addressed to it
/// @throws std::runtime_error saying why the file is no plug-in for this host, or which setting it does not
///         take
std::unique_ptr<Plugin> LoadPlugin(const std::filesystem::path& file,
                                   const std::vector<Setting>& settings = {});

/// The files of a folder whose names end in ".so", in alphabetical order.
/// @throws std::runtime_error when the folder cannot be read
std::vector<std::filesystem::path> FindPlugins(const std::filesystem::path& folder);

}  // namespace service
