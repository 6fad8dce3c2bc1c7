// SPDX-License-Identifier: Apache-2.0
/// @file
/// Members of a JSON document that may be missing or of another type than expected.
#pragma once

#include <nlohmann/json.hpp>

#include <cstdint>
#include <initializer_list>
#include <limits>
#include <optional>
#include <string>

namespace smartctl {

/// The member at the end of a path, null when there is none.
inline const nlohmann::json* Find(const nlohmann::json& document, std::initializer_list<const char*> path) {
    const nlohmann::json* node = &document;
    for (const char* const name : path) {
        if (!node->is_object()) {
            return nullptr;
        }
        const auto member = node->find(name);
        if (member == node->end()) {
            return nullptr;
        }
        node = &*member;
    }
    return node;
}

/// Empty when there is no such text.
inline std::string FindText(const nlohmann::json& document, std::initializer_list<const char*> path) {
    const nlohmann::json* const node = Find(document, path);
    return node != nullptr && node->is_string() ? node->get<std::string>() : "";
}

/// A number of at most a limit.
inline std::optional<std::uint64_t> FindNumber(
    const nlohmann::json& document, std::initializer_list<const char*> path,
    std::uint64_t limit = std::numeric_limits<std::uint64_t>::max()) {
    const nlohmann::json* const node = Find(document, path);
    if (node == nullptr || !node->is_number_unsigned() || node->get<std::uint64_t>() > limit) {
        return std::nullopt;
    }
    return node->get<std::uint64_t>();
}

}  // namespace smartctl
