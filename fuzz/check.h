// SPDX-License-Identifier: Apache-2.0
// Checks of fuzz targets: what does not hold stops the program, so that the fuzzer keeps the input.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace PI::Fuzz {

/// Prints what was expected and where, and stops.
[[noreturn]] inline void Fail(const char* file, int line, const std::string& text) {
    std::fprintf(stderr, "%s:%d: check failed: %s\n", file, line, text.c_str());
    std::abort();
}

inline void CheckText(const std::string& actual, const std::string& expected, const char* file, int line,
                      const char* expression) {
    if (actual != expected) {
        Fail(file, line,
             std::string(expression) + "\n  is     \"" + actual + "\"\n  not    \"" + expected + "\"");
    }
}

}  // namespace PI::Fuzz

/// A condition that holds for every input.
#define CHECK(condition)                                    \
    do {                                                    \
        if (!(condition)) {                                 \
            PI::Fuzz::Fail(__FILE__, __LINE__, #condition); \
        }                                                   \
    } while (false)

/// Two texts that are equal for every input; prints both when they are not.
#define CHECK_TEXT(actual, expected) \
    PI::Fuzz::CheckText((actual), (expected), __FILE__, __LINE__, #actual " == " #expected)
