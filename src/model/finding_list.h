// SPDX-License-Identifier: Apache-2.0
// The findings of one configuration document while it is read.
#pragma once

#include <pi/layout_reading.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace PI {

struct CLayoutFinding::CFacts {
    std::uint64_t m_Line;
    std::uint64_t m_Column;
    std::string m_Element;
    std::string m_Attribute;
    std::string m_Text;
    std::string m_Assumed;
    std::uint64_t m_LeftOut;
};

class FindingList {
public:
    /// @param text as it was parsed; must live as long as the list
    FindingList(std::string_view text, bool isLatin1);

    /// Adds a finding about an element or one of its attributes.
    void Add(const VELK::XML::xml_node& element, const char* attribute, std::string text,
             std::string assumed = std::string());

    /// Adds a finding about a text, which is quoted, unless it is only white space.
    void AddText(const VELK::XML::xml_node& node, const char* text);

    /// Adds a finding about a place of the text as the parser counts it: in bytes of UTF-8.
    void AddAt(std::size_t offset, const char* element, const char* attribute, std::string text,
               std::string assumed = std::string());

    /// Appends them to a list, or leaves that as it is if allocation fails.
    void AppendTo(std::vector<CLayoutFinding>& findings) const;

private:
    void MoveTo(std::size_t offset);

    std::string_view m_Text;
    bool m_IsLatin1;
    std::size_t m_Next = 0;    // first byte of the text that the place has not passed
    std::size_t m_Offset = 0;  // the same as the parser counts
    std::uint64_t m_Line = 1;
    std::uint64_t m_Column = 1;
    std::vector<CLayoutFinding::CFacts> m_Findings;
    std::uint64_t m_LeftOut = 0;
};

/// A value in quotation marks, cut where it is too long for a line.
std::string QuotedValue(std::string_view value);

}  // namespace PI
