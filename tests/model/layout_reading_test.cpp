// SPDX-License-Identifier: Apache-2.0
// Configuration documents read with findings: what is found and where, and that the record is the same.

#include <gtest/gtest.h>
#include <pi/layout_reading.h>

#include <random>
#include <string>
#include <vector>

#include "model/layout_texts.h"
#include "support/hostile_xml.h"
#include "support/random_seed.h"

using namespace PI;
using namespace PI::Test;

namespace {

using Texts = std::vector<std::string>;

struct Reading {
    explicit Reading(const std::string& text)
        : m_Kind(ReadLayout(text.data(), text.size(), m_Array, m_LogicalDrive, m_Findings)) {}

    /// "line:column: element: text, taken as value" of each finding.
    Texts Told() const {
        Texts told;
        for (const CLayoutFinding& finding : m_Findings) {
            told.push_back(std::to_string(finding.GetLine()) + ":" + std::to_string(finding.GetColumn()) +
                           ": " + (finding.GetElement().empty() ? "" : finding.GetElement() + ": ") +
                           finding.GetText() +
                           (finding.GetAssumed().empty() ? "" : ", taken as " + finding.GetAssumed()));
        }
        return told;
    }

    CArray m_Array;
    CLogicalDrive m_LogicalDrive;
    std::vector<CLayoutFinding> m_Findings;
    _LAYOUT_KIND m_Kind;
};

Texts Findings(const std::string& text) {
    const Reading reading(text);
    EXPECT_NE(reading.m_Kind, LayoutKind::NONE) << text;
    return reading.Told();
}

/// The one finding about a text from which nothing is read.
std::string Refusal(const std::string& text) {
    const Reading reading(text);
    EXPECT_EQ(reading.m_Kind, LayoutKind::NONE) << text;
    EXPECT_EQ(reading.m_Findings.size(), 1U) << text;
    return reading.Told().at(0);
}

std::string ArrayWith(const std::string& content) {
    return "<ArrayConfiguration Size='1' Units='21025'>" + content + "</ArrayConfiguration>";
}

std::string DriveWith(const std::string& attributes) {
    return ArrayWith("<Containers><Container><Drive " + attributes + "/></Container></Containers>");
}

/// Both forms of reading give the same record.
void ExpectTheSameRecord(const std::string& text) {
    VELK::XML::xml_document document;
    document.load_buffer(text.data(), text.size());
    const Reading reading(text);
    if (reading.m_Kind == LayoutKind::ARRAY) {
        EXPECT_EQ(Describe(reading.m_Array), Describe(CArray(document))) << text;
        EXPECT_EQ(Describe(reading.m_LogicalDrive), Describe(CLogicalDrive()));
    } else if (reading.m_Kind == LayoutKind::LOGICAL_DRIVE) {
        EXPECT_EQ(Describe(reading.m_LogicalDrive), Describe(CLogicalDrive(document))) << text;
        EXPECT_EQ(Describe(reading.m_Array), Describe(CArray()));
    } else {
        EXPECT_FALSE(reading.m_Findings.empty());
    }
}

}  // namespace

TEST(ReadLayout, TheRootDecidesTheKind) {
    const Reading array(ArrayWith(""));
    EXPECT_EQ(array.m_Kind, LayoutKind::ARRAY);
    EXPECT_EQ(array.m_Array.m_Size, 1U);
    const Reading drive("<LogicalDriveConfiguration Size='2' Units='21022' SpanCount='3' SpanSize='4'/>");
    EXPECT_EQ(drive.m_Kind, LayoutKind::LOGICAL_DRIVE);
    EXPECT_EQ(drive.m_LogicalDrive.m_SpanSize, 4U);
    EXPECT_EQ(drive.Told(), Texts{});
}

