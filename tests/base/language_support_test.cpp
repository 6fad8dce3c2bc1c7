// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <unistd.h>
#include <velkx/language_support.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <limits>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

std::string Resolved(unsigned int id) {
    std::string text = "before";
    CLanguageSupport::ResolveString(id, text);
    return text;
}

class LanguageSupport : public testing::Test {
protected:
    LanguageSupport() {
        CLanguageSupport::Clear();
        std::filesystem::create_directory(m_Folder);
    }
    ~LanguageSupport() override {
        CLanguageSupport::Clear();
        std::filesystem::remove_all(m_Folder);
    }

    std::string Write(const std::string& content) const {
        std::ofstream(m_Path, std::ios::binary) << content;
        return m_Path;
    }

    void Load(const std::string& content) const { CLanguageSupport::LoadFile(Write(content)); }

    /// What loading a file says, with "FILE" for its path; "" when it says nothing.
    static std::string Failure(const std::string& path) {
        try {
            CLanguageSupport::LoadFile(path);
        } catch (const std::runtime_error& error) {
            const std::string message = error.what();
            return message.substr(0, path.size()) == path ? "FILE" + message.substr(path.size()) : message;
        }
        return "";
    }

    std::string FailureOf(const std::string& content) const { return Failure(Write(content)); }

    const std::string m_Folder =
        (std::filesystem::temp_directory_path() / ("language_support_test." + std::to_string(getpid())))
            .string();
    const std::string m_Path = m_Folder + "/strings.xml";
};

// --- Texts that the process sets.

TEST_F(LanguageSupport, UnknownNumberEmptiesTheText) {
    EXPECT_EQ(Resolved(1), "");
    CLanguageSupport::SetString(1, "one");
    EXPECT_EQ(Resolved(0), "");
    EXPECT_EQ(Resolved(2), "");
}

TEST_F(LanguageSupport, SetTextsAreResolved) {
    CLanguageSupport::SetString(0, "zero");
    CLanguageSupport::SetString(10056, "Rebuild started on %1");
    CLanguageSupport::SetString(std::numeric_limits<unsigned int>::max(), "last");

    EXPECT_EQ(Resolved(0), "zero");
    EXPECT_EQ(Resolved(10056), "Rebuild started on %1");
    EXPECT_EQ(Resolved(4294967295u), "last");
}

TEST_F(LanguageSupport, LaterTextReplacesTheEarlier) {
    CLanguageSupport::SetString(1, "first");
    CLanguageSupport::SetString(1, "second");
    EXPECT_EQ(Resolved(1), "second");

    CLanguageSupport::SetString(1, "");
    EXPECT_EQ(Resolved(1), "");
}

TEST_F(LanguageSupport, TextsMayHoldAnyBytes) {
    const std::string bytes("a\0\xff\n%s", 6);
    CLanguageSupport::SetString(1, bytes);

    EXPECT_EQ(Resolved(1), bytes);
}

TEST_F(LanguageSupport, ClearForgetsAllTexts) {
    CLanguageSupport::SetString(1, "one");
    Load(R"(<Strings><String id="2">two</String></Strings>)");

    CLanguageSupport::Clear();

    EXPECT_EQ(Resolved(1), "");
    EXPECT_EQ(Resolved(2), "");
}

// --- Files.

TEST_F(LanguageSupport, FileAddsItsTexts) {
    Load(R"(<?xml version="1.0" encoding="UTF-8"?>
<!-- texts of the service -->
<Strings language="en">
    <String id="10056">Rebuild started on %1</String>
    <String id="0">zero</String>
    <String id="4294967295">last</String>
    <String id="007">seven</String>
    <String id="8"/>
</Strings>
)");

    EXPECT_EQ(Resolved(10056), "Rebuild started on %1");
    EXPECT_EQ(Resolved(0), "zero");
    EXPECT_EQ(Resolved(4294967295u), "last");
    EXPECT_EQ(Resolved(7), "seven");
    EXPECT_EQ(Resolved(8), "");
}

