// SPDX-License-Identifier: Apache-2.0
// For the test of the schema: writes records at random, or reads records and says of each why it is refused.
//
//   model_json_program write SEED COUNT    COUNT of every record, one a line
//   model_json_program read                lines "RECORD JSON" in, a reason or an empty line out

#include <pi/exchange/model_json.h>

#include <cstdlib>
#include <iostream>
#include <string>

#include "every_field.h"

namespace {

using namespace PI;

template <class Record>
void Write(Test::FieldFiller& filler) {
    Record record;
    filler.Fill(record);
    std::cout << ToJson(record) << '\n';
}

void WriteHealth(std::mt19937& random) {
    CDriveHealth health(static_cast<_DRIVE_PROTOCOL>(random() % 4), "INTEL SSDSC2BB480G7");
    for (int i = 0; i < 10; ++i) {
        health.TakeFigure(static_cast<_HEALTH_FIGURE>(1 + random() % 24),
                          static_cast<std::int64_t>(random()) << random() % 32,
                          static_cast<_FIGURE_SOURCE>(1 + random() % 10),
                          static_cast<std::uint32_t>(random() % 256));
    }
    std::cout << ToJson(health) << '\n';
}

template <class Record>
std::string Read(const std::string& text) {
    Record record;
    std::string reason;
    FromJson(text, record, reason);
    return reason;
}

/// Calls with the name of every record and with what writes or reads it.
template <template <class> class Action, class Call>
void ForEveryRecord(Call call) {
    call("property", Action<CProperty>());
    call("object", Action<CObject>());
    call("operation", Action<COperation>());
    call("task", Action<CTask>());
    call("event", Action<CEvent>());
    call("drive", Action<CDrive>());
    call("container", Action<CContainer>());
    call("logical_drive", Action<CLogicalDrive>());
    call("array", Action<CArray>());
    call("level", Action<CLevel>());
    call("partition", Action<CPartition>());
    call("migration", Action<CMigration>());
}

template <class Record>
struct Writing {
    void operator()(Test::FieldFiller& filler) const { Write<Record>(filler); }
};

template <class Record>
struct Reading {
    std::string operator()(const std::string& text) const { return Read<Record>(text); }
};

}  // namespace

int main(int argc, char** argv) {
    if (argc == 4 && std::string(argv[1]) == "write") {
        const auto seed = static_cast<std::uint32_t>(std::strtoul(argv[2], nullptr, 10));
        Test::FieldFiller filler(seed);
        std::mt19937 random(seed);
        for (long count = std::atol(argv[3]); count > 0; --count) {
            ForEveryRecord<Writing>([&](const char*, auto write) { write(filler); });
            WriteHealth(random);
        }
        return 0;
    }
    for (std::string line; std::getline(std::cin, line);) {
        const std::size_t blank = line.find(' ');
        const std::string record = line.substr(0, blank);
        std::string reason = "no such record";
        ForEveryRecord<Reading>([&](const char* name, auto read) {
            if (record == name) {
                reason = read(line.substr(blank + 1));
            }
        });
        std::cout << reason << '\n';
    }
    return 0;
}
