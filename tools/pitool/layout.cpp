// SPDX-License-Identifier: Apache-2.0

#include "commands.h"
#include "reports.h"

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

/// A list of identifiers in a document.
struct List {
    std::string m_Title;
    const char* m_Kind;  ///< what they are of
    std::vector<std::uint64_t> m_IDs;
};

/// What a document describes. An array is shown like a logical drive, without spans.
struct Layout {
    PI::CLogicalDrive m_Record;
    const char* m_Kind;
    std::vector<List> m_Lists;
    bool m_HasSpans;
};

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

std::string LayoutText(const Layout& layout) {
    const PI::CLogicalDrive& record = layout.m_Record;
    const Screen screen = OutputScreen();
    const std::string unit = FindUnit(record.m_Units)->second;
    const std::string head = std::string(layout.m_Kind) + ", size " +
                             SizeText(record.m_Size, record.m_Units) + ", sizes in " +
                             (!unit.empty() ? unit
                              : record.m_Units == PI::Units::UNSPECIFIED
                                  ? "an unknown unit (unspecified)"
                                  : "an unknown unit (Units " + std::to_string(record.m_Units) + ")");
    std::string tree;
    AddWrapped("", "| ", head, Style::HEADING, screen, tree);
    using Leaves = std::vector<std::string>;
    // A text that goes on below its branch hangs behind the line that leads to the leaves of that.
    const auto draw = [&](const std::string& branch, const Leaves& leaves, bool isLast = false) {
        const std::string below = isLast ? "    " : "|   ";
        AddWrapped(isLast ? "`-- " : "|-- ", below + (leaves.empty() ? "  " : "| "), branch, Style::PLAIN,
                   screen, tree);
        for (const std::string& leaf : leaves) {
            const bool isLastLeaf = &leaf == &leaves.back();
            AddWrapped(below + (isLastLeaf ? "`-- " : "|-- "), below + (isLastLeaf ? "      " : "|     "),
                       leaf, Style::PLAIN, screen, tree);
        }
    };
    if (layout.m_HasSpans) {  // the document does not say what a span's size counts
        draw(Count(record.m_SpanCount, "span") + " of size " + std::to_string(record.m_SpanSize), {});
    }
    if (record.m_Containers.empty()) {
        draw("containers: none", {});
    }
    for (const PI::CContainer& container : record.m_Containers) {
        const auto number = &container - record.m_Containers.data() + 1;
        Leaves drives;
        for (const PI::CDrive& drive : container.m_Drives) {
            drives.push_back(DriveText(drive, record.m_Units));
        }
        draw("container " + std::to_string(number) + ", " + Count(drives.size(), "drive"), drives);
    }
    for (const List& list : layout.m_Lists) {
        Leaves ids;
        for (const std::uint64_t id : list.m_IDs) {
            ids.push_back(list.m_Kind + std::to_string(id));
        }
        draw(list.m_Title + (ids.empty() ? ": none" : ""), ids, &list == &layout.m_Lists.back());
    }
    return tree;
}

std::string FindingText(const PI::CLayoutFinding& finding) {
    constexpr std::size_t LONGEST_NAME = 40;
    const std::string& element = finding.GetElement();
    return element.substr(0, LONGEST_NAME) + (element.empty() ? "" : ": ") + finding.GetText() +
           (finding.GetAssumed().empty() ? "" : ", read as " + finding.GetAssumed());
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
        json.Member("kind", layout.m_Kind);
        addSize("size", record.m_Size);
        json.Member("units", [&] {
            json.Member("value", std::int32_t{record.m_Units});
            json.Member("name", OrNull(FindUnit(record.m_Units)->second));
        });
        if (layout.m_HasSpans) {
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
        for (const List& list : layout.m_Lists) {
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
        json.Member("warnings_left_out", findings.empty() ? 0 : findings.back().GetLeftOut());
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
    PI::CLogicalDrive record;
    Findings findings;
    const PI::_LAYOUT_KIND kind = PI::ReadLayout(text.data(), text.size(), array, record, findings);
    if (kind == PI::LayoutKind::NONE) {
        throw std::runtime_error(PlaceText(options.m_File, findings.back()) + ": " +
                                 findings.back().GetText());
    }
    for (const PI::CLayoutFinding& finding : findings) {
        ReportWarning(PlaceText(options.m_File, finding), FindingText(finding));
    }
    if (!findings.empty() && findings.back().GetLeftOut() != 0) {
        ReportWarning(options.m_File, std::to_string(findings.back().GetLeftOut()) + " further warnings");
    }
    Layout layout = {record,
                     "logical drive",
                     {{"global hot spares", "drive ", record.m_GlobalHotSpares},
                      {"dedicated hot spares", "drive ", record.m_DedicatedHotSpares},
                      {"associated logical drives", "logical drive ", record.m_AssociatedLogicalDrives}},
                     true};
    if (kind == PI::LayoutKind::ARRAY) {
        record.m_Size = array.m_Size;
        record.m_Units = array.m_Units;
        record.m_Containers.swap(array.m_Containers);
        layout = {record, "array", {{"logical drives", "logical drive ", array.m_LogicalDrives}}, false};
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
