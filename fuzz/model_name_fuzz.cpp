// SPDX-License-Identifier: Apache-2.0
// Model texts of SATA drives: split, then looked up in the list and by their rotation speed.
#include <pi/endurance_rating.h>
#include <pi/plugin_helper.h>

#include <cstdint>
#include <stdexcept>
#include <string>

#include "check.h"

namespace {

using namespace PI;

std::string Upper(std::string text) {
    for (char& character : text) {
        if (character >= 'a' && character <= 'z') {
            character = static_cast<char>(character - 'a' + 'A');
        }
    }
    return text;
}

bool IsTrimmed(const std::string& text) {
    constexpr char WHITE_SPACE[] = " \t\n\v\f\r";
    return text.empty() ||
           (text.find_first_of(WHITE_SPACE) != 0 && text.find_last_of(WHITE_SPACE) != text.size() - 1);
}

/// Whether a row's model is the beginning of a text that the list compares, in any letter case.
bool Matches(const _SSD_ENDURANCE& row, const std::string& model) {
    const std::size_t length = row.m_MatchLength;
    return length == 0 ? Upper(model) == Upper(row.m_Model)
                       : Upper(model).substr(0, length) == Upper(row.m_Model).substr(0, length);
}

void CheckEnduranceSearch(const std::string& model) {
    const _SSD_ENDURANCE* row = CPluginHelper::findLifeTimeProp(model);
    CHECK(row == nullptr || Matches(*row, model));
    CHECK(CPluginHelper::findLifeTimeProp(Upper(model)) == row);
}

void CheckEnduranceRating(const std::string& text) {
    const CEnduranceRating rating = FindEnduranceRating(text);
    CHECK(rating.IsListed() == (rating.GetList() != RatingList::NONE));
    CHECK(rating.IsListed() == (rating.GetTerabytes().has_value() != rating.GetEraseCycles().has_value()));
    CHECK(!rating.IsDoubtful() || rating.GetContradictingTerabytes() > 0U);
    CHECK(rating.IsListed() != rating.GetVendor().empty());
    if (text.size() < 100) {
        const CEnduranceRating again = FindEnduranceRating(" " + Upper(text) + "_");
        CHECK(again.GetList() == rating.GetList() && again.GetTerabytes() == rating.GetTerabytes());
    }
}

void CheckRotationSpeed(const std::string& vendor, const std::string& model) {
    const bool isTooShort = (Upper(vendor) == "HITACHI" || Upper(vendor) == "HGST") && model.size() < 3;
    unsigned long rpm = 0;
    try {
        CHECK(CPluginHelper::GetSATARPM(vendor, model, rpm) == 0);
        CHECK(!isTooShort);
    } catch (const std::out_of_range&) {
        CHECK(isTooShort && rpm == 7200);
    }
    CHECK(rpm == 4200 || rpm == 5400 || rpm == 7200 || rpm == 10000 || rpm == 15000);
    float thousands = 0;
    CHECK(CPluginHelper::RoundRPM(rpm, thousands) == 0);
    CHECK(thousands >= 4.2F && thousands <= 15.0F);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    CheckEnduranceRating(text);
    std::string vendor;
    std::string model;
    CHECK(CPluginHelper::SplitSATAModelName(text, vendor, model) == 0);
    CHECK(IsTrimmed(vendor) && IsTrimmed(model));
    CHECK(vendor.find('_') == std::string::npos && model.find('_') == std::string::npos);
    CHECK(model.size() <= text.size());

    // The results may be written over the text.
    std::string sharedVendor;
    std::string sharedModel = text;
    CPluginHelper::SplitSATAModelName(sharedModel, sharedVendor, sharedModel);
    CHECK(sharedVendor == vendor && sharedModel == model);

    CheckEnduranceSearch(text);
    CheckEnduranceSearch(model);
    CheckRotationSpeed(vendor, model);
    return 0;
}
