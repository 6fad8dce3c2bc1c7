// SPDX-License-Identifier: Apache-2.0
// "pitool drive FILE|FOLDER..."

#include "commands.h"
#include "drive_detail.h"
#include "event.h"
#include "print/formats.h"
#include "reports.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdint>
#include <deque>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace pitool {
namespace {

struct Options {
    std::vector<std::string> m_Files;
    std::string m_Sort = "state";
    std::vector<std::string> m_States;   ///< empty: all
    std::optional<std::size_t> m_Limit;  ///< of rows; 0: none
    bool m_ByModel = false;
    bool m_Check = false;
    bool m_Events = false;
    std::string m_Strings;
    std::string m_Format = "text";
    bool m_Json = false;
    std::string m_Output;

    std::size_t Limit() const { return m_Limit.value_or(0) != 0 ? *m_Limit : SIZE_MAX; }
};

/// All that was read, ready to be printed.
struct Result {
    const Options& m_Options;
    const DriveList m_All;  ///< in the order read
    const Refusals m_Refusals;
    DriveList m_Shown;          ///< those asked for, in the order asked for
    std::size_t m_Further = 0;  ///< as many more would be shown without a limit
    const StateCounts m_Counts = StateCounts(m_All);
};

/// The events that drives raise.
Table EventTable(const DriveList& drives) {
    Table table({{"SEVERITY"}, {"EVENT"}, {"DESCRIPTION"}}, Table::LastColumn::WRAPPED);
    for (const DriveSummary* drive : drives) {
        for (const PI::CEvent& event : RaiseDriveEvents(*drive, 0)) {
            const RenderedEvent rendered = RenderEvent(event);
            for (const char* wanted : {"Severity", "EventID", "Description"}) {
                const auto pair = std::find_if(rendered.begin(), rendered.end(),
                                               [wanted](const auto& each) { return each.first == wanted; });
                table.Add(pair->second, SeverityStyle(pair->second));
            }
        }
    }
    return table;
}

CheckStatus StatusOf(const Result& result) {
    const auto isAny = [&result](PI::_DRIVE_STATE state) { return result.m_Counts.m_InState[state] != 0; };
    return isAny(PI::DriveState::FAILED) || isAny(PI::DriveState::REPLACE) ? CHECK_CRITICAL
           : isAny(PI::DriveState::LOOK)                                   ? CHECK_LOOK
           : isAny(PI::DriveState::UNKNOWN) || !result.m_Refusals.empty() || result.m_All.empty()
               ? CHECK_UNKNOWN
               : CHECK_GOOD;
}

/// The line that monitoring systems show, with the counts once more for their graphs.
std::string CheckLine(const Result& result) {
    std::string line = std::string("DRIVES ") + CHECK_WORDS[StatusOf(result)] + ": " +
                       result.m_Counts.Text(result.m_Refusals.size());
    const auto worst = std::min_element(
        result.m_All.begin(), result.m_All.end(),
        [](const DriveSummary* left, const DriveSummary* right) { return IsWorse(*left, *right); });
    if (worst != result.m_All.end() && (*worst)->GetState() != PI::DriveState::GOOD) {
        const DriveSummary& drive = **worst;
        line += "; " + PrintableText(drive.GetModel()) + (drive.GetModel().empty() ? "" : " ") +
                PrintableText(drive.GetSerial()) + ": " + PrintableText(drive.GetReason());
    }
    std::replace(line.begin(), line.end(), '|', '/');  // it divides the text from the figures
    const char* separator = " | ";
    for (const PI::_DRIVE_STATE state : STATES_WORST_FIRST) {
        line += separator + std::string(StateWord(state)) + "=" +
                std::to_string(result.m_Counts.m_InState[state]);
        separator = " ";
    }
    return line + "\n";
}

/// A list of the drives, or of their models.
Table ListOf(const Result& result, const Screen& screen) {
    const DriveList& drives = result.m_Shown;
    if (result.m_Options.m_ByModel) {
        return ModelTable(drives, result.m_Options.Limit());
    }
    const std::size_t rows = std::min(drives.size(), screen.m_Rows != 0 ? screen.m_Rows : SIZE_MAX);
    Table table = DriveTable(drives, rows);  // more than fit, and no need to make all
    table.SetFurther(drives.size() - rows + result.m_Further, "--limit 0 shows all");
    return table;
}

bool WriteText(const Result& result) {
    const Options& options = result.m_Options;
    if (result.m_All.empty() && !options.m_Check) {
        return true;
    }
    Screen screen = OutputScreen();
    std::string text;
    std::size_t taken = 0;  // of the height of a terminal
    if (options.m_Check) {
        text = CheckLine(result);
        taken = screen.m_Columns == 0 ? 1 : 1 + (DisplayWidth(text) - 2) / screen.m_Columns;
    }
    if (screen.m_Rows != 0) {  // each table has its share
        const std::size_t room = screen.m_Rows - std::min(screen.m_Rows, taken);
        screen.m_Rows = options.m_Limit ? 0 : std::max<std::size_t>(1, options.m_Events ? room / 2 : room);
    }
    if (result.m_All.size() == 1 && result.m_Shown.size() == 1 && !options.m_Check && !options.m_ByModel) {
        text = result.m_All.front()->GetDetail();
        screen.m_Rows = 0;
    } else {
        Table table = ListOf(result, screen);
        table.SetSummary(options.m_Check ? "" : result.m_Counts.Text(result.m_Refusals.size()));
        bool isWritten = WriteOutput(text);
        text = table.Text(screen, 0, [&isWritten](std::string_view piece) {
            isWritten = isWritten && WriteOutput(piece);  // the whole never is in memory
        });
        if (!isWritten) {
            return false;
        }
    }
    if (options.m_Events) {
        const std::string events = EventTable(result.m_Shown).Text(screen);
        text += events.empty() ? "\nno events\n" : "\n" + events;
    }
    return WriteOutput(text);
}

bool WriteJson(const Result& result) {
    std::size_t failing = 0;
    std::size_t worn = 0;
    std::size_t unknownLifetime = 0;
    for (const DriveSummary* drive : result.m_All) {
        failing += drive->IsFailing() ? 1 : 0;
        worn += drive->IsWorn() ? 1 : 0;
        unknownLifetime += drive->IsSolidState() && !drive->HasLifetime() ? 1 : 0;
    }
    bool isWritten = true;
    const std::string rest = JsonDocument("pitool drive", [&](JsonWriter& json) {
        json.Name("drives").List(result.m_Shown, [&](const DriveSummary* drive) {
            json.Raw("");  // what divides it from the one before
            isWritten = isWritten && WriteOutput(json.Take()) && WriteOutput(drive->GetDetail());
        });
        AddErrors(result.m_Refusals, json);
        json.Member("summary", [&] {
            json.Member("drives", result.m_All.size());
            json.Member("failing", failing);
            json.Member("worn", worn);
            json.Member("unknown_lifetime", unknownLifetime);
            json.Member("refused", result.m_Refusals.size());
            for (const PI::_DRIVE_STATE state : STATES_WORST_FIRST) {
                json.Member(StateWord(state), result.m_Counts.m_InState[state]);
            }
        });
    });
    return isWritten && WriteOutput(rest);
}

bool WriteCsv(const Result& result) {
    return WriteOutput(CsvText(result.m_Shown));
}

bool WritePrometheus(const Result& result) {
    return WriteOutput(PrometheusText(result.m_Shown, result.m_Refusals.size()));
}

bool WriteHtml(const Result& result) {
    return WriteOutput(HtmlPage(result.m_All, result.m_Shown, result.m_Refusals));
}

/// The forms of output, and what writes them: whether everything could be written.
constexpr std::pair<const char*, bool (*)(const Result& result)> FORMATS[] = {
    {"text", WriteText}, {"json", WriteJson}, {"csv", WriteCsv}, {"prometheus", WritePrometheus},
    {"html", WriteHtml},
};

/// What an output says of a drive beyond its summary, as long as its report is there.
/// @param number of the drive, from 1
/// @param events in and out: as many were raised
std::string DetailOf(const Options& options, const DriveSummary& drive, const PI::CDriveReport& report,
                     const PI::CHealthAssessment& health, std::size_t number, std::uint32_t& events) {
    if (options.m_Format == "json") {
        std::vector<RenderedEvent> rendered;
        if (options.m_Events) {
            for (PI::CEvent& event : RaiseDriveEvents(drive, number)) {
                event.m_SequenceNumber = ++events;
                rendered.push_back(RenderEvent(event));
            }
        }
        return DriveJson(drive, report, health, options.m_Events ? &rendered : nullptr);
    }
    if (options.m_Format == "html" &&
        (number <= HTML_SHEETS_OF_ALL || drive.GetState() != PI::DriveState::GOOD)) {
        return SheetTable(drive, report, health).Html();
    }
    std::string sheet;
    if (options.m_Format == "text" && number == 1) {
        constexpr std::size_t INDENT = 2;
        const Screen screen = OutputScreen();
        AddWrapped("", "", PrintableText(drive.GetFile()), Style::HEADING, screen, sheet);
        sheet += SheetTable(drive, report, health).Text(screen, INDENT);
    }
    return sheet;
}

/// Chooses and orders the drives to show.
DriveList Select(const DriveList& all, const Options& options) {
    DriveList shown;
    const bool leavesOutGood = options.m_Check && options.m_Format == "text" && !options.m_ByModel;
    const std::vector<std::string>& states = options.m_States;
    std::copy_if(all.begin(), all.end(), std::back_inserter(shown), [&](const DriveSummary* drive) {
        return states.empty() ? !leavesOutGood || drive->GetState() != PI::DriveState::GOOD
                              : std::count(states.begin(), states.end(), StateWord(drive->GetState())) != 0;
    });
    SortDrives(options.m_Sort, shown);
    return shown;
}

ExitStatus RunDrive(const Options& options) {
    if ((options.m_Events && !LoadStrings(options.m_Strings)) ||
        (!options.m_Output.empty() && !OpenOutput(options.m_Output))) {
        return options.m_Check ? static_cast<ExitStatus>(CHECK_UNKNOWN) : EXIT_BAD_INPUT;
    }
    std::deque<DriveSummary> drives;  // grows without copies of those that it holds
    std::uint32_t events = 0;
    Refusals refusals =
        ReadReports(options.m_Files, [&](const std::string& file, const PI::CDriveReport& report) {
            const PI::CHealthAssessment health(report.GetHealth());
            DriveSummary& drive = drives.emplace_back(file, report, health);
            drive.SetDetail(DetailOf(options, drive, report, health, drives.size(), events));
        });
    DriveList all;
    for (const DriveSummary& drive : drives) {
        all.push_back(&drive);
    }
    DriveList shown = Select(all, options);
    Result result = {options, std::move(all), std::move(refusals), std::move(shown)};
    if (!options.m_ByModel) {
        result.m_Further = result.m_Shown.size() - std::min(result.m_Shown.size(), options.Limit());
        result.m_Shown.resize(result.m_Shown.size() - result.m_Further);
    }
    const auto* const format =
        std::find_if(std::begin(FORMATS), std::end(FORMATS),
                     [&options](const auto& each) { return options.m_Format == each.first; });
    // What was not read must not take the place of what was, before.
    const bool hasReport = options.m_Output.empty() || !result.m_All.empty() || result.m_Refusals.empty() ||
                           options.m_Check || options.m_Format == "json" || options.m_Format == "html";
    const bool isWritten = CloseOutput(hasReport && format->second(result));
    if (options.m_Check) {
        return static_cast<ExitStatus>(isWritten ? StatusOf(result) : CHECK_UNKNOWN);
    }
    return isWritten && result.m_Refusals.empty() ? EXIT_DONE : EXIT_BAD_INPUT;
}

/// What is wrong about options that go by themselves; empty: nothing.
std::string UsageError(const Options& options) {
    const bool isText = options.m_Format == "text";
    return std::count(options.m_Files.begin(), options.m_Files.end(), STANDARD_INPUT) > 1
               ? "standard input can be read only once"
           : options.m_ByModel && !isText ? "--by-model prints text, and no " + options.m_Format
           : options.m_Events && !isText && options.m_Format != "json"
               ? "--events are in text and json, and not in " + options.m_Format
               : "";
}

}  // namespace

