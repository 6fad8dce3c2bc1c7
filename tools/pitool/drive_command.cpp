// SPDX-License-Identifier: Apache-2.0

#include "drive_command.h"

#include "drive_assessment.h"
#include "drive_events.h"
#include "drive_json.h"
#include "drive_object.h"
#include "drive_ranking.h"
#include "drive_sheet.h"
#include "drive_table.h"
#include "event_strings.h"
#include "event_text.h"
#include "input_files.h"
#include "output.h"
#include "wrapped_text.h"

#include <pi/exchange/smartctl.h>
#include <pi/plugin_helper.h>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace pitool {
namespace {

/// What is kept of a drive until all are read: only what will be printed.
struct ReportedDrive {
    DriveRank m_Rank;
    DriveRow m_Row;        ///< unless JSON is wanted
    std::string m_Json;    ///< if JSON is wanted
    std::string m_Events;  ///< if events are wanted, one line each; unless JSON is wanted
};

/// Collects the drives of a run.
class DriveCollection {
public:
    DriveCollection(bool json, bool events, const Screen& screen)
        : m_WantJson(json), m_WantEvents(events), m_Screen(screen) {}

    void Add(const DriveAssessment& drive) {
        ReportedDrive& reported = m_Drives.emplace_back();
        reported.m_Rank = RankDrive(drive);
        CountDrive(drive, m_Summary);
        const PI::CObject object = MakeDriveObject(m_Drives.size(), drive);
        std::vector<RenderedEvent> events;
        if (m_WantEvents) {
            for (PI::CEvent& event : RaiseDriveEvents(drive, object)) {
                event.m_SequenceNumber = ++m_EventNumber;
                events.push_back(PI::CPluginHelper::StringifyEventMessage(event));
            }
        }
        if (m_WantJson) {
            reported.m_Json = DriveJson(drive, m_WantEvents ? &events : nullptr);
            return;
        }
        for (const RenderedEvent& event : events) {
            reported.m_Events += EventLine(event, m_Screen);
        }
        reported.m_Row = MakeDriveRow(drive);
        if (m_Drives.size() == 1) {
            m_Sheet = DriveSheet(drive, m_Screen);
        }
    }

    void Refuse(const std::string& file, const std::string& reason) {
        ReportFileError(file, reason);
        m_Summary.m_Refused += 1;
        if (m_WantJson) {
            m_Errors.emplace_back(file, reason);
        }
    }

    bool AllRead() const { return m_Summary.m_Refused == 0; }

    /// Writes the report; false when it could not be written whole.
    bool Write() {
        std::stable_sort(
            m_Drives.begin(), m_Drives.end(),
            [](const ReportedDrive& left, const ReportedDrive& right) { return left.m_Rank < right.m_Rank; });
        if (m_WantJson) {
            return WriteDriveDocument(Pointers(&ReportedDrive::m_Json), m_Errors, m_Summary, WriteOutput);
        }
        if (m_Drives.size() <= 1) {
            return WriteOutput(m_Sheet + EventLines());
        }
        std::string report = DriveTable(Pointers(&ReportedDrive::m_Row), m_Screen);
        AddWrapped("", "", SummaryLine(m_Summary), Style::HEADING, m_Screen, report);
        report += EventLines();
        return WriteOutput(report);
    }

private:
    /// The events of all drives in the drives' order; empty when none are wanted, or there is no drive.
    std::string EventLines() const {
        if (!m_WantEvents || m_Drives.empty()) {
            return "";
        }
        std::string lines;
        for (const ReportedDrive& drive : m_Drives) {
            lines += drive.m_Events;
        }
        std::string report = "\n";
        AddWrapped("", "", lines.empty() ? "no events" : "events", Style::HEADING, m_Screen, report);
        return report + lines;
    }

    template <class Member>
    std::vector<const Member*> Pointers(Member ReportedDrive::*member) const {
        std::vector<const Member*> pointers;
        pointers.reserve(m_Drives.size());
        for (const ReportedDrive& drive : m_Drives) {
            pointers.push_back(&(drive.*member));
        }
        return pointers;
    }

    bool m_WantJson;
    bool m_WantEvents;
    Screen m_Screen;
    std::uint32_t m_EventNumber = 0;
    std::vector<ReportedDrive> m_Drives;
    std::vector<std::pair<std::string, std::string>> m_Errors;
    DriveSummary m_Summary;
    std::string m_Sheet;  ///< of the first drive
};

std::string RefusalText(const PI::CReportRefusal& refusal) {
    return refusal.GetLine() == 0 ? refusal.GetReason()
                                  : refusal.GetReason() + " (line " + std::to_string(refusal.GetLine()) +
                                        ", column " + std::to_string(refusal.GetColumn()) + ")";
}

}  // namespace

ExitStatus RunDrive(const DriveOptions& options) {
    if (options.m_Events && !LoadStrings(options.m_Strings)) {
        return EXIT_BAD_INPUT;
    }
    DriveCollection drives(options.m_Json, options.m_Events, OutputScreen());
    std::vector<std::string> files;
    std::string text;
    std::string reason;
    for (const std::string& argument : options.m_Files) {
        if (!ExpandArgument(argument, files, reason)) {
            drives.Refuse(argument, reason);
            continue;
        }
        for (const std::string& file : files) {
            if (!ReadInput(file, text, reason)) {
                drives.Refuse(file, reason);
                continue;
            }
            std::vector<PI::CDriveReport> reports;
            std::vector<PI::CReportRefusal> refusals;
            PI::ReadSmartctl(text.data(), text.size(), reports, refusals);
            for (const PI::CDriveReport& report : reports) {
                drives.Add(AssessDrive(file, report));
            }
            for (const PI::CReportRefusal& refusal : refusals) {
                drives.Refuse(file, RefusalText(refusal));
            }
        }
    }
    const bool written = drives.Write();
    return written && drives.AllRead() ? EXIT_DONE : EXIT_BAD_INPUT;
}

}  // namespace pitool
