// SPDX-License-Identifier: Apache-2.0
/// @file
/// JSON text as it is written, member after member.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace pitool {

/// Adds a text in quotation marks, as JsonWriter writes it.
void AddJsonText(std::string_view value, std::string& text);

/// Writes one JSON document into a text. ASCII: other characters are escaped, bytes that are no UTF-8 become
/// U+FFFD. The two outermost levels have a line for each member or element, deeper ones are on one line.
///
/// In an object each value comes after its Name; nothing checks that.
class JsonWriter {
public:
    /// @param text  is appended to; must live as long as the writer
    /// @param depth of what is written within a document that the caller puts together; 0 is the document
    explicit JsonWriter(std::string& text, int depth = 0) : m_Text(text), m_Depth(depth) {}

    JsonWriter& Name(std::string_view name);
    void BeginObject() { Begin('{'); }
    void EndObject() { End('}'); }
    void BeginList() { Begin('['); }
    void EndList() { End(']'); }

    void Text(std::string_view value);
    void TextOrNull(std::string_view value);  ///< null for an empty one
    void Number(std::int64_t value);
    void Number(std::uint64_t value);
    void Fraction(double value);  ///< the fewest digits that give it again; null when it is not finite
    void Bool(bool value);
    void Null();
    void Raw(std::string_view json);  ///< a value that is JSON already

private:
    void Separate();
    void Begin(char bracket);
    void End(char bracket);
    void Break();

    std::string& m_Text;
    int m_Depth;
    bool m_First = true;     ///< nothing is written at this level yet
    bool m_HasName = false;  ///< the next value belongs to a name
};

}  // namespace pitool
