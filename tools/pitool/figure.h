// SPDX-License-Identifier: Apache-2.0
/// @file
/// A property of a drive as it is shown.
#pragma once

#include "fact.h"

#include <pi/drive_health.h>
#include <pi/property.h>

#include <string>
#include <vector>

namespace pitool {

enum class Unit { NONE, BYTES, HOURS, PERCENT, TERABYTES, CELSIUS, ROTATIONS_PER_MINUTE };

/// Which way a figure goes while the drive ages.
enum class Direction { NONE, UP, DOWN };

/// Stands for the identifier that a figure does not have.
constexpr auto NO_PROPERTY = static_cast<PI::_PROPERTY_ID>(0);

/// A property under its identifier in the vocabulary, with what the vocabulary does not tell; or a figure of
/// the drive's health that the vocabulary has no identifier for.
struct Figure {
    std::string m_Name;        ///< of the property, or of the figure
    PI::CProperty m_Property;  ///< of type UNDEFINED while the value is unknown
    Unit m_Unit = Unit::NONE;
    Direction m_Direction = Direction::NONE;
    std::string m_Source;      ///< where the value comes from; may be empty
    std::string m_Reason;      ///< why there is no value, or why it is doubtful; else empty
    bool m_Applicable = true;  ///< false: a drive of this kind has no such property

    bool HasValue() const { return m_Property.m_Type != PI::PropertyType::UNDEFINED; }
    bool IsDoubtful() const { return HasValue() && !m_Reason.empty(); }
    bool IsKnown() const { return HasValue() && m_Reason.empty(); }
};

/// Figures of texts and numbers.
Figure MakeFigure(PI::_PROPERTY_ID id, const Fact<std::string>& fact);
Figure MakeFigure(PI::_PROPERTY_ID id, const Fact<unsigned long>& fact, Unit unit,
                  Direction direction = Direction::NONE);
Figure MakeFigure(PI::_PROPERTY_ID id, const Fact<long>& fact, Unit unit);

/// A figure that holds a named state out of those that are possible.
Figure MakeStateFigure(PI::_PROPERTY_ID id, const Fact<int>& fact, const std::vector<int>& choices);

/// A figure of a drive's health, as a property.
Figure MakeFigure(PI::_PROPERTY_ID id, const PI::CHealthFigure& health);

/// A figure of a drive's health under its own name.
Figure MakeFigure(const PI::CHealthFigure& health);

/// "known", "unknown", "doubtful".
const char* StateText(const Figure& figure);

/// "bytes", "hours"...; empty for NONE.
const char* UnitText(Unit unit);

/// "up", "down"; empty for NONE.
const char* DirectionText(Direction direction);

/// The value with its unit written out, in printable text, such as "447.13 gibibytes"; with a question mark
/// when doubtful, such as "12 percent?"; empty when unknown.
std::string FigureValueText(const Figure& figure);

/// A byte count in the largest binary unit that it fills, such as "447.13 gibibytes".
std::string BytesText(unsigned long bytes);

}  // namespace pitool
