// SPDX-License-Identifier: Apache-2.0

#include <gmock/gmock.h>
#include <plog/Formatters/TxtFormatter.h>

#include <climits>
#include <cstring>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "support/trace_recorder.h"

namespace {

using PI::Test::TraceRecord;
using PI::Test::TraceRecorder;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;

static_assert(std::is_same_v<VELKTrace, PI::VELKTrace>);
static_assert(!std::is_copy_constructible_v<VELKTrace>);
static_assert(std::is_nothrow_destructible_v<VELKTrace>);

const bool ENABLED_AT_FIRST = VELKTrace::tracesEnabled;

/// Runs while no trace flag or logger is left over from another test.
void Trace(int category) {
    VELKTrace(494, "VELK_Trace", category, "%s, %d") << std::string("text") << 7;
}

/// The only record, after all of it but the message is compared.
void ExpectRecord(const std::vector<TraceRecord>& records, const std::string& tag, std::size_t line,
                  int instance) {
    ASSERT_EQ(records.size(), 1u);
    const TraceRecord& record = records.front();
    EXPECT_EQ(record.m_Severity, plog::debug);
    EXPECT_EQ(record.m_Function, "VELKTrace::~VELKTrace");  // plog cuts the parentheses off
    EXPECT_EQ(record.m_Line, line);
    EXPECT_EQ(record.m_File, "");
    EXPECT_EQ(record.m_Object, nullptr);
    EXPECT_EQ(record.m_Instance, instance);
    ASSERT_EQ(record.m_Message.substr(0, tag.size()), tag);
    EXPECT_THAT(record.m_Message.substr(tag.size()),
                MatchesRegex("\\[[0-9]+\\]\\[VELK_Trace\\]\\[494\\]text, 7"));
}

// --- Categories: each has its logger, tag and line.

template <int Category>
void ExpectCategory(const char* tag, std::size_t line) {
    TraceRecorder<Category> recorder;
    Trace(Category);
    ExpectRecord(recorder.m_Records, tag, line, Category);
}

#define EXPECTED_CATEGORY(category, tag, line) \
    TEST(TraceCategory, Number##category) {    \
        ExpectCategory<category>(tag, line);   \
    }

// clang-format off
EXPECTED_CATEGORY(0, "[VELK_TraceOthers]", 62)
EXPECTED_CATEGORY(1, "[VELK_TraceStartEnd]", 67)
EXPECTED_CATEGORY(2, "[VELK_TraceLock]", 72)
EXPECTED_CATEGORY(3, "[VELK_TraceData]", 77)
EXPECTED_CATEGORY(4, "[VELK_TraceAction]", 82)
EXPECTED_CATEGORY(5, "[VELK_TraceThreads]", 87)
EXPECTED_CATEGORY(6, "[VELK_TraceMemory]", 92)
EXPECTED_CATEGORY(257, "[DP_Trace]", 142)
EXPECTED_CATEGORY(258, "[DP_TraceDebug]", 147)
EXPECTED_CATEGORY(275, "[PI_Trace]", 102)
EXPECTED_CATEGORY(276, "[PI_TraceDebug]", 107)
EXPECTED_CATEGORY(277, "[MPX_Trace]", 186)
EXPECTED_CATEGORY(278, "[MPX_TraceStartEnd]", 191)
EXPECTED_CATEGORY(279, "[MPX_TraceLock]", 196)
EXPECTED_CATEGORY(280, "[MPX_TraceData]", 201)
EXPECTED_CATEGORY(281, "[MPX_TraceAction]", 206)
EXPECTED_CATEGORY(282, "[MPX_TraceDatabase]", 211)
EXPECTED_CATEGORY(288, "[LSIStoreLib_Trace]", 274)
EXPECTED_CATEGORY(289, "[LSIStoreLib_TraceFunction]", 279)
EXPECTED_CATEGORY(290, "[LSIStoreLib_TraceData]", 284)
EXPECTED_CATEGORY(291, "[LSIStoreLib_TraceLock]", 289)
EXPECTED_CATEGORY(292, "[LSIStoreLib_TraceAction]", 294)
EXPECTED_CATEGORY(293, "[LSIStoreLib_TraceDatabase]", 299)
EXPECTED_CATEGORY(305, "[AHCI_Trace]", 230)
EXPECTED_CATEGORY(306, "[AHCI_TraceFunction]", 235)
EXPECTED_CATEGORY(307, "[AHCI_TraceData]", 240)
EXPECTED_CATEGORY(308, "[AHCI_TraceLock]", 245)
EXPECTED_CATEGORY(309, "[AHCI_TraceAction]", 250)
EXPECTED_CATEGORY(310, "[AHCI_TraceDatabase]", 255)
EXPECTED_CATEGORY(311, "[REST_Trace]", 162)
EXPECTED_CATEGORY(312, "[REST_TraceDebug]", 167)
EXPECTED_CATEGORY(315, "[MicroStorageCore_Trace]", 362)
EXPECTED_CATEGORY(316, "[MicroStorageCore_TraceFunction]", 367)
EXPECTED_CATEGORY(317, "[MicroStorageCore_TraceData]", 372)
EXPECTED_CATEGORY(318, "[MicroStorageCore_TraceLock]", 377)
EXPECTED_CATEGORY(319, "[MicroStorageCore_TraceAction]", 382)
EXPECTED_CATEGORY(320, "[MicroStorageCore_TraceDatabase]", 387)
EXPECTED_CATEGORY(516, "[DB_Trace]", 122)
EXPECTED_CATEGORY(517, "[DB_TraceDebug]", 127)
EXPECTED_CATEGORY(777, "[Marvell_Trace]", 318)
EXPECTED_CATEGORY(778, "[Marvell_TraceFunction]", 323)
EXPECTED_CATEGORY(779, "[Marvell_TraceData]", 328)
EXPECTED_CATEGORY(780, "[Marvell_TraceLock]", 333)
EXPECTED_CATEGORY(781, "[Marvell_TraceAction]", 338)
EXPECTED_CATEGORY(782, "[Marvell_TraceDatabase]", 343)
EXPECTED_CATEGORY(889, "[THREAD_Trace]", 425)
EXPECTED_CATEGORY(1000, "[DUMMY_Trace]", 411)
EXPECTED_CATEGORY(2001, "[EVENT_Trace]", 397)
EXPECTED_CATEGORY(2002, "[COMMAND_Trace]", 402)
EXPECTED_CATEGORY(2003, "[EXCLUSIVE_Trace_1]", 439)
// clang-format on

class UnlistedCategory : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(Numbers, UnlistedCategory,
                         testing::Values(7, 20, 21, 256, 259, 274, 283, 287, 294, 304, 313, 314, 321, 515,
                                         518, 776, 783, 888, 890, 999, 1001, 2000, 2004, -1, INT_MIN,
                                         INT_MAX));

TEST_P(UnlistedCategory, GoesToLoggerZeroUnderTheDefaultTag) {
    TraceRecorder<0> recorder;
    Trace(GetParam());
    ExpectRecord(recorder.m_Records, "[defaultLog]", 453, 0);
}

TEST(TraceFlag, IsOffAtFirst) {
    EXPECT_FALSE(ENABLED_AT_FIRST);
}

TEST(TraceCategory, UnlistedOneDoesNotGoToTheLoggerOfItsNumber) {
    TraceRecorder<7> seven;
    TraceRecorder<20> twenty;

    Trace(7);
    Trace(20);

    EXPECT_THAT(seven.m_Records, IsEmpty());
    EXPECT_THAT(twenty.m_Records, IsEmpty());
}

TEST(TraceCategory, EachGoesToItsOwnLoggerOnly) {
    TraceRecorder<0> zero;
    TraceRecorder<3> three;
    TraceRecorder<257> dp;

    Trace(3);

    EXPECT_EQ(three.m_Records.size(), 1u);
    EXPECT_THAT(zero.m_Records, IsEmpty());
    EXPECT_THAT(dp.m_Records, IsEmpty());
}

// --- The prefix.

TEST(TracePrefix, HoldsMillisecondsNameAndNumber) {
    TraceRecorder<3> recorder;

    VELKTrace(5, "Name of the caller", 3, "text");
    VELKTrace(-2147483647 - 1, "", 3, "text");
    VELKTrace(INT_MAX, "[%d]", 3, "text");

    ASSERT_EQ(recorder.m_Records.size(), 3u);
    EXPECT_THAT(recorder.m_Records[0].m_Message,
                MatchesRegex("\\[VELK_TraceData\\]\\[[0-9]+\\]\\[Name of the caller\\]\\[5\\]text"));
    EXPECT_THAT(recorder.m_Records[1].m_Message,
                MatchesRegex("\\[VELK_TraceData\\]\\[[0-9]+\\]\\[\\]\\[-2147483648\\]text"));
    EXPECT_THAT(recorder.m_Records[2].m_Message,
                MatchesRegex("\\[VELK_TraceData\\]\\[[0-9]+\\]\\[\\[%d\\]\\]\\[2147483647\\]text"));
}

TEST(TracePrefix, NameIsCopied) {
    TraceRecorder<3> recorder;
    {
        char name[] = "first";
        char format[] = "value %d";
        VELKTrace trace(1, name, 3, format);
        std::strcpy(name, "other");
        std::strcpy(format, "broken %");
        trace << 7;
    }

    EXPECT_THAT(recorder.m_Records.at(0).m_Message, testing::EndsWith("][first][1]value 7"));
}

// --- When nothing is written.

TEST(TraceEmission, NothingIsWrittenWhileTracesAreOff) {
    TraceRecorder<3> recorder;
    TraceRecorder<0> fallBack;
    VELKTrace::tracesEnabled = false;

    Trace(3);
    Trace(7);

    EXPECT_THAT(recorder.m_Records, IsEmpty());
    EXPECT_THAT(fallBack.m_Records, IsEmpty());
}

TEST(TraceEmission, FlagCountsWhenTheTraceIsDestroyed) {
    TraceRecorder<3> recorder;
    {
        const VELKTrace offAtTheEnd(1, "name", 3, "off at the end");
        VELKTrace::tracesEnabled = false;
    }
    {
        const VELKTrace onAtTheEnd(1, "name", 3, "on at the end");
        VELKTrace::tracesEnabled = true;
    }

    EXPECT_THAT(recorder.Texts(), ElementsAre("on at the end"));
}

TEST(TraceEmission, NothingHappensWithoutALogger) {
    ASSERT_EQ(plog::get<3>(), nullptr);
    ASSERT_EQ(plog::get<0>(), nullptr);
    TraceRecorder<1> other;

    Trace(3);
    Trace(0);
    Trace(7);

    EXPECT_THAT(other.m_Records, IsEmpty());
}

TEST(TraceEmission, LoggersThatTakeNoDebugRecordsGetNone) {
    for (const plog::Severity severity : {plog::none, plog::fatal, plog::error, plog::warning, plog::info}) {
        TraceRecorder<3> recorder(severity);
        Trace(3);
        EXPECT_THAT(recorder.m_Records, IsEmpty()) << plog::severityToString(severity);
    }
}

TEST(TraceEmission, LoggersThatTakeDebugRecordsGetThem) {
    for (const plog::Severity severity : {plog::debug, plog::verbose}) {
        TraceRecorder<3> recorder(severity);
        Trace(3);
        EXPECT_EQ(recorder.m_Records.size(), 1u) << plog::severityToString(severity);
    }
}

TEST(TraceEmission, SeverityIsAskedForEachTrace) {
    TraceRecorder<3> recorder(plog::info);

    VELKTrace(1, "name", 3, "first");
    plog::get<3>()->setMaxSeverity(plog::debug);
    VELKTrace(1, "name", 3, "second");
    plog::get<3>()->setMaxSeverity(plog::none);
    VELKTrace(1, "name", 3, "third");

    EXPECT_THAT(recorder.Texts(), ElementsAre("second"));
}

// --- Appenders.

class Collector : public plog::IAppender {
public:
    void write(const plog::Record& record) override { m_Messages.emplace_back(record.getMessage()); }

