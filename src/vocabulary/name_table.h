// SPDX-License-Identifier: Apache-2.0
// The numbers of a vocabulary and their names, found in both directions. Any number of threads may look up at
// once.
#pragma once

#include <pi/vocabulary_lists.h>

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

/// The names of a list as strings, in a hash table with open addressing: nearly every search ends at the
/// first slot.
class NamesByNumber {
public:
    explicit NamesByNumber(const CVocabulary& list) {
        m_Names.reserve(list.Count());  // so that no name ever moves
        while (std::size_t{1} << (32 - m_Shift) < 2 * list.Count()) {
            --m_Shift;
        }
        m_Slots.resize(std::size_t{1} << (32 - m_Shift));
        for (const CVocabularyEntry& entry : list) {
            Slot& slot = m_Slots[SlotOf(entry.Number())];
            if (slot.m_Name == nullptr) {  // else the number is listed twice; its first name counts
                slot = {entry.Number(), &m_Names.emplace_back(entry.Name())};
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
    /// @param list where it has a number twice, the first name counts
    explicit NameTable(const CVocabulary& list) : m_List(list) {}

    /// The name of a number, always the same string. An unknown number is remembered with an empty name.
    /// @throws std::bad_alloc
    const std::string& Name(int number) {
        const std::string* name = Names().Find(number);
        return name != nullptr ? *name : RememberedName(number);
    }

    /// The smallest number with the name, or defaultNumber. Numbers remembered by Name are included.
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
        return m_Names.Get([this] { return NamesByNumber(m_List); });
    }

    Numbers NumbersByName() {
        Numbers numbers;
        for (const CVocabularyEntry& entry : m_List) {
            const int number = entry.Number();
            const std::string& name = *Names().Find(number);  // the first where the list has the number twice
            const auto [place, isNew] = numbers.emplace(name, number);
            place->second = std::min(place->second, number);
        }
        return numbers;
    }

    [[gnu::noinline]] const std::string& RememberedName(int number) {
        const std::lock_guard<std::mutex> lock(m_Mutex);
        return m_Remembered[number];
    }

    CVocabulary m_List;
    Lazy<NamesByNumber> m_Names;
    Lazy<Numbers> m_Numbers;
    std::mutex m_Mutex;
    std::map<int, std::string> m_Remembered;  ///< unknown numbers; a map never moves what it holds
};

}  // namespace PI
