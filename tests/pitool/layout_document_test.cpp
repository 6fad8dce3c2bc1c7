// SPDX-License-Identifier: Apache-2.0

#include "layout_document.h"

#include <gtest/gtest.h>

using namespace pitool;

namespace {

struct Reading {
    bool m_Done;
    LayoutDocument m_Document;
    PlacedMessage m_Problem;
};

Reading Read(const std::string& text) {
    Reading reading;
    reading.m_Done = ReadLayout(text, reading.m_Document, reading.m_Problem);
    return reading;
}

/// "line:column: message" of the document's refusal.
std::string Refusal(const std::string& text) {
    const Reading reading = Read(text);
    EXPECT_FALSE(reading.m_Done) << text;
    return PlaceText("", reading.m_Problem.m_Place).substr(1) + ": " + reading.m_Problem.m_Text;
}

std::vector<std::string> Warnings(const std::string& text) {
    const Reading reading = Read(text);
    EXPECT_TRUE(reading.m_Done) << reading.m_Problem.m_Text;
    std::vector<std::string> warnings;
    for (const PlacedMessage& warning : reading.m_Document.m_Warnings.m_Kept) {
        warnings.push_back(PlaceText("", warning.m_Place).substr(1) + ": " + warning.m_Text);
    }
    return warnings;
}

using Texts = std::vector<std::string>;

std::string ArrayWith(const std::string& content) {
    return "<ArrayConfiguration Size='1' Units='21025'>" + content + "</ArrayConfiguration>";
}

std::string DriveWith(const std::string& attributes) {
    return ArrayWith("<Containers><Container><Drive " + attributes + "/></Container></Containers>");
}

std::string Nested(std::size_t levels) {
    std::string text;
    for (std::size_t i = 1; i < levels; ++i) {
        text += "<a>";
    }
    for (std::size_t i = 1; i < levels; ++i) {
        text += "</a>";
    }
    return ArrayWith(text);
}

}  // namespace

TEST(ReadLayout, TheRootTellsTheKind) {
    const Reading array = Read(ArrayWith(""));
    ASSERT_TRUE(array.m_Done);
    EXPECT_EQ(std::get<PI::CArray>(array.m_Document.m_Layout).m_Size, 1U);
    const Reading drive =
        Read("<LogicalDriveConfiguration Size='2' Units='21022' SpanCount='3' SpanSize='4'/>");
    ASSERT_TRUE(drive.m_Done);
    EXPECT_EQ(std::get<PI::CLogicalDrive>(drive.m_Document.m_Layout).m_SpanSize, 4U);
    EXPECT_TRUE(drive.m_Document.m_Warnings.m_Kept.empty());
}

TEST(ReadLayout, WhatIsNotWellFormedIsRefusedWithItsPlace) {
    EXPECT_EQ(Refusal(""), "1:1: not well-formed XML: no element found");
    EXPECT_EQ(Refusal("no XML"), "1:1: not well-formed XML: syntax error");
    EXPECT_EQ(Refusal("<ArrayConfiguration>\n  <Containers>\n </ArrayConfiguration>"),
              "3:4: not well-formed XML: mismatched tag");
    EXPECT_EQ(Refusal("<ArrayConfiguration>\n"), "2:1: not well-formed XML: no element found");
    EXPECT_EQ(Refusal("<ArrayConfiguration Size='1' Size='2'/>"),
              "1:30: not well-formed XML: duplicate attribute");
    EXPECT_EQ(Refusal("<ArrayConfiguration/>\n<ArrayConfiguration/>"),
              "2:1: not well-formed XML: junk after document element");
    EXPECT_EQ(Refusal("<ArrayConfiguration/>\n text"),
              "2:2: not well-formed XML: junk after document element");
    EXPECT_EQ(Refusal(std::string("<ArrayConfiguration/>\n\0", 23)),
              "2:1: not well-formed XML: a zero byte; UTF-8 is expected");
    EXPECT_EQ(Refusal("<ArrayConfiguration>\xFF</ArrayConfiguration>"),
              "1:21: not well-formed XML: not well-formed (invalid token)");
}

