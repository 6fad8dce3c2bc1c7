// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/drive_health.h>
#include <pi/endurance_rating.h>
#include <pi/plugin_helper.h>
#include <pi/ssd_endurance.h>

#include <algorithm>
#include <cctype>
#include <random>
#include <set>
#include <string>

#include "support/global_locale.h"
#include "support/random_seed.h"

namespace PI::Test {
namespace {

struct AdditionalRow {
    std::string m_Vendor;
    std::string m_Model;
    std::uint64_t m_Terabytes;
    _RATING_BASIS m_Basis;
    std::uint64_t m_Contrary;
};

const AdditionalRow ADDITIONAL_ROWS[] = {
#define PI_ADDITIONAL_SSD(vendor, model, enduranceTB, basis, contrary) \
    {vendor, model, enduranceTB, RatingBasis::basis, contrary},
#include "drives/ssd_endurance_additional.def"
#undef PI_ADDITIONAL_SSD
};

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char c) { return std::tolower(c); });
    return text;
}

/// What is compared of a row.
std::string Compared(const _SSD_ENDURANCE& row) {
    const std::string model(row.m_Model);
    return row.m_MatchLength == 0 ? model : model.substr(0, row.m_MatchLength);
}

std::uint64_t Figure(const CEnduranceRating& rating) {
    return rating.GetTerabytes() ? *rating.GetTerabytes() : rating.GetEraseCycles().value_or(0);
}

// --- Texts as drives print them

struct Printed {
    const char* m_Text;
    const char* m_Vendor;
    std::uint64_t m_Terabytes;
    _RATING_LIST m_List;
};

TEST(FindEnduranceRating, TakesModelsAsDrivesPrintThem) {
    using namespace RatingList;
    const Printed cases[] = {
        {"INTEL SSDSC2BB016T7", "INTEL", 2925, SATA},
        {"SSDSC2BB480G7 INTEL", "INTEL", 945, SATA},
        {"SSDSC2BB800G7R", "INTEL", 1663, SATA},
        {"Micron_5300_MTFDDAK960TDS", "MICRON", 2628, SATA},
        {"MTFDDAK480TDS-1AW1ZA 02JG532D7A44694LEN", "MICRON", 1314, SATA},
        {"SAMSUNG MZ7LH480HAHQ-00005", "SAMSUNG", 683, SATA},
        {"MZ7LH480HAHQ-000V3   01PE101D7A09578LEN", "SAMSUNG", 683, SATA},
        {"MZ7KH960HAJR0D3", "SAMSUNG", 5256, SATA},
        {"TOSHIBA PX05SMB040", "TOSHIBA", 7300, SAS},
        {"TOSHIBA PX05SMB040      ", "TOSHIBA", 7300, SAS},
        {"PX05SMB040 TOSHIBA", "TOSHIBA", 7300, SAS},
        {"WDC     WUSTR6440ASS204", "WDC", 2190, SAS},
        {"INTEL SSDPE2KX010T8", "INTEL", 1920, NVME},
        {"SSDPE2KX020T8L", "INTEL", 2555, NVME},
        {"KCM61RUL3T84", "KIOXIA", 7008, NVME},
        {"INTEL SSDPEDMD016T4", "INTEL", 29200, SATA},  // an NVMe drive, which the SATA list has
        {"Dell Ent NVMe CM6 RI 1.92TB", "DELL", 3504, ADDITIONAL},
        {"Dell Express Flash NVMe P4610 1.6TB SFF", "DELL", 8760, ADDITIONAL},
        {"Samsung SSD 860 EVO 1TB", "SAMSUNG", 600, ADDITIONAL},
        {"Micron_9300_MTFDHAL3T2TDR", "MICRON", 17520, ADDITIONAL},
        {"MTFDDAK480TCC", "MICRON", 4380, ADDITIONAL},
        {"WDC  WDS100T2B0A-00SM50", "WDC", 400, ADDITIONAL},
        {"WUS4BB096D7P3E3", "WDC", 1401, ADDITIONAL},
        {"CT1000MX500SSD1", "CRUCIAL", 360, ADDITIONAL},
        {"TOSHIBA THNSN8960PCSE", "TOSHIBA", 1752, ADDITIONAL},
        {"\t samsung_ssd__860_evo \n 1tb\r\n", "SAMSUNG", 600, ADDITIONAL},
    };
    for (const Printed& printed : cases) {
        SCOPED_TRACE(printed.m_Text);
        const CEnduranceRating rating = FindEnduranceRating(printed.m_Text);
        EXPECT_TRUE(rating.IsListed());
        EXPECT_EQ(rating.GetVendor(), printed.m_Vendor);
        EXPECT_EQ(rating.GetTerabytes(), printed.m_Terabytes);
        EXPECT_EQ(rating.GetEraseCycles(), std::nullopt);
        EXPECT_EQ(rating.GetList(), printed.m_List);
    }
}

