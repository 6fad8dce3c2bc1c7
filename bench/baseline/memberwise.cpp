// SPDX-License-Identifier: Apache-2.0

#include "memberwise.h"

namespace memberwise {

ChoiceData::~ChoiceData() = default;
RangeData::~RangeData() = default;
StringData::~StringData() = default;
template <class Number>
NumberData<Number>::~NumberData() = default;
MultiValueData::~MultiValueData() = default;
MultiLongData::~MultiLongData() = default;
MultiStringData::~MultiStringData() = default;

template struct NumberData<bool>;
template struct NumberData<std::uint64_t>;
template struct NumberData<std::int64_t>;
template struct NumberData<float>;

Property::Property() = default;
Property::Property(const Property& source) = default;
Property::Property(Property&& source) noexcept = default;
Property& Property::operator=(const Property& source) = default;
Property& Property::operator=(Property&& source) noexcept = default;
Property::~Property() = default;

Object::Object() = default;
Object::Object(const Object& source) = default;
Object::Object(Object&& source) noexcept = default;
Object& Object::operator=(const Object& source) = default;
Object& Object::operator=(Object&& source) noexcept = default;
Object::~Object() = default;

}  // namespace memberwise
