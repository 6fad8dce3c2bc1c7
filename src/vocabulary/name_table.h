// SPDX-License-Identifier: Apache-2.0
// The mechanism that all vocabularies share: numbers with their names, in an ordered map.
#pragma once

#include <initializer_list>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace PI {

class NameTable {
public:
    /// Where a number stands twice, the first name is kept.
    NameTable(std::initializer_list<std::pair<const int, const char*>> names)
        : m_Names(names.begin(), names.end()) {
        for (const auto& [number, name] : m_Names) {
            if (m_Blocks.empty() ||
                Offset(number, m_Blocks.back()) > m_Blocks.back().m_Names.size() + MAX_GAP) {
                m_Blocks.push_back({number, {}});
            }
            Block& block = m_Blocks.back();
            block.m_Names.resize(Offset(number, block) + 1);
            block.m_Names.back() = &name;
        }
    }

    NameTable(const NameTable&) = delete;
    NameTable& operator=(const NameTable&) = delete;

    /// The name of a number. An unknown number is remembered with an empty name.
    const std::string& Name(int number) {
        for (const Block& block : m_Blocks) {
            const std::size_t offset = Offset(number, block);
            if (offset < block.m_Names.size() && block.m_Names[offset] != nullptr) {
                return *block.m_Names[offset];
            }
        }
        return m_Names[number];
    }

    /// The smallest number that bears the name, or defaultNumber. Numbers remembered by Name take part.
    int Number(const std::string& name, int defaultNumber) const {
        for (const auto& [number, knownName] : m_Names) {
            if (knownName == name) {
                return number;
            }
        }
        return defaultNumber;
    }

    std::size_t size() const { return m_Names.size(); }

private:
    /// Names of numbers that lie close together, so that most look-ups need not search the map.
    struct Block {
        int m_First;
        std::vector<const std::string*> m_Names;
    };

    static constexpr std::size_t MAX_GAP = 1024;  // wider gaps begin a new block

    /// Numbers before the block wrap to offsets beyond its end.
    static std::size_t Offset(int number, const Block& block) {
        return static_cast<unsigned>(number) - static_cast<unsigned>(block.m_First);
    }

    std::map<int, std::string> m_Names;
    std::vector<Block> m_Blocks;
};

}  // namespace PI
