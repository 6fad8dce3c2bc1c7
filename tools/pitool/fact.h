// SPDX-License-Identifier: Apache-2.0
/// @file
/// Something that is known about a drive, or why it is not.
#pragma once

#include <optional>
#include <string>
#include <utility>

namespace pitool {

/// The plainest reason why something is unknown.
constexpr const char* NOT_REPORTED = "not reported";

/// A value with where it comes from; no value with the reason; or a value with what speaks against it.
template <class Value>
struct Fact {
    std::optional<Value> m_Value;
    std::string m_Source;  ///< where the value comes from; empty: the report says so itself
    std::string m_Reason;  ///< why there is no value, or why it is doubtful; else empty

    explicit operator bool() const { return m_Value.has_value(); }
    const Value& operator*() const { return *m_Value; }
};

template <class Value>
Fact<Value> Known(Value value, std::string source = {}) {
    return {std::move(value), std::move(source), {}};
}

template <class Value>
Fact<Value> Unknown(std::string reason) {
    return {std::nullopt, {}, std::move(reason)};
}

template <class Value>
Fact<Value> Doubtful(Value value, std::string reason) {
    return {std::move(value), {}, std::move(reason)};
}

}  // namespace pitool
