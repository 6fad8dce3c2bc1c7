// SPDX-License-Identifier: Apache-2.0
// Memory running out while properties, objects and layouts are copied, set and read.

#include <gtest/gtest.h>
#include <pi/layout.h>
#include <pi/object.h>
#include <pi/task.h>

#include <functional>
#include <optional>

#include "failing_memory.h"
#include "model/property_samples.h"

using namespace PI;
using namespace PI::Test;

namespace {

const std::string LONG_TEXT = "a text that is too long to be held without memory of its own";

CProperty OtherProperty() {
    CProperty property;
    property.SetValue(LONG_TEXT + " before");
    property.m_Data.m_MultiString.m_Values = {LONG_TEXT, LONG_TEXT + " too"};
    property.m_Data.m_XML.m_Document.load_string("<Before/>");
    return property;
}

CDrive SampleDrive() {
    CDrive drive;
    drive.m_ObjectID = 7;
    drive.m_Properties = {FilledProperty(PropertyType::XML)};
    return drive;
}

CEvent SampleEvent() {
    CEvent event;
    event.m_Handle = 9;
    event.SetPlaceHolder1(LONG_TEXT);
    event.m_Host = LONG_TEXT;
    return event;
}

COperation SampleOperation() {
    COperation operation;
    operation.m_Header1 = 5;
    operation.m_Properties = {FilledProperty(PropertyType::STRING)};
    operation.m_LogicalDriveList.emplace_back().m_Containers.emplace_back().m_Drives = {SampleDrive()};
    operation.m_DriveList = {SampleDrive()};
    operation.m_LevelList.emplace_back().m_Values = {1, 2};
    operation.m_MigrationList.emplace_back().m_Properties = {FilledProperty(PropertyType::LONG)};
    operation.m_EventList = {SampleEvent()};
    operation.m_PartitionList.emplace_back().m_Text1 = LONG_TEXT;
    return operation;
}

CObject SampleObject() {
    static const std::uint64_t uniqueID = CObject().m_UniqueID;
    CObject object;
    object.m_UniqueID = uniqueID;
    object.m_RelatedIDs1 = {1, 2};
    object.m_RelatedIDs2 = {3};
    object.m_Properties = {FilledProperty(PropertyType::MULTI_STRING), FilledProperty(PropertyType::XML)};
    object.m_Operations = {SampleOperation()};
    CObject inner;
    inner.m_UniqueID = uniqueID;
    inner.m_RelatedIDs1 = {4};
    object.m_Operations[0].m_ObjectList = {inner};
    return object;
}

CTask SampleTask() {
    static const CTask made;
    CTask task(made);
    task.m_TaskText1 = LONG_TEXT;
    task.m_TaskText3 = LONG_TEXT;
    task.m_Operations = {SampleOperation()};
    return task;
}

/// A copy of a sample is made whole or not at all; an assigned one can be assigned again.
template <class Record>
void ExpectCopiesToFailCleanly(const Record& sample, const Record& other) {
    const Record reference = sample;
    RunOutOfMemoryEverywhere([] { return std::optional<Record>(); },
                             [&](std::optional<Record>& copy) { copy.emplace(sample); },
                             [&](const std::optional<Record>& copy, Ending ending) {
                                 EXPECT_NE(ending, Ending::ABSORBED);
                                 EXPECT_EQ(copy.has_value(), ending == Ending::DONE);
                                 EXPECT_TRUE(!copy || *copy == reference);
                                 EXPECT_TRUE(sample == reference);
                             });
    RunOutOfMemoryEverywhere([&] { return other; }, [&](Record& target) { target = sample; },
                             [&](Record& target, Ending ending) {
                                 EXPECT_NE(ending, Ending::ABSORBED);
                                 EXPECT_TRUE(ending == Ending::THREW || target == reference);
                                 EXPECT_TRUE(sample == reference);
                                 const Record copyOfWhatIsLeft(target);
                                 target = sample;
                                 EXPECT_TRUE(target == reference);
                             });
}

/// A list of samples that a further one was not added to holds what it held.
template <class Record>
void ExpectListsToFailCleanly(const Record& sample) {
    RunOutOfMemoryEverywhere([&] { return std::vector<Record>(4, sample); },
                             [&](std::vector<Record>& list) { list.push_back(sample); },
                             [&](const std::vector<Record>& list, Ending ending) {
                                 EXPECT_NE(ending, Ending::ABSORBED);
                                 EXPECT_EQ(list.size(), ending == Ending::DONE ? 5U : 4U);
                                 for (const Record& record : list) {
                                     EXPECT_TRUE(record == sample);
                                 }
                             });
}

template <class Record>
void ExpectMovesToNeedNoMemory(Record source, const Record& reference) {
    Record target;
    EXPECT_EQ(TryWithout(0, Shortage::LASTING,
                         [&] {
                             Record moved(std::move(source));
                             target = std::move(moved);
                         }),
              Ending::DONE);
    EXPECT_TRUE(target == reference);
}

}  // namespace

