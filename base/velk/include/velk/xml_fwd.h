// SPDX-License-Identifier: Apache-2.0
/// @file
/// Declares the types of velk/xml.h for headers that only pass them by reference or pointer.
///
/// Use this header and not declarations in VELK::XML of your own: the types are those of pugixml, so a class
/// declared in VELK::XML would be another one.
#pragma once

namespace pugi {
class xml_attribute;
class xml_document;
class xml_node;
class xml_text;
struct xml_parse_result;
}  // namespace pugi

namespace VELK {
namespace XML {
using namespace pugi;
}
}  // namespace VELK
