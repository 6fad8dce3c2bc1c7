// SPDX-License-Identifier: Apache-2.0
// The English language file.

#include "drive_detail.h"

#include <pi/event.h>
#include <pi/plugin_helper.h>
#include <pi/vocabulary.h>
#include <velkx/language_support.h>

#include <gtest/gtest.h>
#include <pugixml.hpp>

#include <map>

using namespace pitool;

namespace {

std::map<int, std::string> TextsOf(const char* file) {
    pugi::xml_document document;
    EXPECT_TRUE(document.load_file(file));
    std::map<int, std::string> texts;
    for (const pugi::xml_node node : document.child("Strings").children("String")) {
        texts[node.attribute("id").as_int()] = node.child_value();
    }
    return texts;
}

/// The numbers of the markers in a text, in their order.
std::string Markers(const std::string& text) {
    std::string markers;
    for (std::size_t i = text.find('%'); i != std::string::npos; i = text.find('%', i + 1)) {
        markers += text.substr(i + 1, 1);
    }
    return markers;
}

}  // namespace

TEST(EnglishStrings, LoadAsALanguageFile) {
    EXPECT_NO_THROW(CLanguageSupport::LoadFile(PITOOL_STRINGS));
    std::string text;
    CLanguageSupport::ResolveString(10055, text);
    EXPECT_EQ(text, "Rebuild on %1 started");
    CLanguageSupport::Clear();
}

TEST(EnglishStrings, HoldAtLeastAHundredTextsOfKnownEvents) {
    const std::map<int, std::string> texts = TextsOf(PITOOL_STRINGS);
    EXPECT_GE(texts.size(), 100U);
    for (const auto& [id, text] : texts) {
        EXPECT_NE(PI::EventIDToString(id), "") << id;
        EXPECT_NE(text, "") << id;
    }
}

TEST(EnglishStrings, MarkersStandInTheOrderObjectThenDetail) {
    for (const auto& [id, text] : TextsOf(PITOOL_STRINGS)) {
        const std::string markers = Markers(text);
        EXPECT_TRUE(markers == "1" || markers == "12") << id << ": " << text;
    }
}

TEST(EnglishStrings, SayWhatEachPlaceholderIs) {
    pugi::xml_document document;
    ASSERT_TRUE(document.load_file(PITOOL_STRINGS));
    for (const pugi::xml_node node : document.child("Strings").children("String")) {
        std::string explained;
        for (const pugi::xml_attribute attribute : node.attributes()) {
            const std::string name = attribute.name();
            explained += name == "id" ? "" : name.substr(std::string("placeholder").size());
            EXPECT_STRNE(attribute.value(), "") << node.child_value();
        }
        EXPECT_EQ(explained, Markers(node.child_value())) << node.child_value();
    }
}

TEST(EnglishStrings, HaveThePlaceholdersOfTheGermanSample) {
    const std::map<int, std::string> english = TextsOf(PITOOL_STRINGS);
    const std::map<int, std::string> german = TextsOf(PITOOL_ALL_EXAMPLES "/events/strings.de.xml");
    EXPECT_FALSE(german.empty());
    for (const auto& [id, text] : german) {
        ASSERT_EQ(english.count(id), 1U) << id;
        EXPECT_EQ(Markers(text), Markers(english.at(id))) << id;
    }
}

TEST(EnglishStrings, HoldEveryEventThatADriveRaises) {
    const std::map<int, std::string> texts = TextsOf(PITOOL_STRINGS);
    for (const PI::_EVENT_ID id : DRIVE_EVENTS) {
        ASSERT_EQ(texts.count(id), 1U) << id;
        EXPECT_EQ(Markers(texts.at(id)), "12") << id;
    }
}

TEST(EnglishStrings, HoldTheCommonEvents) {
    const std::map<int, std::string> texts = TextsOf(PITOOL_STRINGS);
    namespace ID = PI::EventID;
    for (const int id : {ID::REBUILD_STARTED,
                         ID::REBUILD_FINISHED,
                         ID::REBUILD_FAILED,
                         ID::REBUILD_CANCELED,
                         ID::REBUILD_PAUSED,
                         ID::CHECK_STARTED,
                         ID::CHECK_FINISHED,
                         ID::CHECK_FAILED,
                         ID::CHECK_CANCELED,
                         ID::CHECK_PAUSED,
                         ID::GLOBAL_HOTSPARE_CREATED,
                         ID::GLOBAL_HOTSPARE_DELETED,
                         ID::DEDICATED_HOTSPARE_CREATED,
                         ID::DEDICATED_HOTSPARE_DELETED,
                         ID::BATTERY_FAILED,
                         ID::BATTERY_TEMPERATURE_HIGH,
                         ID::BBU_FAILED,
                         ID::TEMPERATURE_SENSOR_ALERT,
                         ID::PD_TEMP_HIGH,
                         ID::POWER_SUPPLY_FAILED,
                         ID::FAN_FAILED,
                         ID::SMART_WARNING,
                         ID::SMART_ERROR,
                         ID::PD_PREDICTIVE_THRESHOLD_EXCEEDED,
                         ID::LOGICALDRIVE_DEGRADED,
                         ID::LOGICALDRIVE_FAILED}) {
        EXPECT_EQ(texts.count(id), 1U) << id;
    }
}

TEST(EnglishStrings, RenderWithoutLeftOverMarkersWhereObjectAndDetailAreGiven) {
    CLanguageSupport::LoadFile(PITOOL_STRINGS);
    for (const auto& [id, text] : TextsOf(PITOOL_STRINGS)) {
        PI::CEvent event;
        event.m_EventID = static_cast<std::uint32_t>(id);
        event.SetPlaceHolder1(std::string("object"));
        event.SetPlaceHolder2(std::string("detail"));
        const auto pairs = PI::CPluginHelper::StringifyEventMessage(event);
        ASSERT_EQ(pairs.size(), 9U) << id;
        EXPECT_EQ(pairs[7].second.find('%'), std::string::npos) << pairs[7].second;
        EXPECT_NE(pairs[7].second.find("object"), std::string::npos) << pairs[7].second;
    }
    CLanguageSupport::Clear();
}