TEST(PropertyFaults, ACopyIsMadeWholeOrNotAtAll) {
    const CProperty source = FilledProperty(PropertyType::RANGE);
    const std::vector<std::string> expected = AllTexts(source);
    RunOutOfMemoryEverywhere([] { return std::optional<CProperty>(); },
                             [&](std::optional<CProperty>& copy) { copy.emplace(source); },
                             [&](const std::optional<CProperty>& copy, Ending ending) {
                                 EXPECT_NE(ending, Ending::ABSORBED);
                                 EXPECT_EQ(copy.has_value(), ending == Ending::DONE);
                                 EXPECT_TRUE(!copy || AllTexts(*copy) == expected);
                                 EXPECT_EQ(AllTexts(source), expected);
                             });
}

TEST(PropertyFaults, AnAssignmentThatFailsLeavesAPropertyToAssignTo) {
    const CProperty source = FilledProperty(PropertyType::RANGE);
    const std::vector<std::string> expected = AllTexts(source);
    RunOutOfMemoryEverywhere(
        OtherProperty, [&](CProperty& target) { target = source; },
        [&](CProperty& target, Ending ending) {
            EXPECT_NE(ending, Ending::ABSORBED);
            EXPECT_TRUE(ending == Ending::THREW || AllTexts(target) == expected);
            EXPECT_EQ(AllTexts(source), expected);
            EXPECT_EQ(AllTexts(CProperty(target)), AllTexts(target));
            target = source;
            EXPECT_EQ(AllTexts(target), expected);
        });
}

TEST(PropertyFaults, ASetterThatFailsKeepsTypeAndValue) {
    std::vector<int> numbers = {1, 2, 3, 4};
    std::vector<int> numbers2 = {5, 6, 7};
    std::vector<unsigned long> longs = {8, 9, 10};
    const std::vector<std::string> texts = {LONG_TEXT, LONG_TEXT, LONG_TEXT, LONG_TEXT, LONG_TEXT};
    VELK::XML::xml_document document;
    document.load_string("<New a='1'><Child>text</Child></New>");
    const std::vector<std::pair<_PROPERTY_TYPE, std::function<void(CProperty&)>>> setters = {
        {PropertyType::CHOICE, [&](CProperty& property) { property.SetValue(1, numbers); }},
        {PropertyType::MULTI_VALUE, [&](CProperty& property) { property.SetValue(numbers, numbers2); }},
        {PropertyType::MULTI_LONG, [&](CProperty& property) { property.SetValue(longs); }},
        {PropertyType::MULTI_STRING, [&](CProperty& property) { property.SetValue(texts, 1U); }},
        {PropertyType::XML, [&](CProperty& property) { property.SetValue(document); }},
        {PropertyType::STRING, [&](CProperty& property) { property.SetValue(" " + LONG_TEXT + " "); }},
        {PropertyType::STRING, [&](CProperty& property) { property.SetValue(LONG_TEXT.c_str()); }},
    };
    const CProperty before = FilledProperty(PropertyType::RANGE);
    for (const auto& setter : setters) {
        const _PROPERTY_TYPE type = setter.first;
        const auto& set = setter.second;
        CProperty expected = before;
        set(expected);
        RunOutOfMemoryEverywhere(
            [&] { return before; }, set,
            [&](CProperty& property, Ending ending) {
                EXPECT_NE(ending, Ending::ABSORBED);
                const bool done = ending == Ending::DONE;
                EXPECT_EQ(property.m_Type, done ? type : before.m_Type);
                EXPECT_EQ(property.m_Format, done ? expected.m_Format : before.m_Format);
                for (const _PROPERTY_TYPE kind : DATA_TYPES) {
                    if (kind != type || done) {
                        EXPECT_EQ(KindText(property, kind), KindText(expected, kind));
                    }
                }
                if (!done && type != PropertyType::MULTI_STRING && type != PropertyType::XML) {
                    EXPECT_EQ(KindText(property, type), KindText(before, type));
                }
                EXPECT_EQ(IdentityText(property), IdentityText(before));
                set(property);
                EXPECT_EQ(AllTexts(property), AllTexts(expected));
            });
    }
}