TEST_F(LanguageSupport, FileReplacesTextsOfItsNumbersOnly) {
    CLanguageSupport::SetString(1, "old one");
    CLanguageSupport::SetString(2, "old two");

    Load(
        R"(<Strings language="en"><String id="2">new two</String><String id="3">new three</String></Strings>)");

    EXPECT_EQ(Resolved(1), "old one");
    EXPECT_EQ(Resolved(2), "new two");
    EXPECT_EQ(Resolved(3), "new three");
}

TEST_F(LanguageSupport, TextOfAFileKeepsBlanksEntitiesAndCharacterData) {
    Load(
        "<Strings>"
        "<String id='1'>  both ends  </String>"
        "<String id='2'>a &lt; b &amp;&amp; c &gt; d &#x41;</String>"
        "<String id='3'><![CDATA[<raw> & text]]></String>"
        "<String id='4'>before <![CDATA[inside]]> after</String>"
        "<String id='5'>part<!-- note -->ed</String>"
        "<String id='6'>Gerät</String>"
        "</Strings>");

    EXPECT_EQ(Resolved(1), "  both ends  ");
    EXPECT_EQ(Resolved(2), "a < b && c > d A");
    EXPECT_EQ(Resolved(3), "<raw> & text");
    EXPECT_EQ(Resolved(4), "before inside after");
    EXPECT_EQ(Resolved(5), "parted");
    EXPECT_EQ(Resolved(6), "Gerät");
}

TEST_F(LanguageSupport, TextOfAFileKeepsPartsOfWhiteSpaceAlone) {
    Load(
        "\n<!-- texts -->\n<Strings>\r\n\t"
        "<String id='1'> </String>\n<!-- in between -->\n"
        "<String id='2'><![CDATA[one]]> <![CDATA[two]]></String> <?note?> "
        "<String id='3'><!-- before -->\t\r\n<!-- after --></String>"
        "<String id='4'>one<!-- note --> <!-- note -->two\n</String>"
        "<String id='5'>&#32;&#9;</String>"
        "<String id='6'><!-- nothing --></String>"
        "\n</Strings>\n<!-- end -->\n");

    EXPECT_EQ(Resolved(1), " ");
    EXPECT_EQ(Resolved(2), "one two");
    EXPECT_EQ(Resolved(3), "\t\n");
    EXPECT_EQ(Resolved(4), "one two\n");
    EXPECT_EQ(Resolved(5), " \t");
    EXPECT_EQ(Resolved(6), "");
}

TEST_F(LanguageSupport, FileMayBeginWithAByteOrderMark) {
    Load("\xEF\xBB\xBF<Strings><String id='1'>one</String></Strings>");

    EXPECT_EQ(Resolved(1), "one");
}

TEST_F(LanguageSupport, FileWithoutTextsChangesNothing) {
    CLanguageSupport::SetString(1, "one");

    Load("<Strings/>");
    Load("<Strings language=\"en\"></Strings>");

    EXPECT_EQ(Resolved(1), "one");
}

TEST_F(LanguageSupport, LargeFileIsLoadedWhole) {
    std::string content = "<Strings>\n";
    for (int id = 0; id < 10000; ++id) {
        const std::string number = std::to_string(id);
        content += "<String id=\"" + number + "\">text " + number + "</String>\n";
    }
    Load(content + "</Strings>");

    EXPECT_EQ(Resolved(0), "text 0");
    EXPECT_EQ(Resolved(9999), "text 9999");
    EXPECT_EQ(Resolved(10000), "");
}

// --- Files that are broken.

TEST_F(LanguageSupport, UnreadableFileIsNamedWithItsReason) {
    EXPECT_EQ(Failure(m_Folder + "/absent.xml"), "FILE: cannot be read: No such file or directory");
    EXPECT_EQ(Failure(""), "FILE: cannot be read: No such file or directory");
    EXPECT_EQ(Failure(Write("") + "/strings.xml"), "FILE: cannot be read: Not a directory");
    EXPECT_EQ(Failure(m_Folder), "FILE: cannot be read: Is a directory");
}

TEST_F(LanguageSupport, ReadingErrorIsNamedWithItsReason) {
    // Opens well, and has nothing at its beginning that could be read.
    EXPECT_EQ(Failure("/proc/self/mem"), "FILE: cannot be read: Input/output error");
}

