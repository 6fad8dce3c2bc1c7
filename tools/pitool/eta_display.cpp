// SPDX-License-Identifier: Apache-2.0

#include "eta_display.h"

#include "print/output.h"

#include <unistd.h>

#include <algorithm>

namespace pitool {

std::string EtaLine(int percent, const std::string& estimate) {
    return std::to_string(percent) + " percent, " + estimate;
}

std::string EtaBar(int percent, const std::string& estimate, std::size_t columns) {
    constexpr std::size_t LONGEST = 50;
    constexpr std::size_t SHORTEST = 10;
    constexpr std::size_t FRAME = 4;  // brackets, blank, and the last column, where terminals wrap
    constexpr std::size_t PERCENT_WIDTH = 3;

    std::string line = EtaLine(percent, estimate);
    line.insert(0, PERCENT_WIDTH - std::min(std::to_string(percent).size(), PERCENT_WIDTH), ' ');
    if (columns < line.size() + SHORTEST + FRAME) {
        return line.substr(0, columns - std::min<std::size_t>(columns, 1));
    }
    const std::size_t width = std::min(columns - line.size() - FRAME, LONGEST);
    const std::size_t filled = width * static_cast<std::size_t>(percent) / 100;
    return "[" + std::string(filled, '#') + std::string(width - filled, '-') + "] " + line;
}

bool EtaDisplay::Show(int percent, const std::string& estimate) {
    if (!m_Terminal) {
        return WriteOutput(EtaLine(percent, estimate) + "\n");
    }
    const std::size_t columns = OutputScreen().m_Columns;
    const std::string bar = EtaBar(percent, estimate, columns);
    const std::size_t covered = std::min(m_Shown, columns - 1);  // a terminal may have become narrower
    const std::size_t leftOver = covered - std::min(bar.size(), covered);
    m_Shown = bar.size();
    return WriteOutput("\r" + bar + std::string(leftOver, ' '));
}

bool EtaDisplay::Finish() {
    const bool standing = m_Shown != 0;
    m_Shown = 0;
    return !standing || WriteOutput("\n");
}

bool OutputIsTerminal() {
    return isatty(STDOUT_FILENO) == 1;
}

}  // namespace pitool
