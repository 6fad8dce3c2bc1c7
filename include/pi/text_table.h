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

/// The texts of one language, or of several, each of which completes the one before it.
///
/// @code
///     const auto english = PI::CTextTable::LoadFile("strings.en.xml");
///     const auto german = PI::CTextTable::LoadFile("strings.de.xml").WithFallback(english);
/// @endcode
///
/// It is independent of the texts of the process (CLanguageSupport) and of every other table. A value: copies
/// share the texts, which never change and live as long as one of the copies, so a copy costs no more than a
/// pointer. Assigning to an object does not affect its copies.
///
/// Threads: any number of threads may read and copy one object at once. Assigning to an object that other
/// threads read needs a lock.
class PI_API CTextTable {
public:
    /// A table without texts.
    CTextTable() noexcept;

    /// @{
    /// A moved-from table has no texts.
    CTextTable(const CTextTable& source) noexcept;
    CTextTable(CTextTable&& source) noexcept;
    CTextTable& operator=(const CTextTable& source) noexcept;
    CTextTable& operator=(CTextTable&& source) noexcept;
    /// @}
    ~CTextTable();

    /// Reads a language file by the rules of CLanguageSupport::LoadFile.
    /// @throws std::runtime_error, which names the file and the place, and std::bad_alloc, as LoadFile does
    static CTextTable LoadFile(const std::string& path);

    /// A table with the texts of this one and, for numbers that it lacks, those of another.
    /// @throws std::bad_alloc if allocation fails
    CTextTable WithFallback(const CTextTable& other) const;

    /// The text of a number. An empty text counts as none.
    /// @return null if there is none; valid as long as this table or a copy has these texts
    const std::string* Find(std::uint32_t id) const noexcept;

private:
    /// @cond
    friend PI_API CTextTable ReadTextTable(const std::string& text, const std::string& name);
    /// @endcond
    struct Texts;

    std::shared_ptr<const Texts> m_Texts;  // null: none
};

/// Reads the content of a language file, which is built in, or was read under limits of the caller's own, by
/// the rules of CTextTable::LoadFile. Thread-safe. Since 1.1.0.
/// @param name of the file in what is thrown
/// @throws std::runtime_error, which names the place, and std::bad_alloc
PI_API CTextTable ReadTextTable(const std::string& text, const std::string& name);

/// @}

}  // namespace PI
