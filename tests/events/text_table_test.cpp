// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/text_table.h>
#include <velkx/language_support.h>

#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

#include "support/language_file.h"

namespace {

using PI::CTextTable;
using PI::Test::LanguageFile;

static_assert(std::is_nothrow_move_constructible_v<CTextTable>);
static_assert(std::is_nothrow_copy_assignable_v<CTextTable>);

CTextTable Table(const std::string& content) {
    return CTextTable::LoadFile(LanguageFile("<Strings>" + content + "</Strings>").m_Path);
}

std::string Text(const CTextTable& table, std::uint32_t id) {
    const std::string* const text = table.Find(id);
    return text == nullptr ? "none" : *text;
}

/// What loading a file says, with "FILE" for its path.
template <class Load>
std::string Failure(const std::string& path, Load load) {
    try {
        load(path);
    } catch (const std::runtime_error& error) {
        const std::string message = error.what();
        return message.substr(0, path.size()) == path ? "FILE" + message.substr(path.size()) : message;
    }
    return "";
}

TEST(TextTable, IsEmptyAtFirst) {
    EXPECT_EQ(CTextTable().Find(0), nullptr);
    EXPECT_EQ(CTextTable().Find(10056), nullptr);
}

TEST(TextTable, HoldsTheTextsOfAFile) {
    const CTextTable table = Table(
        "<String id='0'>zero</String>"
        "<String id='10056'>  a &lt; <![CDATA[<raw>]]><!-- note --> Gerät\n</String>"
        "<String id='4294967295'>last</String>");
    EXPECT_EQ(Text(table, 0), "zero");
    EXPECT_EQ(Text(table, 10056), "  a < <raw> Gerät\n");
    EXPECT_EQ(Text(table, 4294967295), "last");
    EXPECT_EQ(Text(table, 1), "none");
    EXPECT_EQ(Text(table, 4294967294), "none");
}

TEST(TextTable, AnEmptyTextIsNone) {
    const CTextTable table =
        Table("<String id='1'/><String id='2'></String><String id='3'><![CDATA[ ]]></String>");
    EXPECT_EQ(table.Find(1), nullptr);
    EXPECT_EQ(table.Find(2), nullptr);
    EXPECT_EQ(Text(table, 3), " ");
}

TEST(TextTable, RefusesAFileInTheWordsOfTheLanguageSupport) {
    for (const char* content :
         {"", "text", "<Texts/>", "<Strings>", "<Strings>text</Strings>", "<Strings/><Strings/>",
          "<Strings>\n <Text/></Strings>", "<Strings><String>one</String></Strings>",
          "<Strings><String id='-1'>one</String></Strings>",
          "<Strings><String id='4294967296'>one</String></Strings>",
          "<Strings><String id='1'>one</String>\n<String id='01'>two</String></Strings>",
          "<Strings><String id='1'><b>one</b></String></Strings>"}) {
        const LanguageFile file(content);
        const std::string failure = Failure(file.m_Path, CTextTable::LoadFile);
        EXPECT_EQ(failure.substr(0, 5), "FILE:") << content;
        EXPECT_EQ(failure, Failure(file.m_Path, CLanguageSupport::LoadFile)) << content;
    }
    EXPECT_EQ(Failure("/nonexistent/strings.xml", CTextTable::LoadFile),
              "FILE: cannot be read: No such file or directory");
}

TEST(TextTable, IsReadFromATextAsFromAFile) {
    const CTextTable table = PI::ReadTextTable("<Strings><String id='1'>one</String></Strings>", "name");
    EXPECT_EQ(Text(table, 1), "one");
    const auto load = [](const std::string& name) {
        PI::ReadTextTable("<Strings>\n<Text/></Strings>", name);
    };
    EXPECT_EQ(Failure("built-in", load), "FILE:2:2: only String elements may be in Strings");
}

TEST(TextTable, IsIndependentOfTheTextsOfTheProcess) {
    CLanguageSupport::SetString(1, "of the process");
    const CTextTable table = Table("<String id='2'>of the table</String>");
    std::string text;
    CLanguageSupport::ResolveString(2, text);
    EXPECT_EQ(text, "");
    EXPECT_EQ(table.Find(1), nullptr);
    CLanguageSupport::Clear();
}

TEST(TextTable, FallsBackTextByText) {
    const CTextTable german = Table("<String id='1'>eins</String><String id='2'/>");
    const CTextTable english = Table(
        "<String id='1'>one</String><String id='2'>two</String>"
        "<String id='3'>three</String>");
    const CTextTable last = Table("<String id='3'>III</String><String id='4'>IV</String>");

    const CTextTable all = german.WithFallback(english).WithFallback(last);

    EXPECT_EQ(Text(all, 1), "eins");
    EXPECT_EQ(Text(all, 2), "two") << "an empty text is none";
    EXPECT_EQ(Text(all, 3), "three");
    EXPECT_EQ(Text(all, 4), "IV");
    EXPECT_EQ(Text(all, 5), "none");
    EXPECT_EQ(Text(german, 3), "none") << "the table itself stays as it is";
    EXPECT_EQ(Text(english, 1), "one");
    const CTextTable same = german.WithFallback(english.WithFallback(last));
    for (std::uint32_t id = 0; id < 6; ++id) {
        EXPECT_EQ(Text(same, id), Text(all, id)) << "however they are joined";
    }
}

TEST(TextTable, FallsBackToAndFromAnEmptyOne) {
    const CTextTable table = Table("<String id='1'>one</String>");
    EXPECT_EQ(Text(table.WithFallback(CTextTable()), 1), "one");
    EXPECT_EQ(Text(CTextTable().WithFallback(table), 1), "one");
    EXPECT_EQ(Text(CTextTable().WithFallback(CTextTable()), 1), "none");
    EXPECT_EQ(Text(table.WithFallback(table), 1), "one");
}

TEST(TextTable, ATextLivesAsLongAsOneOfTheCopies) {
    const std::string* text = nullptr;
    CTextTable copy;
    {
        const CTextTable table = Table("<String id='1'>a text that needs memory of its own</String>");
        text = table.Find(1);
        copy = table;
    }
    EXPECT_EQ(copy.Find(1), text);
    EXPECT_EQ(*text, "a text that needs memory of its own");
    const CTextTable other(copy);
    copy = Table("<String id='1'>another</String>");
    EXPECT_EQ(Text(copy, 1), "another");
    EXPECT_EQ(other.Find(1), text);
}

TEST(TextTable, IsEmptyAfterItWasMoved) {
    CTextTable table = Table("<String id='1'>one</String>");
    const CTextTable moved = std::move(table);
    EXPECT_EQ(Text(moved, 1), "one");
    EXPECT_EQ(table.Find(1), nullptr);  // NOLINT(bugprone-use-after-move): what is tested
    EXPECT_EQ(Text(table.WithFallback(moved), 1), "one");
}

}  // namespace
