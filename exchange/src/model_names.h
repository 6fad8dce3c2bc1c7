// SPDX-License-Identifier: Apache-2.0
// Vendor and product of what drives print as their model.
#pragma once

#include <string>

namespace PI {

/// As the library splits it; if that gives no vendor, by the beginning of the model, with vendor and product
/// exchanged if they are swapped. The vendor is empty if unknown.
void SplitModel(const std::string& model, std::string& vendor, std::string& product);

/// The kind of volume with a model, empty for a drive.
const char* FindVolumeKind(const std::string& model);

}  // namespace PI
