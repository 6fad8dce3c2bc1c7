// SPDX-License-Identifier: Apache-2.0

#include "commands.h"

#include "drive_identity.h"
#include "input_files.h"
#include "print/json.h"
#include "print/output.h"
#include "print/table.h"
#include "print/text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace pitool {
namespace {

namespace Figure = PI::HealthFigure;
namespace State = PI::DriveState;

/// How a figure gets worse.
enum class Worse { MORE, LESS, NEW_BITS, FASTER, NEVER };

// Figures that are compared, in the order shown.
constexpr std::pair<PI::_HEALTH_FIGURE, Worse> COMPARED[] = {
    {Figure::VERDICT, Worse::MORE},
    {Figure::CRITICAL_WARNING, Worse::NEW_BITS},
    {Figure::ATTRIBUTES_BELOW_THRESHOLD, Worse::MORE},
    {Figure::ATTRIBUTES_ONCE_BELOW, Worse::MORE},
    {Figure::PENDING_SECTORS, Worse::MORE},
    {Figure::UNCORRECTABLE_SECTORS, Worse::MORE},
    {Figure::MEDIA_ERRORS, Worse::MORE},
    {Figure::REALLOCATED_SECTORS, Worse::MORE},
    {Figure::FAILED_SELF_TESTS, Worse::MORE},
    {Figure::LOGGED_ERRORS, Worse::NEVER},  // drives log commands as well that they do not know
    {Figure::INTERFACE_ERRORS, Worse::MORE},
    {Figure::SPARE, Worse::LESS},
    {Figure::WEAR, Worse::FASTER},
};

struct Change {
    PI::_HEALTH_FIGURE m_Figure;
    std::int64_t m_Old;
    std::int64_t m_New;
    bool m_IsWorse;
};

/// A drive that is not as it was.
struct Finding {
    const DriveSummary* m_Old;  ///< null: it is new
    const DriveSummary* m_New;  ///< null: it is gone
    std::vector<Change> m_Changes;
    CheckStatus m_Status;  ///< CHECK_GOOD: nothing got worse

