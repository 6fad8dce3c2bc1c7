// SPDX-License-Identifier: Apache-2.0

#include "print/text.h"

#include <unictype.h>
#include <unistr.h>
#include <uniwidth.h>

#include <algorithm>

namespace pitool {
namespace {

constexpr std::size_t NONE = std::string_view::npos;

bool IsPlain(char byte) {
    return byte >= ' ' && byte <= '~';
}

bool IsPrintable(std::uint32_t codePoint) {
    constexpr std::uint32_t BREAKING = UC_CATEGORY_MASK_Cc | UC_CATEGORY_MASK_Zl | UC_CATEGORY_MASK_Zp;
    return !uc_is_general_category_withtable(codePoint, BREAKING) && !uc_is_property_bidi_control(codePoint);
}

struct Character {
    std::size_t m_Length;  ///< bytes
    std::size_t m_Width;   ///< columns
};

/// The first character of a text that is not empty. Bytes that are none take a column each.
Character FirstCharacter(std::string_view text) {
    std::uint32_t codePoint = 0;
    const std::size_t length = IsPlain(text.front()) ? 0 : DecodeCharacter(text, codePoint);
    const int width = length != 0 ? uc_width(codePoint, "UTF-8") : 1;
    return {std::max<std::size_t>(length, 1), static_cast<std::size_t>(width < 0 ? 1 : width)};
}

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

/// Where a line that is too long ends, given how much of it fits.
std::size_t BreakPlace(std::string_view text, std::size_t fitting) {
    const std::size_t blank = text.rfind(' ', fitting);
    if (blank != NONE && text.find_first_not_of(' ') < blank) {
        return blank;
    }
    const std::size_t end = text.find_last_of("/_-", fitting - 1);
    return end != NONE && end != 0 ? end + 1 : fitting;
}

}  // namespace

std::size_t DecodeCharacter(std::string_view text, std::uint32_t& codePoint) {
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const int length = u8_mbtoucr(&codePoint, bytes, text.size());
    return length > 0 ? static_cast<std::size_t>(length) : 0;
}

std::string PrintableText(std::string_view text) {
    std::string printable;
    for (;;) {
        const auto* const special = std::find_if_not(text.begin(), text.end(), IsPlain);
        printable.append(text.begin(), special);
        text.remove_prefix(static_cast<std::size_t>(special - text.begin()));
        if (text.empty()) {
            return printable;
        }
        std::uint32_t codePoint = 0;
        const std::size_t length = DecodeCharacter(text, codePoint);
        printable += length != 0 && IsPrintable(codePoint) ? text.substr(0, length) : "?";
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
}

std::string HtmlText(std::string_view text) {
    std::string html;
    for (const char byte : PrintableText(text)) {
        switch (byte) {
            case '&': html += "&amp;"; break;
            case '<': html += "&lt;"; break;
            case '>': html += "&gt;"; break;
            case '"': html += "&quot;"; break;
            default: html += byte;
        }
    }
    return html;
}

std::string Quoted(std::string_view text) {
    constexpr std::size_t LONGEST = 40;
    const bool cut = text.size() > LONGEST;
    return "\"" + PrintableText(text.substr(0, LONGEST)) + (cut ? "...\"" : "\"");
}

std::size_t DisplayWidth(std::string_view text) {
    std::size_t width = 0;
    while (!text.empty()) {
        const Character character = FirstCharacter(text);
        width += character.m_Width;
        text.remove_prefix(character.m_Length);
    }
    return width;
}

std::size_t FittingLength(std::string_view text, std::size_t width) {
    std::size_t length = 0;
    std::size_t used = 0;
    while (length < text.size()) {
        const Character next = FirstCharacter(text.substr(length));
        used += next.m_Width;
        if (used > width && length != 0) {
            break;
        }
        length += next.m_Length;
    }
    return length;
}

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

std::vector<std::string_view> WrapText(std::string_view text, std::size_t width) {
    std::vector<std::string_view> lines;
    for (;;) {
        const std::size_t fitting = FittingLength(text, width);
        if (fitting == text.size()) {
            lines.push_back(text);
            return lines;
        }
        const std::string_view line = text.substr(0, BreakPlace(text, fitting));
        text.remove_prefix(line.size());
        lines.push_back(line.substr(0, line.find_last_not_of(' ') + 1));
        text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
        if (text.empty()) {
            return lines;
        }
    }
}

void AddWrapped(std::string_view lead, std::string_view furtherLead, std::string_view text, Style style,
                const Screen& screen, std::string& output) {
    const std::size_t leadWidth = std::max(DisplayWidth(lead), DisplayWidth(furtherLead));
    const bool wraps = screen.m_Columns >= leadWidth + NARROWEST_TEXT;
    const std::size_t width = wraps ? screen.m_Columns - leadWidth : NONE;
    std::string_view before = lead;
    for (const std::string_view line : WrapText(text, width)) {
        AddStyled(before, Style::FAINT, screen.m_Colors, output);
        AddStyled(line, style, screen.m_Colors, output);
        output += '\n';
        before = furtherLead;
    }
}

}  // namespace pitool
