// SPDX-License-Identifier: Apache-2.0
// Memory running out while records are written as JSON and read back.

#include <gtest/gtest.h>
#include <pi/exchange/model_json.h>

#include "exchange/every_field.h"
#include "failing_memory.h"

using namespace PI;
using namespace PI::Test;

namespace {

/// A property of every kind, XML included, and an operation with every list, all of them small.
CTask SampleTask() {
    FieldFiller filler(4);
    static const CTask made;
    CTask task(made);
    CProperty property;
    filler.Fill(property);
    property.m_Data.m_XML.m_Document.load_string("<a b='c'><!--d--></a>", PARSE_EVERYTHING);
    property.m_Data.m_String.m_Value = "bytes that are no UTF-8, too long to be held within: \xFF";
    task.m_Properties = {property};
    COperation& operation = task.m_Operations.emplace_back();
    operation.m_LogicalDriveList.resize(1);
    operation.m_LogicalDriveList[0].m_Containers.resize(1);
    operation.m_LogicalDriveList[0].m_Containers[0].m_Drives.resize(2);
    operation.m_EventList.resize(2);
    operation.m_EventList[1].m_Resolved1 = "a text that is too long to be held without memory of its own";
    operation.m_ObjectList.assign(2, task);
    return task;
}

}  // namespace

TEST(ModelJsonFaults, ARecordIsWrittenWholeOrNotAtAll) {
    const CTask task = SampleTask();
    const std::string expected = ToJson(task);
    RunOutOfMemoryEverywhere([] { return std::string(); }, [&](std::string& text) { text = ToJson(task); },
                             [&](const std::string& text, Ending ending) {
                                 EXPECT_NE(ending, Ending::ABSORBED);
                                 EXPECT_EQ(text, ending == Ending::DONE ? expected : "");
                             });
}

TEST(ModelJsonFaults, ARecordIsReadWholeOrStaysAsItIs) {
    const CTask task = SampleTask();
    const std::string text = ToJson(task);
    const CTask before(task);
    CTask other(before);
    other.m_Operations.clear();
    const std::string otherText = ToJson(other);
    std::string reason;
    RunOutOfMemoryEverywhere([&] { return other; },
                             [&](CTask& read) { EXPECT_TRUE(FromJson(text, read, reason)); },
                             [&](const CTask& read, Ending ending) {
                                 EXPECT_NE(ending, Ending::ABSORBED);
                                 EXPECT_EQ(ToJson(read), ending == Ending::DONE ? text : otherText);
                             });
}

TEST(ModelJsonFaults, ARefusalNeedsItsMemoryToo) {
    RunOutOfMemoryEverywhere(
        [] { return std::string(); },
        [](std::string& reason) {
            CPartition partition;
            EXPECT_FALSE(FromJson(R"({"record":"partition","version":1,"text1":[]})", partition, reason));
        },
        [](const std::string& reason, Ending ending) {
            EXPECT_NE(ending, Ending::ABSORBED);
            EXPECT_EQ(reason, ending == Ending::DONE ? "/text1 is a list where a text belongs" : "");
        });
}

TEST(ModelJsonFaults, HealthIsWrittenWholeOrNotAtAll) {
    CDriveHealth health(DriveProtocol::NVME, "NOBODY KNOWS IT");
    health.TakeFigure(HealthFigure::WEAR, 101, FigureSource::NVME_LOG, 2);
    const std::string expected = ToJson(health);
    RunOutOfMemoryEverywhere([] { return std::string(); }, [&](std::string& text) { text = ToJson(health); },
                             [&](const std::string& text, Ending ending) {
                                 EXPECT_NE(ending, Ending::ABSORBED);
                                 EXPECT_EQ(text, ending == Ending::DONE ? expected : "");
                             });
}
