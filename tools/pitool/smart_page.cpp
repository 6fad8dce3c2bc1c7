// SPDX-License-Identifier: Apache-2.0

#include "smart_page.h"

namespace pitool {
namespace {

/// Stores a number in the drive's byte order, the lowest byte first.
template <std::size_t Size>
void Store(std::uint8_t (&bytes)[Size], std::uint64_t value) {
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(value & 0xFFU);
        value >>= 8U;
    }
}

}  // namespace

PI::_IDE_SMART_DATA BuildSmartPage(std::uint16_t revision, const std::vector<SmartAttribute>& attributes) {
    PI::_IDE_SMART_DATA page{};
    Store(page.m_Revision, revision);
    for (std::size_t i = 0; i < attributes.size() && i < PAGE_ATTRIBUTES; ++i) {
        const SmartAttribute& attribute = attributes[i];
        PI::_IDE_SMART_ATTRIBUTE& slot = page.m_Attributes[i];
        slot.m_ID = attribute.m_ID;
        Store(slot.m_Flags, attribute.m_Flags);
        slot.m_Current = attribute.m_Current;
        slot.m_Worst = attribute.m_Worst;
        Store(slot.m_Raw, attribute.m_Raw);
    }
    return page;
}

}  // namespace pitool
