// SPDX-License-Identifier: Apache-2.0
// Traces that are written, to an appender that drops them.

#include <fmt/format.h>
#include <pi/trace.h>
#include <plog/Init.h>
#include <plog/Log.h>

#include <boost/format.hpp>
#include <chrono>
#include <locale>

#include "measure.h"

namespace {

constexpr int CATEGORY = 3;
constexpr int NUMBER = 494;
const char* const NAME = "VELK_Trace";

class NullAppender : public plog::IAppender {
public:
    void write(const plog::Record& record) override { benchmark::DoNotOptimize(record.getMessage()); }
};

unsigned long ElapsedMs() {
    using std::chrono::system_clock;
    static const system_clock::time_point start = system_clock::now();
    return static_cast<unsigned long>(
        std::chrono::duration_cast<std::chrono::milliseconds>(system_clock::now() - start).count());
}

template <class Text>
void WriteRecord(const Text& text) {
    plog::Logger<CATEGORY>* logger = plog::get<CATEGORY>();
    if (logger == nullptr || !logger->checkSeverity(plog::debug)) {
        return;
    }
    plog::Record record(plog::debug, "WriteRecord", 77, "", nullptr, CATEGORY);
    record << text;
    logger->write(record);
}

void AddTwoArguments() {
    const std::string work = "trace_2";
    bench::Add(work, "library", [](benchmark::State& state) {
        bench::Measure(state, [] {
            VELKTrace(NUMBER, NAME, CATEGORY, "drive %d: %s") << 17 << std::string("not ready");
        });
    });
    bench::Add(work, "boost", [](benchmark::State& state) {
        bench::Measure(state, [] {
            WriteRecord(boost::str(boost::format("[VELK_TraceData][%lu][%s][%d]drive %d: %s") % ElapsedMs() %
                                   NAME % NUMBER % 17 % std::string("not ready")));
        });
    });
    bench::Add(work, "fmt", [](benchmark::State& state) {
        bench::Measure(state, [] {
            WriteRecord(fmt::format("[VELK_TraceData][{}][{}][{}]drive {}: {}", ElapsedMs(), NAME, NUMBER, 17,
                                    std::string("not ready")));
        });
    });
}

void AddFourArguments() {
    const std::string work = "trace_4";
    bench::Add(work, "library", [](benchmark::State& state) {
        bench::Measure(state, [] {
            VELKTrace(NUMBER, NAME, CATEGORY, "drive %d: %s, %d of %s")
                << 17 << std::string("not ready") << 4 << std::string("seven");
        });
    });
    bench::Add(work, "boost", [](benchmark::State& state) {
        bench::Measure(state, [] {
            WriteRecord(boost::str(boost::format("[VELK_TraceData][%lu][%s][%d]drive %d: %s, %d of %s") %
                                   ElapsedMs() % NAME % NUMBER % 17 % std::string("not ready") % 4 %
                                   std::string("seven")));
        });
    });
    bench::Add(work, "fmt", [](benchmark::State& state) {
        bench::Measure(state, [] {
            WriteRecord(fmt::format("[VELK_TraceData][{}][{}][{}]drive {}: {}, {} of {}", ElapsedMs(), NAME,
                                    NUMBER, 17, std::string("not ready"), 4, std::string("seven")));
        });
    });
}

void AddRecordAlone(const std::string& work, const char* text) {
    bench::Add(work, "record", [text](benchmark::State& state) {
        bench::Measure(state, [&] {
            benchmark::DoNotOptimize(ElapsedMs());
            WriteRecord(text);
        });
    });
}

}  // namespace

void bench::RegisterBenchmarks() {
    static NullAppender appender;
    plog::init<CATEGORY>(plog::debug, &appender);
    VELKTrace::tracesEnabled = true;
    AddTwoArguments();
    AddRecordAlone("trace_2", "[VELK_TraceData][1000][VELK_Trace][494]drive 17: not ready");
    AddFourArguments();
    AddRecordAlone("trace_4", "[VELK_TraceData][1000][VELK_Trace][494]drive 17: not ready, 4 of seven");
}
