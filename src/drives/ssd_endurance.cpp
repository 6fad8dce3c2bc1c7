// SPDX-License-Identifier: Apache-2.0

#include <pi/plugin_helper.h>
#include <pi/ssd_endurance.h>

#include <string_view>

#include "util/text.h"

namespace PI {

const std::vector<_SSD_ENDURANCE> SATASSDEndurance = {
#define PI_SATA_SSD(vendor, model, matchLength, enduranceTB, reserved, groupFlag, ...) \
    {vendor, model, matchLength, enduranceTB, reserved, groupFlag},
#include "drives/ssd_endurance_sata.def"
#undef PI_SATA_SSD
};

const std::vector<_SAS_SSD_ENDURANCE> SASSSDEndurance = {
#define PI_SAS_SSD(vendor, model, enduranceTB, reserved, ...) {vendor, model, enduranceTB, reserved},
#include "drives/ssd_endurance_sas.def"
#undef PI_SAS_SSD
};

const std::vector<_SSD_ENDURANCE> NVMeSSDEndurance = {
#define PI_NVME_SSD(vendor, model, matchLength, enduranceTB, reserved, groupFlag, ...) \
    {vendor, model, matchLength, enduranceTB, reserved, groupFlag},
#include "drives/ssd_endurance_nvme.def"
#undef PI_NVME_SSD
};

namespace {

bool Matches(const _SSD_ENDURANCE& row, std::string_view model) {
    const std::string_view rowModel = row.m_Model;
    if (row.m_MatchLength == 0) {
        return EqualsIgnoringCase(model, rowModel);
    }
    return EqualsIgnoringCase(model.substr(0, row.m_MatchLength), rowModel.substr(0, row.m_MatchLength));
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
