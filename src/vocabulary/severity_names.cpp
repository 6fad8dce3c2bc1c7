// SPDX-License-Identifier: Apache-2.0

#include <pi/vocabulary.h>

namespace PI {

namespace {

// Made with the library and not at first use, so that they outlive the static objects of plug-ins.
const std::string debug = "DEBUG";
const std::string information = "INFORMATION";
const std::string warning = "WARNING";
const std::string error = "ERROR";

}  // namespace

const std::string& SeverityToString(int severity) {
    switch (severity) {
        case Severity::INFORMATION: return information;
        case Severity::WARNING: return warning;
        case Severity::ERROR: return error;
        default: return debug;
    }
}

}  // namespace PI
