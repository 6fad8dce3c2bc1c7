// SPDX-License-Identifier: Apache-2.0
// The command event, from outside. What an event may hold is tested with the function that reads it.

#include "command_runner.h"

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>

using namespace pitool::test;

namespace {

/// The value of a line that an event of these options has; empty without such a line.
std::string Line(const std::string& key, std::vector<std::string> options, const std::string& warnings = "") {
    options.insert(options.begin(), "event");
    const Outcome run = RunPitool(options);
    EXPECT_EQ(run.m_Errors, warnings);
    constexpr std::size_t VALUE = 16;
    const std::size_t place = ("\n" + run.m_Output).find("\n" + key + std::string(VALUE - key.size(), ' '));
    return place == std::string::npos
               ? ""
               : run.m_Output.substr(place + VALUE, run.m_Output.find('\n', place) - place - VALUE);
}

}  // namespace

TEST(EventCommand, RendersEverySampleOfAnEvent) {
    for (const auto& file :
         std::filesystem::directory_iterator(std::string(PITOOL_ALL_EXAMPLES) + "/events")) {
        if (file.path().extension() == ".json") {
            EXPECT_EQ(RunPitool({"event"}, ReadWhole(file.path())).m_ExitStatus, 0) << file.path();
        }
    }
}

TEST(EventCommand, RendersJsonFromStandardInput) {
    setenv("TZ", "UTC", 1);
    ExpectRun(RunPitool({"event"}, Example("events/rebuild-failed.json")), 0,
              "EventID         10057\n"
              "Host            server-12\n"
              "Source          example\n"
              "Timestamp       1615107900000\n"
              "Datetime        03/07/2021 09:05:00\n"
              "ISO8601         2021-03-07T09:05:00+00:00\n"
              "Severity        ERROR\n"
              "Placeholders    [logical drive 0, media error on drive 1:3]\n"
              "Description     Rebuild on logical drive 0 failed: media error on drive 1:3\n"
              "SequenceNumber  42\n",
              "");
}

TEST(EventCommand, RendersOptionsAsJson) {
    setenv("TZ", "Asia/Kolkata", 1);
    ExpectRun(
        RunPitool({"event", "--id", "smart_warning", "--severity", "warning", "--timestamp", "0", "--source",
                   "", "--host=[h,i]", "--placeholder1", "[a,b]", "--placeholder2", "\xC3\xA4\n", "--json"}),
        0,
        "{\n"
        "  \"format\": \"pitool event\",\n"
        "  \"version\": 1,\n"
        "  \"event\": {\n"
        "    \"EventID\": \"10044\",\n"
        "    \"Host\": \"[h,i]\",\n"
        "    \"Source\": \"\",\n"
        "    \"Timestamp\": \"0\",\n"
        "    \"Datetime\": \"01/01/1970 05:30:00\",\n"
        "    \"ISO8601\": \"1970-01-01T05:30:00+05:30\",\n"
        "    \"Severity\": \"WARNING\",\n"
        "    \"Placeholders\": \"[[a,b], \\u00e4\\n]\",\n"
        "    \"Description\": \"Drive [a,b] reported a SMART warning: \\u00e4\\n\",\n"
        "    \"SequenceNumber\": \"0\"\n"
        "  }\n"
        "}\n",
        "");
    setenv("TZ", "UTC", 1);
}

TEST(EventCommand, TakesEachOption) {
    EXPECT_EQ(Line("EventID", {"--id", "4294967295"}), "4294967295");
    EXPECT_EQ(Line("EventID", {"--id", "Rebuild_Started"}), "10055");
    EXPECT_EQ(Line("Host", {"--host", "h"}), "h");
    EXPECT_EQ(Line("Host", {"--host", "123"}), "123");
    EXPECT_EQ(Line("Host", {"--host", ""}), "localhost");
    EXPECT_EQ(Line("Source", {"--source", "s"}), "s");
    EXPECT_EQ(Line("Timestamp", {"--timestamp", "18446744073709551615"}), "18446744073709551615");
    EXPECT_EQ(Line("Severity", {"--severity", "1"}), "DEBUG");
    EXPECT_EQ(Line("Severity", {"--severity", "4"}), "ERROR");
    EXPECT_EQ(Line("SequenceNumber", {"--sequence", "4294967295"}), "4294967295");
    EXPECT_EQ(Line("SequenceNumber", {"--sequence", "0010"}), "10");
    EXPECT_EQ(Line("EventID", {"--sequence", "1"}), "10000");
    EXPECT_EQ(Line("Severity", {"--sequence", "1"}), "INFORMATION");
}

