// SPDX-License-Identifier: Apache-2.0
// The numbers of a vocabulary and their names, found in both directions. Any number of threads may look up at
// once.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "util/lazy.h"

namespace PI {

/// A row of a vocabulary's list.
struct NamedNumber {
    int m_Number;
    const char* m_Name;
};

/// The names of a list as strings, in a hash table with open addressing: nearly every search ends at the
/// first slot.
class NamesByNumber {
public:
    NamesByNumber(const NamedNumber* begin, const NamedNumber* end) {
        const auto count = static_cast<std::size_t>(end - begin);
        m_Names.reserve(count);  // so that no name ever moves
        while (std::size_t{1} << (32 - m_Shift) < 2 * count) {
            --m_Shift;
        }
        m_Slots.resize(std::size_t{1} << (32 - m_Shift));
        for (const NamedNumber* row = begin; row != end; ++row) {
            Slot& slot = m_Slots[SlotOf(row->m_Number)];
            if (slot.m_Name == nullptr) {  // otherwise the number stands twice, and its first name is kept
                slot = {row->m_Number, &m_Names.emplace_back(row->m_Name)};
            }
        }
    }

    /// The name of a number, or null.
    const std::string* Find(int number) const { return m_Slots[SlotOf(number)].m_Name; }

private:
    struct Slot {
        int m_Number = 0;
        const std::string* m_Name = nullptr;  ///< null: the slot is free
    };

    /// The slot that holds the number, or the free one where it belongs.
    std::size_t SlotOf(int number) const {
        // Multiplied by 2^32 over the golden ratio, which spreads successive numbers evenly.
        std::size_t slot = static_cast<std::uint32_t>(number) * 2654435769U >> m_Shift;
        while (m_Slots[slot].m_Name != nullptr && m_Slots[slot].m_Number != number) {
            slot = (slot + 1) & (m_Slots.size() - 1);
        }
        return slot;
    }

    std::vector<std::string> m_Names;
    std::vector<Slot> m_Slots;
    unsigned m_Shift = 31;  ///< leaves as many bits as number the slots
};

/// A vocabulary. Names are made when the first of them is asked for, so that loading the library costs
/// nothing.
class NameTable {
public:
    /// @param rows alive as long as the table; where a number stands twice, its first name counts
    template <std::size_t Count>
    explicit NameTable(const NamedNumber (&rows)[Count]) : m_Begin(rows), m_End(rows + Count) {}

    /// The name of a number, always the same string. An unknown number is remembered with an empty name.
    /// @throws std::bad_alloc
    const std::string& Name(int number) {
        const std::string* name = Names().Find(number);
        return name != nullptr ? *name : RememberedName(number);
    }

    /// The smallest number that bears the name, or defaultNumber. Numbers remembered by Name take part.
    /// @throws std::bad_alloc
    int Number(const std::string& name, int defaultNumber) {
        const Numbers& numbers = m_Numbers.Get([this] { return NumbersByName(); });
        const auto found = numbers.find(name);
        const bool isKnown = found != numbers.end();
        if (name.empty()) {
            const std::lock_guard<std::mutex> lock(m_Mutex);
            if (!m_Remembered.empty()) {
                const int remembered = m_Remembered.begin()->first;
                return isKnown ? std::min(remembered, found->second) : remembered;
            }
        }
        return isKnown ? found->second : defaultNumber;
    }

private:
    using Numbers = std::unordered_map<std::string_view, int>;

    const NamesByNumber& Names() {
        return m_Names.Get([this] { return NamesByNumber(m_Begin, m_End); });
    }

    Numbers NumbersByName() {
        Numbers numbers;
        for (const NamedNumber* row = m_Begin; row != m_End; ++row) {
            const std::string& name = *Names().Find(row->m_Number);  // differs where the number stands twice
            const auto [place, isNew] = numbers.emplace(name, row->m_Number);
            place->second = std::min(place->second, row->m_Number);
        }
        return numbers;
    }

    [[gnu::noinline]] const std::string& RememberedName(int number) {
        const std::lock_guard<std::mutex> lock(m_Mutex);
        return m_Remembered[number];
    }

    const NamedNumber* m_Begin;
    const NamedNumber* m_End;
    Lazy<NamesByNumber> m_Names;
    Lazy<Numbers> m_Numbers;
    std::mutex m_Mutex;
    std::map<int, std::string> m_Remembered;  ///< unknown numbers; a map never moves what it holds
};

}  // namespace PI
