// SPDX-License-Identifier: Apache-2.0
// The schemas beside the readers: what is valid is read without a warning, and what is refused or warned of
// is not valid.

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/xmlschemas.h>
#include <pi/layout_reading.h>
#include <pi/types.h>
#include <unistd.h>
#include <velkx/language_support.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

const std::string PROJECT = PROJECT_FOLDER;

std::string Content(const std::filesystem::path& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t place = text.find(from);
    EXPECT_NE(place, std::string::npos) << from;
    return place == std::string::npos ? text : text.replace(place, from.size(), to);
}

class Schema {
public:
    explicit Schema(const char* name)
        : m_Parser(xmlSchemaNewParserCtxt((PROJECT + "/share/pi/" + name).c_str()), xmlSchemaFreeParserCtxt),
          m_Schema(xmlSchemaParse(m_Parser.get()), xmlSchemaFree) {
        EXPECT_NE(m_Schema, nullptr) << name;
    }

    /// "line: reason" of all that keeps a document from being valid.
    Texts Reasons(const std::string& text) const {
        const std::unique_ptr<xmlDoc, void (*)(xmlDocPtr)> document(
            xmlReadMemory(text.data(), static_cast<int>(text.size()), "", nullptr, XML_PARSE_NOERROR),
            xmlFreeDoc);
        if (document == nullptr) {
            return {"not XML"};
        }
        Texts reasons;
        const std::unique_ptr<xmlSchemaValidCtxt, void (*)(xmlSchemaValidCtxtPtr)> context(
            xmlSchemaNewValidCtxt(m_Schema.get()), xmlSchemaFreeValidCtxt);
        xmlSchemaSetValidStructuredErrors(
            context.get(),
            [](void* list, xmlErrorPtr error) {
                const std::string message = error->message;
                static_cast<Texts*>(list)->push_back(std::to_string(error->line) + ": " +
                                                     message.substr(0, message.size() - 1));
            },
            &reasons);
        const int result = xmlSchemaValidateDoc(context.get(), document.get());
        EXPECT_EQ(result == 0, reasons.empty()) << text;
        return reasons;
    }

private:
    std::unique_ptr<xmlSchemaParserCtxt, void (*)(xmlSchemaParserCtxtPtr)> m_Parser;
    std::unique_ptr<xmlSchema, void (*)(xmlSchemaPtr)> m_Schema;
};

// --- Configuration documents

const std::string DRIVE =
    R"(<Drive ObjectID="1" StartAddress="0" UsedSize="5" IsConfigurable="1" LogicalDrive="0" LogicalOwner="0"/>)";
const std::string ARRAY =
    R"(<ArrayConfiguration Size="5" Units="21025"><Containers><Container>)" + DRIVE +
    R"(</Container></Containers><LogicalDrives><LogicalDrive ObjectID="2"/></LogicalDrives></ArrayConfiguration>)";
const std::string LOGICAL_DRIVE =
    R"(<LogicalDriveConfiguration Size="5" Units="21006" SpanCount="1" SpanSize="1"><Containers/>)"
    R"(<GlobalHotSpares><Drive ObjectID="3"/></GlobalHotSpares></LogicalDriveConfiguration>)";

const Schema& Documents() {
    static const Schema schema("configuration-documents.xsd");
    return schema;
}

/// Whether the document is read without a finding.
bool IsReadAsWritten(const std::string& text) {
    PI::CArray array;
    PI::CLogicalDrive logicalDrive;
    std::vector<PI::CLayoutFinding> findings;
    PI::ReadLayout(text.data(), text.size(), array, logicalDrive, findings);
    return findings.empty();
}

TEST(DocumentSchema, AcceptsTheSamplesThatAreReadAsWritten) {
    int valid = 0;
    for (const auto& entry : std::filesystem::directory_iterator(PROJECT + "/examples/layouts")) {
        const bool isCareless = entry.path().filename() == "careless-array.xml";
        EXPECT_EQ(Documents().Reasons(Content(entry)).size(), isCareless ? 11U : 0U) << entry;
        EXPECT_EQ(IsReadAsWritten(Content(entry)), !isCareless) << entry;
        valid += isCareless ? 0 : 1;
    }
    EXPECT_GE(valid, 2);
}