TEST(EventCommand, EachPlaceholderGoesToItsOwnPlace) {
    const std::string strings = testing::TempDir() + "pitool_strings.xml";
    std::ofstream(strings) << "<Strings><String id='5'>%6 %5 %4 %3 %2 %1</String>"
                              "<String id='7'>resource</String></Strings>";
    EXPECT_EQ(
        Line("Description",
             {"--strings", strings, "--id", "5", "--placeholder1", "a", "--resource2", "7", "--placeholder3",
              "123", "--resource4", "8", "--placeholder5", "e", "--placeholder6", "f"},
             "pitool: warning: placeholder 4: language resource 8 has no text\n"),
        "f e %4 123 resource a");
    std::filesystem::remove(strings);
}

TEST(EventCommand, WarnsOfWhatItDoesNotShow) {
    for (const char* severity : {"-7", "0", "5", "2147483647"}) {
        EXPECT_EQ(
            Line("Severity", {"--severity", severity},
                 "pitool: warning: severity " + std::string(severity) + " is unknown and counts as DEBUG\n"),
            "DEBUG");
    }
    const std::string resource = "pitool: warning: placeholder 2: language resource ";
    EXPECT_EQ(Line("Description", {"--id", "10057", "--resource2", "10055", "--placeholder1", "I:99999"}),
              "Rebuild on I:99999 failed: Rebuild on %1 started");
    Line("Description", {"--resource2", "-1"}, resource + "-1 has no text\n");
    const Outcome run =
        RunPitool({"event"}, R"({"severity": 7, "placeholders": [null, {"resource": 99999}]})");
    EXPECT_EQ(run.m_Errors, "pitool: warning: severity 7 is unknown and counts as DEBUG\n" + resource +
                                "99999 has no text\n");
    EXPECT_EQ(run.m_ExitStatus, 0);
}

TEST(EventCommand, AMarkerInAPlaceholderIsText) {
    EXPECT_EQ(Line("Description", {"--id", "10057", "--placeholder1", "a%2b", "--placeholder2", "%1"}),
              "Rebuild on a%2b failed: %1");
    EXPECT_EQ(Line("Description", {"--id", "10055", "--placeholder1", ""}), "Rebuild on T: started");
}

TEST(EventCommand, TakesAnotherLanguageFile) {
    const Outcome run =
        RunPitool({"event", "--strings", "events/strings.de.xml"}, Example("events/spare-taken.json"));
    EXPECT_NE(run.m_Output.find("Description     Ersatzlaufwerk 1:7 beginnt, ein ausgefallenes Laufwerk "
                                "zu ersetzen\n"),
              std::string::npos)
        << run.m_Output;
    EXPECT_EQ(run.m_ExitStatus, 0);
}

TEST(EventCommand, AnEventWithoutTextIsUnknown) {
    const Outcome run = RunPitool({"event", "--id", "12377", "--placeholder1", "a"});
    EXPECT_NE(run.m_Output.find("Description     Unknown Event\n"), std::string::npos);
    EXPECT_EQ(run.m_Output.find("Placeholders"), std::string::npos);
    EXPECT_EQ(run.m_ExitStatus, 0);
}

TEST(EventCommand, WithoutALanguageFileItWarnsOnceAndGoesOn) {
    std::string directory = testing::TempDir() + "pitool_XXXXXX";
    ASSERT_NE(mkdtemp(directory.data()), nullptr);
    const std::string program = directory + "/pitool";
    std::filesystem::copy_file(PITOOL_PROGRAM, program);
    // A program that looks for its libraries beside itself does not find them from there.
    const Outcome run = RunProgram("/usr/bin/env", directory,
                                   {"LD_LIBRARY_PATH=" PITOOL_LIBRARIES, program, "event", "--id", "10055"});
    std::filesystem::remove_all(directory);
    EXPECT_NE(run.m_Output.find("Description     Unknown Event\n"), std::string::npos) << run.m_Output;
    EXPECT_EQ(run.m_Errors,
              "pitool: warning: no language file was found: every description reads \"Unknown Event\"\n");
    EXPECT_EQ(run.m_ExitStatus, 0);
}

