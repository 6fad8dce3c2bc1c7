// SPDX-License-Identifier: Apache-2.0
// Documents made to harm their reader: expanding, reaching outside, nested deeply, in other encodings.

#include <gtest/gtest.h>
#include <pi/layout.h>
#include <sys/resource.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "model/property_samples.h"
#include "model/xml_samples.h"
#include "support/hostile_xml.h"

using namespace PI;
using namespace PI::Test;
using VELK::XML::xml_document;
using VELK::XML::xml_node;

namespace {

/// A configuration of either kind with two drives, an entity in place of a number, and anything among the
/// lists.
std::string Configuration(const std::string& prolog, const std::string& root, const std::string& size,
                          const std::string& content) {
    return prolog + "<" + root + " Size='" + size +
           "' Units='21025'><Containers><Container><Drive ObjectID='7'/>" + content +
           "</Container></Containers>" + content + "</" + root + ">";
}

constexpr char ARRAY[] = "ArrayConfiguration";
constexpr char LOGICAL_DRIVE[] = "LogicalDriveConfiguration";

struct Figures {
    std::uint64_t m_Size;
    _UNITS m_Units;
    std::size_t m_Drives;
};

bool operator==(const Figures& left, const Figures& right) {
    return left.m_Size == right.m_Size && left.m_Units == right.m_Units && left.m_Drives == right.m_Drives;
}

template <class Record>
Figures Read(xml_document& document) {
    const Record record(document);
    return {record.m_Size, record.m_Units,
            record.m_Containers.empty() ? 0 : record.m_Containers[0].m_Drives.size()};
}

/// What both kinds of configuration read from a document text of their kind.
void ExpectFigures(const std::string& prolog, const std::string& size, const std::string& content,
                   const Figures& expected, std::string (*encode)(const std::string&) = nullptr) {
    for (const char* root : {ARRAY, LOGICAL_DRIVE}) {
        std::string text = Configuration(prolog, root, size, content);
        if (encode != nullptr) {
            text = encode(text);
        }
        xml_document document;
        ASSERT_TRUE(document.load_buffer(text.data(), text.size())) << text.substr(0, 200);
        EXPECT_TRUE((root == ARRAY ? Read<CArray>(document) : Read<CLogicalDrive>(document)) == expected)
            << text.substr(0, 200);
    }
}

/// The largest size that the process has had, in bytes.
std::size_t PeakMemory() {
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
}

/// How many levels of elements, each the first element of the one around it.
std::size_t Levels(const xml_document& document) {
    std::size_t levels = 0;
    for (xml_node node = document.document_element(); node; node = node.child("Level")) {
        ++levels;
    }
    return levels;
}

class HostileProperty : public testing::Test {
protected:
    void Store(const std::string& text) {
        xml_document document;
        ASSERT_TRUE(document.load_buffer(text.data(), text.size(), VELK::XML::parse_full));
        m_Property.SetValue(document);
    }

    CProperty m_Property;
};

/// A file that a document may try to reach.
class SecretFile {
public:
    SecretFile() { std::ofstream(m_Path) << "31337"; }
    ~SecretFile() { std::filesystem::remove(m_Path); }
    SecretFile(const SecretFile&) = delete;
    SecretFile& operator=(const SecretFile&) = delete;

    const std::string m_Path = testing::TempDir() + "hostile_documents_test_secret";
};

}  // namespace

TEST(HostileConfiguration, EntitiesAreNotExpandedAndNoNumbers) {
    ExpectFigures(EntityBomb(), "&e9;", "<D ObjectID='&e9;'/>", {0, Units::BYTES, 2});
    ExpectFigures(EntityBomb(), "5", "", {5, Units::BYTES, 1});
}

TEST(HostileConfiguration, NothingOutsideTheDocumentIsRead) {
    const SecretFile secret;
    ExpectFigures(ExternalEntity(secret.m_Path), "&e9;", "", {0, Units::BYTES, 1});
}

TEST(HostileConfiguration, DepthDoesNotMatter) {
    for (const std::size_t levels : {10'000U, 100'000U}) {
        ExpectFigures("", "5", Nested(levels, "<Deepest/>"), {5, Units::BYTES, 2});
        xml_document document;
        ASSERT_TRUE(document.load_string(Nested(levels, "").c_str()));
        EXPECT_TRUE((Read<CArray>(document) == Figures{0, static_cast<_UNITS>(0), 0}));
    }
}

