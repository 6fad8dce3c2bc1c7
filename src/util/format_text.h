// Texts made from printf-like format texts.
#pragma once

#include <boost/format.hpp>
#include <locale>
#include <string>

namespace PI {

/// Numbers come out as plain digits whatever the process's locale is.
template <class... Arguments>
std::string FormatText(const char* format, const Arguments&... arguments) {
    // A format that is told its locale hands it to a new stream for every argument, which takes as long as
    // the rest of the formatting; so it is told only where the locale is not the classic one anyway.
    const std::locale& classic = std::locale::classic();
    boost::format text = std::locale() == classic ? boost::format(format) : boost::format(format, classic);
    static_cast<void>((text % ... % arguments));
    return text.str();
}

}  // namespace PI
