// SPDX-License-Identifier: Apache-2.0
/// @file
/// Ending the host in good order.
#pragma once

#include <chrono>

namespace service {

/// From now on the first SIGINT or SIGTERM only asks to end; one that comes
/// two seconds later or more ends the host.
void ListenForEnd();

bool IsEndAsked();

/// Waits, but not beyond the request to end.
/// @return IsEndAsked()
bool WaitForEnd(std::chrono::milliseconds time);

}  // namespace service