TEST(ReadLayout, ReplacesTheRecordAndAppendsTheFindings) {
    Reading reading(DriveWith("ObjectID='1'"));
    const std::size_t findings = reading.m_Findings.size();
    const std::string second = "<ArrayConfiguration Size='2'/>";
    EXPECT_EQ(
        ReadLayout(second.data(), second.size(), reading.m_Array, reading.m_LogicalDrive, reading.m_Findings),
        LayoutKind::ARRAY);
    EXPECT_TRUE(reading.m_Array.m_Containers.empty());
    EXPECT_EQ(reading.m_Array.m_Units, 0);
    EXPECT_EQ(reading.m_Findings.size(), findings + 1);
    const std::string broken = "<";
    EXPECT_EQ(
        ReadLayout(broken.data(), broken.size(), reading.m_Array, reading.m_LogicalDrive, reading.m_Findings),
        LayoutKind::NONE);
    EXPECT_EQ(reading.m_Array.m_Size, 2U);
    EXPECT_EQ(reading.m_Findings.size(), findings + 2);
}

TEST(ReadLayout, WhatIsNotWellFormedIsToldWithItsPlace) {
    EXPECT_EQ(Refusal(""), "1:1: no well-formed XML: No document element found");
    EXPECT_EQ(Refusal("no XML"), "1:7: no well-formed XML: No document element found");
    EXPECT_EQ(Refusal("<ArrayConfiguration>\n  <Containers>\n </ArrayConfiguration>"),
              "3:4: no well-formed XML: Start-end tags mismatch");
    EXPECT_EQ(Refusal("<ArrayConfiguration>\n"), "1:21: no well-formed XML: Start-end tags mismatch");
    EXPECT_EQ(Refusal("<a>\xC3\xA4</b>"), "1:7: no well-formed XML: Start-end tags mismatch");
}

TEST(ReadLayout, AnotherRootIsToldWithItsPlace) {
    EXPECT_EQ(Refusal("<!-- \xC3\xA4 -->\n  <Configuration/>"),
              "2:3: Configuration: the root element is \"Configuration\", neither ArrayConfiguration nor "
              "LogicalDriveConfiguration");
    EXPECT_EQ(Refusal("<!-- \xC3\xA4 --> <arrayConfiguration/>").substr(0, 6), "1:12: ");
}

