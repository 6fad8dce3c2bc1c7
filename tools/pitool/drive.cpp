// SPDX-License-Identifier: Apache-2.0
// "pitool drive FILE|FOLDER..."

#include "commands.h"
#include "drive_events.h"
#include "drive_figures.h"
#include "drive_identity.h"
#include "drive_json.h"
#include "drive_table.h"
#include "event.h"
#include "input_files.h"
#include "print/csv.h"
#include "print/html.h"
#include "print/json.h"
#include "print/output.h"
#include "print/prometheus.h"
#include "print/table.h"
#include "print/text.h"
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
    std::vector<std::string> m_States;
    std::optional<std::size_t> m_Limit;  ///< 0: all
    bool m_ByModel = false;
    bool m_Check = false;
    bool m_Events = false;
    std::string m_Strings;
    std::string m_Format = "text";
    std::string m_Output;
};

/// All that was read, ready to be printed.
struct Result {
    const Options& m_Options;
    const Screen m_Screen;
    DriveList m_All;             ///< in the order read
    DriveList m_Shown;           ///< those asked for, in the order asked for
    std::size_t m_Matching = 0;  ///< as many would be shown without a limit
    StateCounts m_Counts;
    std::vector<std::pair<std::string, std::string>> m_Refusals;  ///< inputs, with the reason
    std::string m_Sheet;                                          ///< of the first drive
};

/// Long output is written in pieces of about so many bytes: the whole never is in memory.
constexpr std::size_t PIECE = 65536;

/// What a drive's output is made from while its report is there.
struct Source {
    const PI::CDriveReport& m_Report;
    const DecidedHealth& m_Health;
    const std::size_t m_Number;  ///< of the drive, from 1
    const bool m_WantsEvents;
    const Screen& m_Screen;
    std::vector<RenderedEvent> m_Events;
};

/// A form of output: what it keeps of each report while the others are read, and how it prints the drives.
struct Format {
    const char* m_Name;
    /// Null: the summaries are enough.
    std::string (*m_Detail)(const DriveSummary& drive, const Source& source);
    /// @return whether everything could be written
    bool (*m_Write)(const Result& result);
};

std::string SheetText(const DriveSummary& drive, const Source& source) {
    constexpr std::size_t INDENT = 2;
    Table table({{nullptr}, {nullptr}}, Table::LastColumn::WRAPPED);
    for (const SheetLine& line : SheetOf(drive, source.m_Report, source.m_Health)) {
        table.Add(line.m_Name);
        table.Add(line.m_Text, line.m_Style);
    }
    std::string text;
    AddWrapped("", "", PrintableText(drive.GetFile()), Style::HEADING, source.m_Screen, text);
    return text + table.Text(source.m_Screen, INDENT);
}

std::string EventLines(const DriveSummary& /*drive*/, const Source& source) {
    std::string lines;
    for (const RenderedEvent& event : source.m_Events) {
        lines += EventLine(event, source.m_Screen);
    }
    return lines;
}

