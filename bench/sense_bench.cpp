// SPDX-License-Identifier: Apache-2.0
// Text of additional sense codes.

#include <pi/plugin_helper.h>
#include <scsi/sg_lib.h>

#include <algorithm>
#include <iterator>
#include <random>

#include "measure.h"

namespace {

struct Row {
    unsigned m_Code;
    const char* m_Text;
};

constexpr Row ROWS[] = {
#define PI_SENSE(asc, ascq, text) {(asc) << 8 | (ascq), text},
#include "drives/additional_sense.def"
#undef PI_SENSE
};

struct Pair {
    unsigned char m_Asc;
    unsigned char m_Ascq;
};

/// Random pairs of the table, and 1 in 8 unknown.
std::vector<Pair> Pairs() {
    std::mt19937 random(1);
    std::vector<Pair> pairs(1 << 14);
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        unsigned code = ROWS[random() % std::size(ROWS)].m_Code;
        const auto known = [&] {
            return std::any_of(std::begin(ROWS), std::end(ROWS),
                               [&](const Row& row) { return row.m_Code == code; });
        };
        while (i % 8 == 0 && known()) {
            code = random() & 0xFFFF;
        }
        pairs[i] = {static_cast<unsigned char>(code >> 8), static_cast<unsigned char>(code & 0xFF)};
    }
    return pairs;
}

template <class LookUp>
void AddLookUp(const std::string& way, LookUp lookUp) {
    bench::Add("sense", way, [lookUp](benchmark::State& state) {
        static const std::vector<Pair> pairs = Pairs();
        std::size_t next = 0;
        std::string text;
        bench::Measure(state, [&] {
            const Pair& pair = pairs[next++ % pairs.size()];
            lookUp(pair.m_Asc, pair.m_Ascq, text);
            benchmark::DoNotOptimize(text);
        });
    });
}

}  // namespace

void bench::RegisterBenchmarks() {
    AddLookUp("library", [](unsigned char asc, unsigned char ascq, std::string& text) {
        PI::CPluginHelper::TranslateSenseASC(asc, ascq, text);
    });
    AddLookUp("naive", [](unsigned asc, unsigned ascq, std::string& text) {
        const auto row = std::find_if(std::begin(ROWS), std::end(ROWS),
                                      [=](const Row& each) { return each.m_Code == (asc << 8 | ascq); });
        text = row == std::end(ROWS) ? "" : row->m_Text;
    });
    AddLookUp("sgutils", [](unsigned char asc, unsigned char ascq, std::string& text) {
        char buffer[256];
        text = sg_get_asc_ascq_str(asc, ascq, sizeof(buffer), buffer);
    });
    AddLookUp("binary_search", [](unsigned asc, unsigned ascq, std::string& text) {
        const unsigned code = asc << 8 | ascq;
        const auto row =
            std::lower_bound(std::begin(ROWS), std::end(ROWS), code,
                             [](const Row& each, unsigned wanted) { return each.m_Code < wanted; });
        text = row == std::end(ROWS) || row->m_Code != code ? "" : row->m_Text;
    });
    static const std::vector<const char*> texts = [] {
        std::vector<const char*> all(1 << 16, "");
        for (const Row& row : ROWS) {
            all[row.m_Code] = row.m_Text;
        }
        return all;
    }();
    AddLookUp("array", [](unsigned asc, unsigned ascq, std::string& text) { text = texts[asc << 8 | ascq]; });
}
