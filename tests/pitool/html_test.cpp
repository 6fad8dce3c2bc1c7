// SPDX-License-Identifier: Apache-2.0

#include "print/formats.h"

#include "drive_detail.h"
#include "drive_samples.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <map>
#include <regex>

using namespace pitool;
using namespace pitool::test;

namespace {

std::string Page(const std::vector<PI::CDriveReport>& reports,
                 const std::vector<std::pair<std::string, std::string>>& refused = {}) {
    std::vector<DriveSummary> drives;
    for (const PI::CDriveReport& report : reports) {
        const PI::CHealthAssessment health(report.GetHealth());
        drives.emplace_back("file.json", report, health);
        drives.back().SetDetail(SheetTable(drives.back(), report, health).Html());
    }
    DriveList list;
    for (const DriveSummary& drive : drives) {
        list.push_back(&drive);
    }
    SortDrives("state", list);
    return HtmlPage(list, list, refused);
}

/// The part of a page between a heading and the next one.
std::string Section(const std::string& page, const std::string& heading) {
    const std::size_t begin = page.find("<h2>" + heading);
    return begin == std::string::npos ? "" : page.substr(begin, page.find("<h2>", begin + 1) - begin);
}

/// Relative luminance of "#rrggbb" or "#rgb", as the accessibility guidelines define it.
double Luminance(std::string color) {
    if (color.size() == 4) {
        color = {'#', color[1], color[1], color[2], color[2], color[3], color[3]};
    }
    const auto part = [&color](std::size_t at) {
        const double value = static_cast<double>(std::strtol(color.substr(at, 2).c_str(), nullptr, 16)) / 255;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(1) + 0.7152 * part(3) + 0.0722 * part(5);
}

double Contrast(const std::string& one, const std::string& other) {
    const double first = Luminance(one);
    const double second = Luminance(other);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

}  // namespace

TEST(Html, StandsAlone) {
    const std::string page = Page({GoodReport("S1", Wear(3)), FailedReport("S2")});
    EXPECT_FALSE(
        std::regex_search(page, std::regex("<script|<link|<img|src=|url\\(|@import|https?:|\\son\\w+=")))
        << page;
}

TEST(Html, TextsOfReportsAreEscaped) {
    const std::string page =
        Page({ReadMembers(R"("model_name":"<b>&\"x\"","serial_number":"<i>")")}, {{"<f>.json", "a & b"}});
    EXPECT_NE(page.find("&lt;b&gt;&amp;&quot;x&quot;"), std::string::npos);
    EXPECT_NE(page.find("&lt;i&gt;"), std::string::npos);
    EXPECT_EQ(page.find("<b>&"), std::string::npos);
    EXPECT_EQ(page.find("<i>"), std::string::npos);
    EXPECT_NE(Section(page, "Not read").find("&lt;f&gt;.json<td>a &amp; b"), std::string::npos);
}

TEST(Html, DrivesAreCountedByState) {
    const std::string page = Page({GoodReport("S1"), FailedReport("S2"), GoodReport("S3")});
    EXPECT_NE(page.find("<h1>3 drives: 1 failed, 2 good</h1>"), std::string::npos);
}

TEST(Html, WhatToActOnIsTheWorstAndAtMostTwenty) {
    std::vector<PI::CDriveReport> reports{GoodReport("GOOD")};
    for (int i = 0; i < 20; ++i) {
        reports.push_back(FailedReport("F" + std::to_string(i)));
    }
    std::string list = Section(Page(reports), "What to act on first");
    EXPECT_EQ(Count(list, ">failed<"), 20U);
    EXPECT_EQ(list.find("GOOD"), std::string::npos);
    EXPECT_EQ(list.find(" more"), std::string::npos);

    reports.push_back(FailedReport("F20"));
    list = Section(Page(reports), "What to act on first");
    EXPECT_EQ(Count(list, ">failed<"), 20U);
    EXPECT_NE(list.find("<p>... and 1 more; see all drives</p>"), std::string::npos);
    EXPECT_NE(Section(Page({GoodReport("S1")}), "What to act on first").find("Nothing."), std::string::npos);
}

TEST(Html, WhatIsUnknownIsNothingToActOn) {
    const std::string page = Page({ReadMembers(R"("model_name":"Disk","serial_number":"S1")")});
    EXPECT_NE(page.find("<h1>1 drive: 1 unknown</h1>"), std::string::npos);
    EXPECT_NE(Section(page, "What to act on first").find("Nothing."), std::string::npos);
}

TEST(Html, AboveFiveHundredDrivesOnlyThoseThatAreNotGoodHaveSheets) {
    std::vector<PI::CDriveReport> reports{FailedReport("BAD")};
    const PI::CDriveReport good = GoodReport("GOOD");
    reports.insert(reports.end(), 499, good);
    EXPECT_EQ(Count(Page(reports), "<details"), 500U);
    reports.push_back(good);
    const std::string page = Page(reports);
    EXPECT_EQ(Count(page, "<details"), 1U);
    EXPECT_EQ(Count(Section(page, "All drives"), "<tr>"), 502U) << "with the headings";
    EXPECT_EQ(Page(std::vector<PI::CDriveReport>(501, good)).find("<h2>Sheets"), std::string::npos);
}

TEST(Html, OfMoreDrivesNoGoodOneHasASheetHoweverFewAreShown) {
    const DriveSummary good = Summarize("", GoodReport("S1"));
    const DriveList all(501, &good);
    const std::string page = HtmlPage(all, {&good}, {});
    EXPECT_EQ(page.find("<h2>Sheets"), std::string::npos);
    EXPECT_EQ(page.find("href"), std::string::npos);
    EXPECT_EQ(Count(HtmlPage(DriveList(500, &good), {&good}, {}), "<a href=\"#d1\">good"), 1U);
}

TEST(Html, ASheetShowsFiguresWithTheirSources) {
    const std::string sheets = Section(Page({GoodReport("S1", Wear(3))}), "Sheets");
    EXPECT_NE(sheets.find("<td>RATED_ENDURANCE_PERCENT<td>3 percent, counts up; device statistics"),
              std::string::npos)
        << sheets;
    EXPECT_NE(sheets.find("<td>TEMPERATURE<td class=\"faint\">unknown (not reported)"), std::string::npos)
        << sheets;
}

TEST(Html, RowsLeadToTheirSheets) {
    const std::string page = Page({GoodReport("S1"), FailedReport("S2")});
    EXPECT_NE(Section(page, "What to act on first").find("<a href=\"#d1\">failed</a>"), std::string::npos);
    EXPECT_NE(Section(page, "All drives").find("<a href=\"#d2\">good</a>"), std::string::npos);
    EXPECT_NE(Section(page, "Sheets").find("<details id=d1><summary>failed Disk S2"), std::string::npos);
    EXPECT_NE(Section(page, "Sheets").find("<details id=d2><summary>good INTEL"), std::string::npos);
}

TEST(Html, WhatToActOnIsTheWorstWhateverTheOrder) {
    const DriveSummary good = Summarize("", GoodReport("S1"));
    const DriveSummary failed = Summarize("", FailedReport("S2"));
    const std::string page = HtmlPage({&good, &failed}, {&good}, {{"a.json", "empty"}});
    EXPECT_NE(page.find("<h1>2 drives: 1 failed, 1 good; 1 input refused</h1>"), std::string::npos);
    EXPECT_NE(page.find("<h2>The drives chosen"), std::string::npos);
    const std::string list = Section(page, "What to act on first");
    EXPECT_NE(list.find("S2"), std::string::npos);
    EXPECT_EQ(list.find("S1"), std::string::npos);
}

TEST(Html, DoubtfulFiguresBearAMark) {
    const std::string page = Page({GoodReport("S1", Wear(255))});
    EXPECT_NE(Section(page, "All drives").find("255 %?"), std::string::npos) << page;
    EXPECT_NE(Section(page, "Sheets").find("255 percent?"), std::string::npos);
}

TEST(Html, ThePicturesHaveAPointForEachPlaceOfKnownWear) {
    const std::string page =
        Page({GoodReport("S1", Wear(3)), GoodReport("S2", Wear(3)), GoodReport("S3", Wear(80)),
              GoodReport("S4"), GoodReport("S5", Wear(255))});
    const std::string plots = Section(page, "Wear");
    EXPECT_EQ(Count(plots, "h0"), 2U) << plots;
    EXPECT_NE(plots.find("Wear against age of 3 drives"), std::string::npos);
    EXPECT_NE(plots.find("Wear against temperature of 0 drives"), std::string::npos);
}

TEST(Html, PointsAreOfTheClassOfTheirDrives) {
    const auto hasClass = [](const std::string& members, const std::string& name) {
        return Section(Page({GoodReport("S1", members)}), "Wear").find("class=\"p " + name + "\"") !=
               std::string::npos;
    };
    EXPECT_TRUE(hasClass(Wear(3), "good"));
    EXPECT_TRUE(hasClass(Wear(90), "look"));
    EXPECT_TRUE(hasClass(Wear(3) + R"(,"smart_status":{"passed":false})", "bad"));
}

TEST(Html, TheAxesAreMarkedInEqualSteps) {
    const std::string plots =
        Section(Page({GoodReport("S1", Wear(3) + R"(,"power_on_time":{"hours":87660})")}), "Wear");
    for (const std::string percent : {"0", "20", "40", "60", "80", "100"}) {
        EXPECT_NE(plots.find("text-anchor=end>" + percent + "%<"), std::string::npos) << percent;
    }
    EXPECT_EQ(Count(plots, "text-anchor=end>"), 12U) << "six in each picture";
    std::smatch line;
    ASSERT_TRUE(std::regex_search(plots, line, std::regex("M(\\d+) \\d+H(\\d+)")));
    const int left = std::stoi(line[1]);
    const int right = std::stoi(line[2]);
    for (int years = 0; years <= 10; years += 2) {
        const int place = left + (right - left) * years / 10;
        std::smatch mark;
        ASSERT_TRUE(std::regex_search(
            plots, mark, std::regex("x=(\\d+) y=\\d+ text-anchor=middle>" + std::to_string(years) + "<")))
            << years;
        EXPECT_NEAR(std::stoi(mark[1]), place, 1) << years;
    }
}

TEST(Html, ColoursStandOutFromTheirGround) {
    const std::string page = Page({});
    const std::regex variable("--(\\w+):(#[0-9a-f]+)");
    std::vector<std::map<std::string, std::string>> schemes;
    for (std::sregex_iterator match(page.begin(), page.end(), variable); match != std::sregex_iterator();
         ++match) {
        if (match->str(1) == "ground") {
            schemes.emplace_back();
        }
        schemes.back()[match->str(1)] = match->str(2);
    }
    ASSERT_EQ(schemes.size(), 2U) << "light and dark";
    for (auto& scheme : schemes) {
        for (const char* color : {"text", "faint", "bad", "look", "good"}) {
            EXPECT_GE(Contrast(scheme.at(color), scheme.at("ground")), 4.5) << color << scheme.at("ground");
        }
    }
}

TEST(Html, ModelsWithFailedDrivesComeFirst) {
    const std::string models =
        Section(Page({GoodReport("S1", Wear(3)), GoodReport("S2", Wear(7)), FailedReport("S3")}), "By model");
    EXPECT_LT(models.find("Disk"), models.find("INTEL"));
    EXPECT_NE(
        models.find("\n<tr><td class=\"n faint\">-<td class=\"n faint\">-<td class=\"n faint\">-<td "
                    "class=\"n\">2<td class=\"n m\">1.0 y<td class=\"n m\">3 %<td class=\"n w\">7 %<td>INTEL "
                    "SSDSC2BB480G7"),
        std::string::npos)
        << models;
}

TEST(Html, SaysWhenTheReportsWereMade) {
    const auto at = [](const char* time) {
        return GoodReport("S1", std::string(R"(,"local_time":{"time_t":)") + time + "}");
    };
    EXPECT_NE(Page({at("1700000000"), GoodReport("S2"), at("1600000000")})
                  .find("Reports of 2020-09-13T12:26:40Z to 2023-11-14T22:13:20Z"),
              std::string::npos);
    EXPECT_NE(Page({at("1700000000")}).find("Reports of 2023-11-14T22:13:20Z<"), std::string::npos);
    EXPECT_EQ(Page({GoodReport("S1")}).find("Reports of"), std::string::npos);
}
