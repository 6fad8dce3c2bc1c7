// SPDX-License-Identifier: Apache-2.0

#include "print/text.h"

#include <algorithm>
#include <clocale>
#include <cwchar>

namespace pitool {
namespace {

struct Range {
    std::uint32_t m_First;
    std::uint32_t m_Last;
};

constexpr Range UNPRINTABLE[] = {
    {0x0000, 0x001F},  // C0 controls
    {0x007F, 0x009F},  // DEL and C1 controls
    {0x061C, 0x061C},  // Arabic letter mark
    {0x200E, 0x200F},  // direction marks
    {0x2028, 0x202E},  // line and paragraph separators, direction embeddings and overrides
    {0x2066, 0x2069},  // direction isolates
    {0xD800, 0xDFFF},  // surrogates are no characters
};

bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

bool IsPrintable(std::uint32_t codePoint) {
    for (const Range& range : UNPRINTABLE) {
        if (codePoint >= range.m_First && codePoint <= range.m_Last) {
            return false;
        }
    }
    return true;
}

/// The C library's width of a character, as the locale C.UTF-8 knows it, which is built into the library. The
/// locale of the process is left alone: it decides on what other functions print.
std::size_t WidthOf(std::uint32_t codePoint) {
    static const locale_t UNICODE = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (UNICODE == nullptr) {
        return 1;
    }
    const locale_t before = uselocale(UNICODE);
    const int width = wcwidth(static_cast<wchar_t>(codePoint));
    uselocale(before);
    return width < 0 ? 1 : static_cast<std::size_t>(width);
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

std::size_t DecodeCharacter(std::string_view text, std::uint32_t& codePoint) {
    const auto lead = static_cast<unsigned char>(text[0]);
    if (lead < 0x80) {
        codePoint = lead;
        return 1;
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    constexpr std::uint32_t SMALLEST[] = {0, 0, 0x80, 0x800, 0x10000};
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) {
        return 0;
    }
    codePoint = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if (!IsContinuation(text[i])) {
            return 0;
        }
        codePoint = codePoint << 6U | (static_cast<unsigned char>(text[i]) & 0x3FU);
    }
    return codePoint >= SMALLEST[length] && codePoint <= 0x10FFFF ? length : 0;
}

std::string PrintableText(std::string_view text) {
    std::string printable;
    printable.reserve(text.size());
    while (!text.empty()) {
        std::uint32_t codePoint = 0;
        const std::size_t length = DecodeCharacter(text, codePoint);
        if (length != 0 && IsPrintable(codePoint)) {
            printable.append(text.substr(0, length));
        } else {
            printable.push_back('?');
        }
        text.remove_prefix(length != 0 ? length : 1);
    }
    return printable;
}

std::size_t CharacterCount(std::string_view text) {
    std::size_t count = 0;
    for (const char byte : text) {
        count += IsContinuation(byte) ? 0 : 1;
    }
    return count;
}

std::string Quoted(std::string_view text) {
    constexpr std::size_t LONGEST = 40;
    const bool cut = text.size() > LONGEST;
    return "\"" + PrintableText(text.substr(0, LONGEST)) + (cut ? "...\"" : "\"");
}

Character FirstCharacter(std::string_view text) {
    if (static_cast<unsigned char>(text.front()) < 0x80) {
        return {1, 1};
    }
    std::uint32_t codePoint = 0;
    const std::size_t length = DecodeCharacter(text, codePoint);
    return length == 0 ? Character{1, 1} : Character{length, WidthOf(codePoint)};
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
