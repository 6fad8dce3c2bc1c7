// SPDX-License-Identifier: Apache-2.0
/// @file
/// Layouts as a tree.
#pragma once

#include "layout_document.h"
#include "print/terminal.h"

#include <string>

namespace pitool {

/// The tree, one line a node where the screen is wide enough.
std::string LayoutTree(const LayoutDocument& document, const Screen& screen = {});

}  // namespace pitool
