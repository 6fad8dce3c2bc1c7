// SPDX-License-Identifier: Apache-2.0
// The one reader of language files: compiled into libvelkx and into libpi, which may run on another libvelkx.
#pragma once

#include <map>
#include <string>

namespace language_file {

using Texts = std::map<unsigned int, std::string>;

/// The texts of a file by their numbers; fails as CLanguageSupport::LoadFile says.
Texts Read(const std::string& path);

}  // namespace language_file
