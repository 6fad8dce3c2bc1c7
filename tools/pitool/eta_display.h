// SPDX-License-Identifier: Apache-2.0
/// @file
/// Progress as lines, or as one bar that is drawn again and again.
#pragma once

#include <cstddef>
#include <string>

namespace pitool {

/// A line such as "50 percent, 00:50:00 remaining".
std::string EtaLine(int percent, const std::string& estimate);

/// A bar with the same text, that fits a line of a terminal without wrapping.
///
/// @param percent 0 to 100
/// @param columns of the terminal; where the bar does not fit, it is left out, and at last the text is cut
std::string EtaBar(int percent, const std::string& estimate, std::size_t columns);

/// Writes what standard output, a terminal or not, is to show.
class EtaDisplay {
public:
    explicit EtaDisplay(bool terminal) : m_Terminal(terminal) {}

    /// @return false when it could not be written
    bool Show(int percent, const std::string& estimate);

    /// Leaves the bar standing, so that other text can follow.
    bool Finish();

private:
    bool m_Terminal;
    std::size_t m_Shown = 0;  ///< length of the bar that stands in the terminal's line
};

/// Whether standard output is a terminal.
bool OutputIsTerminal();

}  // namespace pitool
