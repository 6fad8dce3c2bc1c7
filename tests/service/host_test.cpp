// SPDX-License-Identifier: Apache-2.0
// The host with both plug-ins on the sample trees: whole outputs.
#include <sys/stat.h>

#include <gmock/gmock.h>
#include <pi/exchange/model_json.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "plugin.h"
#include "run_program.h"
#include "support/cancelled_thread.h"

namespace {

namespace fs = std::filesystem;
using PI::Test::Outcome;
using PI::Test::ReadFile;
using PI::Test::RunProgram;
using PI::Test::TemporaryFolder;
using testing::ElementsAre;

const fs::path TREES = TREES_FOLDER;
const fs::path DRIVES = DRIVES_FOLDER;
const fs::path EXPECTED = EXPECTED_FOLDER;

/// Runs the host in the folder of the trees, so that paths in its output are short.
Outcome RunHost(std::vector<std::string> arguments, const fs::path& folder = TREES) {
    arguments.insert(arguments.begin(), HOST);
    return RunProgram(arguments, folder);
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// The text with the times of its events replaced by a star.
std::string WithoutTimes(const std::string& text) {
    std::string result;
    for (std::string line : Lines(text)) {
        for (const std::string key : {"    Timestamp: ", "    Datetime: "}) {
            if (line.compare(0, key.size(), key) == 0) {
                line = key + "*";
            }
        }
        result += line + "\n";
    }
    return result;
}

/// What traces say: the lines behind the time, the tag and the milliseconds since the first trace.
std::vector<std::string> TraceMessages(const std::string& text, const std::string& tag) {
    std::vector<std::string> messages;
    for (const std::string& line : Lines(text)) {
        const std::size_t milliseconds = line.find(tag + "[");
        EXPECT_NE(milliseconds, std::string::npos) << line;
        messages.push_back(line.substr(line.find(']', milliseconds + tag.size()) + 1));
    }
    return messages;
}

/// A folder of plug-ins, as links.
class PluginFolder {
public:
    explicit PluginFolder(const std::vector<fs::path>& plugins) {
        for (const fs::path& plugin : plugins) {
            fs::create_symlink(plugin, m_Folder.Path() / plugin.filename());
        }
    }
    std::string Path() const { return m_Folder.Path(); }

    TemporaryFolder m_Folder;
};

const fs::path MDRAID = fs::path(PLUGIN_FOLDER) / "mdraid.so";
const fs::path SMARTCTL = fs::path(PLUGIN_FOLDER) / "smartctl.so";
const fs::path BAD = BAD_PLUGIN_FOLDER;

class Tree : public testing::TestWithParam<const char*> {};

TEST_P(Tree, IsReportedAsExpected) {
    const PluginFolder plugins({MDRAID});
    const std::string tree = GetParam();
    const Outcome outcome = RunHost({plugins.Path(), "--set", "mdraid.root=" + tree});
    EXPECT_EQ(outcome.m_Status, 0);
    EXPECT_EQ(outcome.m_Errors, "");
    EXPECT_EQ(WithoutTimes(outcome.m_Output), ReadFile(EXPECTED / (tree + ".txt")));
}

INSTANTIATE_TEST_SUITE_P(Host, Tree, testing::Values("healthy", "degraded", "rebuilding", "raid0", "blanks"),
                         [](const auto& instance) { return std::string(instance.param); });

TEST(Host, NumbersTheAdaptersOfBothPluginsInOneSequence) {
    const Outcome outcome =
        RunHost({PLUGIN_FOLDER, "--set", "mdraid.root=healthy", "--set", "smartctl.folder=drives"});
    EXPECT_EQ(outcome.m_Status, 0);
    EXPECT_EQ(outcome.m_Errors, "");
    EXPECT_EQ(WithoutTimes(outcome.m_Output),
              ReadFile(EXPECTED / "healthy.txt") + ReadFile(EXPECTED / "drives.txt"));
    std::vector<std::string> adapters;
    for (const std::string& line : Lines(outcome.m_Output)) {
        if (line.compare(0, 10, "  Adapter ") == 0) {
            adapters.push_back(line.substr(2, line.find('(') - 2));
        }
    }
    EXPECT_THAT(adapters, ElementsAre("Adapter 0: Linux software RAID ", "Adapter 1: SATA drives ",
                                      "Adapter 2: SAS drives ", "Adapter 3: NVMe drives "));
}

TEST(Host, TracesOfBothPluginsArriveInItsLoggers) {
    const TemporaryFolder traces;
    const Outcome outcome =
        RunHost({PLUGIN_FOLDER, "--set", "mdraid.root=rebuilding", "--set", "smartctl.folder=drives",
                 "--trace", "275", "--trace-folder", traces.Path()});
    EXPECT_EQ(outcome.m_Status, 0);

    const auto messages = TraceMessages(ReadFile(traces.Path() / "trace-275.log"), "[PI_Trace]");
    EXPECT_THAT(messages, ElementsAre("[mdraid][501]rebuilding/proc/mdstat: 3 arrays, 0 errors",
                                      "[mdraid][501]event LOGICALDRIVE_DEGRADED",
                                      "[mdraid][501]event LOGICALDRIVE_DEGRADED",
                                      "[smartctl][502]drives: 6 drives, 0 errors",
                                      "[smartctl][502]event PD_WEAR_LEVEL_COUNT_ABOVE_THRESHOLD",
                                      "[smartctl][502]event SMART_WARNING"));
    EXPECT_FALSE(fs::exists(traces.Path() / "trace-276.log"));
}

class Isolation : public testing::TestWithParam<bool> {
protected:
    static std::vector<std::string> Options() {
        return GetParam() ? std::vector<std::string>{"--isolate"} : std::vector<std::string>{};
    }
};

INSTANTIATE_TEST_SUITE_P(Host, Isolation, testing::Bool(),
                         [](const auto& instance) { return instance.param ? "Isolated" : "InProcess"; });

TEST(Host, PrintsTheInventoryAsJson) {
    const Outcome outcome = RunHost(
        {PLUGIN_FOLDER, "--json", "--set", "mdraid.root=degraded", "--set", "smartctl.folder=drives"});
    EXPECT_EQ(outcome.m_Status, 0);
    int objects = 0;
    int events = 0;
    for (const std::string& line : Lines(outcome.m_Output)) {
        const std::size_t record = line.find("{\"record\"");
        ASSERT_NE(record, std::string::npos) << line;
        const std::string json = line.substr(record, line.size() - record - 1);
        PI::CObject object;
        PI::CEvent event;
        std::string reason;
        objects += PI::FromJson(json, object, reason) ? 1 : 0;
        events += PI::FromJson(json, event, reason) ? 1 : 0;
        EXPECT_THAT(line, testing::AnyOf(testing::StartsWith("{\"plugin\":\"mdraid\",\""),
                                         testing::StartsWith("{\"plugin\":\"smartctl\",\"")));
    }
    EXPECT_GT(objects, 10);
    EXPECT_GT(events, 2);
    EXPECT_EQ(objects + events, static_cast<int>(Lines(outcome.m_Output).size()));
}

TEST_P(Isolation, WatchPrintsWhatChangesUntilItIsAskedToEnd) {
    const TemporaryFolder folder;
    const std::string head = "md0 : active raid1 sdb[1] sda[0]\n      64 blocks ";
    const std::string tail = "\n\nunused devices: <none>\n";
    folder.Write("proc/mdstat", head + "[2/2] [UU]" + tail);
    folder.Write("next", head + "[2/1] [U_]" + tail);
    const PluginFolder plugins({MDRAID});
    const std::string options = GetParam() ? " --isolate" : "";
    // Each step waits for the output of the one before.
    const Outcome outcome =
        RunProgram({"/bin/sh", "-c",
                    "'" HOST "' --watch=0.01" + options + " --set mdraid.root=. " + plugins.Path() +
                        " >output 2>errors & host=$!\n"
                        "until grep -q 'Physical drive' output; do sleep 0.01; done\n"
                        "mv next proc/mdstat\n"
                        "until grep -q 'Description' output; do sleep 0.01; done\n"
                        "mv proc/mdstat next\n"
                        "until grep -q 'No such file' errors; do sleep 0.01; done\n"
                        "mv next proc/mdstat\n"
                        "kill -TERM $host; wait $host"},
                   folder.Path());
    EXPECT_EQ(outcome.m_Status, 1);  // there was an error
    EXPECT_EQ(ReadFile(folder.Path() / "errors"),
              "service: mdraid: ./proc/mdstat: No such file or directory\n");
    const std::string output = ReadFile(folder.Path() / "output");
    EXPECT_THAT(output, testing::HasSubstr("\nPlug-in mdraid\n"
                                           "  Adapter 0: Linux software RAID (adapter_warn_no.gif)\n"
                                           "    STATUS: OK -> WARNING\n"
                                           "  Logical drive 2: md0 (raid_warn_no.gif)\n"));
    EXPECT_THAT(output, testing::HasSubstr("    STATUS: OPERATIONAL -> DEGRADED\n"));
    EXPECT_THAT(output, testing::HasSubstr("  Event LOGICALDRIVE_DEGRADED\n"));
    EXPECT_THAT(output, testing::HasSubstr("    STATUS: WARNING -> UNKNOWN\n"));
    EXPECT_THAT(output, testing::Not(testing::HasSubstr(" is gone\n")));
}

TEST(Host, WithoutTraceOptionWritesNoFile) {
    const TemporaryFolder folder;
    RunHost({PLUGIN_FOLDER, "--set", "mdraid.root=" + (TREES / "raid0").string(), "--set",
             "smartctl.folder=" + (TREES / "drives").string()},
            folder.Path());
    EXPECT_TRUE(fs::is_empty(folder.Path()));
}

TEST(Host, AsksSmartctlForTheDrivesOfTheMachine) {
    const TemporaryFolder machine;
    machine.Write(
        "bin/smartctl",
        "#!/bin/sh\n"
        "case \"$*\" in\n"
        "--scan-open) printf '/dev/sda -d sat # /dev/sda [SAT], ATA device\\n-x -d sat # an option\\n"
        "# /dev/sdx -d scsi # /dev/sdx, SCSI device open failed: no luck\\n';;\n"
        "'--json -x -d sat /dev/sda') cat \"$DRIVES/sda.json\"; exit 4;;\n"
        "*) echo '{\"smartctl\":{\"messages\":[{\"string\":\"no "
        "luck\",\"severity\":\"error\"}]}}'; exit 2;;\n"
        "esac\n");
    fs::permissions(machine.Path() / "bin/smartctl", fs::perms::owner_all);
    setenv("DRIVES", (TREES / "drives").c_str(), 1);
    const PluginFolder plugins({SMARTCTL});
    const Outcome outcome =
        RunHost({plugins.Path(), "--set", "smartctl.program=" + (machine.Path() / "bin/smartctl").string()});
    EXPECT_EQ(outcome.m_Status, 1);
    EXPECT_EQ(outcome.m_Errors, "service: smartctl: /dev/sdx:1:1: smartctl says: no luck\n");
    EXPECT_EQ(outcome.m_Output, ReadFile(EXPECTED / "machine.txt"));
}

TEST(Host, WithoutSmartctlThereAreNoDrivesAndOneTrace) {
    const TemporaryFolder traces;
    const PluginFolder plugins({SMARTCTL});
    const Outcome outcome = RunProgram({"/usr/bin/env", "PATH=/nowhere", HOST, plugins.Path(), "-t", "275",
                                        "-t", "276", "-d", traces.Path()},
                                       TREES);
    EXPECT_EQ(outcome.m_Status, 0);
    EXPECT_EQ(outcome.m_Errors, "");
    EXPECT_EQ(outcome.m_Output, "Plug-in smartctl\n");
    const std::string text = ReadFile(traces.Path() / "trace-275.log");
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1);
    EXPECT_NE(text.find("no drives: smartctl: No such file or directory\n"), std::string::npos);
    EXPECT_FALSE(fs::exists(traces.Path() / "trace-276.log"));
}

TEST(Host, AListOfDrivesThatFailsIsAnError) {
    const PluginFolder plugins({SMARTCTL});
    for (const std::string error : {"/dev/null: Permission denied", "/nowhere: No such file or directory"}) {
        const std::string program = error.substr(0, error.find(':'));
        const Outcome outcome = RunHost({plugins.Path(), "--set", "smartctl.program=" + program});
        EXPECT_EQ(outcome.m_Status, 1);
        EXPECT_EQ(outcome.m_Errors, "service: smartctl: " + error + "\n");
    }
}

TEST(Host, DriveThatCannotBeReadDoesNotHideTheOthers) {
    const TemporaryFolder drives;
    drives.Write("a.json", "{\"device\":");
    drives.Write("b.json", "{}");
    drives.Write("c.json",
                 R"({"device":{"protocol":"ATA"},"model_name":"ACME \u001b[31mX1","rotation_rate":7200})");
    drives.Write("d.txt", "not looked at");
    const PluginFolder plugins({SMARTCTL});
    const Outcome outcome = RunHost({plugins.Path(), "--set", "smartctl.folder=."}, drives.Path());
    EXPECT_EQ(outcome.m_Status, 1);
    EXPECT_EQ(outcome.m_Errors,
              "service: smartctl: ./a.json:1:11: the report breaks off\n"
              "service: smartctl: ./b.json: no report of smartctl\n");
    EXPECT_NE(outcome.m_Output.find("  Adapter 0: SATA drives (adapter_ok_no.gif)\n"), std::string::npos);
    EXPECT_NE(outcome.m_Output.find("?[31mX1"), std::string::npos);
    EXPECT_EQ(outcome.m_Output.find('\x1B'), std::string::npos);
}

TEST(Host, ReportsEveryDriveOfAFolder) {
    std::ptrdiff_t files = 0;
    for (const auto& entry : fs::directory_iterator(DRIVES)) {
        files += entry.path().extension() == ".json" ? 1 : 0;
    }
    const PluginFolder plugins({SMARTCTL});
    const Outcome outcome = RunHost({plugins.Path(), "--set", "smartctl.folder=" + DRIVES.string()});
    EXPECT_EQ(outcome.m_Status, 0);
    EXPECT_EQ(outcome.m_Errors, "");
    const std::vector<std::string> lines = Lines(outcome.m_Output);
    const auto drives = std::count_if(lines.begin(), lines.end(), [](const std::string& line) {
        return line.find("    Physical drive ") == 0;
    });
    EXPECT_GT(files, 0);
    EXPECT_EQ(drives, files);
}

TEST(Plugins, ExportTheirEntryPointsAndNothingElse) {
    for (const fs::path& plugin : {MDRAID, SMARTCTL}) {
        const Outcome outcome =
            RunProgram({NM, "-D", "--defined-only", "--format=just-symbols", plugin}, TREES);
        EXPECT_EQ(outcome.m_Status, 0) << outcome.m_Errors;
        EXPECT_THAT(Lines(outcome.m_Output),
                    testing::UnorderedElementsAre("PluginBuild", "PluginConfigure", "PluginExecute",
                                                  "PluginGetEvents", "PluginGetObjects",
                                                  "PluginInterfaceVersion", "PluginName"));
    }
}

TEST(Host, MissingTreeAndFolderAreErrors) {
    const Outcome outcome =
        RunHost({PLUGIN_FOLDER, "--set", "mdraid.root=nowhere", "--set", "smartctl.folder=nowhere"});
    EXPECT_EQ(outcome.m_Status, 1);
    EXPECT_EQ(outcome.m_Errors,
              "service: mdraid: nowhere/proc/mdstat: No such file or directory\n"
              "service: smartctl: nowhere: No such file or directory\n");
}

TEST(Host, BadPluginGetsOneLineAndTheOthersGoOn) {
    struct Case {
        const char* m_Plugin;
        const char* m_Error;
    };
    const Case CASES[] = {
        {"version.so",
         "service: version.so: is made for version 2 of the interface, this host has version 1\n"},
        {"major.so",
         "service: major.so: does not fit this host: the module was built with PI_VERSION_MAJOR = 2, "
         "libpi " PI_VERSION_STRING " with 1\n"},
        {"debug_mode.so",
         "service: debug_mode.so: does not fit this host: the module was built with _GLIBCXX_DEBUG = 1, "
         "libpi " PI_VERSION_STRING " with 0\n"},
        {"old_strings.so",
         "service: old_strings.so: does not fit this host: the module was built with _GLIBCXX_USE_CXX11_ABI "
         "= 0, libpi " PI_VERSION_STRING " with 1\n"},
        {"old_string_call.so",
         "service: old_string_call.so: undefined symbol: _ZN2PI17ErrorCodeToStringEi, which the libraries of "
         "this host "
         "do not have: perhaps it was built for another release, or in another mode of the standard "
         "library\n"},
        {"entry.so", "service: entry.so: has no entry point PluginGetObjects\n"},
        {"throw.so", "service: bad: exception: thrown by the plug-in\n"},
        {"throw_anything.so", "service: bad: exception of an unknown type\n"},
        {"error_without_text.so", "service: bad: error 20006 INVALID_PARAMETER\n"},
        {"control_characters.so", "service: b?[1md: two?lines\n"},
    };
    for (const Case& row : CASES) {
        const PluginFolder plugins({BAD / row.m_Plugin, MDRAID});
        const Outcome outcome = RunHost({plugins.Path(), "--set", "mdraid.root=raid0"});
        EXPECT_EQ(outcome.m_Status, 1) << row.m_Plugin;
        EXPECT_EQ(outcome.m_Errors, row.m_Error);
        EXPECT_NE(WithoutTimes(outcome.m_Output).find(ReadFile(EXPECTED / "raid0.txt")), std::string::npos)
            << outcome.m_Output;
        EXPECT_EQ(outcome.m_Output.find('\x1B'), std::string::npos);
    }
}

TEST(Host, AThreadIsCancelledWithinAPlugin) {
    const auto plugin = service::LoadPlugin(BAD / "cancel.so");
    std::vector<std::string> errors;
    EXPECT_TRUE(PI::Test::EndsCancelled([&] { plugin->GetObjects(errors); }));
    EXPECT_THAT(errors, testing::IsEmpty());
}

TEST(Host, PluginThatDoesNotSayHowItWasBuiltIsTakenAsBeforeThereWasACheck) {
    const PluginFolder plugins({BAD / "unchecked.so"});
    const Outcome outcome = RunHost({plugins.Path()});
    EXPECT_EQ(outcome.m_Errors, "service: bad: two?lines\n");
    EXPECT_EQ(outcome.m_Output.substr(0, 12), "Plug-in bad\n");
}

TEST_P(Isolation, FileThatIsNoLibraryGetsOneLine) {
    const PluginFolder plugins({});
    const std::string whole = ReadFile(MDRAID);
    const auto patched = [&whole](std::size_t place, char byte) {
        std::string text = whole;
        text[place] = byte;
        return text;
    };
    plugins.m_Folder.Write("a-empty.so", "");
    plugins.m_Folder.Write("b-text.so", "just a text");
    plugins.m_Folder.Write("c-32-bits.so", patched(4, 1));
    plugins.m_Folder.Write("d-big-endian.so", patched(5, 2));
    plugins.m_Folder.Write("e-arm.so", patched(18, '\xB7'));
    plugins.m_Folder.Write("f-program.so", patched(16, 2));
    plugins.m_Folder.Write("g-header.so", whole.substr(0, 64));
    plugins.m_Folder.Write("h-page.so", whole.substr(0, 4096));
    fs::create_directory(plugins.m_Folder.Path() / "i-folder.so");
    ASSERT_EQ(mkfifo((plugins.m_Folder.Path() / "j-pipe.so").c_str(), 0600), 0);
    fs::create_symlink("nowhere", plugins.m_Folder.Path() / "k-link.so");
    fs::create_symlink(MDRAID, plugins.m_Folder.Path() / "l-whole.so");

    std::vector<std::string> arguments = Options();
    arguments.insert(arguments.end(), {plugins.Path(), "--set", "mdraid.root=raid0"});
    const Outcome outcome = RunHost(arguments);
    EXPECT_EQ(outcome.m_Status, 1);
    EXPECT_EQ(outcome.m_Errors,
              "service: a-empty.so: is no shared library\n"
              "service: b-text.so: is no shared library\n"
              "service: c-32-bits.so: is made for another kind of machine\n"
              "service: d-big-endian.so: is made for another kind of machine\n"
              "service: e-arm.so: is made for another kind of machine\n"
              "service: f-program.so: is no shared library\n"
              "service: g-header.so: breaks off\n"
              "service: h-page.so: breaks off\n"
              "service: i-folder.so: is no file\n"
              "service: j-pipe.so: is no file\n"
              "service: k-link.so: No such file or directory\n");
    EXPECT_EQ(WithoutTimes(outcome.m_Output), ReadFile(EXPECTED / "raid0.txt"));
}

TEST_P(Isolation, LibraryThatIsCutOffAnywhereGetsOneLine) {
    const std::string whole = ReadFile(MDRAID);
    for (std::size_t part = 1; part < 16; ++part) {
        const PluginFolder plugins({});
        plugins.m_Folder.Write("cut.so", whole.substr(0, whole.size() * part / 16));
        std::vector<std::string> arguments = Options();
        arguments.insert(arguments.end(), {plugins.Path(), "--set", "mdraid.root=raid0"});
        const Outcome outcome = RunHost(arguments);
        // What no loader reads, at the end, may be missing.
        EXPECT_THAT(outcome.m_Errors,
                    testing::AnyOf("",
                                   "service: cut.so: breaks off\nservice: no plug-in mdraid is loaded that "
                                   "could be set up\n"))
            << part;
        EXPECT_EQ(outcome.m_Status, outcome.m_Errors.empty() ? 0 : 1);
    }
}

TEST_P(Isolation, PrintsTheSame) {
    std::vector<std::string> arguments = Options();
    arguments.insert(arguments.end(),
                     {PLUGIN_FOLDER, "--set", "mdraid.root=degraded", "--set", "smartctl.folder=drives"});
    const Outcome outcome = RunHost(arguments);
    EXPECT_EQ(outcome.m_Status, 0);
    EXPECT_EQ(outcome.m_Errors, "");
    EXPECT_EQ(WithoutTimes(outcome.m_Output),
              ReadFile(EXPECTED / "degraded.txt") + ReadFile(EXPECTED / "drives.txt"));
}

TEST_P(Isolation, OutputThatCannotBeWrittenIsAnError) {
    const std::string command = "'" HOST "' " + std::string(GetParam() ? "--isolate " : "");
    const PluginFolder plugins({MDRAID});
    for (const std::string& arguments :
         {plugins.Path() + " --set mdraid.root=raid0", std::string("--help")}) {
        for (const std::string output : {">&-", ">/dev/full"}) {
            const Outcome outcome = RunProgram({"/bin/sh", "-c", command + arguments + output}, TREES);
            EXPECT_EQ(outcome.m_Status, 1) << arguments << output;
            EXPECT_EQ(outcome.m_Errors, "service: the output cannot be written\n");
        }
    }
}

TEST_P(Isolation, TheSamePluginAgainIsRefused) {
    const PluginFolder plugins({MDRAID});
    fs::create_symlink(MDRAID, fs::path(plugins.Path()) / "twin.so");
    std::vector<std::string> arguments = Options();
    arguments.insert(arguments.end(), {plugins.Path(), "--set", "mdraid.root=raid0"});
    const Outcome outcome = RunHost(arguments);
    EXPECT_EQ(outcome.m_Status, 1);
    EXPECT_EQ(outcome.m_Errors, "service: twin.so: is the plug-in mdraid, which is loaded already\n");
    EXPECT_EQ(WithoutTimes(outcome.m_Output), ReadFile(EXPECTED / "raid0.txt"));
}

TEST(Host, AnIdentifierOfTwoObjectsIsToldOnceAndIsNoChange) {
    setenv("FAULT", "twice", 1);
    const PluginFolder plugins({BAD / "fault.so"});
    const Outcome outcome = RunProgram(
        {"/bin/sh", "-c",
         ">output; '" HOST "' --watch=0.01 . >output & until [ $(grep -c TEST_TRAP output) -gt 2 ]; "
         "do sleep 0.01; done; kill -TERM $!; wait $!"},
        plugins.Path());
    unsetenv("FAULT");
    EXPECT_EQ(outcome.m_Status, 1);
    EXPECT_EQ(outcome.m_Errors, "service: fault: more than one object has the identifier 1\n");
    const std::string output = ReadFile(fs::path(plugins.Path()) / "output");
    EXPECT_THAT(output, testing::StartsWith("Plug-in fault\n  Adapter 0: not set\n"));
    EXPECT_THAT(output, testing::HasSubstr("\n  Adapter 0: another\n"));
    EXPECT_THAT(output, testing::Not(testing::HasSubstr("->")));
}

TEST(Host, IsolatedPluginThatFailsIsToldAndTheOthersGoOn) {
    setenv("FAULT", "objects abort", 1);
    const PluginFolder plugins({BAD / "fault.so", MDRAID});
    const Outcome outcome = RunHost({plugins.Path(), "--isolate", "--set", "mdraid.root=raid0"});
    unsetenv("FAULT");
    EXPECT_EQ(outcome.m_Status, 1);
    EXPECT_THAT(
        outcome.m_Errors,
        testing::StartsWith("service: fault: PluginGetObjects: ended by signal 6 (Aborted); it may be "
                            "started again after 100 ms\n"));
    EXPECT_THAT(outcome.m_Output,
                testing::HasSubstr("\n    Description: Internal error of plug-in fault: PluginGetObjects: "
                                   "ended by signal 6 (Aborted); "));
    EXPECT_THAT(WithoutTimes(outcome.m_Output), testing::EndsWith(ReadFile(EXPECTED / "raid0.txt")));
}

TEST(Host, LimitsOfIsolatedPlugins) {
    const PluginFolder plugins({BAD / "fault.so"});
    setenv("FAULT", "objects loop", 1);
    const Outcome loop = RunHost({plugins.Path(), "--isolate", "--time-limit", "500"});
    setenv("FAULT", "objects leak", 1);
    const Outcome leak =
        RunHost({plugins.Path(), "--isolate", "--memory-limit", "64", "--time-limit", "3000"});
    unsetenv("FAULT");
    EXPECT_THAT(loop.m_Errors, testing::HasSubstr(": no answer within 500 ms; "));
    EXPECT_THAT(leak.m_Output, testing::HasSubstr("Internal error of plug-in fault: PluginGetObjects: "));
}

TEST(Host, WhatAnIsolatedPluginPrintsIsNotTakenForTheHostsOutput) {
    const PluginFolder plugins({BAD / "fault.so"});
    setenv("FAULT", "print", 1);
    const Outcome outcome = RunHost({plugins.Path(), "--isolate"});
    unsetenv("FAULT");
    EXPECT_EQ(outcome.m_Errors, "a line\n");
    EXPECT_THAT(outcome.m_Output, testing::StartsWith("Plug-in fault\n  Adapter 0: not set\n"));
}

TEST(Host, IsolatesWhateverNameItIsCalledBy) {
    const PluginFolder plugins({BAD / "fault.so"});
    const Outcome outcome = RunProgram(
        {"/bin/bash", "-c", "exec -a service \"$0\" \"$@\"", HOST, plugins.Path(), "--isolate"}, TREES);
    EXPECT_EQ(outcome.m_Errors, "");
    EXPECT_EQ(outcome.m_Status, 0);
}

TEST(Host, IsolatedPluginsTraceIntoFilesOfTheirOwn) {
    const TemporaryFolder traces;
    const Outcome outcome = RunHost({PLUGIN_FOLDER, "--isolate", "--set", "mdraid.root=rebuilding", "--set",
                                     "smartctl.folder=drives", "-t", "275", "-d", traces.Path()});
    EXPECT_EQ(outcome.m_Status, 0);
    EXPECT_THAT(TraceMessages(ReadFile(traces.Path() / "trace-275-mdraid.log"), "[PI_Trace]"),
                testing::SizeIs(3));
    EXPECT_THAT(TraceMessages(ReadFile(traces.Path() / "trace-275-smartctl.log"), "[PI_Trace]"),
                testing::SizeIs(3));
    EXPECT_FALSE(fs::exists(traces.Path() / "trace-275.log"));
}

TEST(Host, TracesThatCannotBeWrittenAreAnError) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo((folder.Path() / "trace-275.log").c_str(), 0600), 0);
    EXPECT_EQ(RunHost({PLUGIN_FOLDER, "-t", "275", "-d", "nowhere"}).m_Errors,
              "service: nowhere/trace-275.log: No such file or directory\n");
    fs::create_symlink("nowhere/file", folder.Path() / "trace-276.log");
    EXPECT_EQ(RunHost({PLUGIN_FOLDER, "-t", "276"}, folder.Path()).m_Errors,
              "service: ./trace-276.log: is no file\n");
    const Outcome outcome = RunHost({PLUGIN_FOLDER, "-t", "275"}, folder.Path());
    EXPECT_EQ(outcome.m_Status, 1);
    EXPECT_EQ(outcome.m_Errors, "service: ./trace-275.log: is no file\n");
    EXPECT_EQ(outcome.m_Output, "");
}

