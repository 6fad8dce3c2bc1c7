// SPDX-License-Identifier: Apache-2.0
// Parses the JSON files of a folder and keeps nothing: what a report on them costs at least.

#include <filesystem>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: json_parse FOLDER\n";
        return 2;
    }
    std::size_t members = 0;
    std::string text;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        std::ifstream file(entry.path(), std::ios::binary);
        text.resize(entry.file_size());
        file.read(text.data(), static_cast<std::streamsize>(text.size()));
        members += nlohmann::json::parse(text).size();
    }
    std::cout << members << "\n";
    return 0;
}
