// SPDX-License-Identifier: Apache-2.0

#include "event_options.h"

#include <velk/clock.h>

#include <gtest/gtest.h>

using namespace pitool;

namespace {

PI::CEvent Make(const EventFields& fields) {
    PI::CEvent event;
    std::string reason;
    EXPECT_TRUE(MakeEvent(fields, event, reason)) << reason;
    return event;
}

std::string Refusal(std::optional<std::string> EventFields::*field, const char* text) {
    EventFields fields;
    fields.*field = text;
    PI::CEvent event;
    std::string reason;
    EXPECT_FALSE(MakeEvent(fields, event, reason)) << text;
    return reason;
}

}  // namespace

TEST(MakeEvent, FieldsThatAreNotGivenKeepTheirDefaultsButTheTimeIsNow) {
    const std::uint64_t before = VELK::now();
    const PI::CEvent event = Make({});
    EXPECT_EQ(event.m_EventID, 10000U);
    EXPECT_EQ(event.m_Severity, PI::Severity::INFORMATION);
    EXPECT_GE(event.m_TimeStamp, before);
    EXPECT_LE(event.m_TimeStamp, VELK::now());
    EXPECT_EQ(event.m_PlaceHolder1, "");
}

TEST(MakeEvent, TakesNamesInAnyCaseAndNumbers) {
    EventFields fields;
    fields.m_ID = "Rebuild_Started";
    fields.m_Severity = "warning";
    fields.m_TimeStamp = "18446744073709551615";
    fields.m_Sequence = "4294967295";
    PI::CEvent event = Make(fields);
    EXPECT_EQ(event.m_EventID, 10055U);
    EXPECT_EQ(event.m_Severity, PI::Severity::WARNING);
    EXPECT_EQ(event.m_TimeStamp, 18446744073709551615U);
    EXPECT_EQ(event.m_SequenceNumber, 4294967295U);
    fields.m_ID = "4294967295";
    fields.m_Severity = "-7";
    event = Make(fields);
    EXPECT_EQ(event.m_EventID, 4294967295U);
    EXPECT_EQ(static_cast<int>(event.m_Severity), -7);
}

TEST(MakeEvent, EachPlaceholderGoesToItsOwnPlace) {
    EventFields fields;
    for (std::size_t i = 0; i < PLACEHOLDERS; i += 2) {
        fields.m_Texts[i] = "text " + std::to_string(i);
        fields.m_Resources[i + 1] = std::to_string(-static_cast<int>(i));
    }
    const PI::CEvent event = Make(fields);
    EXPECT_EQ(event.m_PlaceHolder1, "T:text 0");
    EXPECT_EQ(event.m_PlaceHolder2, "I:0");
    EXPECT_EQ(event.m_PlaceHolder3, "T:text 2");
    EXPECT_EQ(event.m_PlaceHolder4, "I:-2");
    EXPECT_EQ(event.m_PlaceHolder5, "T:text 4");
    EXPECT_EQ(event.m_PlaceHolder6, "I:-4");
}

TEST(MakeEvent, RefusalsNameTheOptionAndTheText) {
    EXPECT_EQ(Refusal(&EventFields::m_ID, "NONE_SUCH"),
              "--id: \"NONE_SUCH\" is no number or name of an event");
    EXPECT_EQ(Refusal(&EventFields::m_ID, "4294967296"),
              "--id: \"4294967296\" is no number or name of an event");
    EXPECT_EQ(Refusal(&EventFields::m_ID, "-1"), "--id: \"-1\" is no number or name of an event");
    EXPECT_EQ(Refusal(&EventFields::m_Severity, "BAD"),
              "--severity: \"BAD\" is no severity (DEBUG, INFORMATION, WARNING, ERROR)");
    EXPECT_EQ(Refusal(&EventFields::m_TimeStamp, "18446744073709551616"),
              "--timestamp: \"18446744073709551616\" is no number of milliseconds");
    EXPECT_EQ(Refusal(&EventFields::m_Sequence, "4294967296"),
              "--sequence: \"4294967296\" is no 32-bit number");
    EventFields fields;
    fields.m_Resources[5] = "2147483648";
    PI::CEvent event;
    std::string reason;
    EXPECT_FALSE(MakeEvent(fields, event, reason));
    EXPECT_EQ(reason, "--resource6: \"2147483648\" is no number of a language resource");
}

TEST(HasField, IsTrueForAnyField) {
    EXPECT_FALSE(HasField({}));
    EventFields fields;
    fields.m_Resources[5] = "";
    EXPECT_TRUE(HasField(fields));
    fields = {};
    fields.m_Host = "";
    EXPECT_TRUE(HasField(fields));
}
