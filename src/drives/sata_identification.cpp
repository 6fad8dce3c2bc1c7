// SPDX-License-Identifier: Apache-2.0

#include <pi/plugin_helper.h>

#include <algorithm>
#include <string_view>

#include "util/text.h"

namespace PI {

namespace {

bool HasPrefix(const std::string& text, std::string_view prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

bool HasPrefixIgnoringCase(const std::string& text, std::string_view prefix) {
    return EqualsIgnoringCase(std::string_view(text).substr(0, prefix.size()), prefix);
}

std::string AfterFirstBlank(const std::string& text) {
    const std::size_t blank = text.find(' ');
    return blank == std::string::npos ? text : text.substr(blank + 1);
}

bool IsDecimalDigit(char character) {
    return character >= '0' && character <= '9';
}

std::string VendorOfSingleWord(const std::string& text) {
    if (HasPrefix(text, "STEC")) {
        return "STEC";
    }
    // The fourth character decides, not the third: names given to drives in the field stay.
    if (HasPrefix(text, "ST") && text.size() > 3 && IsDecimalDigit(text[3])) {
        return "SEAGATE";
    }
    for (const std::string_view prefix : {"HTE", "HDS", "HCC", "HUA", "HTS", "HDE", "HUC"}) {
        if (HasPrefix(text, prefix)) {
            return "HGST";
        }
    }
    if (HasPrefix(text, "HL-DT-")) {
        return "LG";
    }
    return "--";
}

// The text is trimmed and holds blanks where the drive reported underscores.
void Split(const std::string& text, std::string& vendor, std::string& model) {
    const std::size_t blank = text.find(' ');
    const std::size_t intel = text.find("INTEL");

    if (blank != std::string::npos && intel != std::string::npos && intel > 0) {
        vendor = text.substr(intel);
        model = text.substr(0, intel - 1);
    } else if (HasPrefix(text, "SATADOM")) {
        vendor = "INNODISK";
        model = text;
    } else if (HasPrefixIgnoringCase(text, "Micron")) {
        vendor = "MICRON";
        model = AfterFirstBlank(AfterFirstBlank(text));
    } else if (blank != std::string::npos) {
        vendor = text.substr(0, blank);
        model = text.substr(blank + 1);
        if (EqualsIgnoringCase(vendor, "Optiarc")) {
            vendor = "SONY";
            model = text;
        }
        if (HasPrefix(vendor, "HL-DT-")) {
            vendor = "LG";
            model = text;
        }
    } else {
        vendor = VendorOfSingleWord(text);
        model = text;
    }
}

}  // namespace

int CPluginHelper::SplitSATAModelName(const std::string& modelText, std::string& vendor, std::string& model) {
    std::string text = modelText;
    Trim(text);
    std::replace(text.begin(), text.end(), '_', ' ');

    Split(text, vendor, model);
    Trim(vendor);
    Trim(model);
    return 0;
}

void CPluginHelper::CorrectSerialNumber(const std::string& vendor, const std::string& model,
                                        std::string& serial) {
    if (EqualsIgnoringCase(vendor, "WDC") || EqualsIgnoringCase(vendor, "WD")) {
        if (serial.size() >= 4 && HasPrefixIgnoringCase(serial, "WD-")) {
            serial.erase(0, 3);
        }
    } else if (EqualsIgnoringCase(vendor, "HGST")) {
        if (EqualsIgnoringCase(model, "HTE541010A9E68") && serial.size() >= 7 &&
            HasPrefixIgnoringCase(serial, "JA1000")) {
            serial.erase(0, 6);
        }
    } else if (EqualsIgnoringCase(vendor, "SEAGATE")) {
        if (serial.size() >= 9) {
            serial.resize(8);
        }
    }
}

bool CPluginHelper::IsVirtualDisk(std::string& vendor) {
    return vendor == "\xCE\xFA" || vendor == "VMware";
}

}  // namespace PI
