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
    std::set<std::string_view> many;
    std::string_view few[FEW];
    std::size_t count = 0;
    for (const auto& member : value.GetObject()) {
        const std::string_view name = TextOf(member.name);
        if (count < FEW ? std::find(few, few + count, name) != few + count : !many.insert(name).second) {
            notes.push_back("\"" + std::string(name) + "\" occurs more than once" +
                            (path.empty() ? "" : " in ") + std::string(path) + "; the last one counts");
        } else if (count < FEW) {
            few[count++] = name;
            if (count == FEW) {
                many.insert(few, few + FEW);
            }
        }
        if (member.value.IsObject() || member.value.IsArray()) {
            FindDuplicates(member.value, name, depth + 1, notes);
        }
    }
}

template <class Number>
std::optional<Number> FromText(std::string_view text) {
    Number number = 0;
    const std::from_chars_result read = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isNumber = read.ec == std::errc() && read.ptr == text.data() + text.size();
    return isNumber ? std::optional(number) : std::nullopt;
}

std::optional<std::int64_t> WholeOf(double number) {
    constexpr double TWO_TO_63 = 9223372036854775808.0;
    if (!std::isfinite(number) || std::trunc(number) != number || number < -TWO_TO_63) {
        return std::nullopt;
    }
    return number < TWO_TO_63 ? static_cast<std::int64_t>(number) : std::numeric_limits<std::int64_t>::max();
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

std::optional<std::int64_t> ToWholeNumber(const JsonValue& value) {
    if (value.IsInt64()) {
        return value.GetInt64();
    }
    const std::string_view text = TextOf(value);
    const auto whole = FromText<std::int64_t>(text);
    return whole ? whole
                 : WholeOf(value.IsNumber() ? value.GetDouble() : FromText<double>(text).value_or(NAN));
}

void FindDuplicates(const JsonValue& value, std::vector<std::string>& notes) {
    FindDuplicates(value, {}, 0, notes);
}

}  // namespace PI
