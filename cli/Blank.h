#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace kdx {

/// The blanks of KDX: space, tab, line feed, vertical tab, form feed, carriage return.
constexpr std::string_view kBlanks = " \t\n\v\f\r";

inline std::string_view withoutLeadingBlanks(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(kBlanks), text.size()));
}

inline std::string_view withoutTrailingBlanks(std::string_view text) {
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

inline std::string_view withoutOuterBlanks(std::string_view text) {
    return withoutTrailingBlanks(withoutLeadingBlanks(text));
}

}  // namespace kdx
