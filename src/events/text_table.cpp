// SPDX-License-Identifier: Apache-2.0

#include <pi/text_table.h>

#include <iterator>
#include <utility>

#include "language_file.h"

namespace PI {

struct CTextTable::Texts {
    language_file::Texts m_ByNumber;  // none of them empty
};

CTextTable::CTextTable() noexcept = default;
CTextTable::CTextTable(const CTextTable& source) noexcept = default;
CTextTable::CTextTable(CTextTable&& source) noexcept = default;
CTextTable& CTextTable::operator=(const CTextTable& source) noexcept = default;
CTextTable& CTextTable::operator=(CTextTable&& source) noexcept = default;
CTextTable::~CTextTable() = default;

CTextTable CTextTable::LoadFile(const std::string& path) {
    return ReadTextTable(language_file::Read(path), path);
}

CTextTable ReadTextTable(const std::string& text, const std::string& name) {
    CTextTable::Texts texts = {language_file::Parse(text, name)};
    for (auto row = texts.m_ByNumber.begin(); row != texts.m_ByNumber.end();) {
        row = row->second.empty() ? texts.m_ByNumber.erase(row) : std::next(row);
    }
    CTextTable table;
    table.m_Texts = std::make_shared<const CTextTable::Texts>(std::move(texts));
    return table;
}

CTextTable CTextTable::WithFallback(const CTextTable& other) const {
    if (m_Texts == nullptr || other.m_Texts == nullptr) {
        return m_Texts == nullptr ? other : *this;
    }
    Texts texts = *m_Texts;
    texts.m_ByNumber.insert(other.m_Texts->m_ByNumber.begin(), other.m_Texts->m_ByNumber.end());
    CTextTable joined;
    joined.m_Texts = std::make_shared<const Texts>(std::move(texts));
    return joined;
}

const std::string* CTextTable::Find(std::uint32_t id) const noexcept {
    if (m_Texts == nullptr) {
        return nullptr;
    }
    const auto found = m_Texts->m_ByNumber.find(id);
    return found == m_Texts->m_ByNumber.end() ? nullptr : &found->second;
}

}  // namespace PI
