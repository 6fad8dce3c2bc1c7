// SPDX-License-Identifier: Apache-2.0
/// @file
/// Finds what a configuration document lost on its way into the record: reading never fails, it falls back.
#pragma once

#include "layout_document.h"

#include <string>

namespace pitool {

constexpr const char* ARRAY_ROOT = "ArrayConfiguration";
constexpr const char* LOGICAL_DRIVE_ROOT = "LogicalDriveConfiguration";

/// Compares a document with the record that was read from it: attributes that are missing, are no numbers or
/// wrap, a unit that is none, and elements that nothing was read from.
///
/// @param text  the document as it was parsed
/// @param root  its root element
LayoutWarnings CheckArray(const std::string& text, const VELK::XML::xml_node& root, const PI::CArray& array);
LayoutWarnings CheckLogicalDrive(const std::string& text, const VELK::XML::xml_node& root,
                                 const PI::CLogicalDrive& drive);

/// Where an element begins.
TextPlace PlaceOfElement(const std::string& text, const VELK::XML::xml_node& element);

}  // namespace pitool