TEST_P(Isolation, PluginThatDoesNotTakeASettingIsNotUsed) {
    const PluginFolder plugins({MDRAID, BAD / "error_without_text.so"});
    std::vector<std::string> arguments = Options();
    arguments.insert(arguments.end(), {plugins.Path(), "--set", "mdraid.root=raid0", "--set",
                                       "mdraid.colour=red", "--set", "bad.file=x", "--set", "other.x=1"});
    const Outcome outcome = RunHost(arguments);
    EXPECT_EQ(outcome.m_Status, 1);
    EXPECT_EQ(outcome.m_Output, "");
    EXPECT_EQ(outcome.m_Errors,
              "service: error_without_text.so: does not take the setting file: error 20000 GENERAL\n"
              "service: mdraid.so: does not take the setting colour: error 20006 INVALID_PARAMETER\n"
              "service: no plug-in mdraid is loaded that could be set up\n"
              "service: no plug-in bad is loaded that could be set up\n"
              "service: no plug-in other is loaded that could be set up\n");
}

TEST(Host, BadUsageEndsWithTwoAndNamesTheHelp) {
    const Outcome help = RunHost({"--help"});
    EXPECT_EQ(help.m_Status, 0);
    EXPECT_EQ(help.m_Errors, "");
    EXPECT_THAT(help.m_Output, testing::HasSubstr("\nUsage: service [OPTIONS] FOLDER\n"));
    EXPECT_THAT(help.m_Output, testing::HasSubstr("--execute PLUGIN:OBJECT:OPERATION[:NAME=VALUE]..."));
    EXPECT_THAT(help.m_Output, testing::Not(testing::HasSubstr("isolated-plugin")));
    const Outcome outcome = RunHost({"-t", "4711", "."});
    EXPECT_EQ(outcome.m_Status, 2);
    EXPECT_EQ(outcome.m_Output, "");
    EXPECT_THAT(outcome.m_Errors, testing::StartsWith("service: --trace: 4711 not in {0,1,"));
    EXPECT_THAT(outcome.m_Errors, testing::EndsWith("; see service --help\n"));
}

