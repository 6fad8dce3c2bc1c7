// SPDX-License-Identifier: Apache-2.0
// What is refused, and what is said of it.

#include <gtest/gtest.h>
#include <pi/exchange/model_json.h>

#include "every_field.h"

using namespace PI;
using namespace PI::Test;

namespace {

/// Why a record is refused. It has to stay as it is.
template <class Record>
std::string Refusal(const std::string& text) {
    FieldFiller filler(1);
    Record record;
    filler.Fill(record);
    const std::string before = ToJson(record);
    std::string reason = "before";
    if (FromJson(text, record, reason)) {
        return "accepted";
    }
    EXPECT_EQ(ToJson(record), before);
    return reason;
}

std::string PropertyWith(const std::string& members) {
    return R"({"record":"property","version":1,)" + members + "}";
}

std::string DriveWith(const std::string& members) {
    return R"({"record":"drive","version":1,)" + members + "}";
}

/// Objects within operations of objects, `levels` deep below the outermost.
std::string NestedObjects(int levels) {
    std::string text = R"({"record":"object","version":1,"unique_id":1,"operations":[)";
    for (int i = 0; i < levels; ++i) {
        text += R"({"objects":[{"unique_id":1,"operations":[)";
    }
    for (int i = 0; i < levels; ++i) {
        text += "]}]}";
    }
    return text + "]}";
}

}  // namespace

TEST(JsonRefusal, WhatIsNoJsonIsSaidWithItsByte) {
    EXPECT_EQ(Refusal<CObject>(""), "byte 1: The document is empty.");
    EXPECT_EQ(Refusal<CObject>(" \n"), "byte 3: The document is empty.");
    EXPECT_EQ(Refusal<CObject>("{"), "byte 2: Missing a name for object member.");
    EXPECT_EQ(Refusal<CObject>("{\"a\":tru}"), "byte 9: Invalid value.");
    EXPECT_EQ(Refusal<CObject>("{} {}"), "byte 4: The document root must not be followed by other values.");
    EXPECT_EQ(Refusal<CObject>(std::string("{}\0", 3)), "byte 3: A zero byte.");
    EXPECT_EQ(Refusal<CObject>("{\"a\":1e309}"), "byte 6: Number too big to be stored in double.");
    EXPECT_EQ(Refusal<CObject>("{\"a\":NaN}"), "byte 6: Invalid value.");
    EXPECT_EQ(Refusal<CObject>(std::string(1000000, '[')).substr(0, 5), "byte ");
}

TEST(JsonRefusal, AnotherRecordOrVersion) {
    EXPECT_EQ(Refusal<CObject>("[]"), "the document is a list where an object belongs");
    EXPECT_EQ(Refusal<CObject>("null"), "the document is null where an object belongs");
    EXPECT_EQ(Refusal<CObject>("{}"), "/record is missing");
    EXPECT_EQ(Refusal<CObject>(R"({"record":"object"})"), "/version is missing");
    EXPECT_EQ(Refusal<CObject>(ToJson(CTask())), "/record is not \"object\"");
    EXPECT_EQ(Refusal<CTask>(ToJson(CObject())), "/record is not \"task\"");
    EXPECT_EQ(Refusal<CObject>(R"({"record":"object","version":2,"unique_id":1})"),
              "/version is 2 where 1 is known");
    EXPECT_EQ(Refusal<CObject>(R"({"record":"object","version":0,"unique_id":1})"),
              "/version is 0 where 1 is known");
    EXPECT_EQ(Refusal<CObject>(R"({"record":"object","version":"1","unique_id":1})"),
              "/version is a text where a number belongs");
}

TEST(JsonRefusal, AnObjectWithoutItsIdentity) {
    EXPECT_EQ(Refusal<CObject>(R"({"record":"object","version":1})"), "/unique_id is missing");
    EXPECT_EQ(Refusal<CTask>(R"({"record":"task","version":1,"unique_id":1})"), "/creation_time is missing");
    EXPECT_EQ(Refusal<COperation>(R"({"record":"operation","version":1,"objects":[{}]})"),
              "/objects/0/unique_id is missing");
}

TEST(JsonRefusal, WrongTypesAreSaidWithTheirPlace) {
    EXPECT_EQ(Refusal<CProperty>(PropertyWith(R"("id":"VENDOR")")), "/id is a text where a number belongs");
    EXPECT_EQ(Refusal<CProperty>(PropertyWith(R"("id":null)")), "/id is null where a number belongs");
    EXPECT_EQ(Refusal<CProperty>(PropertyWith(R"("flag1":1)")),
              "/flag1 is a number where true or false belongs");
    EXPECT_EQ(Refusal<CProperty>(PropertyWith(R"("flag1":"true")")),
              "/flag1 is a text where true or false belongs");
    EXPECT_EQ(Refusal<CProperty>(PropertyWith(R"("data":[])")), "/data is a list where an object belongs");
    EXPECT_EQ(Refusal<CProperty>(PropertyWith(R"("data":{"choice":{"choices":{}}})")),
              "/data/choice/choices is an object where a list belongs");
    EXPECT_EQ(Refusal<CProperty>(PropertyWith(R"("data":{"multi_long":{"values":[1,2,true]}})")),
              "/data/multi_long/values/2 is true or false where a number belongs");
    EXPECT_EQ(Refusal<CProperty>(PropertyWith(R"("data":{"multi_string":{"values":["a",[]]}})")),
              "/data/multi_string/values/1 is a list where a text belongs");
    EXPECT_EQ(Refusal<CProperty>(PropertyWith(R"("data":{"float":{"value":false}})")),
              "/data/float/value is true or false where a number belongs");
    EXPECT_EQ(
        Refusal<CObject>(
            R"({"record":"object","version":1,"unique_id":1,"operations":[{},{"drives":[{"properties":[{"id":{}}]}]}]})"),
        "/operations/1/drives/0/properties/0/id is an object where a number belongs");
}