TEST(ReadLayout, AnotherRootIsRefusedWithItsPlace) {
    EXPECT_EQ(Refusal("<!-- \xC3\xA4 -->\n  <Configuration/>"),
              "2:3: the root element is \"Configuration\", neither ArrayConfiguration nor "
              "LogicalDriveConfiguration");
    EXPECT_EQ(Refusal("<!-- \xC3\xA4 --> <arrayConfiguration/>"),
              "1:12: the root element is \"arrayConfiguration\", neither ArrayConfiguration nor "
              "LogicalDriveConfiguration");
}

TEST(ReadLayout, AByteOrderMarkIsNoCharacter) {
    EXPECT_TRUE(Read("\xEF\xBB\xBF" + ArrayWith("")).m_Done);
    EXPECT_EQ(Refusal("\xEF\xBB\xBF<a></b>"), "1:6: not well-formed XML: mismatched tag");
    EXPECT_EQ(Warnings("\xEF\xBB\xBF<ArrayConfiguration Size='1'/>"),
              (Texts{"1:1: ArrayConfiguration: Units is missing, taken as 0"}));
}

TEST(ReadLayout, NestingIsLimited) {
    EXPECT_TRUE(Read(Nested(MAX_ELEMENT_NESTING)).m_Done);
    EXPECT_EQ(Refusal(Nested(MAX_ELEMENT_NESTING + 1)), "1:233: nested deeper than 64 levels");
}

TEST(ReadLayout, SizeIsLimited) {
    std::string text = ArrayWith("");
    text.append(MAX_LAYOUT_SIZE - text.size(), '\n');
    EXPECT_TRUE(Read(text).m_Done);
    EXPECT_EQ(Read(text + "\n").m_Problem.m_Text, "larger than 4 mebibytes");
}

TEST(ReadLayout, AnExpandingDocumentIsRefused) {
    std::string text = "<!DOCTYPE a [<!ENTITY a0 'aaaaaaaaaaaaaaaaaaaa'>";
    for (int i = 1; i < 12; ++i) {
        text += "<!ENTITY a" + std::to_string(i) + " '";
        for (int copy = 0; copy < 10; ++copy) {
            text += "&a" + std::to_string(i - 1) + ";";
        }
        text += "'>";
    }
    EXPECT_FALSE(Read(text + "]><ArrayConfiguration>&a11;</ArrayConfiguration>").m_Done);
}

TEST(LayoutWarnings, ACompleteDocumentHasNone) {
    EXPECT_EQ(Warnings(DriveWith("ObjectID='1' StartAddress='0' UsedSize='1' IsConfigurable='0' "
                                 "LogicalDrive='0' LogicalOwner='00'")),
              Texts{});
}

TEST(LayoutWarnings, AttributesThatFellBackAreNamedWithWhatIsTaken) {
    EXPECT_EQ(Warnings("<ArrayConfiguration/>"),
              (Texts{"1:1: ArrayConfiguration: Size is missing, taken as 0; Units is missing, taken as 0"}));
    EXPECT_EQ(Warnings("<LogicalDriveConfiguration Size='1 ' Units='' SpanCount='x' SpanSize='1K'/>"),
              (Texts{"1:1: LogicalDriveConfiguration: Size \"1 \" is no number, taken as 0; Units is empty, "
                     "taken as 0; SpanCount \"x\" is no number, taken as 0; SpanSize \"1K\" is no number, "
                     "taken as 0"}));
    EXPECT_EQ(Warnings(DriveWith("ObjectID='1' StartAddress='18446744073709551616' UsedSize='1.5' "
                                 "IsConfigurable='2' LogicalDrive='- 1'")),
              (Texts{"1:67: Drive: StartAddress \"18446744073709551616\" is no number, taken as 0; UsedSize "
                     "\"1.5\" is no number, taken as 0; IsConfigurable \"2\" is no number, taken as 1; "
                     "LogicalDrive \"- 1\" is no number, taken as 0; LogicalOwner is missing, taken as 0"}));
}

