// SPDX-License-Identifier: Apache-2.0

#include "wrapped_text.h"

#include "display_width.h"

#include <algorithm>

namespace pitool {
namespace {

constexpr std::size_t NONE = std::string_view::npos;

/// Behind these a name can be read on in the next line.
constexpr std::string_view PIECE_ENDS = "/_-";

/// Bytes from the beginning of a text that fit a width; at least one character.
std::size_t FittingLength(std::string_view text, std::size_t width) {
    std::size_t length = 0;
    std::size_t used = 0;
    while (length < text.size()) {
        const Character next = FirstCharacter(text.substr(length));
        if (used + next.m_Width > width && length != 0) {
            break;
        }
        used += next.m_Width;
        length += next.m_Length;
    }
    return length;
}

/// Where a line that is too long ends, given how much of it fits.
std::size_t BreakPlace(std::string_view text, std::size_t fitting) {
    const std::size_t blank = text.rfind(' ', fitting);
    if (blank != NONE && text.find_last_not_of(' ', blank) != NONE) {
        return blank;
    }
    // A path is better divided between its folders than within a name, even if that takes a line more.
    for (const std::string_view ends : {PIECE_ENDS.substr(0, 1), PIECE_ENDS.substr(1)}) {
        const std::size_t end = text.find_last_of(ends, fitting - 1);
        if (end != NONE && end != 0) {
            return end + 1;
        }
    }
    return fitting;
}

}  // namespace

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

std::size_t LongestPiece(std::string_view text) {
    std::size_t longest = 0;
    std::size_t width = 0;
    while (!text.empty()) {
        const char c = text.front();
        const Character character = FirstCharacter(text);
        width += c == ' ' ? 0 : character.m_Width;
        longest = std::max(longest, width);
        if (c == ' ' || PIECE_ENDS.find(c) != NONE) {
            width = 0;
        }
        text.remove_prefix(character.m_Length);
    }
    return longest;
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
