// SPDX-License-Identifier: Apache-2.0

#include <pi/plugin_helper.h>
#include <pi/ssd_endurance.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <string_view>

#include "drives/ssd_endurance_tables.h"
#include "util/text.h"

namespace PI {

constexpr CConstantTable<_SSD_ENDURANCE> SATASSDEndurance(SATA_SSD_ROWS, std::size(SATA_SSD_ROWS));
constexpr CConstantTable<_SAS_SSD_ENDURANCE> SASSSDEndurance(SAS_SSD_ROWS, std::size(SAS_SSD_ROWS));
constexpr CConstantTable<_SSD_ENDURANCE> NVMeSSDEndurance(NVME_SSD_ROWS, std::size(NVME_SSD_ROWS));

namespace {

constexpr std::size_t HEAD_LENGTH = 8;

/// The first characters of a model, in upper case, as one number.
constexpr std::uint64_t Head(std::string_view model) {
    std::uint64_t head = 0;
    for (std::size_t i = 0; i < HEAD_LENGTH; ++i) {
        head = head << 8 | (i < model.size() ? static_cast<unsigned char>(ToUpper(model[i])) : 0U);
    }
    return head;
}

/// A row of the list, found by the head of its model.
struct IndexEntry {
    std::uint64_t m_Head = 0;
    const _SSD_ENDURANCE* m_Row = nullptr;
};

using Index = std::array<IndexEntry, std::size(SATA_SSD_ROWS)>;

/// Rows in ascending order of their heads; those of the same head stay in the order of the list.
constexpr Index MakeIndex() {
    Index index = {};
    std::size_t count = 0;
    for (const _SSD_ENDURANCE& row : SATA_SSD_ROWS) {
        const std::uint64_t head = Head(row.m_Model);
        std::size_t place = count++;
        for (; place > 0 && index[place - 1].m_Head > head; --place) {
            index[place] = index[place - 1];
        }
        index[place] = {head, &row};
    }
    return index;
}

constexpr Index INDEX = MakeIndex();

constexpr bool AllRowsCompareTheirHeads() {
    for (const _SSD_ENDURANCE& row : SATA_SSD_ROWS) {
        if (row.m_Model.size() < HEAD_LENGTH || (row.m_MatchLength != 0 && row.m_MatchLength < HEAD_LENGTH)) {
            return false;
        }
    }
    return true;
}
static_assert(AllRowsCompareTheirHeads());

bool Matches(const _SSD_ENDURANCE& row, std::string_view model) {
    if (row.m_MatchLength == 0) {
        return EqualsIgnoringCase(model, row.m_Model);
    }
    return EqualsIgnoringCase(model.substr(0, row.m_MatchLength), row.m_Model.substr(0, row.m_MatchLength));
}

}  // namespace

const _SSD_ENDURANCE* CPluginHelper::findLifeTimeProp(const std::string& model) {
    const std::uint64_t head = Head(model);
    auto entry = std::lower_bound(
        INDEX.begin(), INDEX.end(), head,
        [](const IndexEntry& candidate, std::uint64_t wanted) { return candidate.m_Head < wanted; });
    for (; entry != INDEX.end() && entry->m_Head == head; ++entry) {
        if (Matches(*entry->m_Row, model)) {
            return entry->m_Row;
        }
    }
    return nullptr;
}

}  // namespace PI