TEST(LayoutWarnings, NumbersThatAreReadAreNotNamed) {
    for (const char* zero : {"0", " 0", "\t000", "-0", "+0"}) {
        EXPECT_EQ(Warnings("<ArrayConfiguration Units='21025' Size='" + std::string(zero) + "'/>"), Texts{})
            << zero;
    }
    for (const char* flag : {"0", "1", " 1", "+1", "01"}) {
        EXPECT_EQ(Warnings(DriveWith("ObjectID='1' StartAddress='0' UsedSize='1' LogicalDrive='0' "
                                     "LogicalOwner='0' IsConfigurable='" +
                                     std::string(flag) + "'")),
                  Texts{})
            << flag;
    }
}

TEST(LayoutWarnings, ANegativeNumberIsNamedWithWhatItWrapsTo) {
    EXPECT_EQ(Warnings("<ArrayConfiguration Units='21025' Size='-1'/>"),
              (Texts{"1:1: ArrayConfiguration: Size \"-1\" wraps to 18446744073709551615"}));
}

TEST(LayoutWarnings, AUnitThatIsNoneIsNamed) {
    EXPECT_EQ(Warnings("<ArrayConfiguration Units='21023' Size='1'/>"),
              (Texts{"1:1: ArrayConfiguration: Units 21023 is no unit"}));
    EXPECT_EQ(Warnings("<ArrayConfiguration Units='0' Size='1'/>"),
              (Texts{"1:1: ArrayConfiguration: Units 0 is no unit"}));
    EXPECT_EQ(Warnings("<ArrayConfiguration Units='21006' Size='1'/>"), Texts{});
}

TEST(LayoutWarnings, ElementsThatNothingIsReadFromAreNamedInTheOrderOfTheDocument) {
    EXPECT_EQ(Warnings(ArrayWith("\n<LogicalDrives>\n<LogicalDrive/>\n<Drive ObjectID='1'/></LogicalDrives>"
                                 "\n<Containers><Group/></Containers>\n<HotSpares/>"
                                 "\n<LogicalDrives><LogicalDrive ObjectID='-1'/><LogicalDrive "
                                 "ObjectID='0'/></LogicalDrives>")),
              (Texts{"3:1: LogicalDrive: ObjectID is missing, taken as 0", "4:1: Drive: is not read",
                     "5:13: Group: is not read", "6:1: HotSpares: is not read",
                     "7:16: LogicalDrive: ObjectID \"-1\" wraps to 18446744073709551615"}));
}

TEST(LayoutWarnings, EveryChildOfAContainerIsADriveAndCommentsAreNothing) {
    EXPECT_EQ(
        Warnings(ArrayWith("<!-- a --><Containers><!-- b --><Container><!-- c -->\n"
                           "<Disk ObjectID='x' StartAddress='0' UsedSize='1' IsConfigurable='1' "
                           "LogicalDrive='0' LogicalOwner='0'><Part/></Disk></Container></Containers>")),
        (Texts{"2:1: Disk: ObjectID \"x\" is no number, taken as 0", "2:103: Part: is not read"}));
}

TEST(LayoutWarnings, OnlyTheFirstHundredAreKept) {
    const auto withDrives = [](std::size_t count) {
        std::string spares;
        for (std::size_t i = 0; i < count; ++i) {
            spares += "<LogicalDrive/>";
        }
        return ArrayWith("<LogicalDrives>" + spares + "</LogicalDrives>");
    };
    EXPECT_EQ(Read(withDrives(MAX_LAYOUT_WARNINGS)).m_Document.m_Warnings.m_LeftOut, 0U);
    const LayoutWarnings warnings = Read(withDrives(MAX_LAYOUT_WARNINGS + 2)).m_Document.m_Warnings;
    EXPECT_EQ(warnings.m_Kept.size(), MAX_LAYOUT_WARNINGS);
    EXPECT_EQ(warnings.m_LeftOut, 2U);
}
