// SPDX-License-Identifier: Apache-2.0
// Records as JSON and back.

#include <gtest/gtest.h>
#include <pi/exchange/model_json.h>

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include "every_field.h"
#include "model/property_samples.h"
#include "support/record_checks.h"

using namespace PI;
using namespace PI::Test;
using Json = nlohmann::json;

namespace {

/// Before any test has made an object.
const std::uint64_t FIRST_IDENTIFIER = CObject::m_UniqueIDCounter;

template <class Record>
Record ReadBack(const std::string& text) {
    Record read;
    std::string reason = "set";
    EXPECT_TRUE(FromJson(text, read, reason)) << text;
    EXPECT_EQ(reason, "");
    return read;
}

template <class Record>
Record AfterTheTrip(const Record& record) {
    return ReadBack<Record>(ToJson(record));
}

template <class Record>
void ExpectNoFieldMissing(std::size_t begin) {
    const Record record;
    FieldChain<Record> chain(record, begin);
    ForEachField<Record>([&](auto field) {
        chain.template Then<std::remove_const_t<std::remove_reference_t<decltype(record.*field)>>>(field);
    });
    chain.End();
}

template <class Record>
class EveryRecord : public testing::Test {};
using Records = testing::Types<CProperty, CObject, COperation, CTask, CEvent, CDrive, CContainer,
                               CLogicalDrive, CArray, CLevel, CPartition, CMigration>;
TYPED_TEST_SUITE(EveryRecord, Records, );

template <class Record>
Json JsonOf(const Record& record) {
    return Json::parse(ToJson(record));
}

}  // namespace

TEST(EveryField, NoneIsMissingInTheComparison) {
    constexpr std::size_t TABLE = sizeof(void*);
    ExpectNoFieldMissing<CChoiceData>(TABLE);
    ExpectNoFieldMissing<CRangeData>(TABLE);
    ExpectNoFieldMissing<CStringData>(TABLE);
    ExpectNoFieldMissing<CBoolData>(TABLE);
    ExpectNoFieldMissing<CLongData>(TABLE);
    ExpectNoFieldMissing<CSignedLongData>(TABLE);
    ExpectNoFieldMissing<CMultiValueData>(TABLE);
    ExpectNoFieldMissing<CFloatData>(TABLE);
    ExpectNoFieldMissing<CMultiLongData>(TABLE);
    ExpectNoFieldMissing<CXMLData>(TABLE);
    ExpectNoFieldMissing<CMultiStringData>(TABLE);
    ExpectNoFieldMissing<CProperty::_DATA>(0);
    ExpectNoFieldMissing<CProperty>(TABLE);
    ExpectNoFieldMissing<CDrive>(TABLE);
    ExpectNoFieldMissing<CContainer>(TABLE);
    ExpectNoFieldMissing<CLogicalDrive>(TABLE);
    ExpectNoFieldMissing<CArray>(TABLE);
    ExpectNoFieldMissing<CLevel>(TABLE);
    ExpectNoFieldMissing<CPartition>(TABLE);
    ExpectNoFieldMissing<CMigration>(TABLE);
    ExpectNoFieldMissing<CEvent>(TABLE);
    ExpectNoFieldMissing<COperation>(TABLE);
    ExpectNoFieldMissing<CObject>(TABLE);
    ExpectNoFieldMissing<CTask>(sizeof(CObject));
}

TYPED_TEST(EveryRecord, SurvivesInEveryField) {
    FieldFiller filler(RandomSeed());
    for (int i = 0; i < 10000; ++i) {
        TypeParam record;
        filler.Fill(record);
        const std::string text = ToJson(record);
        TypeParam read;
        std::string reason;
        ASSERT_TRUE(FromJson(text, read, reason)) << reason << "\n" << text;
        ASSERT_TRUE(SameFields(record, read)) << text << "\n" << ToJson(read);
        // The first text of a document may hold what its second one does not: white space in a declaration.
        const std::string stable = ToJson(read);
        ASSERT_EQ(ToJson(ReadBack<TypeParam>(stable)), stable);
    }
}

