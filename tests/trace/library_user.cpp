// SPDX-License-Identifier: Apache-2.0
// Makes a host one that uses the library.
#include <gtest/gtest.h>
#include <pi/vocabulary.h>

namespace {

TEST(Host, UsesTheLibrary) {
    EXPECT_EQ(PI::ErrorCodeToString(0), "SUCCESS");
}

}  // namespace
