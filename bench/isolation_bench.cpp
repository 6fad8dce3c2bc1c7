// SPDX-License-Identifier: Apache-2.0
// The inventory of a plug-in in a process of its own, against the same in the host's process.

#include "isolated_plugin.h"
#include "measure.h"
#include "plugin.h"

namespace {

void Inventory(benchmark::State& state, service::Plugin& plugin) {
    std::vector<std::string> errors;
    bench::Measure(state, [&] {
        const std::vector<PI::CObject> drives = plugin.GetObjects(errors);
        if (drives.size() != 100 || drives[0].m_Properties.size() != 20) {
            state.SkipWithError("not 100 drives of 20 properties");
        }
    });
    if (!errors.empty()) {
        state.SkipWithError(errors.front().c_str());
    }
}

}  // namespace

// By the clock, since two processes work on it.
void bench::RegisterBenchmarks() {
    Add("inventory_100", "in_process", [](benchmark::State& state) {
        Inventory(state, *service::LoadPlugin(BENCH_PLUGIN));
    })->UseRealTime();
    Add("inventory_100", "isolated", [](benchmark::State& state) {
        Inventory(state, *service::IsolatePlugin({BENCH_HOST, "--isolated-plugin=" BENCH_PLUGIN, "."},
                                                 "drives", {}));
    })->UseRealTime();
}
