// SPDX-License-Identifier: Apache-2.0

#include "layout_tree.h"

#include "layout_units.h"
#include "print/text.h"

#include <cstdint>
#include <utility>

namespace pitool {
namespace {

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

std::string DrawTree(const std::string& head, const std::vector<Branch>& branches, const Screen& screen) {
    std::string tree;
    AddWrapped("", branches.empty() ? "" : "| ", head, Style::HEADING, screen, tree);
    Draw(branches, "", screen, tree);
    return tree;
}

std::string Count(std::size_t count, const char* one) {
    return std::to_string(count) + " " + one + (count == 1 ? "" : "s");
}

/// The heading: the size, and in which unit the numbers of the document stand.
std::string HeadText(const char* kind, std::uint64_t size, PI::_UNITS unit) {
    const std::string name = UnitName(unit);
    std::string text = std::string(kind) + ", size " + SizeText(size, unit);
    if (!name.empty()) {
        return text + ", sizes in " + name;
    }
    return text + ", sizes in an unknown unit (" +
           (unit == PI::Units::UNSPECIFIED ? "unspecified" : "Units " + std::to_string(unit)) + ")";
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

void AddContainers(const std::vector<PI::CContainer>& containers, PI::_UNITS unit,
                   std::vector<Branch>& branches) {
    if (containers.empty()) {
        branches.push_back({"containers: none", {}});
    }
    for (std::size_t i = 0; i < containers.size(); ++i) {
        const std::vector<PI::CDrive>& drives = containers[i].m_Drives;
        Branch& container = branches.emplace_back();
        container.m_Text = "container " + std::to_string(i + 1) + ", " + Count(drives.size(), "drive");
        container.m_Branches.reserve(drives.size());
        for (const PI::CDrive& drive : drives) {
            container.m_Branches.push_back({DriveText(drive, unit), {}});
        }
    }
}

Branch ObjectsBranch(const char* title, const char* kind, const std::vector<std::uint64_t>& ids) {
    Branch branch{title, {}};
    if (ids.empty()) {
        branch.m_Text += ": none";
    }
    for (const std::uint64_t id : ids) {
        branch.m_Branches.push_back({std::string(kind) + " " + std::to_string(id), {}});
    }
    return branch;
}

std::string Tree(const PI::CArray& array, const Screen& screen) {
    std::vector<Branch> branches;
    AddContainers(array.m_Containers, array.m_Units, branches);
    branches.push_back(ObjectsBranch("logical drives", "logical drive", array.m_LogicalDrives));
    return DrawTree(HeadText("array", array.m_Size, array.m_Units), branches, screen);
}

std::string Tree(const PI::CLogicalDrive& drive, const Screen& screen) {
    std::vector<Branch> branches;
    // The document does not say what a span's size counts, so it stands as written.
    branches.push_back(
        {Count(drive.m_SpanCount, "span") + " of size " + std::to_string(drive.m_SpanSize), {}});
    AddContainers(drive.m_Containers, drive.m_Units, branches);
    branches.push_back(ObjectsBranch("global hot spares", "drive", drive.m_GlobalHotSpares));
    branches.push_back(ObjectsBranch("dedicated hot spares", "drive", drive.m_DedicatedHotSpares));
    branches.push_back(
        ObjectsBranch("associated logical drives", "logical drive", drive.m_AssociatedLogicalDrives));
    return DrawTree(HeadText("logical drive", drive.m_Size, drive.m_Units), branches, screen);
}

}  // namespace

std::string LayoutTree(const LayoutDocument& document, const Screen& screen) {
    return std::visit([&screen](const auto& layout) { return Tree(layout, screen); }, document.m_Layout);
}

}  // namespace pitool
