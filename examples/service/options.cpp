// SPDX-License-Identifier: Apache-2.0

#include "options.h"

#include <getopt.h>

#include <algorithm>
#include <charconv>
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
    "  -l, --language FILE         texts of the events (strings.en.xml beside the program)\n"
    "  -h, --help                  print this and exit\n"
    "\n"
    "The exit status is 0, 1 when a plug-in reported an error or could not be loaded, and 2 when the\n"
    "command line is wrong.\n";

Options ParseOptions(int argc, char** argv) {
    static const option LONG_OPTIONS[] = {
        {"set", required_argument, nullptr, 's'},
        {"trace", required_argument, nullptr, 't'},
        {"trace-folder", required_argument, nullptr, 'd'},
        {"language", required_argument, nullptr, 'l'},
        {"help", no_argument, nullptr, 'h'},
        {nullptr, 0, nullptr, 0},
    };
    Options options;
    opterr = 0;
    // NOLINTNEXTLINE(concurrency-mt-unsafe): before any thread starts
    for (int option = 0; (option = getopt_long(argc, argv, ":s:t:d:l:h", LONG_OPTIONS, nullptr)) != -1;) {
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
            case 'l': options.m_LanguageFile = optarg; break;
            case 'h': options.m_ShowHelp = true; return options;
            case ':': throw std::invalid_argument(std::string(argv[optind - 1]) + " needs a value");
            default: throw std::invalid_argument("there is no option " + std::string(argv[optind - 1]));
        }
    }
    if (argc - optind != 1) {
        throw std::invalid_argument(optind == argc ? "the folder of the plug-ins is missing"
                                                   : "one folder is enough");
    }
    options.m_PluginFolder = argv[optind];
    return options;
}

}  // namespace service
