// SPDX-License-Identifier: Apache-2.0

#include "figure.h"

#include "drive_sheet.h"

#include <gtest/gtest.h>

using namespace pitool;
namespace ID = PI::PropertyID;
namespace Value = PI::PropertyValue;

TEST(BytesText, ScalesToTheLargestBinaryUnit) {
    EXPECT_EQ(BytesText(0), "0 bytes");
    EXPECT_EQ(BytesText(1), "1 byte");
    EXPECT_EQ(BytesText(1023), "1023 bytes");
    EXPECT_EQ(BytesText(1024), "1.00 kibibytes");
    EXPECT_EQ(BytesText(1UL << 20U), "1.00 mebibytes");
    EXPECT_EQ(BytesText(480103981056), "447.13 gibibytes");
    EXPECT_EQ(BytesText(3UL << 39U), "1.50 tebibytes");
    EXPECT_EQ(BytesText(18446744073709551615UL), "16384.00 pebibytes");
}

TEST(MakeFigure, FillsAPropertyUnderItsIdentifier) {
    const Figure text = MakeFigure(ID::VENDOR, Known<std::string>("INTEL"));
    EXPECT_EQ(text.m_Property.m_ID, ID::VENDOR);
    EXPECT_EQ(text.m_Property.m_Type, PI::PropertyType::STRING);
    EXPECT_EQ(text.m_Property.m_Data.m_String.m_Value, "INTEL");

    const Figure number = MakeFigure(ID::POWERON_HOURS, Known(5UL), Unit::HOURS, Direction::UP);
    EXPECT_EQ(number.m_Property.m_Type, PI::PropertyType::LONG);
    EXPECT_EQ(number.m_Property.m_Data.m_Long.m_Value, 5U);

    const Figure negative = MakeFigure(ID::TEMPERATURE, Known(-4L), Unit::CELSIUS);
    EXPECT_EQ(negative.m_Property.m_Type, PI::PropertyType::SIGNED_LONG);
    EXPECT_EQ(negative.m_Property.m_Data.m_SignedLong.m_Value, -4);

    const Figure state = MakeStateFigure(ID::MEDIA_TYPE, Known<int>(Value::SSD), {Value::HDD, Value::SSD});
    EXPECT_EQ(state.m_Property.m_Type, PI::PropertyType::CHOICE);
    EXPECT_EQ(state.m_Property.m_Data.m_Choice.m_Value, 40293);
    EXPECT_EQ(state.m_Property.m_Data.m_Choice.m_Choices, (std::vector<int>{40292, 40293}));
}

TEST(MakeFigure, AnUnknownValueLeavesThePropertyWithoutOne) {
    const Figure figure = MakeFigure(ID::BYTES_WRITTEN, Unknown<unsigned long>("no SMART data"), Unit::BYTES);
    EXPECT_FALSE(figure.IsKnown());
    EXPECT_EQ(figure.m_Property.m_ID, ID::BYTES_WRITTEN);
    EXPECT_EQ(FigureValueText(figure), "");
    EXPECT_EQ(FigureText(figure), "unknown (no SMART data)");
}

TEST(MakeFigure, AFigureOfTheHealthKeepsStateUnitAndSource) {
    PI::CDriveHealth health(PI::DriveProtocol::NVME, "SAMPLE");
    health.TakeFigure(PI::HealthFigure::WEAR, 12, PI::FigureSource::NVME_LOG, 2);
    health.TakeFigure(PI::HealthFigure::TEMPERATURE, -4);
    const auto text = [&health](PI::_HEALTH_FIGURE figure) {
        return FigureText(MakeFigure(health.GetFigure(figure)));
    };
    EXPECT_EQ(text(PI::HealthFigure::WEAR), "12 percent, counts up; NVMe log 02h");
    EXPECT_EQ(text(PI::HealthFigure::TEMPERATURE), "-4 degrees Celsius; decoded by smartctl");
    EXPECT_EQ(text(PI::HealthFigure::SPARE), "unknown (not reported)");
    EXPECT_EQ(MakeFigure(health.GetFigure(PI::HealthFigure::SPARE)).m_Name, "SPARE");
    EXPECT_EQ(MakeFigure(ID::RATED_ENDURANCE_PERCENT, health.GetFigure(PI::HealthFigure::WEAR)).m_Name,
              "RATED_ENDURANCE_PERCENT");
    health.TakeFigure(PI::HealthFigure::WEAR, 255, PI::FigureSource::NVME_LOG, 2);
    EXPECT_EQ(text(PI::HealthFigure::WEAR),
              "255 percent?, counts up; doubtful: NVMe log 02h says 255 percent, which stands for more than "
              "254 or for nothing");
}

TEST(StateText, TellsHowFarAValueCanBeReliedOn) {
    const auto state = [](const Fact<unsigned long>& fact) {
        return std::string(StateText(MakeFigure(ID::POWERON_HOURS, fact, Unit::HOURS)));
    };
    EXPECT_EQ(state(Known(5UL)), "known");
    EXPECT_EQ(state(Doubtful(5UL, "x")), "doubtful");
    EXPECT_EQ(state(Unknown<unsigned long>("x")), "unknown");
}

TEST(FigureValueText, MarksWhatIsDoubtful) {
    const auto text = [](Unit unit) {
        return FigureValueText(MakeFigure(ID::BYTES_READ, Doubtful(12UL, "x"), unit));
    };
    EXPECT_EQ(text(Unit::PERCENT), "12 percent?");
    EXPECT_EQ(text(Unit::BYTES), "12 bytes?");
    EXPECT_EQ(text(Unit::NONE), "12?");
}

TEST(FigureText, WritesUnitsDirectionAndSource) {
    EXPECT_EQ(
        FigureText(MakeFigure(ID::POWERON_HOURS, Known(2UL, std::string("x")), Unit::HOURS, Direction::UP)),
        "2 hours, counts up; x");
    EXPECT_EQ(FigureText(MakeFigure(ID::REMAINING_HOURS, Known(1UL), Unit::HOURS, Direction::DOWN)),
              "1 hour, counts down");
    EXPECT_EQ(FigureText(MakeFigure(ID::TEMPERATURE, Known(-4L), Unit::CELSIUS)), "-4 degrees Celsius");
    EXPECT_EQ(FigureText(MakeFigure(ID::RATED_ENDURANCE_TB, Known(945UL), Unit::TERABYTES)),
              "945 terabytes written");
    EXPECT_EQ(FigureText(MakeFigure(ID::RPM, Known(5400UL), Unit::ROTATIONS_PER_MINUTE)),
              "5400 rotations per minute (5.4 thousand)");
    EXPECT_EQ(FigureText(MakeFigure(ID::RPM, Known(15000UL), Unit::ROTATIONS_PER_MINUTE)),
              "15000 rotations per minute (15 thousand)");
    EXPECT_EQ(FigureText(MakeStateFigure(ID::SMART_FLAGGED, Known<int>(Value::YES), {Value::YES, Value::NO})),
              "YES");
}

TEST(FigureText, CannotSteerATerminal) {
    EXPECT_EQ(FigureText(MakeFigure(ID::PRODUCT, Known<std::string>("a\x1B]0;b\x07"))), "a?]0;b?");
}
