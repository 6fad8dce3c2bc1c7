// SPDX-License-Identifier: Apache-2.0
//// Reads values of a JSON document.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "json_parser.h"

namespace PI {

/// A text, "true" or "false"; empty for anything else.
std::string_view TextOf(const JsonValue& value);

/// A member by its name and what follows it; of several with the same name the last. Null where there is
/// none.
const JsonValue* Member(const JsonValue& object, std::string_view name, std::string_view suffix = {});

/// The value at a path of member names with dots between them.
const JsonValue* At(const JsonValue& object, std::string_view path, std::string_view suffix = {});

std::string_view TextAt(const JsonValue& object, std::string_view path, std::string_view suffix = {});

/// A whole number, however it is written, also in quotes. Beyond 64 bits it is the largest.
std::optional<std::int64_t> ToWholeNumber(const JsonValue& value);

/// Elements of a list; none where there is none.
template <class Visit>
void ForEach(const JsonValue* list, Visit visit) {
    if (list != nullptr && list->IsArray()) {
        for (const JsonValue& element : list->GetArray()) {
            visit(element);
        }
    }
}

/// Adds a note for every name that an object has more than once.
void FindDuplicates(const JsonValue& value, std::vector<std::string>& notes);

/// Changes what a parser refuses into what it accepts, up to where the next document may begin: an invalid
/// number becomes a null or an empty text, an invalid escape another character. Lengths stay the same.
/// @return whether there was any
bool MendJson(std::string& text, std::size_t start);

}  // namespace PI
