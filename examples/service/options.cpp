// SPDX-License-Identifier: Apache-2.0

#include "options.h"

#include <getopt.h>

#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>
#include <stdexcept>
#include <string_view>

#include "trace_files.h"

namespace service {
namespace {

enum LongOption { TIME_LIMIT = 1000, MEMORY_LIMIT, SERVE };

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

unsigned ParseLimit(const std::string& text) {
    unsigned limit = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), limit);
    if (error != std::errc() || end != text.data() + text.size() || limit == 0 || limit > INT_MAX) {
        throw std::invalid_argument("\"" + text + "\" is no limit");
    }
    return limit;
}

std::chrono::milliseconds ParseInterval(const std::string& text) {
    double seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    if (error != std::errc() || end != text.data() + text.size() || !(seconds >= 0.001 && seconds <= 86400)) {
        throw std::invalid_argument("\"" + text + "\" is no number of seconds from 0.001 to 86400");
    }
    return std::chrono::milliseconds(std::lround(seconds * 1000));
}

int ParseCategory(const std::string& text) {
    int category = -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), category);
    if (error != std::errc() || end != text.data() + text.size() || !IsTraceCategory(category)) {
        throw std::invalid_argument("\"" + text + "\" is not the number of a trace category");
    }
    return category;
}

}  // namespace

const char* const USAGE =
    "Usage: service [OPTION]... FOLDER\n"
    "Loads the plug-ins (*.so) in FOLDER and prints their inventory and events.\n"
    "\n"
    "  -s, --set PLUGIN.KEY=VALUE  change a setting of a plug-in; may be repeated\n"
    "  -t, --trace CATEGORY        write the traces of a category to trace-CATEGORY.log; may be repeated\n"
    "                              (275: plug-ins, 276: their details, 3: estimates of time remaining)\n"
    "  -d, --trace-folder FOLDER   where trace files go (the current folder)\n"
    "  -l, --language FILE         texts of the events (strings.en.xml beside the program); may be repeated\n"
    "  -j, --json                  print lines of JSON: {\"plugin\":NAME,\"object\":OBJECT}, the same with "
    "an\n"
    "                              event, or with the identifier of an object that is \"gone\"\n"
    "  -w, --watch[=SECONDS]       go on until SIGINT or SIGTERM, and print what changes, looking every 10 "
    "seconds\n"
    "                              or as often as is said\n"
    "  -a, --allow-changes         let operations be carried out; without it nothing is changed on this "
    "machine\n"
    "  -x, --execute PLUGIN:OBJECT:OPERATION[:NAME=VALUE]...\n"
    "                              carry out an operation that OBJECT (identifier, name or device) offers, "
    "with\n"
    "                              these parameters (of a document: its file), instead of printing\n"
    "  -i, --isolate               run each plug-in in a process of its own, which is started again when it "
    "ends,\n"
    "                              reaches a limit, or answers what cannot be read\n"
    "      --time-limit MS         for an answer of an isolated plug-in, in milliseconds (60000)\n"
    "      --memory-limit MB       for an isolated plug-in, beyond the memory of the host's program (1024)\n"
    "  -h, --help                  print this and exit\n"
    "\n"
    "The exit status is 0, 1 when a plug-in reported an error, could not be loaded or failed to\n"
    "carry out an operation, and 2 when the command line is wrong.\n";

Options ParseOptions(int argc, char** argv) {
    constexpr const char* SHORT_OPTIONS = ":s:t:d:l:jw::ax:ih";
    static const option LONG_OPTIONS[] = {
        {"set", required_argument, nullptr, 's'},
        {"trace", required_argument, nullptr, 't'},
        {"trace-folder", required_argument, nullptr, 'd'},
        {"language", required_argument, nullptr, 'l'},
        {"allow-changes", no_argument, nullptr, 'a'},
        {"execute", required_argument, nullptr, 'x'},
        {"json", no_argument, nullptr, 'j'},
        {"watch", optional_argument, nullptr, 'w'},
        {"isolate", no_argument, nullptr, 'i'},
        {"time-limit", required_argument, nullptr, TIME_LIMIT},
        {"memory-limit", required_argument, nullptr, MEMORY_LIMIT},
        {"isolated-plugin", required_argument, nullptr, SERVE},
        {"help", no_argument, nullptr, 'h'},
        {nullptr, 0, nullptr, 0},
    };
    Options options;
    options.m_Arguments.assign(argv, argv + argc);
    opterr = 0;
    // NOLINTNEXTLINE(concurrency-mt-unsafe): before any thread starts
    for (int option = 0; (option = getopt_long(argc, argv, SHORT_OPTIONS, LONG_OPTIONS, nullptr)) != -1;) {
        switch (option) {
            case 's': options.m_Settings.push_back(ParseSetting(optarg)); break;
            case 't': {
                std::vector<int>& categories = options.m_TraceCategories;
                const int category = ParseCategory(optarg);
                if (std::find(categories.begin(), categories.end(), category) == categories.end()) {
                    categories.push_back(category);
                }
                break;
            }
            case 'd': options.m_TraceFolder = optarg; break;
            case 'l': options.m_LanguageFiles.emplace_back(optarg); break;
            case 'j': options.m_PrintJson = true; break;
            case 'w': options.m_WatchInterval = ParseInterval(optarg == nullptr ? "10" : optarg); break;
            case 'a': options.m_AllowChanges = true; break;
            case 'x': options.m_Request = ParseRequest(optarg); break;
            case 'i': options.m_Isolate = true; break;
            case TIME_LIMIT: options.m_TimeLimit = std::chrono::milliseconds(ParseLimit(optarg)); break;
            case MEMORY_LIMIT: options.m_MemoryLimitMB = ParseLimit(optarg); break;
            case SERVE: options.m_IsolatedPlugin = optarg; break;
            case 'h': options.m_ShowHelp = true; return options;
            case ':': throw std::invalid_argument(std::string(argv[optind - 1]) + " needs a value");
            default: throw std::invalid_argument("there is no option " + std::string(argv[optind - 1]));
        }
    }
    if (argc - optind != 1) {
        throw std::invalid_argument(optind == argc ? "the folder of the plug-ins is missing"
                                                   : "one folder is enough");
    }
    if (options.m_Request.has_value() && !options.m_AllowChanges) {
        throw std::invalid_argument("without --allow-changes nothing is carried out");
    }
    options.m_PluginFolder = argv[optind];
    return options;
}

}  // namespace service
