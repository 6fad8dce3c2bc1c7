// SPDX-License-Identifier: Apache-2.0

#include <pi/config_file.h>

namespace PI {

CConfigFile::CConfigFile() = default;

void CConfigFile::SetFileName(const std::string&) {}

int CConfigFile::ReadKeyValue(int, int) {
    return 0;
}
int CConfigFile::ReadKeyValue(const std::string&) {
    return 0;
}
int CConfigFile::ReadSectionKeyValue(const std::string&, const std::string&, std::string&) {
    return 0;
}
int CConfigFile::ReadKeyValueList(std::vector<CConfigValue>&) {
    return 0;
}

int CConfigFile::WriteKeyValue(int, int) {
    return 0;
}
int CConfigFile::WriteKeyValue(const std::string&) {
    return 0;
}
int CConfigFile::WriteSectionKeyValue(const std::string&, const std::string&, const std::string&) {
    return 0;
}
int CConfigFile::WriteKeyValueList(const std::vector<CConfigValue>&) {
    return 0;
}

}  // namespace PI
