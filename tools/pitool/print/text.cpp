// SPDX-License-Identifier: Apache-2.0

#include "print/text.h"

#include <unictype.h>
#include <unistr.h>
#include <uniwidth.h>

#include <algorithm>

namespace pitool {
namespace {

constexpr std::size_t NONE = std::string_view::npos;

/// Whether a text is printable ASCII, as nearly all are.
bool IsPlain(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char byte) { return byte >= ' ' && byte <= '~'; });
}

const std::uint8_t* Bytes(std::string_view text) {
    return reinterpret_cast<const std::uint8_t*>(text.data());
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

std::string PrintableText(std::string_view text) {
    constexpr std::uint32_t BREAKING = UC_CATEGORY_MASK_Cc | UC_CATEGORY_MASK_Zl | UC_CATEGORY_MASK_Zp;
    if (IsPlain(text)) {
        return std::string(text);
    }
    std::string printable;
    while (!text.empty()) {
        ucs4_t codePoint = 0;
        const int length = u8_mbtoucr(&codePoint, Bytes(text), text.size());
        const bool isPrintable = length > 0 && !uc_is_general_category_withtable(codePoint, BREAKING) &&
                                 !uc_is_property_bidi_control(codePoint);
        const auto bytes = static_cast<std::size_t>(std::max(length, 1));
        printable += isPrintable ? text.substr(0, bytes) : "?";
        text.remove_prefix(bytes);
    }
    return printable;
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

std::string InQuotes(std::string_view text, char escape) {
    std::string quoted = "\"";
    for (const char byte : PrintableText(text)) {
        quoted.append(byte == '"' || byte == escape ? 1 : 0, escape) += byte;
    }
    return quoted + '"';
}

std::string Quoted(std::string_view text) {
    constexpr std::size_t LONGEST = 40;
    return "\"" + PrintableText(text.substr(0, LONGEST)) + (text.size() > LONGEST ? "...\"" : "\"");
}

std::size_t DisplayWidth(std::string_view text) {
    return IsPlain(text) ? text.size()
                         : static_cast<std::size_t>(u8_width(Bytes(text), text.size(), "UTF-8"));
}

std::size_t FittingLength(std::string_view text, std::size_t width) {
    std::size_t length = 0;
    for (std::size_t used = 0; length < text.size();) {
        const std::string_view rest = text.substr(length);
        const int bytes = std::max(u8_mblen(Bytes(rest), rest.size()), 1);
        used += DisplayWidth(rest.substr(0, static_cast<std::size_t>(bytes)));
        if (used > width && length != 0) {
            break;
        }
        length += static_cast<std::size_t>(bytes);
    }
    return length;
}

void AddStyled(std::string_view printable, Style style, bool colors, std::string& text) {
    // In the order of Style.
    constexpr const char* BEGIN[] = {"", "\x1B[1m", "\x1B[1;31m", "\x1B[33m", "\x1B[2m"};
    const bool isStyled = colors && style != Style::PLAIN && !printable.empty();
    text += isStyled ? BEGIN[static_cast<std::size_t>(style)] : "";
    text += printable;
    text += isStyled ? "\x1B[0m" : "";
}

Style SeverityStyle(std::string_view severity) {
    return severity == "ERROR"     ? Style::FAILING
           : severity == "WARNING" ? Style::WARNING
           : severity == "DEBUG"   ? Style::FAINT
                                   : Style::PLAIN;
}

std::vector<std::string_view> WrapText(std::string_view text, std::size_t width) {
    std::vector<std::string_view> lines;
    for (std::size_t fitting = 0; (fitting = FittingLength(text, width)) < text.size();) {
        const std::string_view line = text.substr(0, BreakPlace(text, fitting));
        text.remove_prefix(line.size());
        lines.push_back(line.substr(0, line.find_last_not_of(' ') + 1));
        text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
        if (text.empty()) {
            return lines;
        }
    }
    lines.push_back(text);
    return lines;
}

void AddWrapped(std::string_view lead, std::string_view furtherLead, std::string_view text, Style style,
                const Screen& screen, std::string& output) {
    const std::size_t leadWidth = std::max(DisplayWidth(lead), DisplayWidth(furtherLead));
    const bool wraps = screen.m_Columns >= leadWidth + NARROWEST_TEXT;
    for (const std::string_view line : WrapText(text, wraps ? screen.m_Columns - leadWidth : NONE)) {
        AddStyled(lead, Style::FAINT, screen.m_Colors, output);
        AddStyled(line, style, screen.m_Colors, output);
        output += '\n';
        lead = furtherLead;
    }
}

}  // namespace pitool
