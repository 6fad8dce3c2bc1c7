// Text comparison and trimming that does not depend on the process's locale.
#pragma once

#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/trim.hpp>
#include <locale>
#include <string>
#include <string_view>

namespace PI {

inline bool EqualsIgnoringCase(std::string_view left, std::string_view right) {
    return left.size() == right.size() && boost::algorithm::iequals(left, right, std::locale::classic());
}

inline void Trim(std::string& text) {
    boost::algorithm::trim(text, std::locale::classic());
}

}  // namespace PI
