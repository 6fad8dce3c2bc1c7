// SPDX-License-Identifier: Apache-2.0
/// @file
/// Values of properties in words.
#pragma once

#include <pi/model.h>

#include <string>

namespace service {

/// The value as it is shown: named states by their names, capacities with their unit.
std::string PropertyText(PI::CProperty& property);

}  // namespace service
