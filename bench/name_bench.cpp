// SPDX-License-Identifier: Apache-2.0
// Numbers to names, over all five vocabularies, and names to numbers.

#include <pi/vocabulary.h>

#include <algorithm>
#include <map>
#include <random>
#include <string_view>
#include <unordered_map>

#include "measure.h"

#include <pi/vocabulary/undefine_macros.h>

namespace {

struct Row {
    int m_Number;
    const char* m_Name;
};

// Where a number stands twice, its first name counts: these two constants have no name of their own.
constexpr bool HasNameOfItsOwn(std::string_view constant) {
    return constant != "FRAME_END" && constant != "OBJECT_NAME";
}

#define PI_ERROR_CODE(number, constant, name) {number, name},
#define PI_PROPERTY_ID PI_ERROR_CODE
#define PI_PROPERTY_VALUE PI_ERROR_CODE
#define PI_OPERATION_ID PI_ERROR_CODE
#define PI_EVENT_ID PI_ERROR_CODE
const std::vector<Row> ERROR_CODES = {
#include <pi/vocabulary/error_codes.def>
};
const std::vector<Row> PROPERTY_IDS = {
#include <pi/vocabulary/property_ids.def>
};
const std::vector<Row> PROPERTY_VALUES = {
#include <pi/vocabulary/property_values.def>
};
const std::vector<Row> OPERATION_IDS = {
#include <pi/vocabulary/operation_ids.def>
};
const std::vector<Row> EVENT_IDS = {
#include <pi/vocabulary/event_ids.def>
};
#undef PI_ERROR_CODE

#define PI_ERROR_CODE(number, constant, name) \
    case HasNameOfItsOwn(#constant) ? number: -number : return name;
const char* SwitchErrorCode(int number) {
    switch (number) {
#include <pi/vocabulary/error_codes.def>
        default: return "";
    }
}
const char* SwitchPropertyID(int number) {
    switch (number) {
#include <pi/vocabulary/property_ids.def>
        default: return "";
    }
}
const char* SwitchPropertyValue(int number) {
    switch (number) {
#include <pi/vocabulary/property_values.def>
        default: return "";
    }
}
const char* SwitchOperationID(int number) {
    switch (number) {
#include <pi/vocabulary/operation_ids.def>
        default: return "";
    }
}
const char* SwitchEventID(int number) {
    switch (number) {
#include <pi/vocabulary/event_ids.def>
        default: return "";
    }
}
#undef PI_ERROR_CODE

constexpr std::size_t TABLES = 5;
const std::vector<Row>* const ROWS[TABLES] = {&ERROR_CODES, &PROPERTY_IDS, &PROPERTY_VALUES, &OPERATION_IDS,
                                              &EVENT_IDS};

struct Query {
    std::size_t m_Table;
    int m_Number;
};

/// Random known numbers; each number of the five tables is as likely as any other. One table after the other,
/// as callers ask: which table it is stands in their code, and costs them no mispredicted jump.
const std::vector<Query>& Queries() {
    static const std::vector<Query> queries = [] {
        std::vector<Query> known;
        for (std::size_t table = 0; table < TABLES; ++table) {
            for (const Row& row : *ROWS[table]) {
                known.push_back({table, row.m_Number});
            }
        }
        std::mt19937 random(1);
        std::vector<Query> chosen(1 << 16);
        for (Query& query : chosen) {
            query = known[random() % known.size()];
        }
        std::stable_sort(chosen.begin(), chosen.end(),
                         [](const Query& left, const Query& right) { return left.m_Table < right.m_Table; });
        return chosen;
    }();
    return queries;
}

template <class LookUp>
void AddLookUp(const std::string& way, LookUp lookUp) {
    bench::Add("number_to_name", way, [lookUp](benchmark::State& state) {
        const std::vector<Query>& queries = Queries();
        std::size_t next = 0;
        bench::Measure(state, [&] {
            const Query& query = queries[next++ % queries.size()];
            benchmark::DoNotOptimize(lookUp(query));
        });
    });
}

/// A container of each table's rows.
template <class Container>
std::vector<Container> Containers() {
    std::vector<Container> containers;
    for (const std::vector<Row>* rows : ROWS) {
        Container& container = containers.emplace_back();
        for (const Row& row : *rows) {
            container.insert({row.m_Number, row.m_Name});
        }
    }
    return containers;
}

void AddNumberToName() {
    AddLookUp("library", [](const Query& query) {
        constexpr const std::string& (*FUNCTIONS[TABLES])(int) = {
            PI::ErrorCodeToString, PI::PropertyIDToString, PI::PropertyValueToString, PI::OperationIDToString,
            PI::EventIDToString};
        return &FUNCTIONS[query.m_Table](query.m_Number);
    });

    static auto maps = Containers<std::map<int, std::string>>();
    AddLookUp("map", [](const Query& query) { return &maps[query.m_Table][query.m_Number]; });

    static auto hashes = Containers<std::unordered_map<int, std::string>>();
    AddLookUp("unordered_map", [](const Query& query) { return &hashes[query.m_Table][query.m_Number]; });

    using Sorted = std::vector<std::pair<int, std::string>>;
    static const auto sorted = [] {
        std::vector<Sorted> arrays;
        for (const auto& map : maps) {
            arrays.emplace_back(map.begin(), map.end());
        }
        return arrays;
    }();
    AddLookUp("binary_search", [](const Query& query) {
        const Sorted& rows = sorted[query.m_Table];
        const auto found = std::lower_bound(rows.begin(), rows.end(), query.m_Number,
                                            [](const auto& row, int wanted) { return row.first < wanted; });
        return &found->second;
    });

    // By the low 16 bits, which no two numbers of a table share.
    static const auto arrays = [] {
        std::vector<std::vector<const std::string*>> all;
        for (const auto& map : maps) {
            auto& names = all.emplace_back(1 << 16);
            for (const auto& [number, name] : map) {
                names[static_cast<unsigned>(number) & 0xFFFF] = &name;
            }
        }
        return all;
    }();
    AddLookUp("array", [](const Query& query) {
        return arrays[query.m_Table][static_cast<unsigned>(query.m_Number) & 0xFFFF];
    });

    AddLookUp("switch", [](const Query& query) {
        constexpr const char* (*FUNCTIONS[TABLES])(int) = {
            SwitchErrorCode, SwitchPropertyID, SwitchPropertyValue, SwitchOperationID, SwitchEventID};
        return FUNCTIONS[query.m_Table](query.m_Number);
    });
}

template <class LookUp>
void AddReverse(const std::string& way, LookUp lookUp) {
    bench::Add("name_to_number", way, [lookUp](benchmark::State& state) {
        std::vector<std::string> names(1024);
        std::mt19937 random(1);
        for (std::string& name : names) {
            name = PROPERTY_VALUES[random() % PROPERTY_VALUES.size()].m_Name;
        }
        std::size_t next = 0;
        bench::Measure(state, [&] { benchmark::DoNotOptimize(lookUp(names[next++ % names.size()])); });
    });
}

void AddNameToNumber() {
    AddReverse("library", [](const std::string& name) { return PI::StringToPropertyValue(name, -1); });

    static const auto map = [] {
        std::map<int, std::string> names;
        for (const Row& row : PROPERTY_VALUES) {
            names.emplace(row.m_Number, row.m_Name);
        }
        return names;
    }();
    AddReverse("map", [](const std::string& wanted) {
        for (const auto& [number, name] : map) {
            if (name == wanted) {
                return number;
            }
        }
        return -1;
    });
}

}  // namespace

void bench::RegisterBenchmarks() {
    AddNumberToName();
    AddNameToNumber();
}

#include <pi/vocabulary/restore_macros.h>
