// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/version.h>

#include <string>

namespace {

TEST(Version, TextIsMadeOfTheThreeNumbers) {
    EXPECT_EQ(std::to_string(PI_VERSION_MAJOR) + "." + std::to_string(PI_VERSION_MINOR) + "." +
                  std::to_string(PI_VERSION_PATCH),
              PI_VERSION_STRING);
}

TEST(Version, LoadedLibraryIsTheOneCompiledWith) {
    EXPECT_STREQ(PI::Version(), PI_VERSION_STRING);
}

}  // namespace
