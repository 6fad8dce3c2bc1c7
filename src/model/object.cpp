#include <pi/object.h>

#include <tuple>
#include <utility>

namespace PI {

namespace {

template <class Object>
auto Fields(Object& object) {
    return std::tie(object.m_ObjectID, object.m_ObjectType, object.m_RelatedIDs1, object.m_RelatedIDs2,
                    object.m_ObjectValue, object.m_ObjectFlag, object.m_Properties, object.m_UniqueID,
                    object.m_Operations);
}

}  // namespace

std::uint64_t CObject::m_UniqueIDCounter = 0;

CObject::CObject() : m_UniqueID(m_UniqueIDCounter++) {}

CObject::CObject(unsigned long id, _OBJECT_TYPE type)
    : m_ObjectID(id), m_ObjectType(type), m_UniqueID(m_UniqueIDCounter++) {}

CObject::CObject(const CObject& source) = default;
CObject::CObject(CObject&& source) noexcept = default;

// The source may stand somewhere below the target, whose old content therefore goes last.
CObject& CObject::operator=(const CObject& source) {
    return *this = CObject(source);
}

CObject& CObject::operator=(CObject&& source) noexcept {
    CObject taken(std::move(source));
    auto fields = Fields(*this);
    auto takenFields = Fields(taken);
    fields.swap(takenFields);
    return *this;
}

CObject::~CObject() = default;

bool CObject::operator==(const CObject& other) const {
    return Fields(*this) == Fields(other);
}

}  // namespace PI
