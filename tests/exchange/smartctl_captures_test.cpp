// SPDX-License-Identifier: Apache-2.0
// Reports of real drives, where the machine has them: all are read, and these figures are what they say.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "exchange/read_report.h"

using namespace PI;
using namespace PI::Test;

namespace {

std::string CaptureFolder() {
    const char* given = std::getenv("PI_CAPTURES");
    return given != nullptr ? given : PI_CAPTURES;
}

std::string TextOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

struct Expected {
    const char* m_File;
    _HEALTH_FIGURE m_Figure;
    std::int64_t m_Value;
};

// Typed from the reports.
constexpr Expected EXPECTED[] = {
    {"smartctl/seagate_st1200mm0088.json", HealthFigure::TEMPERATURE, 31},
    {"smartctl/seagate_st1200mm0088.json", HealthFigure::TEMPERATURE_LIMIT, 60},
    {"smartctl/seagate_st1200mm0088.json", HealthFigure::POWER_ON_HOURS, 5675},
    {"smartctl/seagate_st1200mm0088.json", HealthFigure::BYTES_READ, 386568000000},
    {"smartctl/seagate_st1200mm0088.json", HealthFigure::BYTES_WRITTEN, 806827000000},
    {"smartctl/hitachi_h109060sesun600g.json", HealthFigure::TEMPERATURE, 27},
    {"smartctl/hitachi_h109060sesun600g.json", HealthFigure::TEMPERATURE_LIMIT, 85},
    {"smartctl/hitachi_h109060sesun600g.json", HealthFigure::POWER_ON_HOURS, 982},
    {"smartctl/hitachi_h109060sesun600g.json", HealthFigure::BYTES_READ, 111593179000000},
    {"smartctl_more/sc_smart-scsi.json", HealthFigure::REALLOCATED_SECTORS, 56},
    {"smartctl_more/sc_smart-scsi.json", HealthFigure::BYTES_READ, 176987332000000},
    {"smartctl_more/sc_smart-scsi.json", HealthFigure::BYTES_WRITTEN, 86472611000000},
    {"smartctl/samsung_mzwll3t2hajq-00005.json", HealthFigure::CRITICAL_WARNING, 16},
    {"smartctl/samsung_mzwll3t2hajq-00005.json", HealthFigure::BYTES_WRITTEN, 75549056000000},
    {"smartctl/samsung_mzwll3t2hajq-00005.json", HealthFigure::POWER_ON_HOURS, 18376},
    {"smartctl_more/sc_smart-nvme.json", HealthFigure::BYTES_WRITTEN, 3979996672000},
    {"smartctl_more/sc_smart-nvme.json", HealthFigure::UNSAFE_SHUTDOWNS, 43},
    {"smartctl_more/nvme-null-CT250P2SSD8-nvme0.json", HealthFigure::LOGGED_ERRORS, 1},
    {"smartctl_more/nvme-null-CT250P2SSD8-nvme0.json", HealthFigure::SPARE_THRESHOLD, 5},
    {"smartctl_more/bes_apple_nvme.json", HealthFigure::WEAR, 1},
    {"smartctl_more/bes_apple_nvme.json", HealthFigure::UNSAFE_SHUTDOWNS, 195},
    {"smartctl_more/best_smart_test_01.json", HealthFigure::TEMPERATURE, 22},
    {"smartctl/st500nm0011.json", HealthFigure::POWER_ON_HOURS, 76427},
    {"smartctl/st500nm0011.json", HealthFigure::POWER_CYCLES, 48},
    {"smartctl/st3200820as.json", HealthFigure::LOGGED_ERRORS, 98},
    {"smartctl/hitachi_hds721050dle630.json", HealthFigure::REALLOCATED_SECTORS, 1975},
    {"smartctl/hitachi_hds721050dle630.json", HealthFigure::LOGGED_ERRORS, 56},
    {"smartctl/hitachi_hds721050dle630.json", HealthFigure::VERDICT, 1},
    {"smartctl/hitachi_hds721050dle630.json", HealthFigure::ATTRIBUTES_BELOW_THRESHOLD, 1},
    {"smartctl/samsung_ssd_840_series.json", HealthFigure::HIGHEST_TEMPERATURE, 70},
    {"smartctl/samsung_ssd_840_series.json", HealthFigure::POWER_ON_HOURS, 19497},
    {"smartctl/toshiba_mg05aca800e.json", HealthFigure::LOGGED_ERRORS, 2},
    {"smartctl_text/micron_5100_mtfddak240tcc.txt", HealthFigure::POWER_ON_HOURS, 40243},
    {"smartctl_text/micron_5100_mtfddak240tcc.txt", HealthFigure::BYTES_WRITTEN, 3224867574904 * 512},
    {"smartctl_text/micron_5100_mtfddak240tcc.txt", HealthFigure::WEAR, 75},
    {"smartctl_text/micron_5100_mtfddak240tcc.txt", HealthFigure::TEMPERATURE, 23},
    {"smartctl_text/micron_5100_mtfddak240tcc.txt", HealthFigure::HIGHEST_TEMPERATURE, 44},
    {"smartctl_text/micron_5100_mtfddak240tcc.txt", HealthFigure::TEMPERATURE_LIMIT, 70},
    {"smartctl_text/micron_5100_mtfddak240tcc.txt", HealthFigure::FAILED_SELF_TESTS, 0},
    {"smartctl_text/intel_ssdsc2ba200g3t.txt", HealthFigure::LOGGED_ERRORS, 19},
    {"smartctl_text/samsung_mz7l37t6hbla-00a07.txt", HealthFigure::LOGGED_ERRORS, 66},
    {"smartctl_text/micron_1100_mtfddak512tbn.txt", HealthFigure::VERDICT, 1},
};

}  // namespace

