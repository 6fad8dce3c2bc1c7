// SPDX-License-Identifier: Apache-2.0
/// @file
/// Text for people: what a terminal can show of it, how wide that is, how it is divided, how it stands out.
#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace pitool {

/// What a text is formatted for. In a file or a pipe, lines have any length and no colours.
struct Screen {
    std::size_t m_Columns = 0;  ///< width that the lines have to fit; 0: any
    bool m_Colors = false;
    std::size_t m_Rows = 0;  ///< height of a terminal; 0: any
};

/// The text with everything that could steer a terminal replaced by '?': control characters (C0, DEL, C1),
/// characters that turn the writing direction or break the line, and bytes that are not UTF-8.
std::string PrintableText(std::string_view text);

/// The printable text with what means something in HTML escaped.
std::string HtmlText(std::string_view text);

/// The printable text in quotation marks, those in it and the escape after an escape.
std::string InQuotes(std::string_view text, char escape);

/// The printable text in quotation marks, cut where it is too long for a message of one line.
std::string Quoted(std::string_view text);

/// Reads a decimal number that makes up the whole text: digits, a minus sign before them for signed types,
/// nothing else.
/// @param number out: written only when the result is true
/// @return false also when the number does not fit the type
template <class Number>
bool ReadWholeNumber(std::string_view text, Number& number) {
    Number read = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, read);
    if (error != std::errc() || rest != end) {
        return false;
    }
    number = read;
    return true;
}

/// Columns that a printable text takes: 2 for wide East Asian characters, none for marks that combine.
std::size_t DisplayWidth(std::string_view text);

/// Bytes from the beginning of a printable text that fit a width, in columns; at least one character.
std::size_t FittingLength(std::string_view text, std::size_t width);

/// How a text is highlighted, in addition to its words.
enum class Style : std::uint8_t {
    PLAIN,
    HEADING,
    FAILING,  ///< failing drives, errors
    WARNING,  ///< worn drives, warnings
    FAINT,    ///< what is not known or does not apply, lines of a tree
};

/// Adds a text in a style. It must be printable: what comes from files brings no style of its own.
void AddStyled(std::string_view printable, Style style, bool colors, std::string& text);

/// @param severity as the library names it
Style SeverityStyle(std::string_view severity);

/// Text in fewer columns than these is not worth reading.
constexpr std::size_t NARROWEST_TEXT = 8;

/// Divides a printable text into lines of a width, at least one: at blanks, else after '/', '_' or '-', else
/// anywhere. Nothing but the blanks at the breaks is lost.
/// @param width in columns; a character that is wider has a line of its own
std::vector<std::string_view> WrapText(std::string_view text, std::size_t width);

/// Adds a printable text and ends its line. Where it does not fit the screen it goes on in further lines.
/// @param lead        stands before the first line
/// @param furtherLead stands before the others; where the wider of both leaves less than NARROWEST_TEXT, the
///                    text stays in one line
void AddWrapped(std::string_view lead, std::string_view furtherLead, std::string_view text, Style style,
                const Screen& screen, std::string& output);

}  // namespace pitool
