// SPDX-License-Identifier: Apache-2.0

#include <pi/object.h>
#include <pi/plugin_helper.h>

#include <algorithm>
#include <tuple>
#include <utility>

namespace PI {

namespace {

// All fields but the operations, which may hold objects again.
template <class Object>
auto Values(Object& object) {
    return std::tie(object.m_ObjectID, object.m_ObjectType, object.m_RelatedIDs1, object.m_RelatedIDs2,
                    object.m_ObjectValue, object.m_ObjectFlag, object.m_Properties, object.m_UniqueID);
}

// The counter is a plain public number, so the compiler's atomic function takes the place of std::atomic.
std::uint64_t NextUniqueID() {
    return __atomic_fetch_add(&CObject::m_UniqueIDCounter, 1, __ATOMIC_RELAXED);
}

}  // namespace

std::uint64_t CObject::m_UniqueIDCounter = 0;

CObject::CObject() : m_UniqueID(NextUniqueID()) {}

CObject::CObject(unsigned long id, _OBJECT_TYPE type)
    : m_ObjectID(id), m_ObjectType(type), m_UniqueID(NextUniqueID()) {}

CObject::CObject(const CObject& source) = default;
CObject::CObject(CObject&& source) noexcept = default;

// The source of an assignment may be somewhere below the target, so the old operations go last.
CObject& CObject::operator=(const CObject& source) {
    std::vector<COperation> operations = source.m_Operations;
    Values(*this) = Values(source);
    m_Operations.swap(operations);
    return *this;
}

CObject& CObject::operator=(CObject&& source) noexcept {
    CObject taken(std::move(source));
    auto values = Values(*this);
    auto takenValues = Values(taken);
    values.swap(takenValues);
    m_Operations.swap(taken.m_Operations);
    return *this;
}

CObject::~CObject() = default;

bool CObject::operator==(const CObject& other) const {
    return Values(*this) == Values(other) && m_Operations == other.m_Operations;
}

CProperty* CPluginHelper::FindProperty(CObject& object, _PROPERTY_ID id) {
    return const_cast<CProperty*>(FindProperty(std::as_const(object), id));
}

const CProperty* CPluginHelper::FindProperty(const CObject& object, _PROPERTY_ID id) {
    const auto found = std::find_if(object.m_Properties.begin(), object.m_Properties.end(),
                                    [id](const CProperty& property) { return property.m_ID == id; });
    return found == object.m_Properties.end() ? nullptr : &*found;
}

}  // namespace PI
