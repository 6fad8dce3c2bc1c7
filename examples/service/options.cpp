// SPDX-License-Identifier: Apache-2.0

#include "options.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>
#include <stdexcept>
#include <string_view>

#include "trace_files.h"

namespace service {
namespace {

Setting ParseSetting(const std::string& text) {
    const std::size_t equals = text.find('=');
    const std::size_t dot = text.find('.');
    if (equals == std::string::npos || dot >= equals || dot == 0 || dot + 1 == equals) {
        throw std::invalid_argument("\"" + text + "\" is not of the form PLUGIN.KEY=VALUE");
    }
    return {text.substr(0, dot), text.substr(dot + 1, equals - dot - 1), text.substr(equals + 1)};
}

/// Whether a text begins with the name of a parameter and an equals sign.
bool BeginsParameter(std::string_view text) {
    const std::size_t equals = text.find('=');
    return equals != 0 && equals != std::string_view::npos &&
           text.substr(0, equals).find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_") ==
               std::string_view::npos;
}

Request ParseRequest(const std::string& text) {
    std::vector<std::string> parts = {""};
    for (std::size_t i = 0; i < text.size(); ++i) {
        // A colon within a value does not end it.
        if (text[i] == ':' && (parts.size() < 4 || BeginsParameter(std::string_view(text).substr(i + 1)))) {
            parts.emplace_back();
        } else {
            parts.back() += text[i];
        }
    }
    const auto isEmpty = [](const std::string& part) { return part.empty(); };
    if (parts.size() < 3 || std::any_of(parts.begin(), parts.end(), isEmpty) ||
        !std::all_of(parts.begin() + 3, parts.end(), BeginsParameter)) {
        throw std::invalid_argument("\"" + text +
                                    "\" is not of the form PLUGIN:OBJECT:OPERATION[:NAME=VALUE]...");
    }
    Request request = {parts[0], parts[1], parts[2], {}};
    for (std::size_t i = 3; i < parts.size(); ++i) {
        const std::size_t equals = parts[i].find('=');
        request.m_Parameters.emplace_back(parts[i].substr(0, equals), parts[i].substr(equals + 1));
    }
    return request;
}

std::chrono::milliseconds ParseInterval(const std::string& text) {
    double seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    if (error != std::errc() || end != text.data() + text.size() || !(seconds >= 0.001 && seconds <= 86400)) {
        throw std::invalid_argument("\"" + text + "\" is no number of seconds from 0.001 to 86400");
    }
    return std::chrono::milliseconds(std::lround(seconds * 1000));
}

}  // namespace

Options ParseOptions(int argc, char** argv) {
    Options options;
    options.m_Arguments.assign(argv, argv + argc);
    std::vector<std::string> settings;
    std::string interval;
    int timeLimitMs = 60000;
    std::string request;
    CLI::App app("Loads the plug-ins (*.so) in FOLDER and prints their inventory and events.", "service");
    app.add_option("FOLDER", options.m_PluginFolder, "Where the plug-ins are")->required()->option_text(" ");
    app.add_option("-s,--set", settings, "Change a setting of a plug-in; may be repeated")
        ->allow_extra_args(false)
        ->option_text("PLUGIN.KEY=VALUE");
    app.add_option(
           "-t,--trace", options.m_TraceCategories,
           "Write traces to trace-CATEGORY.log: 275 those of plug-ins, 276 their\ndetails, 3 those of "
           "estimates of time remaining; may be repeated")
        ->check(CLI::IsMember(TraceCategories()))
        ->allow_extra_args(false)
        ->option_text("CATEGORY");
    app.add_option("-d,--trace-folder", options.m_TraceFolder, "Where trace files go (the current folder)")
        ->option_text("FOLDER");
    app.add_option("-l,--language", options.m_LanguageFiles,
                   "Texts of the events (strings.en.xml beside the program); may be repeated")
        ->allow_extra_args(false)
        ->option_text("FILE");
    app.add_flag(
        "-j,--json", options.m_PrintJson,
        "Print lines of JSON: {\"plugin\":NAME,\"object\":OBJECT}, the same with an\nevent, or with the "
        "identifier of an object that is \"gone\"");
    app.add_flag(
        "-w,--watch", interval,
        "Go on until SIGINT or SIGTERM, and print what changes, looking every 10\nseconds, or as often "
        "as --watch=SECONDS says");
    app.add_flag("-a,--allow-changes", options.m_AllowChanges,
                 "Let operations be carried out; without it nothing is changed on this machine");
    app.add_option("-x,--execute", request,
                   "Carry out an operation that OBJECT (identifier, name or device) offers,\nwith these "
                   "parameters (of a document: its file), instead of printing")
        ->option_text("PLUGIN:OBJECT:OPERATION[:NAME=VALUE]...");
    app.add_flag("-i,--isolate", options.m_Isolate,
                 "Run each plug-in in a process of its own, which is started again when it\nends, reaches a "
                 "limit, or answers what cannot be read");
    app.add_option("--time-limit", timeLimitMs,
                   "For an answer of an isolated plug-in, in milliseconds (60000)")
        ->check(CLI::Range(1, INT_MAX))
        ->option_text("MS");
    app.add_option("--memory-limit", options.m_Limits.m_MemoryMB,
                   "For an isolated plug-in, beyond the memory of the host's program (1024)")
        ->check(CLI::Range(1, INT_MAX))
        ->option_text("MB");
    app.add_option("--isolated-plugin", options.m_IsolatedPlugin)->group("");
    app.footer(
        "The exit status is 0, 1 when a plug-in reported an error, could not be loaded or failed to\n"
        "carry out an operation, and 2 when the command line is wrong.");
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        options.m_Help = app.help();
        return options;
    } catch (const CLI::ParseError& error) {
        throw std::invalid_argument(error.what());
    }
    options.m_Limits.m_Time = std::chrono::milliseconds(timeLimitMs);
    for (const std::string& setting : settings) {
        options.m_Settings.push_back(ParseSetting(setting));
    }
    if (app.count("--watch") != 0) {
        options.m_WatchInterval = ParseInterval(interval == "true" ? "10" : interval);  // by itself a flag
    }
    if (app.count("--execute") != 0) {
        options.m_Request = ParseRequest(request);
    }
    if (options.m_Request.has_value() && !options.m_AllowChanges) {
        throw std::invalid_argument("without --allow-changes nothing is carried out");
    }
    return options;
}

}  // namespace service
