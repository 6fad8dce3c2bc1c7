// SPDX-License-Identifier: Apache-2.0
/// @file
/// Texts of numbered language resources.
#pragma once

#include <string>

/// @addtogroup base
/// @{

/// The texts of the process, one table for all modules. Thread-safe.
class __attribute__((visibility("default"))) CLanguageSupport {
public:
    /// Copies the text of a resource to text, which is emptied if the number is unknown.
    /// @throws std::bad_alloc if allocation fails
    static void ResolveString(unsigned int id, std::string& text);

    /// Sets the text of a resource.
    /// @throws std::bad_alloc if allocation fails; the resource keeps the text it had
    static void SetString(unsigned int id, const std::string& text);

    /// Removes all texts.
    static void Clear();

    /// Adds the texts of a file, replacing those with the same numbers.
    ///
    /// @code{.xml}
    ///     <Strings language="en"><String id="10056">Rebuild started on %1</String></Strings>
    /// @endcode
    /// @throws std::runtime_error if the file cannot be read or is larger than 64 mebibytes, and, with line
    ///         and column, if it is not well-formed or contains anything but String elements with a number of
    ///         their own; std::bad_alloc if allocation fails; no text is changed in either case
    static void LoadFile(const std::string& path);
};

/// @}
