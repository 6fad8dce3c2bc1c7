// SPDX-License-Identifier: Apache-2.0
/// @file
/// Diagnostic traces.
#pragma once

#include <pi/types.h>

#include <cstdint>
#include <ostream>
#include <string>

/// @addtogroup trace
/// @{

/// One diagnostic line: built with a category and a format text, fed with arguments, written when destroyed.
///
/// @code
///     VELKTrace(494, "VELK_Trace", 3, "drive %d: %s") << 7 << "not ready";
/// @endcode
///
/// The line is tag + "[milliseconds since the process's first trace][name][number]" + message. It is written,
/// at debug severity, to the plog logger whose number is the category; a category that is not in the list is
/// written to logger 0 with the tag "[defaultLog]". Loggers are created by the hosting process; without one
/// nothing is written. A message that contains a NUL byte is passed to plog whole, but plog's formatters
/// print only the text before it.
///
/// Threads: each object belongs to one thread; any number of threads may trace at once.
class PI_API VELKTrace {
public:
    /// Starts a line.
    ///
    /// @param number   printed in the line's prefix
    /// @param name     printed in the line's prefix, not null
    /// @param category selects tag and logger
    /// @param format   text with printf-like ("%5d", "%-5s") or numbered ("%1%") placeholders, not null.
    ///                 Without arguments it is the message unchanged, including "%%".
    /// @throws an exception derived from std::exception if the format text is malformed, std::logic_error if
    ///         the name is null, std::bad_alloc if allocation fails
    VELKTrace(int number, const char* name, int category, const char* format);

    /// @{
    /// A line is written once.
    VELKTrace(const VELKTrace&) = delete;
    VELKTrace& operator=(const VELKTrace&) = delete;
    /// @}

    /// Writes the line if tracesEnabled is true and the category's logger takes debug records. Never throws.
    ~VELKTrace();

    /// Fills the next placeholder with what the value's operator<< prints, using the placeholder's flags.
    ///
    /// The message stays the raw format text until the last placeholder is filled. Arguments beyond the last
    /// placeholder are ignored, and so are exceptions of the value's operator<<.
    template <class T>
    VELKTrace& operator<<(T value) {
        Feed(&Print<T>, &value);
        return *this;
    }

    /// Switches all traces of the process on or off; false at first. Defined in libvelk.
    static bool tracesEnabled;

private:
    struct Format;
    using Printer = void (*)(std::ostream&, const void*);

    template <class T>
    static void Print(std::ostream& stream, const void* value) {
        stream << *static_cast<const T*>(value);
    }

    void Feed(Printer print, const void* value) noexcept;
    void Write() const;

    std::int32_t m_Number;
    std::string m_Name;
    std::int32_t m_Category;
    Format* m_Format;  // owned; a smart pointer's header is a good part of what this one costs to include
    std::string m_Message;
};

/// @cond
extern template PI_API VELKTrace& VELKTrace::operator<< <std::string>(std::string value);
extern template PI_API VELKTrace& VELKTrace::operator<< <PI::_PROPERTY_TYPE>(PI::_PROPERTY_TYPE value);
/// @endcond

namespace PI {
using ::VELKTrace;  ///< the trace under the name that plug-ins use
}

/// @}