TYPED_TEST(EveryRecord, IsOneLineOfUtf8) {
    FieldFiller filler(RandomSeed());
    for (int i = 0; i < 300; ++i) {
        TypeParam record;
        filler.Fill(record);
        const std::string text = ToJson(record);
        ASSERT_EQ(text.find('\n'), std::string::npos);
        ASSERT_TRUE(Json::accept(text)) << text;  // refuses what is no UTF-8
    }
}

TYPED_TEST(EveryRecord, WithoutMembersIsANewOne) {
    Json json = JsonOf(TypeParam());
    Json shortest = {{"record", json["record"]}, {"version", 1}};
    for (const char* identity : {"unique_id", "creation_time"}) {
        if (json.contains(identity)) {
            shortest[identity] = json[identity];
        }
    }
    EXPECT_EQ(JsonOf(ReadBack<TypeParam>(shortest.dump())), json);
}

TYPED_TEST(EveryRecord, UnknownMembersArePassedOver) {
    TypeParam record;
    FieldFiller filler(RandomSeed());
    filler.Fill(record);
    Json json = JsonOf(record);
    json["Version"] = "of another program";
    std::string text = json.dump();
    text.insert(text.size() - 1, R"(,"zz_later":{"id":"x","list":[1,{"a":null}],"deep":)" +
                                     std::string(5000, '[') + std::string(5000, ']') + "}");
    EXPECT_TRUE(SameFields(ReadBack<TypeParam>(text), record));
}

TYPED_TEST(EveryRecord, OrderAndWhiteSpaceDoNotMatter) {
    TypeParam record;
    FieldFiller filler(RandomSeed());
    filler.Fill(record);
    const std::string sorted = "\xEF\xBB\xBF\r\n " + JsonOf(record).dump(4) + "\r\n\t";
    EXPECT_TRUE(SameFields(ReadBack<TypeParam>(sorted), record));
}

TEST(PropertyJson, ReadsAsTheGuideShows) {
    CProperty property(PropertyID::STATUS, true);
    property.SetValue(PropertyValue::RAID0, {PropertyValue::RAID0, 3});
    EXPECT_EQ(ToJson(property),
              R"({"record":"property","version":1,"id":30017,"id_name":"STATUS","secondary_id":30017,)"
              R"("attribute1":1,"attribute2":1,"attribute3":-1,"attribute4":1,"attribute5":1,)"
              R"("type":3,"type_name":"CHOICE","format":0,"flag1":true,"attribute6":1,"flag2":true,)"
              R"("data":{"choice":{"value":40007,"value_name":"RAID0","choices":[40007,3],)"
              R"("choice_names":["RAID0",""]}}})");
}

TEST(PropertyJson, AllElevenKindsAtOnceSurvive) {
    for (const _PROPERTY_TYPE type : DATA_TYPES) {
        const CProperty property = FilledProperty(type);
        EXPECT_EQ(JsonOf(property)["data"].size(), 11U);
        EXPECT_EQ(AllTexts(AfterTheTrip(property)), AllTexts(property));
    }
}

TEST(PropertyJson, AKindOfANewPropertyIsLeftOutUnlessItCounts) {
    const std::pair<_PROPERTY_TYPE, const char*> KINDS[] = {{PropertyType::STRING, "string"},
                                                            {PropertyType::CHOICE, "choice"},
                                                            {PropertyType::BOOL, "bool"},
                                                            {PropertyType::LONG, "long"},
                                                            {PropertyType::SIGNED_LONG, "signed_long"},
                                                            {PropertyType::RANGE, "range"},
                                                            {PropertyType::MULTI_VALUE, "multi_value"},
                                                            {PropertyType::FLOAT, "float"},
                                                            {PropertyType::MULTI_LONG, "multi_long"},
                                                            {PropertyType::XML, "xml"},
                                                            {PropertyType::MULTI_STRING, "multi_string"}};
    for (const auto& [type, name] : KINDS) {
        CProperty property;
        property.m_Type = type;
        const Json data = JsonOf(property)["data"];
        EXPECT_EQ(data.size(), 1U);
        EXPECT_TRUE(data.contains(name)) << data;
    }
    for (const _PROPERTY_TYPE type : OTHER_TYPES) {
        CProperty property;
        property.m_Type = type;
        EXPECT_EQ(JsonOf(property)["data"], Json::object());
    }
}

