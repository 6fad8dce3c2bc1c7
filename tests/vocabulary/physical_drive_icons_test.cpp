// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <pi/plugin_helper.h>
#include <pi/vocabulary.h>

#include <climits>
#include <cstdint>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "vocabulary/expected_names.h"

namespace {

using PI::CPluginHelper;

constexpr int disk = PI::PropertyValue::HDD;
constexpr int ssd = PI::PropertyValue::SSD;
constexpr int running = PI::PropertyValue::ACTIVATED;
constexpr int stopped = PI::PropertyValue::STOPPED;
constexpr bool aura = true;
constexpr bool noAura = false;
constexpr bool foreign = true;
constexpr bool own = false;

struct Selection {
    std::uint32_t m_Key;
    int m_Icon;
    std::string m_FileName;
};

/// Key, icon and its file name, a row each. The key's bits: 24 to 31 class of the state, 12 to 15 medium
/// (1 disk, 2 SSD), 8 to 11 power (1 running, 2 stopped), 4 to 7 aura (1 with, 2 without), 0 to 3 owner
/// (1 foreign, 2 own).
std::vector<Selection> ReadSelections() {
    std::ifstream stream(std::string(EXPECTED_NAMES_DIR) + "/physical_drive_icons.tsv");
    std::vector<Selection> selections;
    for (std::string row; std::getline(stream, row);) {
        const std::size_t tab = row.rfind('\t');
        if (tab != 14 || row[8] != '\t') {
            throw std::runtime_error("bad row: " + row);
        }
        selections.push_back({static_cast<std::uint32_t>(std::stoul(row.substr(0, 8), nullptr, 16)),
                              std::stoi(row.substr(9, 5)), row.substr(tab + 1)});
    }
    return selections;
}

// All states that do not belong to class 1.
const std::map<std::string, std::uint32_t> stateClasses = {
    {"AVAILABLE_SMART", 2},
    {"OPERATIONAL", 3},
    {"OPERATIONAL_SMART", 4},
    {"UNCONFIGURED_FAILED", 5},
    {"FAILED", 6},
    {"FAILED_SMART", 7},
    {"REBUILDING", 8},
    {"REBUILD_PAUSED", 8},
    {"REBUILDING_SMART", 9},
    {"GLOBAL_HOTSPARE", 10},
    {"GLOBAL_HOTSPARE_SMART", 11},
    {"DEDICATED_HOTSPARE", 12},
    {"DEDICATED_HOTSPARE_SMART", 13},
    {"OFFLINE", 14},
    {"OFFLINE_SMART", 15},
    {"FAILED_MISSING", 16},
    {"COPY_BACK", 17},
    {"COPY_BACK_SMART", 18},
    {"MIGRATING", 19},
    {"MIGRATION_PAUSED", 19},
    {"MIGRATING_SMART", 20},
    {"REBUILD_FAILED", 21},
    {"REBUILD_FAILED_SMART", 22},
    {"SYSTEM", 23},
    {"SYSTEM_SMART", 24},
};

class GetPDStatusIcon : public testing::Test {
protected:
    std::uint32_t StateClass(int state) const {
        const auto name = m_Values.find(state);
        const auto found = name == m_Values.end() ? stateClasses.end() : stateClasses.find(name->second);
        return found == stateClasses.end() ? 1 : found->second;
    }

    const Selection* Find(int state, int medium, bool withAura, bool isForeign, int power) const {
        const std::uint32_t key = StateClass(state) << 24 | (medium == m_SSD ? 2u : 1u) << 12 |
                                  (power == m_Stopped ? 2u : 1u) << 8 | (withAura ? 1u : 2u) << 4 |
                                  (isForeign ? 1u : 2u);
        for (const Selection& selection : m_Selections) {
            if (selection.m_Key == key) {
                return &selection;
            }
        }
        return nullptr;
    }

    int Expected(int state, int medium, bool withAura, bool isForeign, int power) const {
        const Selection* found = Find(state, medium, withAura, isForeign, power);
        if (found != nullptr && found->m_Icon != 24054) {
            return found->m_Icon;
        }
        if (!withAura) {
            return isForeign ? 24082 : 24081;
        }
        return isForeign ? 24084 : 24083;
    }

