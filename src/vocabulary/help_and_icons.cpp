// SPDX-License-Identifier: Apache-2.0

#include <pi/plugin_helper.h>
#include <pi/vocabulary.h>

#include <algorithm>
#include <iterator>

namespace PI {

namespace {

struct Resource {
    int m_ID;
    const char* m_FileName;
};

constexpr Resource HELP_TOPICS[] = {
#define PI_HELP_TOPIC(id, fileName) {id, fileName},
#include "vocabulary/help_topics.def"
#undef PI_HELP_TOPIC
};

constexpr Resource ICONS[] = {
#define PI_ICON(id, fileName) {id, fileName},
#include "vocabulary/icons.def"
#undef PI_ICON
};

template <std::size_t Count>
constexpr bool IsAscending(const Resource (&resources)[Count]) {
    for (std::size_t i = 1; i < Count; ++i) {
        if (resources[i - 1].m_ID >= resources[i].m_ID) {
            return false;
        }
    }
    return true;
}
static_assert(IsAscending(HELP_TOPICS) && IsAscending(ICONS));

template <std::size_t Count>
int FindFileName(const Resource (&resources)[Count], int id, std::string& fileName) {
    fileName.clear();
    const Resource* found =
        std::lower_bound(std::begin(resources), std::end(resources), id,
                         [](const Resource& resource, int wanted) { return resource.m_ID < wanted; });
    if (found == std::end(resources) || found->m_ID != id) {
        return ErrorCode::GENERAL;
    }
    fileName = found->m_FileName;
    return ErrorCode::SUCCESS;
}

}  // namespace

int CPluginHelper::GetHelpPath(int topic, std::string& path) {
    return FindFileName(HELP_TOPICS, topic, path);
}

int CPluginHelper::GetIconPath(int icon, std::string& fileName) {
    return FindFileName(ICONS, icon, fileName);
}

}  // namespace PI
