// SPDX-License-Identifier: Apache-2.0
/// @file
/// JSON text as it is written, member after member.
#pragma once

#include <charconv>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace pitool {

/// Whether a text stands in JSON as it is.
bool IsPlainJson(std::string_view value);

/// Adds a text in quotation marks, as JsonWriter writes it.
void AddJsonText(std::string_view value, std::string& text);

/// A text for JsonWriter that is null when it is empty.
inline std::optional<std::string_view> OrNull(std::string_view text) {
    return text.empty() ? std::nullopt : std::optional(text);
}

/// Writes one JSON document into a text. ASCII: other characters are escaped, bytes that are no UTF-8 become
/// U+FFFD. The two outermost levels have a line for each member or element, deeper ones are on one line.
///
/// A value is a text, a whole number, true or false; an optional without one is null.
class JsonWriter {
public:
    /// @param text  is appended to; must live as long as the writer
    /// @param depth of what is written within a document that the caller puts together; 0 is the document
    explicit JsonWriter(std::string& text, int depth = 0) : m_Text(text), m_Depth(depth) {}

    /// @{
    /// In an object.
    JsonWriter& Name(std::string_view name);  ///< of the value that is written next
    template <class Type>
    void Member(std::string_view name, const Type& value) {
        Name(name).Value(value);
    }
    template <class Members>
    void Object(std::string_view name, const Members& members) {
        Name(name).Object(members);
    }
    template <class Elements>
    void List(std::string_view name, const Elements& elements) {
        Name(name).Begin('[');
        elements();
        End(']');
    }
    template <class Range>
    void Values(std::string_view name, const Range& range) {
        List(name, [&] {
            for (const auto& value : range) {
                Value(value);
            }
        });
    }
    /// A list of objects, of each of which `members` is called with an element of the range.
    template <class Range, class Members>
    void Objects(std::string_view name, const Range& range, const Members& members) {
        List(name, [&] {
            for (const auto& element : range) {
                Object([&] { members(element); });
            }
        });
    }
    /// @}

    /// @{
    /// In a list, or after a name.
    template <class Type>
    void Value(const Type& value) {
        if constexpr (std::is_same_v<Type, bool>) {
            Raw(value ? "true" : "false");
        } else if constexpr (std::is_integral_v<Type>) {
            char digits[24];
            const char* end = std::to_chars(digits, std::end(digits), value).ptr;
            Raw({digits, static_cast<std::size_t>(end - digits)});
        } else {
            Separate();
            AddJsonText(value, m_Text);
        }
    }
    template <class Type>
    void Value(const std::optional<Type>& value) {
        value ? Value(*value) : Raw("null");
    }
    template <class Members>
    void Object(const Members& members) {
        Begin('{');
        members();
        End('}');
    }
    void Raw(std::string_view json);  ///< a value that is JSON already
    /// @}

    /// The whole document of a command: format and version, what `members` writes, and the end of the line.
    template <class Members>
    void Document(std::string_view format, const Members& members) {
        Object([&] {
            Member("format", format);
            Member("version", 1);
            members();
        });
        m_Text += '\n';
    }

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

/// The document of a command in one text.
/// @param members is called with the writer
template <class Members>
std::string JsonDocument(std::string_view format, const Members& members) {
    std::string text;
    JsonWriter json(text);
    json.Document(format, [&] { members(json); });
    return text;
}

}  // namespace pitool
