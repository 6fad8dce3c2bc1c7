// SPDX-License-Identifier: Apache-2.0
/// @file
/// A loaded plug-in.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "plugin_interface.h"

namespace service {

/// Keeps a plug-in loaded as long as it lives. One thread at a time.
class Plugin {
public:
    /// @throws std::runtime_error saying why the file is no plug-in for this host
    explicit Plugin(const std::filesystem::path& file);
    ~Plugin();
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;

    const std::string& Name() const { return m_Name; }

    /// @return an error code
    int Configure(const std::string& key, const std::string& value) const;

    /// Asks for objects. What the plug-in throws in spite of the rules becomes an error.
    /// @param errors takes at least one line when something went wrong
    std::vector<PI::CObject> GetObjects(std::vector<std::string>& errors) const;

    /// Asks for events; otherwise as GetObjects.
    std::vector<PI::CEvent> GetEvents(std::vector<std::string>& errors) const;

    /// Carries out an operation, as PluginExecute describes it; otherwise as GetObjects.
    /// @return an error code; INVALID_OPERATION from a plug-in that carries nothing out
    int Execute(std::uint64_t objectID, const PI::COperation& operation,
                const std::function<bool(const PI::CTask&)>& report, PI::CTask& task,
                std::vector<std::string>& errors) const;

private:
    template <class Function>
    void Find(const char* name, Function*& function) const;

    void* m_Handle;
    std::string m_Name;
    decltype(PluginConfigure)* m_Configure = nullptr;
    decltype(PluginGetObjects)* m_GetObjects = nullptr;
    decltype(PluginGetEvents)* m_GetEvents = nullptr;
    decltype(PluginExecute)* m_Execute = nullptr;
};

/// The files of a folder whose names end in ".so", in alphabetical order.
/// @throws std::runtime_error when the folder cannot be read
std::vector<std::filesystem::path> FindPlugins(const std::filesystem::path& folder);

}  // namespace service
