// SPDX-License-Identifier: Apache-2.0

#include <pi/build_check.h>

#include <cinttypes>
#include <cstdio>
#include <cstring>

namespace PI {
namespace {

const _BUILD_FIGURE* Find(const char* name) {
    for (const _BUILD_FIGURE& figure : BUILD_FIGURES) {
        if (std::strcmp(figure.m_Name, name) == 0) {
            return &figure;
        }
    }
    return nullptr;
}

}  // namespace

std::size_t CompareBuild(const _BUILD_FIGURE* figures, std::size_t count, char* sentence,
                         std::size_t capacity) noexcept {
    const _BUILD_FIGURE* const major = &BUILD_FIGURES[0];
    bool hasMajor = false;
    int length = 0;
    for (std::size_t i = 0; i < count && length == 0; ++i) {
        const _BUILD_FIGURE& theirs = figures[i];
        const _BUILD_FIGURE* const ours = theirs.m_Name == nullptr ? nullptr : Find(theirs.m_Name);
        hasMajor = hasMajor || ours == major;
        if (ours != nullptr && ours->m_Value != theirs.m_Value) {
            length = std::snprintf(sentence, capacity,
                                   "the module was built with %s = %" PRIu64 ", libpi %s with %" PRIu64,
                                   ours->m_Name, theirs.m_Value, Version(), ours->m_Value);
        }
    }
    if (length == 0 && !hasMajor) {
        length = std::snprintf(sentence, capacity, "the module does not say its %s, libpi %s has %" PRIu64,
                               major->m_Name, Version(), major->m_Value);
    }
    if (length == 0 && capacity != 0) {
        sentence[0] = '\0';
    }
    return static_cast<std::size_t>(length);
}

}  // namespace PI
