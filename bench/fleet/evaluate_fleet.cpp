// SPDX-License-Identifier: Apache-2.0
// Prints how well the library knows the wear of real drives. Reads from standard input one JSON object a line
// and a drive, with readings that smartctl decoded; of each drive the last reading counts.
#include <pi/drive_health.h>
#include <pi/vocabulary.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <string>

namespace {

using nlohmann::json;
using namespace PI;

constexpr std::int64_t WEAR_PAGE = 7;

struct Drive {
    std::string m_Model;
    CDriveHealth m_Health;
    CDriveHealth m_AttributesOnly;          ///< without the drive's own statistics
    std::optional<std::int64_t> m_OwnWear;  ///< as the drive's own statistics tell it
};

std::int64_t Number(const json& value) {
    return value.is_number_unsigned() && value.get<std::uint64_t>() > INT64_MAX ? INT64_MAX
                                                                                : value.get<std::int64_t>();
}

/// The raw value; its text holds more where smartctl takes it apart into words.
std::uint64_t RawValue(const json& row) {
    const std::string text = row[7].is_string() ? row[7].get<std::string>() : "";
    if (text.compare(0, 2, "0x") == 0) {
        return std::strtoull(text.c_str(), nullptr, 16);
    }
    std::istringstream stream(text);
    std::uint64_t high = 0;
    std::uint64_t middle = 0;
    std::uint64_t low = 0;
    return stream >> high >> middle >> low ? high << 32 | middle << 16 | low : row[6].get<std::uint64_t>();
}

void TakeAttributes(const json& reading, CDriveHealth& health) {
    const json table = reading.value("attributes", json::array());
    for (const json& row : table) {
        const std::string name = row[1].is_string() ? row[1].get<std::string>() : "";
        const auto given = [&row](std::size_t i) { return row[i].is_number() ? row[i].get<int>() : -1; };
        health.TakeAttribute(row[0].get<std::uint8_t>(), name.c_str(),
                             static_cast<std::uint16_t>(std::max(given(2), 0)), given(3), given(4), given(5),
                             RawValue(row));
    }
}

void TakeStatistics(const json& reading, Drive& drive) {
    const json statistics = reading.value("statistics", json::object());
    for (const auto& [place, row] : statistics.items()) {
        const std::size_t colon = place.find(':');
        const auto page = static_cast<std::uint32_t>(std::stoul(place.substr(0, colon)));
        const auto offset = static_cast<std::uint32_t>(std::stoul(place.substr(colon + 1)));
        if (!row[1].is_number()) {
            continue;
        }
        drive.m_Health.TakeStatistic(page, offset, Number(row[1]));
        if (page == WEAR_PAGE && offset == 8) {
            drive.m_OwnWear = Number(row[1]);
        }
    }
}

/// The figures of the NVMe health log.
void TakeHealthLog(const json& reading, CDriveHealth& health) {
    static const std::map<std::string, _HEALTH_FIGURE> NAMES = {
        {"percentage_used", HealthFigure::WEAR},
        {"available_spare", HealthFigure::SPARE},
        {"available_spare_threshold", HealthFigure::SPARE_THRESHOLD},
        {"power_on_hours", HealthFigure::POWER_ON_HOURS},
        {"media_errors", HealthFigure::MEDIA_ERRORS},
        {"critical_warning", HealthFigure::CRITICAL_WARNING},
        {"data_units_written", HealthFigure::BYTES_WRITTEN},
    };
    constexpr std::int64_t DATA_UNIT = 512000;
    const json log = reading.value("health", json::object());
    for (const auto& [name, value] : log.items()) {
        const auto known = NAMES.find(name);
        if (known == NAMES.end() || !value.is_number()) {
            continue;
        }
        const std::int64_t unit = known->second == HealthFigure::BYTES_WRITTEN ? DATA_UNIT : 1;
        const std::int64_t number = Number(value);
        health.TakeFigure(known->second, number > INT64_MAX / unit ? INT64_MAX : number * unit,
                          FigureSource::NVME_LOG, 2);
    }
}

Drive ReadDrive(const json& line) {
    const std::string model = line.value("model", "");
    const bool isNVMe = line.value("protocol", "") == "NVMe";
    const CDriveHealth health(isNVMe ? DriveProtocol::NVME : DriveProtocol::ATA, model);
    Drive drive = {model, health, health, std::nullopt};
    const json& reading = line.at("readings").back();
    for (CDriveHealth* each : {&drive.m_Health, &drive.m_AttributesOnly}) {
        each->SetMedium(PropertyValue::SSD);
        if (line["capacity"].is_number()) {
            each->SetCapacity(line["capacity"].get<std::uint64_t>());
        }
        if (reading.contains("hours") && reading["hours"].is_number()) {
            each->TakeFigure(HealthFigure::POWER_ON_HOURS, Number(reading["hours"]));
        }
        if (reading.contains("passed") && reading["passed"].is_boolean()) {
            each->TakeVerdict(reading["passed"].get<bool>());
        }
        TakeAttributes(reading, *each);
    }
    TakeStatistics(reading, drive);
    TakeHealthLog(reading, drive.m_Health);
    return drive;
}

struct Tally {
    const char* m_What;
    std::size_t m_Count = 0;
    std::size_t m_Of = 0;

