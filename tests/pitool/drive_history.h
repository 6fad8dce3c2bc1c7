// SPDX-License-Identifier: Apache-2.0
// Reports of drives at different times, as files of a folder that lives as long as a test.
#pragma once

#include "program_runner.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace pitool::test {

/// An NVMe drive.
struct Sample {
    std::string m_Serial = "S3Z8NB0K";
    std::uint64_t m_Hours = 1000;
    int m_Wear = 10;
    std::int64_t m_Date = 0;  ///< seconds since 1970; 0: the report tells none
    int m_MediaErrors = 0;
    int m_LoggedErrors = 0;
    int m_Spare = 100;
    int m_CriticalWarning = 0;
    std::string m_Model = "SAMPLE NVME 960";
};

inline std::string Report(const Sample& sample) {
    nlohmann::ordered_json report = {
        {"smartctl", {{"version", {7, 3}}}},
        {"device", {{"name", "/dev/nvme0"}, {"protocol", "NVMe"}}},
        {"model_name", sample.m_Model},
        {"serial_number", sample.m_Serial},
        {"smart_status", {{"passed", sample.m_CriticalWarning == 0}}},
        {"nvme_smart_health_information_log",
         {{"critical_warning", sample.m_CriticalWarning},
          {"available_spare", sample.m_Spare},
          {"available_spare_threshold", 10},
          {"percentage_used", sample.m_Wear},
          {"power_on_hours", sample.m_Hours},
          {"media_errors", sample.m_MediaErrors},
          {"num_err_log_entries", sample.m_LoggedErrors}}},
    };
    if (sample.m_Date != 0) {
        report["local_time"]["time_t"] = sample.m_Date;
    }
    return report.dump() + "\n";
}

class Folder {
public:
    Folder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "pitool-XXXXXX").string();
        m_Path = mkdtemp(pattern.data());
    }
    ~Folder() { std::filesystem::remove_all(m_Path); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    const std::string& Path() const { return m_Path; }

    /// @param file may be in a folder, which is made
    void Write(const std::string& file, const std::string& text) const {
        const std::filesystem::path path = std::filesystem::path(m_Path) / file;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << text;
    }

private:
    std::string m_Path;
};

}  // namespace pitool::test
