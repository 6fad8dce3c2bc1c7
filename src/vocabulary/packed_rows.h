// SPDX-License-Identifier: Apache-2.0
// The rows of a list without pointers: the loader would have to relocate each of them whenever the library is
// loaded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace PI {

/// A row as the list spells it. Used while compiling only.
struct ListRow {
    int m_Number;
    std::string_view m_Constant;
    std::string_view m_Name;
};

/// Where the texts of a row begin. A name that equals its constant is stored once.
struct _PACKED_ROW {
    std::int32_t m_Number = 0;
    std::uint32_t m_Constant = 0;
    std::uint32_t m_Name = 0;
};

template <std::size_t Count, std::size_t Size>
struct PackedRows {
    _PACKED_ROW m_Rows[Count] = {};
    char m_Text[Size] = {};
};

/// How many bytes the texts of rows take, each with a NUL byte after it.
template <std::size_t Count>
constexpr std::size_t TextSize(const ListRow (&rows)[Count]) {
    std::size_t size = 0;
    for (const ListRow& row : rows) {
        size += row.m_Constant.size() + 1;
        size += row.m_Name == row.m_Constant ? 0 : row.m_Name.size() + 1;
    }
    return size;
}

template <std::size_t Size, std::size_t Count>
constexpr PackedRows<Count, Size> Pack(const ListRow (&rows)[Count]) {
    PackedRows<Count, Size> packed;
    std::uint32_t end = 0;
    const auto append = [&](std::string_view text) {
        const std::uint32_t begin = end;
        for (const char character : text) {
            packed.m_Text[end++] = character;
        }
        ++end;
        return begin;
    };
    for (std::size_t i = 0; i < Count; ++i) {
        const ListRow& row = rows[i];
        const std::uint32_t constant = append(row.m_Constant);
        packed.m_Rows[i] = {row.m_Number, constant,
                            row.m_Name == row.m_Constant ? constant : append(row.m_Name)};
    }
    return packed;
}

/// The same number may follow itself.
template <std::size_t Count, std::size_t Size>
constexpr bool IsAscending(const PackedRows<Count, Size>& rows) {
    for (std::size_t i = 1; i < Count; ++i) {
        if (rows.m_Rows[i - 1].m_Number > rows.m_Rows[i].m_Number) {
            return false;
        }
    }
    return true;
}

}  // namespace PI
