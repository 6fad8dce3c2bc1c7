// SPDX-License-Identifier: Apache-2.0

#include "model_names.h"

#include <pi/plugin_helper.h>

#include <strings.h>

#include <algorithm>
#include <cstring>
#include <string_view>

namespace PI {

namespace {

struct ModelVendor {
    std::string_view m_Prefix;
    const char* m_Vendor;
};
constexpr ModelVendor MODEL_VENDORS[] = {
#define PI_MODEL_VENDOR(prefix, vendor) {prefix, vendor},
#include "model_vendors.def"
#undef PI_MODEL_VENDOR
};

/// Vendors that some models have at their end.
constexpr std::string_view TRAILING_VENDORS[] = {"TOSHIBA", "KIOXIA", "SAMSUNG", "WDC",
                                                 "Intel",   "Micron", "SK hynix"};

struct Volume {
    std::string_view m_Prefix;
    std::string_view m_Part;
    const char* m_Kind;
};
constexpr Volume VOLUMES[] = {
#define PI_VOLUME(prefix, part, kind) {prefix, part, kind},
#include "report_volumes.def"
#undef PI_VOLUME
};

bool EqualsIgnoringCase(std::string_view one, std::string_view other) {
    return one.size() == other.size() && strncasecmp(one.data(), other.data(), one.size()) == 0;
}

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

bool BeginsLike(std::string_view text, std::string_view prefix) {
    return text.size() >= prefix.size() &&
           std::equal(prefix.begin(), prefix.end(), text.begin(),
                      [](char wanted, char is) { return wanted == '#' ? IsDigit(is) : wanted == is; });
}

/// "KXG60ZNV512G TOSHIBA", "THNSN5512GPUK NVMe TOSHIBA 512GB": a vendor after a model with digits.
bool FindTrailingVendor(std::string_view model, std::string& vendor, std::string& product) {
    const std::string_view first = model.substr(0, model.find(' '));
    if (std::none_of(first.begin(), first.end(), IsDigit)) {
        return false;
    }
    for (const std::string_view name : TRAILING_VENDORS) {
        const std::size_t place = model.find(name);
        if (place == std::string_view::npos || place == 0 || model[place - 1] != ' ') {
            continue;
        }
        vendor = name;
        product = place + name.size() == model.size() ? model.substr(0, place - 1) : model;
        return true;
    }
    return false;
}

}  // namespace

void SplitModel(const std::string& model, std::string& vendor, std::string& product) {
    CPluginHelper::SplitSATAModelName(model, vendor, product);
    std::string_view text = model;
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    text = text.substr(0, text.find_last_not_of(' ') + 1);
    if (FindTrailingVendor(text, vendor, product)) {
        return;
    }
    for (const ModelVendor& row : MODEL_VENDORS) {
        const bool isFirstWord = vendor == "--" || text.substr(0, vendor.size()) == vendor;
        if (isFirstWord && BeginsLike(text, row.m_Prefix) && !EqualsIgnoringCase(vendor, row.m_Vendor)) {
            vendor = row.m_Vendor;
            product = text;
            return;
        }
    }
    if (vendor == "--") {
        vendor.clear();
    }
    if (product.empty()) {
        product = text;
    }
}

const char* FindVolumeKind(const std::string& model) {
    for (const Volume& row : VOLUMES) {
        if (EqualsIgnoringCase(std::string_view(model).substr(0, row.m_Prefix.size()), row.m_Prefix) &&
            (row.m_Part.empty() ||
             strcasestr(model.c_str() + row.m_Prefix.size(), row.m_Part.data()) != nullptr)) {
            return row.m_Kind;
        }
    }
    return "";
}

}  // namespace PI
