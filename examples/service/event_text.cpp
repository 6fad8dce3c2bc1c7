// SPDX-License-Identifier: Apache-2.0

#include "event_text.h"

#include <stdexcept>

#include "printable_text.h"

namespace service {
namespace {

std::string Line(const std::string& key, const std::string& value) {
    return "    " + PrintableText(key + ": " + value) + "\n";
}

}  // namespace

std::vector<Language> LoadLanguages(const std::vector<std::filesystem::path>& files) {
    std::vector<Language> languages;
    for (const std::filesystem::path& file : files) {
        if (std::filesystem::exists(file) && !std::filesystem::is_regular_file(file)) {
            throw std::runtime_error(file.string() + ": is no file");  // reading might wait for a writer
        }
        const PI::CTextTable texts = PI::CTextTable::LoadFile(file);
        languages.push_back(
            {file.filename(), languages.empty() ? texts : texts.WithFallback(languages.front().m_Texts)});
    }
    return languages;
}

std::string EventsText(const std::vector<PI::CEvent>& events, const std::vector<Language>& languages) {
    std::string text;
    for (const PI::CEvent& event : events) {
        const int id = static_cast<int>(event.m_EventID);
        const std::string& name = PI::EventIDToString(id);
        text += "  Event " + (name.empty() ? std::to_string(id) : name) + "\n";
        for (const Language& language : languages) {
            const bool isFirst = &language == &languages.front();
            for (const auto& [key, value] : PI::CPluginHelper::StringifyEventMessageWith(
                     event, language.m_Texts, PI::WithoutText::NAME_AND_PLACEHOLDERS,
                     PI::MarkersInValues::TEXT)) {
                if (isFirst) {
                    text += Line(key, value);
                } else if (key == "Description") {
                    text += Line(key + " (" + language.m_Name + ")", value);
                }
            }
        }
    }
    return text;
}

}  // namespace service
