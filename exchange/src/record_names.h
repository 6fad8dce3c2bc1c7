// SPDX-License-Identifier: Apache-2.0
// Names beside the numbers of records; empty for a number that has none.
#pragma once

#include <cstddef>
#include <cstdint>

namespace PI {

class CVocabulary;

struct NameRow {
    std::int32_t m_Number;
    const char* m_Name;
};

/// Names from a table.
class RowNames {
public:
    template <std::size_t COUNT>
    explicit constexpr RowNames(const NameRow (&rows)[COUNT]) : m_Rows(rows), m_Count(COUNT) {}
    const char* operator()(std::int64_t number) const;

private:
    const NameRow* m_Rows;
    std::size_t m_Count;
};
extern const RowNames PropertyTypeName;
extern const RowNames ObjectTypeName;
extern const RowNames UnitsName;
extern const RowNames FigureStateName;
extern const RowNames FigureUnitName;
extern const RowNames FigureDirectionName;
extern const RowNames FigureSourceName;

/// Names from a vocabulary.
struct VocabularyNames {
    CVocabulary (*m_Find)();
    const char* operator()(std::int64_t number) const;
};
extern const VocabularyNames PropertyIDName;
extern const VocabularyNames PropertyValueName;
extern const VocabularyNames OperationIDName;
extern const VocabularyNames EventIDName;

const char* SeverityName(std::int64_t number);
const char* DriveStateName(std::int64_t number);
const char* HealthFigureName(std::int64_t number);

}  // namespace PI