TEST(Host, MissingFolderOrLanguageFileIsAnError) {
    EXPECT_EQ(RunHost({"nowhere"}).m_Errors, "service: nowhere: No such file or directory\n");
    EXPECT_EQ(RunHost({"nowhere"}).m_Status, 1);
    EXPECT_EQ(RunHost({PLUGIN_FOLDER, "-l", "nowhere.xml"}).m_Status, 1);
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo((folder.Path() / "pipe.xml").c_str(), 0600), 0);
    EXPECT_EQ(RunHost({PLUGIN_FOLDER, "-l", "pipe.xml"}, folder.Path()).m_Errors,
              "service: pipe.xml: is no file\n");
}

TEST(MdraidPlugin, ReportsWhatChangesBetweenTwoPolls) {
    const TemporaryFolder root;
    const std::string head = "Personalities : [raid1] \nmd0 : active raid1 sdb[1] sda[0]\n      64 blocks ";
    const std::string tail = "\n      \nunused devices: <none>\n";
    const auto plugin = service::LoadPlugin(MDRAID, {{"mdraid", "root", root.Path()}});
    std::vector<std::string> errors;
    std::vector<std::uint64_t> arrayIDs;
    const auto poll = [&](const std::string& slots) {
        root.Write("proc/mdstat", head + slots + tail);
        arrayIDs.push_back(plugin->GetObjects(errors).at(1).m_ObjectID);
        std::vector<unsigned> events;
        for (const PI::CEvent& event : plugin->GetEvents(errors)) {
            EXPECT_EQ(event.m_Handle, arrayIDs.back());
            events.push_back(event.m_EventID);
        }
        return events;
    };
    EXPECT_THAT(poll("[2/2] [UU]"), ElementsAre());
    EXPECT_THAT(poll("[2/1] [U_]"), ElementsAre(PI::EventID::LOGICALDRIVE_DEGRADED));
    EXPECT_THAT(poll("[2/1] [U_]"), ElementsAre());
    EXPECT_THAT(poll("[2/2] [UU]"), ElementsAre(PI::EventID::LOGICALDRIVE_OPERATIONAL));
    EXPECT_THAT(arrayIDs, testing::Each(arrayIDs.front()));
    EXPECT_THAT(errors, testing::IsEmpty());
}

