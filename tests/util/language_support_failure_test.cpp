// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/plugin_helper.h>
#include <velkx/language_support.h>

#include <stdexcept>

// Stands before the one of the language library, as a symbol of the program does.
void CLanguageSupport::ResolveString(unsigned int id, std::string& text) {
    if (id == 404) {
        throw std::runtime_error("no such language");
    }
    text = "found";
}

namespace {

using PI::CPluginHelper;

TEST(MatchNLS, LetsThroughWhatTheLanguageSupportThrows) {
    for (const bool conformant : {false, true}) {
        try {
            CPluginHelper::MatchNLS("text", 404, conformant);
            FAIL() << "nothing thrown";
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "no such language");
        }
        EXPECT_TRUE(CPluginHelper::MatchNLS("Found", 200, conformant));
    }
}

}  // namespace
