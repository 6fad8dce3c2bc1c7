// SPDX-License-Identifier: Apache-2.0

#include <pi/layout.h>

#include <tuple>

namespace PI {

CDrive::~CDrive() = default;
CContainer::~CContainer() = default;
CLogicalDrive::~CLogicalDrive() = default;
CArray::~CArray() = default;
CLevel::~CLevel() = default;
CPartition::~CPartition() = default;
CMigration::~CMigration() = default;

bool CDrive::operator==(const CDrive& other) const {
    return m_ObjectID == other.m_ObjectID && m_StartAddress == other.m_StartAddress;
}

bool CDrive::operator<(const CDrive& other) const {
    return std::tie(m_ObjectID, m_StartAddress) < std::tie(other.m_ObjectID, other.m_StartAddress);
}

bool CContainer::operator==(const CContainer& other) const {
    return m_Drives == other.m_Drives;
}

bool CLogicalDrive::operator==(const CLogicalDrive& other) const {
    return m_ID == other.m_ID && m_Properties == other.m_Properties && m_Value1 == other.m_Value1 &&
           m_Size == other.m_Size && m_Units == other.m_Units && m_SpanCount == other.m_SpanCount &&
           m_SpanSize == other.m_SpanSize && m_Value3 == other.m_Value3 && m_Value4 == other.m_Value4 &&
           m_Containers == other.m_Containers;
}

bool CArray::operator==(const CArray& other) const {
    return m_Properties == other.m_Properties && m_Value1 == other.m_Value1 && m_Size == other.m_Size &&
           m_Units == other.m_Units && m_Containers == other.m_Containers &&
           m_LogicalDrives == other.m_LogicalDrives;
}

bool CLevel::operator==(const CLevel& other) const {
    return m_Value1 == other.m_Value1 && m_Values == other.m_Values && m_Value2 == other.m_Value2 &&
           m_Properties == other.m_Properties && m_Value3 == other.m_Value3 && m_Value4 == other.m_Value4 &&
           m_Value5 == other.m_Value5 && m_Value6 == other.m_Value6 && m_Units == other.m_Units &&
           m_Value7 == other.m_Value7 && m_Value8 == other.m_Value8 && m_Flag == other.m_Flag &&
           m_Value9 == other.m_Value9;
}

bool CPartition::operator==(const CPartition& other) const {
    return m_Value1 == other.m_Value1 && m_Value2 == other.m_Value2 && m_Value3 == other.m_Value3 &&
           m_Text1 == other.m_Text1 && m_Text2 == other.m_Text2;
}

bool CMigration::operator==(const CMigration& other) const {
    return m_Value1 == other.m_Value1 && m_Value2 == other.m_Value2 && m_Properties == other.m_Properties;
}

}  // namespace PI