/// What the host prints of a list.
Outcome RunOnList(const std::string& list) {
    const TemporaryFolder root;
    root.Write("proc/mdstat", list);
    const PluginFolder plugins({MDRAID});
    Outcome outcome = RunHost({plugins.Path(), "--set", "mdraid.root=."}, root.Path());
    outcome.m_Output = WithoutTimes(outcome.m_Output);
    return outcome;
}

TEST(MdraidPlugin, TruncatedListNamesThePlaceAndKeepsTheOtherArrays) {
    const Outcome outcome = RunOnList(
        "md0 : active raid1 sdb[1] sda[0]\n      64 blocks [2/2] [UU]\n\n"
        "md1 : active raid1 sdd[1] sdc[0]\n      64 blo");
    EXPECT_EQ(outcome.m_Status, 1);
    EXPECT_EQ(outcome.m_Errors, "service: mdraid: ./proc/mdstat: line 5: array md1: the text breaks off\n");
    EXPECT_THAT(outcome.m_Output, testing::HasSubstr(": md0 (raid_ok_no.gif)\n"));
    EXPECT_THAT(outcome.m_Output, testing::HasSubstr(": md1 (raid_warn_no.gif)\n"));
}

TEST(MdraidPlugin, WithoutAListThatCanBeReadTheStatusIsUnknown) {
    const std::string expected =
        "Plug-in mdraid\n"
        "  Adapter 0: Linux software RAID (adapter_warn_no.gif)\n"
        "    ADAPTER_NUMBER: 0 [properties.htm#ADAPTER_ADAPTER_NUMBER]\n"
        "    STATUS: UNKNOWN [properties.htm#ADAPTER_STATUS]\n";
    const std::pair<std::string, std::string> CASES[] = {
        {"", "the text breaks off: the list of unused devices is missing"},
        {std::string("\x7F\x45LF\0\0", 6), "this is binary data"},
        {"<html>\n", "\"<html>\" is no array"},
    };
    for (const auto& [list, error] : CASES) {
        const Outcome outcome = RunOnList(list);
        EXPECT_EQ(outcome.m_Status, 1);
        EXPECT_EQ(Lines(outcome.m_Errors).at(0), "service: mdraid: ./proc/mdstat: line 1: " + error);
        EXPECT_EQ(outcome.m_Output, expected);
    }
    const TemporaryFolder root;
    const PluginFolder plugins({MDRAID});
    EXPECT_EQ(RunHost({plugins.Path(), "--set", "mdraid.root=."}, root.Path()).m_Output, expected);
}

