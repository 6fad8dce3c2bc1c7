// SPDX-License-Identifier: Apache-2.0
// The loggers that the host creates are those of the library and of all plug-ins, however often a plug-in is
// loaded and unloaded.
#include <dlfcn.h>
#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "support/trace_recorder.h"

namespace {

using PI::Test::TraceRecorder;
using testing::ElementsAre;
using testing::IsEmpty;

/// A loaded plug-in.
class Plugin {
public:
    explicit Plugin(const char* path) : m_Handle(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {
        if (m_Handle == nullptr) {
            throw std::runtime_error(dlerror());
        }
    }
    ~Plugin() { dlclose(m_Handle); }
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;

    void Trace(int number) const { Function<void(int)>("PluginTrace")(number); }
    void Log(int number) const { Function<void(int)>("PluginLog")(number); }
    const void* Logger() const { return Function<const void*()>("PluginLogger")(); }

    static bool IsLoaded(const char* path) {
        void* const handle = dlopen(path, RTLD_NOW | RTLD_NOLOAD);
        if (handle != nullptr) {
            dlclose(handle);
        }
        return handle != nullptr;
    }

private:
    template <class Signature>
    Signature* Function(const char* name) const {
        void* const symbol = dlsym(m_Handle, name);
        if (symbol == nullptr) {
            throw std::runtime_error(dlerror());
        }
        return reinterpret_cast<Signature*>(symbol);
    }

    void* m_Handle;
};

std::vector<std::string> Messages(const TraceRecorder<3>& recorder) {
    std::vector<std::string> messages;
    for (const auto& record : recorder.m_Records) {
        const bool traced = record.m_Message.front() == '[';
        messages.push_back(traced ? record.Text() : record.m_Message);
    }
    return messages;
}

TEST(Plugins, TracesAndLogsReachTheHostsLogger) {
    TraceRecorder<3> recorder;
    const Plugin first(FIRST_PLUGIN);
    const Plugin second(SECOND_PLUGIN);

    first.Trace(1);
    first.Log(2);
    second.Trace(3);
    second.Log(4);

    EXPECT_THAT(Messages(recorder), ElementsAre("first_plugin traces 1", "first_plugin logs 2",
                                                "second_plugin traces 3", "second_plugin logs 4"));
    EXPECT_EQ(first.Logger(), plog::get<3>());
    EXPECT_EQ(second.Logger(), plog::get<3>());
}

TEST(Plugins, LoggerMayBeCreatedAfterTheyAreLoaded) {
    const Plugin first(FIRST_PLUGIN);
    EXPECT_EQ(first.Logger(), nullptr);

    TraceRecorder<3> recorder;
    first.Trace(1);
    first.Log(2);

    EXPECT_THAT(Messages(recorder), ElementsAre("first_plugin traces 1", "first_plugin logs 2"));
}

TEST(Plugins, UnloadReallyAndReachTheLoggerWhenLoadedAgain) {
    TraceRecorder<3> recorder;
    for (int round = 0; round < 3; ++round) {
        {
            const Plugin first(FIRST_PLUGIN);
            const Plugin second(SECOND_PLUGIN);
            ASSERT_TRUE(Plugin::IsLoaded(FIRST_PLUGIN));
            first.Trace(round);
            first.Log(round);
            second.Trace(round);
            second.Log(round);
        }
        ASSERT_FALSE(Plugin::IsLoaded(FIRST_PLUGIN));
        ASSERT_FALSE(Plugin::IsLoaded(SECOND_PLUGIN));
    }

    EXPECT_THAT(Messages(recorder),
                ElementsAre("first_plugin traces 0", "first_plugin logs 0", "second_plugin traces 0",
                            "second_plugin logs 0", "first_plugin traces 1", "first_plugin logs 1",
                            "second_plugin traces 1", "second_plugin logs 1", "first_plugin traces 2",
                            "first_plugin logs 2", "second_plugin traces 2", "second_plugin logs 2"));
}

TEST(Plugins, OneKeepsWritingAfterTheOtherIsUnloaded) {
    TraceRecorder<3> recorder;
    const Plugin first(FIRST_PLUGIN);
    auto second = std::make_unique<Plugin>(SECOND_PLUGIN);
    second->Trace(1);

    second.reset();
    first.Trace(2);
    first.Log(3);

    EXPECT_FALSE(Plugin::IsLoaded(SECOND_PLUGIN));
    EXPECT_THAT(Messages(recorder),
                ElementsAre("second_plugin traces 1", "first_plugin traces 2", "first_plugin logs 3"));
}

TEST(Plugins, WithoutTheCompileDefinitionPlogIsTheirOwn) {
    TraceRecorder<3> recorder;
    const Plugin plugin(PRIVATE_PLUGIN);

    plugin.Log(1);
    EXPECT_THAT(Messages(recorder), IsEmpty());
    EXPECT_EQ(plugin.Logger(), nullptr);

    // Traces run inside the library, which knows the host's logger.
    plugin.Trace(2);
    EXPECT_THAT(Messages(recorder), ElementsAre("private_plugin traces 2"));
}

TEST(Plugins, SeeTheHostsTraceFlag) {
    TraceRecorder<3> recorder;
    const Plugin first(FIRST_PLUGIN);

    VELKTrace::tracesEnabled = false;
    first.Trace(1);
    first.Log(2);

    EXPECT_THAT(Messages(recorder), ElementsAre("first_plugin logs 2"));
}

}  // namespace
