// SPDX-License-Identifier: Apache-2.0
/// @file
/// Whether modules that exchange objects were built alike.
///
/// A service and its plug-ins exchange objects as they are laid out in memory. A module that was compiled in
/// another mode of the standard library, or for another major version of this library, lays them out
/// differently, and corrupts memory with the first one. So each module contains figures that say how it was
/// compiled, and the service compares those of a plug-in before it calls anything else in it:
///
/// @code
///     // in the plug-in, exported
///     const PI::_BUILD_FIGURE* PluginBuild(std::size_t* count) {
///         *count = std::size(PI::BUILD_FIGURES);
///         return PI::BUILD_FIGURES;
///     }
///
///     // in the service
///     std::size_t count = 0;
///     const PI::_BUILD_FIGURE* const figures = pluginBuild(&count);
///     const std::string difference = PI::BuildDifference(figures, count);
/// @endcode
///
/// The service compares, not the plug-in, which may have loaded a libpi of another major version. The figures
/// use C types only, so that they can be exchanged when nothing else can.
///
/// A module that was compiled with another std::string calls functions under other names, which the library
/// mostly does not have; dlopen with RTLD_NOW then fails and names one of them. What a module does while it
/// is being loaded, in the constructors of its static objects, happens before any check.
#pragma once

#include <pi/adapters.h>
#include <pi/config_file.h>
#include <pi/drive_combination.h>
#include <pi/drive_health.h>
#include <pi/drives.h>
#include <pi/endurance_rating.h>
#include <pi/events.h>
#include <pi/health_assessment.h>
#include <pi/health_changes.h>
#include <pi/model.h>
#include <pi/remaining_lifetime.h>
#include <pi/sense.h>
#include <pi/ssd_endurance.h>
#include <pi/text_table.h>
#include <pi/trace.h>
#include <pi/version.h>
#include <pi/vocabulary_lists.h>
#include <pi/wear_forecast.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace PI {

/// @addtogroup utilities
/// @{

/// One figure that says how a module was compiled. This structure is the same in every release: releases add
/// figures with new names.
struct _BUILD_FIGURE {
    const char* m_Name;     ///< such as "sizeof(PI::CObject)"; static text of the module
    std::uint64_t m_Value;  ///< a size or offset in bytes, or the value of the macro of that name
};

#pragma GCC diagnostic push
// The offset of a member in a class with virtual functions is up to the compiler: that is what is compared.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

/// How the module that includes this header was compiled: the major version, the modes of the standard
/// library, then size, alignment and the offset of the last member of each type that modules exchange
/// (pi/build_figures.def).
///
/// Hidden, so that each module has its own.
__attribute__((visibility("hidden"))) inline constexpr _BUILD_FIGURE BUILD_FIGURES[] = {
    {"PI_VERSION_MAJOR", PI_VERSION_MAJOR},
#ifdef _GLIBCXX_DEBUG
    {"_GLIBCXX_DEBUG", 1},
#else
    {"_GLIBCXX_DEBUG", 0},
#endif
#ifdef _GLIBCXX_USE_CXX11_ABI
    {"_GLIBCXX_USE_CXX11_ABI", _GLIBCXX_USE_CXX11_ABI},
#endif
/// @cond
#define PI_BUILD_SIZE(...) {"sizeof(" #__VA_ARGS__ ")", sizeof(__VA_ARGS__)},
#define PI_BUILD_TYPE(type, member)                                             \
    {"sizeof(" #type ")", sizeof(type)}, {"alignof(" #type ")", alignof(type)}, \
        {"offsetof(" #type ", " #member ")", offsetof(type, member)},
/// @endcond
#include <pi/build_figures.def>
#undef PI_BUILD_TYPE
#undef PI_BUILD_SIZE
};

#pragma GCC diagnostic pop

/// Compares the figures of a module with those of the loaded library.
///
/// Figures that the library does not know are ignored, and so are those that the module lacks, except
/// PI_VERSION_MAJOR: modules older and newer than the library are compared by what both know.
/// @param figures  of the module; may be null when count is 0
/// @param count    of figures
/// @param sentence out: empty when all agree, otherwise the first difference, such as "the module was built
///                 with sizeof(std::vector<int>) = 48, libpi 1.0.0 with 24"; ends with a NUL byte, cut where
///                 it is too long
/// @param capacity of the sentence in bytes; 0 when only the result is needed, and the sentence may be null
///                 then
/// @return length of the whole sentence, 0 when all agree; thread-safe
PI_API std::size_t CompareBuild(const _BUILD_FIGURE* figures, std::size_t count, char* sentence,
                                std::size_t capacity) noexcept;

/// CompareBuild as a text; without arguments, for the calling module.
///
/// @return empty when all agree, otherwise a sentence of at most 255 bytes
/// @throws std::bad_alloc if allocation fails
__attribute__((visibility("hidden"))) inline std::string BuildDifference(
    const _BUILD_FIGURE* figures = BUILD_FIGURES, std::size_t count = std::size(BUILD_FIGURES)) {
    char sentence[256];
    CompareBuild(figures, count, sentence, sizeof sentence);
    return sentence;
}

/// @}

}  // namespace PI
