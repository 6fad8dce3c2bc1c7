// SPDX-License-Identifier: Apache-2.0
// Counts by standing in for the functions of the C library and of the compiler's runtime. Every shared
// library of the process calls these.

#include <dlfcn.h>

#include <cstddef>
#include <cstdlib>
#include <typeinfo>

#include "measure.h"

namespace {
// Benchmarks run in one thread.
std::uint64_t allocations = 0;
std::uint64_t throws = 0;
}  // namespace

std::uint64_t bench::Allocations() {
    return allocations;
}

std::uint64_t bench::Throws() {
    return throws;
}

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);

void* malloc(std::size_t size) noexcept {
    ++allocations;
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) noexcept {
    ++allocations;
    return __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size) noexcept {
    ++allocations;
    return __libc_realloc(memory, size);
}

[[noreturn]] void __cxa_throw(void* exception, std::type_info* type, void (*destroy)(void*)) {
    using Throw = void (*)(void*, std::type_info*, void (*)(void*));
    static const auto next = reinterpret_cast<Throw>(dlsym(RTLD_NEXT, "__cxa_throw"));
    ++throws;
    next(exception, type, destroy);
    std::abort();
}
}