TEST(JsonRefusal, NumbersOutOfRange) {
    const std::string range = " is no whole number from -2147483648 to 2147483647";
    for (const char* number :
         {"2147483648", "-2147483649", "1e10", "1.5", "-0.5", "18446744073709551615", "1e300"}) {
        EXPECT_EQ(Refusal<CProperty>(PropertyWith(std::string("\"id\":") + number)), "/id" + range) << number;
    }
    for (const char* number : {"2147483647", "-2147483648", "2147483647.0"}) {
        EXPECT_EQ(Refusal<CProperty>(PropertyWith(std::string("\"id\":") + number)), "accepted") << number;
    }
    const std::string mask = "\"data\":{\"multi_string\":{\"selection_mask\":";
    for (const char* number : {"-1", "4294967296", "-1.0", "4294967296.0"}) {
        EXPECT_EQ(Refusal<CProperty>(PropertyWith(mask + number + "}}")),
                  "/data/multi_string/selection_mask is no whole number from 0 to 4294967295")
            << number;
    }
    EXPECT_EQ(Refusal<CProperty>(PropertyWith(mask + "4294967295}}")), "accepted");
    for (const char* number :
         {"-1", "18446744073709551616", "9007199254740994.0", "1e19", "\"\"", "\"-1\"", "\"+1\"", "\" 1\"",
          "\"1 \"", "\"0x1\"", "\"1e3\"", "\"18446744073709551616\""}) {
        EXPECT_EQ(Refusal<CDrive>(DriveWith(std::string("\"object_id\":") + number)),
                  "/object_id is no whole number from 0 to 18446744073709551615")
            << number;
    }
    const std::string signedLong = "\"data\":{\"signed_long\":{\"value\":";
    for (const char* number : {"9223372036854775808", "\"9223372036854775808\"", "-9223372036854775809",
                               "\"-9223372036854775809\""}) {
        EXPECT_EQ(
            Refusal<CProperty>(PropertyWith(signedLong + number + "}}")),
            "/data/signed_long/value is no whole number from -9223372036854775808 to 9223372036854775807")
            << number;
    }
    EXPECT_EQ(Refusal<CProperty>(PropertyWith(signedLong + "-9223372036854775808}}")), "accepted");
}

TEST(JsonRefusal, FloatsThatAreNone) {
    const std::string before = "\"data\":{\"float\":{\"value\":";
    for (const char* text : {"nan", "NAN", "inf", "1", "", "NaN(3f800000)", "NaN(7f800000)", "NaN(7fc0000)",
                             "NaN(7fc000000)", "NaN(7fc0000g)", "NaN(-fc00000)", "-NaN"}) {
        EXPECT_EQ(Refusal<CProperty>(PropertyWith(before + '"' + text + "\"}}")),
                  "/data/float/value is a text that stands for no number")
            << text;
    }
    for (const char* number : {"3.4028235677973366e38", "-3.4028236e38", "1e308"}) {
        EXPECT_EQ(Refusal<CProperty>(PropertyWith(before + number + "}}")),
                  "/data/float/value is beyond single precision")
            << number;
    }
    EXPECT_EQ(Refusal<CProperty>(PropertyWith(before + "3.4028235677973362e38}}")), "accepted");
}

TEST(JsonRefusal, BytesThatAreNone) {
    const auto refusal = [](const std::string& text) {
        return Refusal<CPartition>(R"({"record":"partition","version":1,"text1":)" + text + "}");
    };
    EXPECT_EQ(refusal("{}"), "/text1/bytes is missing");
    EXPECT_EQ(refusal(R"({"bytes":7})"), "/text1/bytes is a number where a text belongs");
    for (const char* digits : {"1", "0g", "g0", "0x", "-1", " 1", "+1", "000"}) {
        EXPECT_EQ(refusal(std::string(R"({"bytes":")") + digits + "\"}"),
                  "/text1/bytes is no row of bytes, each of two hexadecimal digits")
            << digits;
    }
}

TEST(JsonRefusal, XmlThatIsNone) {
    EXPECT_EQ(Refusal<CProperty>(PropertyWith(R"("data":{"xml":{"document":"<a"}})")),
              "/data/xml/document is no XML document: Error parsing start element tag");
}

TEST(JsonRefusal, MembersThatAreThereTwice) {
    EXPECT_EQ(Refusal<CProperty>(PropertyWith(R"("id":1,"id":1)")),
              "the document holds a member twice: \"id\"");
    EXPECT_EQ(Refusal<CProperty>(PropertyWith(R"("data":{"bool":{},"x":1,"bool":{}})")),
              "/data holds a member twice: \"bool\"");
    EXPECT_EQ(Refusal<CProperty>(PropertyWith(R"("x":1,"x":1)")), "the document holds a member twice: \"x\"");
}

TEST(JsonRefusal, ObjectsNestedTooDeeply) {
    EXPECT_EQ(Refusal<CObject>(NestedObjects(100)), "accepted");
    EXPECT_NE(Refusal<CObject>(NestedObjects(101)).find(" is nested too deeply"), std::string::npos);
    EXPECT_NE(Refusal<CObject>(NestedObjects(100000)).find(" is nested too deeply"), std::string::npos);
}