TEST(PropertyFaults, AValueThatIsNoListStaysWhenItsSetterFails) {
    CProperty before = FilledProperty(PropertyType::STRING);
    before.m_Format = 4;
    RunOutOfMemoryEverywhere([&] { return before; },
                             [&](CProperty& property) { property.SetValue("ENC1(" + LONG_TEXT + ")"); },
                             [&](const CProperty& property, Ending ending) {
                                 EXPECT_NE(ending, Ending::ABSORBED);
                                 EXPECT_EQ(property.m_Data.m_String.m_Value,
                                           ending == Ending::DONE ? "ENC1(" + LONG_TEXT + ")" : "text");
                                 EXPECT_EQ(property.m_Format, 4);
                             });
}

TEST(PropertyFaults, AGetterThatFailsLeavesTheProperty) {
    CProperty property = FilledProperty(PropertyType::MULTI_STRING);
    property.m_Data.m_MultiString.m_Values = {LONG_TEXT, LONG_TEXT, LONG_TEXT};
    property.m_Data.m_String.m_Value = LONG_TEXT;
    const std::vector<std::string> expected = AllTexts(property);
    const auto expectCleanFailure = [&](auto out, const auto& get, const auto& wanted) {
        RunOutOfMemoryEverywhere([&] { return out; }, get,
                                 [&](const auto& value, Ending ending) {
                                     EXPECT_NE(ending, Ending::ABSORBED);
                                     EXPECT_TRUE(ending == Ending::THREW || value == wanted);
                                     EXPECT_EQ(AllTexts(property), expected);
                                 });
    };
    expectCleanFailure(
        std::string(), [&](std::string& text) { property.GetValueString(text); },
        LONG_TEXT + ", " + LONG_TEXT);
    expectCleanFailure(
        std::string(), [&](std::string& text) { text = property.GetValue(nullptr); },
        LONG_TEXT + ", " + LONG_TEXT);
    expectCleanFailure(
        std::vector<std::string>(), [&](std::vector<std::string>& texts) { property.GetValue(texts); },
        property.m_Data.m_MultiString.m_Values);
    expectCleanFailure(
        std::pair<int, std::vector<int>>(),
        [&](std::pair<int, std::vector<int>>& choice) { property.GetValue(choice.first, choice.second); },
        std::pair<int, std::vector<int>>(201, {202, 201, 203}));
    expectCleanFailure(
        std::vector<unsigned long>(),
        [&](std::vector<unsigned long>& values) { property.GetValue(values, false); },
        std::vector<unsigned long>{241, 0xFFFFFFFFFFFFFFFF});
    RunOutOfMemoryEverywhere([] { return std::make_unique<VELK::XML::xml_document>(); },
                             [&](auto& document) { property.GetValue(*document); },
                             [&](const auto& document, Ending ending) {
                                 EXPECT_NE(ending, Ending::ABSORBED);
                                 EXPECT_TRUE(ending == Ending::THREW ||
                                             TextOf(*document) == TextOf(property.m_Data.m_XML.m_Document));
                                 EXPECT_EQ(AllTexts(property), expected);
                             });
}

TEST(PropertyFaults, AComparisonOfDocumentsThatFailsSaysNothing) {
    const CProperty left = FilledProperty(PropertyType::XML);
    const CProperty right = left;
    RunOutOfMemoryEverywhere([] { return false; }, [&](bool& equal) { equal = left == right; },
                             [](bool equal, Ending ending) {
                                 EXPECT_NE(ending, Ending::ABSORBED);
                                 EXPECT_EQ(equal, ending == Ending::DONE);
                             });
}

TEST(PropertyFaults, AMoveNeedsNoMemory) {
    for (const _PROPERTY_TYPE type : DATA_TYPES) {
        ExpectMovesToNeedNoMemory(FilledProperty(type), FilledProperty(type));
    }
}

TEST(RecordFaults, CopiesFailCleanly) {
    ExpectCopiesToFailCleanly(SampleOperation(), COperation());
    ExpectCopiesToFailCleanly(SampleObject(), CObject());
    ExpectCopiesToFailCleanly(SampleTask(), CTask());
    ExpectCopiesToFailCleanly(SampleEvent(), CEvent());
    ExpectCopiesToFailCleanly(SampleOperation().m_LogicalDriveList[0], CLogicalDrive());
}

