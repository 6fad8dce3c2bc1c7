// SPDX-License-Identifier: Apache-2.0

#include "commands.h"

#include "reports.h"

#include <algorithm>
#include <map>
#include <utility>

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
    const DriveSummary* m_Old = nullptr;  ///< null: not in the old reports
    const DriveSummary* m_New = nullptr;  ///< null: not in the new ones
    std::string m_Text;                   ///< such as "good -> replace; reallocated sectors 0 -> 1040"
    CheckStatus m_Status = CHECK_GOOD;
    std::vector<PI::CHealthChange> m_Changes;

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

/// Says what changed in a drive that is in both.
void FindChanges(Finding& drive) {
    const PI::_DRIVE_STATE before = drive.m_Old->GetState();
    const PI::_DRIVE_STATE after = drive.m_New->GetState();
    drive.m_Text = before != after ? std::string(StateWord(before)) + " -> " + StateWord(after) : "";
    bool isWorse = PI::IsWorseState(before, after);
    drive.m_Changes = PI::FindHealthChanges(drive.m_Old->GetHealth(), drive.m_New->GetHealth());
    for (const PI::CHealthChange& change : drive.m_Changes) {
        isWorse = isWorse || change.IsWorse();
        drive.m_Text += (drive.m_Text.empty() ? "" : "; ") + change.GetText();
    }
    drive.m_Status = isWorse ? StatusOf(after) : CHECK_GOOD;
}

bool IsBefore(const Finding& left, const Finding& right) {
    if (left.m_Status != right.m_Status) {
        return left.m_Status > right.m_Status;
    }
    return IsWorse(left.Drive(), right.Drive()) ||
           (!IsWorse(right.Drive(), left.Drive()) && left.m_New != nullptr && right.m_New == nullptr);
}

/// What is in one of both only, where the other was not read whole, may be there all the same. Where nothing
/// was read of one, nothing is compared.
Findings Compare(const DriveReports& before, const DriveReports& after) {
    Findings all;
    std::map<std::pair<std::string_view, std::string_view>, Finding> drives;
    const auto take = [&](const DriveReports& side, const DriveSummary* Finding::*latest) {
        all.m_Errors.insert(all.m_Errors.end(), side.m_Errors.begin(), side.m_Errors.end());
        for (const DriveList& reports : side.m_Drives) {
            if (reports.back()->IsIdentified()) {
                drives[IdentityOf(*reports.back())].*latest = reports.back();
            } else {
                all.m_Unidentified += 1;
            }
        }
    };
    take(before, &Finding::m_Old);
    take(after, &Finding::m_New);
    if (before.m_Drives.empty() || after.m_Drives.empty()) {
        return all;
    }
    for (auto& [identity, drive] : drives) {
        if (drive.m_Old == nullptr) {
            const bool isNew = before.m_Errors.empty();
            (isNew ? all.m_New : all.m_NotRead) += 1;
            drive.m_Text = isNew ? "new" : "not read before";
            drive.m_Status =
                drive.m_New->GetState() > State::GOOD ? StatusOf(drive.m_New->GetState()) : CHECK_GOOD;
        } else if (drive.m_New == nullptr) {
            const bool isGone = after.m_Errors.empty();
            (isGone ? all.m_Gone : all.m_NotRead) += 1;
            drive.m_Text = isGone ? "gone" : "not read";
            drive.m_Status = isGone ? CHECK_LOOK : CHECK_GOOD;
        } else {
            FindChanges(drive);
            all.m_Compared += 1;
            all.m_Worse += drive.m_Status != CHECK_GOOD ? 1 : 0;
        }
        if (!drive.m_Text.empty()) {
            all.m_Drives.push_back(std::move(drive));
        }
    }
    for (const DriveSummary& drive : after.m_Reports) {
        if (drive.GetState() > State::GOOD && !drive.IsIdentified()) {
            all.m_Drives.push_back({nullptr, &drive, "without identity", StatusOf(drive.GetState()), {}});
        }
    }
    std::stable_sort(all.m_Drives.begin(), all.m_Drives.end(), IsBefore);
    return all;
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
            json.Name(name);
            if (drive == nullptr) {
                json.Raw("null");
                return;
            }
            json.Value([&] {
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