TEST(FindEnduranceRating, GivesOneCapacityNoRatingOfAnother) {
    EXPECT_EQ(FindEnduranceRating("CT2000MX500SSD1").GetTerabytes(), 700U);
    EXPECT_EQ(FindEnduranceRating("CT250MX500SSD1").GetTerabytes(), 100U);
    EXPECT_EQ(FindEnduranceRating("Samsung SSD 860 EVO 2TB").GetTerabytes(), 1200U);
    for (const char* text :
         {"CT4000MX500SSD1", "CT500MX500SSD", "Samsung SSD 860 EVO 4TB", "Samsung SSD 860 EVO", "Samsung SSD",
          "SAMSUNG MZQLB7T6HALA-00W07", "INTEL SSDSC2KB019T8", "INTEL SSDSC2KB960GZ",
          "Dell Ent NVMe AGN RI U.2 15.36TB", "Dell Ent NVMe AGN MU AIC 1.6TB"}) {
        EXPECT_FALSE(FindEnduranceRating(text).IsListed()) << text;
    }
}

TEST(FindEnduranceRating, UnknownModelsHaveNoRating) {
    for (const std::string& text :
         {std::string(), std::string(" "), std::string("___"), std::string(300, ' '), std::string("S"),
          std::string("HUSMM1640ASS204"), std::string("INTEL"), std::string("xSSDSC2BB016T7"),
          std::string("SSDSC2BB016T"), std::string("SSDSC2BB 016T7"), std::string("\0\xFF\x80", 3)}) {
        const CEnduranceRating rating = FindEnduranceRating(text);
        EXPECT_FALSE(rating.IsListed()) << text;
        EXPECT_EQ(rating.GetList(), RatingList::NONE);
        EXPECT_EQ(rating.GetBasis(), RatingBasis::NONE);
        EXPECT_FALSE(rating.IsDoubtful());
        EXPECT_EQ(rating.GetVendor(), "");
        EXPECT_EQ(rating.GetTerabytes(), std::nullopt);
        EXPECT_EQ(rating.GetEraseCycles(), std::nullopt);
        EXPECT_EQ(rating.GetContradictingTerabytes(), std::nullopt);
        EXPECT_EQ(rating.GetText(), "not in the endurance lists");
    }
}

TEST(FindEnduranceRating, TakesTextsOf128Characters) {
    const std::string model = "SSDSC2BB016T7";
    EXPECT_TRUE(FindEnduranceRating(model + std::string(128 - model.size(), 'x')).IsListed());
    EXPECT_FALSE(FindEnduranceRating(model + std::string(129 - model.size(), 'x')).IsListed());
    EXPECT_TRUE(FindEnduranceRating(std::string(127 - model.size(), 'x') + ' ' + model).IsListed());
    EXPECT_FALSE(FindEnduranceRating(std::string(128 - model.size(), 'x') + ' ' + model).IsListed());
    EXPECT_TRUE(FindEnduranceRating(model + std::string(500, ' ')).IsListed()) << "blanks do not count";
}

// --- The three lists

TEST(FindEnduranceRating, AnswersAsTheSATASearchDoes) {
    for (const _SSD_ENDURANCE& row : SATASSDEndurance) {
        const std::string model(row.m_Model);
        const std::string vendor(row.m_Vendor);
        SCOPED_TRACE(model);
        const _SSD_ENDURANCE* found = CPluginHelper::findLifeTimeProp(model);
        ASSERT_NE(found, nullptr);
        for (const std::string& text : {model, Lower(model), vendor + " " + model, vendor + "_" + model}) {
            const CEnduranceRating rating = FindEnduranceRating(text);
            EXPECT_EQ(rating.GetList(), RatingList::SATA) << text;
            EXPECT_EQ(rating.GetVendor(), found->m_Vendor) << text;
            EXPECT_EQ(Figure(rating), found->m_EnduranceTB) << text;
            EXPECT_EQ(rating.GetEraseCycles().has_value(), vendor == "INNODISK") << text;
        }
        const std::string compared = Compared(row);
        EXPECT_EQ(FindEnduranceRating(compared + "-00XYZ").IsListed(), row.m_MatchLength != 0);
        EXPECT_FALSE(FindEnduranceRating(compared.substr(0, compared.size() - 1)).GetList() ==
                         RatingList::SATA &&
                     CPluginHelper::findLifeTimeProp(compared.substr(0, compared.size() - 1)) == nullptr);
    }
}

