// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/plugin_helper.h>
#include <pi/ssd_endurance.h>

#include <cctype>
#include <iostream>
#include <map>
#include <type_traits>
#include <vector>

#include "drives/drive_captures.h"
#include "drives/expected_ssd_endurance.h"
#include "support/global_locale.h"

namespace PI::Test {
namespace {

const _SSD_ENDURANCE* Find(const std::string& model) {
    return CPluginHelper::findLifeTimeProp(model);
}

// --- The lists

template <std::size_t count>
void ExpectRows(const std::vector<_SSD_ENDURANCE>& table, const ExpectedEndurance (&expected)[count]) {
    ASSERT_EQ(table.size(), count);
    for (std::size_t i = 0; i < count; ++i) {
        EXPECT_EQ(table[i].m_Vendor, expected[i].m_Vendor) << i;
        EXPECT_EQ(table[i].m_Model, expected[i].m_Model) << i;
        EXPECT_EQ(table[i].m_MatchLength, expected[i].m_MatchLength) << i;
        EXPECT_EQ(table[i].m_EnduranceTB, expected[i].m_EnduranceTB) << i;
        EXPECT_EQ(table[i].m_Reserved, expected[i].m_Reserved) << i;
        EXPECT_EQ(table[i].m_GroupFlag, expected[i].m_GroupFlag) << i;
    }
}

TEST(SSDEnduranceLists, SATARowsAreTheProductData) {
    EXPECT_EQ(SATASSDEndurance.size(), 117U);
    ExpectRows(SATASSDEndurance, EXPECTED_SATA);
}

TEST(SSDEnduranceLists, NVMeRowsAreTheProductData) {
    EXPECT_EQ(NVMeSSDEndurance.size(), 52U);
    ExpectRows(NVMeSSDEndurance, EXPECTED_NVME);
}

TEST(SSDEnduranceLists, SASRowsAreTheProductData) {
    EXPECT_EQ(SASSSDEndurance.size(), 71U);
    ASSERT_EQ(SASSSDEndurance.size(), std::size(EXPECTED_SAS));
    for (std::size_t i = 0; i < SASSSDEndurance.size(); ++i) {
        EXPECT_EQ(SASSSDEndurance[i].m_Vendor, EXPECTED_SAS[i].m_Vendor) << i;
        EXPECT_EQ(SASSSDEndurance[i].m_Model, EXPECTED_SAS[i].m_Model) << i;
        EXPECT_EQ(SASSSDEndurance[i].m_EnduranceTB, EXPECTED_SAS[i].m_EnduranceTB) << i;
        EXPECT_EQ(SASSSDEndurance[i].m_Reserved, EXPECTED_SAS[i].m_Reserved) << i;
    }
}

template <class Table>
std::map<std::string, int> RowsByVendor(const Table& table) {
    std::map<std::string, int> counts;
    for (const auto& row : table) {
        ++counts[row.m_Vendor];
    }
    return counts;
}

TEST(SSDEnduranceLists, HaveTheirRowsOfEachVendor) {
    using Counts = std::map<std::string, int>;
    EXPECT_EQ(RowsByVendor(SATASSDEndurance),
              (Counts{{"INTEL", 35}, {"INNODISK", 12}, {"SAMSUNG", 36}, {"MICRON", 34}}));
    EXPECT_EQ(RowsByVendor(SASSSDEndurance), (Counts{{"TOSHIBA", 51}, {"HGST", 9}, {"WDC", 11}}));
    EXPECT_EQ(RowsByVendor(NVMeSSDEndurance),
              (Counts{{"INTEL", 33}, {"SAMSUNG", 8}, {"MICRON", 2}, {"KIOXIA", 9}}));
}

TEST(SSDEnduranceLists, MatchLengthsFollowTheVendors) {
    const std::map<std::string, std::uint32_t> sata = {
        {"INTEL", 13}, {"INNODISK", 0}, {"SAMSUNG", 10}, {"MICRON", 13}};
    for (const _SSD_ENDURANCE& row : SATASSDEndurance) {
        EXPECT_EQ(row.m_MatchLength, sata.at(row.m_Vendor)) << row.m_Model;
    }
    const std::map<std::string, std::uint32_t> nvme = {
        {"INTEL", 13}, {"SAMSUNG", 10}, {"MICRON", 13}, {"KIOXIA", 12}};
    for (std::size_t i = 0; i < NVMeSSDEndurance.size(); ++i) {
        const _SSD_ENDURANCE& row = NVMeSSDEndurance[i];
        EXPECT_EQ(row.m_MatchLength, i < 6 ? 14 : nvme.at(row.m_Vendor)) << row.m_Model;
    }
}

TEST(SSDEnduranceLists, NoModelIsShorterThanItsMatchLength) {
    for (const auto* table : {&SATASSDEndurance, &NVMeSSDEndurance}) {
        for (const _SSD_ENDURANCE& row : *table) {
            EXPECT_GE(row.m_Model.size(), row.m_MatchLength) << row.m_Model;
        }
    }
}

TEST(SSDEnduranceLists, NoRatingIsZeroAndNothingReservedIsUsed) {
    for (const auto* table : {&SATASSDEndurance, &NVMeSSDEndurance}) {
        for (const _SSD_ENDURANCE& row : *table) {
            EXPECT_GT(row.m_EnduranceTB, 0U) << row.m_Model;
            EXPECT_EQ(row.m_Reserved, 0U) << row.m_Model;
        }
    }
    for (const _SAS_SSD_ENDURANCE& row : SASSSDEndurance) {
        EXPECT_GT(row.m_EnduranceTB, 0U) << row.m_Model;
        EXPECT_EQ(row.m_Reserved, 0U) << row.m_Model;
    }
}

TEST(SSDEnduranceLists, TenInnoDiskRowsCarryTheGroupFlag) {
    int flagged = 0;
    bool isNewer = false;
    for (const _SSD_ENDURANCE& row : SATASSDEndurance) {
        isNewer = isNewer || row.m_Model == "SATADOM-ML 3ME3";
        EXPECT_EQ(row.m_GroupFlag, isNewer && row.m_Vendor == "INNODISK" ? 1U : 0U) << row.m_Model;
        flagged += static_cast<int>(row.m_GroupFlag);
    }
    EXPECT_EQ(flagged, 10);
    for (const _SSD_ENDURANCE& row : NVMeSSDEndurance) {
        EXPECT_EQ(row.m_GroupFlag, 0U) << row.m_Model;
    }
}

TEST(SSDEnduranceLists, FourSamsungRowsStandTwice) {
    const char* const twice[] = {"MZ7KM240HMHQ-000FU", "MZ7KM480HMHQ-000FU", "MZ7KM960HMJP-000FU",
                                 "MZ7KM1T9HMJP-000FU"};
    std::size_t first = 0;
    while (SATASSDEndurance[first].m_Model != twice[0]) {
        ++first;
    }
    for (std::size_t i = 0; i < 4; ++i) {
        const _SSD_ENDURANCE& row = SATASSDEndurance[first + i];
        const _SSD_ENDURANCE& again = SATASSDEndurance[first + 4 + i];
        EXPECT_EQ(row.m_Model, twice[i]);
        EXPECT_EQ(again.m_Model, twice[i]);
        EXPECT_EQ(again.m_EnduranceTB, row.m_EnduranceTB);
        EXPECT_EQ(Find(twice[i]), &row);
    }
}

struct Telling {
    const char* m_Model;
    std::uint64_t m_EnduranceTB;
};

template <class Table>
void ExpectTelling(const Table& table, std::initializer_list<Telling> rows) {
    for (const Telling& telling : rows) {
        bool isFound = false;
        for (const auto& row : table) {
            if (row.m_Model == telling.m_Model) {
                EXPECT_EQ(row.m_EnduranceTB, telling.m_EnduranceTB) << telling.m_Model;
                isFound = true;
            }
        }
        EXPECT_TRUE(isFound) << telling.m_Model;
    }
}

TEST(SSDEnduranceLists, TellingRowsHaveTheirRatings) {
    ExpectTelling(SATASSDEndurance, {{"SSDSC2BB120G4C", 70},
                                     {"SSDSC2BA800G3C", 14600},
                                     {"SSDSC2BB240G7C", 600},
                                     {"SSDPEDMD020T4C", 36500},
                                     {"SSDSCKJB150G7", 412},
                                     {"SATADOM-ML 3ME", 3000},
                                     {"SATADOM-ML 3ME3", 3000},
                                     {"SATADOM-ML 3SE3", 60000},
                                     {"(S42) 3IE4", 20000},
                                     {"MZ7KM120HAFD-000FU", 7593},
                                     {"MZ7KM240HMHQ-000FU", 1540},
                                     {"MZ7LH240HAHQ-00005", 341},
                                     {"MZ7L33T8HBNA-00A03", 21024},
                                     {"MTFDDAV240TCB", 650},
                                     {"MTFDDAK7T6TDC", 8400},
                                     {"MTFDDAK3T8TGB", 24183}});
    ExpectTelling(SASSSDEndurance, {{"PX04SMB320", 57600},
                                    {"PX05SRB048", 855},
                                    {"KPM5VMUG1T60", 29200},
                                    {"SDLL1DLR400G5CF1", 2139},
                                    {"SDLL1HLR076T5CF1", 13870},
                                    {"WUSTR6440ASS204", 2190},
                                    {"WUSTR1515ASS204", 28032}});
    ExpectTelling(NVMeSSDEndurance, {{"SSDPEDMD800G4C", 14600},
                                     {"SSDPE2MD020T4C", 36500},
                                     {"SSDPF21Q400GB", 73000},
                                     {"SSDPECKE064T8", 26630},
                                     {"MZPLL1T6HAJQ-00005", 8760},
                                     {"MZWLL12THMLA-00005", 70080},
                                     {"MTFDKBA480TFR", 800},
                                     {"MTFDKBA960TFR", 1700},
                                     {"KCM61RUL960G", 5256},
                                     {"KCM61VUL12T8", 70080}});
}

TEST(SSDEnduranceLists, AreOneForTheWholeProcess) {
    EXPECT_EQ(Find(SATASSDEndurance[0].m_Model), &SATASSDEndurance[0]);
}

TEST(SSDEnduranceLists, TextsAreStrings) {
    const _SSD_ENDURANCE* row = Find("SSDSC2BB120G4C");
    ASSERT_NE(row, nullptr);
    const std::string* model = &row->m_Model;
    EXPECT_EQ(row->m_Vendor + " " + *model, "INTEL SSDSC2BB120G4C");
    EXPECT_STREQ(row->m_Vendor.c_str(), "INTEL");
    const std::string* sasVendor = &SASSSDEndurance[0].m_Vendor;
    EXPECT_EQ(*sasVendor, "TOSHIBA");
}

TEST(SSDEnduranceLists, RowsCanBeKept) {
    _SSD_ENDURANCE row;
    EXPECT_EQ(row.m_Vendor + row.m_Model, "");
    EXPECT_EQ(row.m_MatchLength + row.m_EnduranceTB + row.m_Reserved + row.m_GroupFlag, 0U);
    row = SATASSDEndurance[0];
    row.m_Vendor += " (kept)";
    EXPECT_EQ(row.m_Vendor, "INTEL (kept)");
    EXPECT_EQ(row.m_EnduranceTB, 70U);
    EXPECT_EQ(SATASSDEndurance[0].m_Vendor, "INTEL");
    _SAS_SSD_ENDURANCE sasRow;
    EXPECT_EQ(sasRow.m_EnduranceTB + sasRow.m_Reserved, 0U);
    sasRow = SASSSDEndurance[0];
    EXPECT_EQ(sasRow.m_Model, SASSSDEndurance[0].m_Model);
}

static_assert(std::is_same_v<std::string, decltype(_SSD_ENDURANCE::m_Vendor)>);
static_assert(std::is_same_v<std::string, decltype(_SSD_ENDURANCE::m_Model)>);
static_assert(std::is_same_v<std::string, decltype(_SAS_SSD_ENDURANCE::m_Vendor)>);
static_assert(std::is_same_v<std::string, decltype(_SAS_SSD_ENDURANCE::m_Model)>);
static_assert(std::is_same_v<std::uint32_t, decltype(_SSD_ENDURANCE::m_MatchLength)>);
static_assert(std::is_same_v<std::uint32_t, decltype(_SSD_ENDURANCE::m_EnduranceTB)>);
static_assert(std::is_same_v<std::uint32_t, decltype(_SSD_ENDURANCE::m_Reserved)>);
static_assert(std::is_same_v<std::uint32_t, decltype(_SSD_ENDURANCE::m_GroupFlag)>);
static_assert(std::is_same_v<std::uint64_t, decltype(_SAS_SSD_ENDURANCE::m_EnduranceTB)>);
static_assert(std::is_same_v<std::uint32_t, decltype(_SAS_SSD_ENDURANCE::m_Reserved)>);

TEST(SSDEnduranceLists, FieldsStandInOrder) {
    const _SSD_ENDURANCE row = {"V", "M", 1, 2, 3, 4};
    EXPECT_EQ(row.m_Vendor, "V");
    EXPECT_EQ(row.m_Model, "M");
    EXPECT_EQ(row.m_MatchLength, 1U);
    EXPECT_EQ(row.m_EnduranceTB, 2U);
    EXPECT_EQ(row.m_Reserved, 3U);
    EXPECT_EQ(row.m_GroupFlag, 4U);
    const _SAS_SSD_ENDURANCE sasRow = {"V", "M", 0xFFFFFFFFFF, 3};
    EXPECT_EQ(sasRow.m_Vendor, "V");
    EXPECT_EQ(sasRow.m_Model, "M");
    EXPECT_EQ(sasRow.m_EnduranceTB, 0xFFFFFFFFFFU);
    EXPECT_EQ(sasRow.m_Reserved, 3U);
}

// --- Look-up

std::string Lower(std::string text) {
    for (char& character : text) {
        character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    }
    return text;
}

/// The index of the first expected row that matches, or -1.
int ExpectedRow(const std::string& model) {
    for (std::size_t i = 0; i < std::size(EXPECTED_SATA); ++i) {
        const std::string rowModel = Lower(EXPECTED_SATA[i].m_Model);
        const std::size_t length = EXPECTED_SATA[i].m_MatchLength;
        const bool matches = length == 0 ? Lower(model) == rowModel
                                         : Lower(model).substr(0, length) == rowModel.substr(0, length);
        if (matches) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

void ExpectFound(const std::string& model) {
    const int index = ExpectedRow(model);
    EXPECT_EQ(Find(model), index < 0 ? nullptr : &SATASSDEndurance[static_cast<std::size_t>(index)])
        << '"' << model << '"';
}

TEST(FindLifeTimeProp, EveryRowIsFoundUnderItsModelInAnyCase) {
    for (const ExpectedEndurance& row : EXPECTED_SATA) {
        const std::string model = row.m_Model;
        ASSERT_GE(ExpectedRow(model), 0);
        ExpectFound(model);
        ExpectFound(Lower(model));
        std::string mixed = model;
        for (std::size_t i = 0; i < mixed.size(); i += 2) {
            mixed[i] = Lower(mixed)[i];
        }
        ExpectFound(mixed);
    }
}

TEST(FindLifeTimeProp, SuffixesCountOnlyWhereTheWholeNameIsCompared) {
    for (const ExpectedEndurance& row : EXPECTED_SATA) {
        for (const char* suffix : {" ", "x", "C", "-00005", " INTEL"}) {
            const std::string model = std::string(row.m_Model) + suffix;
            ExpectFound(model);
            if (row.m_MatchLength == 0 && std::string(suffix) != "C") {
                EXPECT_EQ(Find(model), nullptr) << model;
            }
        }
    }
}

TEST(FindLifeTimeProp, ModelsAreFoundWhenCutToTheMatchLengthAndNotWhenCutFurther) {
    for (const ExpectedEndurance& row : EXPECTED_SATA) {
        const std::string model = row.m_Model;
        for (std::size_t length = 0; length <= model.size(); ++length) {
            ExpectFound(model.substr(0, length));
        }
        if (row.m_MatchLength > 0) {
            EXPECT_NE(Find(model.substr(0, row.m_MatchLength)), nullptr) << model;
            EXPECT_EQ(Find(model.substr(0, row.m_MatchLength - 1)), nullptr) << model;
        } else {
            EXPECT_NE(Find(model), nullptr) << model;
        }
    }
}

TEST(FindLifeTimeProp, EveryComparedCharacterCounts) {
    for (const ExpectedEndurance& row : EXPECTED_SATA) {
        const std::string model = row.m_Model;
        for (std::size_t i = 0; i < model.size(); ++i) {
            std::string changed = model;
            changed[i] = '?';
            ExpectFound(changed);
        }
        ExpectFound(" " + model);
    }
}

TEST(FindLifeTimeProp, TheFirstRowWinsWhereSeveralMatch) {
    const _SSD_ENDURANCE* row = Find("SSDSC2BB240G7C");
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->m_Model, "SSDSC2BB240G7C");
    EXPECT_EQ(Find("SSDSC2BB240G7"), row);
    EXPECT_EQ(Find("SSDSC2BB240G7R"), row);
}

TEST(FindLifeTimeProp, AModelInLowerCaseWithASuffixIsFound) {
    const _SSD_ENDURANCE* row = Find("ssdsc2bb120g4c and more");
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->m_Model, "SSDSC2BB120G4C");
}

TEST(FindLifeTimeProp, InnoDiskNamesMatchWhole) {
    const _SSD_ENDURANCE* newer = Find("SATADOM-ML 3ME3");
    ASSERT_NE(newer, nullptr);
    EXPECT_EQ(newer->m_Model, "SATADOM-ML 3ME3");
    const _SSD_ENDURANCE* older = Find("SATADOM-ML 3ME");
    ASSERT_NE(older, nullptr);
    EXPECT_EQ(older->m_Model, "SATADOM-ML 3ME");
    EXPECT_EQ(Find("SATADOM-ML 3ME3X"), nullptr);
    EXPECT_EQ(Find("SATADOM-ML 3ME3 "), nullptr);
    EXPECT_EQ(Find("SATADOM-ML 3M"), nullptr);
}

TEST(FindLifeTimeProp, UnknownModelsAreNotFound) {
    for (const char* model :
         {"", " ", "SSD", "ST9160314AS", "SDLL1DLR400G5CF1", "MZWLL12THMLA-00005", "INTEL"}) {
        EXPECT_EQ(Find(model), nullptr) << model;
    }
    EXPECT_EQ(Find(std::string(1, '\0')), nullptr);
    EXPECT_EQ(Find(std::string(100000, 'S')), nullptr);
}

TEST(FindLifeTimeProp, AskingAgainGivesTheSameRow) {
    EXPECT_EQ(Find("SSDSC2BB120G4C"), Find("ssdsc2bb120g4x"));
}

TEST(FindLifeTimeProp, TheGlobalLocaleDoesNotMatter) {
    const GlobalLocale odd(OddLocale());
    EXPECT_EQ(Find("ssdsc2bb120g4c"), &SATASSDEndurance[0]);
    EXPECT_EQ(Find("abcdefgbb120g4c"), nullptr);
}

TEST(FindLifeTimeProp, FollowsTheRulesForRealDrives) {
    const std::vector<CapturedModel> models = CapturedModels();
    if (models.empty()) {
        GTEST_SKIP() << "no ata_models.tsv in " << CaptureFolder();
    }
    int found = 0;
    for (const CapturedModel& captured : models) {
        std::string vendor;
        std::string model;
        CPluginHelper::SplitSATAModelName(captured.m_Text, vendor, model);
        ExpectFound(model);
        ExpectFound(captured.m_Text);
        if (Find(model) != nullptr) {
            EXPECT_EQ(captured.m_Kind, "ssd") << captured.m_Text;
            ++found;
        }
    }
    EXPECT_GT(found, 0);
    std::cout << found << " of " << models.size() << " models are in the list" << std::endl;
}

}  // namespace
}  // namespace PI::Test
