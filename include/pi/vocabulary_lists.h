// SPDX-License-Identifier: Apache-2.0
/// @file
/// The vocabularies as lists that can be iterated.
///
/// Threads: any number of threads may use everything here at once. Nothing is allocated, so nothing throws
/// unless stated otherwise.
#pragma once

#include <pi/types.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>

namespace PI {

/// @addtogroup vocabulary
/// @{

struct _PACKED_ROW;

/// One row of a vocabulary: a value that refers to the library, which must stay loaded.
class PI_API CVocabularyEntry {
public:
    /// The number.
    int Number() const;

    /// The constant as C++ spells it, such as "_512B"; empty for a help topic or an icon.
    const char* Constant() const;

    /// The name as a look-up of the number returns it, such as "512B"; for a help topic the page and anchor,
    /// for an icon the file name.
    const char* Name() const;

private:
    friend class CVocabulary;
    CVocabularyEntry(const _PACKED_ROW* row, const char* text);

    const _PACKED_ROW* m_Row;
    const char* m_Text;
};

/// The rows of a vocabulary in ascending order of their numbers: a value that refers to the library, which
/// must stay loaded.
///
/// Of rows with the same number, look-ups return the first name; the others are constants only. Unknown
/// numbers that look-ups remember are not among the rows.
class PI_API CVocabulary {
public:
    /// Iterates over the rows in their order.
    class PI_API CIterator {
    public:
        /// @{
        /// What the standard library requires of an iterator.
        using iterator_category = std::input_iterator_tag;
        using value_type = CVocabularyEntry;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = CVocabularyEntry;
        /// @}

        /// The row; undefined at the end.
        CVocabularyEntry operator*() const;
        /// The next row; undefined at the end.
        CIterator& operator++();
        /// @{
        /// Compares positions in one vocabulary.
        bool operator==(const CIterator& other) const;
        bool operator!=(const CIterator& other) const;
        /// @}

    private:
        friend class CVocabulary;
        CIterator(const _PACKED_ROW* row, const char* text);

        const _PACKED_ROW* m_Row;
        const char* m_Text;
    };

    /// How many rows there are.
    std::size_t Count() const;

    /// A row.
    /// @param index below Count()
    /// @throws std::out_of_range if index is not below Count()
    CVocabularyEntry At(std::size_t index) const;

    /// The first row with a number; no value if there is none.
    std::optional<CVocabularyEntry> Find(int number) const;

    /// @{
    /// For range-based loops.
    CIterator begin() const;
    CIterator end() const;
    /// @}

    /// Made by the functions of PI::Vocabulary.
    CVocabulary(const _PACKED_ROW* rows, std::size_t count, const char* text);

private:
    const _PACKED_ROW* m_Rows;
    std::size_t m_Count;
    const char* m_Text;
};

namespace Vocabulary {

/// Error codes.
PI_API CVocabulary ErrorCodes();
/// Property identifiers.
PI_API CVocabulary PropertyIDs();
/// Property values.
PI_API CVocabulary PropertyValues();
/// Operation identifiers.
PI_API CVocabulary OperationIDs();
/// Event identifiers.
PI_API CVocabulary EventIDs();
/// Help topics: what CPluginHelper::GetHelpPath returns.
PI_API CVocabulary HelpTopics();
/// Icons: what CPluginHelper::GetIconPath returns.
PI_API CVocabulary Icons();

}  // namespace Vocabulary

/// @}

}  // namespace PI
