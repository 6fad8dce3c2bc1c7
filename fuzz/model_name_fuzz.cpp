// SPDX-License-Identifier: Apache-2.0
// Model texts of SATA drives: split, then looked up in the list and by their rotation speed.
#include <pi/endurance_rating.h>
#include <pi/plugin_helper.h>

#include <cstdint>
#include <stdexcept>

#include "check.h"
#include "drives/plain_endurance_search.h"
#include "drives/plain_rotation_speed.h"
#include "drives/plain_sata_names.h"

namespace {

using namespace PI;
using namespace PI::Test;

Names Split(const std::string& text) {
    Names names;
    CHECK(CPluginHelper::SplitSATAModelName(text, names.m_Vendor, names.m_Model) == 0);
    return names;
}

/// Row by row, as against the library's index.
void CheckEnduranceSearch(const std::string& model) {
    const int row = ExpectedRow(model);
    CHECK(CPluginHelper::findLifeTimeProp(model) ==
          (row < 0 ? nullptr : &SATASSDEndurance[static_cast<std::size_t>(row)]));
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

void CheckRotationSpeed(const Names& names) {
    const std::string vendor = Upper(names.m_Vendor);
    const bool isTooShort = (vendor == "HITACHI" || vendor == "HGST") && names.m_Model.size() < 3;
    unsigned long rpm = 0;
    try {
        CHECK(CPluginHelper::GetSATARPM(names.m_Vendor, names.m_Model, rpm) == 0);
        CHECK(!isTooShort);
    } catch (const std::out_of_range&) {
        CHECK(isTooShort);
    }
    CHECK(rpm == (isTooShort ? 7200 : ExpectedRPM(names.m_Vendor, names.m_Model)));
    float thousands = 0;
    CHECK(CPluginHelper::RoundRPM(rpm, thousands) == 0);
    CHECK(thousands >= 4.2F && thousands <= 15.0F);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    CheckEnduranceRating(text);
    const Names names = Split(text);
    const Names expected = ExpectedSplit(text);
    CHECK_TEXT(names.m_Vendor, expected.m_Vendor);
    CHECK_TEXT(names.m_Model, expected.m_Model);

    // The results may be written over the text.
    Names shared = {"", text};
    CPluginHelper::SplitSATAModelName(shared.m_Model, shared.m_Vendor, shared.m_Model);
    CHECK(shared == names);

    CheckEnduranceSearch(text);
    CheckEnduranceSearch(names.m_Model);
    CheckRotationSpeed(names);
    return 0;
}
