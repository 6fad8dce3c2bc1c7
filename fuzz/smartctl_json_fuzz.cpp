// SPDX-License-Identifier: Apache-2.0
// Reports of smartctl: whatever the fuzzer makes of JSON, compressed ones included.
#include "report_checks.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    PI::Fuzz::CheckReport(std::string(reinterpret_cast<const char*>(data), size));
    return 0;
}
