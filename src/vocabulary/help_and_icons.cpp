// SPDX-License-Identifier: Apache-2.0

#include <pi/plugin_helper.h>
#include <pi/vocabulary.h>
#include <pi/vocabulary_lists.h>

namespace PI {

namespace {

int FindFileName(const CVocabulary& resources, int id, std::string& fileName) {
    fileName.clear();
    const std::optional<CVocabularyEntry> found = resources.Find(id);
    if (!found) {
        return ErrorCode::GENERAL;
    }
    fileName = found->Name();
    return ErrorCode::SUCCESS;
}

}  // namespace

int CPluginHelper::GetHelpPath(int topic, std::string& path) {
    return FindFileName(Vocabulary::HelpTopics(), topic, path);
}

int CPluginHelper::GetIconPath(int icon, std::string& fileName) {
    return FindFileName(Vocabulary::Icons(), icon, fileName);
}

}  // namespace PI
