// SPDX-License-Identifier: Apache-2.0
/// @file
/// Events in the user's languages.
#pragma once

#include <pi/pi.h>

#include <filesystem>
#include <string>
#include <vector>

namespace service {

struct Language {
    std::string m_Name;  ///< the name of its file
    PI::CTextTable m_Texts;
};

/// Reads language files; texts that a later one lacks are those of the first.
/// @throws std::runtime_error which names the file
std::vector<Language> LoadLanguages(const std::vector<std::filesystem::path>& files);

/// A plug-in's events, rendered in the first language, with their descriptions in the others.
std::string EventsText(const std::vector<PI::CEvent>& events, const std::vector<Language>& languages);

}  // namespace service
