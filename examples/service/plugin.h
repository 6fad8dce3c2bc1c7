// SPDX-License-Identifier: Apache-2.0
/// @file
/// A plug-in in this process.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "worker.h"

namespace service {

/// A plug-in that is loaded into this process as long as it lives.
class Plugin : public Worker {
public:
    /// @throws std::runtime_error saying why the file is no plug-in for this host
    explicit Plugin(const std::filesystem::path& file);
    ~Plugin() override;

    const std::string& Name() const override { return m_Name; }
    int Configure(const std::string& key, const std::string& value) override;
    std::vector<PI::CObject> GetObjects(std::vector<std::string>& errors) override;
    std::vector<PI::CEvent> GetEvents(std::vector<std::string>& errors) override;
    int Execute(std::uint64_t objectID, const PI::COperation& operation,
                const std::function<bool(const PI::CTask&)>& report, PI::CTask& task,
                std::vector<std::string>& errors) override;

private:
    template <class Function>
    void Find(const char* name, Function*& function) const;

    void* m_Handle = nullptr;
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