TEST(ReadLayout, OtherEncodingsAndZeroBytesAreToldAndNothingIsRead) {
    const std::string text = ArrayWith("");
    EXPECT_EQ(Refusal(Utf16(text, false)),
              "1:1: no well-formed XML: UTF-16 or UTF-32 where UTF-8 is expected");
    EXPECT_EQ(Refusal(Utf16(text, true)),
              "1:1: no well-formed XML: UTF-16 or UTF-32 where UTF-8 is expected");
    EXPECT_EQ(Refusal(text + "\n" + std::string(1, '\0')), "2:1: no well-formed XML: a zero byte");
    EXPECT_EQ(Refusal(std::string(10'000, '\0')), "1:1: no well-formed XML: a zero byte");
}

TEST(ReadLayout, AByteOrderMarkIsNoCharacter) {
    EXPECT_EQ(Refusal("\xEF\xBB\xBF<a></b>").substr(0, 5), "1:6: ");
    EXPECT_EQ(Findings("\xEF\xBB\xBF<ArrayConfiguration Size='1'/>"),
              (Texts{"1:1: ArrayConfiguration: Units is missing, taken as 0"}));
}

TEST(ReadLayout, CharactersOfIso88591CountOnce) {
    EXPECT_EQ(
        Findings("<?xml version='1.0' encoding='ISO-8859-1'?><!-- \xE4\xE4\n\xE4 --> <ArrayConfiguration "
                 "Size='1'/>"),
        (Texts{"2:7: ArrayConfiguration: Units is missing, taken as 0"}));
}

TEST(LayoutFindings, ACompleteDocumentHasNone) {
    EXPECT_EQ(Findings(DriveWith("ObjectID='1' StartAddress='0' UsedSize='1' IsConfigurable='0' "
                                 "LogicalDrive='0' LogicalOwner='00'")),
              Texts{});
}

TEST(LayoutFindings, TellElementAttributeAndWhatIsAssumed) {
    const Reading reading("<ArrayConfiguration Units='21025' Size='931 GB'/>");
    ASSERT_EQ(reading.m_Findings.size(), 1U);
    const CLayoutFinding& finding = reading.m_Findings[0];
    EXPECT_EQ(finding.GetElement(), "ArrayConfiguration");
    EXPECT_EQ(finding.GetAttribute(), "Size");
    EXPECT_EQ(finding.GetText(), "Size \"931 GB\" is no number");
    EXPECT_EQ(finding.GetAssumed(), "0");
    EXPECT_EQ(finding.GetLeftOut(), 0U);
}

TEST(LayoutFindings, NumbersThatFellBackAreNamed) {
    EXPECT_EQ(Findings("<LogicalDriveConfiguration Size='1 ' Units='' SpanCount='x'/>"),
              (Texts{"1:1: LogicalDriveConfiguration: Size \"1 \" is no number, taken as 0",
                     "1:1: LogicalDriveConfiguration: Units is empty, taken as 0",
                     "1:1: LogicalDriveConfiguration: SpanCount \"x\" is no number, taken as 0",
                     "1:1: LogicalDriveConfiguration: SpanSize is missing, taken as 0"}));
    EXPECT_EQ(Findings(DriveWith("ObjectID='1' StartAddress='18446744073709551616' UsedSize='1.5' "
                                 "IsConfigurable='2' LogicalDrive='- 1' LogicalOwner='0'")),
              (Texts{"1:67: Drive: StartAddress \"18446744073709551616\" is out of range, taken as 0",
                     "1:67: Drive: UsedSize \"1.5\" is no number, taken as 0",
                     "1:67: Drive: IsConfigurable \"2\" is neither 0 nor 1, taken as 1",
                     "1:67: Drive: LogicalDrive \"- 1\" is no number, taken as 0"}));
    EXPECT_EQ(Findings("<ArrayConfiguration Size='18446744073709551615' Units='2147483648'/>"),
              (Texts{"1:1: ArrayConfiguration: Units \"2147483648\" is out of range, taken as 0"}));
}

TEST(LayoutFindings, NumbersThatAreReadAreNotNamed) {
    for (const char* zero : {"0", " 0", "\t000", "-0", "+0"}) {
        EXPECT_EQ(Findings("<ArrayConfiguration Units='21025' Size='" + std::string(zero) + "'/>"), Texts{})
            << zero;
    }
    for (const char* flag : {"0", "1", " 1", "+1", "01"}) {
        EXPECT_EQ(Findings(DriveWith("ObjectID='1' StartAddress='0' UsedSize='1' LogicalDrive='0' "
                                     "LogicalOwner='0' IsConfigurable='" +
                                     std::string(flag) + "'")),
                  Texts{})
            << flag;
    }
}

TEST(LayoutFindings, ANegativeNumberIsNamedWithWhatItWrapsTo) {
    EXPECT_EQ(Findings("<ArrayConfiguration Units='21025' Size='-1'/>"),
              (Texts{"1:1: ArrayConfiguration: Size \"-1\" is negative, taken as 18446744073709551615"}));
}

TEST(LayoutFindings, AUnitThatIsNoneIsNamed) {
    for (const char* units : {"21023", "0", "-21025"}) {
        EXPECT_EQ(Findings("<ArrayConfiguration Size='1' Units='" + std::string(units) + "'/>"),
                  (Texts{"1:1: ArrayConfiguration: Units " + std::string(units) + " is no unit"}));
    }
    for (const char* units : {"21025", "21003", "21002", "21022", "21026", "21027", "21006"}) {
        EXPECT_EQ(Findings("<ArrayConfiguration Size='1' Units='" + std::string(units) + "'/>"), Texts{});
    }
}

TEST(LayoutFindings, AnAttributeThatIsThereTwiceIsNamedWithTheOneThatCounts) {
    EXPECT_EQ(Findings("<ArrayConfiguration Units='21025' Size='5' Size='6'/>"),
              (Texts{"1:1: ArrayConfiguration: Size is there twice, taken as \"5\""}));
}

TEST(LayoutFindings, ElementsFromWhichNothingIsReadAreNamedInTheOrderOfTheDocument) {
    EXPECT_EQ(Findings(ArrayWith("\n<LogicalDrives>\n<LogicalDrive/>\n<Drive ObjectID='1'/></LogicalDrives>"
                                 "\n<Containers><Group/></Containers>\n<HotSpares/>"
                                 "\n<LogicalDrives><LogicalDrive ObjectID='-1'/><LogicalDrive "
                                 "ObjectID='0'/></LogicalDrives>")),
              (Texts{"3:1: LogicalDrive: ObjectID is missing, taken as 0", "4:1: Drive: is not read",
                     "5:13: Group: is not read", "6:1: HotSpares: is not read",
                     "7:16: LogicalDrive: ObjectID \"-1\" is negative, taken as 18446744073709551615"}));
}

TEST(LayoutFindings, EveryElementInAContainerIsADriveAndCommentsAreNothing) {
    EXPECT_EQ(
        Findings(ArrayWith("<!-- a --><Containers><!-- b --><Container><!-- c -->\n"
                           "<Disk ObjectID='x' StartAddress='0' UsedSize='1' IsConfigurable='1' "
                           "LogicalDrive='0' LogicalOwner='0'><Part/></Disk></Container></Containers>")),
        (Texts{"2:1: Disk: ObjectID \"x\" is no number, taken as 0", "2:103: Part: is not read"}));
}

TEST(LayoutFindings, OtherElementsOfTheOutermostLevelAreNamed) {
    EXPECT_EQ(
        Findings("<First/>" + ArrayWith("") + "\n" + ArrayWith("<Other/>") +
                 "\n<LogicalDriveConfiguration/>"),
        (Texts{"1:1: First: is not read", "2:1: ArrayConfiguration: is another root: only its lists are read",
               "2:44: Other: is not read", "3:1: LogicalDriveConfiguration: is not read"}));
}

TEST(LayoutFindings, TextOutsideOfTheRootIsNamed) {
    EXPECT_EQ(Findings("before" + ArrayWith("inside") +
                       "\r\n \xC3\xA4 junk &lt;\n<Other/>\n<![CDATA[ last ]]>\n<![CDATA[ ]]>"),
              (Texts{"1:1: \"before\" is not read", "2:2: \"\xC3\xA4 junk <\" is not read",
                     "3:1: Other: is not read", "4:11: \"last\" is not read"}));
}

TEST(LayoutFindings, TextOutsideOfTheRootIsFoundInIso88591Too) {
    EXPECT_EQ(Findings("<?xml version='1.0' encoding='ISO-8859-1'?>" + ArrayWith("") + "\xE4 \xE4<?p?>end"),
              (Texts{"1:108: \"\xC3\xA4 \xC3\xA4\" is not read", "1:116: \"end\" is not read"}));
}

TEST(ReadLayout, TextOutsideOfTheRootHidesNoMistake) {
    EXPECT_EQ(Refusal(ArrayWith("") + "junk<"), "1:69: no well-formed XML: Could not determine tag type");
    EXPECT_EQ(Refusal(ArrayWith("") + "<"), "1:65: no well-formed XML: Could not determine tag type");
    EXPECT_EQ(Refusal("junk<!-- -->"), "1:13: no well-formed XML: No document element found");
}

TEST(LayoutFindings, LongValuesAreCutBetweenCharacters) {
    const std::string digits(39, '1');
    EXPECT_EQ(Findings("<ArrayConfiguration Units='21025' Size='" + digits + "x'/>"),
              (Texts{"1:1: ArrayConfiguration: Size \"" + digits + "x\" is no number, taken as 0"}));
    EXPECT_EQ(Findings("<ArrayConfiguration Units='21025' Size='" + digits + "\xC3\xA4'/>"),
              (Texts{"1:1: ArrayConfiguration: Size \"" + digits + "...\" is no number, taken as 0"}));
}

TEST(LayoutFindings, AreAtMostAHundredAndTheLastOneCountsTheOthers) {
    const auto withDrives = [](std::size_t count) {
        std::string drives;
        for (std::size_t i = 0; i < count; ++i) {
            drives += "<LogicalDrive/>";
        }
        return Reading(ArrayWith("<LogicalDrives>" + drives + "</LogicalDrives>"));
    };
    const Reading most = withDrives(MAX_LAYOUT_FINDINGS);
    ASSERT_EQ(most.m_Findings.size(), MAX_LAYOUT_FINDINGS);
    EXPECT_EQ(most.m_Findings.back().GetLeftOut(), 0U);
    const Reading more = withDrives(MAX_LAYOUT_FINDINGS + 2);
    ASSERT_EQ(more.m_Findings.size(), MAX_LAYOUT_FINDINGS);
    EXPECT_EQ(more.m_Findings.back().GetLeftOut(), 2U);
    EXPECT_EQ(more.m_Findings.front().GetLeftOut(), 0U);
}

TEST(ReadLayout, GivesTheRecordOfTheConstructorForHostileDocuments) {
    const std::string root = "<ArrayConfiguration Size='&e9;' Units='21025'>&e9;</ArrayConfiguration>";
    for (const std::string& text :
         {EntityBomb() + root, ExternalEntity("/etc/passwd") + root, Nested(100'000, ""),
          ArrayWith(Nested(100'000, "")), "<!DOCTYPE a [" + root + "]>" + root, root + root + "text"}) {
        ExpectTheSameRecord(text);
    }
}

TEST(ReadLayout, GivesTheRecordOfTheConstructorForRandomDocuments) {
    std::mt19937 random(RandomSeed());
    const auto pick = [&random](const std::vector<const char*>& choices) {
        return std::string(choices[random() % choices.size()]);
    };
    const std::vector<const char*> names{"ArrayConfiguration",
                                         "LogicalDriveConfiguration",
                                         "Containers",
                                         "Container",
                                         "Drive",
                                         "LogicalDrives",
                                         "LogicalDrive",
                                         "GlobalHotSpares",
                                         "DedicatedHotSpares",
                                         "AssociatedLogicalDrives",
                                         "Other"};
    const std::vector<const char*> attributes{"Size",         "Units",        "SpanCount", "SpanSize",
                                              "ObjectID",     "StartAddress", "UsedSize",  "IsConfigurable",
                                              "LogicalDrive", "LogicalOwner"};
    const std::vector<const char*> values{"0", "1",  "2",  "-1",    "",    "21022", "18446744073709551616",
                                          "x", " 7", "7 ", "&amp;", "&x;", "\xFF"};
    std::size_t read = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string text = random() % 8 == 0 ? "\xEF\xBB\xBF" : "";
        std::vector<std::string> open;
        for (std::size_t steps = 2 + random() % 30; steps > 0; --steps) {
            if (!open.empty() && random() % 3 == 0) {
                text += "</" + open.back() + ">";
                open.pop_back();
                continue;
            }
            // Most often what belongs here, so that lists are filled.
            const std::string name = random() % 4 == 0  ? pick(names)
                                     : open.empty()     ? names[random() % 2]
                                     : open.size() == 1 ? pick({names.begin() + 2, names.begin() + 10})
                                     : open.back() == "Containers" ? "Container"
                                                                   : pick({"Drive", "LogicalDrive"});
            text += "<" + name;
            for (std::size_t count = random() % 4; count > 0; --count) {
                text += " " + pick(attributes) + "='" + pick(values) + "'";
            }
            text += random() % 4 == 0 ? "/>" : (open.push_back(name), ">");
            text += random() % 8 == 0 ? pick({"text", "<!-- c -->", "<?p?>", "\n", "&lt;"}) : "";
        }
        while (!open.empty() && random() % 50 != 0) {
            text += "</" + open.back() + ">";
            open.pop_back();
        }
        ExpectTheSameRecord(text);
        read += Reading(text).m_Kind != LayoutKind::NONE ? 1 : 0;
    }
    EXPECT_GT(read, 10'000U);
}
