// SPDX-License-Identifier: Apache-2.0

#include "failing_memory.h"

#include <velk/xml.h>

#include <cstdlib>

namespace {

bool armed = false;
bool lasting = false;
bool failed = false;
std::uint64_t remaining = 0;
std::int64_t liveBlocks = 0;

bool IsToFail() {
    if (!armed) {
        return false;
    }
    if (remaining > 0) {
        --remaining;
        return false;
    }
    armed = lasting;
    failed = true;
    return true;
}

void* Allocate(std::size_t size) {
    void* block = IsToFail() ? nullptr : std::malloc(size != 0 ? size : 1);
    liveBlocks += block != nullptr;
    return block;
}

void Free(void* block) {
    liveBlocks -= block != nullptr;
    std::free(block);
}

// The XML library does not use operator new.
[[maybe_unused]] const bool hooked = (pugi::set_memory_management_functions(Allocate, Free), true);

}  // namespace

// The other forms of the operators come down to these.
void* operator new(std::size_t size) {
    void* block = Allocate(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}
void operator delete(void* block) noexcept {
    Free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    Free(block);
}

namespace PI::Test {

FailingMemory::FailingMemory(std::uint64_t succeeding, Shortage shortage) {
    remaining = succeeding;
    lasting = shortage == Shortage::LASTING;
    failed = false;
    armed = true;
}

FailingMemory::~FailingMemory() {
    armed = false;
}

bool FailingMemory::HasFailed() const {
    return failed;
}

std::int64_t LiveBlocks() {
    return liveBlocks;
}

}  // namespace PI::Test