TEST(MdraidPlugin, StatusOfTheAdapterIsTheWorstThatIsKnown) {
    const std::string good = "md0 : active raid1 sdb[1] sda[0]\n      64 blocks [2/2] [UU]\n\n";
    const std::string degraded = "md1 : active raid1 sdb[1] sda[0](F)\n      64 blocks [2/1] [_U]\n\n";
    const std::string failed = "md2 : active raid0 sdb[1] sda[0](F)\n      64 blocks 64k chunks\n\n";
    const std::string unknown = "md3 : active raid1 sdb[1] sda[0]\n\n";
    const std::string container = "md4 : inactive sda[0](S)\n      64 blocks super external:imsm\n\n";
    const std::string end = "unused devices: <none>\n";
    const std::pair<std::string, const char*> CASES[] = {
        {end, "OK"},
        {good + end, "OK"},
        {good + container + end, "OK"},
        {good, "UNKNOWN"},  // breaks off
        {good + unknown + end, "UNKNOWN"},
        {good + unknown + degraded + end, "WARNING"},
        {degraded + unknown, "WARNING"},
        {failed + unknown + degraded + good, "ERROR"},
    };
    for (const auto& [list, status] : CASES) {
        EXPECT_EQ(Lines(RunOnList(list).m_Output).at(3),
                  "    STATUS: " + std::string(status) + " [properties.htm#ADAPTER_STATUS]")
            << list;
    }
}

