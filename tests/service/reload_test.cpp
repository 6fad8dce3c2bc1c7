// SPDX-License-Identifier: Apache-2.0
// Loading and unloading the plug-ins a thousand times leaves nothing behind.
//
// Built with AddressSanitizer, the leak check at the end of the program finds every block that is lost, also
// one whose last pointer stood in an unloaded plug-in. Built without, what the allocator has handed out and
// what is mapped are compared: both must be the same after the last rounds as after the first.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "plugin.h"
#include "support/sanitizer.h"

namespace {

constexpr int ROUNDS = 1000;
constexpr int WARM_UP_ROUNDS = 200;  // in which the loader and the allocator reach their size

// What the allocator takes for one byte. Freed blocks that it keeps at hand count as handed out and make the
// figures vary by a few kilobytes, so half of what one block lost in each round comes to is the limit.
constexpr std::size_t SMALLEST_BLOCK = 32;

const std::filesystem::path MDRAID = std::filesystem::path(PLUGIN_FOLDER) / "mdraid.so";
const std::filesystem::path SMARTCTL = std::filesystem::path(PLUGIN_FOLDER) / "smartctl.so";

struct Round {
    std::size_t m_Objects = 0;
    std::size_t m_Events = 0;
    std::vector<std::uint64_t> m_AdapterNumbers;
};

void Use(const std::filesystem::path& file, const std::string& key, const std::string& value, Round& round) {
    std::vector<PI::CObject> objects;
    std::vector<PI::CEvent> events;
    std::vector<std::string> errors;
    {
        const auto plugin = service::LoadPlugin(file, {{file.stem(), key, value}});
        objects = plugin->GetObjects(errors);
        events = plugin->GetEvents(errors);
    }
    // Unloaded, and what it has given is still good.
    ASSERT_EQ(dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr);
    ASSERT_TRUE(errors.empty()) << errors.front();
    round.m_Objects += objects.size();
    round.m_Events += events.size();
    for (const PI::CObject& object : objects) {
        for (const PI::CProperty& property : object.m_Properties) {
            if (property.m_ID == PI::PropertyID::ADAPTER_NUMBER) {
                round.m_AdapterNumbers.push_back(property.m_Data.m_Long.m_Value);
            }
        }
    }
}

std::size_t HandedOutBytes() {
    return mallinfo2().uordblks + mallinfo2().hblkhd;
}

std::size_t MappedPages() {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages;
}

TEST(Plugins, LoadAndUnloadAThousandTimesWithoutALeak) {
    const std::string trees = TREES_FOLDER;
    std::size_t bytesBefore = 0;
    std::size_t pagesBefore = 0;
    Round first;
    for (int i = 0; i < ROUNDS; ++i) {
        Round round;
        ASSERT_NO_FATAL_FAILURE(Use(MDRAID, "root", trees + "/rebuilding", round));
        ASSERT_NO_FATAL_FAILURE(Use(SMARTCTL, "folder", trees + "/drives", round));
        if (i == 0) {
            first = round;
            ASSERT_EQ(first.m_AdapterNumbers, (std::vector<std::uint64_t>{0, 1, 2, 3}));
            ASSERT_GT(first.m_Objects, 20U);
            ASSERT_EQ(first.m_Events, 4U);
        }
        ASSERT_EQ(round.m_Objects, first.m_Objects);
        ASSERT_EQ(round.m_Events, first.m_Events);
        ASSERT_EQ(round.m_AdapterNumbers, first.m_AdapterNumbers);
        if (i == WARM_UP_ROUNDS) {
            bytesBefore = HandedOutBytes();
            pagesBefore = MappedPages();
        }
    }
    const std::size_t bytesAfter = HandedOutBytes();
    const std::size_t pagesAfter = MappedPages();
    RecordProperty("bytes_before", std::to_string(bytesBefore));
    RecordProperty("bytes_after", std::to_string(bytesAfter));
    RecordProperty("pages_before", std::to_string(pagesBefore));
    RecordProperty("pages_after", std::to_string(pagesAfter));
    if (!PI::Test::WITH_SANITIZER) {
        EXPECT_LT(bytesAfter, bytesBefore + (ROUNDS - WARM_UP_ROUNDS) * SMALLEST_BLOCK / 2);
        EXPECT_LE(pagesAfter, pagesBefore + 64);
    }
}

}  // namespace
