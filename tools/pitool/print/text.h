// SPDX-License-Identifier: Apache-2.0
/// @file
/// Text for people: what a terminal can show of it, how wide that is, how it is divided and how it stands
/// out.
#pragma once

#include "print/terminal.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace pitool {

/// The text with everything that could steer a terminal replaced by '?': control characters (C0, DEL, C1),
/// characters that turn the writing direction or break the line, and bytes that are not UTF-8.
std::string PrintableText(std::string_view text);

/// Length in bytes of the UTF-8 character at the beginning of a text that is not empty; 0 when there is none.
///
/// @param codePoint out: meaningful when there is one
std::size_t DecodeCharacter(std::string_view text, std::uint32_t& codePoint);

/// How many characters a printable UTF-8 text holds; good for aligning columns of names.
std::size_t CharacterCount(std::string_view text);

/// The text in quotation marks, printable, and cut where it is too long for a message of one line.
std::string Quoted(std::string_view text);

/// The first character of a printable UTF-8 text.
struct Character {
    std::size_t m_Length;  ///< bytes
    std::size_t m_Width;  ///< columns: 2 for wide East Asian characters, 0 for marks that combine with others
};

/// @param text printable, not empty
Character FirstCharacter(std::string_view text);

/// Columns that a printable text takes, whatever the locale of the process.
std::size_t DisplayWidth(std::string_view text);

/// How a text stands out. It only adds to what the words say.
enum class Style : std::uint8_t {
    PLAIN,
    HEADING,
    FAILING,  ///< failing drives, errors
    WARNING,  ///< worn drives, warnings
    FAINT,    ///< what is not known or does not apply, lines of a tree
};

/// Adds a text in a style. The text must be printable already: what comes from files brings no style of its
/// own.
void AddStyled(std::string_view printable, Style style, bool colors, std::string& text);

/// The style of a severity as the library names it.
Style SeverityStyle(std::string_view severity);

/// Text in fewer columns than these is not worth reading.
constexpr std::size_t NARROWEST_TEXT = 8;

/// Divides a printable text into lines of a width: at blanks, else behind '/', else behind '_' or '-', else
/// anywhere.
/// Nothing but the blanks at the breaks is lost.
///
/// @param width in columns; a character that is wider has a line of its own
/// @return at least one line
std::vector<std::string_view> WrapText(std::string_view text, std::size_t width);

/// Width of the longest piece of a printable text that WrapText would not like to divide.
std::size_t LongestPiece(std::string_view text);

/// Adds a text for reading and ends its line. Where it does not fit the screen it goes on in further lines.
///
/// @param lead        stands before the first line
/// @param furtherLead stands before the others; where the wider of both leaves less than NARROWEST_TEXT, the
///                    text stays in one line
void AddWrapped(std::string_view lead, std::string_view furtherLead, std::string_view text, Style style,
                const Screen& screen, std::string& output);

}  // namespace pitool
