// SPDX-License-Identifier: Apache-2.0

#include "commands.h"
#include "input_files.h"

#include <pi/layout_reading.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace pitool {
namespace {

struct Options {
    std::string m_File;
    bool m_Json = false;
};

using Findings = std::vector<PI::CLayoutFinding>;

/// What a document describes. An array is shown like a logical drive, without spans and spares.
struct Layout {
    PI::CLogicalDrive m_Record;
    bool m_IsArray;
};

/// A list of identifiers in a document.
struct List {
    std::string m_Title;
    const char* m_Kind;  ///< what they are of
    const std::vector<std::uint64_t>& m_IDs;
};

std::vector<List> ListsOf(const Layout& layout) {
    const PI::CLogicalDrive& record = layout.m_Record;
    if (layout.m_IsArray) {
        return {{"logical drives", "logical drive", record.m_AssociatedLogicalDrives}};
    }
    return {{"global hot spares", "drive", record.m_GlobalHotSpares},
            {"dedicated hot spares", "drive", record.m_DedicatedHotSpares},
            {"associated logical drives", "logical drive", record.m_AssociatedLogicalDrives}};
}

const char* KindOf(const Layout& layout) {
    return layout.m_IsArray ? "array" : "logical drive";
}

/// Each is 1024 of the one before; the last one is for unknown units.
constexpr std::pair<PI::_UNITS, const char*> UNITS[] = {
    {PI::Units::BYTES, "bytes"},         {PI::Units::KILOBYTES, "kibibytes"},
    {PI::Units::MEGABYTES, "mebibytes"}, {PI::Units::GIGABYTES, "gibibytes"},
    {PI::Units::TERABYTES, "tebibytes"}, {PI::Units::PETABYTES, "pebibytes"},
    {PI::Units::UNSPECIFIED, ""},
};

const auto* FindUnit(PI::_UNITS unit) {
    return std::find_if(std::begin(UNITS), std::end(UNITS) - 1,
                        [unit](const auto& known) { return known.first == unit; });
}

/// A size in the largest unit that it fills, such as "931.51 gibibytes"; empty where the unit is none.
std::string ScaledSize(std::uint64_t size, PI::_UNITS unit) {
    constexpr long double STEP = 1024;
    const auto* scale = FindUnit(unit);
    auto scaled = static_cast<long double>(size);
    for (; scaled >= STEP && scale < std::end(UNITS) - 2; ++scale) {
        scaled /= STEP;
    }
    if (scale->first == PI::Units::UNSPECIFIED) {
        return "";
    }
    if (scale->first == PI::Units::BYTES || size == 0) {
        return std::to_string(size) + (size == 1 ? " byte" : " bytes");
    }
    char text[64];
    std::snprintf(text, sizeof text, "%.2Lf %s", scaled, scale->second);
    return text;
}

/// A size as it is written, with the scaled one after it where the unit is known.
std::string SizeText(std::uint64_t size, PI::_UNITS unit) {
    const std::string scaled = ScaledSize(size, unit);
    return std::to_string(size) + (scaled.empty() ? "" : " (" + scaled + ")");
}

std::string Count(std::size_t count, const char* one) {
    return std::to_string(count) + " " + one + (count == 1 ? "" : "s");
}

std::string DriveText(const PI::CDrive& drive, PI::_UNITS unit) {
    const auto number = [](const char* name, std::uint64_t id) {
        return id == 0 ? "" : name + std::to_string(id);
    };
    return "drive " + std::to_string(drive.m_ObjectID) + ", start " + SizeText(drive.m_StartAddress, unit) +
           ", size " + SizeText(drive.m_UsedSize, unit) + number(", logical drive ", drive.m_LogicalDrive) +
           number(", owner ", drive.m_LogicalOwner) + (drive.m_IsConfigurable ? "" : ", not configurable");
}

std::string HeadText(const Layout& layout) {
    const PI::_UNITS unit = layout.m_Record.m_Units;
    const std::string name = FindUnit(unit)->second;
    return std::string(KindOf(layout)) + ", size " + SizeText(layout.m_Record.m_Size, unit) + ", sizes in " +
           (!name.empty()                    ? name
            : unit == PI::Units::UNSPECIFIED ? "an unknown unit (unspecified)"
                                             : "an unknown unit (Units " + std::to_string(unit) + ")");
}

/// The branches of the tree, each with the leaves on it.
std::vector<std::pair<std::string, std::vector<std::string>>> BranchesOf(const Layout& layout) {
    const PI::CLogicalDrive& record = layout.m_Record;
    std::vector<std::pair<std::string, std::vector<std::string>>> branches;
    if (!layout.m_IsArray) {  // the document does not say what a span's size counts
        branches.push_back(
            {Count(record.m_SpanCount, "span") + " of size " + std::to_string(record.m_SpanSize), {}});
    }
    if (record.m_Containers.empty()) {
        branches.push_back({"containers: none", {}});
    }
    for (const PI::CContainer& container : record.m_Containers) {
        const auto number = &container - record.m_Containers.data() + 1;
        auto& branch = branches.emplace_back();
        branch.first =
            "container " + std::to_string(number) + ", " + Count(container.m_Drives.size(), "drive");
        for (const PI::CDrive& drive : container.m_Drives) {
            branch.second.push_back(DriveText(drive, record.m_Units));
        }
    }
    for (const List& list : ListsOf(layout)) {
        auto& branch = branches.emplace_back();
        branch.first = list.m_Title + (list.m_IDs.empty() ? ": none" : "");
        for (const std::uint64_t id : list.m_IDs) {
            branch.second.push_back(std::string(list.m_Kind) + " " + std::to_string(id));
        }
    }
    return branches;
}

/// A text that goes on below its branch hangs behind the line that leads to the leaves of that.
std::string LayoutText(const Layout& layout) {
    const Screen screen = OutputScreen();
    std::string tree;
    const auto add = [&](const std::string& lead, const std::string& further, const std::string& text,
                         Style style = Style::PLAIN) {
        AddWrapped(lead, further, text, style, screen, tree);
    };
    add("", "| ", HeadText(layout), Style::HEADING);
    const auto branches = BranchesOf(layout);
    for (const auto& [text, leaves] : branches) {
        const bool isLast = &text == &branches.back().first;
        const std::string below = isLast ? "    " : "|   ";
        add(isLast ? "`-- " : "|-- ", below + (leaves.empty() ? "  " : "| "), text);
        for (const std::string& leaf : leaves) {
            const bool isLastLeaf = &leaf == &leaves.back();
            add(below + (isLastLeaf ? "`-- " : "|-- "), below + (isLastLeaf ? "      " : "|     "), leaf);
        }
    }
    return tree;
}

std::string FindingText(const PI::CLayoutFinding& finding) {
    constexpr std::size_t LONGEST_NAME = 40;
    return finding.GetElement().substr(0, LONGEST_NAME) + (finding.GetElement().empty() ? "" : ": ") +
           finding.GetText() + (finding.GetAssumed().empty() ? "" : ", read as " + finding.GetAssumed());
}

std::uint64_t LeftOut(const Findings& findings) {
    return findings.empty() ? 0 : findings.back().GetLeftOut();
}

std::string LayoutJson(const std::string& file, const Layout& layout, const Findings& findings) {
    const PI::CLogicalDrive& record = layout.m_Record;
    return JsonDocument("pitool layout", [&](JsonWriter& json) {
        const auto addSize = [&](const char* name, std::uint64_t size) {
            json.Member(name, [&] {
                json.Member("value", size);
                json.Member("text", OrNull(ScaledSize(size, record.m_Units)));
            });
        };
        json.Member("file", file);
        json.Member("kind", KindOf(layout));
        addSize("size", record.m_Size);
        json.Member("units", [&] {
            json.Member("value", std::int32_t{record.m_Units});
            json.Member("name", OrNull(FindUnit(record.m_Units)->second));
        });
        if (!layout.m_IsArray) {
            json.Member("span_count", record.m_SpanCount);
            json.Member("span_size", record.m_SpanSize);
        }
        json.Objects("containers", record.m_Containers, [&](const PI::CContainer& container) {
            json.Objects("drives", container.m_Drives, [&](const PI::CDrive& drive) {
                json.Member("object_id", drive.m_ObjectID);
                addSize("start", drive.m_StartAddress);
                addSize("size", drive.m_UsedSize);
                json.Member("configurable", drive.m_IsConfigurable);
                json.Member("logical_drive", drive.m_LogicalDrive);
                json.Member("logical_owner", drive.m_LogicalOwner);
            });
        });
        for (const List& list : ListsOf(layout)) {
            std::string name = list.m_Title;
            std::replace(name.begin(), name.end(), ' ', '_');
            json.Member(name, list.m_IDs);
        }
        json.Objects("warnings", findings, [&](const PI::CLayoutFinding& finding) {
            json.Member("line", finding.GetLine());
            json.Member("column", finding.GetColumn());
            json.Member("text", FindingText(finding));
            json.Member("element", OrNull(finding.GetElement()));
            json.Member("attribute", OrNull(finding.GetAttribute()));
            json.Member("assumed", OrNull(finding.GetAssumed()));
        });
        json.Member("warnings_left_out", LeftOut(findings));
    });
}

std::string PlaceText(const std::string& file, const PI::CLayoutFinding& finding) {
    return file + ":" + std::to_string(finding.GetLine()) + ":" + std::to_string(finding.GetColumn());
}

ExitStatus Run(const Options& options) {
    std::string text;
    std::string reason;
    if (!ReadInput(options.m_File, text, reason)) {
        throw std::runtime_error(options.m_File + ": " + reason);
    }
    PI::CArray array;
    Layout layout = {};
    PI::CLogicalDrive& record = layout.m_Record;
    Findings findings;
    const PI::_LAYOUT_KIND kind = PI::ReadLayout(text.data(), text.size(), array, record, findings);
    if (kind == PI::LayoutKind::NONE) {
        throw std::runtime_error(PlaceText(options.m_File, findings.back()) + ": " +
                                 findings.back().GetText());
    }
    for (const PI::CLayoutFinding& finding : findings) {
        ReportWarning(PlaceText(options.m_File, finding), FindingText(finding));
    }
    if (LeftOut(findings) != 0) {
        ReportWarning(options.m_File, std::to_string(LeftOut(findings)) + " further warnings");
    }
    layout.m_IsArray = kind == PI::LayoutKind::ARRAY;
    if (layout.m_IsArray) {
        record.m_Size = array.m_Size;
        record.m_Units = array.m_Units;
        record.m_Containers.swap(array.m_Containers);
        record.m_AssociatedLogicalDrives.swap(array.m_LogicalDrives);
    }
    return Print(options.m_Json ? LayoutJson(options.m_File, layout, findings) : LayoutText(layout));
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