TEST(MdraidPlugin, ReportsContainersAndUnusedDevices) {
    const Outcome outcome = RunOnList(
        "md126 : active raid1 sda[0]\n      64 blocks super external:/md127/0 [1/1] [U]\n\n"
        "md127 : inactive sdb[1](S) sda[0](S)\n      64 blocks super external:imsm\n\n"
        "unused devices: sdx1\n");
    EXPECT_EQ(outcome.m_Status, 0);
    EXPECT_EQ(outcome.m_Output.substr(outcome.m_Output.find("    Logical drive 3:")),
              "    Logical drive 3: md127 (raid_ok_no.gif)\n"
              "      OS_DEVICE: /dev/md127 [properties.htm#LOGICAL_DRIVE_OS_DEVICE]\n"
              "      LOGICAL_DRIVE_NUMBER: 127 [properties.htm#LOGICAL_DRIVE_LOGICAL_DRIVE_NUMBER]\n"
              "      USAGE: container\n"
              "      STATUS: OPERATIONAL [properties.htm#LOGICAL_DRIVE_STATUS]\n"
              "      Physical drive 5: sdb (drive_ok_no.gif)\n"
              "        OS_DEVICE: /dev/sdb [properties.htm#PHYSICAL_DRIVE_OS_DEVICE]\n"
              "        STATUS: AVAILABLE [properties.htm#PHYSICAL_DRIVE_STATUS]\n"
              "        USAGE: not in use [properties.htm#PHYSICAL_DRIVE_USAGE]\n"
              "      Physical drive 6: sda (drive_op_ok_no.gif)\n"
              "        OS_DEVICE: /dev/sda [properties.htm#PHYSICAL_DRIVE_OS_DEVICE]\n"
              "        STATUS: OPERATIONAL [properties.htm#PHYSICAL_DRIVE_STATUS]\n"
              "        USAGE: in md126 [properties.htm#PHYSICAL_DRIVE_USAGE]\n"
              "    Physical drive 7: sdx1 (drive_ok_no.gif)\n"
              "      OS_DEVICE: /dev/sdx1 [properties.htm#PHYSICAL_DRIVE_OS_DEVICE]\n"
              "      STATUS: AVAILABLE [properties.htm#PHYSICAL_DRIVE_STATUS]\n"
              "      USAGE: in no array [properties.htm#PHYSICAL_DRIVE_USAGE]\n");
    EXPECT_NE(outcome.m_Output.find("CUR_LOGICAL_DRIVES: 1\n"), std::string::npos);
}

