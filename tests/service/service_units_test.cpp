// SPDX-License-Identifier: Apache-2.0
// Pieces of the host.
#include <elf.h>
#include <gmock/gmock.h>
#include <pi/exchange/model_json.h>
#include <pi/object_builder.h>
#include <pi/pi.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "changes.h"
#include "event_text.h"
#include "execution.h"
#include "inventory.h"
#include "options.h"
#include "plugin_interface.h"
#include "printable_text.h"
#include "run_program.h"
#include "shared_object.h"
#include "trace_files.h"

namespace {

using service::Options;
using service::PrintableText;
using std::chrono::milliseconds;
using testing::ElementsAre;

TEST(PrintableText, KeepsTextOfAllLanguages) {
    for (const std::string text : {"", "Disk 1~", "Fotos M\u00fcller", "\u65e5\u672c", "\U0001F4BE"}) {
        EXPECT_EQ(PrintableText(text), text);
    }
}

TEST(PrintableText, ReplacesWhatCouldSteerATerminal) {
    EXPECT_EQ(PrintableText("a\x1B[31mb"), "a?[31mb");
    EXPECT_EQ(PrintableText(std::string("a\0b", 3)), "a?b");
    EXPECT_EQ(PrintableText("a\nb\tc\rd\x7F"), "a?b?c?d?");
    EXPECT_EQ(PrintableText("\u0080\u009B\u009F\u00A0"), "???\u00A0");
    EXPECT_EQ(PrintableText("\u202Eevil\u2066\u2028\u200F\u061C"), "?evil????");
}

TEST(PrintableText, ReplacesBytesThatAreNotUTF8) {
    EXPECT_EQ(PrintableText("\xFFz\xC3"), "?z?");
    EXPECT_EQ(PrintableText("\xC0\x80"), "??");            // overlong
    EXPECT_EQ(PrintableText("\xE0\x80\x80"), "???");       // overlong
    EXPECT_EQ(PrintableText("\xED\xA0\x80"), "???");       // surrogate
    EXPECT_EQ(PrintableText("\xF4\x90\x80\x80"), "????");  // above the last character
    EXPECT_EQ(PrintableText("\xE6\x97z"), "??z");          // cut short
}

PI::CObject MakeObject(unsigned long id, PI::_OBJECT_TYPE type, const char* name,
                       const std::vector<std::uint64_t>& parents) {
    PI::CObject object(id, type);
    object.m_RelatedIDs1 = parents;
    object.m_Properties.emplace_back(PI::PropertyID::NAME, false).SetValue(name);
    return object;
}

TEST(Inventory, PartsStandBelowTheirWhole) {
    std::vector<PI::CObject> objects = {
        MakeObject(1, PI::ObjectType::ADAPTER_3, "A", {}), MakeObject(2, LOGICAL_DRIVE, "L", {1}),
        MakeObject(4, PI::ObjectType::TASK, "T", {1}), MakeObject(3, PHYSICAL_DRIVE, "P", {2})};
    objects[0].m_Properties.emplace_back(PI::PropertyID::ADAPTER_NUMBER, false).SetValue(12UL);
    EXPECT_EQ(service::InventoryText(objects),
              "  Adapter 12: A\n"
              "    ADAPTER_NUMBER: 12\n"
              "    Logical drive 2: L\n"
              "      Physical drive 3: P\n"
              "    Task 4: T\n");
}

TEST(Inventory, EveryObjectIsPrintedOnceHoweverTheyAreRelated) {
    std::vector<PI::CObject> objects = {MakeObject(1, PHYSICAL_DRIVE, "its own part", {1}),
                                        MakeObject(2, PHYSICAL_DRIVE, "part of 3", {3}),
                                        MakeObject(3, PHYSICAL_DRIVE, "part of 2", {2}),
                                        MakeObject(4, PHYSICAL_DRIVE, "part of what is not there", {9})};
    EXPECT_EQ(service::InventoryText(objects),
              "  Physical drive 4: part of what is not there\n"
              "  Physical drive 1: its own part\n"
              "  Physical drive 2: part of 3\n"
              "    Physical drive 3: part of 2\n");
}

TEST(Inventory, UnknownIconsAndHelpTopicsAreLeftOut) {
    std::vector<PI::CObject> objects = {MakeObject(1, PI::ObjectType::ADAPTER_1, "A", {})};
    objects[0].m_ObjectValue = 0x100000000 + 24000;
    objects[0].m_Properties.emplace_back(PI::PropertyID::STATUS, false).SetValue(true);
    objects[0].m_Properties.back().m_Attribute1 = 99;
    EXPECT_EQ(service::InventoryText(objects), "  Adapter without a number: A\n    STATUS: yes\n");
}

TEST(Inventory, DepthOfTheTreeDoesNoHarm) {
    std::vector<PI::CObject> objects;
    constexpr unsigned long DEPTH = 1000;
    for (unsigned long id = 1; id <= DEPTH; ++id) {
        objects.push_back(MakeObject(id, PHYSICAL_DRIVE, "P", {id - 1}));
    }
    const std::string text = service::InventoryText(objects);
    EXPECT_EQ(static_cast<unsigned long>(std::count(text.begin(), text.end(), '\n')), DEPTH);
}

TEST(Events, AreRenderedWholeAndWithoutControlCharacters) {
    std::vector<PI::CEvent> events(1);
    events[0].m_EventID = 99;
    events[0].m_Source = "a\x1Bz";
    EXPECT_THAT(service::EventsText(events, {{"en.xml", {}}}),
                testing::StartsWith(
                    "  Event 99\n    EventID: 99\n    Host: localhost\n    Source: a?z\n    Timestamp: 0\n"));
}

TEST(Events, ValuesOfPlaceholdersAreText) {
    const PI::Test::TemporaryFolder folder;
    folder.Write("strings.en.xml",
                 "<Strings language=\"en\"><String id=\"10079\">%1 of %2</String></Strings>");
    std::vector<PI::CEvent> events(1);
    events[0].m_EventID = PI::EventID::LOGICALDRIVE_FAILED;
    events[0].SetPlaceHolder1("%2");
    events[0].SetPlaceHolder2("host");
    EXPECT_THAT(service::EventsText(events, service::LoadLanguages({folder.Path() / "strings.en.xml"})),
                testing::HasSubstr("Description: %2 of host\n"));
}

TEST(Events, AreDescribedInEachLanguage) {
    const PI::Test::TemporaryFolder folder;
    folder.Write("strings.en.xml",
                 "<Strings language=\"en\"><String id=\"10078\">%1 is degraded</String>"
                 "<String id=\"10079\">%1 failed</String></Strings>");
    folder.Write("strings.de.xml",
                 "<Strings language=\"de\"><String id=\"10079\">%1 ist ausgefallen</String></Strings>");
    const auto languages =
        service::LoadLanguages({folder.Path() / "strings.en.xml", folder.Path() / "strings.de.xml"});
    std::vector<PI::CEvent> events(3);
    events[0].m_EventID = PI::EventID::LOGICALDRIVE_FAILED;
    events[1].m_EventID = PI::EventID::LOGICALDRIVE_DEGRADED;
    events[2].m_EventID = PI::EventID::REBUILD_STARTED;
    std::vector<std::string> descriptions;
    for (PI::CEvent& event : events) {
        event.SetPlaceHolder1("md0");
    }
    std::istringstream lines(service::EventsText(events, languages));
    for (std::string line; std::getline(lines, line);) {
        if (line.find("Description") != std::string::npos) {
            descriptions.push_back(line);
        }
    }
    EXPECT_THAT(
        descriptions,
        ElementsAre("    Description: md0 failed", "    Description (strings.de.xml): md0 ist ausgefallen",
                    "    Description: md0 is degraded", "    Description (strings.de.xml): md0 is degraded",
                    "    Description: REBUILD_STARTED: md0",
                    "    Description (strings.de.xml): REBUILD_STARTED: md0"));
}

TEST(Changes, AreListedByObject) {
    const std::vector<PI::CObject> before = {MakeObject(1, PHYSICAL_DRIVE, "same", {}),
                                             MakeObject(2, PHYSICAL_DRIVE, "old name", {}),
                                             MakeObject(3, PHYSICAL_DRIVE, "lost", {})};
    std::vector<PI::CObject> now = {MakeObject(4, PHYSICAL_DRIVE, "more", {}),
                                    MakeObject(2, PHYSICAL_DRIVE, "new name", {}),
                                    MakeObject(1, PHYSICAL_DRIVE, "same", {})};
    now[1].m_Properties.emplace_back(PI::PropertyID::STATUS, false).SetValue(true);
    PI::ObjectBuilder::AddOperation(now[1], PI::OperationID::START_CHECK, 1);
    PI::ObjectBuilder::AddOperation(now[1], PI::OperationID::START_VERIFY, 1);
    EXPECT_EQ(service::ChangesText(before, now),
              "  Physical drive 4: more is new\n"
              "    NAME: (none) -> more\n"
              "  Physical drive 2: new name\n"
              "    NAME: old name -> new name\n"
              "    STATUS: (none) -> yes\n"
              "    can: (none) -> START_CHECK, START_VERIFY\n"
              "  Physical drive 3: lost is gone\n");
    EXPECT_EQ(service::ChangesText(now, now), "");
    EXPECT_THAT(service::ChangesText(now, before), testing::HasSubstr("\n    STATUS: yes -> (none)\n"));
}

TEST(Changes, AnObjectOfWhichNothingIsKnownIsNewToo) {
    EXPECT_THAT(service::ChangesText({}, {PI::CObject(7, PHYSICAL_DRIVE)}), testing::EndsWith(" is new\n"));
}

TEST(Changes, AreLinesOfJson) {
    const std::vector<PI::CObject> before = {MakeObject(1, PHYSICAL_DRIVE, "same", {}),
                                             MakeObject(2, PHYSICAL_DRIVE, "old name", {}),
                                             MakeObject(3, PHYSICAL_DRIVE, "lost", {})};
    const std::vector<PI::CObject> now = {MakeObject(2, PHYSICAL_DRIVE, "new name", {}),
                                          MakeObject(1, PHYSICAL_DRIVE, "same", {})};
    EXPECT_EQ(service::ChangesJson("a\"\\\n", before, now),
              "{\"plugin\":\"a\\\"\\\\?\",\"object\":" + PI::ToJson(now[0]) +
                  "}\n"
                  "{\"plugin\":\"a\\\"\\\\?\",\"gone\":3}\n");
    EXPECT_EQ(service::ChangesJson("a", {}, {now[0]}),
              "{\"plugin\":\"a\",\"object\":" + PI::ToJson(now[0]) + "}\n");
    const PI::CEvent event;
    EXPECT_EQ(service::EventsJson("a", {event}), "{\"plugin\":\"a\",\"event\":" + PI::ToJson(event) + "}\n");
}

TEST(Changes, WhatCouldNotBeReadIsKept) {
    std::vector<PI::CObject> now = {MakeObject(2, PHYSICAL_DRIVE, "now", {})};
    service::KeepMissing(
        {MakeObject(2, PHYSICAL_DRIVE, "before", {}), MakeObject(3, PHYSICAL_DRIVE, "kept", {})}, now);
    EXPECT_EQ(service::InventoryText(now), "  Physical drive 2: now\n  Physical drive 3: kept\n");
}

Options Parse(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "service");
    std::vector<char*> argv;
    for (std::string& argument : arguments) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    return service::ParseOptions(static_cast<int>(arguments.size()), argv.data());
}

