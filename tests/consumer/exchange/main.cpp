// SPDX-License-Identifier: Apache-2.0
// Reads a report with the exchange library.

#include <pi/exchange/smartctl.h>

#include <iostream>

int main() {
    const std::string text = R"({"model_name": "CT250P2SSD8", "power_cycle_count": 8})";
    std::vector<PI::CDriveReport> drives;
    std::vector<PI::CReportRefusal> refusals;
    PI::ReadSmartctl(text.data(), text.size(), drives, refusals);
    for (const PI::CDriveReport& drive : drives) {
        std::cout << drive.GetVendor() << ' ' << drive.GetProduct() << ' '
                  << drive.GetHealth().GetFigure(PI::HealthFigure::POWER_CYCLES).GetValue() << '\n';
    }
}
