// SPDX-License-Identifier: Apache-2.0
// Global locales that classify characters in their own way.
#pragma once

#include <algorithm>
#include <locale>

namespace PI::Test {

/// Classifies "x" as white space and nothing else, and takes "!" for the upper case of every lower-case
/// letter.
class OddCharacters : public std::ctype<char> {
public:
    OddCharacters() : std::ctype<char>(Table()) {}

protected:
    char do_toupper(char character) const override {
        return character >= 'a' && character <= 'z' ? '!' : character;
    }
    const char* do_toupper(char* begin, const char* end) const override {
        for (; begin != end; ++begin) {
            *begin = do_toupper(*begin);
        }
        return end;
    }

private:
    static const mask* Table() {
        static mask table[table_size];
        std::copy_n(classic_table(), table_size, table);
        for (mask& entry : table) {
            entry = static_cast<mask>(entry & ~space);
        }
        table[static_cast<unsigned char>('x')] |= space;
        return table;
    }
};

/// Installs a global C++ locale while it lives.
class GlobalLocale {
public:
    explicit GlobalLocale(const std::locale& locale) : m_Before(std::locale::global(locale)) {}
    ~GlobalLocale() { std::locale::global(m_Before); }
    GlobalLocale(const GlobalLocale&) = delete;
    GlobalLocale& operator=(const GlobalLocale&) = delete;

private:
    std::locale m_Before;
};

inline std::locale OddLocale() {
    return std::locale(std::locale::classic(), new OddCharacters);
}

}  // namespace PI::Test