TEST_F(LanguageSupport, ForbiddenFileIsNamedWithItsReason) {
    Write("<Strings/>");
    std::filesystem::permissions(m_Path, std::filesystem::perms::none);
    const uid_t user = geteuid();
    if (user == 0) {
        ASSERT_EQ(seteuid(65534), 0) << "nothing is forbidden to root";
    }
    const std::string failure = Failure(m_Path);
    ASSERT_EQ(seteuid(user), 0);

    EXPECT_EQ(failure, "FILE: cannot be read: Permission denied");
}

struct BrokenFile {
    const char* m_Name;
    const char* m_Content;
    const char* m_Failure;
};

void PrintTo(const BrokenFile& file, std::ostream* stream) {
    *stream << file.m_Name;
}

class BrokenLanguageFile : public LanguageSupport, public testing::WithParamInterface<BrokenFile> {};

// clang-format off
INSTANTIATE_TEST_SUITE_P(Files, BrokenLanguageFile, testing::Values(
    BrokenFile{"Empty", "", "FILE:1:1: the root element is not Strings"},
    BrokenFile{"Blank", "\n  \n", "FILE:1:1: the root element is not Strings"},
    BrokenFile{"OnlyComment", "<!-- nothing -->", "FILE:1:1: the root element is not Strings"},
    BrokenFile{"OnlyText", "Rebuild started", "FILE:1:1: the root element is not Strings"},
    BrokenFile{"CutOff", "<Strings>\n<String id=\"1\">one</String>\n<String id=\"2\">tw", "FILE:3:17: Start-end tags mismatch"},
    BrokenFile{"UnclosedRoot", "<Strings>\n<String id=\"1\">one</String>\n", "FILE:2:28: Start-end tags mismatch"},
    BrokenFile{"WrongEndTag", "<Strings>\n  <String id=\"1\">one</Strings>\n</Strings>\n", "FILE:2:23: Start-end tags mismatch"},
    BrokenFile{"UnquotedAttribute", "<Strings>\n\n <String id=1>one</String></Strings>", "FILE:3:13: Error parsing element attribute"},
    BrokenFile{"WrongRoot", "<Texts><String id=\"1\">one</String></Texts>", "FILE:1:2: the root element is not Strings"},
    BrokenFile{"RootInOtherCase", "\n<strings><String id=\"1\">one</String></strings>", "FILE:2:2: the root element is not Strings"},
    BrokenFile{"SecondRoot", "<Strings><String id=\"1\">one</String></Strings>\n<Strings/>", "FILE:2:2: nothing may follow the root element"},
    BrokenFile{"TextBehindRoot", "<Strings><String id=\"1\">one</String></Strings>\nrest", "FILE:1:47: nothing may follow the root element"},
    BrokenFile{"CutOffBehindRoot", "<Strings><String id=\"1\">one</String></Strings>\n<", "FILE:2:1: Could not determine tag type"},
    BrokenFile{"TextBeforeRoot", "rest <Strings><String id=\"1\">one</String></Strings>", "FILE:1:1: the root element is not Strings"},
    BrokenFile{"NoXml", "[Strings]\n1=one\n", "FILE:1:1: the root element is not Strings"},
    BrokenFile{"ForeignElement", "<Strings>\n<String id=\"1\">one</String>\n  <Text id=\"2\">two</Text>\n</Strings>", "FILE:3:4: only String elements may be in Strings"},
    BrokenFile{"TextBetween", "<Strings>\n<String id=\"1\">one</String>two</Strings>", "FILE:2:28: only String elements may be in Strings"},
    BrokenFile{"MissingId", "<Strings><String id=\"1\">one</String>\n<String>two</String></Strings>", "FILE:2:2: a String element needs a number as its id"},
    BrokenFile{"EmptyId", "<Strings><String id=\"1\">one</String><String id=\"\">two</String></Strings>", "FILE:1:38: a String element needs a number as its id"},
    BrokenFile{"IdInOtherCase", "<Strings><String id=\"1\">one</String><String ID=\"2\">two</String></Strings>", "FILE:1:38: a String element needs a number as its id"},
    BrokenFile{"NegativeId", "<Strings><String id=\"1\">one</String><String id=\"-1\">two</String></Strings>", "FILE:1:38: a String element needs a number as its id"},
    BrokenFile{"SignedId", "<Strings><String id=\"1\">one</String><String id=\"+2\">two</String></Strings>", "FILE:1:38: a String element needs a number as its id"},
    BrokenFile{"OverflowingId", "<Strings><String id=\"1\">one</String><String id=\"4294967296\">two</String></Strings>", "FILE:1:38: a String element needs a number as its id"},
    BrokenFile{"VeryLongId", "<Strings><String id=\"1\">one</String><String id=\"99999999999999999999999\">two</String></Strings>", "FILE:1:38: a String element needs a number as its id"},
    BrokenFile{"BlankLedId", "<Strings><String id=\"1\">one</String><String id=\" 2\">two</String></Strings>", "FILE:1:38: a String element needs a number as its id"},
    BrokenFile{"BlankTrailedId", "<Strings><String id=\"1\">one</String><String id=\"2 \">two</String></Strings>", "FILE:1:38: a String element needs a number as its id"},
    BrokenFile{"HexadecimalId", "<Strings><String id=\"1\">one</String><String id=\"0x2\">two</String></Strings>", "FILE:1:38: a String element needs a number as its id"},
    BrokenFile{"FractionalId", "<Strings><String id=\"1\">one</String><String id=\"2.0\">two</String></Strings>", "FILE:1:38: a String element needs a number as its id"},
    BrokenFile{"WordAsId", "<Strings><String id=\"1\">one</String><String id=\"two\">two</String></Strings>", "FILE:1:38: a String element needs a number as its id"},
    BrokenFile{"DuplicateId", "<Strings>\n<String id=\"1\">one</String>\n<String id=\"1\">again</String>\n</Strings>", "FILE:3:2: the id 1 occurs twice"},
    BrokenFile{"DuplicateNumber", "<Strings>\n<String id=\"1\">one</String>\n<String id=\"01\">again</String>\n</Strings>", "FILE:3:2: the id 01 occurs twice"},
    BrokenFile{"NestedElement", "<Strings>\n<String id=\"1\">one</String>\n<String id=\"2\">a <b>bold</b> word</String>\n</Strings>", "FILE:3:19: a String element may contain only text"},
    BrokenFile{"NestedString", "<Strings><String id=\"1\"><String id=\"2\">two</String></String></Strings>", "FILE:1:26: a String element may contain only text"}),
    [](const auto& instance) { return instance.param.m_Name; });