TEST(PropertyJson, TypesHaveTheirNames) {
    constexpr const char* NAMES[] = {
        "NONE",  "UNDEFINED",   "STRING", "CHOICE",     "BOOL", "LONG",         "SIGNED_LONG",
        "RANGE", "MULTI_VALUE", "FLOAT",  "MULTI_LONG", "XML",  "MULTI_STRING", ""};
    for (int type = 0; type < 14; ++type) {
        CProperty property;
        property.m_Type = static_cast<_PROPERTY_TYPE>(type);
        EXPECT_EQ(JsonOf(property)["type_name"], NAMES[type]);
    }
}

TEST(PropertyJson, NumbersDecideAndNamesArePassedOver) {
    CProperty property(PropertyID::STATUS, true);
    property.SetValue(PropertyValue::RAID0, {PropertyValue::RAID0});
    Json json = JsonOf(property);
    json["id_name"] = "VENDOR";
    json["type_name"] = 7;
    json["data"]["choice"].erase("value_name");
    json["data"]["choice"]["choice_names"] = nullptr;
    EXPECT_TRUE(SameFields(ReadBack<CProperty>(json.dump()), property));
}

TEST(NumbersJson, BeyondDoublePrecisionTheyAreTexts) {
    constexpr std::int64_t EDGE = std::int64_t{1} << 53;
    const std::pair<std::uint64_t, Json> UNSIGNED[] = {
        {0, 0},
        {EDGE - 1, EDGE - 1},
        {EDGE, EDGE},
        {EDGE + 1, "9007199254740993"},
        {std::numeric_limits<std::uint64_t>::max(), "18446744073709551615"}};
    for (const auto& [number, expected] : UNSIGNED) {
        CDrive drive;
        drive.m_ObjectID = number;
        EXPECT_EQ(JsonOf(drive)["object_id"], expected);
        EXPECT_EQ(AfterTheTrip(drive).m_ObjectID, number);
    }
    const std::pair<std::int64_t, Json> SIGNED[] = {
        {-1, -1},
        {EDGE, EDGE},
        {EDGE + 1, "9007199254740993"},
        {-EDGE, -EDGE},
        {-EDGE - 1, "-9007199254740993"},
        {std::numeric_limits<std::int64_t>::max(), "9223372036854775807"},
        {std::numeric_limits<std::int64_t>::min(), "-9223372036854775808"}};
    for (const auto& [number, expected] : SIGNED) {
        CProperty property;
        property.SetValue(static_cast<long>(number));
        EXPECT_EQ(JsonOf(property)["data"]["signed_long"]["value"], expected);
        EXPECT_EQ(AfterTheTrip(property).m_Data.m_SignedLong.m_Value, number);
    }
}

TEST(NumbersJson, WholeNumbersAreReadAsOtherProgramsWriteThem) {
    const std::pair<const char*, std::uint64_t> CASES[] = {
        {"5", 5},
        {"5.0", 5},
        {"-0", 0},
        {"-0.0", 0},
        {"1e3", 1000},
        {"9007199254740992.0", 9007199254740992},
        {"9007199254740993", 9007199254740993},
        {"18446744073709551615", 18446744073709551615U},
        {"\"5\"", 5},
        {"\"007\"", 7},
        {"\"18446744073709551615\"", 18446744073709551615U},
    };
    for (const auto& [text, number] : CASES) {
        const auto drive =
            ReadBack<CDrive>(std::string(R"({"record":"drive","version":1,"object_id":)") + text + "}");
        EXPECT_EQ(drive.m_ObjectID, number) << text;
    }
}

