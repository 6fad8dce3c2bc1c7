// SPDX-License-Identifier: Apache-2.0
// What a figure says, in one line, for tests.
#pragma once

#include <gtest/gtest.h>
#include <pi/drive_health.h>
#include <pi/vocabulary.h>

#include <string>

#include "drives/page_builder.h"

namespace PI::Test {

/// Such as "known 5: device statistics page 7".
inline std::string Told(const CDriveHealth& drive, _HEALTH_FIGURE kind) {
    const CHealthFigure figure = drive.GetFigure(kind);
    const char* const states[] = {"unknown", "known", "doubtful"};
    return states[figure.GetState()] + (figure.HasValue() ? " " + std::to_string(figure.GetValue()) : "") +
           ": " + figure.GetText();
}

/// What the drive says about the page: nothing when it takes it.
inline std::string Take(CDriveHealth& drive, _HEALTH_PAGE kind, const Page& page) {
    const char* reason = drive.Take(kind, page.data(), page.size());
    return reason != nullptr ? reason : "";
}

inline CDriveHealth Disk() {
    CDriveHealth drive(DriveProtocol::ATA, "WDC WD40EFRX-68N32N0");
    drive.SetMedium(PropertyValue::HDD);
    return drive;
}

/// A solid-state drive whose model no rule and no list knows.
inline CDriveHealth SolidState() {
    CDriveHealth drive(DriveProtocol::ATA, "NOBODY KNOWS IT 480");
    drive.SetMedium(PropertyValue::SSD);
    return drive;
}

/// Every reason with its state, such as "look at it: 1 pending sector".
inline std::string Reasons(const CDriveHealth& drive) {
    std::string text;
    for (const CHealthReason& reason : drive.GetReasons()) {
        text +=
            (text.empty() ? "" : "; ") + (DriveStateToString(reason.GetState()) + (": " + reason.GetText()));
    }
    return text;
}

}  // namespace PI::Test
