// SPDX-License-Identifier: Apache-2.0
// The events of the mdraid plug-in from poll to poll.
#include "events.h"

#include <pi/vocabulary.h>

#include <gmock/gmock.h>

#include <string>

namespace {

using mdraid::ArrayReport;
using mdraid::EventLog;
using testing::ElementsAre;
using testing::IsEmpty;

/// What the plug-in knows about the only array of a text.
std::vector<ArrayReport> Report(const std::string& text) {
    ArrayReport report;
    report.m_ObjectID = 2;
    report.m_Title = "md0";
    const mdraid::Mdstat mdstat = mdraid::ParseMdstat(text + "      \nunused devices: <none>\n");
    report.m_Array = mdstat.m_Arrays.at(0);
    report.m_Assessment = mdraid::Assess(report.m_Array, {});
    return {report};
}

const std::string WHOLE = "md0 : active raid1 sdb[1] sda[0]\n      64 blocks [2/2] [UU]\n";
const std::string FAILED = "md0 : active raid1 sdb[1](F) sda[0]\n      64 blocks [2/1] [U_]\n";
const std::string DEGRADED = "md0 : active raid1 sda[0]\n      64 blocks [2/1] [U_]\n";
const std::string REBUILDING =
    "md0 : active raid1 sdc[2] sda[0]\n      64 blocks [2/1] [U_]\n"
    "      [>...]  recovery =  1.0% (1/64) finish=1.0min speed=1K/sec\n";
const std::string CHECKING = WHOLE + "      [>...]  check =  1.0% (1/64) finish=1.0min speed=1K/sec\n";

/// "NAME severity [placeholder 1|placeholder 2]" of each event.
std::vector<std::string> Take(EventLog& log) {
    std::vector<std::string> texts;
    for (PI::CEvent& event : log.Take()) {
        EXPECT_EQ(event.m_Handle, 2U);
        EXPECT_EQ(event.m_Source, "mdraid");
        texts.push_back(PI::EventIDToString(static_cast<int>(event.m_EventID)) + " " +
                        std::to_string(event.m_Severity) + " [" + event.GetPlaceHolder1() + "|" +
                        event.GetPlaceHolder2() + "]");
    }
    return texts;
}

TEST(MdraidEvents, HealthyArrayIsNoEvent) {
    EventLog log;
    log.Update(Report(WHOLE));
    EXPECT_THAT(Take(log), IsEmpty());
    log.Update(Report(CHECKING));
    EXPECT_THAT(Take(log), ElementsAre("CHECK_STARTED 2 [md0|]"));
}

TEST(MdraidEvents, WhatIsWrongAtFirstSightIsReported) {
    EventLog log;
    log.Update(Report(FAILED));
    EXPECT_THAT(Take(log),
                ElementsAre("DISK_OFFLINE 4 [sdb|md0]",
                            "LOGICALDRIVE_DEGRADED 3 [md0|1 of 2 drives missing or not up to date]"));
}

TEST(MdraidEvents, RunningActivityAtFirstSightIsNoEvent) {
    EventLog log;
    log.Update(Report(CHECKING));
    EXPECT_THAT(Take(log), IsEmpty());
    log.Update(Report(WHOLE));
    EXPECT_THAT(Take(log), ElementsAre("CHECK_FINISHED 2 [md0|]"));
}

TEST(MdraidEvents, EachIsReportedOnce) {
    EventLog log;
    log.Update(Report(FAILED));
    log.Update(Report(FAILED));
    EXPECT_EQ(Take(log).size(), 2U);
    log.Update(Report(FAILED));
    EXPECT_THAT(Take(log), IsEmpty());
}

TEST(MdraidEvents, TellTheStoryOfAReplacedDrive) {
    EventLog log;
    log.Update(Report(WHOLE));
    log.Update(Report(FAILED));
    log.Update(Report(DEGRADED));
    log.Update(Report(REBUILDING));
    log.Update(Report(WHOLE));
    EXPECT_THAT(Take(log),
                ElementsAre("DISK_OFFLINE 4 [sdb|md0]",
                            "LOGICALDRIVE_DEGRADED 3 [md0|1 of 2 drives missing or not up to date]",
                            "REBUILD_STARTED 2 [md0|]", "LOGICALDRIVE_OPERATIONAL 2 [md0|]",
                            "REBUILD_FINISHED 2 [md0|]"));
}

TEST(MdraidEvents, ResyncIsAConsistencyCheck) {
    EventLog log;
    log.Update(Report(WHOLE));
    log.Update(Report(WHOLE + "      [>...]  resync =  1.0% (1/64) finish=1.0min speed=1K/sec\n"));
    log.Update(Report(WHOLE));
    EXPECT_THAT(Take(log), ElementsAre("CHECK_STARTED 2 [md0|]", "CHECK_FINISHED 2 [md0|]"));
}

TEST(MdraidEvents, ReshapeIsAMigration) {
    EventLog log;
    log.Update(Report(WHOLE));
    log.Update(Report(WHOLE + "      [>...]  reshape =  1.0% (1/64) finish=1.0min speed=1K/sec\n"));
    log.Update(Report(WHOLE));
    EXPECT_THAT(Take(log), ElementsAre("MIGRATION_STARTED 2 [md0|]", "MIGRATION_FINISHED 2 [md0|]"));
}

TEST(MdraidEvents, WhatIsNotKnownHasNotChanged) {
    EventLog log;
    const std::string cut = "md0 : active raid1 sdb[1] sda[0]\n";
    log.Update(Report(cut));
    log.Update(Report(WHOLE));
    log.Update(Report(CHECKING));
    log.Update(Report(cut));
    log.Update(Report(CHECKING));
    EXPECT_THAT(Take(log), ElementsAre("CHECK_STARTED 2 [md0|]"));
    log.Update(Report(DEGRADED));
    log.Update(Report(cut));
    log.Update(Report(DEGRADED));
    EXPECT_EQ(Take(log).size(), 2U);  // the check is over, the array degraded
}

TEST(MdraidEvents, AreNumbered) {
    EventLog log;
    log.Update(Report(FAILED));
    log.Update(Report(WHOLE));
    const std::vector<PI::CEvent> events = log.Take();
    ASSERT_EQ(events.size(), 3U);
    EXPECT_EQ(events[0].m_SequenceNumber, 1U);
    EXPECT_EQ(events[2].m_SequenceNumber, 3U);
}

}  // namespace
