// SPDX-License-Identifier: Apache-2.0
/// @file
/// JSON text as it is written, member after member.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace pitool {

/// A text for JsonWriter that is null when it is empty.
inline std::optional<std::string_view> OrNull(std::string_view text) {
    return text.empty() ? std::nullopt : std::optional(text);
}

/// Writes one JSON document. ASCII: other characters are escaped, bytes that are no UTF-8 become U+FFFD. The
/// two outermost levels have a line for each member or element, deeper ones are on one line.
///
/// A value is a text, a whole number, true or false; an optional, which is null where it is empty; a range of
/// values; or a function that writes the members of an object.
class JsonWriter {
public:
    /// @param depth of what is written within a document that the caller puts together; 0 is the document
    explicit JsonWriter(int depth = 0) : m_Depth(depth) {}

    /// What was written since the last call.
    std::string Take() { return {m_Text.data(), std::exchange(m_Size, 0)}; }

    /// Of the value that is written next; plain ASCII.
    JsonWriter& Name(std::string_view name) {
        Separate();
        Put("\"");
        Put(name);
        Put(m_Depth <= LEVELS_WITH_LINES ? std::string_view("\": ") : "\":");
        m_HasName = true;
        return *this;
    }
    template <class Type>
    void Member(std::string_view name, const Type& value) {
        Name(name).Value(value);
    }
    /// A list, of which `add` writes a value for each element of the range; in a list, or after a name.
    template <class Range, class Add>
    void List(const Range& range, const Add& add) {
        Begin('[');
        for (const auto& element : range) {
            add(element);
        }
        End(']');
    }
    /// A list of objects, of each of which `members` is called with an element of the range.
    template <class Range, class Members>
    void Objects(std::string_view name, const Range& range, const Members& members) {
        Name(name).List(range, [&](const auto& element) { this->Value([&] { members(element); }); });
    }

    /// In a list, or after a name.
    template <class Type>
    void Value(const Type& value) {
        if constexpr (std::is_same_v<Type, bool>) {
            Raw(value ? "true" : "false");
        } else if constexpr (std::is_integral_v<Type>) {
            Raw(std::to_string(value));
        } else if constexpr (std::is_convertible_v<const Type&, std::string_view>) {
            AddText(value);
        } else if constexpr (std::is_invocable_v<const Type&>) {
            Begin('{');
            value();
            End('}');
        } else {
            List(value, [this](const auto& element) { this->Value(element); });
        }
    }
    template <class Type>
    void Value(const std::optional<Type>& value) {
        value ? Value(*value) : Raw("null");
    }
    /// A value that is JSON already.
    void Raw(std::string_view json) {
        Separate();
        Put(json);
    }

private:
    static constexpr int LEVELS_WITH_LINES = 2;

    // Here, so that the compiler knows the lengths of names: most of pitool drive --json is spent on them.
    void Put(std::string_view part) {
        if (m_Text.size() - m_Size < part.size()) {
            Grow(part.size());
        }
        m_Size += part.copy(&m_Text[m_Size], part.size());
    }
    void Separate() {
        if (m_HasName) {
            m_HasName = false;
        } else if (m_Depth > 0) {
            if (!m_First) {
                Put(",");
            }
            if (m_Depth <= LEVELS_WITH_LINES) {
                Break();
            }
        }
        m_First = false;
    }
    void Grow(std::size_t size);
    void AddText(std::string_view value);
    void Begin(char bracket);
    void End(char bracket);
    void Break();

    std::string m_Text;      ///< with room for more: that is faster than to append to a string
    std::size_t m_Size = 0;  ///< of what is written
    int m_Depth;
    bool m_First = true;     ///< nothing is written at this level yet
    bool m_HasName = false;  ///< the next value belongs to a name
};

/// The document of a command: format and version, what `members` writes with the writer, the end of the line.
template <class Members>
std::string JsonDocument(std::string_view format, const Members& members) {
    JsonWriter json;
    json.Value([&] {
        json.Member("format", format);
        json.Member("version", 1);
        members(json);
    });
    return json.Take() + '\n';
}

}  // namespace pitool
