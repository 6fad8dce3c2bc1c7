// SPDX-License-Identifier: Apache-2.0

#include "json_values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <set>

namespace PI {

namespace {

/// One of 64 bits, mostly another one for another name.
std::uint64_t NameBit(std::string_view name) {
    const auto character = [name](std::size_t at) { return static_cast<unsigned char>(name[at]); };
    const std::size_t sum =
        name.empty() ? 0U : character(0) + 3U * character(name.size() / 2) + 7U * character(name.size() - 1);
    return std::uint64_t{1} << (name.size() + sum) % 64;
}

void FindDuplicates(const JsonValue& value, std::string_view path, unsigned depth,
                    std::vector<std::string>& notes) {
    constexpr unsigned DEEPEST = 32;  // reports nest six deep
    constexpr std::ptrdiff_t FEW = 64;
    if (depth > DEEPEST) {
        return;
    }
    ForEach(&value, [&](const JsonValue& element) { FindDuplicates(element, path, depth + 1, notes); });
    if (!value.IsObject()) {
        return;
    }
    std::uint64_t seen = 0;
    std::set<std::string_view> sorted;  // where there are many
    const auto begin = value.MemberBegin();
    for (auto member = begin; member != value.MemberEnd(); ++member) {
        const std::string_view name = TextOf(member->name);
        bool isSeen = (seen & NameBit(name)) != 0;
        seen |= NameBit(name);
        if (member - begin < FEW) {
            isSeen = isSeen && std::any_of(begin, member,
                                           [name](const auto& other) { return TextOf(other.name) == name; });
        } else {
            if (member - begin == FEW) {
                std::for_each(begin, member,
                              [&sorted](const auto& other) { sorted.insert(TextOf(other.name)); });
            }
            isSeen = !sorted.insert(name).second;
        }
        if (isSeen) {
            notes.push_back("\"" + std::string(name) + "\" occurs more than once" +
                            (path.empty() ? "" : " in ") + std::string(path) + "; the last one counts");
        }
        if (member->value.IsObject() || member->value.IsArray()) {
            FindDuplicates(member->value, name, depth + 1, notes);
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
    const std::size_t length = name.size() + suffix.size();
    for (auto member = object.MemberEnd(); member != object.MemberBegin();) {
        const JsonValue& key = (--member)->name;
        if (key.GetStringLength() == length && !name.empty() && key.GetString()[0] == name[0] &&
            std::memcmp(key.GetString(), name.data(), name.size()) == 0 &&
            std::string_view(key.GetString(), length).substr(name.size()) == suffix) {
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
