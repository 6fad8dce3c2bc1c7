// SPDX-License-Identifier: Apache-2.0
// Reports of smartctl as text: behind a header, so that each input reaches the reader of texts.
#include "report_checks.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    PI::Fuzz::CheckReport("=== START OF INFORMATION SECTION ===\n" +
                          std::string(reinterpret_cast<const char*>(data), size));
    return 0;
}
