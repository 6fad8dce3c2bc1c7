// SPDX-License-Identifier: Apache-2.0

#include "trace_files.h"

#include <pi/trace.h>
#include <plog/Appenders/RollingFileAppender.h>
#include <plog/Formatters/TxtFormatter.h>
#include <plog/Init.h>
#include <unistd.h>

#include <cerrno>
#include <map>
#include <memory>
#include <stdexcept>
#include <system_error>

namespace service {
namespace {

constexpr std::size_t MAX_FILE_SIZE = 1000000;
constexpr int MAX_FILES = 3;

using Appender = plog::RollingFileAppender<plog::TxtFormatter>;

template <int Category>
void Init(plog::IAppender* appender) {
    // All traces are of debug severity.
    plog::init<Category>(plog::debug, appender);
}

template <int... Categories>
std::map<int, void (*)(plog::IAppender*)> MakeTable() {
    return {{Categories, &Init<Categories>}...};
}

// Loggers are numbered at compile time: each category that traces are written under is named here.
const auto& Categories() {
    static const auto table =
        MakeTable<0, 1, 2, 3, 4, 5, 6,             // base library
                  257, 258,                        // event providers
                  275, 276,                        // plug-ins
                  277, 278, 279, 280, 281, 282,    // service core
                  288, 289, 290, 291, 292, 293,    // hardware RAID
                  305, 306, 307, 308, 309, 310,    // AHCI
                  311, 312,                        // remote interface
                  315, 316, 317, 318, 319, 320,    // storage core
                  516, 517,                        // database
                  777, 778, 779, 780, 781, 782,    // chipset RAID
                  889, 1000, 2001, 2002, 2003>();  // threads, dummy, events, commands, exclusive
    return table;
}

/// The appender says nothing when it cannot write, and waits where a pipe has no reader.
void RequireWritable(const std::filesystem::path& file) {
    const bool isThere = std::filesystem::exists(std::filesystem::symlink_status(file));
    if (isThere && !std::filesystem::is_regular_file(file)) {
        throw std::runtime_error(file.string() + ": is no file");
    }
    if (access(isThere ? file.c_str() : file.parent_path().c_str(), isThere ? W_OK : W_OK | X_OK) != 0) {
        throw std::runtime_error(file.string() + ": " + std::generic_category().message(errno));
    }
}

}  // namespace

std::vector<std::string> TraceCategories() {
    std::vector<std::string> categories;
    for (const auto& [category, init] : Categories()) {
        categories.push_back(std::to_string(category));
    }
    return categories;
}

void WriteTraces(int category, const std::filesystem::path& folder, const std::string& plugin) {
    // Made before the logger, so that it outlives it.
    static std::vector<std::unique_ptr<Appender>> appenders;
    const std::filesystem::path file =
        folder / ("trace-" + std::to_string(category) + (plugin.empty() ? "" : "-" + plugin) + ".log");
    RequireWritable(file);
    appenders.push_back(std::make_unique<Appender>(file.c_str(), MAX_FILE_SIZE, MAX_FILES));
    Categories().at(category)(appenders.back().get());
    VELKTrace::tracesEnabled = true;
}

}  // namespace service
