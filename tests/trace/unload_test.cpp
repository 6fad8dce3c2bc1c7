// SPDX-License-Identifier: Apache-2.0
// The program is not linked to the library: it loads it, uses it and lets it go.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace {

bool IsMapped(const std::string& library) {
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        if (line.find("/" + library + ".so") != std::string::npos) {
            return true;
        }
    }
    return false;
}

TEST(Library, UnloadsWithItsBaseLibraries) {
    ASSERT_FALSE(IsMapped("libpi"));
    for (int round = 0; round < 3; ++round) {
        void* const handle = dlopen(PI_LIBRARY, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(handle, nullptr) << dlerror();
        EXPECT_TRUE(IsMapped("libpi"));
        EXPECT_TRUE(IsMapped("libvelk"));
        EXPECT_TRUE(IsMapped("libvelkx"));

        // PI::ErrorCodeToString(int): an unknown code grows a table that must be freed at unload.
        using ToString = const std::string& (*)(int);
        const auto toString = reinterpret_cast<ToString>(dlsym(handle, "_ZN2PI17ErrorCodeToStringB5cxx11Ei"));
        ASSERT_NE(toString, nullptr) << dlerror();
        EXPECT_EQ(toString(20000), "GENERAL");
        EXPECT_EQ(toString(1), "");

        ASSERT_EQ(dlclose(handle), 0);
        EXPECT_EQ(dlopen(PI_LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr);
        EXPECT_FALSE(IsMapped("libpi"));
        EXPECT_FALSE(IsMapped("libvelk"));
        EXPECT_FALSE(IsMapped("libvelkx"));
    }
}

}  // namespace
