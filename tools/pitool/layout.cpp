// SPDX-License-Identifier: Apache-2.0

#include "commands.h"

#include "input_files.h"
#include "print/json.h"
#include "print/output.h"
#include "print/text.h"

#include <CLI/CLI.hpp>

#include <pi/layout_reading.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace pitool {
namespace {

struct Options {
    std::string m_File;
    bool m_Json = false;
};

using Findings = std::vector<PI::CLayoutFinding>;

/// Units of sizes, each 1024 of the one before.
/// @{
struct Unit {
    PI::_UNITS m_Unit;
    const char* m_Name;
};
constexpr Unit UNITS[] = {
    {PI::Units::BYTES, "bytes"},         {PI::Units::KILOBYTES, "kibibytes"},
    {PI::Units::MEGABYTES, "mebibytes"}, {PI::Units::GIGABYTES, "gibibytes"},
    {PI::Units::TERABYTES, "tebibytes"}, {PI::Units::PETABYTES, "pebibytes"},
};
/// @}

/// @return past the end of UNITS for what is no unit
const Unit* FindUnit(PI::_UNITS unit) {
    return std::find_if(std::begin(UNITS), std::end(UNITS),
                        [unit](const Unit& known) { return known.m_Unit == unit; });
}

/// Empty for what is no unit.
std::string UnitName(PI::_UNITS unit) {
    const Unit* known = FindUnit(unit);
    return known != std::end(UNITS) ? known->m_Name : "";
}

/// A size in the largest unit that it fills, such as "931.51 gibibytes"; empty where the unit is none.
std::string ScaledSize(std::uint64_t size, PI::_UNITS unit) {
    const Unit* scale = FindUnit(unit);
    if (scale == std::end(UNITS)) {
        return "";
    }
    constexpr long double STEP = 1024;
    auto scaled = static_cast<long double>(size);
    for (; scale + 1 != std::end(UNITS) && scaled >= STEP; ++scale) {
        scaled /= STEP;
    }
    if (scale->m_Unit == PI::Units::BYTES || size == 0) {
        return std::to_string(size) + (size == 1 ? " byte" : " bytes");
    }
    char text[64];
    std::snprintf(text, sizeof text, "%.2Lf %s", scaled, scale->m_Name);
    return text;
}

/// A size as it is written, with the scaled one after it where the unit is known.
std::string SizeText(std::uint64_t size, PI::_UNITS unit) {
    const std::string scaled = ScaledSize(size, unit);
    return std::to_string(size) + (scaled.empty() ? "" : " (" + scaled + ")");
}

struct Branch {
    std::string m_Text;
    std::vector<Branch> m_Branches;
};

/// A text that goes on below its branch hangs behind the line that leads to the branches of that.
void Draw(const std::vector<Branch>& branches, const std::string& indent, const Screen& screen,
          std::string& tree) {
    for (const Branch& branch : branches) {
        const bool last = &branch == &branches.back();
        const std::string below = indent + (last ? "    " : "|   ");
        AddWrapped(indent + (last ? "`-- " : "|-- "), below + (branch.m_Branches.empty() ? "  " : "| "),
                   branch.m_Text, Style::PLAIN, screen, tree);
        Draw(branch.m_Branches, below, screen, tree);
    }
}

std::string DrawTree(const Branch& root) {
    const Screen screen = OutputScreen();
    std::string tree;
    AddWrapped("", root.m_Branches.empty() ? "" : "| ", root.m_Text, Style::HEADING, screen, tree);
    Draw(root.m_Branches, "", screen, tree);
    return tree;
}

std::string Count(std::size_t count, const char* one) {
    return std::to_string(count) + " " + one + (count == 1 ? "" : "s");
}

/// The size, and in which unit the numbers of the document are.
std::string HeadText(const char* kind, std::uint64_t size, PI::_UNITS unit) {
    const std::string name = UnitName(unit);
    return std::string(kind) + ", size " + SizeText(size, unit) + ", sizes in " +
           (!name.empty()                    ? name
            : unit == PI::Units::UNSPECIFIED ? "an unknown unit (unspecified)"
                                             : "an unknown unit (Units " + std::to_string(unit) + ")");
}

std::string DriveText(const PI::CDrive& drive, PI::_UNITS unit) {
    std::string text = "drive " + std::to_string(drive.m_ObjectID) + ", start " +
                       SizeText(drive.m_StartAddress, unit) + ", size " + SizeText(drive.m_UsedSize, unit);
    if (drive.m_LogicalDrive != 0) {
        text += ", logical drive " + std::to_string(drive.m_LogicalDrive);
    }
    if (drive.m_LogicalOwner != 0) {
        text += ", owner " + std::to_string(drive.m_LogicalOwner);
    }
    return text + (drive.m_IsConfigurable ? "" : ", not configurable");
}

void AddContainers(const std::vector<PI::CContainer>& containers, PI::_UNITS unit, Branch& root) {
    if (containers.empty()) {
        root.m_Branches.push_back({"containers: none", {}});
    }
    for (const PI::CContainer& container : containers) {
        const std::size_t number = static_cast<std::size_t>(&container - containers.data()) + 1;
        Branch branch{
            "container " + std::to_string(number) + ", " + Count(container.m_Drives.size(), "drive"), {}};
        for (const PI::CDrive& drive : container.m_Drives) {
            branch.m_Branches.push_back({DriveText(drive, unit), {}});
        }
        root.m_Branches.push_back(std::move(branch));
    }
}

void AddObjects(const std::string& title, const char* kind, const std::vector<std::uint64_t>& ids,
                Branch& root) {
    Branch branch{title + (ids.empty() ? ": none" : ""), {}};
    for (const std::uint64_t id : ids) {
        branch.m_Branches.push_back({kind + std::to_string(id), {}});
    }
    root.m_Branches.push_back(std::move(branch));
}

std::string LayoutText(const PI::CArray& array) {
    Branch root{HeadText("array", array.m_Size, array.m_Units), {}};
    AddContainers(array.m_Containers, array.m_Units, root);
    AddObjects("logical drives", "logical drive ", array.m_LogicalDrives, root);
    return DrawTree(root);
}

std::string LayoutText(const PI::CLogicalDrive& drive) {
    Branch root{HeadText("logical drive", drive.m_Size, drive.m_Units), {}};
    // The document does not say what a span's size counts, so it is as written.
    root.m_Branches.push_back(
        {Count(drive.m_SpanCount, "span") + " of size " + std::to_string(drive.m_SpanSize), {}});
    AddContainers(drive.m_Containers, drive.m_Units, root);
    AddObjects("global hot spares", "drive ", drive.m_GlobalHotSpares, root);
    AddObjects("dedicated hot spares", "drive ", drive.m_DedicatedHotSpares, root);
    AddObjects("associated logical drives", "logical drive ", drive.m_AssociatedLogicalDrives, root);
    return DrawTree(root);
}

void AddSize(const char* name, std::uint64_t size, PI::_UNITS unit, JsonWriter& json) {
    json.Name(name).BeginObject();
    json.Name("value").Number(size);
    json.Name("text").TextOrNull(ScaledSize(size, unit));
    json.EndObject();
}

void AddHead(const char* kind, std::uint64_t size, PI::_UNITS unit, JsonWriter& json) {
    json.Name("kind").Text(kind);
    AddSize("size", size, unit, json);
    json.Name("units").BeginObject();
    json.Name("value").Number(std::int64_t{unit});
    json.Name("name").TextOrNull(UnitName(unit));
    json.EndObject();
}

void AddContainers(const std::vector<PI::CContainer>& containers, PI::_UNITS unit, JsonWriter& json) {
    json.Name("containers").BeginList();
    for (const PI::CContainer& container : containers) {
        json.BeginObject();
        json.Name("drives").BeginList();
        for (const PI::CDrive& drive : container.m_Drives) {
            json.BeginObject();
            json.Name("object_id").Number(drive.m_ObjectID);
            AddSize("start", drive.m_StartAddress, unit, json);
            AddSize("size", drive.m_UsedSize, unit, json);
            json.Name("configurable").Bool(drive.m_IsConfigurable);
            json.Name("logical_drive").Number(drive.m_LogicalDrive);
            json.Name("logical_owner").Number(drive.m_LogicalOwner);
            json.EndObject();
        }
        json.EndList();
        json.EndObject();
    }
    json.EndList();
}

void AddObjects(const char* name, const std::vector<std::uint64_t>& ids, JsonWriter& json) {
    json.Name(name).BeginList();
    for (const std::uint64_t id : ids) {
        json.Number(id);
    }
    json.EndList();
}

void AddLayout(const PI::CArray& array, JsonWriter& json) {
    AddHead("array", array.m_Size, array.m_Units, json);
    AddContainers(array.m_Containers, array.m_Units, json);
    AddObjects("logical_drives", array.m_LogicalDrives, json);
}

void AddLayout(const PI::CLogicalDrive& drive, JsonWriter& json) {
    AddHead("logical drive", drive.m_Size, drive.m_Units, json);
    json.Name("span_count").Number(drive.m_SpanCount);
    json.Name("span_size").Number(drive.m_SpanSize);
    AddContainers(drive.m_Containers, drive.m_Units, json);
    AddObjects("global_hot_spares", drive.m_GlobalHotSpares, json);
    AddObjects("dedicated_hot_spares", drive.m_DedicatedHotSpares, json);
    AddObjects("associated_logical_drives", drive.m_AssociatedLogicalDrives, json);
}

std::string FindingText(const PI::CLayoutFinding& finding) {
    constexpr std::size_t LONGEST_NAME = 40;
    return finding.GetElement().substr(0, LONGEST_NAME) + ": " + finding.GetText() +
           (finding.GetAssumed().empty() ? "" : ", taken as " + finding.GetAssumed());
}

std::uint64_t LeftOut(const Findings& findings) {
    return findings.empty() ? 0 : findings.back().GetLeftOut();
}

template <class Record>
std::string LayoutJson(const std::string& file, const Record& record, const Findings& findings) {
    std::string text;
    JsonWriter json(text);
    json.BeginObject();
    json.Name("format").Text("pitool layout");
    json.Name("version").Number(std::int64_t{1});
    json.Name("file").Text(file);
    AddLayout(record, json);
    json.Name("warnings").BeginList();
    for (const PI::CLayoutFinding& finding : findings) {
        json.BeginObject();
        json.Name("line").Number(finding.GetLine());
        json.Name("column").Number(finding.GetColumn());
        json.Name("text").Text(FindingText(finding));
        json.Name("element").Text(finding.GetElement());
        json.Name("attribute").TextOrNull(finding.GetAttribute());
        json.Name("assumed").TextOrNull(finding.GetAssumed());
        json.EndObject();
    }
    json.EndList();
    json.Name("warnings_left_out").Number(LeftOut(findings));
    json.EndObject();
    return text + "\n";
}

std::string PlaceText(const std::string& file, const PI::CLayoutFinding& finding) {
    return file + ":" + std::to_string(finding.GetLine()) + ":" + std::to_string(finding.GetColumn());
}

void ReportFindings(const std::string& file, const Findings& findings) {
    for (const PI::CLayoutFinding& finding : findings) {
        ReportFileWarning(PlaceText(file, finding), FindingText(finding));
    }
    if (LeftOut(findings) != 0) {
        ReportFileWarning(file, std::to_string(LeftOut(findings)) + " further warnings");
    }
}

template <class Record>
ExitStatus Print(const Options& options, const Record& record, const Findings& findings) {
    ReportFindings(options.m_File, findings);
    return WriteOutput(options.m_Json ? LayoutJson(options.m_File, record, findings) : LayoutText(record))
               ? EXIT_DONE
               : EXIT_BAD_INPUT;
}

ExitStatus Run(const Options& options) {
    std::string text;
    std::string reason;
    if (!ReadInput(options.m_File, text, reason)) {
        ReportFileError(options.m_File, reason);
        return EXIT_BAD_INPUT;
    }
    PI::CArray array;
    PI::CLogicalDrive logicalDrive;
    Findings findings;
    switch (PI::ReadLayout(text.data(), text.size(), array, logicalDrive, findings)) {
        case PI::LayoutKind::ARRAY: return Print(options, array, findings);
        case PI::LayoutKind::LOGICAL_DRIVE: return Print(options, logicalDrive, findings);
        case PI::LayoutKind::NONE: break;
    }
    ReportFileError(PlaceText(options.m_File, findings.back()), findings.back().GetText());
    return EXIT_BAD_INPUT;
}

}  // namespace

void AddLayout(CLI::App& app, Action& action) {
    CLI::App* command = app.add_subcommand("layout", "Print the layout of a configuration document");
    const auto options = std::make_shared<Options>();
    command->add_option("FILE", options->m_File, "Configuration document; - is standard input")
        ->option_text(" ")
        ->required();
    command->add_flag("--json", options->m_Json, JSON_HELP);
    command->footer(std::string(EXAMPLES) +
                    "  pitool layout layouts/raid10-logical-drive.xml\n"
                    "  pitool layout layouts/careless-array.xml\n"
                    "  pitool layout --json layouts/raid1-array.xml");
    command->callback([&action, options] { action = [options] { return Run(*options); }; });
}

}  // namespace pitool
