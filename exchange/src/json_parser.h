// SPDX-License-Identifier: Apache-2.0
// The JSON parser, with memory that throws: its own allocator gives a null that it does not look at.
#pragma once

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace PI {

class JsonMemory {
public:
    static const bool kNeedFree = true;

    void* Malloc(std::size_t size) { return size != 0 ? ::operator new(size) : nullptr; }
    void* Realloc(void* block, std::size_t size, std::size_t wanted) {
        void* grown = Malloc(wanted);
        if (block != nullptr && grown != nullptr) {
            std::memcpy(grown, block, std::min(size, wanted));
        }
        Free(block);
        return grown;
    }
    static void Free(void* block) { ::operator delete(block); }
};

using JsonPool = rapidjson::MemoryPoolAllocator<JsonMemory>;
using JsonValue = rapidjson::GenericValue<rapidjson::UTF8<>, JsonPool>;
using JsonDocument = rapidjson::GenericDocument<rapidjson::UTF8<>, JsonPool, JsonMemory>;

/// Nesting costs no stack, and bytes that are no UTF-8 stay as they are.
constexpr unsigned JSON_FLAGS =
    rapidjson::kParseIterativeFlag | rapidjson::kParseStopWhenDoneFlag | rapidjson::kParseNanAndInfFlag;

}  // namespace PI
