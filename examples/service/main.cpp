// SPDX-License-Identifier: Apache-2.0
// Loads plug-ins, and prints what they report or has them carry out an operation.
#include <fcntl.h>
#include <unistd.h>
#include <velkx/language_support.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <memory>
#include <set>
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

/// @throws std::runtime_error also when what was printed before could not be written
void FlushOutput() {
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        throw std::runtime_error("the output cannot be written");
    }
}

/// No file that is opened later takes the place of an output that is closed.
void OccupyClosedOutputs() {
    int file = 0;
    do {
        file = open("/dev/null", O_RDONLY);  // so that it cannot be written
    } while (file >= 0 && file <= STDERR_FILENO);
    close(file);
}

using Plugins = std::vector<std::unique_ptr<service::Plugin>>;

auto FindPlugin(const Plugins& plugins, const std::string& name) {
    return std::find_if(plugins.begin(), plugins.end(),
                        [&](const auto& plugin) { return plugin->Name() == name; });
}

std::unique_ptr<service::Plugin> Load(const std::filesystem::path& file, const service::Options& options) {
    if (!options.m_Isolate) {
        return service::LoadPlugin(file, options.m_Settings);
    }
    service::Texts command = options.m_Arguments;  // settings among them
    command[0] = "/proc/self/exe";
    command.insert(command.begin() + 1, "--isolated-plugin=" + file.string());
    return service::IsolatePlugin(command, file.stem(), options.m_Limits);
}

Plugins LoadPlugins(const service::Options& options, bool& anyError) {
    Plugins plugins;
    const auto complain = [&anyError](const std::string& text) {
        Complain(text);
        anyError = true;
    };
    for (const std::filesystem::path& file : service::FindPlugins(options.m_PluginFolder)) {
        try {
            auto plugin = Load(file, options);
            if (FindPlugin(plugins, plugin->Name()) != plugins.end()) {
                throw std::runtime_error("is the plug-in " + plugin->Name() + ", which is loaded already");
            }
            plugins.push_back(std::move(plugin));
        } catch (const std::exception& error) {
            complain(file.filename().string() + ": " + error.what());
        }
    }
    std::set<std::string> names;
    for (const service::Setting& setting : options.m_Settings) {
        const std::string& name = setting.m_Plugin;
        if (FindPlugin(plugins, name) == plugins.end() && names.insert(name).second) {
            complain("no plug-in " + name + " is loaded that could be set up");
        }
    }
    return plugins;
}

/// What has been printed of a plug-in.
struct Printed {
    bool m_IsFirst = true;
    std::vector<PI::CObject> m_Objects;
    service::Texts m_Errors;
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
bool Report(service::Plugin& plugin, const service::Options& options,
            const std::vector<service::Language>& languages, Printed& printed) {
    service::Texts errors;
    std::vector<PI::CObject> objects = plugin.GetObjects(errors);
    const std::vector<PI::CEvent> events = plugin.GetEvents(errors);
    if (!errors.empty()) {
        service::KeepMissing(printed.m_Objects, objects);
    }
    for (const std::uint64_t id : service::RepeatedIDs(objects)) {
        errors.push_back("more than one object has the identifier " + std::to_string(id));
    }
    Print(options.m_PrintJson ? service::ChangesJson(plugin.Name(), printed.m_Objects, objects) +
                                    service::EventsJson(plugin.Name(), events)
                              : ReportText(plugin.Name(), objects, events, printed, languages));
    service::Texts& told = printed.m_Errors;
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
        FlushOutput();
    } while (options.m_WatchInterval.has_value() && !service::WaitForEnd(*options.m_WatchInterval));
    return isGood;
}

/// Prints what becomes of an operation, a line for each change.
bool Execute(const Plugins& plugins, const service::Request& request) {
    const auto plugin = FindPlugin(plugins, request.m_Plugin);
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
        return !service::WaitForEnd(std::chrono::milliseconds(0));
    };
    try {
        return service::Execute(**plugin, request, report);
    } catch (const std::exception& error) {
        throw std::runtime_error(request.m_Plugin + ": " + error.what());
    }
}

int Run(const service::Options& options) {
    if (!options.m_Help.empty()) {
        Print(options.m_Help);
        return EXIT_OK;
    }
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
        service::ServePlugin(options.m_IsolatedPlugin, options.m_Limits.m_MemoryMB, options.m_Settings);
        return EXIT_OK;
    }
    if (options.m_Request.has_value() || options.m_WatchInterval.has_value()) {
        service::ListenForEnd();
    }
    bool anyError = false;
    const auto plugins = LoadPlugins(options, anyError);
    if (options.m_Request.has_value()) {
        anyError = !Execute(plugins, *options.m_Request) || anyError;
    } else {
        anyError = !Watch(plugins, options, languages) || anyError;
    }
    return anyError ? EXIT_ERRORS : EXIT_OK;
}

}  // namespace

int main(int argc, char** argv) {
    OccupyClosedOutputs();
    service::Options options;
    try {
        options = service::ParseOptions(argc, argv);
    } catch (const std::invalid_argument& error) {
        Complain(std::string(error.what()) + "; see service --help");
        return EXIT_USAGE;
    }
    try {
        const int status = Run(options);
        FlushOutput();
        return status;
    } catch (const std::exception& error) {
        Complain(error.what());
        return EXIT_ERRORS;
    }
}
