// SPDX-License-Identifier: Apache-2.0

#include <pi/vocabulary_lists.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string>

#include "vocabulary/packed_rows.h"

#include <pi/vocabulary/undefine_macros.h>

namespace PI {

namespace {

constexpr ListRow ERROR_CODE_ROWS[] = {
#define PI_ERROR_CODE(number, constant, name) {number, #constant, name},
#include <pi/vocabulary/error_codes.def>
#undef PI_ERROR_CODE
};
constexpr ListRow PROPERTY_ID_ROWS[] = {
#define PI_PROPERTY_ID(number, constant, name) {number, #constant, name},
#include <pi/vocabulary/property_ids.def>
#undef PI_PROPERTY_ID
};
constexpr ListRow PROPERTY_VALUE_ROWS[] = {
#define PI_PROPERTY_VALUE(number, constant, name) {number, #constant, name},
#include <pi/vocabulary/property_values.def>
#undef PI_PROPERTY_VALUE
};
constexpr ListRow OPERATION_ID_ROWS[] = {
#define PI_OPERATION_ID(number, constant, name) {number, #constant, name},
#include <pi/vocabulary/operation_ids.def>
#undef PI_OPERATION_ID
};
constexpr ListRow EVENT_ID_ROWS[] = {
#define PI_EVENT_ID(number, constant, name) {number, #constant, name},
#include <pi/vocabulary/event_ids.def>
#undef PI_EVENT_ID
};
constexpr ListRow HELP_TOPIC_ROWS[] = {
#define PI_HELP_TOPIC(number, name) {number, "", name},
#include "vocabulary/help_topics.def"
#undef PI_HELP_TOPIC
};
constexpr ListRow ICON_ROWS[] = {
#define PI_ICON(number, name) {number, "", name},
#include "vocabulary/icons.def"
#undef PI_ICON
};

constexpr auto ERROR_CODES = Pack<TextSize(ERROR_CODE_ROWS)>(ERROR_CODE_ROWS);
constexpr auto PROPERTY_IDS = Pack<TextSize(PROPERTY_ID_ROWS)>(PROPERTY_ID_ROWS);
constexpr auto PROPERTY_VALUES = Pack<TextSize(PROPERTY_VALUE_ROWS)>(PROPERTY_VALUE_ROWS);
constexpr auto OPERATION_IDS = Pack<TextSize(OPERATION_ID_ROWS)>(OPERATION_ID_ROWS);
constexpr auto EVENT_IDS = Pack<TextSize(EVENT_ID_ROWS)>(EVENT_ID_ROWS);
constexpr auto HELP_TOPICS = Pack<TextSize(HELP_TOPIC_ROWS)>(HELP_TOPIC_ROWS);
constexpr auto ICONS = Pack<TextSize(ICON_ROWS)>(ICON_ROWS);

static_assert(IsAscending(ERROR_CODES) && IsAscending(PROPERTY_IDS) && IsAscending(PROPERTY_VALUES) &&
              IsAscending(OPERATION_IDS) && IsAscending(EVENT_IDS) && IsAscending(HELP_TOPICS) &&
              IsAscending(ICONS));

template <class Rows>
CVocabulary MakeVocabulary(const Rows& rows) {
    return CVocabulary(rows.m_Rows, std::size(rows.m_Rows), rows.m_Text);
}

}  // namespace

CVocabularyEntry::CVocabularyEntry(const _PACKED_ROW* row, const char* text) : m_Row(row), m_Text(text) {}

int CVocabularyEntry::Number() const {
    return m_Row->m_Number;
}

const char* CVocabularyEntry::Constant() const {
    return m_Text + m_Row->m_Constant;
}

const char* CVocabularyEntry::Name() const {
    return m_Text + m_Row->m_Name;
}

CVocabulary::CIterator::CIterator(const _PACKED_ROW* row, const char* text) : m_Row(row), m_Text(text) {}

CVocabularyEntry CVocabulary::CIterator::operator*() const {
    return CVocabularyEntry(m_Row, m_Text);
}

CVocabulary::CIterator& CVocabulary::CIterator::operator++() {
    ++m_Row;
    return *this;
}

bool CVocabulary::CIterator::operator==(const CIterator& other) const {
    return m_Row == other.m_Row;
}

bool CVocabulary::CIterator::operator!=(const CIterator& other) const {
    return !(*this == other);
}

CVocabulary::CVocabulary(const _PACKED_ROW* rows, std::size_t count, const char* text)
    : m_Rows(rows), m_Count(count), m_Text(text) {}

std::size_t CVocabulary::Count() const {
    return m_Count;
}

CVocabularyEntry CVocabulary::At(std::size_t index) const {
    if (index >= m_Count) {
        throw std::out_of_range("a vocabulary of " + std::to_string(m_Count) +
                                " rows has none of the index " + std::to_string(index));
    }
    return CVocabularyEntry(m_Rows + index, m_Text);
}

std::optional<CVocabularyEntry> CVocabulary::Find(int number) const {
    const _PACKED_ROW* end = m_Rows + m_Count;
    const _PACKED_ROW* found = std::lower_bound(
        m_Rows, end, number, [](const _PACKED_ROW& row, int wanted) { return row.m_Number < wanted; });
    if (found == end || found->m_Number != number) {
        return std::nullopt;
    }
    return CVocabularyEntry(found, m_Text);
}

CVocabulary::CIterator CVocabulary::begin() const {
    return CIterator(m_Rows, m_Text);
}

CVocabulary::CIterator CVocabulary::end() const {
    return CIterator(m_Rows + m_Count, m_Text);
}

namespace Vocabulary {

CVocabulary ErrorCodes() {
    return MakeVocabulary(ERROR_CODES);
}

CVocabulary PropertyIDs() {
    return MakeVocabulary(PROPERTY_IDS);
}

CVocabulary PropertyValues() {
    return MakeVocabulary(PROPERTY_VALUES);
}

CVocabulary OperationIDs() {
    return MakeVocabulary(OPERATION_IDS);
}

CVocabulary EventIDs() {
    return MakeVocabulary(EVENT_IDS);
}

CVocabulary HelpTopics() {
    return MakeVocabulary(HELP_TOPICS);
}

CVocabulary Icons() {
    return MakeVocabulary(ICONS);
}

}  // namespace Vocabulary

}  // namespace PI

#include <pi/vocabulary/restore_macros.h>