    const DriveSummary& Drive() const { return m_New != nullptr ? *m_New : *m_Old; }
};

struct Findings {
    std::vector<Finding> m_Drives;  ///< the worst first
    std::size_t m_Compared = 0;     ///< drives in both
    std::size_t m_Unidentified = 0;
    std::vector<std::pair<std::string, std::string>> m_Errors;
};

/// Whether wear has grown by more than a step, and more than twice as fast as in the drive's life until then
/// (judgement): that it grows is no news.
bool WearsFaster(const DriveSummary& before, const DriveSummary& after, std::int64_t growth) {
    constexpr double STEP = 1;
    constexpr double HALF_STEP = 0.5;
    constexpr double FASTER = 2;
    const SummaryFigure old = before.GetFigure(Figure::POWER_ON_HOURS);
    const SummaryFigure now = after.GetFigure(Figure::POWER_ON_HOURS);
    double expected = 0;
    if (old.m_Value > 0 && now.m_Value > old.m_Value) {
        const double pace = (static_cast<double>(before.GetFigure(Figure::WEAR).m_Value) + HALF_STEP) /
                            static_cast<double>(old.m_Value);
        expected = pace * static_cast<double>(now.m_Value - old.m_Value);
    }
    return static_cast<double>(growth) > FASTER * expected + STEP;
}

/// What a drive asks for that got worse, is new or is gone.
CheckStatus StatusOf(PI::_DRIVE_STATE state) {
    return state == State::REPLACE || state == State::FAILED ? CHECK_CRITICAL : CHECK_LOOK;
}

Finding Compare(const DriveSummary& before, const DriveSummary& after) {
    Finding finding = {&before, &after, {}, CHECK_GOOD};
    bool gotWorse = after.GetState() > std::max(before.GetState(), State::GOOD);
    for (const auto& [figure, worse] : COMPARED) {
        const SummaryFigure old = before.GetFigure(figure);
        const SummaryFigure now = after.GetFigure(figure);
        if (!old.HasValue() || !now.HasValue() || old.m_Value == now.m_Value) {
            continue;
        }
        bool isWorse = now.m_Value > old.m_Value;
        switch (worse) {
            case Worse::MORE: break;
            case Worse::LESS: isWorse = !isWorse; break;
            case Worse::NEW_BITS: isWorse = (now.m_Value & ~old.m_Value) != 0; break;
            case Worse::FASTER: isWorse = WearsFaster(before, after, now.m_Value - old.m_Value); break;
            case Worse::NEVER: isWorse = false; break;
        }
        finding.m_Changes.push_back({figure, old.m_Value, now.m_Value, isWorse});
        gotWorse = gotWorse || isWorse;
    }
    finding.m_Status = gotWorse ? StatusOf(after.GetState()) : CHECK_GOOD;
    return finding;
}

bool IsWorseFinding(const Finding& left, const Finding& right) {
    return left.m_Status != right.m_Status ? left.m_Status > right.m_Status
                                           : IsWorse(left.Drive(), right.Drive());
}

Findings Compare(const DriveReports& before, const DriveReports& after) {
    Findings findings;
    std::map<std::pair<std::string_view, std::string_view>, const DriveSummary*> old;
    for (const std::vector<DriveSummary>& reports : before.m_Drives) {
        const DriveSummary& drive = reports.back();
        if (IdentifiesDrive(drive.GetSerial())) {
            old[{drive.GetModel(), drive.GetSerial()}] = &drive;
        } else {
            findings.m_Unidentified += 1;
        }
    }
    for (const std::vector<DriveSummary>& reports : after.m_Drives) {
        const DriveSummary& drive = reports.back();
        const auto found = old.find({drive.GetModel(), drive.GetSerial()});
        if (!IdentifiesDrive(drive.GetSerial())) {
            findings.m_Unidentified += 1;
        } else if (found == old.end()) {
            const bool isBad = drive.GetState() > State::GOOD;
            findings.m_Drives.push_back(
                {nullptr, &drive, {}, isBad ? StatusOf(drive.GetState()) : CHECK_GOOD});
        } else {
            findings.m_Compared += 1;
            Finding finding = Compare(*found->second, drive);
            if (!finding.m_Changes.empty() || finding.m_Old->GetState() != drive.GetState()) {
                findings.m_Drives.push_back(std::move(finding));
            }
            old.erase(found);
        }
    }
    for (const auto& [identity, drive] : old) {
        findings.m_Drives.push_back({drive, nullptr, {}, CHECK_LOOK});
    }
    if (before.m_Drives.empty() || after.m_Drives.empty()) {
        findings.m_Drives.clear();  // where one side could not be read, nothing is gone or new
    }
    std::stable_sort(findings.m_Drives.begin(), findings.m_Drives.end(), IsWorseFinding);
    for (const DriveReports* side : {&before, &after}) {
        findings.m_Errors.insert(findings.m_Errors.end(), side->m_Errors.begin(), side->m_Errors.end());
    }
    return findings;
}

std::string ValueText(PI::_HEALTH_FIGURE figure, std::int64_t value) {
    return figure != Figure::VERDICT ? std::to_string(value)
           : value == 0              ? "passed"
           : value == 1              ? "failing"
                                     : "warning";
}

/// Such as "good -> replace; reallocated sectors 0 -> 1040; wear 12 -> 15 %".
std::string ChangesText(const Finding& finding) {
    if (finding.m_Old == nullptr || finding.m_New == nullptr) {
        return finding.m_Old == nullptr ? "new" : "gone";
    }
    std::string text;
    if (finding.m_Old->GetState() != finding.m_New->GetState()) {
        text =
            std::string(StateWord(finding.m_Old->GetState())) + " -> " + StateWord(finding.m_New->GetState());
    }
    for (const Change& change : finding.m_Changes) {
        std::string name = PI::HealthFigureToString(change.m_Figure);
        for (char& c : name) {
            c = c == '_' ? ' ' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
        text += (text.empty() ? "" : "; ") + name + " " + ValueText(change.m_Figure, change.m_Old) + " -> " +
                ValueText(change.m_Figure, change.m_New);
        text += change.m_Figure == Figure::WEAR || change.m_Figure == Figure::SPARE ? " %" : "";
    }
    return text;
}

std::string CompareTable(const Findings& findings, const Screen& screen) {
    Table table({{"STATE"}, {"MODEL", Align::LEFT, 1}, {"SERIAL"}, {"CHANGE"}}, Table::LastColumn::WRAPPED);
    for (const Finding& finding : findings.m_Drives) {
        const DriveSummary& drive = finding.Drive();
        const Style style = finding.m_Status == CHECK_CRITICAL ? Style::FAILING
                            : finding.m_Status == CHECK_LOOK   ? Style::WARNING
                                                               : Style::PLAIN;
        table.Add(finding.m_New != nullptr ? StateWord(drive.GetState()) : "gone", style);
        table.Add(PrintableText(drive.GetModel()));
        table.Add(PrintableText(drive.GetSerial()));
        table.Add(ChangesText(finding), style);
    }
    return findings.m_Drives.empty() ? "" : table.Text(screen);
}

struct Summary {
    std::size_t m_Worse = 0;  ///< of the drives in both
    std::size_t m_Gone = 0;
    std::size_t m_New = 0;
};

Summary Count(const Findings& findings) {
    Summary summary;
    for (const Finding& finding : findings.m_Drives) {
        std::size_t& count = finding.m_New == nullptr   ? summary.m_Gone
                             : finding.m_Old == nullptr ? summary.m_New
                                                        : summary.m_Worse;
        count += &count != &summary.m_Worse || finding.m_Status != CHECK_GOOD ? 1 : 0;
    }
    return summary;
}

/// What --check exits with. Nothing is known where no drive could be compared, or an input was refused.
CheckStatus StatusOf(const Findings& findings) {
    if (!findings.m_Drives.empty() && findings.m_Drives.front().m_Status != CHECK_GOOD) {
        return findings.m_Drives.front().m_Status;
    }
    return findings.m_Compared == 0 || !findings.m_Errors.empty() ? CHECK_UNKNOWN : CHECK_GOOD;
}

std::string SummaryText(const Findings& findings) {
    const Summary summary = Count(findings);
    const auto part = [](std::size_t count, const char* what) {
        return count == 0 ? "" : ", " + std::to_string(count) + what;
    };
    return std::to_string(findings.m_Compared) + (findings.m_Compared == 1 ? " drive" : " drives") +
           " compared, " + (summary.m_Worse == 0 ? "none" : std::to_string(summary.m_Worse)) + " got worse" +
           part(summary.m_Gone, " gone") + part(summary.m_New, " new") +
           part(findings.m_Unidentified, " without identity") + part(findings.m_Errors.size(), " refused");
}

/// The line that monitoring systems show, with the counts once more for their graphs.
std::string CheckLine(const Findings& findings) {
    constexpr const char* WORDS[] = {"OK", "WARNING", "CRITICAL", "UNKNOWN"};
    const Summary summary = Count(findings);
    return std::string("DRIVES ") + WORDS[StatusOf(findings)] + ": " + SummaryText(findings) +
           " | worse=" + std::to_string(summary.m_Worse) + " gone=" + std::to_string(summary.m_Gone) +
           " new=" + std::to_string(summary.m_New) + "\n";
}

void AddSide(JsonWriter& json, const char* name, const DriveSummary* drive) {
    json.Name(name);
    if (drive == nullptr) {
        json.Null();
        return;
    }
    json.BeginObject();
    json.Name("file").Text(drive->GetFile());
    json.Name("state").Text(PI::DriveStateToString(drive->GetState()));
    json.EndObject();
}

std::string CompareJson(const Findings& findings) {
    std::string text;
    JsonWriter json(text);
    json.BeginObject();
    json.Name("format").Text("pitool compare");
    json.Name("version").Number(std::int64_t{1});
    json.Name("drives").BeginList();
    for (const Finding& finding : findings.m_Drives) {
        json.BeginObject();
        json.Name("serial_number").TextOrNull(finding.Drive().GetSerial());
        json.Name("model").TextOrNull(finding.Drive().GetModel());
        AddSide(json, "old", finding.m_Old);
        AddSide(json, "new", finding.m_New);
        json.Name("worse").Bool(finding.m_Status != CHECK_GOOD);
        json.Name("changes").BeginList();
        for (const Change& change : finding.m_Changes) {
            json.BeginObject();
            json.Name("figure").Text(PI::HealthFigureToString(change.m_Figure));
            json.Name("old").Number(change.m_Old);
            json.Name("new").Number(change.m_New);
            json.Name("worse").Bool(change.m_IsWorse);
            json.EndObject();
        }
        json.EndList();
        json.EndObject();
    }
    json.EndList();
    AddErrors(findings.m_Errors, json);
    const Summary summary = Count(findings);
    json.Name("summary").BeginObject();
    json.Name("compared").Number(std::uint64_t{findings.m_Compared});
    json.Name("worse").Number(std::uint64_t{summary.m_Worse});
    json.Name("gone").Number(std::uint64_t{summary.m_Gone});
    json.Name("new").Number(std::uint64_t{summary.m_New});
    json.Name("unidentified").Number(std::uint64_t{findings.m_Unidentified});
    json.Name("refused").Number(std::uint64_t{findings.m_Errors.size()});
    json.EndObject();
    json.EndObject();
    return text + "\n";
}

struct CompareOptions {
    std::string m_Old;
    std::string m_New;
    bool m_Check = false;
    bool m_Json = false;
};

ExitStatus RunCompare(const CompareOptions& options) {
    if (options.m_Old == STANDARD_INPUT && options.m_New == STANDARD_INPUT) {
        ReportError("standard input can be read only once; see pitool compare --help");
        return options.m_Check ? static_cast<ExitStatus>(CHECK_UNKNOWN) : EXIT_BAD_USAGE;
    }
    const DriveReports before = ReadDrives({options.m_Old});
    const DriveReports after = ReadDrives({options.m_New});
    const Findings findings = Compare(before, after);
    const Screen screen = OutputScreen();
    std::string text;
    if (options.m_Json) {
        text = CompareJson(findings);
    } else if (options.m_Check) {
        text = CheckLine(findings) + CompareTable(findings, screen);
    } else if (!before.m_Drives.empty() && !after.m_Drives.empty()) {
        text = CompareTable(findings, screen);
        AddWrapped("", "", SummaryText(findings), Style::HEADING, screen, text);
    }
    const bool isWritten = WriteOutput(text);
    if (options.m_Check) {
        return static_cast<ExitStatus>(isWritten ? StatusOf(findings) : CHECK_UNKNOWN);
    }
    return isWritten && findings.m_Errors.empty() ? EXIT_DONE : EXIT_BAD_INPUT;
}

}  // namespace

void AddCompare(CLI::App& app, Action& action) {
    CLI::App* command = app.add_subcommand("compare", "Tell what changed between reports of drives");
    const auto options = std::make_shared<CompareOptions>();
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
    command->callback([&action, options] { action = [options] { return RunCompare(*options); }; });
}

}  // namespace pitool
