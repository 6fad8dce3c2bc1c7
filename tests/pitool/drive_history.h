// SPDX-License-Identifier: Apache-2.0
// Reports of drives at different times, as files of a folder that lives as long as a test.
#pragma once

#include "print/json.h"
#include "program_runner.h"

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
    constexpr int ON_ONE_LINE = 3;
    JsonWriter json(ON_ONE_LINE);
    json.Value([&] {
        json.Name("device").Raw(R"({"name":"/dev/nvme0","protocol":"NVMe"})");
        json.Member("model_name", sample.m_Model);
        json.Member("serial_number", sample.m_Serial);
        json.Member("smart_status", [&] { json.Member("passed", sample.m_CriticalWarning == 0); });
        json.Member("nvme_smart_health_information_log", [&] {
            json.Member("critical_warning", sample.m_CriticalWarning);
            json.Member("available_spare", sample.m_Spare);
            json.Member("available_spare_threshold", 10);
            json.Member("percentage_used", sample.m_Wear);
            json.Member("power_on_hours", sample.m_Hours);
            json.Member("media_errors", sample.m_MediaErrors);
            json.Member("num_err_log_entries", sample.m_LoggedErrors);
        });
        if (sample.m_Date != 0) {
            json.Member("local_time", [&] { json.Member("time_t", sample.m_Date); });
        }
    });
    return json.Take() + "\n";
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