TEST(MdraidPlugin, SynchronisationElsewhereHasNoProgress) {
    const Outcome outcome = RunOnList(
        "md0 : active raid1 sdb[1] sda[0]\n      64 blocks [2/2] [UU]\n      \tresync=REMOTE\n\n"
        "unused devices: <none>\n");
    EXPECT_NE(outcome.m_Output.find("ACTIVITY: VERIFYINGFIXING"), std::string::npos);
    EXPECT_EQ(outcome.m_Output.find("PROGRESS"), std::string::npos);
    EXPECT_EQ(outcome.m_Output.find("REMAINING_TIME"), std::string::npos);
}

TEST(MdraidPlugin, RebuildThatHasJustBegunHasTheKernelsTime) {
    const Outcome outcome = RunOnList(
        "md0 : active raid1 sdc[2] sda[0]\n      976630464 blocks super 1.2 [2/1] [U_]\n"
        "      [>....................]  recovery =  0.0% (16384/976630464) finish=1367.0min "
        "speed=11904K/sec\n\n"
        "unused devices: <none>\n");
    EXPECT_NE(outcome.m_Output.find("REBUILD_PROGRESS: 0.0\n"), std::string::npos);
    EXPECT_NE(outcome.m_Output.find("REMAINING_TIME: 22:47:00 "), std::string::npos);
}

