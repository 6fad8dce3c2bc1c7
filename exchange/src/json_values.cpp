// SPDX-License-Identifier: Apache-2.0

#include "json_values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <set>

namespace PI {

namespace {

void FindDuplicates(const JsonValue& value, std::string_view path, unsigned depth,
                    std::vector<std::string>& notes) {
    constexpr unsigned DEEPEST = 32;  // reports nest six deep
    constexpr unsigned FEW = 16;
    if (depth > DEEPEST) {
        return;
    }
    ForEach(&value, [&](const JsonValue& element) { FindDuplicates(element, path, depth + 1, notes); });
    if (!value.IsObject()) {
        return;
    }
    std::set<std::string_view> seen;
    for (auto member = value.MemberBegin(); member != value.MemberEnd(); ++member) {
        const std::string_view name = TextOf(member->name);
        const auto isSame = [name](const auto& other) { return TextOf(other.name) == name; };
        if (value.MemberCount() > FEW ? !seen.insert(name).second
                                      : std::any_of(value.MemberBegin(), member, isSame)) {
            notes.push_back("\"" + std::string(name) + "\" occurs more than once" +
                            (path.empty() ? "" : " in ") + std::string(path) + "; the last one counts");
        }
        if (member->value.IsObject() || member->value.IsArray()) {
            FindDuplicates(member->value, name, depth + 1, notes);
        }
    }
}

}  // namespace

std::string_view TextOf(const JsonValue& value) {
    return value.IsString() ? std::string_view(value.GetString(), value.GetStringLength())
           : value.IsBool() ? std::string_view(value.GetBool() ? "true" : "false")
                            : std::string_view();
}

const JsonValue* Member(const JsonValue& object, std::string_view name, std::string_view suffix) {
    if (!object.IsObject()) {
        return nullptr;
    }
    for (auto member = object.MemberEnd(); member != object.MemberBegin();) {
        const std::string_view key = TextOf((--member)->name);
        if (key.size() == name.size() + suffix.size() && key.substr(0, name.size()) == name &&
            key.substr(name.size()) == suffix) {
            return &member->value;
        }
    }
    return nullptr;
}

const JsonValue* At(const JsonValue& object, std::string_view path, std::string_view suffix) {
    const std::size_t dot = path.find('.');
    if (dot == std::string_view::npos) {
        return Member(object, path, suffix);
    }
    const JsonValue* value = Member(object, path.substr(0, dot));
    return value != nullptr ? At(*value, path.substr(dot + 1), suffix) : nullptr;
}

std::string_view TextAt(const JsonValue& object, std::string_view path, std::string_view suffix) {
    const JsonValue* value = At(object, path, suffix);
    return value != nullptr ? TextOf(*value) : std::string_view();
}

std::optional<std::int64_t> ToWholeNumber(std::string_view text) {
    const char* const end = text.data() + text.size();
    std::int64_t number = 0;
    const std::from_chars_result whole = std::from_chars(text.data(), end, number);
    if (whole.ec == std::errc() && whole.ptr == end) {
        return number;
    }
    double value = 0;
    const std::from_chars_result read = std::from_chars(text.data(), end, value);
    constexpr double TWO_TO_63 = 9223372036854775808.0;
    if (read.ec != std::errc() || read.ptr != end || std::isinf(value) || std::trunc(value) != value ||
        value < -TWO_TO_63) {
        return std::nullopt;
    }
    return value < TWO_TO_63 ? static_cast<std::int64_t>(value) : std::numeric_limits<std::int64_t>::max();
}

void FindDuplicates(const JsonValue& value, std::vector<std::string>& notes) {
    FindDuplicates(value, {}, 0, notes);
}

}  // namespace PI
