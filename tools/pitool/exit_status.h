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

}  // namespace pitool
