// SPDX-License-Identifier: Apache-2.0
// What holds for every text that is said to be a report.
#pragma once

#include <pi/exchange/drive_properties.h>
#include <pi/vocabulary.h>

#include <string>

#include "check.h"

namespace PI::Fuzz {

inline void CheckDrive(const CDriveReport& drive) {
    CHECK(!drive.GetModel().empty() || !drive.GetSerialNumber().empty());
    CHECK(drive.GetMedium() == 0 || drive.GetMedium() == PropertyValue::SSD ||
          drive.GetMedium() == PropertyValue::HDD);
    CHECK(!drive.IsRPMReported() || (drive.GetMedium() == PropertyValue::HDD && drive.GetRPM() > 1024));
    CHECK(drive.IsVolume() == (*drive.GetVolumeKind() != '\0'));
    for (const CHealthFigure& figure : drive.GetHealth().GetFigures()) {
        CHECK(figure.HasValue() || figure.GetValue() == 0);
        CHECK(!figure.GetText().empty());
    }
    CHECK(!drive.GetHealth().GetReasons().empty());
    for (const CDriveProperty& property : DescribeDrive(drive, CHealthAssessment(drive.GetHealth()))) {
        CHECK((property.GetState() == FigureState::KNOWN) == property.GetReason().empty());
    }
    for (const std::string& note : drive.GetNotes()) {
        CHECK(!note.empty());
    }
}

inline void CheckReport(const std::string& text) {
    std::vector<CDriveReport> drives;
    std::vector<CReportRefusal> refusals;
    ReadSmartctl(text.data(), text.size(), drives, refusals);
    CHECK(!drives.empty() || !refusals.empty());
    for (const CDriveReport& drive : drives) {
        CheckDrive(drive);
    }
    for (const CReportRefusal& refusal : refusals) {
        CHECK(!refusal.GetReason().empty());
        CHECK((refusal.GetLine() == 0) == (refusal.GetColumn() == 0));
        CHECK(refusal.GetColumn() <= text.size() + 1);
    }
}

}  // namespace PI::Fuzz