TEST(EventCommand, RefusalsNameTheOptionOrTheMember) {
    ExpectRun(RunPitool({"event"}, "{"), 1, "",
              "pitool: standard input: byte 2: Missing a name for object member.\n");
    ExpectRun(RunPitool({"event"}, ""), 1, "", "pitool: standard input: byte 1: The document is empty.\n");
    ExpectRun(
        RunPitool({"event"}, "{\"placeholders\": [5]}"), 1, "",
        "pitool: standard input: /placeholders/0 is a number where a text, null or {\"resource\": number} "
        "belongs\n");
    const std::pair<std::vector<std::string>, std::string> refusals[] = {
        {{"--id", "NONE_SUCH"}, "neither the name of an event nor a whole number from 0 to 4294967295"},
        {{"--id", "-1"}, "neither the name of an event nor a whole number from 0 to 4294967295"},
        {{"--severity", "BAD"},
         "neither DEBUG, INFORMATION, WARNING, ERROR nor a whole number from -2147483648 to 2147483647"},
        {{"--timestamp", "18446744073709551616"}, "not a whole number from 0 to 18446744073709551615"},
        {{"--timestamp", "-1"}, "not a whole number from 0 to 18446744073709551615"},
        {{"--sequence", "4294967296"}, "not a whole number from 0 to 4294967295"},
        {{"--sequence", "0x10"}, "not a whole number from 0 to 4294967295"},
        {{"--resource6", "2147483648"}, "not a whole number from -2147483648 to 2147483647"},
        {{"--resource2", ""}, "not a whole number from -2147483648 to 2147483647"},
    };
    for (const auto& [words, reason] : refusals) {
        ExpectRun(
            RunPitool({"event", "--placeholder1", "a", words[0], words[1]}), 2, "",
            "pitool: " + words[0] + ": \"" + words[1] + "\" is " + reason + "; see pitool event --help\n");
    }
    EXPECT_EQ(RunPitool({"event", "--placeholder1", "a", "--resource1", "7"}).m_ExitStatus, 2);
}

TEST(EventCommand, ALanguageFileIsRefusedInOneLine) {
    const Outcome missing = RunPitool({"event", "--id", "5", "--strings", "missing.xml"});
    EXPECT_EQ(missing.m_Output, "");
    EXPECT_EQ(missing.m_Errors.find("pitool: missing.xml: cannot be read"), 0U) << missing.m_Errors;
    EXPECT_EQ(missing.m_ExitStatus, 1);
    const Outcome broken = RunPitool({"event", "--id", "5", "--strings", "layouts/raid1-array.xml"});
    EXPECT_EQ(broken.m_Errors, "pitool: layouts/raid1-array.xml:3:2: the root element is not Strings\n");
    EXPECT_EQ(broken.m_ExitStatus, 1);
}

TEST(EventCommand, ALanguageFileMayBeAPipeThatIsWrittenTo) {
    const std::string pipe = testing::TempDir() + "pitool_strings_pipe";
    std::filesystem::remove(pipe);
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    ExpectRun(RunPitool({"event", "--id", "5", "--strings", pipe}), 1, "",
              "pitool: " + pipe + ": nothing writes to this pipe\n");
    const Outcome run =
        RunProgram("/bin/sh", PITOOL_ALL_EXAMPLES,
                   {"-c", "cat events/strings.de.xml > \"$1\" & \"$0\" event --id 10092 --strings \"$1\"",
                    PITOOL_PROGRAM, pipe});
    EXPECT_NE(run.m_Output.find(
                  "Description     Ersatzlaufwerk %1 beginnt, ein ausgefallenes Laufwerk zu ersetzen\n"),
              std::string::npos)
        << run.m_Output;
    EXPECT_EQ(run.m_Errors, "");
    std::filesystem::remove(pipe);
}
