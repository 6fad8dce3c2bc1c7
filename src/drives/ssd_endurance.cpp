#include <pi/plugin_helper.h>
#include <pi/ssd_endurance.h>

#include <iterator>
#include <string_view>

#include "drives/ssd_endurance_tables.h"
#include "util/text.h"

namespace PI {

constexpr CConstantTable<_SSD_ENDURANCE> SATASSDEndurance(SATA_SSD_ROWS, std::size(SATA_SSD_ROWS));
constexpr CConstantTable<_SAS_SSD_ENDURANCE> SASSSDEndurance(SAS_SSD_ROWS, std::size(SAS_SSD_ROWS));
constexpr CConstantTable<_SSD_ENDURANCE> NVMeSSDEndurance(NVME_SSD_ROWS, std::size(NVME_SSD_ROWS));

namespace {

bool Matches(const _SSD_ENDURANCE& row, std::string_view model) {
    if (row.m_MatchLength == 0) {
        return EqualsIgnoringCase(model, row.m_Model);
    }
    return EqualsIgnoringCase(model.substr(0, row.m_MatchLength), row.m_Model.substr(0, row.m_MatchLength));
}

}  // namespace

const _SSD_ENDURANCE* CPluginHelper::findLifeTimeProp(const std::string& model) {
    for (const _SSD_ENDURANCE& row : SATASSDEndurance) {
        if (Matches(row, model)) {
            return &row;
        }
    }
    return nullptr;
}

}  // namespace PI