    std::vector<std::string> m_Messages;
};

template <class Exception>
class Thrower : public plog::IAppender {
public:
    void write(const plog::Record&) override {
        ++m_Calls;
        throw Exception();
    }

    int m_Calls = 0;
};

TEST(TraceAppenders, EachGetsTheRecordOnce) {
    Collector first;
    Collector second;
    TraceRecorder<3> recorder;
    plog::get<3>()->addAppender(&first).addAppender(&second);

    Trace(3);

    ASSERT_EQ(recorder.m_Records.size(), 1u);
    EXPECT_THAT(first.m_Messages, ElementsAre(recorder.m_Records[0].m_Message));
    EXPECT_THAT(second.m_Messages, ElementsAre(recorder.m_Records[0].m_Message));
}

TEST(TraceAppenders, LoggerWithoutAppendersIsFine) {
    const plog::Logger<3> logger(plog::debug);
    VELKTrace::tracesEnabled = true;
    EXPECT_NO_THROW(Trace(3));
    VELKTrace::tracesEnabled = false;
}

TEST(TraceAppenders, ExceptionsOfAnAppenderDoNotReachTheCaller) {
    struct Odd {};
    Thrower<std::bad_alloc> standard;
    Thrower<Odd> odd;
    TraceRecorder<3> recorder;

    plog::Logger<4> standardLogger(plog::debug);
    standardLogger.addAppender(&standard);
    EXPECT_NO_THROW(Trace(4));
    plog::Logger<5> oddLogger(plog::debug);
    oddLogger.addAppender(&odd);
    EXPECT_NO_THROW(Trace(5));

    EXPECT_EQ(standard.m_Calls, 1);
    EXPECT_EQ(odd.m_Calls, 1);
    Trace(3);
    EXPECT_EQ(recorder.m_Records.size(), 1u);
}

class LineFormatter : public plog::IAppender {
public:
    void write(const plog::Record& record) override { m_Line = plog::TxtFormatter::format(record); }

    std::string m_Line;
};

TEST(TraceAppenders, FormattedLineShowsFunctionAndLine) {
    LineFormatter appender;
    TraceRecorder<3> recorder;
    plog::get<3>()->addAppender(&appender);

    VELKTrace(494, "VELK_Trace", 3, "ETR: %s SteadyClock: %s")
        << std::string("00:12:00") << std::string("8831022");

    EXPECT_THAT(
        appender.m_Line,
        MatchesRegex("[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3} DEBUG \\[[0-9]+\\] "
                     "\\[VELKTrace::~VELKTrace@77\\] \\[VELK_TraceData\\]\\[[0-9]+\\]"
                     "\\[VELK_Trace\\]\\[494\\]ETR: 00:12:00 SteadyClock: 8831022\n"));
}

TEST(TraceAppenders, LongTextsArriveWhole) {
    TraceRecorder<3> recorder;
    const std::string text(1000000, 'x');

    VELKTrace(1, "name", 3, "%s") << text;

    EXPECT_THAT(recorder.Texts(), ElementsAre(text));
}

}  // namespace
