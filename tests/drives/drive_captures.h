// SPDX-License-Identifier: Apache-2.0
// Model texts of real drives, where the machine has them.
#pragma once

#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace PI::Test {

/// Folder of the captured data: the environment variable PI_CAPTURES, or the one beside the source tree.
inline std::string CaptureFolder() {
    const char* given = std::getenv("PI_CAPTURES");
    return given != nullptr ? given : PI_CAPTURES;
}

/// One captured model text.
struct CapturedModel {
    std::string m_Text;
    std::string m_Kind;  ///< "hdd", "ssd", "optical" or "virtual"
    std::string m_RPM;   ///< as the drive reported it; may be empty
};

/// The rows of ata_models.tsv; empty where the file is missing.
inline std::vector<CapturedModel> CapturedModels() {
    std::vector<CapturedModel> models;
    std::ifstream file(CaptureFolder() + "/ata_models.tsv");
    std::string line;
    std::getline(file, line);  // the column names
    while (std::getline(file, line)) {
        const std::size_t kind = line.find('\t');
        const std::size_t rpm = line.find('\t', kind + 1);
        if (kind != std::string::npos && rpm != std::string::npos) {
            models.push_back(
                {line.substr(0, kind), line.substr(kind + 1, rpm - kind - 1), line.substr(rpm + 1)});
        }
    }
    return models;
}

}  // namespace PI::Test