    void ExpectAllFlags(int state, int medium, int power) const {
        for (const bool withAura : {false, true}) {
            for (const bool isForeign : {false, true}) {
                ASSERT_EQ(CPluginHelper::GetPDStatusIcon(state, medium, withAura, isForeign, power),
                          Expected(state, medium, withAura, isForeign, power))
                    << "state " << state << ", medium " << medium << ", aura " << withAura << ", foreign "
                    << isForeign << ", power " << power;
            }
        }
    }

    int Number(const std::string& name) const {
        for (const auto& [number, value] : m_Values) {
            if (value == name) {
                return number;
            }
        }
        throw std::runtime_error("no such value: " + name);
    }

    /// Every property value, the numbers around and between them, and the ends of the range.
    static std::vector<int> AllValues() {
        std::vector<int> values = {INT_MIN, -1, 0, 1, 2, 24, INT_MAX};
        for (int value = 39990; value <= 40680; ++value) {
            values.push_back(value);
        }
        return values;
    }

    const std::map<int, std::string> m_Values = PI::Test::ExpectedNames("property_values.tsv");
    const std::vector<Selection> m_Selections = ReadSelections();
    const int m_SSD = Number("SSD");
    const int m_Stopped = Number("STOPPED");
};

TEST_F(GetPDStatusIcon, EveryStateMediumPowerAndFlag) {
    ASSERT_EQ(m_Selections.size(), 220u);
    for (const int state : AllValues()) {
        for (const int medium : {disk, ssd, 0}) {
            for (const int power : {running, stopped, 0}) {
                ExpectAllFlags(state, medium, power);
            }
        }
    }
}

TEST_F(GetPDStatusIcon, EveryMedium) {
    for (const int medium : AllValues()) {
        for (const int power : {running, stopped}) {
            ExpectAllFlags(PI::PropertyValue::OPERATIONAL, medium, power);
            ExpectAllFlags(PI::PropertyValue::REBUILDING, medium, power);
        }
    }
}

TEST_F(GetPDStatusIcon, EveryPower) {
    for (const int power : AllValues()) {
        for (const int medium : {disk, ssd}) {
            ExpectAllFlags(PI::PropertyValue::OPERATIONAL, medium, power);
            ExpectAllFlags(PI::PropertyValue::REBUILDING, medium, power);
        }
    }
}

TEST_F(GetPDStatusIcon, EveryIconOfTheTableIsReached) {
    std::map<std::uint32_t, std::string> fileNames;
    for (const auto& row : m_Values) {
        for (const int medium : {disk, ssd}) {
            for (const int power : {running, stopped}) {
                for (const bool withAura : {false, true}) {
                    for (const bool isForeign : {false, true}) {
                        const Selection* found = Find(row.first, medium, withAura, isForeign, power);
                        if (found == nullptr) {
                            continue;
                        }
                        const int icon =
                            CPluginHelper::GetPDStatusIcon(row.first, medium, withAura, isForeign, power);
                        std::string fileName;
                        ASSERT_EQ(CPluginHelper::GetIconPath(icon, fileName), 0) << icon;
                        ASSERT_EQ(fileName, found->m_FileName) << row.second;
                        fileNames[found->m_Key] = fileName;
                    }
                }
            }
        }
    }
    EXPECT_EQ(fileNames.size(), 220u);
}

TEST_F(GetPDStatusIcon, TwentyFiveStatesHaveAClassOfTheirOwn) {
    std::size_t count = 0;
    for (const int state : AllValues()) {
        count += StateClass(state) != 1;
    }
    EXPECT_EQ(count, stateClasses.size());
    EXPECT_EQ(count, 25u);
}

TEST_F(GetPDStatusIcon, AvailableDriveIsLikeOneInAnyOtherState) {
    const int available = PI::PropertyValue::AVAILABLE;
    EXPECT_EQ(CPluginHelper::GetPDStatusIcon(available, disk, noAura, own, running), 24081);
    EXPECT_EQ(CPluginHelper::GetPDStatusIcon(available, ssd, aura, foreign, running), 24186);
    EXPECT_EQ(CPluginHelper::GetPDStatusIcon(-1, ssd, aura, foreign, running), 24186);
    EXPECT_EQ(CPluginHelper::GetPDStatusIcon(0, disk, aura, own, stopped), 24085);
}

TEST_F(GetPDStatusIcon, StoppedAvailableSmartSsdHasItsTwoIconsTheOtherWayRound) {
    std::string fileName;

    const int withAura =
        CPluginHelper::GetPDStatusIcon(PI::PropertyValue::AVAILABLE_SMART, ssd, aura, own, stopped);
    EXPECT_EQ(withAura, 24193);
    CPluginHelper::GetIconPath(withAura, fileName);
    EXPECT_EQ(fileName, "ssd_no_wr_ps.gif");

    const int withoutAura =
        CPluginHelper::GetPDStatusIcon(PI::PropertyValue::AVAILABLE_SMART, ssd, noAura, own, stopped);
    EXPECT_EQ(withoutAura, 24194);
    CPluginHelper::GetIconPath(withoutAura, fileName);
    EXPECT_EQ(fileName, "ssd_no_wr_ps_aura.gif");
}

TEST_F(GetPDStatusIcon, PausedWorkLooksLikeWorkGoingOn) {
    using namespace PI::PropertyValue;
    for (const int medium : {disk, ssd}) {
        for (const int power : {running, stopped}) {
            for (const bool withAura : {false, true}) {
                for (const bool isForeign : {false, true}) {
                    EXPECT_EQ(
                        CPluginHelper::GetPDStatusIcon(REBUILD_PAUSED, medium, withAura, isForeign, power),
                        CPluginHelper::GetPDStatusIcon(REBUILDING, medium, withAura, isForeign, power));
                    EXPECT_EQ(
                        CPluginHelper::GetPDStatusIcon(MIGRATION_PAUSED, medium, withAura, isForeign, power),
                        CPluginHelper::GetPDStatusIcon(MIGRATING, medium, withAura, isForeign, power));
                }
            }
        }
    }
}

TEST_F(GetPDStatusIcon, RebuildingSsd) {
    const int state = PI::PropertyValue::REBUILDING;
    EXPECT_EQ(CPluginHelper::GetPDStatusIcon(state, ssd, noAura, own, running), 24215);
    EXPECT_EQ(CPluginHelper::GetPDStatusIcon(state, ssd, aura, own, running), 24216);
    EXPECT_EQ(CPluginHelper::GetPDStatusIcon(state, ssd, noAura, foreign, stopped), 24082);
}

TEST_F(GetPDStatusIcon, WithoutAnIconOfItsOwnADriveGetsThePlainOneOfADisk) {
    const int state = PI::PropertyValue::COPY_BACK;
    for (const int medium : {disk, ssd}) {
        EXPECT_EQ(CPluginHelper::GetPDStatusIcon(state, medium, noAura, own, stopped), 24081);
        EXPECT_EQ(CPluginHelper::GetPDStatusIcon(state, medium, noAura, foreign, stopped), 24082);
        EXPECT_EQ(CPluginHelper::GetPDStatusIcon(state, medium, aura, own, stopped), 24083);
        EXPECT_EQ(CPluginHelper::GetPDStatusIcon(state, medium, aura, foreign, stopped), 24084);
        EXPECT_EQ(CPluginHelper::GetPDStatusIcon(state, medium, noAura, foreign, running), 24082);
        EXPECT_EQ(CPluginHelper::GetPDStatusIcon(state, medium, aura, foreign, running), 24084);
    }
}

TEST_F(GetPDStatusIcon, NoStoppedForeignDriveHasAnIconOfItsOwn) {
    for (const int state : AllValues()) {
        for (const int medium : {disk, ssd}) {
            ASSERT_EQ(CPluginHelper::GetPDStatusIcon(state, medium, noAura, foreign, stopped), 24082);
            ASSERT_EQ(CPluginHelper::GetPDStatusIcon(state, medium, aura, foreign, stopped), 24084);
        }
    }
}

TEST_F(GetPDStatusIcon, ActivatedIsLikeAnyOtherPowerButStopped) {
    const int state = PI::PropertyValue::OPERATIONAL;
    EXPECT_EQ(CPluginHelper::GetPDStatusIcon(state, disk, noAura, own, running), 24093);
    EXPECT_EQ(CPluginHelper::GetPDStatusIcon(state, disk, noAura, own, PI::PropertyValue::POWER_SAVE_STANDBY),
              24093);
    EXPECT_EQ(CPluginHelper::GetPDStatusIcon(state, disk, noAura, own, 0), 24093);
    EXPECT_EQ(CPluginHelper::GetPDStatusIcon(state, disk, noAura, own, stopped), 24094);
}

}  // namespace
