// SPDX-License-Identifier: Apache-2.0
// The one reader of language files: compiled into libvelkx and into libpi, which may run on another libvelkx.
#pragma once

#include <map>
#include <string>

namespace language_file {

using Texts = std::map<unsigned int, std::string>;

/// The content of a file; fails as CLanguageSupport::LoadFile says.
std::string Read(const std::string& path);

/// The texts of a language file by their numbers; fails as CLanguageSupport::LoadFile says.
/// @param name of the file
Texts Parse(const std::string& content, const std::string& name);

}  // namespace language_file
