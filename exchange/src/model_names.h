// SPDX-License-Identifier: Apache-2.0
// Vendor and product of what drives print as their model.
#pragma once

#include <string>

namespace PI {

/// As the library splits it; where that names no vendor, by what the model begins with, and with vendor and
/// product put right where they are swapped. Vendor empty when unknown.
void SplitModel(const std::string& model, std::string& vendor, std::string& product);

/// What kind of volume a model stands for, empty for a drive.
const char* FindVolumeKind(const std::string& model);

}  // namespace PI