TEST(DocumentSchema, RefusesWhatIsBroken) {
    struct Case {
        const std::string& m_Sound;
        std::string m_Part, m_Broken;
        const char* m_Reason;
    };
    const Case CASES[] = {
        {ARRAY, R"( Size="5")", "", "'Size' is required"},
        {ARRAY, R"( Units="21025")", "", "'Units' is required"},
        {ARRAY, "21025", " 21025", "'Units': [facet 'enumeration']"},
        {ARRAY, "<LogicalDrives>", "<LogicalDrives/><LogicalDrives>",
         "Element 'LogicalDrives': This element is not expected"},
        {ARRAY, "</ArrayConfiguration>", "<GlobalHotSpares/></ArrayConfiguration>",
         "'GlobalHotSpares': This element is not"},
        {ARRAY, "<Drive ", "<Disk ", "'Disk': This element is not expected"},
        {ARRAY, DRIVE, "", "'Container': Missing child element"},
        {ARRAY, "<Containers>", "<Containers>text", "'Containers': Character content"},
        {ARRAY, R"(UsedSize="5")", R"(UsedSize="5 ")", "'UsedSize': [facet 'pattern']"},
        {ARRAY, R"(UsedSize="5")", R"(UsedSize="+5")", "'UsedSize': [facet 'pattern']"},
        {ARRAY, R"(UsedSize="5")", R"(UsedSize="-1")", "'UsedSize': [facet 'pattern']"},
        {ARRAY, R"(UsedSize="5")", R"(UsedSize="0x5")", "'UsedSize': [facet 'pattern']"},
        {ARRAY, R"(UsedSize="5")", R"(UsedSize="")", "'UsedSize': [facet 'pattern']"},
        {ARRAY, R"(UsedSize="5")", R"(UsedSize="5" State="1")", "'State' is not allowed"},
        {ARRAY, R"(IsConfigurable="1")", R"(IsConfigurable="true")",
         "'IsConfigurable': [facet 'enumeration']"},
        {ARRAY, R"(LogicalDrive ObjectID="2")", "LogicalDrive", "'ObjectID' is required"},
        {LOGICAL_DRIVE, R"( SpanCount="1")", "", "'SpanCount' is required"},
        {LOGICAL_DRIVE, "<Containers/>", "", "'LogicalDriveConfiguration': Missing child element"},
        {LOGICAL_DRIVE, R"(<Drive ObjectID="3"/>)", R"(<LogicalDrive ObjectID="3"/>)",
         "'LogicalDrive': This element is not"},
        {LOGICAL_DRIVE, "<LogicalDriveConfiguration", "<Configuration", "not XML"},
    };
    EXPECT_TRUE(IsReadAsWritten(ARRAY) && IsReadAsWritten(LOGICAL_DRIVE));
    EXPECT_EQ(Documents().Reasons(ARRAY), Texts());
    EXPECT_EQ(Documents().Reasons(LOGICAL_DRIVE), Texts());
    for (const Case& row : CASES) {
        const std::string text = Replaced(row.m_Sound, row.m_Part, row.m_Broken);
        const Texts reasons = Documents().Reasons(text);
        ASSERT_EQ(reasons.size(), 1U) << text << testing::PrintToString(reasons);
        EXPECT_NE(reasons[0].find(row.m_Reason), std::string::npos) << text << reasons[0];
    }
}

TEST(DocumentSchema, KnowsItsTwoRootsAlone) {
    EXPECT_EQ(Documents().Reasons("<Configuration/>").size(), 1U);
    EXPECT_FALSE(IsReadAsWritten("<Configuration/>"));
}

TEST(DocumentSchema, NumbersAreThoseOf64Bits) {
    Texts numbers = {"0", "9", "10", "18446744073709551614", "18446744073709551615"};
    Texts others = {"18446744073709551616", "18446744073709551625", "99999999999999999999",
                    "100000000000000000000"};
    const std::uint64_t largest = UINT64_MAX;
    for (std::uint64_t step = 10; step <= 1'000'000'000'000'000'000; step *= 10) {
        numbers.push_back(std::to_string(largest - step));
        if (step > 10) {
            others.push_back("1" + std::to_string(largest - step).substr(1) + "0");
        }
    }
    for (const std::string& number : numbers) {
        const std::string text = Replaced(ARRAY, R"(Size="5")", "Size=\"" + number + "\"");
        EXPECT_EQ(Documents().Reasons(text), Texts());
        VELK::XML::xml_document document;
        document.load_string(text.c_str());
        EXPECT_EQ(std::to_string(PI::CArray(document).m_Size), number);
    }
    for (const std::string& number : others) {
        const std::string text = Replaced(ARRAY, R"(Size="5")", "Size=\"" + number + "\"");
        EXPECT_EQ(Documents().Reasons(text).size(), 1U) << number;
        EXPECT_FALSE(IsReadAsWritten(text)) << number;
    }
}

