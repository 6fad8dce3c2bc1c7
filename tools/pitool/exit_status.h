// SPDX-License-Identifier: Apache-2.0
/// @file
/// What pitool tells the shell.
#pragma once

namespace pitool {

enum ExitStatus : int {
    EXIT_DONE = 0,
    EXIT_BAD_INPUT = 1,  ///< an input was refused, or the output could not be written whole
    EXIT_BAD_USAGE = 2,
};

/// The same with --check, as monitoring systems read it.
enum CheckStatus : int {
    CHECK_GOOD = 0,
    CHECK_LOOK = 1,
    CHECK_CRITICAL = 2,
    CHECK_UNKNOWN = 3,  ///< also for wrong usage and inputs that were refused
};

/// As monitoring systems call them.
constexpr const char* CHECK_WORDS[] = {"OK", "WARNING", "CRITICAL", "UNKNOWN"};

}  // namespace pitool
