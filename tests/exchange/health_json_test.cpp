// SPDX-License-Identifier: Apache-2.0
// The health of a drive as JSON.

#include <gtest/gtest.h>
#include <pi/exchange/model_json.h>

#include <nlohmann/json.hpp>

using namespace PI;
using Json = nlohmann::json;

namespace {

Json FigureOf(const Json& health, _HEALTH_FIGURE figure) {
    for (const Json& each : health["figures"]) {
        if (each["figure"] == int{figure}) {
            return each;
        }
    }
    return nullptr;
}

}  // namespace

TEST(HealthJson, StateAndReasonsAreThere) {
    CDriveHealth drive(DriveProtocol::SCSI, "NOBODY KNOWS IT");
    drive.TakeGrownDefects(1040);
    const Json json = Json::parse(ToJson(drive));
    EXPECT_EQ(json["record"], "drive_health");
    EXPECT_EQ(json["version"], 1);
    EXPECT_EQ(json["state"], int{drive.GetState()});
    EXPECT_EQ(json["state_name"], DriveStateToString(drive.GetState()));
    const std::vector<CHealthReason> reasons = drive.GetReasons();
    ASSERT_EQ(json["reasons"].size(), reasons.size());
    EXPECT_EQ(json["reasons"][0], (Json{{"state", int{reasons[0].GetState()}},
                                        {"state_name", DriveStateToString(reasons[0].GetState())},
                                        {"figure", 12},
                                        {"figure_name", "REALLOCATED_SECTORS"},
                                        {"text", reasons[0].GetText()}}));
}

TEST(HealthJson, EveryFigureIsThereWithWhatIsKnownOfIt) {
    CDriveHealth drive(DriveProtocol::NVME, "NOBODY KNOWS IT");
    drive.TakeFigure(HealthFigure::BYTES_WRITTEN, std::int64_t{9007199254740993}, FigureSource::NVME_LOG, 2);
    drive.TakeFigure(HealthFigure::TEMPERATURE, -5, FigureSource::NVME_LOG, 2);
    const Json json = Json::parse(ToJson(drive));
    const std::vector<CHealthFigure> figures = drive.GetFigures();
    ASSERT_EQ(json["figures"].size(), figures.size());
    for (std::size_t i = 0; i < figures.size(); ++i) {
        EXPECT_EQ(json["figures"][i]["figure"], int{figures[i].GetFigure()});
        EXPECT_EQ(json["figures"][i]["figure_name"], HealthFigureToString(figures[i].GetFigure()));
        EXPECT_EQ(json["figures"][i]["text"], figures[i].GetText());
        EXPECT_EQ(json["figures"][i]["value"].is_null(), !figures[i].HasValue());
    }
    EXPECT_EQ(FigureOf(json, HealthFigure::BYTES_WRITTEN),
              (Json{{"figure", 5},
                    {"figure_name", "BYTES_WRITTEN"},
                    {"value", "9007199254740993"},
                    {"unit", 3},
                    {"unit_name", "BYTES"},
                    {"direction", 1},
                    {"direction_name", "UP"},
                    {"state", 1},
                    {"state_name", "KNOWN"},
                    {"source", 4},
                    {"source_name", "NVME_LOG"},
                    {"source_number", 2},
                    {"text", drive.GetFigure(HealthFigure::BYTES_WRITTEN).GetText()}}));
    EXPECT_EQ(FigureOf(json, HealthFigure::TEMPERATURE)["value"], -5);
    EXPECT_EQ(FigureOf(json, HealthFigure::TEMPERATURE)["unit_name"], "CELSIUS");
    EXPECT_EQ(FigureOf(json, HealthFigure::TEMPERATURE)["direction_name"], "NONE");
    EXPECT_EQ(FigureOf(json, HealthFigure::SPARE),
              (Json{{"figure", 2},
                    {"figure_name", "SPARE"},
                    {"value", nullptr},
                    {"unit", 1},
                    {"unit_name", "PERCENT"},
                    {"direction", 2},
                    {"direction_name", "DOWN"},
                    {"state", 0},
                    {"state_name", "UNKNOWN"},
                    {"source", 0},
                    {"source_name", "NONE"},
                    {"source_number", 0},
                    {"text", drive.GetFigure(HealthFigure::SPARE).GetText()}}));
}

TEST(HealthJson, WhatIsDoubtfulIsCalledSo) {
    CDriveHealth drive(DriveProtocol::NVME, "NOBODY KNOWS IT");
    drive.TakeFigure(HealthFigure::WEAR, 255, FigureSource::NVME_LOG, 2);
    const Json wear = FigureOf(Json::parse(ToJson(drive)), HealthFigure::WEAR);
    EXPECT_EQ(wear["state"], 2);
    EXPECT_EQ(wear["state_name"], "DOUBTFUL");
}

TEST(HealthJson, SourcesHaveTheirNames) {
    constexpr const char* NAMES[] = {
        "NONE",          "ATA_DEVICE_STATISTICS", "ATA_LOG",       "ATA_ATTRIBUTE",
        "NVME_LOG",      "NVME_IDENTIFY",         "SCSI_LOG_PAGE", "SCSI_DEFECT_LIST",
        "DRIVE_VERDICT", "ENDURANCE_LIST",        "PROGRAM"};
    for (int source = 1; source <= 10; ++source) {
        CDriveHealth drive(DriveProtocol::UNKNOWN, "");
        drive.TakeFigure(HealthFigure::POWER_CYCLES, 7, static_cast<_FIGURE_SOURCE>(source), 1);
        const Json figure = FigureOf(Json::parse(ToJson(drive)), HealthFigure::POWER_CYCLES);
        EXPECT_EQ(figure["source"], source);
        EXPECT_EQ(figure["source_name"], NAMES[source]);
    }
}