void AddDrive(CLI::App& app, Action& action) {
    CLI::App* command = app.add_subcommand("drive", "Report on drives from the output of smartctl");
    const auto options = std::make_shared<Options>();
    std::vector<std::string> formats;
    std::vector<std::string> states;
    for (const auto& [name, write] : FORMATS) {
        formats.emplace_back(name);
    }
    for (const PI::_DRIVE_STATE state : STATES_WORST_FIRST) {
        states.emplace_back(StateWord(state));
    }
    command
        ->add_option("FILE", options->m_Files,
                     "File, or folder of .json, .txt and .gz files; - is\nstandard input")
        ->option_text("...")
        ->required();
    CLI::Option* sort =
        command->add_option("--sort", options->m_Sort, "By another column, such as wear (state)")
            ->option_text("KEY")
            ->check(CLI::IsMember(SortKeys()).description(""));
    command->add_option("--state", options->m_States, "Only failed, replace, look, unknown or good drives")
        ->option_text("STATE,...")
        ->allow_extra_args(false)
        ->delimiter(',')
        ->check(CLI::IsMember(states).description(""));
    command->add_option("--limit", options->m_Limit, "Show N drives at most; 0: all")
        ->option_text("N")
        ->transform(WholeNumber<std::size_t>());
    command->add_flag("--by-model", options->m_ByModel, "Show one line for each model")->excludes(sort);
    CLI::Option* events =
        command->add_flag("--events", options->m_Events, "Show the events that the drives raise");
    command->add_option("--strings", options->m_Strings, STRINGS_HELP)->option_text("FILE")->needs(events);
    CLI::Option* format =
        command->add_option("--format", options->m_Format, "text, json, csv, prometheus or html (text)")
            ->option_text("FORMAT")
            ->check(CLI::IsMember(formats).description(""));
    command->add_flag("--json", options->m_Json, "The same as --format json");
    command
        ->add_option("--output", options->m_Output,
                     "Write to this file, replaced when all is written;\n- is standard output")
        ->option_text("FILE")
        ->check([](const std::string& file) { return file.empty() ? "a name is needed" : ""; });
    command->add_flag("--check", options->m_Check, "Exit as monitoring plug-ins do: 0, 1, 2 or 3");
    command->footer(std::string(EXAMPLES) +
                    "  pitool drive --events drives\n"
                    "  pitool drive --state failed,replace,look --sort age drives\n"
                    "  pitool drive - < drives/intel-nvme-ssd.json\n"
                    "  pitool drive --json drives/wd-disk.json");
    command->callback([&action, options, format] {
        if (options->m_Json && format->count() != 0 && options->m_Format != "json") {
            throw CLI::ValidationError("--json", "--format says " + options->m_Format);
        }
        options->m_Format = options->m_Json ? "json" : options->m_Format;
        options->m_Output = options->m_Output == "-" ? "" : options->m_Output;
        if (const std::string error = UsageError(*options); !error.empty()) {
            throw CLI::ValidationError(error);
        }
        action = [options] { return RunDrive(*options); };
    });
}

}  // namespace pitool
