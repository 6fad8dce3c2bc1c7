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
int Ask(Texts& errors, Call call) {
    Texts ownErrors;
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

class LoadedPlugin : public Plugin {
public:
    LoadedPlugin(const std::filesystem::path& file, const std::vector<Setting>& settings) {
        RequireSharedObject(file);
        const std::filesystem::path path = std::filesystem::absolute(file);
        m_Handle.reset(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL));
        if (m_Handle == nullptr) {
            throw std::runtime_error(LoaderError(path));
        }
        if (const auto build = FindOptional<decltype(PluginBuild)>("PluginBuild")) {
            std::size_t count = 0;
            const PI::_BUILD_FIGURE* const figures = build(&count);
            if (const std::string difference = PI::BuildDifference(figures, count); !difference.empty()) {
                throw std::runtime_error("does not fit this host: " + difference);
            }
        }
        const int version = Find<decltype(PluginInterfaceVersion)>("PluginInterfaceVersion")();
        if (version != PLUGIN_INTERFACE_VERSION) {
            throw std::runtime_error("is made for version " + std::to_string(version) +
                                     " of the interface, this host has version " +
                                     std::to_string(PLUGIN_INTERFACE_VERSION));
        }
        const auto name = Find<decltype(PluginName)>("PluginName");
        const auto configure = Find<decltype(PluginConfigure)>("PluginConfigure");
        m_GetObjects = Find<decltype(PluginGetObjects)>("PluginGetObjects");
        m_GetEvents = Find<decltype(PluginGetEvents)>("PluginGetEvents");
        m_Execute = FindOptional<decltype(PluginExecute)>("PluginExecute");
        const char* const text = name();
        if (text == nullptr || *text == '\0') {
            throw std::runtime_error("has no name");
        }
        m_Name = text;
        for (const auto& [plugin, key, value] : settings) {
            Texts reasons;
            const auto set = [&, &k = key, &v = value](Texts&) { return configure(k.c_str(), v.c_str()); };
            if (plugin == m_Name && Ask(reasons, set) != PI::ErrorCode::SUCCESS) {
                throw std::runtime_error("does not take the setting " + key + ": " + reasons.front());
            }
        }
    }

    const std::string& Name() const override { return m_Name; }

    std::vector<PI::CObject> GetObjects(Texts& errors) override {
        std::vector<PI::CObject> objects;
        Ask(errors, [&](Texts& own) { return m_GetObjects(objects, own); });
        for (PI::CObject& object : objects) {
            if (m_Execute == nullptr) {
                object.m_Operations.clear();
            }
        }
        return objects;
    }

    std::vector<PI::CEvent> GetEvents(Texts& errors) override {
        std::vector<PI::CEvent> events;
        Ask(errors, [&](Texts& own) { return m_GetEvents(events, own); });
        return events;
    }

    int Execute(std::uint64_t objectID, const PI::COperation& operation, const TaskReport& report,
                PI::CTask& task, Texts& errors) override {
        if (m_Execute == nullptr) {
            errors.emplace_back("carries nothing out");
            return PI::ErrorCode::INVALID_OPERATION;
        }
        return Ask(errors, [&](Texts& own) { return m_Execute(objectID, operation, report, task, own); });
    }

private:
    template <class Function>
    Function* FindOptional(const char* name) const {
        return reinterpret_cast<Function*>(dlsym(m_Handle.get(), name));
    }

    template <class Function>
    Function* Find(const char* name) const {
        Function* const function = FindOptional<Function>(name);
        if (function == nullptr) {
            throw std::runtime_error(std::string("has no entry point ") + name);
        }
        return function;
    }

    std::unique_ptr<void, int (*)(void*)> m_Handle{nullptr, &dlclose};
    std::string m_Name;
    decltype(PluginGetObjects)* m_GetObjects = nullptr;
    decltype(PluginGetEvents)* m_GetEvents = nullptr;
    decltype(PluginExecute)* m_Execute = nullptr;
};

}  // namespace

std::unique_ptr<Plugin> LoadPlugin(const std::filesystem::path& file, const std::vector<Setting>& settings) {
    return std::make_unique<LoadedPlugin>(file, settings);
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
