// SPDX-License-Identifier: Apache-2.0
// The two forms of smartctl's reports.
#pragma once

#include <pi/exchange/smartctl.h>

#include <string>
#include <string_view>
#include <vector>

namespace PI {

struct SmartctlResults {
    std::vector<CDriveReport> m_Drives;
    std::vector<CReportRefusal> m_Refusals;
};

constexpr const char* NO_REPORT = "no report of smartctl";
constexpr const char* NO_IDENTITY =
    "a report without identity: neither model nor serial number, as with -H or -A alone";
constexpr const char* DEVICE_LIST = "a list of devices from --scan, which says nothing of them";

struct Place {
    std::uint64_t m_Line;
    std::uint64_t m_Column;  ///< in bytes
};

/// Lines and columns of places in a text, asked for in ascending order.
class PlaceCounter {
public:
    explicit PlaceCounter(std::string_view text) : m_Text(text) {}
    Place At(std::size_t offset);

private:
    std::string_view m_Text;
    std::size_t m_Offset = 0;
    std::size_t m_LineBegin = 0;
    std::uint64_t m_Line = 1;
};

constexpr std::string_view JSON_BLANKS = " \t\r\n";

/// Where a JSON document begins; npos when there is none.
/// @param from where the document before it ends; 0: there is none
std::size_t FindJson(std::string_view text, std::size_t from = 0);

void ReadSmartctlJson(std::string text, SmartctlResults& results);
void ReadSmartctlText(std::string_view given, SmartctlResults& results);

/// Why a report without identity gives no drive, from what smartctl printed; null when that does not tell.
const char* FindReason(std::string_view message);

}  // namespace PI