TEST(FindEnduranceRating, WhatTheSATASearchFindsInASplitTextIsFoundInTheText) {
    std::mt19937 random(RandomSeed());
    const char* const vendors[] = {"", "INTEL ", "SAMSUNG ", "Micron_5300_", "ATA "};
    const char* const suffixes[] = {"", "-00005", "R", " 01PE101"};
    int found = 0;
    for (int round = 0; round < 20000; ++round) {
        const _SSD_ENDURANCE& row =
            SATASSDEndurance[Below(random, static_cast<std::uint32_t>(SATASSDEndurance.size()))];
        std::string model(row.m_Model);
        model.resize(model.size() - Below(random, 4));
        const std::uint32_t suffix = Below(random, 5);
        const std::string text = vendors[Below(random, 5)] + model +
                                 (suffix < 4 ? suffixes[suffix] : " " + std::string(row.m_Vendor));
        std::string vendor;
        CPluginHelper::SplitSATAModelName(text, vendor, model);
        if (const _SSD_ENDURANCE* expected = CPluginHelper::findLifeTimeProp(model)) {
            ++found;
            const CEnduranceRating rating = FindEnduranceRating(text);
            ASSERT_EQ(rating.GetList(), RatingList::SATA) << text;
            ASSERT_EQ(Figure(rating), expected->m_EnduranceTB) << text;
        }
    }
    EXPECT_GT(found, 1000);
}

TEST(FindEnduranceRating, ComparesSASModelsWhole) {
    for (const _SAS_SSD_ENDURANCE& row : SASSSDEndurance) {
        const std::string model(row.m_Model);
        const std::string vendor(row.m_Vendor);
        for (const std::string& text : {model, Lower(model), vendor + " " + model, model + " " + vendor}) {
            const CEnduranceRating rating = FindEnduranceRating(text);
            EXPECT_EQ(rating.GetList(), RatingList::SAS) << text;
            EXPECT_EQ(rating.GetVendor(), row.m_Vendor) << text;
            EXPECT_EQ(rating.GetTerabytes(), row.m_EnduranceTB) << text;
        }
        for (const std::string& text : {model + "A", model + "-", model + " A", "A" + model, model.substr(1),
                                        model.substr(0, model.size() - 1)}) {
            EXPECT_FALSE(FindEnduranceRating(text).IsListed()) << text;
        }
    }
}

TEST(FindEnduranceRating, FindsEveryNVMeRow) {
    for (const _SSD_ENDURANCE& row : NVMeSSDEndurance) {
        const std::string compared = Compared(row);
        const _SSD_ENDURANCE* alsoSATA = CPluginHelper::findLifeTimeProp(compared);
        for (const std::string& text : {compared, Lower(compared), compared + "X", "INTEL " + compared}) {
            const CEnduranceRating rating = FindEnduranceRating(text);
            EXPECT_EQ(rating.GetList(), alsoSATA != nullptr ? RatingList::SATA : RatingList::NVME) << text;
            EXPECT_EQ(rating.GetTerabytes(), row.m_EnduranceTB) << text;
        }
    }
}

// --- The additional models

TEST(AdditionalRatings, AreFoundByHowTheirModelsBegin) {
    for (const AdditionalRow& row : ADDITIONAL_ROWS) {
        for (const std::string& text : {row.m_Model, Lower(row.m_Model), row.m_Model + "-00007",
                                        "Vendor " + row.m_Model, "OEM_X_" + row.m_Model + " 01AB"}) {
            const CEnduranceRating rating = FindEnduranceRating(text);
            EXPECT_EQ(rating.GetList(), RatingList::ADDITIONAL) << text;
            EXPECT_EQ(rating.GetVendor(), row.m_Vendor) << text;
            EXPECT_EQ(rating.GetTerabytes(), row.m_Terabytes) << text;
            EXPECT_EQ(rating.GetBasis(), row.m_Contrary == 0 ? row.m_Basis : RatingBasis::CONTRADICTED)
                << text;
        }
        EXPECT_FALSE(FindEnduranceRating(row.m_Model.substr(0, row.m_Model.size() - 1)).IsListed())
            << row.m_Model;
    }
}

TEST(AdditionalRatings, StandOnceAndBehindTheThreeLists) {
    std::set<std::string> models;
    for (const AdditionalRow& row : ADDITIONAL_ROWS) {
        EXPECT_TRUE(models.insert(row.m_Model).second) << row.m_Model;
        EXPECT_GT(row.m_Terabytes, 0U) << row.m_Model;
        EXPECT_EQ(CPluginHelper::findLifeTimeProp(row.m_Model), nullptr) << row.m_Model;
    }
}

// --- What a rating rests on

