// SPDX-License-Identifier: Apache-2.0
// The three endurance lists as constant data.
#pragma once

#include <pi/ssd_endurance.h>

namespace PI {

inline constexpr _SSD_ENDURANCE SATA_SSD_ROWS[] = {
#define PI_SATA_SSD(vendor, model, matchLength, enduranceTB, reserved, groupFlag, ...) \
    {vendor, model, matchLength, enduranceTB, reserved, groupFlag},
#include "drives/ssd_endurance_sata.def"
#undef PI_SATA_SSD
};

inline constexpr _SAS_SSD_ENDURANCE SAS_SSD_ROWS[] = {
#define PI_SAS_SSD(vendor, model, enduranceTB, reserved, ...) {vendor, model, enduranceTB, reserved},
#include "drives/ssd_endurance_sas.def"
#undef PI_SAS_SSD
};

inline constexpr _SSD_ENDURANCE NVME_SSD_ROWS[] = {
#define PI_NVME_SSD(vendor, model, matchLength, enduranceTB, reserved, groupFlag, ...) \
    {vendor, model, matchLength, enduranceTB, reserved, groupFlag},
#include "drives/ssd_endurance_nvme.def"
#undef PI_NVME_SSD
};

}  // namespace PI
