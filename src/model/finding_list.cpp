// SPDX-License-Identifier: Apache-2.0

#include "model/finding_list.h"

#include <utility>

namespace PI {

namespace {

constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";
constexpr std::string_view WHITE_SPACE = " \t\r\n";

bool IsContinuation(unsigned char byte) {
    return (byte & 0xC0U) == 0x80;
}

}  // namespace

CLayoutFinding::CLayoutFinding(std::shared_ptr<const CFacts> facts) noexcept : m_Facts(std::move(facts)) {}
CLayoutFinding::CLayoutFinding(const CLayoutFinding& source) noexcept = default;
CLayoutFinding::CLayoutFinding(CLayoutFinding&& source) noexcept = default;
CLayoutFinding& CLayoutFinding::operator=(const CLayoutFinding& source) noexcept = default;
CLayoutFinding& CLayoutFinding::operator=(CLayoutFinding&& source) noexcept = default;
CLayoutFinding::~CLayoutFinding() = default;

std::uint64_t CLayoutFinding::GetLine() const noexcept {
    return m_Facts->m_Line;
}
std::uint64_t CLayoutFinding::GetColumn() const noexcept {
    return m_Facts->m_Column;
}
const std::string& CLayoutFinding::GetElement() const noexcept {
    return m_Facts->m_Element;
}
const std::string& CLayoutFinding::GetAttribute() const noexcept {
    return m_Facts->m_Attribute;
}
const std::string& CLayoutFinding::GetText() const noexcept {
    return m_Facts->m_Text;
}
const std::string& CLayoutFinding::GetAssumed() const noexcept {
    return m_Facts->m_Assumed;
}
std::uint64_t CLayoutFinding::GetLeftOut() const noexcept {
    return m_Facts->m_LeftOut;
}

FindingList::FindingList(std::string_view text, bool isLatin1) : m_Text(text), m_IsLatin1(isLatin1) {
    if (text.substr(0, BYTE_ORDER_MARK.size()) == BYTE_ORDER_MARK) {
        m_Next = m_Offset = BYTE_ORDER_MARK.size();
    }
}

void FindingList::Add(const VELK::XML::xml_node& element, const char* attribute, std::string text,
                      std::string assumed) {
    // The parser has the offset of the name, one byte after the bracket.
    AddAt(static_cast<std::size_t>(element.offset_debug() - 1), element.name(), attribute, std::move(text),
          std::move(assumed));
}

void FindingList::AddText(const VELK::XML::xml_node& node, const char* text) {
    const std::string_view value = node.value();
    const std::size_t begin = value.find_first_not_of(WHITE_SPACE);
    if (begin == std::string_view::npos) {
        return;
    }
    MoveTo(static_cast<std::size_t>(node.offset_debug()));
    while (m_Next < m_Text.size() && WHITE_SPACE.find(m_Text[m_Next]) != std::string_view::npos) {
        MoveTo(m_Offset + 1);
    }
    const std::size_t end = value.find_last_not_of(WHITE_SPACE) + 1;
    AddAt(m_Offset, "", "", QuotedValue(value.substr(begin, end - begin)) + " " + text);
}

void FindingList::AddAt(std::size_t offset, const char* element, const char* attribute, std::string text,
                        std::string assumed) {
    if (m_Findings.size() == MAX_LAYOUT_FINDINGS) {
        ++m_LeftOut;
        return;
    }
    MoveTo(offset);
    m_Findings.push_back({m_Line, m_Column, element, attribute, std::move(text), std::move(assumed), 0});
}

void FindingList::AppendTo(std::vector<CLayoutFinding>& findings) const {
    std::vector<CLayoutFinding> added;
    for (const CLayoutFinding::CFacts& facts : m_Findings) {
        CLayoutFinding::CFacts kept = facts;
        kept.m_LeftOut = &facts == &m_Findings.back() ? m_LeftOut : 0;
        added.push_back(CLayoutFinding(std::make_shared<const CLayoutFinding::CFacts>(std::move(kept))));
    }
    findings.insert(findings.end(), added.begin(), added.end());
}

void FindingList::MoveTo(std::size_t offset) {
    for (; m_Offset < offset && m_Next < m_Text.size(); ++m_Next) {
        const auto byte = static_cast<unsigned char>(m_Text[m_Next]);
        m_Offset += m_IsLatin1 && byte >= 0x80 ? 2 : 1;
        if (byte == '\n') {
            ++m_Line;
            m_Column = 1;
        } else if (m_IsLatin1 || !IsContinuation(byte)) {
            ++m_Column;
        }
    }
}

std::string QuotedValue(std::string_view value) {
    constexpr std::size_t LONGEST = 40;
    std::string_view shown = value.substr(0, LONGEST);
    while (shown.size() < value.size() && !shown.empty() &&
           IsContinuation(static_cast<unsigned char>(value[shown.size()]))) {
        shown.remove_suffix(1);
    }
    return "\"" + std::string(shown) + (shown.size() < value.size() ? "...\"" : "\"");
}

}  // namespace PI