TEST(EnduranceRating, SaysWhatItRestsOn) {
    using namespace RatingBasis;
    EXPECT_EQ(FindEnduranceRating("SSDSC2BB120G4").GetBasis(), GIVEN);
    EXPECT_EQ(FindEnduranceRating("SSDSC2BB120G4").GetText(), "at least 70 TB (product data)");
    EXPECT_EQ(FindEnduranceRating("MZ7L3960HCJR").GetBasis(), SOURCED);
    EXPECT_EQ(FindEnduranceRating("MZ7L3960HCJR").GetText(), "at least 1752 TB (published)");
    EXPECT_EQ(FindEnduranceRating("MZ7LH960HAJR").GetBasis(), COMPUTED);
    EXPECT_EQ(FindEnduranceRating("MZ7LH960HAJR").GetText(), "at least 1366 TB (computed, not published)");
    EXPECT_EQ(FindEnduranceRating("MTFDDAK960TDC").GetBasis(), ASSUMED);
    EXPECT_EQ(FindEnduranceRating("MTFDDAK960TDC").GetText(),
              "at least 1752 TB (assumed, as for drives of its kind)");
    EXPECT_FALSE(FindEnduranceRating("MTFDDAK960TDC").IsDoubtful());
}

TEST(EnduranceRating, AContradictedOneIsDoubtfulAndHasBothFigures) {
    const CEnduranceRating rating = FindEnduranceRating("SAMSUNG MZQL2960HCJR-00A07");
    EXPECT_TRUE(rating.IsDoubtful());
    EXPECT_EQ(rating.GetBasis(), RatingBasis::CONTRADICTED);
    EXPECT_EQ(rating.GetTerabytes(), 1752U);
    EXPECT_EQ(rating.GetContradictingTerabytes(), 1366U);
    EXPECT_EQ(rating.GetText(), "at least 1752 TB (computed, not published; another source says 1366 TB)");

    const CEnduranceRating listed = FindEnduranceRating("SSDSC2BB800G7");
    EXPECT_TRUE(listed.IsDoubtful());
    EXPECT_EQ(listed.GetTerabytes(), 1663U);
    EXPECT_EQ(listed.GetContradictingTerabytes(), 1462U);
}

TEST(EnduranceRating, EraseCyclesAreNoTerabytes) {
    for (const char* text : {"SATADOM-ML 3ME", "SATADOM-MH_3me3", "M.2 (S42) 3ME4", "InnoDisk (S42) 3ME4"}) {
        const CEnduranceRating rating = FindEnduranceRating(text);
        EXPECT_EQ(rating.GetVendor(), "INNODISK") << text;
        EXPECT_EQ(rating.GetTerabytes(), std::nullopt) << text;
        EXPECT_EQ(rating.GetEraseCycles(), 3000U) << text;
    }
    EXPECT_EQ(FindEnduranceRating("(S42) 3IE4").GetText(), "at least 20000 erase cycles (product data)");
    EXPECT_FALSE(FindEnduranceRating("SATADOM-ML 3ME5").IsListed());
}

TEST(EnduranceRating, DoesNotDependOnTheGlobalLocale) {
    const GlobalLocale odd(OddLocale());
    EXPECT_EQ(FindEnduranceRating("intel ssdsc2bb016t7").GetTerabytes(), 2925U);
}

// --- As a figure of a drive's health

CHealthFigure RatedTerabytes(const std::string& model) {
    return CDriveHealth(DriveProtocol::ATA, model).GetFigure(HealthFigure::RATED_TERABYTES);
}

TEST(DriveHealthRating, IsThatOfTheLists) {
    const CHealthFigure rated = RatedTerabytes("INTEL SSDSC2BB016T7");
    EXPECT_EQ(rated.GetState(), FigureState::KNOWN);
    EXPECT_EQ(rated.GetValue(), 2925);
    EXPECT_EQ(rated.GetSource(), FigureSource::ENDURANCE_LIST);
}

TEST(DriveHealthRating, IsDoubtfulWhereSourcesContradictEachOther) {
    const CHealthFigure rated = RatedTerabytes("SAMSUNG MZQL2960HCJR-00A07");
    EXPECT_EQ(rated.GetState(), FigureState::DOUBTFUL);
    EXPECT_EQ(rated.GetValue(), 1752);
    EXPECT_EQ(rated.GetText(), "published ratings differ: 1752 TB and 1366 TB");
}

TEST(DriveHealthRating, IsUnknownForOtherModelsAndForEraseCycles) {
    EXPECT_EQ(RatedTerabytes("HUSMM1640ASS204").GetState(), FigureState::UNKNOWN);
    EXPECT_EQ(RatedTerabytes("HUSMM1640ASS204").GetText(), "not in the endurance list");
    EXPECT_EQ(RatedTerabytes("SATADOM-ML 3ME").GetState(), FigureState::UNKNOWN);
    EXPECT_EQ(RatedTerabytes("SATADOM-ML 3ME").GetText(), "the list rates this family by 3000 erase cycles");
}

}  // namespace
}  // namespace PI::Test
