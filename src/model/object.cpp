#include <pi/object.h>

namespace PI {

std::uint64_t CObject::m_UniqueIDCounter = 0;

CObject::CObject() : m_UniqueID(m_UniqueIDCounter++) {}

CObject::CObject(unsigned long id, _OBJECT_TYPE type)
    : m_ObjectID(id), m_ObjectType(type), m_UniqueID(m_UniqueIDCounter++) {}

CObject::CObject(const CObject& source) = default;
CObject::CObject(CObject&& source) noexcept = default;
CObject& CObject::operator=(const CObject& source) = default;
CObject& CObject::operator=(CObject&& source) noexcept = default;
CObject::~CObject() = default;

bool CObject::operator==(const CObject& other) const {
    return m_ObjectID == other.m_ObjectID && m_ObjectType == other.m_ObjectType &&
           m_RelatedIDs1 == other.m_RelatedIDs1 && m_RelatedIDs2 == other.m_RelatedIDs2 &&
           m_ObjectValue == other.m_ObjectValue && m_ObjectFlag == other.m_ObjectFlag &&
           m_Properties == other.m_Properties && m_UniqueID == other.m_UniqueID &&
           m_Operations == other.m_Operations;
}

}  // namespace PI
