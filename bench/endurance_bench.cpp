// SPDX-License-Identifier: Apache-2.0
// Rated endurance of a drive by its model.

#include <pi/plugin_helper.h>
#include <regex.h>
#include <strings.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <random>

#include "measure.h"

namespace {

using Models = std::vector<std::string>;

/// 500 models of the list, in random order.
Models KnownModels() {
    std::mt19937 random(1);
    Models models(500);
    for (std::string& model : models) {
        model = PI::SATASSDEndurance[random() % PI::SATASSDEndurance.size()].m_Model;
    }
    return models;
}

/// 500 models of drives that are not in the list.
Models OtherModels() {
    Models models;
    std::ifstream file(BENCH_DRIVE_MODELS);
    for (std::string model; std::getline(file, model);) {
        models.push_back(model);
    }
    return models;
}

Models AllModels() {
    Models models = KnownModels();
    for (const std::string& model : OtherModels()) {
        models.push_back(model);
    }
    std::shuffle(models.begin(), models.end(), std::mt19937(2));
    return models;
}

/// The rows one after the other, as the rules say it.
const PI::_SSD_ENDURANCE* FindByLoop(const std::string& model) {
    for (const PI::_SSD_ENDURANCE& row : PI::SATASSDEndurance) {
        const bool matches = row.m_MatchLength == 0
                                 ? strcasecmp(model.c_str(), row.m_Model.c_str()) == 0
                                 : strncasecmp(model.c_str(), row.m_Model.c_str(), row.m_MatchLength) == 0;
        if (matches) {
            return &row;
        }
    }
    return nullptr;
}

/// The rows as patterns, one after the other.
const PI::_SSD_ENDURANCE* FindByPattern(const std::string& model) {
    static const std::vector<regex_t> patterns = [] {
        std::vector<regex_t> compiled;
        for (const PI::_SSD_ENDURANCE& row : PI::SATASSDEndurance) {
            std::string text = "^";
            const std::string& name = row.m_Model;
            for (const char character : row.m_MatchLength == 0 ? name : name.substr(0, row.m_MatchLength)) {
                text += std::strchr("().+*?[]{}|^$\\", character) != nullptr ? "\\" : "";
                text += character;
            }
            text += row.m_MatchLength == 0 ? "$" : "";
            regcomp(&compiled.emplace_back(), text.c_str(), REG_EXTENDED | REG_ICASE | REG_NOSUB);
        }
        return compiled;
    }();
    for (std::size_t i = 0; i < patterns.size(); ++i) {
        if (regexec(&patterns[i], model.c_str(), 0, nullptr, 0) == 0) {
            return &PI::SATASSDEndurance[i];
        }
    }
    return nullptr;
}

template <class Find>
void AddWay(const std::string& work, const std::string& way, const Models& models, Find find) {
    bench::Add(work, way, [=](benchmark::State& state) {
        for (const std::string& model : models) {
            if (find(model) != FindByLoop(model)) {
                state.SkipWithError(("another row for " + model).c_str());
                return;
            }
        }
        std::size_t next = 0;
        bench::Measure(state, [&] { benchmark::DoNotOptimize(find(models[next++ % models.size()])); });
    });
}

}  // namespace

void bench::RegisterBenchmarks() {
    const Models all = AllModels();
    const Models others = OtherModels();
    if (all.size() != 1000 || std::any_of(others.begin(), others.end(), FindByLoop)) {
        std::fprintf(stderr, "%s: 500 models that are not in the list expected\n", BENCH_DRIVE_MODELS);
        std::exit(1);
    }
    AddWay("endurance", "library", all, PI::CPluginHelper::findLifeTimeProp);
    AddWay("endurance", "naive", all, FindByLoop);
    AddWay("endurance", "regex", all, FindByPattern);
    AddWay("endurance_hits", "library", KnownModels(), PI::CPluginHelper::findLifeTimeProp);
    AddWay("endurance_misses", "library", others, PI::CPluginHelper::findLifeTimeProp);
}