// clang-format on

TEST_P(BrokenLanguageFile, IsRefusedWithItsPlaceAndChangesNothing) {
    CLanguageSupport::SetString(1, "kept");

    EXPECT_EQ(FailureOf(GetParam().m_Content), GetParam().m_Failure);

    EXPECT_EQ(Resolved(1), "kept");
    EXPECT_EQ(Resolved(2), "");
}

// --- Threads.

TEST_F(LanguageSupport, ReadersSeeOldOrNewTextsWhileOthersWrite) {
    const std::string path = Write("<Strings><String id='1'>loaded loaded loaded loaded</String></Strings>");
    const std::string set = "set set set set set set set set";
    CLanguageSupport::SetString(1, set);
    std::atomic<bool> stop = false;
    std::atomic<int> wrong = 0;

    std::vector<std::thread> readers;
    for (int reader = 0; reader < 4; ++reader) {
        readers.emplace_back([&] {
            std::string text;
            while (!stop) {
                CLanguageSupport::ResolveString(1, text);
                wrong += text != set && text != "loaded loaded loaded loaded";
                CLanguageSupport::ResolveString(2, text);
                wrong += !text.empty();
                std::this_thread::yield();  // readers without a pause keep writers out for long
            }
        });
    }
    for (int round = 0; round < 200; ++round) {
        CLanguageSupport::LoadFile(path);
        CLanguageSupport::SetString(static_cast<unsigned int>(3 + round), "more");
        CLanguageSupport::SetString(1, set);
    }
    stop = true;
    for (std::thread& reader : readers) {
        reader.join();
    }

    EXPECT_EQ(wrong, 0);
}

}  // namespace
