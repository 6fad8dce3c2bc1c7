// SPDX-License-Identifier: Apache-2.0
// Managed objects as JSON and back, against a JSON library that does the same work on the same document.

#include <pi/exchange/model_json.h>

#include <nlohmann/json.hpp>

#include "measure.h"
#include "sample_object.h"

namespace {

using nlohmann::json;

/// Builds a document member by member, as a program does that writes its own.
json Build(const json& model) {
    if (model.is_object()) {
        json built = json::object();
        for (const auto& [name, value] : model.items()) {
            built[name] = Build(value);
        }
        return built;
    }
    if (model.is_array()) {
        json built = json::array();
        for (const json& value : model) {
            built.push_back(Build(value));
        }
        return built;
    }
    return model;
}

}  // namespace

void bench::RegisterBenchmarks() {
    static const PI::CObject object = SampleObject();
    static const std::string text = PI::ToJson(object);
    static const json model = json::parse(text);
    Add("model_to_json", "library", [](benchmark::State& state) {
        Measure(state, [] { benchmark::DoNotOptimize(PI::ToJson(object)); });
    });
    Add("model_to_json", "nlohmann", [](benchmark::State& state) {
        Measure(state, [] { benchmark::DoNotOptimize(Build(model).dump()); });
    });
    Add("model_from_json", "library", [](benchmark::State& state) {
        PI::CObject read;
        std::string reason;
        Measure(state, [&] {
            if (!PI::FromJson(text, read, reason)) {
                state.SkipWithError(reason.c_str());
            }
        });
    });
    Add("model_from_json", "nlohmann",
        [](benchmark::State& state) { Measure(state, [] { benchmark::DoNotOptimize(json::parse(text)); }); });
}
