// SPDX-License-Identifier: Apache-2.0
// Compiled with a lot of -D switches that bear names of constants.
#include <pi/pi.h>
#include <velk/xml.h>
#include <velkx/language_support.h>

#include <gtest/gtest.h>

namespace {

#define TEXT_OF(macro) TEXT_OF_EXPANDED(macro)
#define TEXT_OF_EXPANDED(text) #text

TEST(Headers, CompilerSwitchesKeepTheirValues) {
    EXPECT_STREQ(TEXT_OF(DEBUG), "1");
    EXPECT_STREQ(TEXT_OF(ERROR), "1");
    EXPECT_STREQ(TEXT_OF(LOGGING), "1");
    EXPECT_STREQ(TEXT_OF(OK), "0");
    EXPECT_STREQ(TEXT_OF(SUCCESS), "0");
    EXPECT_STREQ(TEXT_OF(FAILED), "-1");
    EXPECT_STREQ(TEXT_OF(ENABLED), "1");
    EXPECT_STREQ(TEXT_OF(DISABLED), "0");
    EXPECT_STREQ(VERSION, "1.0");
    EXPECT_STREQ(PACKAGE_VERSION, "1.0");
    EXPECT_STREQ(TEXT_OF(NAME), "plugin");
    EXPECT_STREQ(DOMAIN, "example");
    EXPECT_STREQ(TEXT_OF(EMPTY), "");
    EXPECT_STREQ(TEXT_OF(BOOL), "int");
    EXPECT_STREQ(TEXT_OF(STRING), "char*");
    EXPECT_STREQ(TEXT_OF(STATUS), "7");
    EXPECT_STREQ(TEXT_OF(BUSY), "8");
    EXPECT_STREQ(TEXT_OF(DELETE), "9");
    EXPECT_STREQ(TEXT_OF(BLOCK_SIZE), "4096");
}

TEST(Headers, InterfaceWorksUnderCompilerSwitches) {
    PI::CProperty property;
    EXPECT_EQ(property.SetValue(std::string("text")), 0);
    EXPECT_EQ(PI::PropertyIDToString(PI::PropertyID::MAJOR_VERSION), "MAJOR_VERSION");
}

}  // namespace
