// SPDX-License-Identifier: Apache-2.0

#include "commands.h"

#include "input_files.h"
#include "reports.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pitool {
namespace {

namespace State = PI::DriveState;

struct Options {
    std::string m_Old;
    std::string m_New;
    bool m_Check = false;
    bool m_Json = false;
};

/// A drive that is not as it was.
struct Finding {
    const DriveSummary* m_Old;  ///< null: not in the old reports
    const DriveSummary* m_New;  ///< null: not in the new ones
    std::string m_Text;         ///< such as "good -> replace; reallocated sectors 0 -> 1040"
    CheckStatus m_Status = CHECK_GOOD;
    std::vector<PI::CHealthChange> m_Changes = {};

    const DriveSummary& Drive() const { return m_New != nullptr ? *m_New : *m_Old; }
};

struct Findings {
    std::vector<Finding> m_Drives;  ///< the worst first
    std::size_t m_Compared = 0;     ///< drives in both
    std::size_t m_Worse = 0;        ///< of these
    std::size_t m_Gone = 0;
    std::size_t m_New = 0;
    std::size_t m_NotRead = 0;  ///< in one of both only, where the other could not be read whole
    std::size_t m_Unidentified = 0;
    Refusals m_Errors;
};

/// What a drive asks for that got worse, is new or is gone.
CheckStatus StatusOf(PI::_DRIVE_STATE state) {
    return state == State::REPLACE || state == State::FAILED ? CHECK_CRITICAL : CHECK_LOOK;
}

Finding Compare(const DriveSummary& before, const DriveSummary& after) {
    Finding finding = {&before, &after, ""};
    if (before.GetState() != after.GetState()) {
        finding.m_Text = std::string(StateWord(before.GetState())) + " -> " + StateWord(after.GetState());
    }
    bool isWorse = PI::IsWorseState(before.GetState(), after.GetState());
    finding.m_Changes = PI::FindHealthChanges(before.GetHealth(), after.GetHealth());
    for (const PI::CHealthChange& change : finding.m_Changes) {
        isWorse = isWorse || change.IsWorse();
        finding.m_Text += (finding.m_Text.empty() ? "" : "; ") + change.GetText();
    }
    finding.m_Status = isWorse ? StatusOf(after.GetState()) : CHECK_GOOD;
    return finding;
}

using DrivesByIdentity = std::map<std::pair<std::string_view, std::string_view>, const DriveSummary*>;

/// The latest report of each drive that is identified.
DrivesByIdentity LatestReports(const DriveReports& reports) {
    DrivesByIdentity drives;
    for (const DriveList& drive : reports.m_Drives) {
        if (drive.back()->IsIdentified()) {
            drives[IdentityOf(*drive.back())] = drive.back();
        }
    }
    return drives;
}

/// What is in one of both only, where the other was not read whole, may be there all the same. Where nothing
/// was read of one, nothing is compared.
Findings Compare(const DriveReports& before, const DriveReports& after) {
    Findings findings;
    for (const DriveReports* side : {&before, &after}) {
        findings.m_Errors.insert(findings.m_Errors.end(), side->m_Errors.begin(), side->m_Errors.end());
    }
    const DrivesByIdentity old = LatestReports(before);
    const DrivesByIdentity now = LatestReports(after);
    findings.m_Unidentified = before.m_Drives.size() - old.size() + after.m_Drives.size() - now.size();
    if (before.m_Drives.empty() || after.m_Drives.empty()) {
        return findings;
    }
    for (const auto& [identity, drive] : now) {
        if (const auto found = old.find(identity); found != old.end()) {
            findings.m_Compared += 1;
            Finding finding = Compare(*found->second, *drive);
            findings.m_Worse += finding.m_Status != CHECK_GOOD ? 1 : 0;
            if (!finding.m_Text.empty()) {
                findings.m_Drives.push_back(std::move(finding));
            }
        } else {
            const bool isNew = before.m_Errors.empty();
            (isNew ? findings.m_New : findings.m_NotRead) += 1;
            findings.m_Drives.push_back(
                {nullptr, drive, isNew ? "new" : "not read before",
                 drive->GetState() > State::GOOD ? StatusOf(drive->GetState()) : CHECK_GOOD});
        }
    }
    for (const DriveSummary& drive : after.m_Reports) {
        if (drive.GetState() > State::GOOD && !drive.IsIdentified()) {
            findings.m_Drives.push_back({nullptr, &drive, "without identity", StatusOf(drive.GetState())});
        }
    }
    for (const auto& [identity, drive] : old) {
        if (now.count(identity) == 0) {
            const bool isGone = after.m_Errors.empty();
            (isGone ? findings.m_Gone : findings.m_NotRead) += 1;
            findings.m_Drives.push_back(
                {drive, nullptr, isGone ? "gone" : "not read", isGone ? CHECK_LOOK : CHECK_GOOD});
        }
    }
    std::stable_sort(findings.m_Drives.begin(), findings.m_Drives.end(),
                     [](const Finding& left, const Finding& right) {
                         return left.m_Status != right.m_Status ? left.m_Status > right.m_Status
                                                                : IsWorse(left.Drive(), right.Drive());
                     });
    return findings;
}

std::string CompareTable(const Findings& findings, std::string summary) {
    Table table({{"STATE"}, {"MODEL", Align::LEFT, 1}, {"SERIAL"}, {"CHANGE"}}, Table::LastColumn::WRAPPED);
    for (const Finding& finding : findings.m_Drives) {
        const DriveSummary& drive = finding.Drive();
        const Style style = finding.m_Status == CHECK_CRITICAL ? Style::FAILING
                            : finding.m_Status == CHECK_LOOK   ? Style::WARNING
                                                               : Style::PLAIN;
        table.Add(finding.m_New != nullptr ? StateWord(drive.GetState()) : finding.m_Text, style);
        table.Add(drive.GetModel());
        table.Add(drive.GetSerial());
        table.Add(finding.m_Text, style);
    }
    table.SetSummary(std::move(summary));
    return table.Text(OutputScreen());
}

/// What --check exits with. Nothing is known where no drive could be compared, or an input was refused.
CheckStatus StatusOf(const Findings& findings) {
    if (!findings.m_Drives.empty() && findings.m_Drives.front().m_Status != CHECK_GOOD) {
        return findings.m_Drives.front().m_Status;
    }
    return findings.m_Compared == 0 || !findings.m_Errors.empty() ? CHECK_UNKNOWN : CHECK_GOOD;
}

std::string SummaryText(const Findings& findings) {
    const auto part = [](std::size_t count, const char* what) {
        return count == 0 ? "" : ", " + std::to_string(count) + what;
    };
    return std::to_string(findings.m_Compared) + (findings.m_Compared == 1 ? " drive" : " drives") +
           " compared, " + (findings.m_Worse == 0 ? "none" : std::to_string(findings.m_Worse)) +
           " got worse" + part(findings.m_Gone, " gone") + part(findings.m_New, " new") +
           part(findings.m_NotRead, " not read") + part(findings.m_Unidentified, " without identity") +
           part(findings.m_Errors.size(), " refused");
}

/// The line that monitoring systems show, with the counts once more for their graphs.
std::string CheckLine(const Findings& findings) {
    return std::string("DRIVES ") + CHECK_WORDS[StatusOf(findings)] + ": " + SummaryText(findings) +
           " | worse=" + std::to_string(findings.m_Worse) + " gone=" + std::to_string(findings.m_Gone) +
           " new=" + std::to_string(findings.m_New) + "\n";
}

std::string CompareJson(const Findings& findings) {
    return JsonDocument("pitool compare", [&](JsonWriter& json) {
        const auto addSide = [&json](const char* name, const DriveSummary* drive) {
            if (drive == nullptr) {
                json.Name(name).Raw("null");
                return;
            }
            json.Member(name, [&] {
                json.Member("file", drive->GetFile());
                json.Member("state", PI::DriveStateToString(drive->GetState()));
            });
        };
        json.Objects("drives", findings.m_Drives, [&](const Finding& finding) {
            json.Member("serial_number", OrNull(finding.Drive().GetSerial()));
            json.Member("model", OrNull(finding.Drive().GetModel()));
            addSide("old", finding.m_Old);
            addSide("new", finding.m_New);
            json.Member("worse", finding.m_Status != CHECK_GOOD);
            json.Objects("changes", finding.m_Changes, [&](const PI::CHealthChange& change) {
                json.Member("figure", PI::HealthFigureToString(change.GetFigure()));
                json.Member("old", change.GetBefore());
                json.Member("new", change.GetAfter());
                json.Member("worse", change.IsWorse());
            });
        });
        AddErrors(findings.m_Errors, json);
        json.Member("summary", [&] {
            json.Member("compared", findings.m_Compared);
            json.Member("worse", findings.m_Worse);
            json.Member("gone", findings.m_Gone);
            json.Member("new", findings.m_New);
            json.Member("unidentified", findings.m_Unidentified);
            json.Member("refused", findings.m_Errors.size());
            json.Member("not_read", findings.m_NotRead);
        });
    });
}

ExitStatus Run(const Options& options) {
    if (options.m_Old == STANDARD_INPUT && options.m_New == STANDARD_INPUT) {
        ReportError("standard input can be read only once; see pitool compare --help");
        return options.m_Check ? static_cast<ExitStatus>(CHECK_UNKNOWN) : EXIT_BAD_USAGE;
    }
    const DriveReports before = ReadDrives({options.m_Old});
    const DriveReports after = ReadDrives({options.m_New});
    const Findings findings = Compare(before, after);
    const bool areRead = !before.m_Drives.empty() && !after.m_Drives.empty();
    const ExitStatus printed = Print(options.m_Json    ? CompareJson(findings)
                                     : options.m_Check ? CheckLine(findings) + CompareTable(findings, "")
                                     : areRead         ? CompareTable(findings, SummaryText(findings))
                                                       : "");
    if (options.m_Check) {
        return static_cast<ExitStatus>(printed == EXIT_DONE ? StatusOf(findings) : CHECK_UNKNOWN);
    }
    return findings.m_Errors.empty() ? printed : EXIT_BAD_INPUT;
}

}  // namespace

void AddCompare(CLI::App& app, Action& action) {
    CLI::App* command = app.add_subcommand("compare", "Show what changed between reports of drives");
    const auto options = std::make_shared<Options>();
    command->add_option("OLD", options->m_Old, "File or folder of reports; - is standard input")
        ->option_text(" ")
        ->required();
    command->add_option("NEW", options->m_New, "File or folder of later reports of the same drives")
        ->option_text(" ")
        ->required();
    command->add_flag("--check", options->m_Check, "Exit with 1 or 2 when something got worse");
    command->add_flag("--json", options->m_Json, JSON_HELP);
    command->footer(std::string(EXAMPLES) +
                    "  pitool compare history/2025.json history/2026.json\n"
                    "  pitool compare --json history/2025.json history/2026.json");
    command->callback([&action, options] { action = [options] { return Run(*options); }; });
}

}  // namespace pitool