TEST(HostileConfiguration, EncodingsAreToldByMarkAndDeclaration) {
    const Figures expected = {5, Units::BYTES, 1};
    ExpectFigures("", "5", "", expected, [](const std::string& text) { return Utf16(text, false); });
    ExpectFigures("", "5", "", expected, [](const std::string& text) { return Utf16(text, true); });
    ExpectFigures("", "5", "", expected, [](const std::string& text) { return "\xEF\xBB\xBF" + text; });
    ExpectFigures("<?xml version='1.0' encoding='ISO-8859-1'?><!-- \xE4 -->", "5", "", expected);
    ExpectFigures("<?xml version='1.0' encoding='UTF-16'?>", "5", "", expected);
    ExpectFigures("<?xml version='1.0' encoding='no such encoding'?>", "5", "", expected);
}

TEST_F(HostileProperty, ACopyDoesNotExpandEntities) {
    Store(EntityBomb() + "<A a='&e9;'>&e9;</A>");
    const CProperty copy(m_Property);
    EXPECT_EQ(TextOf(copy.m_Data.m_XML.m_Document), "<A a=\"&amp;e9;\">&amp;e9;</A>");
    EXPECT_TRUE(copy == m_Property);
}

TEST_F(HostileProperty, ACopyReadsNothingOutsideTheDocument) {
    const SecretFile secret;
    Store(ExternalEntity(secret.m_Path) + "<A>&e9;</A>");
    EXPECT_EQ(TextOf(m_Property.m_Data.m_XML.m_Document), "<A>&amp;e9;</A>");
}

TEST_F(HostileProperty, ACopyTakesTheCharactersWhateverTheEncodingWas) {
    Store(Utf16("<A a='x'>text</A>", false));
    EXPECT_EQ(TextOf(CProperty(m_Property).m_Data.m_XML.m_Document), "<A a=\"x\">text</A>");
    Store("<?xml version='1.0' encoding='ISO-8859-1'?><A>\xE4</A>");
    EXPECT_EQ(TextOf(CProperty(m_Property).m_Data.m_XML.m_Document), "<A>\xC3\xA4</A>");
    Store("<A>\xE4\xFF</A>");
    EXPECT_EQ(TextOf(CProperty(m_Property).m_Data.m_XML.m_Document), "<A>\xE4\xFF</A>") << "no UTF-8 at all";
}

// From the 65th level on the text that a copy goes through is not indented.
TEST_F(HostileProperty, ACopyIsTheSameWhereverIndentationEnds) {
    for (const std::size_t levels : {63U, 64U, 65U, 66U}) {
        xml_document document;
        ASSERT_TRUE(document.load_string(
            Nested(levels, "<a/> text <!--c--><b>t<![CDATA[ d ]]></b><![CDATA[]]><?p i?> <c/> end ").c_str(),
            PARSE_EVERYTHING));
        m_Property.SetValue(document);
        xml_document expected;
        CopyByText(document, expected);
        EXPECT_EQ(TreeOf(m_Property.m_Data.m_XML.m_Document), TreeOf(expected)) << levels;
        EXPECT_TRUE(CProperty(m_Property) == m_Property) << levels;
    }
}

// White space that the document holds and indentation are one in the text.
TEST_F(HostileProperty, ComparesTheIndentedTextOfUpToAThousandLevels) {
    for (const std::size_t levels : {2U, 64U, 65U, 990U}) {
        CProperty indented;
        CProperty spaced;
        CProperty unlike;
        indented.m_Type = spaced.m_Type = unlike.m_Type = PropertyType::XML;
        xml_document& document = indented.m_Data.m_XML.m_Document;
        ASSERT_TRUE(document.load_string(Nested(levels, "<a/><b/>").c_str()));
        std::ostringstream text;
        document.save(text, "\t", VELK::XML::format_indent);
        ASSERT_TRUE(spaced.m_Data.m_XML.m_Document.load_string(text.str().c_str(), PARSE_EVERYTHING));
        std::string oneTabLess = text.str();
        oneTabLess.erase(oneTabLess.find("\t<a"), 1);
        ASSERT_TRUE(unlike.m_Data.m_XML.m_Document.load_string(oneTabLess.c_str(), PARSE_EVERYTHING));

        EXPECT_TRUE(indented == spaced) << levels;
        EXPECT_FALSE(indented == unlike) << levels;
        EXPECT_FALSE(spaced == unlike) << levels;
    }
}

TEST_F(HostileProperty, CopiesAndComparesADeepDocumentInMemoryOfItsSize) {
    for (const std::size_t levels : {10'000U, 100'000U}) {
        Store(Nested(levels, "<Deepest/>"));
        const std::size_t before = PeakMemory();
        const CProperty copy(m_Property);
        EXPECT_EQ(Levels(copy.m_Data.m_XML.m_Document), levels);
        EXPECT_TRUE(copy == m_Property);
        CProperty other(m_Property);
        other.m_Data.m_XML.m_Document.document_element().append_child("More");
        EXPECT_FALSE(other == m_Property);
        EXPECT_LT(PeakMemory() - before, 64U * 1024U * 1024U);
    }
}
