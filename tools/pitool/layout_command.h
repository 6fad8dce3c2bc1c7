// SPDX-License-Identifier: Apache-2.0
/// @file
/// The command "layout".
#pragma once

#include "exit_status.h"

#include <string>

namespace pitool {

struct LayoutOptions {
    std::string m_File;
    bool m_Json = false;
};

/// Prints the layout that a configuration document describes on standard output, and what was lost in reading
/// it on standard error.
ExitStatus RunLayout(const LayoutOptions& options);

}  // namespace pitool
