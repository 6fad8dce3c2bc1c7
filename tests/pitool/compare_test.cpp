// SPDX-License-Identifier: Apache-2.0
// The command compare of the built program, from outside.

#include "drive_history.h"

#include <gtest/gtest.h>

namespace {

using namespace pitool::test;

Outcome RunCompare(const Folder& folder, const std::vector<std::string>& arguments) {
    std::vector<std::string> all{"compare"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return RunProgram(PITOOL_PROGRAM, folder.Path(), all);
}

/// Compares what two files hold, with --check.
Outcome Check(const std::string& before, const std::string& after) {
    const Folder folder;
    folder.Write("old.json", before);
    folder.Write("new.json", after);
    return RunCompare(folder, {"--check", "old.json", "new.json"});
}

int CheckStatus(const Sample& before, const Sample& after) {
    return Check(Report(before), Report(after)).m_ExitStatus;
}

/// The change that the table shows.
std::string ChangeOf(const Sample& before, const Sample& after) {
    const std::string output = Check(Report(before), Report(after)).m_Output;
    const std::size_t begin = output.find("S3Z8NB0K  ");
    return begin == std::string::npos ? "" : output.substr(begin + 10, output.find('\n', begin) - begin - 10);
}

Sample Named(const std::string& serial) {
    Sample sample;
    sample.m_Serial = serial;
    return sample;
}

}  // namespace

TEST(CompareCommand, WhatIsTheSameIsGood) {
    const Outcome run = Check(Report({}), Report({}));
    EXPECT_EQ(run.m_Output, "DRIVES OK: 1 drive compared, none got worse | worse=0 gone=0 new=0\n");
    EXPECT_EQ(run.m_ExitStatus, 0);
}

TEST(CompareCommand, WhatChangedForNoWorseIsShown) {
    Sample after;
    after.m_LoggedErrors = 5;
    EXPECT_EQ(CheckStatus({}, after), 0);
    EXPECT_EQ(ChangeOf({}, after), "logged errors 0 -> 5");
}

TEST(CompareCommand, ErrorsThatGrowAreToBeLookedAt) {
    Sample after;
    after.m_MediaErrors = 1;
    EXPECT_EQ(CheckStatus({}, after), 1);
    EXPECT_EQ(ChangeOf({}, after), "good -> look; media errors 0 -> 1");
    Sample before;
    before.m_MediaErrors = 1;
    EXPECT_EQ(CheckStatus(before, after), 0);
    EXPECT_EQ(CheckStatus(after, {}), 0);
    EXPECT_EQ(ChangeOf(after, {}), "look -> good; media errors 1 -> 0");
}

TEST(CompareCommand, ADriveToBeReplacedOrFailedThatGotWorseIs2) {
    Sample dying;
    dying.m_CriticalWarning = 4;
    EXPECT_EQ(CheckStatus({}, dying), 2);
    EXPECT_EQ(ChangeOf({}, dying), "good -> replace; verdict passed -> failing; critical warning 0 -> 4");
    EXPECT_EQ(CheckStatus(dying, dying), 0);
    Sample worse = dying;
    worse.m_MediaErrors = 1;
    EXPECT_EQ(CheckStatus(dying, worse), 2);
    EXPECT_EQ(CheckStatus(dying, {}), 0);
    Sample failed;
    failed.m_CriticalWarning = 8;
    EXPECT_EQ(CheckStatus(dying, failed), 2);
    EXPECT_EQ(ChangeOf(dying, failed), "replace -> failed; critical warning 4 -> 8");
    EXPECT_EQ(CheckStatus(failed, dying), 2);  // another warning, though the state is better
}

TEST(CompareCommand, ADriveThatIsGoneIsToBeLookedAtAndANewOneIfItIsNotGood) {
    const std::string kept = Report({});
    Sample bad = Named("NEW1");
    EXPECT_EQ(Check(kept + Report(Named("GONE1")), kept).m_ExitStatus, 1);
    EXPECT_EQ(Check(kept, kept + Report(bad)).m_ExitStatus, 0);
    bad.m_MediaErrors = 1;
    EXPECT_EQ(Check(kept, kept + Report(bad)).m_ExitStatus, 1);
    bad.m_CriticalWarning = 4;
    EXPECT_EQ(Check(kept, kept + Report(bad)).m_ExitStatus, 2);
}

TEST(CompareCommand, ADriveThatIsNotIdentifiedMatchesNothing) {
    const Sample before = Named("REDACTED");
    Sample after = before;
    after.m_Wear = 11;
    const Outcome run = Check(Report({}) + Report(before), Report({}) + Report(after));
    EXPECT_EQ(run.m_Output,
              "DRIVES OK: 1 drive compared, none got worse, 2 without identity | worse=0 gone=0 new=0\n");
    EXPECT_EQ(
        run.m_Errors,
        "pitool: old.json: warning: its serial number identifies no drive: it matches no other report\n"
        "pitool: new.json: warning: its serial number identifies no drive: it matches no other report\n");
}

TEST(CompareCommand, ADriveThatIsNotIdentifiedIsWorseIfItIsNotGood) {
    Sample after = Named("REDACTED");
    after.m_CriticalWarning = 4;
    const Outcome run = Check(Report({}), Report({}) + Report(after));
    EXPECT_NE(run.m_Output.find("without identity"), std::string::npos) << run.m_Output;
    EXPECT_EQ(run.m_ExitStatus, 2);
    EXPECT_EQ(Check(Report({}) + Report(after), Report({})).m_ExitStatus, 0)
        << "nothing follows from the old one";
}

TEST(CompareCommand, ErrorsThatAreNoLongerReportedAreToBeLookedAt) {
    const std::string without =
        R"({"device":{"protocol":"NVMe"},"model_name":"SAMPLE NVME 960","serial_number":"S3Z8NB0K",)"
        R"("smart_status":{"passed":true},"nvme_smart_health_information_log":{"critical_warning":0}})";
    Sample before;
    before.m_MediaErrors = 2;
    const Outcome run = Check(Report(before), without);
    EXPECT_NE(run.m_Output.find("look -> good; media errors 2 -> not reported"), std::string::npos)
        << run.m_Output;
    EXPECT_EQ(run.m_ExitStatus, 1);
}

TEST(CompareCommand, AStateThatBecameUnknownIsToBeLookedAt) {
    const std::string bare = R"({"model_name":"SAMPLE NVME 960","serial_number":"S3Z8NB0K"})";
    EXPECT_EQ(Check(Report({}), bare).m_ExitStatus, 1);
    EXPECT_EQ(Check(bare, bare).m_ExitStatus, 0);
}

TEST(CompareCommand, TheLatestReportOfADriveCounts) {
    Sample early;
    Sample late;
    late.m_Hours = 2000;
    late.m_MediaErrors = 3;
    EXPECT_EQ(Check(Report(late) + Report(early), Report(late)).m_ExitStatus, 0);
    EXPECT_EQ(Check(Report(early), Report(late) + Report(early)).m_ExitStatus, 1);
}

TEST(CompareCommand, NothingIsKnownWhereNothingIsComparedOrAnInputIsRefused) {
    EXPECT_EQ(Check(Report(Named("REDACTED")), Report(Named("REDACTED"))).m_ExitStatus, 3);
    const Outcome missing = Check(Report({}), "");
    EXPECT_EQ(missing.m_Output,
              "DRIVES UNKNOWN: 0 drives compared, none got worse, 1 refused | worse=0 gone=0 new=0\n");
    EXPECT_EQ(missing.m_ExitStatus, 3);
    Sample worse;
    worse.m_MediaErrors = 1;
    const Folder folder;
    folder.Write("old.json", Report({}));
    folder.Write("good/a.json", Report({}));
    folder.Write("good/b.json", "x");
    folder.Write("worse/a.json", Report(worse));
    folder.Write("worse/b.json", "x");
    const Outcome refused = RunCompare(folder, {"--check", "old.json", "good"});
    EXPECT_EQ(refused.m_Output,
              "DRIVES UNKNOWN: 1 drive compared, none got worse, 1 refused | worse=0 gone=0 new=0\n");
    EXPECT_EQ(refused.m_ExitStatus, 3);
    EXPECT_EQ(RunCompare(folder, {"--check", "old.json", "worse"}).m_ExitStatus, 1);
}

TEST(CompareCommand, WhatMayBeInAReportThatIsRefusedIsNeitherGoneNorNew) {
    Sample bad = Named("BAD1");
    bad.m_CriticalWarning = 4;
    const Folder folder;
    folder.Write("all/a.json", Report({}));
    folder.Write("all/b.json", Report(Named("OTHER1")));
    folder.Write("broken/a.json", Report({}));
    folder.Write("broken/b.json", "x");
    folder.Write("bad/a.json", Report({}));
    folder.Write("bad/b.json", Report(bad));
    const Outcome unread = RunCompare(folder, {"--check", "all", "broken"});
    EXPECT_EQ(
        unread.m_Output,
        "DRIVES UNKNOWN: 1 drive compared, none got worse, 1 not read, 1 refused | worse=0 gone=0 new=0\n"
        "STATE     MODEL            SERIAL  CHANGE\n"
        "not read  SAMPLE NVME 960  OTHER1  not read\n");
    EXPECT_EQ(unread.m_ExitStatus, 3);
    EXPECT_EQ(RunCompare(folder, {"broken", "all"}).m_Output,
              "STATE  MODEL            SERIAL  CHANGE\n"
              "good   SAMPLE NVME 960  OTHER1  not read before\n"
              "1 drive compared, none got worse, 1 not read, 1 refused\n");
    EXPECT_EQ(RunCompare(folder, {"--check", "broken", "bad"}).m_ExitStatus, 2);
    EXPECT_NE(RunCompare(folder, {"--json", "all", "broken"}).m_Output.find("\"not_read\": 1\n"),
              std::string::npos);
}

TEST(CompareCommand, BlanksAroundModelAndSerialNumberAreNotPartOfThem) {
    Sample padded = Named("  S3Z8NB0K ");
    padded.m_Model = "SAMPLE NVME 960   ";
    EXPECT_EQ(Check(Report(padded), Report({})).m_Output,
              "DRIVES OK: 1 drive compared, none got worse | worse=0 gone=0 new=0\n");
}

TEST(CompareCommand, WrongUsageExitsWith2AndWithCheckWith3) {
    const Folder folder;
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {}, {"old.json"}, {"a", "b", "c"}, {"-", "-"}, {"--nonsense", "a", "b"}}) {
        EXPECT_EQ(RunCompare(folder, arguments).m_ExitStatus, 2);
        std::vector<std::string> checked = arguments;
        checked.emplace_back("--check");
        EXPECT_EQ(RunCompare(folder, checked).m_ExitStatus, 3);
    }
}