TEST(RecordFaults, ListsThatCannotGrowStayAsTheyAre) {
    ExpectListsToFailCleanly(FilledProperty(PropertyType::XML));
    ExpectListsToFailCleanly(SampleOperation());
    ExpectListsToFailCleanly(SampleObject());
    ExpectListsToFailCleanly(SampleEvent());
    ExpectListsToFailCleanly(SampleDrive());
}

TEST(RecordFaults, MovesNeedNoMemory) {
    ExpectMovesToNeedNoMemory(SampleOperation(), SampleOperation());
    ExpectMovesToNeedNoMemory(SampleObject(), SampleObject());
    ExpectMovesToNeedNoMemory(SampleTask(), SampleTask());
    ExpectMovesToNeedNoMemory(SampleEvent(), SampleEvent());
    ExpectMovesToNeedNoMemory(SampleDrive(), SampleDrive());
}

namespace {

std::string FiguresOf(const std::vector<CContainer>& containers) {
    std::string text;
    for (const CContainer& container : containers) {
        text += '[';
        for (const CDrive& drive : container.m_Drives) {
            text += TextOf(std::vector<std::uint64_t>{drive.m_ObjectID, drive.m_StartAddress,
                                                      drive.m_UsedSize, drive.m_LogicalDrive,
                                                      drive.m_LogicalOwner, drive.m_IsConfigurable});
        }
        text += ']';
    }
    return text;
}

std::string FiguresOf(const CArray& array) {
    return TextOf(std::vector<std::uint64_t>{array.m_Size, static_cast<std::uint64_t>(array.m_Units)}) +
           FiguresOf(array.m_Containers) + TextOf(array.m_LogicalDrives);
}

std::string FiguresOf(const CLogicalDrive& drive) {
    return TextOf(std::vector<std::uint64_t>{drive.m_Size, static_cast<std::uint64_t>(drive.m_Units),
                                             drive.m_SpanCount, drive.m_SpanSize}) +
           FiguresOf(drive.m_Containers) + TextOf(drive.m_GlobalHotSpares) + "|" +
           TextOf(drive.m_DedicatedHotSpares) + "|" + TextOf(drive.m_AssociatedLogicalDrives);
}

/// A record is read whole or not at all, never with a figure that fell back for want of memory.
template <class Record>
void ExpectDocumentsToFailCleanly(const char* text) {
    VELK::XML::xml_document document;
    ASSERT_TRUE(document.load_string(text));
    const std::string before = TextOf(document);
    const std::string expected = FiguresOf(Record(document));
    RunOutOfMemoryEverywhere([] { return std::optional<Record>(); },
                             [&](std::optional<Record>& record) { record.emplace(document); },
                             [&](const std::optional<Record>& record, Ending ending) {
                                 EXPECT_EQ(record.has_value(), ending != Ending::THREW);
                                 EXPECT_TRUE(!record || FiguresOf(*record) == expected);
                                 EXPECT_EQ(TextOf(document), before);
                             });
}

}  // namespace

// The numbers with a blank or a plus sign are read by a stream.
TEST(DocumentFaults, AnArrayIsReadWholeOrNotAtAll) {
    ExpectDocumentsToFailCleanly<CArray>(
        "<ArrayConfiguration Size=' 1024' Units='21025'><Containers><Container>"
        "<Drive ObjectID='1' StartAddress=' 2' UsedSize='+3' IsConfigurable='0' LogicalDrive='4'/>"
        "<Drive ObjectID='5' StartAddress='6'/></Container><Container/></Containers>"
        "<LogicalDrives><LogicalDrive ObjectID=' 7'/></LogicalDrives></ArrayConfiguration>");
}

TEST(DocumentFaults, ALogicalDriveIsReadWholeOrNotAtAll) {
    ExpectDocumentsToFailCleanly<CLogicalDrive>(
        "<LogicalDriveConfiguration Size='1024' Units=' 21025' SpanCount='+2' SpanSize='3'><Containers>"
        "<Container><Drive ObjectID=' 1' IsConfigurable='1'/></Container></Containers>"
        "<GlobalHotSpares><Drive ObjectID='8'/></GlobalHotSpares>"
        "<DedicatedHotSpares><Drive ObjectID='9'/><Drive ObjectID=' 10'/></DedicatedHotSpares>"
        "</LogicalDriveConfiguration>");
}