    void Add(bool counts) {
        m_Count += counts ? 1U : 0U;
        ++m_Of;
    }
    void Print() const {
        const double share = m_Of == 0 ? 0 : 100.0 * static_cast<double>(m_Count) / static_cast<double>(m_Of);
        std::printf("%-66s %7zu of %7zu  %6.2f %%\n", m_What, m_Count, m_Of, share);
    }
};

bool IsWithin(std::int64_t one, std::int64_t other, std::int64_t points) {
    return std::abs(one - other) <= points;
}

void Evaluate(bool lists) {
    Tally value = {"wear has a value"};
    Tally doubtful = {"  of these doubtful"};
    Tally seemsNew = {"called new (0) where the drive's statistic says 5 or more"};
    Tally invalid = {"255 of the statistic taken for worn out on its own word"};
    Tally alone = {"attributes alone, drives with page 7: wear has a value"};
    Tally aloneDoubtful = {"  of these doubtful"};
    Tally aloneClose = {"  of the others within 2 points of page 7"};
    Tally falseZero = {"  of the others 0 or 1 where page 7 says 5 or more"};
    Tally rated = {"rating known"};

    std::string text;
    while (std::getline(std::cin, text)) {
        if (text.empty()) {
            continue;
        }
        const Drive drive = ReadDrive(json::parse(text));
        const CHealthFigure wear = drive.m_Health.GetFigure(HealthFigure::WEAR);
        const std::int64_t own = drive.m_OwnWear.value_or(-1);
        value.Add(wear.HasValue());
        if (wear.HasValue()) {
            doubtful.Add(wear.GetState() == FigureState::DOUBTFUL);
        }
        seemsNew.Add(own >= 5 && own != 255 && wear.GetState() == FigureState::KNOWN && wear.GetValue() == 0);
        rated.Add(drive.m_Health.GetFigure(HealthFigure::RATED_TERABYTES).HasValue());
        if (own < 0) {
            continue;
        }
        const CHealthFigure guess = drive.m_AttributesOnly.GetFigure(HealthFigure::WEAR);
        if (own == 255) {
            invalid.Add(wear.GetState() == FigureState::KNOWN && guess.GetValue() < 90);
            continue;
        }
        alone.Add(guess.HasValue());
        if (!guess.HasValue()) {
            if (lists) {
                std::printf("unknown %s: %s\n", drive.m_Model.c_str(), guess.GetText().c_str());
            }
            continue;
        }
        aloneDoubtful.Add(guess.GetState() == FigureState::DOUBTFUL);
        if (guess.GetState() == FigureState::DOUBTFUL) {
            if (lists) {
                std::printf("doubtful %s: %s (page 7: %lld)\n", drive.m_Model.c_str(),
                            guess.GetText().c_str(), static_cast<long long>(own));
            }
            continue;
        }
        aloneClose.Add(IsWithin(guess.GetValue(), own, 2));
        falseZero.Add(guess.GetValue() <= 1 && own >= 5);
        if (lists && !IsWithin(guess.GetValue(), own, 2)) {
            std::printf("off %s: %lld by %s, page 7 says %lld\n", drive.m_Model.c_str(),
                        static_cast<long long>(guess.GetValue()), guess.GetText().c_str(),
                        static_cast<long long>(own));
        }
    }
    for (const Tally& tally :
         {value, doubtful, seemsNew, invalid, alone, aloneDoubtful, aloneClose, falseZero, rated}) {
        tally.Print();
    }
}

}  // namespace

int main(int argc, char** argv) {
    try {
        Evaluate(argc > 1 && std::string(argv[1]) == "--list");
    } catch (const std::exception& error) {
        std::fprintf(stderr, "evaluate_fleet: %s\n", error.what());
        return 1;
    }
    return 0;
}
