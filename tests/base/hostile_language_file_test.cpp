// SPDX-License-Identifier: Apache-2.0
// Language files made to harm their reader: expanding, reaching outside, nested deeply, endless, in other
// encodings.

#include <gtest/gtest.h>
#include <unistd.h>
#include <velkx/language_support.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "support/hostile_xml.h"

using namespace PI::Test;

namespace {

class HostileLanguageFile : public testing::Test {
protected:
    HostileLanguageFile() { CLanguageSupport::Clear(); }
    ~HostileLanguageFile() override {
        CLanguageSupport::Clear();
        std::filesystem::remove(m_Path);
    }

    /// What loading a file of this content says, without the file's path; "" when it says nothing.
    std::string Failure(const std::string& content) const {
        std::ofstream(m_Path, std::ios::binary) << content;
        return FailureOf(m_Path);
    }

    static std::string FailureOf(const std::string& path) {
        try {
            CLanguageSupport::LoadFile(path);
        } catch (const std::runtime_error& error) {
            const std::string failure = error.what();
            EXPECT_EQ(failure.substr(0, path.size()), path);
            return failure.substr(path.size());
        }
        return "";
    }

    static std::string Resolved(unsigned int id) {
        std::string text;
        CLanguageSupport::ResolveString(id, text);
        return text;
    }

    const std::string m_Path =
        testing::TempDir() + "hostile_language_file_test." + std::to_string(getpid()) + ".xml";
};

}  // namespace

TEST_F(HostileLanguageFile, EntitiesAreNotExpanded) {
    EXPECT_EQ(Failure(EntityBomb() + "<Strings><String id='1'>a &e9; b</String></Strings>"), "");
    EXPECT_EQ(Resolved(1), "a &e9; b");
}

TEST_F(HostileLanguageFile, NothingOutsideTheFileIsRead) {
    EXPECT_EQ(
        Failure(ExternalEntity("/proc/self/cmdline") + "<Strings><String id='1'>&e9;</String></Strings>"),
        "");
    EXPECT_EQ(Resolved(1), "&e9;");
}

TEST_F(HostileLanguageFile, DepthIsRefusedWithItsPlace) {
    for (const std::size_t levels : {10'000U, 100'000U}) {
        EXPECT_EQ(Failure(Nested(levels, "")), ":1:2: the root element is not Strings");
        EXPECT_EQ(Failure("<Strings>" + Nested(levels, "") + "</Strings>"),
                  ":1:11: only String elements may be in Strings");
        EXPECT_EQ(Failure("<Strings><String id='1'>" + Nested(levels, "") + "</String></Strings>"),
                  ":1:26: a String element may contain only text");
    }
}

TEST_F(HostileLanguageFile, EncodingsAreToldByMarkAndDeclaration) {
    const std::string text = "<Strings><String id='1'>a text</String></Strings>";
    for (const std::string& encoded : {Utf16(text, false), Utf16(text, true), "\xEF\xBB\xBF" + text}) {
        CLanguageSupport::Clear();
        EXPECT_EQ(Failure(encoded), "");
        EXPECT_EQ(Resolved(1), "a text");
    }
    EXPECT_EQ(Failure("<?xml version='1.0' encoding='ISO-8859-1'?><Strings><String id='1'>L\xFC"
                      "fter</String></Strings>"),
              "");
    EXPECT_EQ(Resolved(1),
              "L\xC3\xBC"
              "fter");
}

TEST_F(HostileLanguageFile, SixtyFourMebibytesAreReadAndNoMore) {
    constexpr std::size_t LIMIT = 64U * 1024U * 1024U;
    std::string content = "<Strings><String id='1'>a text</String></Strings>";
    content.resize(LIMIT, ' ');
    EXPECT_EQ(Failure(content), "");
    EXPECT_EQ(Resolved(1), "a text");
    EXPECT_EQ(Failure(content + " "), ": larger than 64 mebibytes");
    EXPECT_EQ(FailureOf("/dev/zero"), ": larger than 64 mebibytes") << "endless";
}

TEST_F(HostileLanguageFile, ZerosAreRefusedWithTheirPlace) {
    EXPECT_EQ(Failure(std::string(1000, '\0')), ":1:1: the root element is not Strings");
}
