// SPDX-License-Identifier: Apache-2.0
/// @file
/// Version of the library, at compile time and of the loaded library.
#pragma once

#include <pi/types.h>

/// @addtogroup utilities
/// @{

#define PI_VERSION_MAJOR 1         ///< raised with every incompatible change of the binary interface
#define PI_VERSION_MINOR 1         ///< raised with every addition
#define PI_VERSION_PATCH 0         ///< raised with every correction
#define PI_VERSION_STRING "1.1.0"  ///< the three numbers as text

namespace PI {

/// Version of the loaded library, such as "1.1.0": at least PI_VERSION_STRING of the calling module.
/// @return static text of the library, valid until it is unloaded. Does not throw. Thread-safe.
PI_API const char* Version();

}  // namespace PI

/// @}
