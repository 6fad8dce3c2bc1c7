// SPDX-License-Identifier: Apache-2.0

#include "drive_json.h"

#include "sample_reports.h"

#include <gtest/gtest.h>

using namespace pitool;
using namespace pitool::test;

namespace {

std::string Document(const std::vector<std::string>& drives,
                     const std::vector<std::pair<std::string, std::string>>& errors) {
    std::vector<const std::string*> pointers;
    for (const std::string& drive : drives) {
        pointers.push_back(&drive);
    }
    std::string text;
    EXPECT_TRUE(WriteDriveDocument(pointers, errors, {1, 2, 3, 4, 5}, [&](std::string_view piece) {
        text += piece;
        return true;
    }));
    return text;
}

}  // namespace

TEST(DriveDocument, HasItsShapeWithoutDrivesToo) {
    EXPECT_EQ(Document({}, {}), R"({
  "format": "pitool drive",
  "version": 1,
  "drives": [],
  "errors": [],
  "summary": {
    "drives": 1,
    "failing": 2,
    "worn": 3,
    "unknown_lifetime": 4,
    "refused": 5
  }
}
)");
}

TEST(DriveDocument, KeepsTheOrderGiven) {
    EXPECT_EQ(Document({R"({"b":1,"a":[2]})", "{}"}, {{"f", "r"}, {"g", "s"}}), R"({
  "format": "pitool drive",
  "version": 1,
  "drives": [
    {
      "b": 1,
      "a": [
        2
      ]
    },
    {}
  ],
  "errors": [
    {
      "file": "f",
      "reason": "r"
    },
    {
      "file": "g",
      "reason": "s"
    }
  ],
  "summary": {
    "drives": 1,
    "failing": 2,
    "worn": 3,
    "unknown_lifetime": 4,
    "refused": 5
  }
}
)");
}

TEST(DriveDocument, LaysOutTextsAndEmptyListsAsTheyAre) {
    const std::string drive = R"({"a{[,:\\\"]}":"x\\","b":{},"c":[],"d":[{}],"e":-1})";
    const std::string text = Document({drive}, {});
    EXPECT_EQ(Json::parse(text)["drives"][0], Json::parse(drive));
    EXPECT_EQ(text, Json::parse(text).dump(2) + "\n") << "just as the JSON library lays it out";
}

TEST(DriveDocument, StopsAtTheFirstPieceThatCannotBeWritten) {
    const std::string drive = "{}";
    for (int refused = 1; refused <= 8; ++refused) {
        int pieces = 0;
        EXPECT_FALSE(WriteDriveDocument({&drive}, {{"f", "r"}}, {},
                                        [&](std::string_view) { return ++pieces < refused; }));
        EXPECT_EQ(pieces, refused);
    }
}

TEST(DriveJson, UnknownFiguresAreNullWithAReason) {
    for (const char* protocol : {"ATA", "NVMe", "SCSI"}) {
        Json report = AtaReport("SAMPLE");
        report["device"]["protocol"] = protocol;
        report["rotation_rate"] = 0;
        const Json json = Json::parse(DriveJson(Assess(report)));
        for (const char* group : {"properties", "figures"}) {
            for (const auto& [name, figure] : json[group].items()) {
                EXPECT_EQ(figure.size(), 9U) << name;
                EXPECT_NE(figure["value"].is_null(), figure["reason"].is_null()) << name;
                EXPECT_EQ(figure["state"], figure["value"].is_null() ? "unknown" : "known") << name;
                EXPECT_EQ(figure["id"].is_null(), std::string(group) == "figures") << name;
            }
        }
        EXPECT_TRUE(json["lifetime"]["remaining_hours"].is_null());
        EXPECT_TRUE(json["lifetime"]["basis"].is_null());
        EXPECT_TRUE(json["lifetime"]["reason"].is_string());
    }
}

TEST(DriveJson, ADoubtfulFigureHasBothValueAndReason) {
    Json report = AtaReport("SAMPLE");
    report["device"]["protocol"] = "NVMe";
    report["smart_status"]["passed"] = true;
    report["nvme_smart_health_information_log"]["percentage_used"] = 255;
    const Json json = Json::parse(DriveJson(Assess(report)));
    const Json& wear = json["properties"]["RATED_ENDURANCE_PERCENT"];
    EXPECT_EQ(wear["state"], "doubtful");
    EXPECT_EQ(wear["value"], 255);
    EXPECT_EQ(wear["text"], "255 percent?");
    EXPECT_EQ(wear["reason"], "NVMe log 02h says 255 percent, which stands for more than 254 or for nothing");
    EXPECT_EQ(json["worn"], false);
    EXPECT_EQ(json["properties"]["HEALTH"]["value"], "OK");
    EXPECT_EQ(json["properties"]["HEALTH"]["state"], "doubtful");
}

TEST(DriveJson, SaysTheStateWithItsReasonsInOrder) {
    Json report = SolidStateReport("SAMPLE", 5, {Attribute(197, 100, 8), Attribute(198, 100, 120)});
    report["smart_status"]["passed"] = true;
    const Json json = Json::parse(DriveJson(Assess(report)));
    EXPECT_EQ(json["state"], "replace it");
    EXPECT_EQ(
        json["reasons"],
        (Json::array(
            {{{"state", "replace it"},
              {"text", "120 uncorrectable sectors"},
              {"figure", "UNCORRECTABLE_SECTORS"}},
             {{"state", "look at it"}, {"text", "8 pending sectors"}, {"figure", "PENDING_SECTORS"}}})));
    EXPECT_EQ(json["figures"]["PENDING_SECTORS"]["value"], 8);
}

TEST(DriveJson, IsAsciiWhateverTheDriveSays) {
    Json report = AtaReport("A\xC2\x9B\xE2\x80\xAE");
    DriveAssessment drive = Assess(report);
    drive.m_File = "bad\xFF.json";
    const std::string text = DriveJson(drive);
    for (const char c : text) {
        EXPECT_GE(c, ' ');
    }
    EXPECT_EQ(Json::parse(text)["file"], "bad\xEF\xBF\xBD.json");
    EXPECT_EQ(Json::parse(text)["properties"]["PRODUCT"]["value"], "A\xC2\x9B\xE2\x80\xAE");
}
