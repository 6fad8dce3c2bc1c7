// Texts made from printf-like format texts.
#pragma once

#include <boost/format.hpp>
#include <locale>
#include <string>

namespace PI {

/// Numbers come out as plain digits whatever the process's locale is.
template <class... Arguments>
std::string FormatText(const char* format, const Arguments&... arguments) {
    boost::format text(format, std::locale::classic());
    static_cast<void>((text % ... % arguments));
    return text.str();
}

}  // namespace PI
