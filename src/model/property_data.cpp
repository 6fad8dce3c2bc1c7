#include <pi/property.h>

#include "model/xml_copy.h"

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
    CopyDocument(source.m_Document, m_Document);
}

CXMLData& CXMLData::operator=(const CXMLData& source) {
    CopyDocument(source.m_Document, m_Document);
    return *this;
}

}  // namespace PI
