// SPDX-License-Identifier: Apache-2.0

#include "event_strings.h"

#include "print/output.h"

#include <velkx/language_support.h>

#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace pitool {

std::string DefaultStringsFile() {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    if (error) {
        return "";
    }
    for (const char* place : {PITOOL_INSTALLED_STRINGS, PITOOL_BUILT_STRINGS}) {
        const fs::path file = (program.parent_path() / place).lexically_normal();
        if (fs::is_regular_file(file, error)) {
            return file.string();
        }
    }
    return "";
}

bool LoadStrings(const std::string& file) {
    const std::string path = file.empty() ? DefaultStringsFile() : file;
    if (path.empty()) {
        ReportWarning("no language file was found: every description reads \"Unknown Event\"");
        return true;
    }
    try {
        CLanguageSupport::LoadFile(path);
        return true;
    } catch (const std::runtime_error& failure) {
        ReportError(failure.what());
        return false;
    }
}

}  // namespace pitool
