// SPDX-License-Identifier: Apache-2.0

#include "well_formed_xml.h"

#include <expat.h>

#include <memory>
#include <new>
#include <type_traits>

namespace pitool {
namespace {

using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)>;

struct Nesting {
    XML_Parser m_Parser;
    std::size_t m_Deepest;
    std::size_t m_Depth = 0;
    TextPlace m_TooDeep{};  ///< where the parser was stopped
};

TextPlace CurrentPlace(XML_Parser parser) {
    return {static_cast<std::size_t>(XML_GetCurrentLineNumber(parser)),
            static_cast<std::size_t>(XML_GetCurrentColumnNumber(parser)) + 1};
}

void XMLCALL Open(void* data, const XML_Char*, const XML_Char**) {
    auto* nesting = static_cast<Nesting*>(data);
    if (++nesting->m_Depth > nesting->m_Deepest) {
        nesting->m_TooDeep = CurrentPlace(nesting->m_Parser);
        XML_StopParser(nesting->m_Parser, XML_FALSE);
    }
}

void XMLCALL Close(void* data, const XML_Char*) {
    --static_cast<Nesting*>(data)->m_Depth;
}

}  // namespace

bool IsWellFormedXML(const std::string& text, std::size_t nesting, PlacedMessage& problem) {
    const std::size_t zero = text.find('\0');
    if (zero != std::string::npos) {
        problem = {PlaceOf(text, zero), "not well-formed XML: a zero byte; UTF-8 is expected"};
        return false;
    }
    const Parser parser(XML_ParserCreate(nullptr), &XML_ParserFree);
    if (!parser) {
        throw std::bad_alloc();
    }
    Nesting state{parser.get(), nesting};
    XML_SetUserData(parser.get(), &state);
    XML_SetElementHandler(parser.get(), Open, Close);
    if (XML_Parse(parser.get(), text.data(), static_cast<int>(text.size()), XML_TRUE) == XML_STATUS_OK) {
        return true;
    }
    const XML_Error error = XML_GetErrorCode(parser.get());
    if (error == XML_ERROR_ABORTED) {
        problem = {state.m_TooDeep, "nested deeper than " + std::to_string(nesting) + " levels"};
    } else {
        problem = {CurrentPlace(parser.get()), std::string("not well-formed XML: ") + XML_ErrorString(error)};
    }
    return false;
}

}  // namespace pitool
