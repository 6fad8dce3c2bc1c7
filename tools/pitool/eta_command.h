// SPDX-License-Identifier: Apache-2.0
/// @file
/// The command "eta".
#pragma once

#include "exit_status.h"

namespace pitool {

/// Reads samples of progress from standard input and shows the estimate after each.
ExitStatus RunEta();

}  // namespace pitool