std::string CountsText(const Result& result) {
    const std::size_t refused = result.m_Refusals.size();
    return result.m_Counts.Text() + (refused == 0   ? ""
                                     : refused == 1 ? "; 1 input refused"
                                                    : "; " + std::to_string(refused) + " inputs refused");
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
    constexpr const char* WORDS[] = {"OK", "WARNING", "CRITICAL", "UNKNOWN"};
    std::string line = std::string("DRIVES ") + WORDS[StatusOf(result)] + ": " + CountsText(result);
    const auto worst = std::min_element(
        result.m_All.begin(), result.m_All.end(),
        [](const DriveSummary* left, const DriveSummary* right) { return IsWorse(*left, *right); });
    if (worst != result.m_All.end() && (*worst)->GetState() != PI::DriveState::GOOD) {
        const DriveSummary& drive = **worst;
        line += "; " + PrintableText(drive.GetModel()) + " " + PrintableText(drive.GetSerial()) + ": " +
                PrintableText(drive.GetReason());
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

/// On a terminal, unless a number was asked for, as many as fit: the worst ones must not scroll away.
std::size_t RowsToShow(const Result& result) {
    constexpr std::size_t OTHER_LINES = 4;  // headings, what is left out, counts, prompt
    const std::size_t height = result.m_Options.m_Limit ? 0 : result.m_Screen.m_Rows;
    const std::size_t fitting = height == 0 ? SIZE_MAX : height > OTHER_LINES ? height - OTHER_LINES : 1;
    return std::min(fitting, result.m_Shown.size());
}

/// The drives in a table, and how many more there are.
std::string TableText(const Result& result) {
    if (result.m_Shown.empty()) {
        return "";
    }
    const std::size_t rows = RowsToShow(result);
    std::string text =
        DriveTable({result.m_Shown.begin(), result.m_Shown.begin() + static_cast<std::ptrdiff_t>(rows)},
                   result.m_Screen);
    if (rows < result.m_Matching) {
        AddStyled("... and " + std::to_string(result.m_Matching - rows) + " more; --limit 0 shows all",
                  Style::FAINT, result.m_Screen.m_Colors, text);
        text += '\n';
    }
    return text;
}

bool WriteText(const Result& result) {
    const Screen& screen = result.m_Screen;
    std::string text;
    if (result.m_Options.m_Check) {
        text = CheckLine(result) + TableText(result);
    } else if (result.m_All.empty()) {
        return true;
    } else if (result.m_Options.m_ByModel) {
        text = ModelTable(result.m_Shown, screen);
        AddWrapped("", "", CountsText(result), Style::HEADING, screen, text);
    } else if (result.m_All.size() == 1 && !result.m_Shown.empty()) {
        text = result.m_Sheet;
    } else {
        text = TableText(result);
        AddWrapped("", "", CountsText(result), Style::HEADING, screen, text);
    }
    if (result.m_Options.m_Events) {
        std::string lines;
        for (const DriveSummary* drive : result.m_Shown) {
            lines += drive->GetDetail();
        }
        text += '\n';
        AddWrapped("", "", lines.empty() ? "no events" : "events", Style::HEADING, screen, text);
        text += lines;
    }
    return WriteOutput(text);
}

std::string JsonDetail(const DriveSummary& drive, const Source& source) {
    return DriveJson(drive, source.m_Report, source.m_Health,
                     source.m_WantsEvents ? &source.m_Events : nullptr);
}

bool WriteJson(const Result& result) {
    std::string text;
    JsonWriter json(text);
    json.BeginObject();
    json.Name("format").Text("pitool drive");
    json.Name("version").Number(std::int64_t{1});
    json.Name("drives").BeginList();
    for (const DriveSummary* drive : result.m_Shown) {
        json.Raw(drive->GetDetail());
        if (text.size() > PIECE) {
            if (!WriteOutput(text)) {
                return false;
            }
            text.clear();
        }
    }
    json.EndList();
    AddErrors(result.m_Refusals, json);
    const auto count = [&result](bool (*isCounted)(const DriveSummary& drive)) {
        return static_cast<std::uint64_t>(
            std::count_if(result.m_All.begin(), result.m_All.end(),
                          [isCounted](const DriveSummary* drive) { return isCounted(*drive); }));
    };
    json.Name("summary").BeginObject();
    json.Name("drives").Number(std::uint64_t{result.m_All.size()});
    json.Name("failing").Number(count([](const DriveSummary& drive) { return drive.IsFailing(); }));
    json.Name("worn").Number(count([](const DriveSummary& drive) { return drive.IsWorn(); }));
    json.Name("unknown_lifetime").Number(count([](const DriveSummary& drive) {
        return drive.IsSolidState() && !drive.GetLifetime();
    }));
    json.Name("refused").Number(std::uint64_t{result.m_Refusals.size()});
    for (const PI::_DRIVE_STATE state : STATES_WORST_FIRST) {
        json.Name(StateWord(state)).Number(std::uint64_t{result.m_Counts.m_InState[state]});
    }
    json.EndObject();
    json.EndObject();
    return WriteOutput(text + "\n");
}

bool WriteCsv(const Result& result) {
    std::string text = CsvHeader();
    for (const DriveSummary* drive : result.m_Shown) {
        text += CsvLine(*drive);
        if (text.size() > PIECE) {
            if (!WriteOutput(text)) {
                return false;
            }
            text.clear();
        }
    }
    return WriteOutput(text);
}

bool WritePrometheus(const Result& result) {
    return WriteOutput(PrometheusText(result.m_Shown, result.m_Refusals.size()));
}

std::string HtmlDetail(const DriveSummary& drive, const Source& source) {
    return source.m_Number <= HTML_SHEETS_OF_ALL || drive.GetState() != PI::DriveState::GOOD
               ? HtmlSheet(source.m_Report, source.m_Health)
               : "";
}

bool WriteHtml(const Result& result) {
    return WriteOutput(HtmlText(result.m_Shown, result.m_Refusals));
}

constexpr Format FORMATS[] = {
    {"text", EventLines, WriteText},          {"json", JsonDetail, WriteJson}, {"csv", nullptr, WriteCsv},
    {"prometheus", nullptr, WritePrometheus}, {"html", HtmlDetail, WriteHtml},
};

/// Chooses and orders the drives to show.
DriveList Select(const DriveList& all, const Options& options) {
    DriveList shown;
    const bool leavesOutGood = options.m_Check && options.m_Format == "text";
    std::copy_if(all.begin(), all.end(), std::back_inserter(shown), [&](const DriveSummary* drive) {
        const bool isAsked = options.m_States.empty()
                                 ? !leavesOutGood || drive->GetState() != PI::DriveState::GOOD
                                 : std::count(options.m_States.begin(), options.m_States.end(),
                                              StateWord(drive->GetState())) != 0;
        return isAsked;
    });
    SortDrives(options.m_Sort, shown);
    return shown;
}

ExitStatus RunDrive(const Options& options) {
    const auto refuse = [&options](ExitStatus status) {
        return options.m_Check ? static_cast<ExitStatus>(CHECK_UNKNOWN) : status;
    };
    if (std::count(options.m_Files.begin(), options.m_Files.end(), STANDARD_INPUT) > 1) {
        ReportError("standard input can be read only once; see pitool drive --help");
        return refuse(EXIT_BAD_USAGE);
    }
    if ((options.m_Events && !LoadStrings(options.m_Strings)) ||
        (!options.m_Output.empty() && !OpenOutput(options.m_Output))) {
        return refuse(EXIT_BAD_INPUT);
    }
    const Format& format =
        *std::find_if(std::begin(FORMATS), std::end(FORMATS),
                      [&options](const Format& each) { return options.m_Format == each.m_Name; });
    Result result = {options, OutputScreen(), {}, {}, 0, {}, {}, {}};
    std::deque<DriveSummary> drives;  // grows without copies of those that it holds
    std::uint32_t eventNumber = 0;
    ReadReports(
        options.m_Files,
        [&](const std::string& file, const PI::CDriveReport& report) {
            const DecidedHealth health(report.GetHealth());
            DriveSummary& drive = drives.emplace_back(Summarize(file, report, health));
            result.m_Counts.Add(drive.GetState());
            Source source = {report, health, drives.size(), options.m_Events, result.m_Screen, {}};
            if (options.m_Events) {
                for (PI::CEvent& event : RaiseDriveEvents(drive, drives.size())) {
                    event.m_SequenceNumber = ++eventNumber;
                    source.m_Events.push_back(RenderEvent(event));
                }
            }
            if (format.m_Detail != nullptr) {
                drive.SetDetail(format.m_Detail(drive, source));
            }
            if (drives.size() == 1) {
                result.m_Sheet = SheetText(drive, source);
            }
        },
        [&result](const std::string& file, const std::string& reason) {
            result.m_Refusals.emplace_back(file, reason);
        });
    for (const DriveSummary& drive : drives) {
        result.m_All.push_back(&drive);
    }
    result.m_Shown = Select(result.m_All, options);
    result.m_Matching = result.m_Shown.size();
    if (options.m_Limit.value_or(0) != 0 && !options.m_ByModel) {
        result.m_Shown.resize(std::min(result.m_Matching, *options.m_Limit));
    }
    // What was not read must not take the place of what was, before.
    const bool hasReport = options.m_Output.empty() || !result.m_All.empty() || result.m_Refusals.empty() ||
                           options.m_Check || options.m_Format == "json" || options.m_Format == "html";
    const bool isWritten = CloseOutput(hasReport && format.m_Write(result));
    if (options.m_Check) {
        return static_cast<ExitStatus>(isWritten ? StatusOf(result) : CHECK_UNKNOWN);
    }
    return isWritten && result.m_Refusals.empty() ? EXIT_DONE : EXIT_BAD_INPUT;
}

std::vector<std::string> Names(const Format* begin, const Format* end) {
    std::vector<std::string> names;
    std::transform(begin, end, std::back_inserter(names), [](const Format& format) { return format.m_Name; });
    return names;
}

/// The words as the help lists them: "a, b or c".
std::string Choice(const std::vector<std::string>& words) {
    std::string text = words.front();
    for (std::size_t i = 1; i < words.size(); ++i) {
        text += (i + 1 == words.size() ? " or " : ", ") + words[i];
    }
    return text;
}

}  // namespace

void AddDrive(CLI::App& app, Action& action) {
    CLI::App* command = app.add_subcommand("drive", "Report drives from what smartctl printed");
    const auto options = std::make_shared<Options>();
    const auto isOneOf = [](const std::vector<std::string>& words) {
        return CLI::IsMember(words).description("");
    };
    const std::vector<std::string> formats = Names(std::begin(FORMATS), std::end(FORMATS));
    std::vector<std::string> states;
    std::transform(std::begin(STATES_WORST_FIRST), std::end(STATES_WORST_FIRST), std::back_inserter(states),
                   StateWord);

    command
        ->add_option("FILE", options->m_Files,
                     "File, or folder of .json, .txt and .gz files; - is\nstandard input")
        ->option_text("...")
        ->required();
    command->add_option("--sort", options->m_Sort, "By another column, such as wear (state)")
        ->option_text("KEY")
        ->check(isOneOf(SortKeys()));
    command->add_option("--state", options->m_States, "Only " + Choice(states) + " drives")
        ->option_text("STATE,...")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->check(isOneOf(states));
    command->add_option("--limit", options->m_Limit, "Show N drives at most; 0: all")
        ->option_text("N")
        ->check([](const std::string& text) {
            const bool isNumber = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
            return isNumber ? std::string() : Quoted(text) + " is no whole number from 0";
        });
    CLI::Option* byModel =
        command->add_flag("--by-model", options->m_ByModel, "Show a line a model")->option_text(" ");
    CLI::Option* events =
        command->add_flag("--events", options->m_Events, "Show the events that the drives raise");
    command->add_option("--strings", options->m_Strings, STRINGS_HELP)->option_text("FILE")->needs(events);
    CLI::Option* format = command->add_option("--format", options->m_Format, Choice(formats) + " (text)")
                              ->option_text("FORMAT")
                              ->check(isOneOf(formats))
                              ->excludes(byModel);
    command
        ->add_flag_callback(
            "--json", [options] { options->m_Format = "json"; }, "The same as --format json")
        ->option_text(" ")
        ->excludes(format)
        ->excludes(byModel);
    command
        ->add_option("--output", options->m_Output, "Write to this file, and replace it when all is written")
        ->option_text("FILE");
    command->add_flag("--check", options->m_Check, "Exit as monitoring plug-ins do: 0, 1, 2 or 3");
    command->footer(std::string(EXAMPLES) +
                    "  pitool drive --events drives\n"
                    "  pitool drive --state failed,replace,look --sort age drives\n"
                    "  pitool drive - < drives/intel-nvme-ssd.json\n"
                    "  pitool drive --json drives/wd-disk.json");
    command->callback([&action, options] { action = [options] { return RunDrive(*options); }; });
}

}  // namespace pitool
