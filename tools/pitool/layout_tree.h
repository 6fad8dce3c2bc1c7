// SPDX-License-Identifier: Apache-2.0
/// @file
/// Layouts as a tree.
#pragma once

#include "layout_document.h"

#include <string>

namespace pitool {

/// The tree, one line a node.
std::string LayoutTree(const LayoutDocument& document);

}  // namespace pitool
