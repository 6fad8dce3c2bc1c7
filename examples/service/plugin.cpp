// SPDX-License-Identifier: Apache-2.0

#include "plugin.h"

#include <cxxabi.h>
#include <dlfcn.h>

#include <algorithm>
#include <stdexcept>
#include <system_error>

#include "shared_object.h"

namespace service {
namespace {

/// Calls an entry point.
/// @param call takes a list for errors and returns an error code
/// @return the error code
template <class Call>
int Ask(std::vector<std::string>& errors, Call call) {
    std::vector<std::string> ownErrors;
    int code = PI::ErrorCode::GENERAL;
    try {
        code = call(ownErrors);
    } catch (const std::exception& error) {
        ownErrors.push_back(std::string("exception: ") + error.what());
    } catch (const abi::__forced_unwind&) {
        throw;  // the thread is being cancelled
    } catch (...) {
        ownErrors.emplace_back("exception of an unknown type");
    }
    if (code != PI::ErrorCode::SUCCESS && ownErrors.empty()) {
        ownErrors.push_back("error " + std::to_string(code) + " " + PI::ErrorCodeToString(code));
    }
    errors.insert(errors.end(), ownErrors.begin(), ownErrors.end());
    return code;
}

/// What the loader says, without the path that it begins with.
std::string LoaderError(const std::filesystem::path& file) {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): one text per thread
    const char* const error = dlerror();
    std::string text = error == nullptr ? "cannot be loaded" : error;
    const std::string prefix = file.string() + ": ";
    if (text.compare(0, prefix.size(), prefix) == 0) {
        text.erase(0, prefix.size());
    }
    if (text.find("undefined symbol") != std::string::npos) {
        text +=
            ", which the libraries of this host do not have: perhaps it was built for another release, or "
            "in another mode of the standard library";
    }
    return text;
}

/// Refuses a plug-in whose objects lie in memory otherwise than those of this host.
void CheckBuild(decltype(PluginBuild)* build) {
    if (build == nullptr) {
        return;
    }
    std::size_t count = 0;
    const PI::_BUILD_FIGURE* const figures = build(&count);
    const std::string difference = PI::BuildDifference(figures, count);
    if (!difference.empty()) {
        throw std::runtime_error("does not fit this host: " + difference);
    }
}

}  // namespace

template <class Function>
void Plugin::Find(const char* name, Function*& function) const {
    function = reinterpret_cast<Function*>(dlsym(m_Handle, name));
    if (function == nullptr) {
        throw std::runtime_error(std::string("has no entry point ") + name);
    }
}

Plugin::Plugin(const std::filesystem::path& file) {
    RequireSharedObject(file);
    m_Handle = dlopen(std::filesystem::absolute(file).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (m_Handle == nullptr) {
        throw std::runtime_error(LoaderError(std::filesystem::absolute(file)));
    }
    try {
        decltype(PluginInterfaceVersion)* version = nullptr;
        decltype(PluginName)* name = nullptr;
        CheckBuild(reinterpret_cast<decltype(PluginBuild)*>(dlsym(m_Handle, "PluginBuild")));
        Find("PluginInterfaceVersion", version);
        if (version() != PLUGIN_INTERFACE_VERSION) {
            throw std::runtime_error("is made for version " + std::to_string(version()) +
                                     " of the interface, this host has version " +
                                     std::to_string(PLUGIN_INTERFACE_VERSION));
        }
        Find("PluginName", name);
        Find("PluginConfigure", m_Configure);
        Find("PluginGetObjects", m_GetObjects);
        Find("PluginGetEvents", m_GetEvents);
        m_Execute = reinterpret_cast<decltype(PluginExecute)*>(dlsym(m_Handle, "PluginExecute"));
        const char* const text = name();
        if (text == nullptr || *text == '\0') {
            throw std::runtime_error("has no name");
        }
        m_Name = text;
    } catch (...) {
        dlclose(m_Handle);
        throw;
    }
}

Plugin::~Plugin() {
    dlclose(m_Handle);
}

int Plugin::Configure(const std::string& key, const std::string& value) {
    std::vector<std::string> ignored;
    return Ask(ignored, [&](auto&) { return m_Configure(key.c_str(), value.c_str()); });
}

std::vector<PI::CObject> Plugin::GetObjects(std::vector<std::string>& errors) {
    std::vector<PI::CObject> objects;
    Ask(errors, [&](auto& own) { return m_GetObjects(objects, own); });
    for (PI::CObject& object : objects) {
        if (m_Execute == nullptr) {
            object.m_Operations.clear();
        }
    }
    return objects;
}

std::vector<PI::CEvent> Plugin::GetEvents(std::vector<std::string>& errors) {
    std::vector<PI::CEvent> events;
    Ask(errors, [&](auto& own) { return m_GetEvents(events, own); });
    return events;
}

int Plugin::Execute(std::uint64_t objectID, const PI::COperation& operation,
                    const std::function<bool(const PI::CTask&)>& report, PI::CTask& task,
                    std::vector<std::string>& errors) {
    if (m_Execute == nullptr) {
        errors.emplace_back("carries nothing out");
        return PI::ErrorCode::INVALID_OPERATION;
    }
    return Ask(errors, [&](auto& own) { return m_Execute(objectID, operation, report, task, own); });
}

std::vector<std::filesystem::path> FindPlugins(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->path().extension() == ".so") {
            files.push_back(entry->path());
        }
    }
    if (error) {
        throw std::runtime_error(folder.string() + ": " + error.message());
    }
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace service
