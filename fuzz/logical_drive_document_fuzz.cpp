// SPDX-License-Identifier: Apache-2.0
// Logical-drive configuration documents.
#include "document_checks.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    PI::Fuzz::CheckDocument<PI::CLogicalDrive>(data, size);
    return 0;
}