std::string ParseError(const std::vector<std::string>& arguments) {
    try {
        Parse(arguments);
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
    return "";
}

TEST(Options, AllAreRead) {
    const Options options = Parse({"-s", "mdraid.root=/a=b", "folder", "-t", "3", "--trace=275", "-t", "3",
                                   "-d", "traces", "--language", "de.xml", "--set", "x.y="});
    EXPECT_EQ(options.m_PluginFolder, "folder");
    ASSERT_EQ(options.m_Settings.size(), 2U);
    EXPECT_EQ(options.m_Settings[0].m_Plugin, "mdraid");
    EXPECT_EQ(options.m_Settings[0].m_Key, "root");
    EXPECT_EQ(options.m_Settings[0].m_Value, "/a=b");
    EXPECT_EQ(options.m_Settings[1].m_Value, "");
    EXPECT_THAT(options.m_TraceCategories, ElementsAre(3, 275));
    EXPECT_EQ(options.m_TraceFolder, "traces");
    EXPECT_THAT(options.m_LanguageFiles, ElementsAre("de.xml"));
}

TEST(Options, LimitsAndIntervals) {
    const Options none = Parse({"folder"});
    EXPECT_FALSE(none.m_Isolate);
    EXPECT_FALSE(none.m_PrintJson);
    EXPECT_FALSE(none.m_WatchInterval.has_value());
    EXPECT_EQ(none.m_Limits.m_Time, milliseconds(60000));
    EXPECT_EQ(none.m_Limits.m_MemoryMB, 1024U);
    const Options all = Parse({"-i", "-j", "-w", "--time-limit", "1", "--memory-limit=2147483647", "folder"});
    EXPECT_TRUE(all.m_Isolate);
    EXPECT_TRUE(all.m_PrintJson);
    EXPECT_EQ(all.m_WatchInterval, milliseconds(10000));
    EXPECT_EQ(all.m_Limits.m_Time, milliseconds(1));
    EXPECT_EQ(all.m_Limits.m_MemoryMB, 2147483647U);
    EXPECT_THAT(all.m_Arguments, testing::Contains("--memory-limit=2147483647"));
    EXPECT_EQ(Parse({"--watch=0.001", "folder"}).m_WatchInterval, milliseconds(1));
    EXPECT_EQ(Parse({"--watch=86400", "folder"}).m_WatchInterval, milliseconds(86400000));
    for (const std::string interval : {"0", "0.0009", "86401", "x", "1s", "nan", "inf", "-1"}) {
        EXPECT_EQ(ParseError({"--watch=" + interval, "a"}),
                  "\"" + interval + "\" is no number of seconds from 0.001 to 86400");
    }
    for (const std::string limit : {"", "0", "-1", "x", "1.5", "2147483648", "99999999999"}) {
        for (const std::string option : {"--time-limit", "--memory-limit"}) {
            EXPECT_THAT(ParseError({option, limit, "a"}), testing::StartsWith(option)) << limit;
        }
    }
}

TEST(Options, RequestIsTakenApart) {
    const Options options = Parse({"-x", "a:b:c:NAME_2=d:e=f:=:X=", "--allow-changes", "folder"});
    EXPECT_TRUE(options.m_AllowChanges);
    ASSERT_TRUE(options.m_Request.has_value());
    EXPECT_EQ(options.m_Request->m_Plugin, "a");
    EXPECT_EQ(options.m_Request->m_Object, "b");
    EXPECT_EQ(options.m_Request->m_Operation, "c");
    EXPECT_THAT(options.m_Request->m_Parameters,
                ElementsAre(testing::Pair("NAME_2", "d:e=f:="), testing::Pair("X", "")));
    EXPECT_FALSE(Parse({"folder"}).m_AllowChanges);
    EXPECT_FALSE(Parse({"folder"}).m_Request.has_value());
}

TEST(Options, MistakesAreNamed) {
    EXPECT_EQ(ParseError({}), "FOLDER is required");
    const std::pair<std::vector<std::string>, const char*> WRONG[] = {
        {{"a", "b"}, "b"},
        {{"--nonsense", "a"}, "--nonsense"},
        {{"-jzi", "a"}, "-z"},
        {{"a", "-t"}, "--trace"},
        {{"-d", "a", "-d", "b", "c"}, "--trace-folder"}};
    for (const auto& [arguments, word] : WRONG) {
        EXPECT_THAT(ParseError(arguments), testing::HasSubstr(word));
    }
    for (const std::string category : {"x", "7", "274", "275x", "-1", "99999999999"}) {
        EXPECT_THAT(ParseError({"-t", category, "a"}),
                    testing::StartsWith("--trace: " + category + " not in {0,1,"))
            << category;
    }
    EXPECT_EQ(ParseError({"-x", "a:b:c", "a"}), "without --allow-changes nothing is carried out");
    for (const std::string request : {"", "a", "a:b", "a:b:", "a::c", ":b:c", "a:b:c:", "a:b:c:d", "a:b:c:=d",
                                      "a:b:c:d=e", "a:b:c::D=e"}) {
        EXPECT_EQ(ParseError({"-a", "-x", request, "a"}),
                  "\"" + request + "\" is not of the form PLUGIN:OBJECT:OPERATION[:NAME=VALUE]...");
    }
    for (const std::string setting : {"", "a", "a.b", "a=b", ".b=c", "a.=c", "a=b.c"}) {
        EXPECT_EQ(ParseError({"-s", setting, "a"}),
                  "\"" + setting + "\" is not of the form PLUGIN.KEY=VALUE");
    }
}

/// Has a drive and, where it is asked for, an error.
class OneDrive : public service::Plugin {
public:
    const std::string& Name() const override { return m_Name; }
    std::vector<PI::CObject> GetObjects(service::Texts& errors) override {
        errors.insert(errors.end(), m_Errors.begin(), m_Errors.end());
        return m_Objects;
    }
    std::vector<PI::CEvent> GetEvents(service::Texts&) override { return {}; }
    int Execute(std::uint64_t objectID, const PI::COperation&, const TaskReport&, PI::CTask&,
                service::Texts&) override {
        m_Executed.push_back(objectID);
        return PI::ErrorCode::SUCCESS;
    }

    std::string m_Name = "one";
    std::vector<PI::CObject> m_Objects = {MakeObject(7, PHYSICAL_DRIVE, "Disk 1", {})};
    service::Texts m_Errors;
    std::vector<std::uint64_t> m_Executed;
};

/// @return why nothing was executed; empty when the drive's operation was
std::string Execute(OneDrive& plugin, const std::string& object) {
    try {
        plugin.m_Executed.clear();
        service::Execute(plugin, {"one", object, "START_VERIFY", {}}, [](const PI::CTask&) { return true; });
        EXPECT_THAT(plugin.m_Executed, ElementsAre(7U));
        return "";
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

TEST(Execute, ObjectsAreCalledByIdentifierNameOrDevice) {
    OneDrive plugin;
    plugin.m_Objects[0].m_Properties.emplace_back(PI::PropertyID::OS_DEVICE, false).SetValue("/dev/sda");
    plugin.m_Objects[0].m_Properties.emplace_back(PI::PropertyID::VENDOR, false).SetValue("ACME");
    PI::ObjectBuilder::AddOperation(plugin.m_Objects[0], PI::OperationID::START_VERIFY, 1);
    for (const std::string object : {"7", "Disk 1", "/dev/sda", "sda"}) {
        EXPECT_EQ(Execute(plugin, object), "") << object;
    }
    for (const std::string object : {"8", "7x", "Disk", "da", "ACME"}) {
        EXPECT_EQ(Execute(plugin, object), "there is no object " + object);
    }
}

TEST(Execute, AParameterOfAKindThatIsNoTextIsRefused) {
    OneDrive plugin;
    PI::ObjectBuilder::AddOperation(plugin.m_Objects[0], PI::OperationID::START_VERIFY, 1);
    plugin.m_Objects[0].m_Operations[0].m_Properties.emplace_back(PI::PropertyID::TYPE, false).SetValue(true);
    EXPECT_THROW(service::Execute(plugin, {"one", "7", "START_VERIFY", {{"TYPE", "1"}}},
                                  [](const PI::CTask&) { return true; }),
                 std::runtime_error);
    EXPECT_THAT(plugin.m_Executed, testing::IsEmpty());
}

TEST(Execute, ErrorsBesideObjectsDoNotHinder) {
    OneDrive plugin;
    PI::ObjectBuilder::AddOperation(plugin.m_Objects[0], PI::OperationID::START_VERIFY, 1);
    plugin.m_Errors = {"another drive does not answer"};
    EXPECT_EQ(Execute(plugin, "7"), "");
    plugin.m_Objects.clear();
    EXPECT_EQ(Execute(plugin, "7"), "another drive does not answer");
    plugin.m_Errors.clear();
    EXPECT_EQ(Execute(plugin, "7"), "there is no object 7");
}

TEST(SharedObject, IsWholeWhenAllThatIsLoadedIsThere) {
    const std::string whole = PI::Test::ReadFile("/proc/self/exe");
    Elf64_Ehdr header = {};
    std::memcpy(&header, whole.data(), sizeof header);
    std::uint64_t end = 0;
    for (unsigned i = 0; i < header.e_phnum; ++i) {
        Elf64_Phdr segment = {};
        std::memcpy(&segment, whole.data() + header.e_phoff + i * sizeof segment, sizeof segment);
        end = std::max(end, segment.p_offset + segment.p_filesz);
    }
    const PI::Test::TemporaryFolder folder;
    const auto check = [&](std::uint64_t size) {
        folder.Write("cut.so", whole.substr(0, size));
        service::RequireSharedObject(folder.Path() / "cut.so");
    };
    EXPECT_NO_THROW(check(end));
    EXPECT_THROW(check(end - 1), std::runtime_error);
    EXPECT_THROW(check(header.e_phoff + 1), std::runtime_error);

    // The list of segments may be anywhere.
    const std::string segments = whole.substr(header.e_phoff, header.e_phnum * sizeof(Elf64_Phdr));
    header.e_phoff = end;
    std::string moved = whole.substr(0, end) + segments;
    std::memcpy(moved.data(), &header, sizeof header);
    const auto checkMoved = [&] {
        folder.Write("moved.so", moved);
        service::RequireSharedObject(folder.Path() / "moved.so");
    };
    EXPECT_NO_THROW(checkMoved());
    moved.pop_back();
    EXPECT_THROW(checkMoved(), std::runtime_error);
}

TEST(TraceFiles, KnowTheCategoriesOfTheLibraryAndNoOthers) {
    const std::vector<std::string> categories = {
#define PI_TRACE_CATEGORY(category, tag, line) #category,
#include "trace/categories.def"
#undef PI_TRACE_CATEGORY
    };
    EXPECT_THAT(service::TraceCategories(), testing::UnorderedElementsAreArray(categories));
}

TEST(TraceFiles, AreRolled) {
    const PI::Test::TemporaryFolder folder;
    service::WriteTraces(2001, folder.Path());
    const std::string filler(1000, 'x');
    for (int i = 0; i < 1100; ++i) {
        VELKTrace(1, "test", 2001, "%s %d") << filler << i;
    }
    VELKTrace(1, "test", 2002, "goes nowhere");
    VELKTrace::tracesEnabled = false;
    const std::string older = PI::Test::ReadFile(folder.Path() / "trace-2001.1.log");
    const std::string newer = PI::Test::ReadFile(folder.Path() / "trace-2001.log");
    EXPECT_NE(older.find("[EVENT_Trace]"), std::string::npos);
    EXPECT_NE(older.find("x 0\n"), std::string::npos);
    EXPECT_NE(newer.find("x 1099\n"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "trace-2002.log"));
}

}  // namespace
