// SPDX-License-Identifier: Apache-2.0
/// @file
/// The XML document model: the types and functions of pugixml under the in-house name.
#pragma once

#include <pugixml.hpp>

namespace VELK {
namespace XML {
using namespace pugi;
}
}  // namespace VELK
