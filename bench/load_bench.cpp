// SPDX-License-Identifier: Apache-2.0
// Loading and unloading the library in a process that does not use it otherwise.

#include <dlfcn.h>

#include "measure.h"

namespace {

void AddLoad(const std::string& way, const char* library) {
    bench::Add("load_warm", way, [library](benchmark::State& state) {
        bench::Measure(state, [&] {
            void* handle = dlopen(library, RTLD_NOW | RTLD_LOCAL);
            if (handle == nullptr) {
                state.SkipWithError(dlerror());
                return;
            }
            dlclose(handle);
        });
        if (dlopen(library, RTLD_NOW | RTLD_NOLOAD) != nullptr) {
            state.SkipWithError("the library was not unloaded");
        }
    });
}

}  // namespace

void bench::RegisterBenchmarks() {
    AddLoad("library", BENCH_LIBRARY);
    AddLoad("tableless", BENCH_TABLELESS);
}
