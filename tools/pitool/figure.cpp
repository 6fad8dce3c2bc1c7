// SPDX-License-Identifier: Apache-2.0

#include "figure.h"

#include "print/text.h"

#include <pi/plugin_helper.h>
#include <pi/vocabulary.h>

#include <cstdio>

namespace pitool {
namespace {

template <class Value>
Figure Make(PI::_PROPERTY_ID id, const Fact<Value>& fact) {
    Figure figure;
    figure.m_Name = PI::PropertyIDToString(id);
    figure.m_Property = PI::CProperty(id, false);
    figure.m_Source = fact.m_Source;
    figure.m_Reason = fact.m_Reason;
    return figure;
}

template <class Value>
Figure MakeWithValue(PI::_PROPERTY_ID id, const Fact<Value>& fact, Unit unit, Direction direction) {
    Figure figure = Make(id, fact);
    figure.m_Unit = unit;
    figure.m_Direction = direction;
    if (fact) {
        figure.m_Property.SetValue(*fact);
    }
    return figure;
}

template <class Value>
Fact<Value> FactOf(const PI::CHealthFigure& health) {
    switch (health.GetState()) {
        case PI::FigureState::KNOWN:
            return Known(
                static_cast<Value>(health.GetValue()),
                health.GetSource() == PI::FigureSource::PROGRAM ? "decoded by smartctl" : health.GetText());
        case PI::FigureState::DOUBTFUL:
            return Doubtful(static_cast<Value>(health.GetValue()), health.GetText());
        case PI::FigureState::UNKNOWN: break;
    }
    return Unknown<Value>(health.GetText());
}

Unit UnitOf(const PI::CHealthFigure& health) {
    switch (health.GetUnit()) {
        case PI::FigureUnit::PERCENT: return Unit::PERCENT;
        case PI::FigureUnit::HOURS: return Unit::HOURS;
        case PI::FigureUnit::BYTES: return Unit::BYTES;
        case PI::FigureUnit::TERABYTES: return Unit::TERABYTES;
        case PI::FigureUnit::CELSIUS: return Unit::CELSIUS;
        default: return Unit::NONE;
    }
}

Direction DirectionOf(const PI::CHealthFigure& health) {
    switch (health.GetDirection()) {
        case PI::FigureDirection::UP: return Direction::UP;
        case PI::FigureDirection::DOWN: return Direction::DOWN;
        default: return Direction::NONE;
    }
}

/// Two places after the point where the number is a fraction of a larger unit.
std::string FixedText(double value, int places) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", places, value);
    return text;
}

std::string RotationText(unsigned long rpm) {
    float thousands = 0.0F;
    PI::CPluginHelper::RoundRPM(rpm, thousands);
    char display[32];
    std::snprintf(display, sizeof display, "%g", static_cast<double>(thousands));
    return std::to_string(rpm) + " rotations per minute (" + display + " thousand)";
}

}  // namespace

Figure MakeFigure(PI::_PROPERTY_ID id, const Fact<std::string>& fact) {
    return MakeWithValue(id, fact, Unit::NONE, Direction::NONE);
}

Figure MakeFigure(PI::_PROPERTY_ID id, const Fact<unsigned long>& fact, Unit unit, Direction direction) {
    return MakeWithValue(id, fact, unit, direction);
}

Figure MakeFigure(PI::_PROPERTY_ID id, const Fact<long>& fact, Unit unit) {
    return MakeWithValue(id, fact, unit, Direction::NONE);
}

Figure MakeStateFigure(PI::_PROPERTY_ID id, const Fact<int>& fact, const std::vector<int>& choices) {
    Figure figure = Make(id, fact);
    if (fact) {
        figure.m_Property.SetValue(*fact, choices);
    }
    return figure;
}

Figure MakeFigure(PI::_PROPERTY_ID id, const PI::CHealthFigure& health) {
    return health.GetUnit() == PI::FigureUnit::CELSIUS  // the one unit with values below 0
               ? MakeFigure(id, FactOf<long>(health), UnitOf(health))
               : MakeFigure(id, FactOf<unsigned long>(health), UnitOf(health), DirectionOf(health));
}

Figure MakeFigure(const PI::CHealthFigure& health) {
    Figure figure = MakeFigure(NO_PROPERTY, health);
    figure.m_Name = PI::HealthFigureToString(health.GetFigure());
    return figure;
}

const char* StateText(const Figure& figure) {
    return figure.IsDoubtful() ? "doubtful" : figure.HasValue() ? "known" : "unknown";
}

const char* UnitText(Unit unit) {
    switch (unit) {
        case Unit::BYTES: return "bytes";
        case Unit::HOURS: return "hours";
        case Unit::PERCENT: return "percent";
        case Unit::TERABYTES: return "terabytes written";
        case Unit::CELSIUS: return "degrees Celsius";
        case Unit::ROTATIONS_PER_MINUTE: return "rotations per minute";
        case Unit::NONE: break;
    }
    return "";
}

const char* DirectionText(Direction direction) {
    switch (direction) {
        case Direction::UP: return "up";
        case Direction::DOWN: return "down";
        case Direction::NONE: break;
    }
    return "";
}

std::string BytesText(unsigned long bytes) {
    struct Name {
        PI::_UNITS m_Unit;
        const char* m_Name;
    };
    constexpr Name NAMES[] = {
        {PI::Units::KILOBYTES, "kibibytes"}, {PI::Units::MEGABYTES, "mebibytes"},
        {PI::Units::GIGABYTES, "gibibytes"}, {PI::Units::TERABYTES, "tebibytes"},
        {PI::Units::PETABYTES, "pebibytes"},
    };
    float value = 0.0F;
    PI::_UNITS unit = PI::Units::BYTES;
    PI::CPluginHelper::ConvertBytesToOtherUnit(bytes, value, unit);
    for (const Name& name : NAMES) {
        if (name.m_Unit == unit) {
            return FixedText(static_cast<double>(value), 2) + " " + name.m_Name;
        }
    }
    return std::to_string(bytes) + (bytes == 1 ? " byte" : " bytes");
}

std::string FigureValueText(const Figure& figure) {
    if (!figure.HasValue()) {
        return "";
    }
    const char* const mark = figure.IsDoubtful() ? "?" : "";
    const unsigned long number = figure.m_Property.m_Data.m_Long.m_Value;
    switch (figure.m_Unit) {
        case Unit::BYTES: return BytesText(number) + mark;
        case Unit::ROTATIONS_PER_MINUTE: return RotationText(number) + mark;
        default: break;
    }
    const char* unit = figure.m_Unit == Unit::HOURS && number == 1 ? "hour" : UnitText(figure.m_Unit);
    return PrintableText(PI::CPluginHelper::StringifyProperty(figure.m_Property, unit)) + mark;
}

}  // namespace pitool
