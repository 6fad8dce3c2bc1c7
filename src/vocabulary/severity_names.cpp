// SPDX-License-Identifier: Apache-2.0

#include <pi/vocabulary.h>

namespace PI {

const std::string& SeverityToString(int severity) {
    // Too short to be allocated, so nothing is thrown.
    static const std::string debug = "DEBUG";
    static const std::string information = "INFORMATION";
    static const std::string warning = "WARNING";
    static const std::string error = "ERROR";
    switch (severity) {
        case Severity::INFORMATION: return information;
        case Severity::WARNING: return warning;
        case Severity::ERROR: return error;
        default: return debug;
    }
}

}  // namespace PI
