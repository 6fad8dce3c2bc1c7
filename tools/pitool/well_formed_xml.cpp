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
    std::size_t m_Depth;
    std::size_t m_Deepest;
};

void XMLCALL Open(void* data, const XML_Char*, const XML_Char**) {
    auto* nesting = static_cast<Nesting*>(data);
    if (++nesting->m_Depth > nesting->m_Deepest) {
        XML_StopParser(nesting->m_Parser, XML_FALSE);
    }
}

void XMLCALL Close(void* data, const XML_Char*) {
    --static_cast<Nesting*>(data)->m_Depth;
}

std::string Reason(XML_Error error, std::size_t deepest) {
    if (error == XML_ERROR_ABORTED) {
        return "nested deeper than " + std::to_string(deepest) + " levels";
    }
    return std::string("not well-formed XML: ") + XML_ErrorString(error);
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
    Nesting state{parser.get(), 0, nesting};
    XML_SetUserData(parser.get(), &state);
    XML_SetElementHandler(parser.get(), Open, Close);
    if (XML_Parse(parser.get(), text.data(), static_cast<int>(text.size()), XML_TRUE) == XML_STATUS_OK) {
        return true;
    }
    problem.m_Place.m_Line = static_cast<std::size_t>(XML_GetCurrentLineNumber(parser.get()));
    problem.m_Place.m_Column = static_cast<std::size_t>(XML_GetCurrentColumnNumber(parser.get())) + 1;
    problem.m_Text = Reason(XML_GetErrorCode(parser.get()), nesting);
    return false;
}

}  // namespace pitool
