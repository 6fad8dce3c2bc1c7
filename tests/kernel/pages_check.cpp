// SPDX-License-Identifier: Apache-2.0
// Reads the raw pages that scripts/try-on-linux brought from a real kernel, and compares every figure with
// what smartctl says of the same drive, as JSON and as text. pages_check FOLDER
#include <pi/drive_health.h>
#include <pi/exchange/smartctl.h>
#include <pi/sense.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace PI;
namespace fs = std::filesystem;

std::string Read(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

struct PageName {
    const char* m_Name;  ///< of the file, between drive and ".bin"
    _HEALTH_PAGE m_Page;
};

constexpr PageName PAGE_NAMES[] = {
    {"health", HealthPage::NVME_HEALTH_LOG},           {"self_test_log", HealthPage::ATA_SELF_TEST_LOG},
    {"id_ctrl", HealthPage::NVME_IDENTIFY_CONTROLLER}, {"smart_data", HealthPage::ATA_SMART_DATA},
    {"thresholds", HealthPage::ATA_SMART_THRESHOLDS},  {"log_0d", HealthPage::SCSI_LOG_PAGE},
    {"log_0d_01", HealthPage::SCSI_LOG_PAGE},          {"log_2f", HealthPage::SCSI_LOG_PAGE},
};

int compared = 0;
int differing = 0;

void Compare(const std::string& what, const std::string& one, const std::string& other) {
    ++compared;
    if (one != other) {
        ++differing;
        std::printf("%s: %s, but %s\n", what.c_str(), one.c_str(), other.c_str());
    }
}

/// The pages of a drive, taken into what is known of it by its name.
CDriveHealth ReadPages(const fs::path& folder, const std::string& drive, const CDriveReport& report) {
    CDriveHealth health(report.GetProtocol(), report.GetModel());
    health.SetMedium(report.GetMedium());
    health.SetCapacity(report.GetCapacity());
    for (const PageName& name : PAGE_NAMES) {
        const fs::path file = folder / (drive + "." + name.m_Name + ".bin");
        if (!fs::exists(file)) {
            continue;
        }
        const std::string page = Read(file);
        const char* reason = health.Take(name.m_Page, page.data(), page.size());
        Compare(file.filename().string(), reason != nullptr ? reason : "taken", "taken");
    }
    return health;
}

/// Figures that both know, unless from two pages of the drive, which may differ; what only one of them knows
/// is no difference.
void CompareHealth(const std::string& drive, const CDriveHealth& pages, const CDriveHealth& report) {
    for (const CHealthFigure& figure : pages.GetFigures()) {
        const CHealthFigure other = report.GetFigure(figure.GetFigure());
        const bool isOtherPage =
            figure.GetSource() == other.GetSource() && figure.GetSourceNumber() != other.GetSourceNumber();
        if (figure.HasValue() && other.HasValue() && !isOtherPage) {
            Compare(drive + " " + HealthFigureToString(figure.GetFigure()),
                    std::to_string(figure.GetValue()) + " by " + figure.GetText(),
                    std::to_string(other.GetValue()) + " by " +
                        (figure.GetValue() == other.GetValue() ? figure.GetText() : other.GetText()));
        }
    }
}

bool ReadReport(const fs::path& file, std::vector<CDriveReport>& drives) {
    const std::string text = Read(file);
    std::vector<CReportRefusal> refusals;
    ReadSmartctl(text.data(), text.size(), drives, refusals);
    Compare(file.filename().string(), refusals.empty() ? "read" : refusals.front().GetReason(), "read");
    return !drives.empty();
}

/// Sense data of errors that the kernel's test drive was asked for: key, code, qualifier, and the block read.
struct SenseFile {
    const char* m_Name;
    int m_Key;
    int m_Code;
    int m_Qualifier;
    std::int64_t m_Block;  ///< -1: none
};

constexpr SenseFile SENSE_FILES[] = {
    {"medium_error.fixed", 0x3, 0x11, 0x00, 0x1234}, {"medium_error.descriptor", 0x3, 0x11, 0x00, -1},
    {"illegal_field.fixed", 0x5, 0x24, 0x00, -1},    {"illegal_field.descriptor", 0x5, 0x24, 0x00, -1},
    {"not_ready.fixed", 0x2, 0x04, 0x02, -1},        {"not_ready.descriptor", 0x2, 0x04, 0x02, -1},
};

void CompareSense(const fs::path& folder) {
    for (const SenseFile& file : SENSE_FILES) {
        const std::string bytes = Read(folder / ("sense." + std::string(file.m_Name) + ".bin"));
        const CSense sense = DecodeSense(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        const auto text = [](int key, int code, int qualifier, std::int64_t block) {
            return std::to_string(key) + "/" + std::to_string(code) + "/" + std::to_string(qualifier) +
                   ", block " + std::to_string(block);
        };
        const auto number = [](auto value) { return value ? static_cast<std::int64_t>(*value) : -1; };
        Compare(file.m_Name,
                text(static_cast<int>(number(sense.GetKey())), static_cast<int>(number(sense.GetCode())),
                     static_cast<int>(number(sense.GetQualifier())), number(sense.GetInformation())),
                text(file.m_Key, file.m_Code, file.m_Qualifier, file.m_Block));
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: pages_check FOLDER\n", stderr);
        return 2;
    }
    const fs::path folder = argv[1];
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        if (const std::size_t end = name.find(".smartctl.json"); end != std::string::npos) {
            names.insert(name.substr(0, end));
        }
    }
    for (const std::string& name : names) {
        std::vector<CDriveReport> json;
        std::vector<CDriveReport> text;
        if (ReadReport(folder / (name + ".smartctl.json"), json) &&
            ReadReport(folder / (name + ".smartctl.txt"), text)) {
            const CDriveHealth pages = ReadPages(folder, name, json.front());
            CompareHealth(name + ", pages against JSON,", pages, json.front().GetHealth());
            CompareHealth(name + ", JSON against text,", json.front().GetHealth(), text.front().GetHealth());
        }
    }
    CompareSense(folder);
    std::printf("%zu drives: %d fields compared, %d differ\n", names.size(), compared, differing);
    return differing == 0 && !names.empty() ? 0 : 1;
}
