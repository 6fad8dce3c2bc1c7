// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/property.h>

#include <algorithm>
#include <functional>
#include <type_traits>
#include <utility>

#include "model/property_samples.h"
#include "model/xml_samples.h"

namespace PI::Test {
namespace {

using VELK::XML::xml_document;

std::vector<_PROPERTY_TYPE> AllTypes() {
    std::vector<_PROPERTY_TYPE> types(DATA_TYPES.begin(), DATA_TYPES.end());
    types.insert(types.end(), OTHER_TYPES.begin(), OTHER_TYPES.end());
    return types;
}

// --- Copies

TEST(PropertyCopy, HoldsEveryFieldAndEveryKindWhateverTheType) {
    for (const _PROPERTY_TYPE type : AllTypes()) {
        const CProperty source = FilledProperty(type);
        const CProperty copy(source);
        EXPECT_EQ(AllTexts(copy), AllTexts(source)) << type;
    }
}

TEST(PropertyCopy, AssignmentReplacesEveryFieldAndEveryKindWhateverTheTypes) {
    for (const _PROPERTY_TYPE sourceType : AllTypes()) {
        for (const _PROPERTY_TYPE targetType : AllTypes()) {
            const CProperty source = FilledProperty(sourceType);
            CProperty fresh;
            fresh.m_Type = targetType;
            fresh = source;
            EXPECT_EQ(AllTexts(fresh), AllTexts(source));

            CProperty filled = FilledProperty(targetType);
            filled = CProperty(std::as_const(fresh));
            EXPECT_EQ(AllTexts(filled), AllTexts(source));
        }
    }
}

TEST(PropertyCopy, AssignmentOfANewPropertyEmptiesEveryKind) {
    const CProperty source;
    CProperty target = FilledProperty(PropertyType::XML);
    target = source;
    EXPECT_EQ(AllTexts(target), AllTexts(source));
    EXPECT_FALSE(target.m_Data.m_XML.m_Document.first_child());
}

TEST(PropertyCopy, AssignmentReturnsTheTarget) {
    const CProperty source = FilledProperty();
    CProperty target;
    EXPECT_EQ(&(target = source), &target);
    CProperty other;
    other = target = source;
    EXPECT_EQ(AllTexts(other), AllTexts(source));
}

TEST(PropertyCopy, SelfAssignmentKeepsEverything) {
    for (const _PROPERTY_TYPE type : AllTypes()) {
        CProperty property = FilledProperty(type);
        const CProperty& itself = property;
        property = itself;
        EXPECT_EQ(AllTexts(property), AllTexts(FilledProperty(type)));
    }
}

TEST(PropertyCopy, SharesNothingWithItsSource) {
    CProperty source = FilledProperty();
    const CProperty constructed(source);
    CProperty assigned;
    assigned = source;

    source.m_Data.m_Choice.m_Choices[0] = 0;
    source.m_Data.m_String.m_Value[0] = '?';
    source.m_Data.m_MultiValue.m_Values[0] = 0;
    source.m_Data.m_MultiValue.m_Values2[0] = 0;
    source.m_Data.m_MultiLong.m_Values[0] = 0;
    source.m_Data.m_XML.m_Document.child("Root").append_child("More");
    source.m_Data.m_MultiString.m_Values[0][0] = '?';

    EXPECT_EQ(AllTexts(constructed), AllTexts(FilledProperty()));
    EXPECT_EQ(AllTexts(assigned), AllTexts(FilledProperty()));
}

TEST(PropertyCopy, OutlivesItsSource) {
    CProperty copy;
    {
        const CProperty source = FilledProperty();
        copy = source;
    }
    EXPECT_EQ(AllTexts(copy), AllTexts(FilledProperty()));
}

// --- Copies of XML documents

/// Every way by which the library copies a document.
struct CopyWay {
    const char* m_Name;
    std::function<void(const CProperty& source, CProperty& target)> m_Copy;
};

std::vector<CopyWay> CopyWays() {
    return {
        {"property constructed",
         [](const CProperty& source, CProperty& target) {
             CProperty copy(source);
             target.m_Data.m_XML = std::move(copy.m_Data.m_XML);
         }},
        {"property assigned", [](const CProperty& source, CProperty& target) { target = source; }},
        {"kind constructed", [](const CProperty& source,
                                CProperty& target) { target.m_Data.m_XML = CXMLData(source.m_Data.m_XML); }},
        {"kind assigned",
         [](const CProperty& source, CProperty& target) { target.m_Data.m_XML = source.m_Data.m_XML; }},
        {"data assigned", [](const CProperty& source, CProperty& target) { target.m_Data = source.m_Data; }},
        {"set",
         [](const CProperty& source, CProperty& target) { target.SetValue(source.m_Data.m_XML.m_Document); }},
        {"got",
         [](const CProperty& source, CProperty& target) {
             CProperty changeable;
             changeable.m_Data.m_XML.m_Document.reset(source.m_Data.m_XML.m_Document);
             changeable.GetValue(target.m_Data.m_XML.m_Document);
         }},
    };
}

void ExpectCopiedLikeText(const xml_document& document) {
    CProperty source;
    source.m_Data.m_XML.m_Document.reset(document);
    const std::string sourceTree = TreeOf(document);
    xml_document expected;
    CopyByText(document, expected);
    for (const CopyWay& way : CopyWays()) {
        for (const bool isTargetFilled : {false, true}) {
            CProperty target;
            if (isTargetFilled) {
                target.m_Data.m_XML.m_Document.load_string("<?p q?><!--c--><Before>b</Before>",
                                                           PARSE_EVERYTHING);
            }
            way.m_Copy(source, target);
            ASSERT_EQ(TreeOf(target.m_Data.m_XML.m_Document), TreeOf(expected))
                << way.m_Name << (isTargetFilled ? ", filled target" : "") << ":\n"
                << CopyText(document);
            ASSERT_EQ(TreeOf(source.m_Data.m_XML.m_Document), sourceTree) << way.m_Name;
        }
    }
}

TEST(PropertyXMLCopy, EqualsWritingAndReadingItsText) {
    const char* const documents[] = {
        "",
        "<A/>",
        "<A></A>",
        "<A>text</A>",
        "<A> text </A>",
        "<A>\n</A>",
        "<A> <B/> </A>",
        "<A>one<B/>two</A>",
        "<A>&lt;&amp;&gt;&quot;&apos;&#9;&#10;&#13;&#xE4;</A>",
        "<A b='&quot;&apos;&#9;&#10;&#13;&lt;'/>",
        "<A><![CDATA[]]></A>",
        "<A><![CDATA[<&>]]></A>",
        "<A>a<![CDATA[b]]>c</A>",
        "<A/><B/>",
        "<!--c-->",
        "<!--c--><A><!--d--></A>",
        "<?p q?>",
        "<?p q?><A><?r?></A>",
        "<?xml version='1.0'?>",
        "<?xml version='1.0' encoding='latin1'?><A/>",
        "<!DOCTYPE A>",
        "<!DOCTYPE A [<!ENTITY e 'x'>]><A>&e;</A>",
        "   \n\t",
        "loose text",
        "loose <A/> text",
    };
    for (const char* text : documents) {
        xml_document document;
        ASSERT_TRUE(document.load_string(text, PARSE_EVERYTHING)) << text;
        ExpectCopiedLikeText(document);
    }
}

TEST(PropertyXMLCopy, EqualsWritingAndReadingItsTextForRandomDocuments) {
    DocumentMaker maker(RandomSeed());
    for (int round = 0; round < 3000; ++round) {
        xml_document document;
        maker.Make(document);
        ExpectCopiedLikeText(document);
        if (HasFatalFailure()) {
            return;
        }
    }
}

TEST(PropertyXMLCopy, ComparisonEqualsComparingTheTextsOfRandomDocuments) {
    DocumentMaker maker(RandomSeed());
    std::vector<CProperty> properties(40);
    for (CProperty& property : properties) {
        property.m_Type = PropertyType::XML;
        maker.Make(property.m_Data.m_XML.m_Document);
    }
    properties.resize(2 * properties.size());
    std::copy_n(properties.begin(), 40, properties.begin() + 40);
    for (const CProperty& left : properties) {
        for (const CProperty& right : properties) {
            const std::string leftText = CopyText(left.m_Data.m_XML.m_Document);
            const std::string rightText = CopyText(right.m_Data.m_XML.m_Document);
            ASSERT_EQ(left == right, leftText == rightText) << leftText << "\nand\n" << rightText;
        }
    }
}

TEST(PropertyXMLCopy, KeepsElementsAttributesAndTextOnly) {
    CProperty source;
    source.m_Data.m_XML.m_Document.load_string(
        "<?xml version='1.0'?><!DOCTYPE A><!--c--><A x='1'><?p q?> <B>t</B> <![CDATA[<d>]]> </A>",
        PARSE_EVERYTHING);
    const CProperty copy(source);
    EXPECT_EQ(TextOf(copy.m_Data.m_XML.m_Document), "<A x=\"1\"><B>t</B><![CDATA[<d>]]></A>");
}

TEST(PropertyXMLCopy, ADocumentThatItsTextCannotHoldIsCopiedAsFarAsItCanBeRead) {
    CProperty source;
    VELK::XML::xml_node root = source.m_Data.m_XML.m_Document.append_child("Root");
    root.append_child("Good");
    root.append_child("<");
    root.append_child("Lost");
    CProperty copy;
    EXPECT_NO_THROW(copy = source);
    EXPECT_EQ(TextOf(copy.m_Data.m_XML.m_Document), "<Root><Good/></Root>");
}

TEST(PropertyXMLCopy, SelfAssignmentGoesThroughTextToo) {
    CProperty property;
    property.m_Data.m_XML.m_Document.load_string("<A><!--c--></A>", PARSE_EVERYTHING);
    const CProperty& itself = property;
    property = itself;
    EXPECT_EQ(TextOf(property.m_Data.m_XML.m_Document), "<A/>");
}

TEST(PropertyXMLCopy, GettingIntoTheStoredDocumentItselfKeepsIt) {
    CProperty property = FilledProperty(PropertyType::XML);
    property.GetValue(property.m_Data.m_XML.m_Document);
    EXPECT_EQ(KindText(property, PropertyType::XML), KindText(FilledProperty(), PropertyType::XML));
}

TEST(PropertyXMLCopy, CopiesDeepAndLargeDocuments) {
    CProperty source;
    VELK::XML::xml_node node = source.m_Data.m_XML.m_Document.append_child("Root");
    for (int depth = 0; depth < 300; ++depth) {
        node = node.append_child("Level");
        node.append_attribute("depth") = depth;
    }
    for (int i = 0; i < 2000; ++i) {
        node.append_child("Leaf").text() = i;
    }
    const CProperty copy(source);
    EXPECT_EQ(TreeOf(copy.m_Data.m_XML.m_Document), TreeOf(source.m_Data.m_XML.m_Document));
}

// --- Moves

template <class... Types>
constexpr bool MOVE_WITHOUT_THROWING = ((std::is_nothrow_move_constructible_v<Types> &&
                                         std::is_nothrow_move_assignable_v<Types>)&&...);
template <class... Types>
constexpr bool CAN_BE_COPIED = ((std::is_copy_constructible_v<Types> &&
                                 std::is_copy_assignable_v<Types>)&&...);

static_assert(MOVE_WITHOUT_THROWING<CProperty, CProperty::_DATA, CChoiceData, CRangeData, CStringData,
                                    CBoolData, CLongData, CSignedLongData, CMultiValueData, CFloatData,
                                    CMultiLongData, CXMLData, CMultiStringData>);
static_assert(
    CAN_BE_COPIED<CProperty, CProperty::_DATA, CChoiceData, CRangeData, CStringData, CBoolData, CLongData,
                  CSignedLongData, CMultiValueData, CFloatData, CMultiLongData, CXMLData, CMultiStringData>);

// Only a move keeps the comment.
constexpr char COMMENTED[] = "<?p q?><A><!--kept--></A>";

CProperty CommentedProperty(std::int32_t mark = 0) {
    CProperty property = FilledProperty(PropertyType::XML);
    property.m_Attribute5 = mark;
    property.m_Data.m_XML.m_Document.load_string(COMMENTED, PARSE_EVERYTHING);
    return property;
}

bool HasComment(const CProperty& property) {
    return TextOf(property.m_Data.m_XML.m_Document) == COMMENTED;
}

TEST(PropertyMove, TheCommentTellsACopyFromAMove) {
    CProperty source = CommentedProperty();
    ASSERT_TRUE(HasComment(source));
    EXPECT_FALSE(HasComment(CProperty(source)));
    EXPECT_TRUE(HasComment(CProperty(std::move(source))));
}

TEST(PropertyMove, HoldsEveryFieldAndEveryKindWhateverTheType) {
    for (const _PROPERTY_TYPE type : AllTypes()) {
        CProperty source = FilledProperty(type);
        CProperty constructed(std::move(source));
        EXPECT_EQ(AllTexts(constructed), AllTexts(FilledProperty(type)));
        CProperty assigned = CommentedProperty();
        assigned = std::move(constructed);
        EXPECT_EQ(AllTexts(assigned), AllTexts(FilledProperty(type)));
    }
}

TEST(PropertyMove, AssignmentKeepsTheDocumentAndReturnsTheTarget) {
    CProperty source = CommentedProperty();
    CProperty target = FilledProperty();
    EXPECT_EQ(&(target = std::move(source)), &target);
    EXPECT_TRUE(HasComment(target));
}

TEST(PropertyMove, TheSourceCanBeAssignedTo) {
    CProperty source = CommentedProperty();
    const CProperty taken(std::move(source));
    source = FilledProperty(PropertyType::STRING);
    EXPECT_EQ(AllTexts(source), AllTexts(FilledProperty(PropertyType::STRING)));
    source = taken;
    EXPECT_EQ(source.m_Type, PropertyType::XML);
}

TEST(PropertyMove, TheMovedDocumentIsUsableAfterItsSourceIsGone) {
    CProperty target;
    {
        CProperty source = CommentedProperty();
        target = std::move(source);
    }
    target.m_Data.m_XML.m_Document.child("A").append_child("B").text() = "new";
    EXPECT_EQ(TextOf(target.m_Data.m_XML.m_Document), "<?p q?><A><!--kept--><B>new</B></A>");
}

TEST(PropertyMove, SwapMovesBothWays) {
    CProperty left = CommentedProperty(1);
    CProperty right = CommentedProperty(2);
    std::swap(left, right);
    EXPECT_EQ(left.m_Attribute5, 2);
    EXPECT_EQ(right.m_Attribute5, 1);
    EXPECT_TRUE(HasComment(left));
    EXPECT_TRUE(HasComment(right));
}

TEST(PropertyMove, AGrowingVectorMoves) {
    std::vector<CProperty> properties;
    for (std::int32_t mark = 0; mark < 100; ++mark) {
        properties.push_back(CommentedProperty(mark));
    }
    properties.reserve(2 * properties.capacity());
    for (std::int32_t mark = 0; mark < 100; ++mark) {
        EXPECT_EQ(properties[static_cast<std::size_t>(mark)].m_Attribute5, mark);
        EXPECT_TRUE(HasComment(properties[static_cast<std::size_t>(mark)])) << mark;
    }
}

TEST(PropertyMove, InsertionErasureSortingAndRotationMove) {
    std::vector<CProperty> properties;
    for (std::int32_t i = 0; i < 50; ++i) {
        properties.push_back(CommentedProperty(i * 37 % 50));
    }
    properties.insert(properties.begin(), CommentedProperty(50));
    properties.erase(properties.begin() + 10);
    std::rotate(properties.begin(), properties.begin() + 7, properties.end());
    std::sort(properties.begin(), properties.end(), [](const CProperty& left, const CProperty& right) {
        return left.m_Attribute5 < right.m_Attribute5;
    });
    EXPECT_EQ(properties.size(), 50U);
    EXPECT_TRUE(std::all_of(properties.begin(), properties.end(), HasComment));
}

TEST(PropertyMove, EachKindMoves) {
    const std::string longText(100, 'x');
    CProperty::_DATA data = FilledProperty().m_Data;
    data.m_String.m_Value = longText;
    const char* characters = data.m_String.m_Value.data();
    const int* choices = data.m_Choice.m_Choices.data();
    const int* values = data.m_MultiValue.m_Values.data();
    const int* values2 = data.m_MultiValue.m_Values2.data();
    const unsigned long* longs = data.m_MultiLong.m_Values.data();
    const std::string* texts = data.m_MultiString.m_Values.data();

    const CProperty::_DATA moved = std::move(data);

    EXPECT_EQ(moved.m_String.m_Value.data(), characters);
    EXPECT_EQ(moved.m_Choice.m_Choices.data(), choices);
    EXPECT_EQ(moved.m_MultiValue.m_Values.data(), values);
    EXPECT_EQ(moved.m_MultiValue.m_Values2.data(), values2);
    EXPECT_EQ(moved.m_MultiLong.m_Values.data(), longs);
    EXPECT_EQ(moved.m_MultiString.m_Values.data(), texts);
}

}  // namespace
}  // namespace PI::Test
