// SPDX-License-Identifier: Apache-2.0
/// @file
/// Texts of a language by number.
#pragma once

#include <pi/types.h>

#include <cstdint>
#include <memory>
#include <string>

namespace PI {

/// @addtogroup events
/// @{

/// The texts of one language, or of several of which each completes the one before it.
///
/// @code
///     const auto english = PI::CTextTable::LoadFile("strings.en.xml");
///     const auto german = PI::CTextTable::LoadFile("strings.de.xml").WithFallback(english);
/// @endcode
///
/// Independent of the texts of the process (CLanguageSupport) and of every other table. A value: a copy
/// costs no more than a pointer, since the texts are shared; they never change and live as long as one of
/// the copies. Assigned to, an object gets the texts of another; the old ones stay with their other copies.
///
/// Threads: any number of threads may read and copy one object at once. Whoever assigns to an object that
/// others read needs a lock.
class PI_API CTextTable {
public:
    /// A table without texts.
    CTextTable() noexcept;

    /// @{
    /// A table that was moved from is without texts.
    CTextTable(const CTextTable& source) noexcept;
    CTextTable(CTextTable&& source) noexcept;
    CTextTable& operator=(const CTextTable& source) noexcept;
    CTextTable& operator=(CTextTable&& source) noexcept;
    /// @}
    ~CTextTable();

    /// Reads a language file, by the rules of CLanguageSupport::LoadFile.
    /// @throws std::runtime_error, which names the file and the place, and std::bad_alloc, as that does
    static CTextTable LoadFile(const std::string& path);

    /// A table with the texts of this one, and of another those whose numbers this one lacks.
    /// @throws std::bad_alloc if allocation fails
    CTextTable WithFallback(const CTextTable& other) const;

    /// The text of a number. An empty text counts as none.
    /// @return null where there is none; valid as long as this table or a copy has these texts
    const std::string* Find(std::uint32_t id) const noexcept;

private:
    struct Texts;

    std::shared_ptr<const Texts> m_Texts;  // null: none
};

/// @}

}  // namespace PI
