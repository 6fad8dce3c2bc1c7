// SPDX-License-Identifier: Apache-2.0
// Plug-ins in processes of their own, and what they do to them.
#include <gmock/gmock.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

#include "isolated_plugin.h"
#include "plugin.h"
#include "run_program.h"
#include "support/sanitizer.h"

namespace {

namespace fs = std::filesystem;
using PI::Test::TemporaryFolder;
using service::IsolationLimits;
using service::Plugin;
using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr milliseconds HOUR{3600000};
const std::string MDRAID = PLUGIN_FOLDER "/mdraid.so";
const char* const FAULT_PLUGIN = BAD_PLUGIN_FOLDER "/fault.so";

class Isolated : public testing::Test {
protected:
    Isolated() {
        unsetenv("FAULT");
        unsetenv("FAULT_ONCE");
        PI::CGlobalAdapterID::AllHostsAdaptersUniqueIDs.clear();
        m_Limits.m_MemoryMB = 64;
    }

    static void SetFault(const std::string& fault) { setenv("FAULT", fault.c_str(), 1); }

    std::unique_ptr<Plugin> Start(const std::string& file = FAULT_PLUGIN,
                                  const std::vector<std::string>& settings = {}) const {
        service::Texts command = {HOST, "--memory-limit=64", "--isolated-plugin=" + file, "."};
        for (const std::string& setting : settings) {
            command.insert(command.end(), {"--set", setting});
        }
        return service::IsolatePlugin(command, "no name", m_Limits);
    }

    /// Calls as soon as the plug-in may have been started again.
    std::vector<PI::CObject> GetObjects(Plugin& plugin) {
        std::vector<PI::CObject> objects;
        do {
            m_Errors.clear();
            objects = plugin.GetObjects(m_Errors);
        } while (m_Errors == std::vector<std::string>{"waits to be started again"});
        return objects;
    }

    std::string TextOfOnlyEvent(Plugin& plugin) {
        std::string text;
        int count = 0;
        for (PI::CEvent& event : plugin.GetEvents(m_Errors)) {
            if (event.m_EventID == PI::EventID::INTERNAL) {
                EXPECT_EQ(event.m_Severity, PI::Severity::ERROR);
                EXPECT_EQ(event.m_Source, "service");
                EXPECT_NE(event.m_TimeStamp, 0U);
                text = event.GetPlaceHolder1() + " " + event.GetPlaceHolder2();
                ++count;
            }
        }
        EXPECT_EQ(count, 1);
        return text;
    }