TEST(SmartctlCaptures, FiguresAreWhatTheReportsSay) {
    if (!std::filesystem::exists(CaptureFolder())) {
        GTEST_SKIP() << CaptureFolder() << " is missing";
    }
    for (const Expected& row : EXPECTED) {
        SCOPED_TRACE(std::string(row.m_File) + " " + HealthFigureToString(row.m_Figure));
        const CHealthFigure figure =
            ReadDrive(TextOf(CaptureFolder() + "/" + row.m_File)).GetHealth().GetFigure(row.m_Figure);
        EXPECT_TRUE(figure.HasValue());
        EXPECT_EQ(figure.GetValue(), row.m_Value);
    }
}

TEST(SmartctlCaptures, NoReadableDriveIsRefused) {
    if (!std::filesystem::exists(CaptureFolder())) {
        GTEST_SKIP() << CaptureFolder() << " is missing";
    }
    std::vector<std::string> refused;
    for (const char* folder : {"smartctl", "smartctl_more", "smartctl_text"}) {
        for (const auto& file : std::filesystem::directory_iterator(CaptureFolder() + "/" + folder)) {
            const ReadResult result = ReadAll(TextOf(file.path()));
            EXPECT_EQ(result.m_Drives.size() + result.m_Refusals.size(), 1U) << file.path();
            if (result.m_Drives.empty()) {
                refused.push_back(file.path().filename());
            }
        }
    }
    std::sort(refused.begin(), refused.end());
    // Lists of devices, and reports without identity; the first two are of one collection.
    ASSERT_EQ(refused.size(), 8U);
    EXPECT_EQ(refused[0].substr(0, 4) + refused[1].substr(0, 4), "pls_pls_");
    refused.erase(refused.begin(), refused.begin() + 2);
    EXPECT_EQ(refused,
              (std::vector<std::string>{"sc_smart-pass.json", "sc_smart-sat.json",
                                        "sc_smartctl_scan_megaraid.json", "sc_smartctl_scan_nvme.json",
                                        "sc_smartctl_scan_simple.json", "tg_testcases_scan_include.json"}));
}
