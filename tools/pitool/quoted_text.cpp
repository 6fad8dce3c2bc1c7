// SPDX-License-Identifier: Apache-2.0

#include "quoted_text.h"

#include "printable_text.h"

namespace pitool {

std::string Quoted(std::string_view text) {
    constexpr std::size_t LONGEST = 40;
    const bool cut = text.size() > LONGEST;
    return "\"" + PrintableText(text.substr(0, LONGEST)) + (cut ? "...\"" : "\"");
}

}  // namespace pitool
