// SPDX-License-Identifier: Apache-2.0
// Reports read, and what the tests look at.
#pragma once

#include <gtest/gtest.h>
#include <pi/exchange/smartctl.h>

#include <string>
#include <vector>

namespace PI::Test {

struct ReadResult {
    std::vector<CDriveReport> m_Drives;
    std::vector<CReportRefusal> m_Refusals;
};

inline ReadResult ReadAll(const std::string& text) {
    ReadResult result;
    ReadSmartctl(text.data(), text.size(), result.m_Drives, result.m_Refusals);
    return result;
}

/// The one drive of a text.
inline CDriveReport ReadDrive(const std::string& text) {
    ReadResult result = ReadAll(text);
    for (const CReportRefusal& refusal : result.m_Refusals) {
        ADD_FAILURE() << "refused: " << refusal.GetReason();
    }
    if (result.m_Drives.size() != 1) {
        throw std::runtime_error(std::to_string(result.m_Drives.size()) + " drives were read");
    }
    return result.m_Drives[0];
}

/// Why a text gives no drive.
inline std::string ReasonOf(const std::string& text) {
    const ReadResult result = ReadAll(text);
    EXPECT_EQ(result.m_Drives.size(), 0U);
    EXPECT_EQ(result.m_Refusals.size(), 1U);
    return result.m_Refusals.empty() ? "" : result.m_Refusals[0].GetReason();
}

/// A figure as "value [source/number]", with a question mark when it is doubtful; "unknown".
inline std::string Figure(const CDriveReport& drive, _HEALTH_FIGURE which) {
    const CHealthFigure figure = drive.GetHealth().GetFigure(which);
    if (!figure.HasValue()) {
        return "unknown";
    }
    return std::to_string(figure.GetValue()) + (figure.GetState() == FigureState::DOUBTFUL ? "?" : "") +
           " [" + std::to_string(figure.GetSource()) + "/" + std::to_string(figure.GetSourceNumber()) + "]";
}

}  // namespace PI::Test
