// SPDX-License-Identifier: Apache-2.0

#include <pi/plugin_helper.h>

#include <string_view>

#include "util/text.h"

namespace PI {

namespace {

unsigned long WesternDigitalRPM(const std::string& model) {
    static constexpr std::string_view PREFIXES_10000[] = {
        "WD1600ADFS", "WD360ADFD",  "WD740ADFD",  "WD1500ADFD", "WD1500AHFD",
        "WD1500BLFS", "WD3000BLFS", "WD1500HLFS", "WD3000HLFS", "WD3000GLFS",
    };
    for (const std::string_view prefix : PREFIXES_10000) {
        if (model.compare(0, prefix.size(), prefix) == 0) {
            return 10000;
        }
    }
    return 7200;
}

unsigned long HitachiRPM(const std::string& model) {
    // Throws std::out_of_range for models of fewer than three characters, as pi/plugin_helper.h says.
    const std::string code = model.substr(3, 2);
    if (code == "10") {
        return 10000;
    }
    if (code == "15") {
        return 15000;
    }
    if (code == "54") {
        return 5400;
    }
    return 7200;
}

unsigned long FujitsuRPM(const std::string& model) {
    const std::string_view series = std::string_view(model).substr(0, 4);
    if (series == "MHX2") {
        return 4200;
    }
    if (series == "MHY2") {
        return 5400;
    }
    if (series == "MHV2" && model.size() > 7) {
        const std::string_view code = std::string_view(model).substr(7, 2);
        if (code == "BH" || code == "AH") {
            return 5400;
        }
        if (code == "AT" || code == "BT") {
            return 4200;
        }
    }
    return 7200;
}

unsigned long SeagateRPM(const std::string& model) {
    static constexpr std::string_view MODELS_5400[] = {
        "ST9160314AS", "ST9750423AS", "ST9640320AS", "ST9500325AS", "ST9320325AS", "ST9250315AS",
    };
    for (const std::string_view slow : MODELS_5400) {
        if (model == slow) {
            return 5400;
        }
    }
    return 7200;
}

}  // namespace

int CPluginHelper::GetSATARPM(const std::string& vendor, const std::string& model, unsigned long& rpm) {
    rpm = 7200;
    if (EqualsIgnoringCase(vendor, "WDC") || EqualsIgnoringCase(vendor, "WD")) {
        rpm = WesternDigitalRPM(model);
    } else if (EqualsIgnoringCase(vendor, "HITACHI") || EqualsIgnoringCase(vendor, "HGST")) {
        rpm = HitachiRPM(model);
    } else if (EqualsIgnoringCase(vendor, "FUJITSU")) {
        rpm = FujitsuRPM(model);
    } else if (EqualsIgnoringCase(vendor, "SEAGATE")) {
        rpm = SeagateRPM(model);
    }
    return 0;
}

int CPluginHelper::RoundRPM(unsigned long rpm, float& thousands) {
    if (rpm <= 5000) {
        thousands = 4.2F;
    } else if (rpm <= 7000) {
        thousands = 5.4F;
    } else if (rpm <= 9000) {
        thousands = 7.2F;
    } else if (rpm <= 14000) {
        thousands = 10.0F;
    } else if (rpm <= 19000) {
        thousands = 15.0F;
    } else {
        thousands = 20.0F;
    }
    return 0;
}

}  // namespace PI
