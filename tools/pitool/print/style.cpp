// SPDX-License-Identifier: Apache-2.0

#include "print/style.h"

namespace pitool {
namespace {

/// The escape sequence that begins a style; empty for PLAIN.
const char* Begin(Style style) {
    switch (style) {
        case Style::HEADING: return "\x1B[1m";
        case Style::FAILING: return "\x1B[1;31m";
        case Style::WARNING: return "\x1B[33m";
        case Style::FAINT: return "\x1B[2m";
        case Style::PLAIN: break;
    }
    return "";
}

}  // namespace

void AddStyled(std::string_view printable, Style style, bool colors, std::string& text) {
    const bool styled = colors && style != Style::PLAIN && !printable.empty();
    text += styled ? Begin(style) : "";
    text += printable;
    text += styled ? "\x1B[0m" : "";
}

Style SeverityStyle(std::string_view severity) {
    return severity == "ERROR"     ? Style::FAILING
           : severity == "WARNING" ? Style::WARNING
           : severity == "DEBUG"   ? Style::FAINT
                                   : Style::PLAIN;
}

}  // namespace pitool
