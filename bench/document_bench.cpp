// SPDX-License-Identifier: Apache-2.0
// Reading array configuration documents.

#include <pi/layout.h>

#include <pugixml.hpp>
#include <sstream>

#include "measure.h"

namespace {

struct PlainDrive {
    std::uint64_t m_ObjectID;
    std::uint64_t m_StartAddress;
    std::uint64_t m_UsedSize;
    std::uint64_t m_LogicalDrive;
    std::uint64_t m_LogicalOwner;
    bool m_IsConfigurable;
};

struct PlainArray {
    std::uint64_t m_Size = 0;
    int m_Units = 0;
    std::vector<std::vector<PlainDrive>> m_Containers;
    std::vector<std::uint64_t> m_LogicalDrives;
};

/// Containers of 10 drives and a list of one logical drive per container.
std::string Document(int drives) {
    std::ostringstream text;
    text << R"(<ArrayConfiguration Size="123456789012" Units="21002"><Containers>)";
    for (int i = 0; i < drives; ++i) {
        text << (i % 10 == 0 ? "<Container>" : "") << R"(<Drive ObjectID=")" << 7000000 + i
             << R"(" StartAddress=")" << 2048L * i << R"(" UsedSize="3906250000" IsConfigurable=")" << i % 2
             << R"(" LogicalDrive=")" << i / 10 << R"(" LogicalOwner="42"/>)"
             << (i % 10 == 9 ? "</Container>" : "");
    }
    text << "</Containers><LogicalDrives>";
    for (int i = 0; i < drives / 10; ++i) {
        text << R"(<LogicalDrive ObjectID=")" << 9000000 + i << R"("/>)";
    }
    text << "</LogicalDrives></ArrayConfiguration>";
    return text.str();
}

std::uint64_t ByLibrary(pugi::xml_document& document) {
    const PI::CArray array(document);
    return array.m_Containers.back().m_Drives.back().m_StartAddress;
}

std::uint64_t AsNumber(const pugi::xml_attribute& attribute) {
    return attribute.as_ullong();
}

std::uint64_t AsStream(const pugi::xml_attribute& attribute) {
    std::uint64_t number = 0;
    std::istringstream(attribute.value()) >> number;
    return number;
}

template <std::uint64_t (*Number)(const pugi::xml_attribute&)>
std::uint64_t ByTraversal(const pugi::xml_document& document) {
    const pugi::xml_node root = document.child("ArrayConfiguration");
    PlainArray array;
    array.m_Size = Number(root.attribute("Size"));
    array.m_Units = static_cast<int>(Number(root.attribute("Units")));
    for (const pugi::xml_node container : root.child("Containers").children("Container")) {
        auto& drives = array.m_Containers.emplace_back();
        for (const pugi::xml_node node : container.children()) {
            drives.push_back({Number(node.attribute("ObjectID")), Number(node.attribute("StartAddress")),
                              Number(node.attribute("UsedSize")), Number(node.attribute("LogicalDrive")),
                              Number(node.attribute("LogicalOwner")),
                              Number(node.attribute("IsConfigurable")) != 0});
        }
    }
    for (const pugi::xml_node drive : root.child("LogicalDrives").children("LogicalDrive")) {
        array.m_LogicalDrives.push_back(Number(drive.attribute("ObjectID")));
    }
    return array.m_Containers.back().back().m_StartAddress;
}

template <class Way>
void AddWay(int drives, const std::string& way, Way read) {
    bench::Add("document_" + std::to_string(drives), way, [=](benchmark::State& state) {
        const std::string text = Document(drives);
        bench::Measure(state, [&] {
            pugi::xml_document document;
            document.load_buffer(text.data(), text.size());
            benchmark::DoNotOptimize(read(document));
        });
    });
}

}  // namespace

void bench::RegisterBenchmarks() {
    for (const int drives : {1000, 10000, 100000}) {
        AddWay(drives, "library", ByLibrary);
        AddWay(drives, "naive", ByTraversal<AsStream>);
        AddWay(drives, "traversal", ByTraversal<AsNumber>);
    }
}
