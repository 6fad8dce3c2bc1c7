// SPDX-License-Identifier: Apache-2.0

#include "drive_command.h"
#include "commands.h"

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
#include "print/output.h"
#include "reports.h"
#include "wrapped_text.h"

#include <CLI/CLI.hpp>

#include <memory>

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
                events.push_back(RenderEvent(event));
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
    DriveCounts m_Summary;
    std::string m_Sheet;  ///< of the first drive
};

}  // namespace

ExitStatus RunDrive(const DriveOptions& options) {
    if (std::count(options.m_Files.begin(), options.m_Files.end(), STANDARD_INPUT) > 1) {
        ReportError("standard input can be read only once; see pitool drive --help");
        return EXIT_BAD_USAGE;
    }
    if (options.m_Events && !LoadStrings(options.m_Strings)) {
        return EXIT_BAD_INPUT;
    }
    DriveCollection drives(options.m_Json, options.m_Events, OutputScreen());
    ReadReports(
        options.m_Files,
        [&drives](const std::string& file, const PI::CDriveReport& report) {
            drives.Add(AssessDrive(file, report));
        },
        [&drives](const std::string& file, const std::string& reason) { drives.Refuse(file, reason); });
    const bool written = drives.Write();
    return written && drives.AllRead() ? EXIT_DONE : EXIT_BAD_INPUT;
}

void AddDrive(CLI::App& app, Action& action) {
    CLI::App* command = app.add_subcommand("drive", "Report drives from what smartctl printed");
    const auto options = std::make_shared<DriveOptions>();
    command->add_option("FILE", options->m_Files, "File, or folder of .json files; - is standard input")
        ->option_text("...")
        ->required();
    CLI::Option* events =
        command->add_flag("--events", options->m_Events, "Show the events that the drives raise");
    command->add_option("--strings", options->m_Strings, STRINGS_HELP)->option_text("FILE")->needs(events);
    command->add_flag("--json", options->m_Json, JSON_HELP);
    command->footer(std::string(EXAMPLES) +
                    "  pitool drive drives/worn-intel-ssd.json\n"
                    "  pitool drive --events drives\n"
                    "  pitool drive - < drives/intel-nvme-ssd.json\n"
                    "  pitool drive --json drives/wd-disk.json");
    command->callback([&action, options] { action = [options] { return RunDrive(*options); }; });
}

}  // namespace pitool
