// SPDX-License-Identifier: Apache-2.0
// What the plug-in exports for the host.
#pragma once

#include <pi/pi.h>

#include <vector>

extern "C" {

/// Adds what the plug-in manages: one drive.
PI_API void PluginGetObjects(std::vector<PI::CObject>& objects);
}
