// SPDX-License-Identifier: Apache-2.0

#include "drives/health_facts.h"

#include <algorithm>

namespace PI {

void DriveFacts::Put(_HEALTH_FIGURE figure, _FIGURE_SOURCE source, std::uint32_t number, std::int64_t value,
                     bool inBlocks) noexcept {
    const auto end = m_Readings.begin() + static_cast<std::ptrdiff_t>(m_ReadingCount);
    const auto place = std::find_if(m_Readings.begin(), end, [&](const Reading& reading) {
        return reading.m_Figure == figure && reading.m_Source == source && reading.m_Number == number;
    });
    if (place == m_Readings.end()) {
        return;  // more sources than drives have
    }
    *place = {value, static_cast<std::int16_t>(figure), static_cast<std::int16_t>(source), number, inBlocks};
    m_ReadingCount += place == end ? 1U : 0U;
}

void DriveFacts::ForgetAttributes() noexcept {
    m_AttributeCount = 0;
    m_Slots = {};
}

Attribute& DriveFacts::AddAttribute(std::uint8_t id) noexcept {
    Attribute& attribute = m_Attributes[m_AttributeCount++];
    attribute = {};
    attribute.m_ID = id;
    m_Slots[id] = static_cast<std::uint8_t>(m_AttributeCount);
    return attribute;
}

void DriveFacts::Forget(_FIGURE_SOURCE source, std::uint32_t number) noexcept {
    const auto end = m_Readings.begin() + static_cast<std::ptrdiff_t>(m_ReadingCount);
    const auto kept = std::remove_if(m_Readings.begin(), end, [&](const Reading& reading) {
        return reading.m_Source == source && reading.m_Number == number;
    });
    m_ReadingCount = static_cast<std::size_t>(kept - m_Readings.begin());
}

}  // namespace PI