TEST(MdraidPlugin, DriveThatIsNamedSeveralTimesIsAsManyObjects) {
    const TemporaryFolder root;
    root.Write("proc/mdstat",
               "md0 : active raid1 sda[3](S) sda[2](S) sda[1] sdb[0]\n      64 blocks [2/2] [UU]\n\nunused "
               "devices: <none>\n");
    const auto plugin = service::LoadPlugin(MDRAID, {{"mdraid", "root", root.Path()}});
    std::vector<std::string> errors;
    std::vector<std::uint64_t> ids;
    for (const PI::CObject& object : plugin->GetObjects(errors)) {
        ids.push_back(object.m_ObjectID);
    }
    std::sort(ids.begin(), ids.end());
    EXPECT_EQ(ids.size(), 6U);
    EXPECT_EQ(std::adjacent_find(ids.begin(), ids.end()), ids.end());
}

TEST(MdraidPlugin, DeviceFilesAreBelowDev) {
    const Outcome outcome = RunOnList(
        "../../../etc/shadow : active raid1 ../../../etc/passwd[2] a/../../b[1] cciss/c0d0[0]\n"
        "      64 blocks [3/3] [UUU]\n\nunused devices: .. ../dev\n");
    EXPECT_EQ(outcome.m_Status, 0);
    std::vector<std::string> devices;
    for (const std::string& line : Lines(outcome.m_Output)) {
        if (line.find("OS_DEVICE:") != std::string::npos) {
            devices.push_back(line);
        }
    }
    EXPECT_THAT(devices,
                ElementsAre("        OS_DEVICE: /dev/cciss/c0d0 [properties.htm#PHYSICAL_DRIVE_OS_DEVICE]"));
    EXPECT_NE(outcome.m_Output.find("Physical drive 3: ../../../etc/passwd "), std::string::npos);
}

TEST(MdraidPlugin, CarriesOutWhatTheHostIsAskedForIsolatedOrNot) {
    for (const bool isIsolated : {false, true}) {
        const TemporaryFolder root;
        root.Write(
            "proc/mdstat",
            "md0 : active raid1 sdb1[1] sda1[0]\n      64 blocks [2/2] [UU]\n\nunused devices: <none>\n");
        root.Write("mdadm", "#!/bin/sh\necho \"$*\"\n");
        fs::permissions(root.Path() / "mdadm", fs::perms::owner_all);
        const PluginFolder plugins({MDRAID});
        std::vector<std::string> options = {
            plugins.Path(), "--set", "mdraid.root=.",           "--set", "mdraid.mdadm=./mdadm",
            "-a",           "-x",    "mdraid:sda1:MAKE_OFFLINE"};
        if (isIsolated) {
            options.emplace_back("--isolate");
        }
        const Outcome outcome = RunHost(options, root.Path());
        EXPECT_EQ(outcome.m_Errors, "");
        EXPECT_EQ(outcome.m_Output, "MAKE_OFFLINE of sda1: COMPLETE, --manage /dev/md0 --fail /dev/sda1\n");
        EXPECT_EQ(outcome.m_Status, 0);
    }
}

TEST(MdraidPlugin, DoesNotWaitForAPipe) {
    const TemporaryFolder root;
    fs::create_directories(root.Path() / "proc");
    ASSERT_EQ(mkfifo((root.Path() / "proc/mdstat").c_str(), 0600), 0);
    const PluginFolder plugins({MDRAID});
    const Outcome outcome = RunHost({plugins.Path(), "--set", "mdraid.root=."}, root.Path());
    EXPECT_EQ(outcome.m_Errors, "service: mdraid: ./proc/mdstat: is no file\n");
}

TEST(MdraidPlugin, NameCannotLeadOutOfTheTree) {
    const TemporaryFolder root;
    root.Write("elsewhere/md/level", "raid6\n");
    root.Write("sys/block/placeholder", "");
    root.Write("proc/mdstat",
               "Personalities : \n../../elsewhere : active raid1 sda[0]\n      64 blocks [1/1] [U]\n      \n"
               ".. : active raid1 sda[0]\n      64 blocks [1/1] [U]\n      \nunused devices: <none>\n");
    const PluginFolder plugins({MDRAID});
    const Outcome outcome = RunHost({plugins.Path(), "--set", "mdraid.root=" + root.Path().string()});
    EXPECT_EQ(outcome.m_Status, 0);
    EXPECT_NE(outcome.m_Output.find("RAID_LEVEL: RAID1"), std::string::npos);
    EXPECT_EQ(outcome.m_Output.find("RAID6"), std::string::npos);
}

}  // namespace
