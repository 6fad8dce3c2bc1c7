// SPDX-License-Identifier: Apache-2.0

#include <pi/property.h>

#include "model/xml_copy.h"

// Making, copying and destroying properties and their data. The data kinds are here with the property so
// that the compiler can put them into one piece of code: properties are copied often.

namespace PI {

CChoiceData::~CChoiceData() = default;
CRangeData::~CRangeData() = default;
CStringData::~CStringData() = default;
CBoolData::~CBoolData() = default;
CLongData::~CLongData() = default;
CSignedLongData::~CSignedLongData() = default;
CMultiValueData::~CMultiValueData() = default;
CFloatData::~CFloatData() = default;
CMultiLongData::~CMultiLongData() = default;
CXMLData::~CXMLData() = default;
CMultiStringData::~CMultiStringData() = default;

CXMLData::CXMLData(const CXMLData& source) {
    if (source.m_Document.first_child()) {
        CopyDocument(source.m_Document, m_Document);
    }
}

CXMLData& CXMLData::operator=(const CXMLData& source) {
    CopyDocument(source.m_Document, m_Document);
    return *this;
}

CProperty::_DATA::~_DATA() = default;

CProperty::CProperty() = default;

CProperty::CProperty(_PROPERTY_ID id, bool flag) : m_ID(id), m_SecondaryID(id), m_Flag1(flag) {}

CProperty::CProperty(const CProperty& source) = default;
CProperty& CProperty::operator=(const CProperty& source) = default;
CProperty::CProperty(CProperty&& source) noexcept = default;
CProperty& CProperty::operator=(CProperty&& source) noexcept = default;
CProperty::~CProperty() = default;

}  // namespace PI