TEST(CompareCommand, WithoutCheckWhatGotWorseIsNoFailure) {
    const Folder folder;
    Sample worse;
    worse.m_CriticalWarning = 4;
    folder.Write("old/a.json", Report({}));
    folder.Write("new/a.json", Report(worse));
    EXPECT_EQ(RunCompare(folder, {"old", "new"}).m_ExitStatus, 0);
    const Outcome refused = RunCompare(folder, {"old", "missing"});
    EXPECT_EQ(refused.m_Output, "");
    EXPECT_EQ(refused.m_Errors, "pitool: missing: No such file or directory\n");
    EXPECT_EQ(refused.m_ExitStatus, 1);
}

TEST(CompareCommand, PrintsATableTheWorstFirst) {
    const Outcome run = RunProgram(PITOOL_PROGRAM, PITOOL_EXAMPLES "/..",
                                   {"compare", "history/2025.json", "history/2026.json"});
    EXPECT_EQ(
        run.m_Output,
        "STATE  MODEL                 SERIAL              CHANGE\n"
        "look   HGST HUS724040ALA640  PN2334PIT00021      good -> look; pending sectors 0 -> 8; reallocated "
        "sectors 0 -> 12\n"
        "gone   HGST HUS724040ALA640  PN2334PIT00022      gone\n"
        "good   INTEL SSDPE2KE016T8   PHLN000000301P6AGN  wear 28 -> 76 %\n"
        "good   INTEL SSDPE2KE016T8   PHLN000000401P6AGN  wear 9 -> 17 %\n"
        "good   HGST HUS724040ALA640  PN2334PIT00023      new\n"
        "3 drives compared, 1 got worse, 1 gone, 1 new\n");
}

