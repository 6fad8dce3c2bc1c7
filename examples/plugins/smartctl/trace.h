// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the plug-in writes into the service's trace files.
#pragma once

#include <string>

namespace smartctl {

/// Category 275: one line for each thing done.
void Trace(const std::string& text);

/// Category 276: details.
void TraceDebug(const std::string& text);

}  // namespace smartctl
