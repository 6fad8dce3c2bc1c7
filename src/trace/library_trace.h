// SPDX-License-Identifier: Apache-2.0
// The library's own traces: all pass the same number and name.
#pragma once

#include <pi/trace.h>

#include <cstdint>
#include <string>
#include <type_traits>

namespace PI {

constexpr int TRACE_CATEGORY_DATA = 3;
constexpr int TRACE_CATEGORY_PROPERTY = 20;
constexpr int TRACE_CATEGORY_DRIVE_COMBINATION = 21;

template <class Value>
const Value& Traceable(const Value& value) {
    return value;
}
inline std::string Traceable(std::uint64_t number) {
    return std::to_string(number);
}

/// How an argument is passed on: a number by value, since a variable whose address is used has to be in
/// memory, which costs the caller time even while traces are off.
template <class Value>
using Handed = std::conditional_t<std::is_trivially_copyable_v<Value>, Value, const Value&>;

// Kept out of the callers, which would otherwise save registers for it while traces are off.
template <class... Arguments>
[[gnu::noinline, gnu::cold]] void WriteTrace(int category, const char* format,
                                             Arguments... arguments) noexcept {
    try {
        VELKTrace trace(494, "VELK_Trace", category, format);
        static_cast<void>((trace << ... << Traceable(arguments)));
    } catch (...) {
        // Work must not fail because allocation for its trace does.
    }
}

/// Writes a line with its arguments, unless allocation fails. Costs one look at the flag while traces are
/// off, so hot paths may call it.
template <class... Arguments>
void Trace(int category, const char* format, const Arguments&... arguments) noexcept {
    if (VELKTrace::tracesEnabled) {
        WriteTrace<Handed<Arguments>...>(category, format, arguments...);
    }
}

}  // namespace PI
