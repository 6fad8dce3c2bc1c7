// SPDX-License-Identifier: Apache-2.0
// Whether AddressSanitizer watches: it ends processes in its own way.
#pragma once

namespace PI::Test {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool WITH_SANITIZER = true;
#elif defined(__has_feature)
constexpr bool WITH_SANITIZER = __has_feature(address_sanitizer);
#else
constexpr bool WITH_SANITIZER = false;
#endif

}  // namespace PI::Test
