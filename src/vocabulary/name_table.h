// The mechanism that all vocabularies share: numbers with their names, in an ordered map.
#pragma once

#include <initializer_list>
#include <map>
#include <string>
#include <utility>

namespace PI {

class NameTable {
public:
    /// Where a number stands twice, the first name is kept.
    NameTable(std::initializer_list<std::pair<const int, const char*>> names)
        : m_Names(names.begin(), names.end()) {}

    /// The name of a number. An unknown number is remembered with an empty name.
    const std::string& Name(int number) { return m_Names[number]; }

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
    std::map<int, std::string> m_Names;
};

}  // namespace PI