TEST(DocumentSchema, UnitsAreThoseOfTheLibrary) {
    using namespace PI::Units;
    for (const int unit : {BYTES, KILOBYTES, MEGABYTES, GIGABYTES, TERABYTES, PETABYTES, UNSPECIFIED}) {
        EXPECT_EQ(Documents().Reasons(Replaced(ARRAY, "21025", std::to_string(unit))), Texts()) << unit;
    }
    for (const int other : {0, 21001, 21004, 21007, 21021, 21023, 21024, 21028}) {
        EXPECT_EQ(Documents().Reasons(Replaced(ARRAY, "21025", std::to_string(other))).size(), 1U) << other;
    }
}

// --- Language files

TEST(StringsSchema, AcceptsTheFilesOfTheProject) {
    const Schema schema("strings.xsd");
    for (const char* file : {"/share/pi/strings.en.xml", "/examples/events/strings.de.xml"}) {
        EXPECT_EQ(schema.Reasons(Content(PROJECT + file)), Texts()) << file;
    }
}

TEST(StringsSchema, RefusesWhateverReadingRefuses) {
    const Schema schema("strings.xsd");
    const std::string sound =
        R"(<Strings language="de"><String id="10057">Text</String><String id="10058">%1</String></Strings>)";
    struct Case {
        const char *m_Part, *m_Other;
        bool m_IsValid, m_IsRead;
    };
    const Case CASES[] = {
        {R"( language="de")", "", true, true},
        {"Text", "A &amp; B &lt; <![CDATA[%1 > C]]>\n", true, true},
        {"10058", "0", true, true},
        {"10058", "4294967295", true, true},
        {"10058", "4294967296", false, false},
        {"10058", "5000000000", false, false},
        {"10058", "10057", false, false},
        {"10058", "010057", false, false},
        {"10058", "010058", false, true},
        {"10058", " 10058", false, false},
        {"10058", "10058 ", false, false},
        {"10058", "-1", false, false},
        {"10058", "+1", false, false},
        {"10058", "", false, false},
        {"10058", "REBUILD_FAILED", false, false},
        {R"( id="10057")", "", false, false},
        {"Text", "", false, true},
        {"Text", " \n", false, true},
        {"Text", "<b>Text</b>", false, false},
        {"Text", "Text<!-- comment -->", true, true},
        {"<String id", "text<String id", false, false},
        {"</Strings>", "<Text/></Strings>", false, false},
        {"</Strings>", "<!-- comment --></Strings>", true, true},
        {R"(id="10057")", R"(id="10057" lang="de")", false, true},
        {R"(id="10057")", R"(id="10057" placeholder1="drive" placeholder6="slot")", true, true},
        {R"(id="10057")", R"(id="10057" placeholder1="")", false, true},
        {R"(id="10057")", R"(id="10057" placeholder7="slot")", false, true},
        {R"(language="de")", R"(langauge="de")", false, true},
        {sound.c_str(), "<Texts/>", false, false},
    };
    const std::string path = testing::TempDir() + "strings_schema_" + std::to_string(getpid()) + ".xml";
    EXPECT_EQ(schema.Reasons(sound), Texts());
    for (const Case& row : CASES) {
        const std::string text = Replaced(sound, row.m_Part, row.m_Other);
        EXPECT_EQ(schema.Reasons(text).empty(), row.m_IsValid) << text;
        std::ofstream(path, std::ios::binary) << text;
        bool isRead = true;
        try {
            CLanguageSupport::LoadFile(path);
        } catch (const std::runtime_error&) {
            isRead = false;
        }
        EXPECT_EQ(isRead, row.m_IsRead) << text;
        CLanguageSupport::Clear();
    }
    std::filesystem::remove(path);
}

TEST(Schemas, ExplainEverythingThatCanBeWritten) {
    for (const char* name : {"configuration-documents.xsd", "strings.xsd"}) {
        std::istringstream lines(Content(PROJECT + "/share/pi/" + name));
        int explained = 0;
        for (std::string line; std::getline(lines, line);) {
            if (line.find("<xs:enumeration ") != line.npos || line.find("<xs:attribute ") != line.npos) {
                std::string next = line.find("xs:documentation") == line.npos ? "" : line;
                if (next.empty()) {
                    std::getline(lines, next);
                }
                EXPECT_NE(next.find("<xs:documentation>"), next.npos) << name << line;
                ++explained;
            }
        }
        EXPECT_GE(explained, 7) << name;
    }
}

}  // namespace
