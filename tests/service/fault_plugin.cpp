// SPDX-License-Identifier: Apache-2.0
// A plug-in that does the host harm, as the environment says: FAULT is "FUNCTION KIND"; where FAULT_ONCE is
// set, only until a file of that name is there. It reports one adapter, which bears the setting "name".
#include <pi/object_builder.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "plugin_interface.h"

namespace {

std::string Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

bool IsTurn(const std::string& function) {
    const std::string fault = Variable("FAULT");
    const std::string file = Variable("FAULT_ONCE");
    if (fault.compare(0, function.size() + 1, function + " ") != 0 || std::ifstream(file).good()) {
        return false;
    }
    if (!file.empty()) {
        std::ofstream(file) << "done";
    }
    return true;
}

volatile bool goOn = true;

void MayFail(const std::string& function) {
    if (!IsTurn(function)) {
        return;
    }
    const std::string kind = Variable("FAULT").substr(function.size() + 1);
    if (kind == "abort") {
        std::abort();
    }
    if (kind == "exit") {
        _exit(0);
    }
    if (kind == "throw") {
        throw 5;
    }
    while (kind == "loop" && goOn) {
    }
    while (kind == "leak") {
        new std::string(std::size_t{1} << 20U, 'x');
    }
    while (kind == "flood") {
        static const std::string much(std::size_t{1} << 16U, 'x');
        (void)!write(3, much.data(), much.size());
    }
    // Into the socket to the host, and whatever else is open.
    const std::string garbage = kind == "garbage"  ? "\xFF{]\n"
                                : kind == "record" ? "{\"record\":\"object\"}\n"
                                                   : "";
    for (int file = 3; file < 10; ++file) {
        (void)!write(file, garbage.data(), garbage.size());
    }
    if (kind == "close") {
        for (int file = 3; file < 10; ++file) {
            close(file);
        }
    }
}

struct Load {
    Load() { MayFail("load"); }
} load;

std::string name = "not set";

}  // namespace

int PluginInterfaceVersion() {
    MayFail("version");
    return PLUGIN_INTERFACE_VERSION;
}

const char* PluginName() {
    MayFail("name");
    return "fault";
}

int PluginConfigure(const char* key, const char* value) {
    MayFail("configure");
    if (std::string(key) != "name") {
        return PI::ErrorCode::INVALID_PARAMETER;
    }
    name = value;
    return PI::ErrorCode::SUCCESS;
}

int PluginGetObjects(std::vector<PI::CObject>& objects, std::vector<std::string>& errors) {
    MayFail("objects");
    namespace Builder = PI::ObjectBuilder;
    namespace ID = PI::PropertyID;
    namespace Type = PI::PropertyType;
    PI::CObject& adapter = objects.emplace_back(1, PI::ObjectType::ADAPTER_1);
    Builder::AddText(adapter, Builder::Describe(ID::NAME, 1, Type::STRING), name);
    Builder::AddAdapterNumber(adapter, Builder::Describe(ID::ADAPTER_NUMBER, 1, Type::LONG), 500, 0, 0, 0);
    Builder::AddOperation(adapter, PI::OperationID::LOCATE_DEVICE, 1);
    if (Variable("FAULT") == "twice") {
        objects.push_back(adapter);
        objects.back().m_Properties[0].SetValue("another");
    }
    if (Variable("FAULT") == "print") {
        std::puts("a line");
    }
    if (Variable("FAULT") == "error") {
        errors = {" two\nlines\xFF "};
    }
    return PI::ErrorCode::SUCCESS;
}

int PluginGetEvents(std::vector<PI::CEvent>& events, std::vector<std::string>&) {
    MayFail("events");
    events.emplace_back().m_EventID = PI::EventID::TEST_TRAP;
    return PI::ErrorCode::SUCCESS;
}

int PluginExecute(std::uint64_t, const PI::COperation&, const std::function<bool(const PI::CTask&)>& report,
                  PI::CTask& task, std::vector<std::string>&) {
    report(task);
    MayFail("execute");
    return PI::ErrorCode::SUCCESS;
}