namespace {

std::string FloatText(float value) {
    CProperty property;
    property.SetValue(value);
    const std::string text = ToJson(property);
    const std::string before = R"("data":{"float":{"value":)";
    const std::size_t begin = text.find(before) + before.size();
    return text.substr(begin, text.size() - begin - 3);
}

float FloatOf(std::uint32_t bits) {
    float value = 0;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

}  // namespace

TEST(FloatsJson, HaveTheFewestDigitsThatGiveThemAgain) {
    using Limits = std::numeric_limits<float>;
    const std::pair<float, const char*> CASES[] = {
        {0.0F, "0"},
        {-0.0F, "-0.0"},
        {0.1F, "0.1"},
        {-2.5F, "-2.5"},
        {-5.0F, "-5"},
        {16777216.0F, "16777216"},
        {931.5125F, "931.5125"},
        {1e20F, "1e+20"},
        {Limits::max(), "3.4028235e+38"},
        {Limits::lowest(), "-3.4028235e+38"},
        {Limits::min(), "1.1754944e-38"},
        {Limits::denorm_min(), "1e-45"},
        {Limits::infinity(), "\"Infinity\""},
        {-Limits::infinity(), "\"-Infinity\""},
        {FloatOf(0x7FC00000), "\"NaN\""},
        {FloatOf(0xFFC00000), "\"NaN(ffc00000)\""},
        {FloatOf(0x7F800001), "\"NaN(7f800001)\""},  // a signalling one
        {FloatOf(0x7FFFFFFF), "\"NaN(7fffffff)\""},
    };
    for (const auto& [value, text] : CASES) {
        EXPECT_EQ(FloatText(value), text);
        CProperty property;
        property.m_Data.m_Float.m_Value = value;
        EXPECT_TRUE(SameFields(AfterTheTrip(property), property)) << text;
    }
}

// Its shortest text, 7.038531e-26, is nearer to the middle of two floats than double precision can tell.
TEST(FloatsJson, AreReadWithAnyNumberOfDigits) {
    const std::pair<std::string, float> CASES[] = {
        {"18446744073709551615", 18446744073709551616.0F},
        {"18446744073709551615.9", 18446744073709551616.0F},
        {"184467440737095516159e-1", 18446744073709551616.0F},
        {"0." + std::string(400, '1'), 0.11111111F},
        {"-0.0e-400", -0.0F},
        {"7.038531e-26", FloatOf(0x15AE43FE)},  // by way of double precision, as other readers do
    };
    for (const auto& [text, value] : CASES) {
        CProperty expected;
        expected.m_Data.m_Float.m_Value = value;
        const auto read = ReadBack<CProperty>(
            R"({"record":"property","version":1,"data":{"float":{"value":)" + text + "}}}");
        EXPECT_TRUE(SameFields(read, expected)) << text << " " << FloatText(read.m_Data.m_Float.m_Value);
    }
}

TEST(FloatsJson, SurviveReadersThatRoundTwice) {
    const float value = FloatOf(0x15AE43FD);
    EXPECT_EQ(static_cast<float>(std::strtod(FloatText(value).c_str(), nullptr)), value);
    CProperty property;
    property.SetValue(value);
    EXPECT_TRUE(SameFields(AfterTheTrip(property), property));
}

TEST(TextsJson, WhatIsUtf8IsATextAndAnythingElseBytes) {
    const std::string CASES[] = {
        "",
        std::string("a\0b", 3),
        "\"\\/\b\f\n\r\t\x01\x1F\x7F",
        "\xC2\x80 \xDF\xBF \xE0\xA0\x80 \xED\x9F\xBF \xEE\x80\x80 \xEF\xBF\xBF \xF0\x90\x80\x80 "
        "\xF4\x8F\xBF\xBF",
    };
    for (const std::string& text : CASES) {
        CPartition partition;
        partition.m_Text1 = text;
        EXPECT_EQ(JsonOf(partition)["text1"], text);
        EXPECT_EQ(AfterTheTrip(partition).m_Text1, text);
    }
    const std::pair<std::string, const char*> BYTES[] = {
        {"\x80", "80"},
        {"caf\xE9", "636166e9"},
        {"\xC0\x80", "c080"},  // two bytes where one would do
        {"\xC1\xBF", "c1bf"},
        {"\xE0\x9F\xBF", "e09fbf"},        // three where two would do
        {"\xED\xA0\x80", "eda080"},        // half a surrogate pair
        {"\xF0\x8F\xBF\xBF", "f08fbfbf"},  // four where three would do
        {"\xF4\x90\x80\x80", "f4908080"},  // behind the last character
        {"\xF5\x80\x80\x80", "f5808080"},
        {"\xE2\x82", "e282"},  // ends early
        {std::string("\xE2\x82\0", 3), "e28200"},
        {"\xFF\xFE", "fffe"},
    };
    for (const auto& [text, digits] : BYTES) {
        CPartition partition;
        partition.m_Text2 = text;
        EXPECT_EQ(JsonOf(partition)["text2"]["bytes"], digits);
        EXPECT_EQ(AfterTheTrip(partition).m_Text2, text);
    }
}

TEST(TextsJson, BytesHaveAReadableTextBeside) {
    CPartition partition;
    partition.m_Text1 = "caf\xE9 \xE2\x82\xAC\xE2\x82";
    EXPECT_EQ(JsonOf(partition)["text1"]["text"], "caf\xEF\xBF\xBD \xE2\x82\xAC\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(TextsJson, CapitalDigitsAreReadToo) {
    const auto read = ReadBack<CPartition>(R"({"record":"partition","version":1,"text1":{"bytes":"E9fF"}})");
    EXPECT_EQ(read.m_Text1, "\xE9\xFF");
}

TEST(DocumentsJson, KeepWhatACopyLoses) {
    constexpr const char* CASES[] = {
        "",
        "<a/>",
        "<?xml version=\"1.0\"?><!DOCTYPE a [<!ENTITY e \"x\">]><!-- c --><a b=\"1\n2\t3 &lt;&quot;\"> text "
        "<?pi x?>"
        "<![CDATA[<raw>]]>\r\n\t<b/> </a><!--end-->",
        "<a>&#1;&#13;&amp;</a>",
        "<caf\xC3\xA9 latin1=\"\xE9\"/>",
    };
    for (const char* text : CASES) {
        CProperty property;
        property.m_Data.m_XML.m_Document.load_string(text, PARSE_EVERYTHING & ~VELK::XML::parse_eol);
        property.m_Type = PropertyType::XML;
        EXPECT_EQ(TreeOf(AfterTheTrip(property).m_Data.m_XML.m_Document),
                  TreeOf(property.m_Data.m_XML.m_Document))
            << text;
    }
}

TEST(DocumentsJson, WhatNoTextCanHoldCostsNothingElse) {
    CProperty property;
    property.m_Data.m_XML.m_Document.append_child("a b<").append_child("c");
    property.m_SecondaryID = 77;
    EXPECT_EQ(AfterTheTrip(property).m_SecondaryID, 77);
}

TEST(EventsJson, CarryWhatACopyLeavesOut) {
    CEvent event;
    event.m_Resolved1 = "resolved";
    event.m_Resolved6 = "too";
    event.m_Scratch = "scratch";
    EXPECT_TRUE(SameFields(AfterTheTrip(event), event));

    COperation operation;
    operation.m_EventList = std::vector<CEvent>(9);
    operation.m_EventList[8].m_Scratch = "scratch";
    operation.m_EventList[0].m_Resolved2 = "resolved";
    EXPECT_TRUE(SameFields(AfterTheTrip(operation), operation));
}

TEST(NamesJson, StandBesideTheNumbersOfTheVocabulary) {
    CEvent event;
    event.m_EventID = 10056;
    event.m_Severity = Severity::WARNING;
    EXPECT_EQ(JsonOf(event)["event_id_name"], EventIDToString(10056));
    EXPECT_EQ(JsonOf(event)["severity_name"], "WARNING");
    event.m_EventID = 0xFFFFFFFF;
    EXPECT_EQ(JsonOf(event)["event_id_name"], "");

    COperation operation;
    operation.m_Header1 = OperationID::ALARM_ON;
    EXPECT_EQ(JsonOf(operation)["header1_name"], "ALARM_ON");

    CTask task;
    task.m_ObjectType = ObjectType::ADAPTER_9;
    EXPECT_EQ(JsonOf(task)["object_type_name"], "ADAPTER_9");
    EXPECT_EQ(JsonOf(CObject(1, ObjectType::UNDEFINED))["object_type_name"], "UNDEFINED");
    constexpr _OBJECT_TYPE ADAPTERS[] = {ObjectType::ADAPTER_1, ObjectType::ADAPTER_2, ObjectType::ADAPTER_3,
                                         ObjectType::ADAPTER_4, ObjectType::ADAPTER_5, ObjectType::ADAPTER_6,
                                         ObjectType::ADAPTER_7, ObjectType::ADAPTER_8, ObjectType::ADAPTER_9};
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(JsonOf(CObject(1, ADAPTERS[i]))["object_type_name"], "ADAPTER_" + std::to_string(i + 1));
    }
    EXPECT_EQ(JsonOf(task)["task_status_name"], "OK");
    task.m_TaskStatus = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(JsonOf(task)["task_status_name"], "");

    constexpr std::pair<_UNITS, const char*> UNITS[] = {{Units::BYTES, "BYTES"},
                                                        {Units::KILOBYTES, "KILOBYTES"},
                                                        {Units::MEGABYTES, "MEGABYTES"},
                                                        {Units::GIGABYTES, "GIGABYTES"},
                                                        {Units::TERABYTES, "TERABYTES"},
                                                        {Units::PETABYTES, "PETABYTES"},
                                                        {Units::UNSPECIFIED, "UNSPECIFIED"}};
    for (const auto& [unit, name] : UNITS) {
        CArray array;
        array.m_Units = unit;
        EXPECT_EQ(JsonOf(array)["units_name"], name);
    }
}

TEST(ObjectsJson, CarryTheirIdentifierAndTakeNone) {
    CObject object;
    object.m_Operations.emplace_back().m_ObjectList.resize(3);
    const std::string text = ToJson(object);
    const std::uint64_t next = CObject::m_UniqueIDCounter;
    CObject read;
    std::string reason;
    ASSERT_TRUE(FromJson(text, read, reason));
    EXPECT_EQ(CObject::m_UniqueIDCounter, next + 1);  // that of `read` as it was made
    EXPECT_EQ(read.m_UniqueID, object.m_UniqueID);
    EXPECT_EQ(read.m_Operations[0].m_ObjectList[2].m_UniqueID,
              object.m_Operations[0].m_ObjectList[2].m_UniqueID);
    EXPECT_TRUE(read == object);
}

TEST(ObjectsJson, LoadingTheLibraryTakesNoIdentifier) {
    EXPECT_EQ(FIRST_IDENTIFIER, 0U);
}

TEST(ObjectsJson, ReplaceAllThatTheRecordHeld) {
    CObject read;
    read.m_Properties.resize(3);
    read.m_RelatedIDs1 = {1, 2};
    std::string reason;
    const CObject object(7, ObjectType::TASK);
    ASSERT_TRUE(FromJson(ToJson(object), read, reason));
    EXPECT_TRUE(SameFields(read, object));
}

TEST(ObjectsJson, ATaskPassedAsAnObjectIsAnObject) {
    const CTask task;
    EXPECT_EQ(JsonOf<CObject>(task)["record"], "object");
    EXPECT_EQ(JsonOf(task)["record"], "task");
}

TEST(ObjectsJson, OneALineIsAList) {
    FieldFiller filler(RandomSeed());
    std::vector<CObject> objects(20);
    std::stringstream file;
    for (CObject& object : objects) {
        filler.Fill(object);
        file << ToJson(object) << '\n';
    }
    std::vector<CObject> read;
    for (std::string line; std::getline(file, line);) {
        read.push_back(ReadBack<CObject>(line));
    }
    EXPECT_TRUE(SameFields(read, objects));
}
