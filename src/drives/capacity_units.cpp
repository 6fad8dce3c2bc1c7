// SPDX-License-Identifier: Apache-2.0

#include <pi/plugin_helper.h>

namespace PI {

bool CPluginHelper::ConvertBytesToOtherUnit(unsigned long bytes, float& value, _UNITS& unit) {
    constexpr float PER_STEP = 1.0F / 1024;  // exact in single precision
    constexpr _UNITS LARGER[] = {Units::KILOBYTES, Units::MEGABYTES, Units::GIGABYTES, Units::TERABYTES,
                                 Units::PETABYTES};

    value = static_cast<float>(bytes);
    unit = Units::BYTES;
    for (const _UNITS larger : LARGER) {
        if (value * PER_STEP < 1.0F) {
            break;
        }
        value *= PER_STEP;
        unit = larger;
    }
    return true;
}

}  // namespace PI
