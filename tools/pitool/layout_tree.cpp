// SPDX-License-Identifier: Apache-2.0

#include "layout_tree.h"

#include "layout_units.h"

#include <cstdint>
#include <utility>

namespace pitool {
namespace {

struct Branch {
    std::string m_Text;
    std::vector<Branch> m_Branches;
};

void Draw(const std::vector<Branch>& branches, const std::string& indent, std::string& tree) {
    for (const Branch& branch : branches) {
        const bool last = &branch == &branches.back();
        tree += indent + (last ? "`-- " : "|-- ") + branch.m_Text + "\n";
        Draw(branch.m_Branches, indent + (last ? "    " : "|   "), tree);
    }
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

std::string Tree(const PI::CArray& array) {
    std::vector<Branch> branches;
    AddContainers(array.m_Containers, array.m_Units, branches);
    branches.push_back(ObjectsBranch("logical drives", "logical drive", array.m_LogicalDrives));
    std::string tree = HeadText("array", array.m_Size, array.m_Units) + "\n";
    Draw(branches, "", tree);
    return tree;
}

std::string Tree(const PI::CLogicalDrive& drive) {
    std::vector<Branch> branches;
    // The document does not say what a span's size counts, so it stands as written.
    branches.push_back(
        {Count(drive.m_SpanCount, "span") + " of size " + std::to_string(drive.m_SpanSize), {}});
    AddContainers(drive.m_Containers, drive.m_Units, branches);
    branches.push_back(ObjectsBranch("global hot spares", "drive", drive.m_GlobalHotSpares));
    branches.push_back(ObjectsBranch("dedicated hot spares", "drive", drive.m_DedicatedHotSpares));
    branches.push_back(
        ObjectsBranch("associated logical drives", "logical drive", drive.m_AssociatedLogicalDrives));
    std::string tree = HeadText("logical drive", drive.m_Size, drive.m_Units) + "\n";
    Draw(branches, "", tree);
    return tree;
}

}  // namespace

std::string LayoutTree(const LayoutDocument& document) {
    return std::visit([](const auto& layout) { return Tree(layout); }, document.m_Layout);
}

}  // namespace pitool