TEST(CompareCommand, ColorsAreThoseOfWhatIsToBeDone) {
    const auto styled = [](const Sample& after) {
        const Folder folder;
        folder.Write("old.json", Report({}));
        folder.Write("new.json", Report(after));
        const std::string output = RunCompare(folder, {"--color", "always", "old.json", "new.json"}).m_Output;
        const std::size_t begin = output.find('\n') + 1;
        return output.substr(begin, output.find("  ", begin) - begin);
    };
    Sample after;
    after.m_Wear = 11;
    EXPECT_EQ(styled(after), "good");
    after.m_MediaErrors = 1;
    EXPECT_EQ(styled(after), "\x1B[33mlook\x1B[0m");
    after.m_CriticalWarning = 4;
    EXPECT_EQ(styled(after).substr(0, 7), "\x1B[1;31m");
}

TEST(CompareCommand, PrintsJson) {
    const Folder folder;
    Sample after;
    after.m_Wear = 11;
    after.m_MediaErrors = 2;
    folder.Write("old.json", Report({}) + Report(Named("GONE1")));
    folder.Write("new.json", Report(after) + Report(Named("NEW1")));
    const Outcome run = RunCompare(folder, {"--json", "--check", "old.json", "new.json"});
    EXPECT_EQ(run.m_Output, R"({
  "format": "pitool compare",
  "version": 1,
  "drives": [
    {"serial_number":"S3Z8NB0K","model":"SAMPLE NVME 960","old":{"file":"old.json","state":"good"},)"
                            R"("new":{"file":"new.json","state":"look at it"},"worse":true,"changes":[)"
                            R"({"figure":"MEDIA_ERRORS","old":0,"new":2,"worse":true},)"
                            R"({"figure":"WEAR","old":10,"new":11,"worse":false}]},
    {"serial_number":"GONE1","model":"SAMPLE NVME 960","old":{"file":"old.json","state":"good"},"new":null,)"
                            R"("worse":true,"changes":[]},
    {"serial_number":"NEW1","model":"SAMPLE NVME 960","old":null,"new":{"file":"new.json","state":"good"},)"
                            R"("worse":false,"changes":[]}
  ],
  "errors": [],
  "summary": {
    "compared": 1,
    "worse": 1,
    "gone": 1,
    "new": 1,
    "unidentified": 0,
    "refused": 0,
    "not_read": 0
  }
}
)");
    EXPECT_EQ(run.m_ExitStatus, 1);
}
