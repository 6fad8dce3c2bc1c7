// SPDX-License-Identifier: Apache-2.0
// Loads plug-ins, and prints what they report or has them carry out an operation.
#include <velkx/language_support.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "changes.h"
#include "end_request.h"
#include "event_text.h"
#include "execution.h"
#include "inventory.h"
#include "isolated_plugin.h"
#include "options.h"
#include "plugin.h"
#include "plugin_server.h"
#include "printable_text.h"
#include "trace_files.h"

namespace {

constexpr int EXIT_OK = 0;
constexpr int EXIT_ERRORS = 1;
constexpr int EXIT_USAGE = 2;

void Print(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}

/// One line on the error output, behind what has been printed before it.
void Complain(const std::string& text) {
    std::fflush(stdout);
    std::fprintf(stderr, "service: %s\n", service::PrintableText(text).c_str());
}

using Plugins = std::vector<std::unique_ptr<service::Worker>>;

std::unique_ptr<service::Worker> Load(const std::filesystem::path& file, const service::Options& options) {
    if (!options.m_Isolate) {
        return std::make_unique<service::Plugin>(file);
    }
    std::vector<std::string> command = options.m_Arguments;
    command[0] = "/proc/self/exe";
    command.insert(command.begin() + 1, "--isolated-plugin=" + file.string());
    service::IsolationLimits limits;
    limits.m_Time = options.m_TimeLimit;
    limits.m_MemoryMB = options.m_MemoryLimitMB;
    return std::make_unique<service::IsolatedPlugin>(command, file.stem(), limits);
}

Plugins LoadPlugins(const service::Options& options, bool& anyError) {
    Plugins plugins;
    for (const std::filesystem::path& file : service::FindPlugins(options.m_PluginFolder)) {
        try {
            plugins.push_back(Load(file, options));
        } catch (const std::exception& error) {
            Complain(file.filename().string() + ": " + error.what());
            anyError = true;
        }
    }
    return plugins;
}

void Configure(const Plugins& plugins, const service::Setting& setting, bool& anyError) {
    bool found = false;
    for (const auto& plugin : plugins) {
        if (plugin->Name() != setting.m_Plugin) {
            continue;
        }
        found = true;
        const int outcome = plugin->Configure(setting.m_Key, setting.m_Value);
        if (outcome == PI::ErrorCode::INVALID_PARAMETER) {
            Complain(setting.m_Plugin + ": does not take the setting " + setting.m_Key);
        } else if (outcome != PI::ErrorCode::SUCCESS) {
            Complain(setting.m_Plugin + ": the setting " + setting.m_Key + " gives error " +
                     std::to_string(outcome) + " " + PI::ErrorCodeToString(outcome));
        }
        anyError = anyError || outcome != PI::ErrorCode::SUCCESS;
    }
    if (!found) {
        Complain("there is no plug-in " + setting.m_Plugin + " to be set up");
        anyError = true;
    }
}

/// What has been printed of a plug-in.
struct Printed {
    bool m_IsFirst = true;
    std::vector<PI::CObject> m_Objects;
    std::vector<std::string> m_Errors;
};

std::string ReportText(const std::string& plugin, const std::vector<PI::CObject>& objects,
                       const std::vector<PI::CEvent>& events, const Printed& printed,
                       const std::vector<service::Language>& languages) {
    const std::string text = (printed.m_IsFirst ? service::InventoryText(objects)
                                                : service::ChangesText(printed.m_Objects, objects)) +
                             service::EventsText(events, languages);
    return printed.m_IsFirst || !text.empty() ? "Plug-in " + service::PrintableText(plugin) + "\n" + text
                                              : "";
}

/// Looks at what a plug-in manages, and prints what is new.
/// @return whether there was no error
bool Report(service::Worker& plugin, const service::Options& options,
            const std::vector<service::Language>& languages, Printed& printed) {
    std::vector<std::string> errors;
    std::vector<PI::CObject> objects = plugin.GetObjects(errors);
    const std::vector<PI::CEvent> events = plugin.GetEvents(errors);
    if (!errors.empty()) {
        service::KeepMissing(printed.m_Objects, objects);
    }
    Print(options.m_PrintJson ? service::ChangesJson(plugin.Name(), printed.m_Objects, objects) +
                                    service::EventsJson(plugin.Name(), events)
                              : ReportText(plugin.Name(), objects, events, printed, languages));
    std::vector<std::string>& told = printed.m_Errors;
    for (const std::string& error : errors) {
        if (std::find(told.begin(), told.end(), error) == told.end()) {
            Complain(plugin.Name() + ": " + error);
            told.push_back(error);
        }
    }
    const bool isGood = errors.empty();
    printed = {false, std::move(objects), std::move(errors)};
    return isGood;
}

/// Once, or until the end is asked for.
bool Watch(const Plugins& plugins, const service::Options& options,
           const std::vector<service::Language>& languages) {
    bool isGood = true;
    std::vector<Printed> printed(plugins.size());
    do {
        for (std::size_t i = 0; i < plugins.size(); ++i) {
            isGood = Report(*plugins[i], options, languages, printed[i]) && isGood;
        }
        if (std::fflush(stdout) != 0) {
            throw std::runtime_error("the output cannot be written");
        }
    } while (options.m_WatchInterval.has_value() && !service::WaitForEnd(*options.m_WatchInterval));
    return isGood;
}

/// Prints what becomes of an operation, a line for each change.
bool Execute(const Plugins& plugins, const service::Request& request) {
    const auto plugin = std::find_if(plugins.begin(), plugins.end(),
                                     [&](const auto& each) { return each->Name() == request.m_Plugin; });
    if (plugin == plugins.end()) {
        throw std::runtime_error("there is no plug-in " + request.m_Plugin);
    }
    std::string printed;
    const auto report = [&printed](const PI::CTask& task) {
        // Not each second that less remains.
        const std::string change = task.m_TaskText2 + std::to_string(task.m_TaskStatus) + " " +
                                   (task.m_TaskFlag ? std::to_string(task.m_TaskValue2) : "");
        if (change != std::exchange(printed, change)) {
            Print(service::PrintableText(service::TaskText(task)) + "\n");
            std::fflush(stdout);
        }
        return !service::IsEndAsked();
    };
    try {
        return service::Execute(**plugin, request, report);
    } catch (const std::exception& error) {
        throw std::runtime_error(request.m_Plugin + ": " + error.what());
    }
}

int Run(const service::Options& options) {
    const std::string difference = PI::BuildDifference();
    if (!difference.empty()) {
        throw std::runtime_error("the service does not fit the library that it has got: " + difference);
    }
    std::vector<std::filesystem::path> languageFiles = options.m_LanguageFiles;
    if (languageFiles.empty()) {
        languageFiles.push_back(
            std::filesystem::read_symlink("/proc/self/exe").replace_filename("strings.en.xml"));
    }
    const std::vector<service::Language> languages = service::LoadLanguages(languageFiles);
    CLanguageSupport::LoadFile(languageFiles.front());  // for plug-ins that read texts
    for (const int category : options.m_TraceCategories) {
        service::WriteTraces(category, options.m_TraceFolder, options.m_IsolatedPlugin.stem());
    }
    if (!options.m_IsolatedPlugin.empty()) {
        service::ServePlugin(options.m_IsolatedPlugin, options.m_MemoryLimitMB);
        return EXIT_OK;
    }
    if (options.m_Request.has_value() || options.m_WatchInterval.has_value()) {
        service::ListenForEnd();
    }
    bool anyError = false;
    const auto plugins = LoadPlugins(options, anyError);
    for (const service::Setting& setting : options.m_Settings) {
        Configure(plugins, setting, anyError);
    }
    if (options.m_Request.has_value()) {
        anyError = !Execute(plugins, *options.m_Request) || anyError;
    } else {
        anyError = !Watch(plugins, options, languages) || anyError;
    }
    if (std::fflush(stdout) != 0) {
        throw std::runtime_error("the output cannot be written");
    }
    return anyError ? EXIT_ERRORS : EXIT_OK;
}

}  // namespace

int main(int argc, char** argv) {
    service::Options options;
    try {
        options = service::ParseOptions(argc, argv);
    } catch (const std::invalid_argument& error) {
        Complain(error.what());
        std::fputs(service::USAGE, stderr);
        return EXIT_USAGE;
    }
    if (options.m_ShowHelp) {
        std::fputs(service::USAGE, stdout);
        return EXIT_OK;
    }
    try {
        return Run(options);
    } catch (const std::exception& error) {
        Complain(error.what());
        return EXIT_ERRORS;
    }
}
