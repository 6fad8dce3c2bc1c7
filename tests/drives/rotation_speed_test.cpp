// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/plugin_helper.h>

#include <cctype>
#include <limits>
#include <stdexcept>
#include <vector>

#include "support/global_locale.h"

namespace PI::Test {
namespace {

constexpr const char* WESTERN_DIGITAL_10000[] = {
    "WD1600ADFS", "WD360ADFD",  "WD740ADFD",  "WD1500ADFD", "WD1500AHFD",
    "WD1500BLFS", "WD3000BLFS", "WD1500HLFS", "WD3000HLFS", "WD3000GLFS",
};

constexpr const char* SEAGATE_5400[] = {
    "ST9160314AS", "ST9750423AS", "ST9640320AS", "ST9500325AS", "ST9320325AS", "ST9250315AS",
};

unsigned long RPM(const std::string& vendor, const std::string& model) {
    unsigned long rpm = 1;
    EXPECT_EQ(CPluginHelper::GetSATARPM(vendor, model, rpm), 0);
    return rpm;
}

/// A vendor in several letter cases.
std::vector<std::string> Spellings(const std::string& vendor) {
    std::string lower = vendor;
    std::string mixed = vendor;
    for (std::size_t i = 0; i < vendor.size(); ++i) {
        lower[i] = static_cast<char>(std::tolower(vendor[i]));
        mixed[i] = i % 2 == 0 ? vendor[i] : lower[i];
    }
    return {vendor, lower, mixed};
}

// --- Western Digital

TEST(WesternDigitalRPM, TenPrefixesGive10000) {
    for (const char* vendor : {"WDC", "WD", "wdc", "wd", "Wdc", "wD"}) {
        for (const std::string model : WESTERN_DIGITAL_10000) {
            EXPECT_EQ(RPM(vendor, model), 10000U) << vendor << ' ' << model;
            EXPECT_EQ(RPM(vendor, model + "-01SWPV0"), 10000U) << vendor << ' ' << model;
        }
    }
}

TEST(WesternDigitalRPM, AnythingElseGives7200) {
    for (const std::string model : WESTERN_DIGITAL_10000) {
        EXPECT_EQ(RPM("WDC", model.substr(0, model.size() - 1)), 7200U) << model;
        EXPECT_EQ(RPM("WDC", " " + model), 7200U) << model;
        std::string lower = model;
        lower.back() = static_cast<char>(std::tolower(lower.back()));
        EXPECT_EQ(RPM("WDC", lower), 7200U) << lower;
    }
    EXPECT_EQ(RPM("WDC", "WD20EFRX"), 7200U);
    EXPECT_EQ(RPM("WDC", ""), 7200U);
}

TEST(WesternDigitalRPM, TheWholeVendorMustMatch) {
    for (const char* vendor : {"", "W", "WDC ", " WDC", "WD C", "WDCX"}) {
        EXPECT_EQ(RPM(vendor, "WD1500HLFS"), 7200U) << vendor;
    }
}

// --- Hitachi

TEST(HitachiRPM, FourthAndFifthCharacterDecide) {
    for (const std::string vendor : {"HITACHI", "HGST"}) {
        for (const std::string& spelling : Spellings(vendor)) {
            EXPECT_EQ(RPM(spelling, "HTE541010A9E68"), 5400U) << spelling;
            EXPECT_EQ(RPM(spelling, "HUC10xxxx"), 10000U) << spelling;
            EXPECT_EQ(RPM(spelling, "HUS15xxxx"), 15000U) << spelling;
            EXPECT_EQ(RPM(spelling, "HUA722020ALA330"), 7200U) << spelling;
        }
    }
}

TEST(HitachiRPM, EveryOtherPairGives7200) {
    for (int first = 1; first < 256; ++first) {
        for (int second = 1; second < 256; ++second) {
            const std::string pair = {static_cast<char>(first), static_cast<char>(second)};
            const unsigned long expected = pair == "10"   ? 10000
                                           : pair == "15" ? 15000
                                           : pair == "54" ? 5400
                                                          : 7200;
            ASSERT_EQ(RPM("HGST", "HTS" + pair + "rest"), expected) << pair;
        }
    }
}

TEST(HitachiRPM, TheFirstThreeCharactersAreNotLookedAt) {
    EXPECT_EQ(RPM("HGST", "???54"), 5400U);
    EXPECT_EQ(RPM("HGST", "54554"), 5400U);
    EXPECT_EQ(RPM("HGST", "54072"), 7200U);
}

TEST(HitachiRPM, ShortModelsGive7200DownToThreeCharacters) {
    EXPECT_EQ(RPM("HGST", "HTE54"), 5400U);
    EXPECT_EQ(RPM("HGST", "HTE5"), 7200U);
    EXPECT_EQ(RPM("HITACHI", "HTE"), 7200U);
}

TEST(HitachiRPM, ModelsOfLessThanThreeCharactersThrowWith7200Set) {
    for (const char* vendor : {"HITACHI", "hitachi", "HGST", "hgst"}) {
        for (const char* model : {"HT", "H", ""}) {
            unsigned long rpm = 1;
            EXPECT_THROW(CPluginHelper::GetSATARPM(vendor, model, rpm), std::out_of_range) << vendor << model;
            EXPECT_EQ(rpm, 7200U);
        }
    }
}

TEST(HitachiRPM, TheWholeVendorMustMatch) {
    for (const char* vendor : {"HITACH", "HITACHI ", "HGS", "HGSTX", "HITACHI HTS541010"}) {
        EXPECT_EQ(RPM(vendor, "HTE541010A9E68"), 7200U) << vendor;
        EXPECT_EQ(RPM(vendor, ""), 7200U) << vendor;
    }
}

// --- Fujitsu

TEST(FujitsuRPM, SeriesAndInterfaceCodeDecide) {
    for (const std::string& vendor : Spellings("FUJITSU")) {
        EXPECT_EQ(RPM(vendor, "MHX2300BT"), 4200U) << vendor;
        EXPECT_EQ(RPM(vendor, "MHX2"), 4200U) << vendor;
        EXPECT_EQ(RPM(vendor, "MHY2120BH"), 5400U) << vendor;
        EXPECT_EQ(RPM(vendor, "MHY2"), 5400U) << vendor;
        EXPECT_EQ(RPM(vendor, "MHV2080BH"), 5400U) << vendor;
        EXPECT_EQ(RPM(vendor, "MHV2080AH"), 5400U) << vendor;
        EXPECT_EQ(RPM(vendor, "MHV2080AT"), 4200U) << vendor;
        EXPECT_EQ(RPM(vendor, "MHV2080BT"), 4200U) << vendor;
    }
}

TEST(FujitsuRPM, FurtherCharactersDoNotMatter) {
    EXPECT_EQ(RPM("FUJITSU", "MHV2080BH PL"), 5400U);
    EXPECT_EQ(RPM("FUJITSU", "MHV2080AT PL"), 4200U);
    EXPECT_EQ(RPM("FUJITSU", "MHX2300BH FFS"), 4200U);
    EXPECT_EQ(RPM("FUJITSU", "MHY2120AT FFS"), 5400U);
}

TEST(FujitsuRPM, EveryOtherCodeGives7200) {
    for (int first = 1; first < 256; ++first) {
        for (int second = 1; second < 256; ++second) {
            const std::string code = {static_cast<char>(first), static_cast<char>(second)};
            unsigned long expected = 7200;
            if (code == "BH" || code == "AH") {
                expected = 5400;
            } else if (code == "AT" || code == "BT") {
                expected = 4200;
            }
            ASSERT_EQ(RPM("FUJITSU", "MHV2080" + code), expected) << code;
        }
    }
}

TEST(FujitsuRPM, OtherAndShortModelsGive7200) {
    for (const char* model :
         {"", "M", "MHV", "MHX", "MHY", "MHV2", "MHV2080", "MHV2080B", "MHV2080 BH", "MHV208BH", "MHW2080BH",
          "MHZ2320BH", "mhy2120bh", "MHV2080bh", " MHX2300BT", "MHT2080AT"}) {
        EXPECT_EQ(RPM("FUJITSU", model), 7200U) << model;
    }
}

TEST(FujitsuRPM, TheWholeVendorMustMatch) {
    EXPECT_EQ(RPM("FUJITS", "MHY2120BH"), 7200U);
    EXPECT_EQ(RPM("FUJITSU ", "MHY2120BH"), 7200U);
}

// --- Seagate

TEST(SeagateRPM, SixModelsGive5400) {
    for (const std::string& vendor : Spellings("SEAGATE")) {
        for (const char* model : SEAGATE_5400) {
            EXPECT_EQ(RPM(vendor, model), 5400U) << vendor << ' ' << model;
        }
    }
}

TEST(SeagateRPM, TheWholeModelMustMatchInCase) {
    for (const std::string model : SEAGATE_5400) {
        EXPECT_EQ(RPM("SEAGATE", model + " "), 7200U) << model;
        EXPECT_EQ(RPM("SEAGATE", model + "G"), 7200U) << model;
        EXPECT_EQ(RPM("SEAGATE", model + std::string(1, '\0')), 7200U) << model;
        EXPECT_EQ(RPM("SEAGATE", " " + model), 7200U) << model;
        EXPECT_EQ(RPM("SEAGATE", model.substr(0, model.size() - 1)), 7200U) << model;
        EXPECT_EQ(RPM("SEAGATE", "st" + model.substr(2)), 7200U) << model;
    }
    EXPECT_EQ(RPM("SEAGATE", "ST3500418AS"), 7200U);
    EXPECT_EQ(RPM("SEAGATE", ""), 7200U);
}

// --- Everything else

TEST(GetSATARPM, OtherVendorsGive7200WhateverTheModel) {
    for (const char* vendor : {"", "--", "SAMSUNG", "TOSHIBA", "INTEL", "Western Digital"}) {
        for (const char* model : {"", "WD1500HLFS", "HTE541010A9E68", "MHX2300BT", "ST9160314AS"}) {
            EXPECT_EQ(RPM(vendor, model), 7200U) << vendor << ' ' << model;
        }
    }
}

TEST(GetSATARPM, VendorsDoNotShareTheirRules) {
    EXPECT_EQ(RPM("SEAGATE", "WD1500HLFS"), 7200U);
    EXPECT_EQ(RPM("WDC", "HTE541010A9E68"), 7200U);
    EXPECT_EQ(RPM("WDC", "ST9160314AS"), 7200U);
    EXPECT_EQ(RPM("SEAGATE", "MHX2300BT"), 7200U);
    EXPECT_EQ(RPM("HGST", "ST9160314AS"), 7200U);
    EXPECT_EQ(RPM("FUJITSU", "HTE541010A9E68"), 7200U);
}

TEST(GetSATARPM, TheGlobalLocaleDoesNotMatter) {
    const GlobalLocale odd(OddLocale());
    EXPECT_EQ(RPM("wdc", "WD1500HLFS"), 10000U);
    EXPECT_EQ(RPM("hgst", "HTE541010A9E68"), 5400U);
    EXPECT_EQ(RPM("abc", "WD1500HLFS"), 7200U);
}

// --- Display figure

float Rounded(unsigned long rpm) {
    float thousands = -1;
    EXPECT_EQ(CPluginHelper::RoundRPM(rpm, thousands), 0);
    return thousands;
}

TEST(RoundRPM, ClassesByInclusiveUpperBounds) {
    EXPECT_EQ(Rounded(0), 4.2F);
    EXPECT_EQ(Rounded(1), 4.2F);
    EXPECT_EQ(Rounded(4999), 4.2F);
    EXPECT_EQ(Rounded(5000), 4.2F);
    EXPECT_EQ(Rounded(5001), 5.4F);
    EXPECT_EQ(Rounded(7000), 5.4F);
    EXPECT_EQ(Rounded(7001), 7.2F);
    EXPECT_EQ(Rounded(7200), 7.2F);
    EXPECT_EQ(Rounded(9000), 7.2F);
    EXPECT_EQ(Rounded(9001), 10.0F);
    EXPECT_EQ(Rounded(10000), 10.0F);
    EXPECT_EQ(Rounded(14000), 10.0F);
    EXPECT_EQ(Rounded(14001), 15.0F);
    EXPECT_EQ(Rounded(15000), 15.0F);
    EXPECT_EQ(Rounded(19000), 15.0F);
    EXPECT_EQ(Rounded(19001), 20.0F);
    EXPECT_EQ(Rounded(std::numeric_limits<unsigned long>::max()), 20.0F);
}

TEST(RoundRPM, UsesAll64Bits) {
    EXPECT_EQ(Rounded(1UL << 32), 20.0F);
    EXPECT_EQ(Rounded((1UL << 32) + 5000), 20.0F);
    EXPECT_EQ(Rounded(1UL << 63), 20.0F);
}

TEST(RoundRPM, GivesTheNearestSinglePrecisionFigures) {
    EXPECT_EQ(static_cast<double>(Rounded(4200)), 4.19999980926513671875);
    EXPECT_EQ(static_cast<double>(Rounded(5400)), 5.400000095367431640625);
    EXPECT_EQ(static_cast<double>(Rounded(7200)), 7.19999980926513671875);
}

}  // namespace
}  // namespace PI::Test
