// SPDX-License-Identifier: Apache-2.0
/// @file
/// Layouts as JSON, in the shape that docs/pitool-layout-json.md describes.
#pragma once

#include "layout_document.h"

#include <string>

namespace pitool {

/// @param file the document as the command line names it
std::string LayoutJson(const std::string& file, const LayoutDocument& document);

}  // namespace pitool