    IsolationLimits m_Limits;
    std::vector<std::string> m_Errors;
};

std::uint64_t AdapterNumber(const PI::CObject& object) {
    const PI::CProperty* const number =
        PI::CPluginHelper::FindProperty(object, PI::PropertyID::ADAPTER_NUMBER);
    return number == nullptr ? ~0ULL : number->m_Data.m_Long.m_Value;
}

std::string NameOf(const PI::CObject& object) {
    const PI::CProperty* const name = PI::CPluginHelper::FindProperty(object, PI::PropertyID::NAME);
    return name == nullptr ? "" : name->m_Data.m_String.m_Value;
}

const auto GO_ON = [](const PI::CTask&) { return true; };

struct Kind {
    const char* m_Name;
    const char* m_Text;  ///< of the event, as a regular expression
};

void PrintTo(const Kind& kind, std::ostream* stream) {
    *stream << kind.m_Name;
}

class Fault : public Isolated, public testing::WithParamInterface<Kind> {};

TEST_P(Fault, InAnyFunctionIsAnErrorAndAnEvent) {
    const std::pair<const char*, const char*> FUNCTIONS[] = {
        {"load", "no name loading"},           {"version", "no name loading"},
        {"name", "no name loading"},           {"configure", "no name loading"},
        {"objects", "fault PluginGetObjects"}, {"events", "fault PluginGetEvents"},
        {"execute", "fault PluginExecute"},
    };
    m_Limits.m_FirstPause = m_Limits.m_LongestPause = HOUR;
    const std::string kind = GetParam().m_Name;
    m_Limits.m_Time = milliseconds(kind == "loop" ? 500 : kind == "leak" ? 3000 : 60000);
    for (const auto& [function, text] : FUNCTIONS) {
        SetFault(std::string(function) + " " + GetParam().m_Name);
        const auto plugin = Start(FAULT_PLUGIN, {"fault.name=x"});
        PI::CTask task;
        plugin->GetObjects(m_Errors);
        plugin->Execute(1, {}, GO_ON, task, m_Errors);
        EXPECT_THAT(TextOfOnlyEvent(*plugin),
                    testing::MatchesRegex("plug-in " + std::string(text) + ": " + GetParam().m_Text +
                                          "; it may be started again after 3600000 ms"));
        EXPECT_THAT(m_Errors, testing::Contains("waits to be started again")) << function;
    }
}

// A sanitizer may hang where it reports that memory has ended.
const char* const LEAK_TEXT =
    PI::Test::WITH_SANITIZER ? "(ended with status 1|no answer within 3000 ms)" : "out of memory";

INSTANTIATE_TEST_SUITE_P(
    Isolated, Fault,
    testing::Values(Kind{"abort", "ended by signal 6 .Aborted."}, Kind{"exit", "ended with status 0"},
                    Kind{"loop", "no answer within 500 ms"}, Kind{"leak", LEAK_TEXT},
                    Kind{"garbage", "(a record where none belongs|what cannot be read: byte 1: .*)"},
                    Kind{"record", "(a record where none belongs|what cannot be read: /.*)"},
                    Kind{"flood", "an answer that does not end"}, Kind{"close", "ended with status 1"}),
    [](const auto& instance) { return std::string(instance.param.m_Name); });

TEST_F(Isolated, ProcessIsStartedAgainWithItsSettings) {
    for (const char* const fault : {"objects abort", "configure abort"}) {
        const TemporaryFolder folder;
        setenv("FAULT_ONCE", (folder.Path() / "done").c_str(), 1);
        SetFault(fault);
        m_Limits.m_FirstPause = milliseconds(0);
        const auto plugin =
            Start(FAULT_PLUGIN, {"fault.name=first", "fault.name= second\n", "other.name=third"});
        EXPECT_THAT(GetObjects(*plugin), SizeIs(fault[0] == 'o' ? 0 : 1));
        EXPECT_THAT(m_Errors, ElementsAre(testing::EndsWith(
                                  "ended by signal 6 (Aborted); it may be started again after 0 ms")));
        const auto objects = GetObjects(*plugin);
        EXPECT_THAT(m_Errors, IsEmpty());
        ASSERT_THAT(objects, SizeIs(1));
        EXPECT_EQ(NameOf(objects[0]), "second");  // as the builder trims it
        EXPECT_EQ(plugin->Name(), "fault");
    }
}

TEST_F(Isolated, SettingThatIsRefusedAtTheRestartIsAnErrorOfTheCall) {
    const TemporaryFolder folder;
    setenv("FAULT_ONCE", (folder.Path() / "done").c_str(), 1);
    SetFault("name abort");
    m_Limits.m_FirstPause = milliseconds(0);
    const auto plugin = Start(FAULT_PLUGIN, {"fault.colour=red"});
    EXPECT_THAT(GetObjects(*plugin), IsEmpty());
    EXPECT_THAT(m_Errors, testing::Contains(testing::StartsWith(
                              "loading: does not take the setting colour: error 20006 INVALID_PARAMETER; ")));
}

TEST_F(Isolated, ReasonsOfAFailedStartComeWithTheNextCall) {
    SetFault("load abort");
    m_Limits.m_FirstPause = HOUR;
    const auto plugin = Start();
    plugin->GetObjects(m_Errors);
    EXPECT_THAT(m_Errors,
                ElementsAre(HasSubstr("loading: ended by signal 6 (Aborted);"), "waits to be started again"));
}

TEST_F(Isolated, SettingsAreForThePluginWhateverItsFileIsCalled) {
    const TemporaryFolder folder;
    fs::create_symlink(FAULT_PLUGIN, folder.Path() / "other.so");
    setenv("FAULT_ONCE", "done", 1);
    SetFault("load abort");
    PI::Test::RunProgram({"/bin/sh", "-c",
                          "'" HOST "' --isolate --watch=0.01 --set fault.name=kept . >output & until grep -q "
                          "'NAME: ' output; do sleep 0.01; done; kill -TERM $!; wait $!"},
                         folder.Path());
    EXPECT_THAT(PI::Test::ReadFile(folder.Path() / "output"), HasSubstr("NAME: (none) -> kept\n"));
}

TEST_F(Isolated, PausesDouble) {
    SetFault("load abort");
    m_Limits.m_FirstPause = milliseconds(1);
    m_Limits.m_LongestPause = milliseconds(4);
    const auto plugin = Start();
    EXPECT_THAT(TextOfOnlyEvent(*plugin), HasSubstr("after 1 ms"));
    for (const char* const pause : {"after 2 ms", "after 4 ms", "after 4 ms"}) {
        GetObjects(*plugin);
        EXPECT_THAT(m_Errors, ElementsAre(HasSubstr(pause)));
    }
}

TEST_F(Isolated, PausesBeginAnewAfterALongLife) {
    SetFault("events abort");
    m_Limits.m_FirstPause = milliseconds(1);
    m_Limits.m_LongestPause = milliseconds(4);
    const auto plugin = Start();
    for (int life = 0; life < 3; ++life) {
        GetObjects(*plugin);
        std::this_thread::sleep_for(milliseconds(5));
        GetObjects(*plugin);
        EXPECT_THAT(TextOfOnlyEvent(*plugin), HasSubstr("after 1 ms"));
    }
}

TEST_F(Isolated, AdaptersHaveTheNumbersOfOneProcessAlsoAfterARestart) {
    SetFault("events abort");
    m_Limits.m_FirstPause = milliseconds(0);
    const auto mdraid = Start(MDRAID, {"mdraid.root=" TREES_FOLDER "/raid0"});
    const auto fault = Start();
    std::vector<std::uint64_t> numbers;
    for (int life = 0; life < 2; ++life) {
        numbers.push_back(AdapterNumber(GetObjects(*fault).at(0)));
        numbers.push_back(AdapterNumber(GetObjects(*mdraid).at(0)));
        EXPECT_THAT(TextOfOnlyEvent(*fault), HasSubstr("PluginGetEvents: ended by signal 6"));
    }
    EXPECT_THAT(numbers, ElementsAre(0, 1, 0, 1));
}

TEST_F(Isolated, ObjectsHaveIdentifiersOfTheHost) {
    const auto plugin = Start();
    const PI::CObject before;
    const std::uint64_t first = GetObjects(*plugin).at(0).m_UniqueID;
    const std::uint64_t second = GetObjects(*plugin).at(0).m_UniqueID;
    EXPECT_GT(first, before.m_UniqueID);
    EXPECT_GT(second, first);
}

TEST_F(Isolated, ErrorsOfAPluginArriveAsTheyAre) {
    SetFault("error");
    const auto plugin = Start();
    EXPECT_THAT(GetObjects(*plugin), SizeIs(1));
    EXPECT_THAT(m_Errors, ElementsAre(" two\nlines\xFF "));
}

TEST_F(Isolated, FileThatIsNoPluginIsRefusedAsInTheHostsProcess) {
    for (const char* const name : {"version.so", "entry.so", "debug_mode.so"}) {
        const std::string file = std::string(BAD_PLUGIN_FOLDER "/") + name;
        std::string expected;
        try {
            service::LoadPlugin(file);
        } catch (const std::exception& error) {
            expected = error.what();
        }
        try {
            Start(file);
            ADD_FAILURE() << name;
        } catch (const std::exception& error) {
            EXPECT_EQ(error.what(), expected);
        }
    }
}

TEST_F(Isolated, ProgramThatIsMissingIsAnEvent) {
    const auto plugin = service::IsolatePlugin({"/nowhere/program"}, "no name", m_Limits);
    EXPECT_THAT(TextOfOnlyEvent(*plugin), HasSubstr("loading: /nowhere/program: No such file or directory;"));
}

TEST_F(Isolated, ProcessIsStartedAgainWhereNobodyWaitsForChildren) {
    SetFault("events abort");
    m_Limits.m_FirstPause = milliseconds(0);
    const auto before = std::signal(SIGCHLD, SIG_IGN);
    const auto plugin = Start();
    plugin->GetEvents(m_Errors);
    EXPECT_THAT(GetObjects(*plugin), SizeIs(1));
    std::signal(SIGCHLD, before);
}

TEST_F(Isolated, NothingIsLeftWhenTheHostIsDone) {
    SetFault("objects loop");
    m_Limits.m_Time = milliseconds(100);
    {
        const auto idle = Start(MDRAID);
        const auto hanging = Start();
        hanging->GetObjects(m_Errors);
    }
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

}  // namespace
