// SPDX-License-Identifier: Apache-2.0
// Array configuration documents.
#include "document_checks.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    PI::Fuzz::CheckDocument<PI::CArray>(data, size);
    return 0;
}
