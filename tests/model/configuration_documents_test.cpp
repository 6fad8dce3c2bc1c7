// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/layout.h>

#include <algorithm>
#include <sstream>
#include <string>

#include "model/layout_texts.h"
#include "support/global_locale.h"

namespace {

using namespace PI;
using namespace PI::Test;
using VELK::XML::xml_document;

constexpr std::uint64_t ALL_ONES = 0xFFFFFFFFFFFFFFFF;

CArray ReadArray(const std::string& text) {
    xml_document document;
    document.load_string(text.c_str());
    return CArray(document);
}

CLogicalDrive ReadLogicalDrive(const std::string& text) {
    xml_document document;
    document.load_string(text.c_str());
    return CLogicalDrive(document);
}

/// The one drive of an array document, with these attributes.
CDrive ReadDrive(const std::string& attributes) {
    const CArray array = ReadArray("<ArrayConfiguration><Containers><Container><Drive " + attributes +
                                   "/></Container></Containers></ArrayConfiguration>");
    return array.m_Containers.at(0).m_Drives.at(0);
}

// --- Whole documents

TEST(ArrayDocument, EveryPieceGoesToItsField) {
    const CArray array = ReadArray(R"(
        <ArrayConfiguration Size="1024" Units="21022">
            <Containers>
                <Container>
                    <Drive ObjectID="1" StartAddress="2" UsedSize="3" IsConfigurable="0" LogicalDrive="4"
                           LogicalOwner="5"/>
                    <Drive ObjectID="6"/>
                </Container>
                <Container>
                    <Drive UsedSize="18446744073709551615"/>
                </Container>
            </Containers>
            <LogicalDrives>
                <LogicalDrive ObjectID="8"/>
                <LogicalDrive ObjectID="7"/>
            </LogicalDrives>
        </ArrayConfiguration>)");
    EXPECT_EQ(Describe(array),
              "array: value1 0 size 1024 units 21022 properties 0\n"
              " container\n"
              "  drive 1 start 2 used 3 configurable 0 logical drive 4 owner 5 properties 0\n"
              "  drive 6 start 0 used 0 configurable 1 logical drive 0 owner 0 properties 0\n"
              " container\n"
              "  drive 0 start 0 used 18446744073709551615 configurable 1 logical drive 0 owner 0 properties "
              "0\n"
              "logical drives 8 7\n");
}

TEST(LogicalDriveDocument, EveryPieceGoesToItsField) {
    const CLogicalDrive logicalDrive = ReadLogicalDrive(R"(
        <LogicalDriveConfiguration Size="1024" Units="21002" SpanCount="2" SpanSize="512">
            <Containers>
                <Container>
                    <Drive ObjectID="1" StartAddress="2" UsedSize="3" IsConfigurable="1" LogicalDrive="4"
                           LogicalOwner="5"/>
                </Container>
            </Containers>
            <GlobalHotSpares><Drive ObjectID="6"/><Drive ObjectID="7"/></GlobalHotSpares>
            <DedicatedHotSpares><Drive ObjectID="8"/></DedicatedHotSpares>
            <AssociatedLogicalDrives>
                <LogicalDrive ObjectID="10"/><LogicalDrive ObjectID="9"/><LogicalDrive ObjectID="11"/>
            </AssociatedLogicalDrives>
        </LogicalDriveConfiguration>)");
    EXPECT_EQ(Describe(logicalDrive),
              "logical drive: id 0 value1 0 value2 -1 size 1024 units 21002 spans 2 of 512 value3 1 value4 "
              "18446744073709551615 properties 0\n"
              " container\n"
              "  drive 1 start 2 used 3 configurable 1 logical drive 4 owner 5 properties 0\n"
              "global 6 7\n"
              "dedicated 8\n"
              "associated 10 9 11\n");
}

TEST(ArrayDocument, AnEmptyDocumentGivesZerosAndEmptyLists) {
    xml_document document;
    EXPECT_EQ(Describe(CArray(document)),
              "array: value1 0 size 0 units 0 properties 0\n"
              "logical drives\n");
}

TEST(LogicalDriveDocument, AnEmptyDocumentGivesZerosAndEmptyLists) {
    xml_document document;
    const CLogicalDrive logicalDrive(document);
    EXPECT_EQ(Describe(logicalDrive),
              "logical drive: id 0 value1 0 value2 -1 size 0 units 0 spans 0 of 0 value3 1 value4 "
              "18446744073709551615 properties 0\n"
              "global\n"
              "dedicated\n"
              "associated\n");
    EXPECT_EQ(logicalDrive.m_Value4, ALL_ONES);
}

TEST(ConfigurationDocuments, WithoutUnitsTheUnitIsZeroAndNotThatOfANewRecord) {
    EXPECT_EQ(ReadArray("<ArrayConfiguration/>").m_Units, 0);
    EXPECT_EQ(ReadLogicalDrive("<LogicalDriveConfiguration/>").m_Units, 0);
    EXPECT_EQ(CArray().m_Units, Units::UNSPECIFIED);
    EXPECT_EQ(CLogicalDrive().m_Units, Units::UNSPECIFIED);
}

TEST(ConfigurationDocuments, OneKindReadsNothingFromTheOther) {
    const std::string inner =
        "Size='1' Units='2' SpanCount='3'><Containers><Container/></Containers>"
        "<LogicalDrives><LogicalDrive/></LogicalDrives>"
        "<GlobalHotSpares><Drive/></GlobalHotSpares>";
    xml_document empty;
    EXPECT_EQ(Describe(ReadArray("<LogicalDriveConfiguration " + inner + "</LogicalDriveConfiguration>")),
              Describe(CArray(empty)));
    EXPECT_EQ(Describe(ReadLogicalDrive("<ArrayConfiguration " + inner + "</ArrayConfiguration>")),
              Describe(CLogicalDrive(empty)));
}

TEST(ConfigurationDocuments, TheDocumentStaysAsItIs) {
    const auto textOf = [](const xml_document& document) {
        std::ostringstream text;
        document.save(text);
        return text.str();
    };
    xml_document document;
    document.load_string(
        "<ArrayConfiguration Size=' 1'><Containers><Container><Drive/></Container></Containers>"
        "</ArrayConfiguration>");
    const std::string before = textOf(document);
    const CArray array(document);
    const CLogicalDrive logicalDrive(document);
    EXPECT_EQ(textOf(document), before);
    EXPECT_EQ(array.m_Size, 1U);
}

// --- Numbers

std::uint64_t ReadSize(const std::string& value) {
    return ReadArray("<ArrayConfiguration Size=\"" + value + "\"/>").m_Size;
}

TEST(ConfigurationDocuments, ANumberStandsAloneButForLeadingBlanks) {
    EXPECT_EQ(ReadSize("1024"), 1024U);
    EXPECT_EQ(ReadSize(" 1024"), 1024U);
    EXPECT_EQ(ReadSize("&#9;&#10;&#13; 1024"), 1024U);
    EXPECT_EQ(ReadSize("1024 "), 0U);
    EXPECT_EQ(ReadSize("1024K"), 0U);
    EXPECT_EQ(ReadSize("1024 1"), 0U);
    EXPECT_EQ(ReadSize("0x400"), 0U);
    EXPECT_EQ(ReadSize("1,024"), 0U);
    EXPECT_EQ(ReadSize("1024.0"), 0U);
    EXPECT_EQ(ReadSize(""), 0U);
    EXPECT_EQ(ReadSize(" "), 0U);
    EXPECT_EQ(ReadSize("many"), 0U);
}

TEST(ConfigurationDocuments, SignsAreReadAsAStreamReadsThem) {
    EXPECT_EQ(ReadSize("+5"), 5U);
    EXPECT_EQ(ReadSize("-1"), ALL_ONES);
    EXPECT_EQ(ReadSize("- 1"), 0U);
}

TEST(ConfigurationDocuments, ANumberThatDoesNotFitIsAbsent) {
    EXPECT_EQ(ReadSize("18446744073709551615"), ALL_ONES);
    EXPECT_EQ(ReadSize("18446744073709551616"), 0U);
}

TEST(ConfigurationDocuments, UnitsIsSigned32Bit) {
    const auto units = [](const std::string& value) {
        return static_cast<std::int64_t>(ReadArray("<ArrayConfiguration Units='" + value + "'/>").m_Units);
    };
    EXPECT_EQ(units("21022"), 21022);
    EXPECT_EQ(units(" 21022"), 21022);
    EXPECT_EQ(units("5"), 5) << "stored as written, whether it is a unit or not";
    EXPECT_EQ(units("2147483647"), 2147483647);
    EXPECT_EQ(units("2147483648"), 0);
    EXPECT_EQ(units("-2147483648"), -2147483648);
    EXPECT_EQ(units("-2147483649"), 0);
    EXPECT_EQ(units("21022 "), 0);
    EXPECT_EQ(units(""), 0);
    EXPECT_EQ(units("GB"), 0);
}

TEST(ConfigurationDocuments, UnitsOfALogicalDriveIsSigned32BitToo) {
    EXPECT_EQ(ReadLogicalDrive("<LogicalDriveConfiguration Units='2147483647'/>").m_Units, 2147483647);
    EXPECT_EQ(ReadLogicalDrive("<LogicalDriveConfiguration Units='2147483648'/>").m_Units, 0);
}

TEST(ConfigurationDocuments, IsConfigurableIsTrueUnlessZero) {
    EXPECT_TRUE(ReadDrive("").m_IsConfigurable);
    EXPECT_TRUE(ReadDrive("IsConfigurable=''").m_IsConfigurable);
    EXPECT_TRUE(ReadDrive("IsConfigurable='1'").m_IsConfigurable);
    EXPECT_FALSE(ReadDrive("IsConfigurable='0'").m_IsConfigurable);
    EXPECT_FALSE(ReadDrive("IsConfigurable=' 0'").m_IsConfigurable);
    EXPECT_FALSE(ReadDrive("IsConfigurable='-0'").m_IsConfigurable);
    EXPECT_TRUE(ReadDrive("IsConfigurable='0 '").m_IsConfigurable);
    EXPECT_TRUE(ReadDrive("IsConfigurable='2'").m_IsConfigurable);
    EXPECT_TRUE(ReadDrive("IsConfigurable='-1'").m_IsConfigurable);
    EXPECT_TRUE(ReadDrive("IsConfigurable='false'").m_IsConfigurable);
    EXPECT_TRUE(ReadDrive("IsConfigurable='no'").m_IsConfigurable);
}

TEST(ConfigurationDocuments, EachNumberFallsBackByItself) {
    const CDrive drive = ReadDrive(
        "ObjectID='1' StartAddress='2 ' UsedSize='3' IsConfigurable='0' LogicalDrive='x' LogicalOwner='5'");
    EXPECT_EQ(drive.m_ObjectID, 1U);
    EXPECT_EQ(drive.m_StartAddress, 0U);
    EXPECT_EQ(drive.m_UsedSize, 3U);
    EXPECT_FALSE(drive.m_IsConfigurable);
    EXPECT_EQ(drive.m_LogicalDrive, 0U);
    EXPECT_EQ(drive.m_LogicalOwner, 5U);
}

TEST(ConfigurationDocuments, AttributeNamesAreExact) {
    const CDrive drive = ReadDrive("objectID='1' x:ObjectID='2' ObjectId='3' StartAddress='4'");
    EXPECT_EQ(drive.m_ObjectID, 0U);
    EXPECT_EQ(drive.m_StartAddress, 4U);
}

TEST(ConfigurationDocuments, OfAnAttributeGivenTwiceTheFirstCounts) {
    EXPECT_EQ(ReadDrive("ObjectID='1' ObjectID='2'").m_ObjectID, 1U);
    EXPECT_EQ(ReadDrive("ObjectID='x' ObjectID='2'").m_ObjectID, 0U);
}

TEST(ConfigurationDocuments, TheGlobalLocaleDoesNotMatter) {
    const GlobalLocale odd(OddLocale());
    EXPECT_EQ(ReadSize(" 1024"), 1024U);
    EXPECT_EQ(ReadSize("x1024"), 0U);
}

// --- Lists

TEST(ConfigurationDocuments, EveryElementInAContainerIsADrive) {
    const CArray array = ReadArray(
        "<ArrayConfiguration><Containers><Container>"
        "<Drive ObjectID='1'/><Disk ObjectID='2'/><x:Container ObjectID='3'/>"
        "</Container></Containers></ArrayConfiguration>");
    EXPECT_EQ(Describe(array.m_Containers),
              " container\n"
              "  drive 1 start 0 used 0 configurable 1 logical drive 0 owner 0 properties 0\n"
              "  drive 2 start 0 used 0 configurable 1 logical drive 0 owner 0 properties 0\n"
              "  drive 3 start 0 used 0 configurable 1 logical drive 0 owner 0 properties 0\n");
}

TEST(ConfigurationDocuments, OnlyElementsInAContainerAreDrives) {
    xml_document document;
    document.load_string(
        "<ArrayConfiguration><Containers><Container>"
        "text<!--comment--><?Drive ObjectID='1'?><![CDATA[data]]><Drive ObjectID='2'><Drive "
        "ObjectID='3'/></Drive> "
        "</Container></Containers></ArrayConfiguration>",
        VELK::XML::parse_full | VELK::XML::parse_ws_pcdata);
    const CArray array(document);
    ASSERT_EQ(array.m_Containers.size(), 1U);
    ASSERT_EQ(array.m_Containers[0].m_Drives.size(), 1U);
    EXPECT_EQ(array.m_Containers[0].m_Drives[0].m_ObjectID, 2U);
}

TEST(ConfigurationDocuments, AContainerWithoutDrivesIsKept) {
    const CArray array = ReadArray(
        "<ArrayConfiguration><Containers><Container/><Container><Drive/></Container><Container>text</"
        "Container>"
        "</Containers></ArrayConfiguration>");
    ASSERT_EQ(array.m_Containers.size(), 3U);
    EXPECT_EQ(array.m_Containers[0].m_Drives.size(), 0U);
    EXPECT_EQ(array.m_Containers[1].m_Drives.size(), 1U);
    EXPECT_EQ(array.m_Containers[2].m_Drives.size(), 0U);
}

TEST(ConfigurationDocuments, AnIdentifierThatIsMissingOrMalformedIsZero) {
    const CLogicalDrive logicalDrive = ReadLogicalDrive(
        "<LogicalDriveConfiguration>"
        "<GlobalHotSpares><Drive ObjectID='5'/><Drive/></GlobalHotSpares>"
        "<DedicatedHotSpares><Drive ObjectID='6 '/><Drive ObjectID=' 7'/></DedicatedHotSpares>"
        "<AssociatedLogicalDrives><LogicalDrive ObjectID=''/></AssociatedLogicalDrives>"
        "</LogicalDriveConfiguration>");
    EXPECT_EQ(logicalDrive.m_GlobalHotSpares, (std::vector<std::uint64_t>{5, 0}));
    EXPECT_EQ(logicalDrive.m_DedicatedHotSpares, (std::vector<std::uint64_t>{0, 7}));
    EXPECT_EQ(logicalDrive.m_AssociatedLogicalDrives, (std::vector<std::uint64_t>{0}));
}

TEST(ConfigurationDocuments, ElsewhereThanInContainersNamesCount) {
    const CLogicalDrive logicalDrive = ReadLogicalDrive(
        "<LogicalDriveConfiguration>"
        "<Containers><container><Drive/></container><Box/></Containers>"
        "<GlobalHotSpares><LogicalDrive ObjectID='1'/><Drive ObjectID='2'/></GlobalHotSpares>"
        "<AssociatedLogicalDrives><Drive ObjectID='3'/></AssociatedLogicalDrives>"
        "<Container/><Drive ObjectID='4'/>"
        "</LogicalDriveConfiguration>");
    EXPECT_TRUE(logicalDrive.m_Containers.empty());
    EXPECT_EQ(logicalDrive.m_GlobalHotSpares, (std::vector<std::uint64_t>{2}));
    EXPECT_TRUE(logicalDrive.m_AssociatedLogicalDrives.empty());
}

TEST(ConfigurationDocuments, ListsAreNotLookedForDeeper) {
    const CArray array = ReadArray(
        "<Outer><ArrayConfiguration "
        "Size='1'><Containers><Container/></Containers></ArrayConfiguration></Outer>");
    EXPECT_EQ(array.m_Size, 0U);
    EXPECT_TRUE(array.m_Containers.empty());
}

TEST(ConfigurationDocuments, SeveralListsAreReadAsOneInDocumentOrder) {
    const CArray array = ReadArray(
        "<ArrayConfiguration>"
        "<LogicalDrives><LogicalDrive ObjectID='1'/></LogicalDrives>"
        "<Containers><Container><Drive ObjectID='10'/></Container></Containers>"
        "<LogicalDrives/>"
        "<Containers><Container/><Container><Drive ObjectID='11'/></Container></Containers>"
        "<LogicalDrives><LogicalDrive ObjectID='2'/></LogicalDrives>"
        "</ArrayConfiguration>");
    EXPECT_EQ(array.m_LogicalDrives, (std::vector<std::uint64_t>{1, 2}));
    ASSERT_EQ(array.m_Containers.size(), 3U);
    EXPECT_EQ(array.m_Containers[0].m_Drives.at(0).m_ObjectID, 10U);
    EXPECT_TRUE(array.m_Containers[1].m_Drives.empty());
    EXPECT_EQ(array.m_Containers[2].m_Drives.at(0).m_ObjectID, 11U);
}

TEST(ConfigurationDocuments, OfSeveralRootsTheFirstGivesTheAttributesAndAllGiveTheirLists) {
    const CArray array = ReadArray(
        "<Other Size='9'/>"
        "<ArrayConfiguration Units='3'><LogicalDrives><LogicalDrive ObjectID='1'/></LogicalDrives>"
        "</ArrayConfiguration>"
        "<ArrayConfiguration Size='2' Units='4'><LogicalDrives><LogicalDrive ObjectID='2'/></LogicalDrives>"
        "</ArrayConfiguration>");
    EXPECT_EQ(array.m_Size, 0U);
    EXPECT_EQ(array.m_Units, 3);
    EXPECT_EQ(array.m_LogicalDrives, (std::vector<std::uint64_t>{1, 2}));
}

TEST(ConfigurationDocuments, ProcessingInstructionsAreNoElementsWhateverTheirNames) {
    xml_document document;
    document.load_string(
        "<?ArrayConfiguration Size='7'?>"
        "<ArrayConfiguration Size='1'><?Containers?><Containers><?Container?><Container/></Containers>"
        "<LogicalDrives><?LogicalDrive ObjectID='8'?><LogicalDrive ObjectID='9'/></LogicalDrives>"
        "</ArrayConfiguration>",
        VELK::XML::parse_full);
    const CArray array(document);
    EXPECT_EQ(array.m_Size, 1U);
    EXPECT_EQ(array.m_Containers.size(), 1U);
    EXPECT_EQ(array.m_LogicalDrives, (std::vector<std::uint64_t>{9}));
}

// --- Size

std::string ManyDrives(std::uint64_t count) {
    std::string text = "<ArrayConfiguration><Containers><Container>";
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        text += "<Drive ObjectID='" + number + "' StartAddress=' " + number + "' UsedSize='" + number +
                "' IsConfigurable='0' LogicalDrive='" + number + "' LogicalOwner=' " + number + "'/>";
    }
    return text + "</Container></Containers></ArrayConfiguration>";
}

TEST(ConfigurationDocuments, AHundredThousandDrivesAreRead) {
    constexpr std::uint64_t COUNT = 100000;
    xml_document document;
    document.load_string(ManyDrives(COUNT).c_str());
    const CArray array(document);
    const std::vector<CDrive>& drives = array.m_Containers.at(0).m_Drives;
    ASSERT_EQ(drives.size(), COUNT);
    for (std::uint64_t i = 0; i < COUNT; ++i) {
        ASSERT_EQ(drives[i].m_ObjectID, i);
        ASSERT_EQ(drives[i].m_StartAddress, i);
        ASSERT_EQ(drives[i].m_LogicalOwner, i);
    }
}

}  // namespace
